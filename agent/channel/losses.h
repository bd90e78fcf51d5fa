// Telling one session's NMS that events were lost to it, and that the loss is
// over. Safe on any thread.
#ifndef ZK_AGENT_CHANNEL_LOSSES_H
#define ZK_AGENT_CHANNEL_LOSSES_H

#include <array>
#include <cstddef>
#include <memory>
#include <set>
#include <string>

#include "agent/base/workers.h"
#include "zk_quornex/platform/threadsafety.h"

namespace zk::agent {

// The way to the NMS. Called by one thread at a time, which may take its time;
// no lock of the channel or the event cache is held.
class LossListener {
 public:
  virtual ~LossListener() = default;
  // startTime: when the first lost event happened; notificationId: its own, ""
  // when it had none.
  virtual void lossOccurred(const std::string& startTime, const std::string& notificationId) = 0;
  virtual void lossCleared(const std::string& endTime) = 0;
};

// The NMS has one notion of loss for the whole session: it begins with the first
// proxy that loses an event and is over when the last of them has recovered.
class Losses : public std::enable_shared_from_this<Losses> {
 public:
  // listener may be null: nobody is told then.
  Losses(std::shared_ptr<LossListener> listener, std::shared_ptr<Workers> workers);

  // Quick: callers hold the locks of the event cache. Without memory it throws
  // std::bad_alloc, and nothing was lost yet.
  void lost(long proxy, const std::string& time, const std::string& notificationId);
  // Also when the proxy is gone; fine for a proxy that lost nothing.
  void recovered(long proxy) noexcept;
  // Nothing is told any more.
  void close();

 private:
  struct Message {
    bool cleared = false;
    std::string time;
    std::string notificationId;
  };

  void post(Message message) noexcept ZK_REQUIRES(mutex_);
  bool takeNext(Message& message);
  void tellAll();
  void tell(const Message& message);

  const std::shared_ptr<LossListener> listener_;
  const std::shared_ptr<Workers> workers_;
  Mutex mutex_;
  std::set<long> losing_ ZK_GUARDED_BY(mutex_);
  // Occurred, then cleared.
  std::array<Message, 2> untold_ ZK_GUARDED_BY(mutex_);
  std::size_t untoldCount_ ZK_GUARDED_BY(mutex_) = 0;
  bool telling_ ZK_GUARDED_BY(mutex_) = false;
  bool closed_ ZK_GUARDED_BY(mutex_) = false;
};

}  // namespace zk::agent

#endif
