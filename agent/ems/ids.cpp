#include "agent/ems/ids.h"

#include <algorithm>

#include "agent/ems/tables.h"

namespace zk::agent {

namespace {

long counterOf(ObjectKind kind) {
  return static_cast<long>(kind == ObjectKind::SubMap ? ObjectKind::Node : kind);
}

// Someone may have chosen the id that is next for an object of his own.
bool taken(Database& database, ObjectKind kind, long id) {
  return database.valueOf<bool>(
      std::string("SELECT 1 FROM ") + tableOf(kind).name + " WHERE id = ?", std::to_string(id));
}

}  // namespace

long newId(Database& database, ObjectKind kind) {
  long id = std::max(
      1L, database.valueOf<long>("SELECT next FROM counter WHERE kind = ?", counterOf(kind)));
  while (taken(database, kind, id)) {
    ++id;
  }
  setNextId(database, kind, id + 1);
  return id;
}

void setNextId(Database& database, ObjectKind kind, long next) {
  database.execute("INSERT OR REPLACE INTO counter (kind, next) VALUES (?, ?)", counterOf(kind),
                   next);
}

}  // namespace zk::agent
