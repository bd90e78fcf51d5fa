// What a constraint takes of the memory, against what it says. Puts its own
// operator new in place.
#include <gtest/gtest.h>
#include <malloc.h>

#include <cstdlib>
#include <new>

#include "tests/agent/constraint/events.h"

namespace {

thread_local long held = 0;

void* counted(std::size_t size) {
  void* block = std::malloc(size != 0 ? size : 1);
  held += static_cast<long>(malloc_usable_size(block) + sizeof(std::size_t));
  return block;
}

void uncounted(void* block) {
  if (block != nullptr) {
    held -= static_cast<long>(malloc_usable_size(block) + sizeof(std::size_t));
  }
  std::free(block);
}

}  // namespace

void* operator new(std::size_t size) { return counted(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return counted(size); }
void operator delete(void* block) noexcept { uncounted(block); }
void operator delete(void* block, std::size_t) noexcept { uncounted(block); }

namespace zk::test {

namespace {

class Size : public testing::TestWithParam<const char*> {};

// A term is repeated until the constraint is as long as it may be.
TEST_P(Size, isNoMoreThanItSays) {
  for (const std::size_t count : {1U, 10U, 1000U, 16000U}) {
    std::string text = GetParam();
    for (std::size_t i = 1; i < count; ++i) {
      text += std::string(" or ") + GetParam();
    }
    std::unique_ptr<const agent::Constraint> constraint;
    const long before = held;
    try {
      constraint = agent::Constraint::parse(text, DynamicAny::DynAnyFactory::_nil());
    } catch (const agent::InvalidConstraintText&) {
      continue;  // too long
    }
    EXPECT_LE(held - before, static_cast<long>(constraint->bytes())) << count;
  }
}

INSTANTIATE_TEST_SUITE_P(Constraint, Size,
                         testing::Values("1==1", "a", "TRUE", "$a", "$a.b.c.d.e", "exist $a",
                                         "default $.a", "not a", "not(not(not a))", "-1==-1",
                                         "1+1+1==2", "'a'~b", "'a' in $b", "1 in $.1.2.3.4.5.6.7.8",
                                         "$a(b)(c)(d)", "$a[1][2][3]", "$a.(b).(1).()",
                                         "$a._length", "$a.aaaaaaaaaaaaaaaaaaaaaaaa", "(((((a)))))",
                                         "$a._d", "a==b", "1.5==2.5",
                                         "'aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa'==a"));

}  // namespace

}  // namespace zk::test
