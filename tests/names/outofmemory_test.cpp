// Memory running out at any point of a conversion: nothing of the half-made
// name stays behind. This program replaces the allocation functions.
#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

#include "tests/names/names.h"
#include "zk_quornex/names/nameconvert.h"

namespace {

constexpr long UNLIMITED = -1;

thread_local long allocationsLeft = UNLIMITED;
thread_local long liveBlocks = 0;

}  // namespace

void* operator new(std::size_t size) {
  if (allocationsLeft == 0) {
    throw std::bad_alloc();
  }
  allocationsLeft -= allocationsLeft > 0 ? 1 : 0;
  void* block = std::malloc(size != 0 ? size : 1);
  if (block == nullptr) {
    throw std::bad_alloc();
  }
  ++liveBlocks;
  return block;
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  try {
    return operator new(size);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

void operator delete(void* block) noexcept {
  liveBlocks -= block != nullptr ? 1 : 0;
  std::free(block);
}

void operator delete(void* block, std::size_t) noexcept { operator delete(block); }

namespace zk::test {

namespace {

using NS_QUORCORBA::TEName;
using NS_QUORCORBA::TENameConvert;

// Whether the conversion got through with that many allocations.
bool converts(const globaldefs::NVSList_T& list, long allocations, long& left) {
  const long before = liveBlocks;
  TEName* result = nullptr;
  bool done = false;
  allocationsLeft = allocations;
  try {
    done = TENameConvert::NmsToEmsNameConvert(list, result) == OK;
  } catch (const std::bad_alloc&) {
    done = false;
  }
  allocationsLeft = UNLIMITED;
  if (done) {
    delete result;
  }
  left = liveBlocks - before;
  return done;
}

void expectNothingLeft(const char* pairName, const char* value) {
  FixedEmsConfig config;
  config.emsName = std::string(100, 'e');  // too long to be kept inside the string object
  const globaldefs::NVSList_T list = makeName({{"EMS", config.emsName.c_str()}, {pairName, value}});
  long left = 0;
  long allocations = 0;
  while (!converts(list, allocations, left) && allocations < 100) {
    EXPECT_EQ(left, 0) << pairName << " with " << allocations << " allocations";
    ++allocations;
  }
  EXPECT_EQ(left, 0) << pairName;
  EXPECT_GE(allocations, 2) << "the object and its EMS name at the least";
  EXPECT_LT(allocations, 100) << pairName;
}

TEST(OutOfMemory, leavesNothingOfAHalfMadeNameBehind) {
  const std::string id(100, '7');
  expectNothingLeft("ManagedElement", "7");
  expectNothingLeft("TopologicalLink", id.c_str());
  expectNothingLeft("Node", ("/parentid=" + id + "/id=" + id).c_str());
  expectNothingLeft("SubMap", ("/parentid=" + id + "/id=" + id).c_str());
  expectNothingLeft("DisplayLink", ("/parentid=" + id + "/id=" + id).c_str());
}

}  // namespace

}  // namespace zk::test
