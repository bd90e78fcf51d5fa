// The EMS's objects: which there are, and which may be made, changed and removed.
// The caller holds the inventory's lock; a change happens in its transaction,
// which it rolls back unless the result is Done.
#ifndef ZK_AGENT_EMS_OBJECTS_H
#define ZK_AGENT_EMS_OBJECTS_H

#include <optional>
#include <string>
#include <vector>

#include "agent/ems/alarms.h"
#include "agent/ems/changes.h"
#include "agent/ems/tables.h"

namespace zk::agent {

class Objects {
 public:
  // alarms are cleared with the device they are of.
  Objects(Tables& tables, Alarms& alarms) : tables_(tables), alarms_(alarms) {}

  // The object, whatever its kind, if it is where the key says.
  std::optional<ObjectRecord> find(const ObjectKey& key) const;

  // See Inventory.
  std::vector<std::string> ids(ObjectKind kind, const std::string& parentId) const;
  long count(ObjectKind kind) const;
  bool labelInUse(ObjectKind kind, const std::string& label, const std::string& exceptId) const;

  // See Inventory; calls gets what the listener is to be told. object gets its
  // new id and label, whatever the result.
  Result create(ObjectRecord& object, ListenerCalls& calls);
  Result remove(const ObjectKey& key, ListenerCalls& calls);
  Result setAttribute(const ObjectKey& key, Attribute attribute, const std::string& text,
                      const ChangeOptions& options, ListenerCalls& calls);

 private:
  Result checkText(const ObjectKey& key, Attribute attribute, const std::string& text,
                   const ChangeOptions& options) const;
  Result store(const ObjectKey& key, AttributeChange change, ListenerCalls& calls);

  Tables& tables_;
  Alarms& alarms_;
};

// New ids: each kind counts its own, and never gives one out twice. Nodes and
// submaps count together.
void setNextId(Tables& tables, ObjectKind kind, long next);

}  // namespace zk::agent

#endif
