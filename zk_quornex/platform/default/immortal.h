// Process-wide objects that are there for whoever calls first, even from a
// static initialiser, and for whoever calls last. Safe on any thread.
#ifndef ZK_PLATFORM_DEFAULT_IMMORTAL_H
#define ZK_PLATFORM_DEFAULT_IMMORTAL_H

namespace zk::platform {

// The process's one T, made by the first call and never destroyed: threads and
// destructors of statics may still trace, look up and push while the process
// ends.
template <class T>
T& immortal() {
  static T* const instance = new T;
  return *instance;
}

}  // namespace zk::platform

#endif
