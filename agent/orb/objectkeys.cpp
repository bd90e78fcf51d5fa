#include "agent/orb/objectkeys.h"

#include <sodium.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>

namespace zk::agent {

ObjectKeys::ObjectKeys() {
  if (sodium_init() < 0) {
    throw std::runtime_error("the cryptographic library cannot be started");
  }
}

std::string ObjectKeys::make() {
  std::string id(SIZE, '\0');
  randombytes_buf(id.data(), id.size());
  return id;
}

void ObjectKeys::add(const std::string& id, const std::string& owner) {
  const Id key = idOf(id);
  Shard& shard = shardOf(key);
  const MutexLock lock(shard.mutex);
  shard.owners[key] = owner;
}

void ObjectKeys::remove(const std::string& id) {
  const Id key = idOf(id);
  Shard& shard = shardOf(key);
  const MutexLock lock(shard.mutex);
  shard.owners.erase(key);
}

Admission ObjectKeys::admits(std::string_view id, std::string_view peer) const {
  if (id.size() != SIZE) {
    return Admission::UNKNOWN;
  }
  const Id key = idOf(id);
  const Shard& shard = shardOf(key);
  const MutexLock lock(shard.mutex);
  const auto found = shard.owners.find(key);
  if (found == shard.owners.end()) {
    return Admission::UNKNOWN;
  }
  return found->second == peer ? Admission::ADMITTED : Admission::FOREIGN;
}

std::size_t ObjectKeys::IdHash::operator()(const Id& id) const {
  std::size_t hash = 0;
  std::memcpy(&hash, id.data(), sizeof hash);
  return hash;
}

ObjectKeys::Id ObjectKeys::idOf(std::string_view bytes) {
  Id id{};
  std::copy_n(bytes.begin(), std::min(bytes.size(), id.size()), id.begin());
  return id;
}

const ObjectKeys::Shard& ObjectKeys::shardOf(const Id& id) const {
  return shards_.at(static_cast<unsigned char>(id.back()) % shards_.size());
}

ObjectKeys::Shard& ObjectKeys::shardOf(const Id& id) {
  return shards_.at(static_cast<unsigned char>(id.back()) % shards_.size());
}

}  // namespace zk::agent
