#include "agent/ems/inventory.h"

#include <condition_variable>
#include <mutex>
#include <utility>

#include "agent/ems/alarms.h"
#include "agent/ems/delivery.h"
#include "agent/ems/inventoryfile.h"
#include "agent/ems/objects.h"

namespace zk::agent {

namespace {

// A lock that is had in the order of asking. Readers that ask again and again
// would keep a change waiting for long on a lock without order.
class TurnLock {
 public:
  void lock() {
    std::unique_lock<std::mutex> guard(mutex_);
    const unsigned long turn = last_++;
    moved_.wait(guard, [&] { return turn == current_; });
  }

  void unlock() {
    {
      const std::lock_guard<std::mutex> guard(mutex_);
      ++current_;
    }
    moved_.notify_all();
  }

 private:
  std::mutex mutex_;
  std::condition_variable moved_;
  unsigned long last_ = 0;     // the turn that the next one to ask gets
  unsigned long current_ = 0;  // whose turn it is
};

}  // namespace

// One step of reading or changing, with its lock, its transaction and its errors.
class Inventory::Impl {
 public:
  Impl(const std::string& path, const SeedOptions& seed)
      : path_(path), tables_(openInventoryFile(path, seed)) {}

  const std::string& path() const { return path_; }
  Delivery& delivery() { return delivery_; }

  // One connection serves all threads in turn: another would have to be let in
  // beside the exclusive lock, and one query takes microseconds.
  template <class Query>
  auto query(Query&& run) {
    const std::lock_guard<TurnLock> guard(lock_);
    return guarded(run);
  }

  // step changes the tables and adds what the listener is to be told; unless it
  // returns Done, both are forgotten.
  template <class Step>
  Result change(Step&& step) {
    const Result result = query([&] { return stored(step); });
    if (result == Result::Done) {
      delivery_.deliver();
    }
    return result;
  }

  template <class Record, class Id>
  std::optional<Record> find(const Id& id) {
    return query([&] { return tables_.find<Record>(id); });
  }

  template <class Record, class Id>
  std::vector<Record> findAll(const std::vector<Id>& ids) {
    return query([&] {
      std::vector<Record> records;
      records.reserve(ids.size());
      for (const Id& id : ids) {
        if (auto record = tables_.find<Record>(id)) {
          records.push_back(std::move(*record));
        }
      }
      return records;
    });
  }

  template <class Record>
  Result create(Record& record) {
    ObjectRecord made = record;
    const Result result =
        change([&](ListenerCalls& calls) { return objects_.create(made, calls); });
    if (result == Result::Done) {
      record = std::get<Record>(std::move(made));
    }
    return result;
  }

  // For query and change.
  Tables& tables() { return tables_; }
  Objects& objects() { return objects_; }
  Alarms& alarms() { return alarms_; }

 private:
  template <class Step>
  Result stored(Step& step) {
    ListenerCalls calls;
    SQLite::Transaction transaction(tables_.database(), SQLite::TransactionBehavior::IMMEDIATE);
    const Result result = step(calls);
    if (result == Result::Done) {
      transaction.commit();
      delivery_.queue(std::move(calls));
    }
    return result;
  }

  template <class Work>
  auto guarded(Work& work) {
    try {
      return work();
    } catch (const SQLite::Exception& error) {
      throw InventoryError("inventory " + path_ + ": " + error.what());
    }
  }

  const std::string path_;
  Delivery delivery_;

