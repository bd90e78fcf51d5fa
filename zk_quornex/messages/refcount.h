// A counted holder of one heap object, shared by producers and clients. Counting
// is safe on any thread; the object itself is not changed while it is shared.
#ifndef ZK_MESSAGES_REFCOUNT_H
#define ZK_MESSAGES_REFCOUNT_H

#include <atomic>
#include <cstdint>

namespace NS_QUORCORBA {

// Lives on the heap. Made with one reference, which is its maker's. Whoever
// releases the last one deletes the object and the holder.
template <class T>
class NXRefCountType {
 public:
  // Adopts object.
  explicit NXRefCountType(T* object) : object_(object) {}

  NXRefCountType(const NXRefCountType&) = delete;
  NXRefCountType& operator=(const NXRefCountType&) = delete;

  void addRef() { count_.fetch_add(1, std::memory_order_relaxed); }

  // The caller must not use the holder afterwards.
  void release() {
    if (count_.fetch_sub(1, std::memory_order_acq_rel) == 1) {
      delete this;
    }
  }

  // Whether the caller's reference is the only one left: then nobody else can
  // reach the object any more.
  bool isLast() const { return count_.load(std::memory_order_acquire) == 1; }

  T* get() const { return object_; }

 private:
  ~NXRefCountType() { delete object_; }

  T* object_;
  std::atomic<std::int64_t> count_{1};
};

}  // namespace NS_QUORCORBA

#endif
