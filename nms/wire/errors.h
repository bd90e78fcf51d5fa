// How things go wrong, and what the shell is told.
#ifndef ZK_NMS_WIRE_ERRORS_H
#define ZK_NMS_WIRE_ERRORS_H

#include <iosfwd>
#include <stdexcept>
#include <string>

#include "zk_quornex/idl/names.h"

namespace zk::nms {

enum ExitCode {
  kFine = 0,
  kRefused = 1,
  kConnection = 2,
  kUsage = 3,
  kTimedOut = 4,
  kEventsLost = 5,
  kOutput = 6
};

class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class ConnectionError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class RefusedError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Without a text there is nothing to be said.
class OutputError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// What was waited for did not come in time.
class TimedOutError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// All was done, but events are missing from what was written.
class EventsLostError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// "EXCPT_ACCESS_DENIED: reason", on one line whatever the reason holds.
std::string describe(const globaldefs::ProcessingFailureException& refusal);

// One line that says what became of a call to the agent.
std::string describe(const CORBA::SystemException& failure, const std::string& agent);

// The agent is there and says no, in the ORB's words instead of the EMS's.
bool isRefusal(const CORBA::SystemException& failure);

// To be called while an exception is being handled: says on one line of err
// what went wrong, if anything is to be said, and returns the exit code for it.
int reportCurrentException(const std::string& agent, std::ostream& err);

}  // namespace zk::nms

#endif
