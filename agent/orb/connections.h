// Who is connected, and who has to go when there is no room for another. Safe on
// any thread.
#ifndef ZK_AGENT_ORB_CONNECTIONS_H
#define ZK_AGENT_ORB_CONNECTIONS_H

#include <atomic>
#include <chrono>
#include <set>
#include <string>

#include "zk_quornex/platform/threadsafety.h"

namespace zk::agent {

// One connection, as far as its right to stay goes.
class Connected {
 public:
  explicit Connected(std::string peer) : peer_(std::move(peer)) {}
  virtual ~Connected() = default;
  Connected(const Connected&) = delete;
  Connected& operator=(const Connected&) = delete;

  // The host at its other end.
  const std::string& peer() const { return peer_; }

  // It used an object that only a session has.
  void belongs() { belongs_.store(true, std::memory_order_relaxed); }
  bool isMember() const { return belongs_.load(std::memory_order_relaxed); }

  void use(std::chrono::steady_clock::time_point now) {
    used_.store(now.time_since_epoch().count(), std::memory_order_relaxed);
  }
  std::chrono::steady_clock::rep lastUse() const { return used_.load(std::memory_order_relaxed); }

  // Whether it has been told to go.
  bool isLeaving() const { return leaving_.load(std::memory_order_relaxed); }

 protected:
  // Makes the thread that serves it end. Must not block, nor call Connections.
  virtual void hangUp() = 0;

 private:
  friend class Connections;
  void dismiss() {
    leaving_.store(true, std::memory_order_relaxed);
    hangUp();
  }

  const std::string peer_;
  std::atomic<bool> belongs_{false};
  std::atomic<bool> leaving_{false};
  std::atomic<std::chrono::steady_clock::rep> used_{0};
};

class Connections {
 public:
  struct Limits {
    std::size_t all;
    std::size_t ofPeer;
  };

  explicit Connections(Limits limits) : limits_(limits) {}

  // Takes it in, which always succeeds: when that makes too many of its peer, or
  // of all, the one among them that did nothing for longest hangs up, those
  // without a session first. It must leave before it ends.
  void enter(Connected& connection);
  void leave(Connected& connection);

  // Makes room for a descriptor: the one that did nothing for longest hangs up.
  void dismissIdlest();
  // Everybody hangs up, and whoever enters from now on.
  void close();

  std::size_t count() const;

 private:
  // Of this peer, or of all when it is empty; those that leave already do not count.
  std::size_t countOf(const std::string& peer) const ZK_REQUIRES(mutex_);
  void dismissIdlestOf(const std::string& peer, const Connected* but) ZK_REQUIRES(mutex_);

  const Limits limits_;
  mutable Mutex mutex_;
  std::set<Connected*> connected_ ZK_GUARDED_BY(mutex_);
  bool closed_ ZK_GUARDED_BY(mutex_) = false;
};

// As many as the process's descriptors allow, half of them left for files and
// connections of the agent's own; a peer may have nearly all of them. At most 512
// and 448.
Connections::Limits connectionLimits();

}  // namespace zk::agent

#endif
