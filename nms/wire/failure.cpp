#include "nms/wire/failure.h"

#include <array>
#include <cstdio>
#include <ostream>

#include "nms/wire/text.h"

namespace zk::nms {
namespace {

const std::array<const char*, 16> EXCEPTION_TYPES = {"EXCPT_NOT_IMPLEMENTED",
                                                     "EXCPT_INTERNAL_ERROR",
                                                     "EXCPT_INVALID_INPUT",
                                                     "EXCPT_OBJECT_IN_USE",
                                                     "EXCPT_TP_INVALID_ENDPOINT",
                                                     "EXCPT_ENTITY_NOT_FOUND",
                                                     "EXCPT_TIMESLOT_IN_USE",
                                                     "EXCPT_PROTECTION_EFFORT_NOT_MET",
                                                     "EXCPT_NOT_IN_VALID_STATE",
                                                     "EXCPT_UNABLE_TO_COMPLY",
                                                     "EXCPT_NE_COMM_LOSS",
                                                     "EXCPT_CAPACITY_EXCEEDED",
                                                     "EXCPT_ACCESS_DENIED",
                                                     "EXCPT_TOO_MANY_OPEN_ITERATORS",
                                                     "EXCPT_UNSUPPORTED_ROUTING_CONSTRAINTS",
                                                     "EXCPT_USERLABEL_IN_USE"};

template <class Kind>
bool is(const CORBA::SystemException& failure) {
  return dynamic_cast<const Kind*>(&failure) != nullptr;
}

std::string whatHappened(const CORBA::SystemException& failure, const std::string& agent) {
  if (isRefusal(failure)) {
    return "refused: the agent does not offer this operation";
  }
  if (is<CORBA::TIMEOUT>(failure)) {
    return "no answer in time from the agent at " + agent;
  }
  if (is<CORBA::COMM_FAILURE>(failure) || is<CORBA::TRANSIENT>(failure)) {
    return "no connection to the agent at " + agent;
  }
  if (is<CORBA::OBJECT_NOT_EXIST>(failure)) {
    return "the agent at " + agent + " does not know this session or object";
  }
  return "the call to the agent at " + agent + " failed";
}

int say(std::ostream& err, const std::string& text, int exitCode) {
  err << "zk-nms: " << text << std::endl;
  return exitCode;
}

}  // namespace

bool isRefusal(const CORBA::SystemException& failure) {
  return is<CORBA::BAD_OPERATION>(failure) || is<CORBA::NO_IMPLEMENT>(failure) ||
         is<CORBA::NO_PERMISSION>(failure);
}

std::string refusalText(const globaldefs::ProcessingFailureException& refusal) {
  const auto index = static_cast<std::size_t>(refusal.exceptionType);
  const std::string type =
      index < EXCEPTION_TYPES.size() ? EXCEPTION_TYPES[index] : "EXCPT_" + std::to_string(index);
  return type + ": " + printable(asUtf8(refusal.errorReason.in()));
}

std::string callText(const CORBA::SystemException& failure, const std::string& agent) {
  char minor[16];
  std::snprintf(minor, sizeof minor, "0x%08lX", static_cast<unsigned long>(failure.minor()));
  return whatHappened(failure, agent) + " (" + failure._name() + " " + minor + ")";
}

int reportCurrentException(const std::string& agent, std::ostream& err) {
  try {
    throw;
  } catch (const globaldefs::ProcessingFailureException& refusal) {
    return say(err, "refused: " + refusalText(refusal), REFUSED);
  } catch (const CORBA::SystemException& failure) {
    return say(err, callText(failure, agent), isRefusal(failure) ? REFUSED : NO_CONNECTION);
  } catch (const CORBA::Exception& failure) {
    return say(err, std::string("the agent answered with an unknown ") + failure._name(), REFUSED);
  } catch (const Failure& failure) {
    const std::string who = failure.exitCode() == REFUSED ? "refused: " : "";
    return *failure.what() == '\0' ? failure.exitCode()
                                   : say(err, who + failure.what(), failure.exitCode());
  } catch (const std::exception& error) {
    return say(err, error.what(), NO_CONNECTION);
  } catch (...) {
    return say(err, "something went wrong without saying what", NO_CONNECTION);
  }
}

}  // namespace zk::nms
