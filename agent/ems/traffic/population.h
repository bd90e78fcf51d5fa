// What made-up changes are about, and how it is chosen. For one thread.
#ifndef ZK_AGENT_EMS_TRAFFIC_POPULATION_H
#define ZK_AGENT_EMS_TRAFFIC_POPULATION_H

#include <cstddef>
#include <map>
#include <random>
#include <vector>

#include "agent/ems/inventory.h"

namespace zk::agent {

// The traffic's own objects carry these, by which it finds them again after a
// restart instead of adding to them for ever.
inline constexpr char TRAFFIC_OWNER[] = "traffic";
inline constexpr char TRAFFIC_PHYSICAL_LINK[] = "traffic-";  // how their ids begin

// The objects that were there before, and those that the traffic itself created.
class Population {
 public:
  explicit Population(const Inventory& inventory);

  // Devices, links, nodes and submaps that others put there. The physical root
  // is not among them.
  const std::vector<ObjectKey>& others(ObjectKind kind) const;
  const std::vector<ObjectKey>& own() const { return own_; }

  void addOwn(ObjectKey key) { own_.push_back(std::move(key)); }
  void forget(const ObjectKey& key);

 private:
  template <class Record>
  void sort(const std::vector<Record>& records);
  void findPhysicalLinks(const Inventory& inventory);

  std::map<ObjectKind, std::vector<ObjectKey>> others_;
  std::vector<ObjectKey> own_;
};

// Random choices that are the same on every machine for the same seed, which
// the standard library's distributions are not.
class Chance {
 public:
  explicit Chance(unsigned seed) : engine_(seed) {}

  // 0 to count - 1; count is at least 1.
  std::size_t below(std::size_t count) { return engine_() % count; }

  // container is not empty.
  template <class Container>
  auto& oneOf(Container& container) {
    return container[below(container.size())];
  }

 private:
  std::mt19937 engine_;
};

}  // namespace zk::agent

#endif
