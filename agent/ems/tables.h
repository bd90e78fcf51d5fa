// Records to and from the rows of their tables: one overload for each record.
// The caller holds the inventory's lock.
#ifndef ZK_AGENT_EMS_TABLES_H
#define ZK_AGENT_EMS_TABLES_H

#include <optional>
#include <string>
#include <vector>

#include "agent/ems/records.h"
#include "agent/ems/sqlite.h"

namespace zk::agent {

// The query for one record by its id, with the columns in read()'s order. Only
// the argument's type counts.
const char* selectOf(const EmsRecord&);
const char* selectOf(const DeviceRecord&);
const char* selectOf(const SubnetworkRecord&);
const char* selectOf(const LinkRecord&);
const char* selectOf(const NodeRecord&);
const char* selectOf(const SubMapRecord&);
const char* selectOf(const DisplayLinkRecord&);
const char* selectOf(const PhysicalLinkRecord&);

void read(const Statement& row, EmsRecord& record);
void read(const Statement& row, DeviceRecord& record);
void read(const Statement& row, SubnetworkRecord& record);
void read(const Statement& row, LinkRecord& record);
void read(const Statement& row, NodeRecord& record);
void read(const Statement& row, SubMapRecord& record);
void read(const Statement& row, DisplayLinkRecord& record);
void read(const Statement& row, PhysicalLinkRecord& record);

void insert(Database& database, const EmsRecord& record);
void insert(Database& database, const DeviceRecord& record);
void insert(Database& database, const SubnetworkRecord& record);
void insert(Database& database, const LinkRecord& record);
void insert(Database& database, const NodeRecord& record);
void insert(Database& database, const SubMapRecord& record);
void insert(Database& database, const DisplayLinkRecord& record);
void insert(Database& database, const PhysicalLinkRecord& record);

// The table that holds the kind's objects. Nodes and submaps share one, in which
// only rows with the condition are of the kind.
struct TableOf {
  const char* name;
  const char* condition;
};
TableOf tableOf(ObjectKind kind);

template <class Record, class Id>
std::optional<Record> find(Database& database, const Id& id) {
  std::optional<Record> record(std::in_place);
  Statement row = database.prepare(selectOf(*record), id);
  if (!row.step()) {
    return std::nullopt;
  }
  read(row, *record);
  return record;
}

// The object, whatever its kind, if it is where the key says.
std::optional<ObjectRecord> find(Database& database, const ObjectKey& key);

// See Inventory::labelInUse.
bool labelTaken(Database& database, ObjectKind kind, const std::string& label,
                const std::string& exceptId);

// The device id that the text writes in plain decimal, or 0.
long deviceIdOf(const std::string& text);

// Throws SqliteError when a table is missing or has other columns.
void checkTables(Database& database);

}  // namespace zk::agent

#endif
