#include "agent/ems/traffic/population.h"

#include <algorithm>

namespace zk::agent {

Population::Population(const Inventory& inventory) {
  sort(inventory.devices(inventory.deviceIds()));
  sort(inventory.subMaps(inventory.ids(ObjectKind::SUB_MAP)));
  sort(inventory.nodes(inventory.ids(ObjectKind::NODE)));
  sort(inventory.links(inventory.ids(ObjectKind::LINK)));
  findPhysicalLinks(inventory);
}

template <class Record>
void Population::sort(const std::vector<Record>& records) {
  for (const Record& record : records) {
    const ObjectKey key = keyOf(record);
    if (record.owner == TRAFFIC_OWNER) {
      own_.push_back(key);
    } else if (key.id != ROOT_SUBMAP_ID) {
      others_[key.kind].push_back(key);
    }
  }
}

void Population::findPhysicalLinks(const Inventory& inventory) {
  for (const std::string& id : inventory.ids(ObjectKind::PHYSICAL_LINK)) {
    if (id.rfind(TRAFFIC_PHYSICAL_LINK, 0) == 0) {
      own_.push_back({ObjectKind::PHYSICAL_LINK, id, {}});
    }
  }
}

const std::vector<ObjectKey>& Population::others(ObjectKind kind) const {
  static const std::vector<ObjectKey> none;
  const auto found = others_.find(kind);
  return found != others_.end() ? found->second : none;
}

void Population::forget(const ObjectKey& key) {
  for (std::vector<ObjectKey>* keys : {&own_, &others_[key.kind]}) {
    keys->erase(std::remove(keys->begin(), keys->end(), key), keys->end());
  }
}

}  // namespace zk::agent
