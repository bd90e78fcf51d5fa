// Which objects of sessions there are, and whose they are: an object is named by
// 16 random bytes, so that nobody who was not told finds it. Safe on any thread.
#ifndef ZK_AGENT_ORB_OBJECTKEYS_H
#define ZK_AGENT_ORB_OBJECTKEYS_H

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>

#include "zk_quornex/platform/threadsafety.h"

namespace zk::agent {

// FOREIGN: there is such an object, and it belongs to another peer.
enum class Admission { ADMITTED, UNKNOWN, FOREIGN };

class ObjectKeys {
 public:
  static constexpr std::size_t SIZE = 16;

  // Throws std::runtime_error when the system has no random numbers to give.
  ObjectKeys();

  // A new id of SIZE bytes, any of them 0 as well; not remembered.
  static std::string make();

  // The id, of SIZE bytes, is an object of this peer from now on.
  void add(const std::string& id, const std::string& owner);
  void remove(const std::string& id);

  // Whether a request for the object may come from this peer. Asked for every
  // request: takes one lock of sixteen, shortly. An id may be of any length.
  Admission admits(std::string_view id, std::string_view peer) const;

 private:
  using Id = std::array<char, SIZE>;

  // The ids are random, and others are only looked for: some of their bytes are
  // as good as a hash of all.
  struct IdHash {
    std::size_t operator()(const Id& id) const;
  };

  struct Shard {
    mutable Mutex mutex;
    std::unordered_map<Id, std::string, IdHash> owners ZK_GUARDED_BY(mutex);
  };

  static Id idOf(std::string_view bytes);
  Shard& shardOf(const Id& id);
  const Shard& shardOf(const Id& id) const;

  std::array<Shard, 16> shards_;
};

}  // namespace zk::agent

#endif
