// The agent's bundle manager: service interfaces looked up by name, and the
// log proxies it hands out. Safe on any thread.
#ifndef ZK_PLATFORM_BUNDLE_H
#define ZK_PLATFORM_BUNDLE_H

#include <memory>
#include <mutex>
#include <utility>

namespace NS_BUNDLEMGR1 {

// Base of every service that can be registered with the bundle manager.
class ServiceInterface {
 public:
  virtual ~ServiceInterface() = default;
};

// One log. Write is safe on any thread and takes the text as it stands.
class LogProxy {
 public:
  virtual ~LogProxy() = default;
  virtual void Write(const char* text) = 0;
};

// The log of last resort: drops what it is given.
class DefaultLogProxy : public LogProxy {
 public:
  void Write(const char*) override {}
};

class BundleMgr {
 public:
  // Never null. Owned by the platform.
  static BundleMgr* Instance();

  virtual ~BundleMgr() = default;

  // The service registered under this name; null when there is none.
  virtual std::shared_ptr<ServiceInterface> GetService(const char* name) = 0;

  // The bundle manager's own log for this name; null when it has none.
  virtual std::shared_ptr<LogProxy> GetLogProxy(const char* name) = 0;

  // Changes whenever a service is registered, replaced or removed, so that a
  // holder of a looked-up service can tell cheaply whether to look again.
  virtual unsigned long Generation() const noexcept = 0;

  // The mutex under which process-wide objects made from services are set up.
  // Recursive: lookups may be made while it is held.
  virtual std::recursive_mutex& GlobalMutex() = 0;
};

// One looked-up service, kept until the bundle manager's services change. A
// lookup is repeated only then; otherwise Get costs a load and a compare. The
// service is kept alive while it is held here. Not for use by two threads at
// once.
template <class Interface>
class CheckIFBuf {
 public:
  // name must outlive this object: callers pass literals.
  explicit CheckIFBuf(const char* name) : name_(name) {}

  // The service, or null when none of this name and interface is registered.
  Interface* Get() {
    BundleMgr* bundles = BundleMgr::Instance();
    const unsigned long generation = bundles->Generation();
    if (bundles != bundles_ || generation != generation_) {
      service_ = std::dynamic_pointer_cast<Interface>(bundles->GetService(name_));
      bundles_ = bundles;
      generation_ = generation;
    }
    return service_.get();
  }

 private:
  const char* name_;
  BundleMgr* bundles_ = nullptr;
  unsigned long generation_ = 0;
  std::shared_ptr<Interface> service_;
};

}  // namespace NS_BUNDLEMGR1

#endif
