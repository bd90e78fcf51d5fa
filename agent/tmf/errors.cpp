#include "agent/tmf/errors.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "agent/base/log.h"
#include "agent/ems/changes.h"
#include "zk_quornex/names/codes.h"
#include "zk_quornex/platform/config.h"

namespace zk::agent {

namespace {

using namespace NS_QUORCORBA;
using namespace globaldefs;

struct Meaning {
  unsigned long code;
  ExceptionType_T type;
  const char* reason;
};

constexpr std::array<Meaning, 18> MEANINGS = {{
    {RESULT_NO_INTERFACE, EXCPT_INTERNAL_ERROR, "a service of the agent is missing"},
    {RESULT_NOT_SUPPORTED, EXCPT_NOT_IMPLEMENTED, "not supported for this object"},
    {RESULT_NO_OBJECT_TYPE, EXCPT_NOT_IMPLEMENTED, "not supported for this object"},
    {RESULT_NULL_ARGUMENT, EXCPT_INVALID_INPUT, "a name or a text is missing"},
    {RESULT_BAD_NAME, EXCPT_INVALID_INPUT, "not a well-formed object name"},
    {RESULT_TEXT_TOO_LONG, EXCPT_INVALID_INPUT, "the text is longer than 252 characters"},
    {RESULT_EMPTY_NAME, EXCPT_ENTITY_NOT_FOUND, "no object can have this name"},
    {RESULT_OTHER_EMS, EXCPT_ENTITY_NOT_FOUND, "not an object of this EMS"},
    {RESULT_NO_ELEMENT_ID, EXCPT_ENTITY_NOT_FOUND, "no managed element can have this identifier"},
    {RESULT_LINK_REFUSED, EXCPT_ENTITY_NOT_FOUND, "no such topological link"},
    {RESULT_SUBNETWORK_REFUSED, EXCPT_ENTITY_NOT_FOUND, "no such subnetwork"},
    {codeOf(Result::NO_SUCH_OBJECT), EXCPT_ENTITY_NOT_FOUND, "the EMS has no such object"},
    {codeOf(Result::LABEL_IN_USE), EXCPT_USERLABEL_IN_USE, "another object has this user label"},
    {codeOf(Result::STORAGE_FAILURE), EXCPT_INTERNAL_ERROR,
     "the EMS cannot store the change; its log says why"},
    {codeOf(Result::NO_REQUEST), EXCPT_INTERNAL_ERROR, "the EMS got an empty request"},
    {codeOf(Result::BAD_VALUE), EXCPT_INVALID_INPUT, "the object cannot have this value"},
    {codeOf(Result::OBJECT_IN_USE), EXCPT_OBJECT_IN_USE, "other objects refer to it"},
    {codeOf(Result::OBJECT_EXISTS), EXCPT_OBJECT_IN_USE, "the object is there already"},
}};

const Meaning* meaningOf(unsigned long code) {
  const auto* const found = std::find_if(MEANINGS.begin(), MEANINGS.end(),
                                         [code](const Meaning& row) { return row.code == code; });
  return found != MEANINGS.end() ? found : nullptr;
}

std::string hexadecimal(unsigned long code) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "0x%lX", code);
  return text.data();
}

}  // namespace

Refusal refusal(ExceptionType_T type, const std::string& reason) {
  return Refusal(type, reason.c_str());
}

Refusal notImplemented() { return refusal(EXCPT_NOT_IMPLEMENTED, ""); }

ExceptionType_T exceptionTypeOf(unsigned long code) {
  const Meaning* const meaning = meaningOf(code);
  return meaning != nullptr ? meaning->type : EXCPT_INTERNAL_ERROR;
}

std::string reasonOf(unsigned long code) {
  const Meaning* const meaning = meaningOf(code);
  if (meaning == nullptr) {
    return "the EMS answered " + hexadecimal(code);
  }
  if (code == RESULT_OTHER_EMS) {
    return std::string(meaning->reason) + ", which is " +
           NS_CORBA::CorbaBaseAgentConfig::Instance()->EmsName();
  }
  return meaning->reason;
}

Refusal refusalOf(unsigned long code, const NVSList_T& name) {
  return refusalOf(code, printableName(name));
}

Refusal refusalOf(unsigned long code, const std::string& about) {
  return refusal(exceptionTypeOf(code), reasonOf(code) + ": " + about);
}

std::string printableName(const NVSList_T& name) {
  if (name.length() == 0) {
    return "(empty name)";
  }
  std::string text;
  // A name that anything here could accept has few pairs; the rest is noise.
  const CORBA::ULong shown = std::min<CORBA::ULong>(name.length(), 8);
  for (CORBA::ULong i = 0; i < shown; ++i) {
    text += (i == 0 ? "" : ", ") + std::string(name[i].name) + "=" + std::string(name[i].value);
  }
  return printable(text.c_str()) + (shown < name.length() ? ", ..." : "");
}

Refusal internalError(const char* operation, const std::exception& failure) {
  logFailure(std::string(operation) + " failed: " + failure.what());
  return refusal(EXCPT_INTERNAL_ERROR, "the EMS cannot answer at present; its log says why");
}

}  // namespace zk::agent
