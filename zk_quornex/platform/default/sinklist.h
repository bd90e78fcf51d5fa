// The sinks that the standard pusher serves. Safe on any thread.
#ifndef ZK_PLATFORM_DEFAULT_SINKLIST_H
#define ZK_PLATFORM_DEFAULT_SINKLIST_H

#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "zk_quornex/platform/default/sinkqueue.h"

namespace zk::platform {

class SinkList {
 public:
  using ByName = std::map<std::string, std::shared_ptr<SinkQueue>>;

  // The sinks as they are now; never null. What is added or removed later does
  // not show in it.
  std::shared_ptr<const ByName> current() const;

  // False, changing nothing, when the name is taken.
  bool add(const std::string& name, std::shared_ptr<EventSink> sink, std::size_t capacity);

  // Takes the sink off the list; null when there is none of this name.
  std::shared_ptr<SinkQueue> remove(const std::string& name);

 private:
  // Protects the pointer; the map behind it is replaced, never changed.
  mutable std::mutex mutex_;
  std::shared_ptr<const ByName> sinks_ = std::make_shared<ByName>();
};

}  // namespace zk::platform

#endif
