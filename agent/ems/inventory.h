// The embedded EMS's records of its network, in one SQLite file. Safe on any
// thread.
//
// A change is on disk when its call returns Done; any other result, and any
// exception, leaves everything as it was. Every operation throws InventoryError
// when the storage fails.
#ifndef ZK_AGENT_EMS_INVENTORY_H
#define ZK_AGENT_EMS_INVENTORY_H

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "agent/ems/changes.h"
#include "agent/ems/records.h"

namespace zk::agent {

// The text names the file and says what is wrong with it.
class InventoryError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The sample network that a new inventory starts with: the same for the same
// options.
struct SeedOptions {
  int devices = 200;  // 0 to 100000
  int sites = 8;      // 1 to 1000
};

class Inventory {
 public:
  // Opens the inventory in the file, or makes and seeds one when there is no
  // file or an empty one. ":memory:" keeps it in memory. Throws InventoryError
  // for a file that another process has open, that is no inventory, is damaged,
  // of another version or cannot be written; such a file is left as it was.
  static std::unique_ptr<Inventory> open(const std::string& path, const SeedOptions& seed = {});
  ~Inventory();
  Inventory(const Inventory&) = delete;
  Inventory& operator=(const Inventory&) = delete;

  const std::string& path() const;

  // The caller keeps the listener; null for none. When this returns, no call to
  // the one before is running any more (unless that is where this was called).
  void setListener(ChangeListener* listener);

  // --- Queries ---

  EmsRecord ems() const;
  SubnetworkRecord subnetwork() const;
  std::optional<DeviceRecord> device(long id) const;
  std::optional<LinkRecord> link(const std::string& id) const;
  std::optional<NodeRecord> node(const std::string& id) const;
  std::optional<SubMapRecord> subMap(const std::string& id) const;
  std::optional<DisplayLinkRecord> displayLink(const std::string& id) const;
  std::optional<PhysicalLinkRecord> physicalLink(const std::string& id) const;
  bool exists(const ObjectKey& key) const;

  // For iterators: first the ids, a snapshot, then page by page the records of
  // some of them, in the order asked for; an object that is gone is left out.
  std::vector<long> deviceIds() const;
  std::vector<DeviceRecord> devices(const std::vector<long>& ids) const;
  // parentId, for nodes, submaps and display links, asks for one submap's own;
  // empty asks for all. Devices and the EMS have no text ids: none are returned.
  std::vector<std::string> ids(ObjectKind kind, const std::string& parentId = {}) const;
  std::vector<LinkRecord> links(const std::vector<std::string>& ids) const;
  std::vector<NodeRecord> nodes(const std::vector<std::string>& ids) const;
  std::vector<SubMapRecord> subMaps(const std::vector<std::string>& ids) const;
  std::vector<DisplayLinkRecord> displayLinks(const std::vector<std::string>& ids) const;

  long count(ObjectKind kind) const;

  // Whether an object of the kind other than exceptId has this user label. No
  // one has the empty one.
  bool labelInUse(ObjectKind kind, const std::string& label, const std::string& exceptId) const;

  // --- Changes ---

  // Storing what is there already is Done and not told to the listener. A
  // physical link has no attributes to set: NoSuchObject. A device's native name
  // is its name, and may not be empty.
  Result setAttribute(const ObjectKey& key, Attribute attribute, const std::string& text,
                      const ChangeOptions& options = {});
  Result setUserLabel(const ObjectKey& key, const std::string& text,
                      const ChangeOptions& options = {}) {
    return setAttribute(key, Attribute::USER_LABEL, text, options);
  }
  Result setOwner(const ObjectKey& key, const std::string& text,
                  const ChangeOptions& options = {}) {
    return setAttribute(key, Attribute::OWNER, text, options);
  }
  Result setNativeName(const ObjectKey& key, const std::string& text,
                       const ChangeOptions& options = {}) {
    return setAttribute(key, Attribute::NATIVE_NAME, text, options);
  }
  Result renameDevice(long id, const std::string& name) {
    return setNativeName({ObjectKind::DEVICE, std::to_string(id), {}}, name);
  }

  // An id of 0 or "" is replaced by a new one, which the EMS never gave out
  // before; an empty user label by the native name. Any other result than Done
  // leaves the record as it was. A device id goes up to 2147483647, the last one
  // that the platform's EMS services take.
  Result create(DeviceRecord& device);
  Result create(LinkRecord& link);
  Result create(NodeRecord& node);
  Result create(SubMapRecord& subMap);
  Result create(DisplayLinkRecord& displayLink);
  Result create(PhysicalLinkRecord& physicalLink);

  // ObjectInUse while others refer to it: links and nodes to a device, physical
  // links to a link, display links to a node or submap, anything inside to a
  // submap. The EMS, the subnetwork and the root stay: BadValue. The alarms of a
  // device go with it, and are told as cleared before it.
  Result remove(const ObjectKey& key);

  // --- Alarms ---

  // Gives alarm its id. Raising one that is active replaces its contents and
  // keeps its id and the time it was first raised; with the same contents it is
  // Done and not told again. BadValue for the severity Cleared or an empty
  // probable cause.
  Result raiseAlarm(AlarmRecord& alarm);
  Result clearAlarm(long id);
  std::optional<AlarmRecord> alarm(long id) const;
  // Oldest first; of one device, or of all and the EMS itself without one.
  std::vector<AlarmRecord> activeAlarms(std::optional<long> deviceId = std::nullopt) const;

 private:
  class Impl;
  explicit Inventory(std::unique_ptr<Impl> impl);
  std::unique_ptr<Impl> impl_;
};

}  // namespace zk::agent

#endif
