// The agent's exceptions: above all what a copy takes from its source.
#include "zk_quornex/notify/exceptions.h"

#include <cxxabi.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <sstream>
#include <string>
#include <type_traits>
#include <typeinfo>

namespace zk::test {

namespace {

static_assert(std::is_same_v<decltype(ProcessException::code_), std::int32_t>);
static_assert(std::is_same_v<decltype(ProcessException::subCode_), std::int32_t>);
static_assert(std::is_same_v<decltype(ProcessException::text1_), std::stringstream>);
static_assert(std::is_same_v<decltype(ProcessException::text4_), std::stringstream>);
static_assert(sizeof(InterfaceNotExistException) == sizeof(ProcessException), "no further field");

template <class Exception>
constexpr bool COPIED_FROM_NON_CONST_ONLY = std::is_constructible_v<Exception, Exception&> &&
                                            !std::is_constructible_v<Exception, const Exception&>;
static_assert(COPIED_FROM_NON_CONST_ONLY<ProcessException>);
static_assert(COPIED_FROM_NON_CONST_ONLY<InterfaceNotExistException>);

// The four texts, each with "!" before it when its stream has failed.
std::string texts(const ProcessException& exception) {
  std::string result;
  for (const std::stringstream* text :
       {&exception.text1_, &exception.text2_, &exception.text3_, &exception.text4_}) {
    result += (text->fail() ? "!" : "") + text->str() + "|";
  }
  return result;
}

void writeTexts(ProcessException& exception) {
  exception.text1_ << "one";
  exception.text2_ << "two " << 2;
  exception.text3_ << "three";
  exception.text4_ << "four";
}

template <class Exception>
class Exceptions : public testing::Test {};
using Kinds = testing::Types<ProcessException, InterfaceNotExistException>;
TYPED_TEST_SUITE(Exceptions, Kinds);

TYPED_TEST(Exceptions, startWithoutCodesAndTexts) {
  const TypeParam exception;
  EXPECT_EQ(exception.code_, 0);
  EXPECT_EQ(exception.subCode_, 0);
  EXPECT_EQ(texts(exception), "||||");
}

TYPED_TEST(Exceptions, copyTheirCodes) {
  TypeParam source;
  source.code_ = 0x41180004;
  source.subCode_ = -7;
  const TypeParam copy(source);
  EXPECT_EQ(copy.code_, 0x41180004);
  EXPECT_EQ(copy.subCode_, -7);
  EXPECT_EQ(source.code_, 0x41180004);
  EXPECT_EQ(source.subCode_, -7);
}

TYPED_TEST(Exceptions, failTheStreamsOfACopyOfNothing) {
  TypeParam source;
  const TypeParam copy(source);
  EXPECT_EQ(texts(copy), "!|!|!|!|");
}

TYPED_TEST(Exceptions, handTheirTextsToTheFirstCopy) {
  TypeParam source;
  writeTexts(source);
  TypeParam first(source);
  EXPECT_EQ(texts(first), "one|two 2|three|four|");
  const TypeParam second(source);
  EXPECT_EQ(texts(second), "!|!|!|!|");
}

TYPED_TEST(Exceptions, leaveTheSourceWithNothingToRead) {
  TypeParam source;
  writeTexts(source);
  const TypeParam copy(source);
  std::string word;
  EXPECT_FALSE(source.text1_ >> word);
  EXPECT_FALSE(source.text4_ >> word);
}

TYPED_TEST(Exceptions, handTheirTextsOnFromCopyToCopy) {
  TypeParam source;
  writeTexts(source);
  TypeParam first(source);
  const TypeParam second(first);
  EXPECT_EQ(texts(second), "one|two 2|three|four|");
}

TYPED_TEST(Exceptions, judgeEachStreamByItself) {
  TypeParam source;
  source.text3_ << "three";
  const TypeParam copy(source);
  EXPECT_EQ(texts(copy), "!|!|three|!|");
}

TYPED_TEST(Exceptions, copyOnlyWhatIsLeftToRead) {
  TypeParam source;
  source.text2_ << "two 2";
  std::string word;
  source.text2_ >> word;
  const TypeParam copy(source);
  EXPECT_EQ(texts(copy), "!| 2|!|!|");
}

TYPED_TEST(Exceptions, ignoreWritesIntoAFailedStreamOfACopy) {
  TypeParam source;
  source.text1_ << "one";
  TypeParam copy(source);
  copy.text1_ << " more";
  copy.text2_ << "late";
  EXPECT_EQ(texts(copy), "one more|!|!|!|");
}

TYPED_TEST(Exceptions, handOverWhatIsWrittenIntoTheSourceLater) {
  TypeParam source;
  source.text1_ << "one";
  const TypeParam first(source);
  source.text1_ << "again";
  const TypeParam second(source);
  EXPECT_EQ(texts(second), "again|!|!|!|");
}

TYPED_TEST(Exceptions, sayNothingOfTheirOwn) {
  TypeParam exception;
  exception.code_ = 1;
  exception.text1_ << "one";
  EXPECT_STREQ(exception.what(), std::exception().what());
}

TYPED_TEST(Exceptions, arriveWithTheTextsWrittenBeforeTheThrow) {
  try {
    TypeParam local;
    local.code_ = 0x41180004;
    writeTexts(local);
    throw local;
  } catch (TypeParam& caught) {
    EXPECT_EQ(caught.code_, 0x41180004);
    EXPECT_EQ(texts(caught), "one|two 2|three|four|");
  }
}

TYPED_TEST(Exceptions, arriveWithFailedStreamsWhenNothingWasWritten) {
  try {
    TypeParam local;
    throw local;
  } catch (TypeParam& caught) {
    EXPECT_EQ(texts(caught), "!|!|!|!|");
  }
}

TYPED_TEST(Exceptions, passARethrowUnchanged) {
  try {
    try {
      TypeParam local;
      writeTexts(local);
      throw local;
    } catch (TypeParam&) {
      throw;
    }
  } catch (ProcessException& caught) {
    EXPECT_EQ(texts(caught), "one|two 2|three|four|");
  }
}

TYPED_TEST(Exceptions, areCaughtByTheirBases) {
  EXPECT_THROW(
      {
        TypeParam local;
        throw local;
      },
      ProcessException);
  EXPECT_THROW(
      {
        TypeParam local;
        throw local;
      },
      std::exception);
}

// Says that it was destroyed.
template <class Exception>
class Noticed : public Exception {
 public:
  explicit Noticed(int& destroyed) : destroyed_(destroyed) {}
  ~Noticed() override { ++destroyed_; }

