// Commands that list one kind of object, or show one of it, all alike but for
// the calls they make.
#ifndef ZK_NMS_COMMANDS_OBJECTS_H
#define ZK_NMS_COMMANDS_OBJECTS_H

#include <functional>
#include <memory>
#include <string>

#include "nms/commands/command.h"
#include "nms/output/output.h"
#include "nms/wire/connection.h"
#include "nms/wire/iterate.h"

namespace zk::nms {

struct ObjectKind {
  std::string command;   // "me"
  std::string pairName;  // "ManagedElement": what a bare id is a value of
  std::string summary;
  std::string examples;
  Columns columns;

  std::function<Rows(Connection& connection, CORBA::ULong page)> list;
  std::function<Rows(Connection& connection, CORBA::ULong page)> names;  // rows of one cell
  std::function<Row(Connection& connection, const globaldefs::NVSList_T& name)> one;

  // Where an id is not just the value of a pair; empty elsewhere.
  std::function<globaldefs::NVSList_T(Connection& connection, const std::string& argument,
                                      CORBA::ULong page)>
      nameOf;
};

std::unique_ptr<Command> makeObjectCommand(ObjectKind kind);

// The rows of a list and of what its iterator still has. See drain.
template <class ListVar, class IteratorVar, class ToRow>
Rows drainRows(CORBA::ULong page, ListVar& list, IteratorVar& iterator, ToRow toRow) {
  Rows rows;
  drain(page, list, iterator, [&](const auto& entry) { rows.push_back(toRow(entry)); });
  return rows;
}

// The same for names.
Rows drainNames(CORBA::ULong page, globaldefs::NamingAttributesList_T_var& list,
                globaldefs::NamingAttributesIterator_I_var& iterator);

}  // namespace zk::nms

#endif
