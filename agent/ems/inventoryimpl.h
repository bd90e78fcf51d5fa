// What the inventory's operations are made of: one step of reading or changing,
// with its lock, its transaction and its errors.
#ifndef ZK_AGENT_EMS_INVENTORYIMPL_H
#define ZK_AGENT_EMS_INVENTORYIMPL_H

#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "agent/ems/delivery.h"
#include "agent/ems/inventory.h"
#include "agent/ems/inventoryfile.h"
#include "agent/ems/sqlite.h"
#include "agent/ems/turnlock.h"

namespace zk::agent {

class Inventory::Impl {
 public:
  Impl(const std::string& path, const SeedOptions& seed)
      : path_(path), database_(openInventoryFile(path, seed)) {}

  const std::string& path() const { return path_; }
  Delivery& delivery() { return delivery_; }

  // One connection serves all threads in turn: another would have to be let in
  // beside the exclusive lock, and one query takes microseconds.
  template <class Query>
  auto query(Query&& run) {
    const std::lock_guard<TurnLock> guard(lock_);
    return guarded([&] { return run(database_); });
  }

  // step(database, calls) changes the tables and adds what the listener is to be
  // told; unless it returns Done, both are forgotten.
  template <class Step>
  Result change(Step&& step) {
    const Result result = stored(step);
    if (result == Result::Done) {
      delivery_.deliver();
    }
    return result;
  }

  template <class Record>
  Result create(Record& record);

 private:
  template <class Step>
  Result stored(Step& step) {
    const std::lock_guard<TurnLock> guard(lock_);
    return guarded([&] {
      std::vector<ListenerCall> calls;
      Transaction transaction(database_);
      const Result result = step(database_, calls);
      if (result == Result::Done) {
        transaction.commit();
        delivery_.queue(std::move(calls));
      }
      return result;
    });
  }

  template <class Work>
  auto guarded(Work&& work) {
    try {
      return work();
    } catch (const SqliteError& error) {
      throw InventoryError("inventory " + path_ + ": " + error.what());
    }
  }

  const std::string path_;
  Delivery delivery_;

  TurnLock lock_;  // taken before the delivery's queue, never during a delivery
  Database database_;
};

}  // namespace zk::agent

#endif
