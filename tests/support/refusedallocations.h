// Replaces the allocation functions of the program that includes this, once: those
// that the program refuses fail.
#ifndef ZK_TESTS_SUPPORT_REFUSEDALLOCATIONS_H
#define ZK_TESTS_SUPPORT_REFUSEDALLOCATIONS_H

#include <cstdlib>
#include <new>

// Defined by the program; must not allocate.
bool refusesAllocation(std::size_t size);

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return refusesAllocation(size) ? nullptr : std::malloc(size != 0 ? size : 1);
}

void* operator new(std::size_t size) {
  void* block = operator new(size, std::nothrow);
  return block != nullptr ? block : throw std::bad_alloc();
}

void* operator new[](std::size_t size) { return operator new(size); }
void* operator new[](std::size_t size, const std::nothrow_t& none) noexcept {
  return operator new(size, none);
}

void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
void operator delete[](void* block) noexcept { std::free(block); }
void operator delete[](void* block, std::size_t) noexcept { std::free(block); }

#endif
