// One part of the platform that a process, or a test, can put its own
// implementation in place of. Safe on any thread; installing is meant for
// set-up and for tests, while no other thread is inside a call.
#ifndef ZK_PLATFORM_DEFAULT_REPLACEABLE_H
#define ZK_PLATFORM_DEFAULT_REPLACEABLE_H

#include <atomic>

namespace zk::platform {

template <class Interface>
class Replaceable {
 public:
  // standard must outlive this object.
  constexpr explicit Replaceable(Interface* standard) : current_(standard), standard_(standard) {}

  Interface* get() const { return current_.load(std::memory_order_acquire); }

  // Puts replacement in place, or the standard part back for null. The caller
  // keeps replacement and leaves it alive until something else is installed.
  // Returns what was in place before.
  Interface* install(Interface* replacement) {
    return current_.exchange(replacement != nullptr ? replacement : standard_,
                             std::memory_order_acq_rel);
  }

 private:
  std::atomic<Interface*> current_;
  Interface* standard_;
};

}  // namespace zk::platform

#endif
