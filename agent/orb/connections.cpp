#include "agent/orb/connections.h"

#include <sys/resource.h>

#include <algorithm>
#include <tuple>

namespace zk::agent {

void Connections::enter(Connected& connection) {
  const MutexLock lock(mutex_);
  connection.use(std::chrono::steady_clock::now());
  connected_.insert(&connection);
  if (closed_) {
    connection.dismiss();
    return;
  }
  if (countOf(connection.peer()) > limits_.ofPeer) {
    dismissIdlestOf(connection.peer(), &connection);
  } else if (countOf("") > limits_.all) {
    dismissIdlestOf("", &connection);
  }
}

void Connections::leave(Connected& connection) {
  const MutexLock lock(mutex_);
  connected_.erase(&connection);
}

void Connections::dismissIdlest() {
  const MutexLock lock(mutex_);
  dismissIdlestOf("", nullptr);
}

void Connections::close() {
  const MutexLock lock(mutex_);
  closed_ = true;
  for (Connected* connection : connected_) {
    connection->dismiss();
  }
}

std::size_t Connections::count() const {
  const MutexLock lock(mutex_);
  return connected_.size();
}

std::size_t Connections::countOf(const std::string& peer) const {
  return static_cast<std::size_t>(
      std::count_if(connected_.begin(), connected_.end(), [&peer](const Connected* connection) {
        return !connection->isLeaving() && (peer.empty() || connection->peer() == peer);
      }));
}

void Connections::dismissIdlestOf(const std::string& peer, const Connected* but) {
  Connected* idlest = nullptr;
  for (Connected* connection : connected_) {
    if (connection == but || connection->isLeaving() ||
        (!peer.empty() && connection->peer() != peer)) {
      continue;
    }
    if (idlest == nullptr || std::make_tuple(connection->isMember(), connection->lastUse()) <
                                 std::make_tuple(idlest->isMember(), idlest->lastUse())) {
      idlest = connection;
    }
  }
  if (idlest != nullptr) {
    idlest->dismiss();
  }
}

Connections::Limits connectionLimits() {
  rlimit descriptors{};
  getrlimit(RLIMIT_NOFILE, &descriptors);
  const std::size_t all = std::clamp<std::size_t>(descriptors.rlim_cur / 2, 8, 512);
  return {all, all - all / 8};
}

}  // namespace zk::agent
