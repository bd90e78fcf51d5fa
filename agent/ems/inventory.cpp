#include "agent/ems/inventory.h"

#include <utility>

#include "agent/ems/alarms.h"
#include "agent/ems/changes.h"
#include "agent/ems/objects.h"
#include "zk_quornex/platform/threadsafety.h"

namespace zk::agent {

namespace {

// A lock that is had in the order of asking. Readers that ask again and again
// would keep a change waiting for long on a lock without order.
class ZK_CAPABILITY("mutex") TurnLock {
 public:
  void lock() ZK_ACQUIRE() {
    const MutexLock guard(mutex_);
    const unsigned long turn = last_++;
    while (turn != current_) {
      moved_.wait(mutex_);
    }
  }

  void unlock() ZK_RELEASE() {
    {
      const MutexLock guard(mutex_);
      ++current_;
    }
    moved_.notifyAll();
  }

 private:
  Mutex mutex_;
  Condition moved_;
  unsigned long last_ ZK_GUARDED_BY(mutex_) = 0;     // the turn that the next one to ask gets
  unsigned long current_ ZK_GUARDED_BY(mutex_) = 0;  // whose turn it is
};

class ZK_SCOPED_CAPABILITY Turn {
 public:
  explicit Turn(TurnLock& lock) ZK_ACQUIRE(lock) : lock_(lock) { lock_.lock(); }
  ~Turn() ZK_RELEASE() { lock_.unlock(); }
  Turn(const Turn&) = delete;
  Turn& operator=(const Turn&) = delete;

 private:
  TurnLock& lock_;
};

// What the lock is over.
struct Network {
  Tables tables;
  Alarms alarms{tables};
  Objects objects{tables, alarms};
};

}  // namespace

// One step of reading or changing, with its lock, its transaction and its errors.
class Inventory::Impl {
 public:
  Impl(const std::string& path, const SeedOptions& seed)
      : path_(path), network_{Tables::open(path, seed)} {}

  const std::string& path() const { return path_; }
  Delivery& delivery() { return delivery_; }

  // One connection serves all threads in turn: another would have to be let in
  // beside the exclusive lock, and one query takes microseconds.
  template <class Query>
  auto query(Query&& run) {
    const Turn turn(lock_);
    try {
      return run(network_);
    } catch (const SQLite::Exception& error) {
      throw InventoryError("inventory " + path_ + ": " + error.what());
    }
  }

  // step changes the network and adds what the listener is to be told; unless it
  // returns Done, both are forgotten.
  template <class Step>
  Result change(Step&& step) {
    const Result result = query([&](Network& network) { return stored(network, step); });
    if (result == Result::DONE) {
      delivery_.deliver();
    }
    return result;
  }

  template <class Record, class Id>
  std::optional<Record> find(const Id& id) {
    return query([&](Network& network) { return network.tables.find<Record>(id); });
  }

  template <class Record, class Id>
  std::vector<Record> findAll(const std::vector<Id>& ids) {
    return query([&](Network& network) {
      std::vector<Record> records;
      records.reserve(ids.size());
      for (const Id& id : ids) {
        if (auto record = network.tables.find<Record>(id)) {
          records.push_back(std::move(*record));
        }
      }
      return records;
    });
  }

  template <class Record>
  Result create(Record& record) {
    ObjectRecord made = record;
    const Result result = change([&](Network& network, ListenerCalls& calls) {
      return network.objects.create(made, calls);
    });
    if (result == Result::DONE) {
      record = std::get<Record>(std::move(made));
    }
    return result;
  }

 private:
  template <class Step>
  Result stored(Network& network, Step& step) {
    ListenerCalls calls;
    SQLite::Transaction transaction(network.tables.database(),
                                    SQLite::TransactionBehavior::IMMEDIATE);
    const Result result = step(network, calls);
    if (result == Result::DONE) {
      transaction.commit();
      delivery_.queue(std::move(calls));
    }
    return result;
  }

  const std::string path_;
  Delivery delivery_;
  TurnLock lock_;  // taken before the delivery's queue, never during a delivery
  Network network_ ZK_GUARDED_BY(lock_);
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
  return impl_->query([&](Network& network) { return network.objects.find(key).has_value(); });
}

std::vector<long> Inventory::deviceIds() const {
  return impl_->query([](Network& network) {
    return network.tables.valuesOf<long>("SELECT id FROM device ORDER BY id");
  });
}

std::vector<DeviceRecord> Inventory::devices(const std::vector<long>& ids) const {
  return impl_->findAll<DeviceRecord>(ids);
}

std::vector<std::string> Inventory::ids(ObjectKind kind, const std::string& parentId) const {
  return impl_->query([&](Network& network) { return network.objects.ids(kind, parentId); });
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

long Inventory::count(ObjectKind kind) const {
  return impl_->query([&](Network& network) { return network.objects.count(kind); });
}

bool Inventory::labelInUse(ObjectKind kind, const std::string& label,
                           const std::string& exceptId) const {
  return impl_->query(
      [&](Network& network) { return network.objects.labelInUse(kind, label, exceptId); });
}

// --- Changes ---

Result Inventory::setAttribute(const ObjectKey& key, Attribute attribute, const std::string& text,
                               const ChangeOptions& options) {
  return impl_->change([&](Network& network, ListenerCalls& calls) {
    return network.objects.setAttribute(key, attribute, text, options, calls);
  });
}

Result Inventory::create(DeviceRecord& device) { return impl_->create(device); }
Result Inventory::create(LinkRecord& link) { return impl_->create(link); }
Result Inventory::create(NodeRecord& node) { return impl_->create(node); }
Result Inventory::create(SubMapRecord& subMap) { return impl_->create(subMap); }
Result Inventory::create(DisplayLinkRecord& displayLink) { return impl_->create(displayLink); }
Result Inventory::create(PhysicalLinkRecord& physicalLink) { return impl_->create(physicalLink); }

Result Inventory::remove(const ObjectKey& key) {
  return impl_->change(
      [&](Network& network, ListenerCalls& calls) { return network.objects.remove(key, calls); });
}

// --- Alarms ---

Result Inventory::raiseAlarm(AlarmRecord& alarm) {
  AlarmRecord raised = alarm;
  const Result result = impl_->change(
      [&](Network& network, ListenerCalls& calls) { return network.alarms.raise(raised, calls); });
  if (result == Result::DONE) {
    alarm = std::move(raised);
  }
  return result;
}

Result Inventory::clearAlarm(long id) {
  return impl_->change(
      [&](Network& network, ListenerCalls& calls) { return network.alarms.clear(id, calls); });
}

std::optional<AlarmRecord> Inventory::alarm(long id) const { return impl_->find<AlarmRecord>(id); }

std::vector<AlarmRecord> Inventory::activeAlarms(std::optional<long> deviceId) const {
  return impl_->query([&](Network& network) { return network.alarms.list(deviceId); });
}

}  // namespace zk::agent
