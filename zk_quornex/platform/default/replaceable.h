// Process-wide parts of the platform, and putting others in their place. Safe on
// any thread.
#ifndef ZK_PLATFORM_DEFAULT_REPLACEABLE_H
#define ZK_PLATFORM_DEFAULT_REPLACEABLE_H

#include <atomic>
#include <new>

namespace zk::platform {

// The process's one T, made by the first call, even from a static initialiser,
// which takes no memory but what T itself does, and never destroyed: threads and destructors of
// statics may still trace, look up and push while the process ends.
template <class T>
T& immortal() {
  alignas(T) static unsigned char place[sizeof(T)];
  static T* const instance = new (place) T;
  return *instance;
}

// A part that a process, or a test, can put its own implementation in place of.
// Installing is meant for set-up and for tests, while no other thread is inside a
// call.
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

// The process's one part of this interface, with a Standard in place at first.
template <class Interface, class Standard>
Replaceable<Interface>& replaceable() {
  static Replaceable<Interface> part(&immortal<Standard>());
  return part;
}

}  // namespace zk::platform

#endif