  TurnLock lock_;  // taken before the delivery's queue, never during a delivery
  Tables tables_;
  Alarms alarms_{tables_};
  Objects objects_{tables_, alarms_};
};

std::unique_ptr<Inventory> Inventory::open(const std::string& path, const SeedOptions& seed) {
  return std::unique_ptr<Inventory>(new Inventory(std::make_unique<Impl>(path, seed)));
}

Inventory::Inventory(std::unique_ptr<Impl> impl) : impl_(std::move(impl)) {}

Inventory::~Inventory() = default;

const std::string& Inventory::path() const { return impl_->path(); }

void Inventory::setListener(ChangeListener* listener) { impl_->delivery().setListener(listener); }

// --- Queries ---

EmsRecord Inventory::ems() const { return impl_->find<EmsRecord>("").value_or(EmsRecord()); }

SubnetworkRecord Inventory::subnetwork() const {
  return impl_->find<SubnetworkRecord>(SUBNETWORK_ID).value_or(SubnetworkRecord());
}

std::optional<DeviceRecord> Inventory::device(long id) const {
  return impl_->find<DeviceRecord>(id);
}

std::optional<LinkRecord> Inventory::link(const std::string& id) const {
  return impl_->find<LinkRecord>(id);
}

std::optional<NodeRecord> Inventory::node(const std::string& id) const {
  return impl_->find<NodeRecord>(id);
}

std::optional<SubMapRecord> Inventory::subMap(const std::string& id) const {
  return impl_->find<SubMapRecord>(id);
}

std::optional<DisplayLinkRecord> Inventory::displayLink(const std::string& id) const {
  return impl_->find<DisplayLinkRecord>(id);
}

std::optional<PhysicalLinkRecord> Inventory::physicalLink(const std::string& id) const {
  return impl_->find<PhysicalLinkRecord>(id);
}

bool Inventory::exists(const ObjectKey& key) const {
  return impl_->query([&] { return impl_->objects().find(key).has_value(); });
}

std::vector<long> Inventory::deviceIds() const {
  return impl_->query(
      [&] { return impl_->tables().valuesOf<long>("SELECT id FROM device ORDER BY id"); });
}

std::vector<DeviceRecord> Inventory::devices(const std::vector<long>& ids) const {
  return impl_->findAll<DeviceRecord>(ids);
}

std::vector<std::string> Inventory::ids(ObjectKind kind, const std::string& parentId) const {
  return impl_->query([&] { return impl_->objects().ids(kind, parentId); });
}

std::vector<LinkRecord> Inventory::links(const std::vector<std::string>& ids) const {
  return impl_->findAll<LinkRecord>(ids);
}

std::vector<NodeRecord> Inventory::nodes(const std::vector<std::string>& ids) const {
  return impl_->findAll<NodeRecord>(ids);
}

std::vector<SubMapRecord> Inventory::subMaps(const std::vector<std::string>& ids) const {
  return impl_->findAll<SubMapRecord>(ids);
}

std::vector<DisplayLinkRecord> Inventory::displayLinks(const std::vector<std::string>& ids) const {
  return impl_->findAll<DisplayLinkRecord>(ids);
}

std::vector<PhysicalLinkRecord> Inventory::physicalLinks(
    const std::vector<std::string>& ids) const {
  return impl_->findAll<PhysicalLinkRecord>(ids);
}

long Inventory::count(ObjectKind kind) const {
  return impl_->query([&] { return impl_->objects().count(kind); });
}

bool Inventory::labelInUse(ObjectKind kind, const std::string& label,
                           const std::string& exceptId) const {
  return impl_->query([&] { return impl_->objects().labelInUse(kind, label, exceptId); });
}

// --- Changes ---

Result Inventory::setAttribute(const ObjectKey& key, Attribute attribute, const std::string& text,
                               const ChangeOptions& options) {
  return impl_->change([&](ListenerCalls& calls) {
    return impl_->objects().setAttribute(key, attribute, text, options, calls);
  });
}

Result Inventory::create(DeviceRecord& device) { return impl_->create(device); }
Result Inventory::create(LinkRecord& link) { return impl_->create(link); }
Result Inventory::create(NodeRecord& node) { return impl_->create(node); }
Result Inventory::create(SubMapRecord& subMap) { return impl_->create(subMap); }
Result Inventory::create(DisplayLinkRecord& displayLink) { return impl_->create(displayLink); }
Result Inventory::create(PhysicalLinkRecord& physicalLink) { return impl_->create(physicalLink); }

Result Inventory::remove(const ObjectKey& key) {
  return impl_->change([&](ListenerCalls& calls) { return impl_->objects().remove(key, calls); });
}

// --- Alarms ---

Result Inventory::raiseAlarm(AlarmRecord& alarm) {
  AlarmRecord raised = alarm;
  const Result result =
      impl_->change([&](ListenerCalls& calls) { return impl_->alarms().raise(raised, calls); });
  if (result == Result::Done) {
    alarm = std::move(raised);
  }
  return result;
}

Result Inventory::clearAlarm(long id) {
  return impl_->change([&](ListenerCalls& calls) { return impl_->alarms().clear(id, calls); });
}

std::optional<AlarmRecord> Inventory::alarm(long id) const { return impl_->find<AlarmRecord>(id); }

std::vector<AlarmRecord> Inventory::activeAlarms(std::optional<long> deviceId) const {
  return impl_->query([&] { return impl_->alarms().list(deviceId); });
}

}  // namespace zk::agent
