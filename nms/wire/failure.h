// How things go wrong, and what the shell is told.
#ifndef ZK_NMS_WIRE_FAILURE_H
#define ZK_NMS_WIRE_FAILURE_H

#include <iosfwd>
#include <stdexcept>
#include <string>

#include "zk_quornex/idl/names.h"

namespace zk::nms {

enum ExitCode : int {
  FINE = 0,
  REFUSED = 1,
  NO_CONNECTION = 2,
  WRONG_USAGE = 3,
  TIMED_OUT = 4,    // what was waited for did not come in time
  EVENTS_LOST = 5,  // all was done, but events are missing from what was written
  NO_OUTPUT = 6
};

// What the program itself finds wrong. With an empty text there is nothing to
// be said about it.
class Failure : public std::runtime_error {
 public:
  Failure(ExitCode exitCode, const std::string& text)
      : std::runtime_error(text), exitCode_(exitCode) {}

  ExitCode exitCode() const { return exitCode_; }

 private:
  ExitCode exitCode_;
};

template <ExitCode CODE>
class FailureWith : public Failure {
 public:
  explicit FailureWith(const std::string& text) : Failure(CODE, text) {}
};

using RefusedError = FailureWith<REFUSED>;
using ConnectionError = FailureWith<NO_CONNECTION>;
using UsageError = FailureWith<WRONG_USAGE>;
using TimedOutError = FailureWith<TIMED_OUT>;
using EventsLostError = FailureWith<EVENTS_LOST>;
using OutputError = FailureWith<NO_OUTPUT>;

// "EXCPT_ACCESS_DENIED: reason", on one line whatever the reason holds.
std::string refusalText(const globaldefs::ProcessingFailureException& refusal);

// One line that says what became of a call to the agent.
std::string callText(const CORBA::SystemException& failure, const std::string& agent);

// The agent is there and says no, in the ORB's words instead of the EMS's.
bool isRefusal(const CORBA::SystemException& failure);

// To be called while an exception is being handled: says on one line of err
// what went wrong, if anything is to be said, and returns the exit code for it.
int reportCurrentException(const std::string& agent, std::ostream& err);

}  // namespace zk::nms

#endif
