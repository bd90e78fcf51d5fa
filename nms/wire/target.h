// The object that a command changes, and the manager that is asked to. No state.
#ifndef ZK_NMS_WIRE_TARGET_H
#define ZK_NMS_WIRE_TARGET_H

#include <string>

#include "nms/wire/connection.h"

namespace CLI {
class App;
}

namespace zk::nms {

struct Target {
  std::string object;       // a full name, or an id of the kind
  std::string kind = "me";  // as the command that lists such objects is called
};

// Adds --kind. target must outlive app.
void declareKind(CLI::App& app, Target& target);

// Throws UsageError, so that nobody logs in for nothing.
void checkTarget(const Target& target);

// page: entries to ask for at a time where the id has to be looked for.
globaldefs::NVSList_T targetName(Connection& connection, const Target& target, CORBA::ULong page);

// The manager's name for objects whose name ends in a pair of this name. What
// the program does not know lies within an element, whose manager has it.
std::string managerFor(const std::string& pairName);

common::Common_I_var targetManager(Connection& connection, const globaldefs::NVSList_T& name);

}  // namespace zk::nms

#endif
