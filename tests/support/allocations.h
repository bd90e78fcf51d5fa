// Counts the allocations of the calling thread. Puts its own operator new in
// place for the whole program: include it in one file of a test of its own.
#ifndef ZK_TESTS_SUPPORT_ALLOCATIONS_H
#define ZK_TESTS_SUPPORT_ALLOCATIONS_H

#include <cstdlib>
#include <new>

namespace zk::test {

inline thread_local long allocations = 0;

template <class Action>
long allocationsOf(Action action) {
  const long before = allocations;
  action();
  return allocations - before;
}

}  // namespace zk::test

void* operator new(std::size_t size) {
  ++zk::test::allocations;
  if (void* memory = std::malloc(size != 0 ? size : 1)) {
    return memory;
  }
  throw std::bad_alloc();
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  ++zk::test::allocations;
  return std::malloc(size != 0 ? size : 1);
}

void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

#endif
