// Random choices that are the same on every machine for the same seed, which
// the standard library's distributions are not.
#ifndef ZK_AGENT_EMS_TRAFFIC_CHANCE_H
#define ZK_AGENT_EMS_TRAFFIC_CHANCE_H

#include <cstddef>
#include <random>

namespace zk::agent {

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
