#include "agent/ems/tables.h"

namespace zk::agent {

namespace {

template <class... Records>
void prepareAll(Tables& tables) {
  (tables.prepare(selectOf<Records>("1")), ...);
}

}  // namespace

Tables::Tables(const std::string& path)
    : database_(path, SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE | SQLite::OPEN_NOMUTEX) {}

SQLite::Statement* Tables::borrow(const std::string& sql) {
  return &statements_.try_emplace(sql, database_, sql).first->second;
}

void Tables::check() {
  prepareAll<EmsRecord, DeviceRecord, SubnetworkRecord, LinkRecord, NodeRecord, SubMapRecord,
             DisplayLinkRecord, PhysicalLinkRecord, AlarmRecord>(*this);
}

}  // namespace zk::agent