 private:
  int& destroyed_;
};

// Both destructors come first: the one that leaves the memory, and the one that
// frees it; then what().
TYPED_TEST(Exceptions, keepTheirVirtualOperationsInOrder) {
  int destroyed = 0;
  std::exception* exception = new Noticed<TypeParam>(destroyed);
  void* const* table = *reinterpret_cast<void* const* const*>(exception);
  const auto what = reinterpret_cast<const char* (*)(const std::exception*)>(table[2]);
  EXPECT_STREQ(what(exception), std::exception().what());
  reinterpret_cast<void (*)(std::exception*)>(table[1])(exception);
  EXPECT_EQ(destroyed, 1);
}

template <class Base, class Derived>
bool derivesOnlyFrom() {
  const auto* single = dynamic_cast<const abi::__si_class_type_info*>(&typeid(Derived));
  return single != nullptr && *single->__base_type == typeid(Base);
}

TEST(ExceptionModel, isOneLineOfClasses) {
  EXPECT_TRUE((derivesOnlyFrom<std::exception, ProcessException>()));
  EXPECT_TRUE((derivesOnlyFrom<ProcessException, InterfaceNotExistException>()));
}

TEST(ExceptionModel, keepsItsFieldsInOrder) {
  const ProcessException exception;
  const void* const fields[] = {&exception.code_,  &exception.subCode_, &exception.text1_,
                                &exception.text2_, &exception.text3_,   &exception.text4_};
  for (std::size_t i = 1; i < 6; ++i) {
    EXPECT_TRUE(std::less<>()(fields[i - 1], fields[i])) << i;
  }
}

TEST(ExceptionModel, letsAnInterfacesHandlerPassAGeneralException) {
  ProcessException local;
  EXPECT_THROW(
      {
        try {
          throw local;
        } catch (InterfaceNotExistException&) {
        }
      },
      ProcessException);
}

}  // namespace

}  // namespace zk::test
