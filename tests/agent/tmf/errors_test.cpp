#include "agent/tmf/errors.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "agent/ems/changes.h"
#include "tests/agent/support/names.h"
#include "tests/agent/support/refusals.h"

namespace {

using namespace zk::agent;
using zk::test::nameOf;
using zk::test::nameOfType;
using zk::test::refusalBy;

struct Row {
  unsigned long code;
  const char* type;
};

// Every code that a conversion, a setter or the EMS can return.
const Row ROWS[] = {
    {0x41180004, "INTERNAL_ERROR"},
    {0x41180032, "NOT_IMPLEMENTED"},
    {0x41180053, "NOT_IMPLEMENTED"},
    {0x4118005F, "INVALID_INPUT"},
    {0x41180060, "INVALID_INPUT"},
    {0x4118006A, "INVALID_INPUT"},
    {0x411800BD, "ENTITY_NOT_FOUND"},
    {0x411800CB, "ENTITY_NOT_FOUND"},
    {0x411800CC, "ENTITY_NOT_FOUND"},
    {0x411800D4, "ENTITY_NOT_FOUND"},
    {0x411800D5, "ENTITY_NOT_FOUND"},
    {codeOf(Result::NO_SUCH_OBJECT), "ENTITY_NOT_FOUND"},
    {codeOf(Result::LABEL_IN_USE), "USERLABEL_IN_USE"},
    {codeOf(Result::STORAGE_FAILURE), "INTERNAL_ERROR"},
    {codeOf(Result::NO_REQUEST), "INTERNAL_ERROR"},
    {codeOf(Result::BAD_VALUE), "INVALID_INPUT"},
    {codeOf(Result::OBJECT_IN_USE), "OBJECT_IN_USE"},
    {codeOf(Result::OBJECT_EXISTS), "OBJECT_IN_USE"},
    {0x12345678, "INTERNAL_ERROR"},
};

TEST(Errors, giveEveryCodeItsExceptionType) {
  for (const Row& row : ROWS) {
    EXPECT_EQ(nameOfType(exceptionTypeOf(row.code)), row.type) << std::hex << row.code;
  }
}

TEST(Errors, sayWhatIsWrongAndWithWhichName) {
  const Refusal refused = refusalOf(0x41180060, nameOf({{"EMS", "Quor/1"}, {"Node", "x"}}));
  EXPECT_STREQ(refused.errorReason, "not a well-formed object name: EMS=Quor/1, Node=x");
}

TEST(Errors, nameTheRightEmsWhenTheNameIsOfAnother) {
  const Refusal refused = refusalOf(0x411800CB, nameOf({{"EMS", "Other/2"}}));
  EXPECT_STREQ(refused.errorReason, "not an object of this EMS, which is Quor/1: EMS=Other/2");
}

TEST(Errors, showAnUnknownCodeAsItIs) {
  const Refusal refused = refusalOf(0x12345678, nameOf({{"EMS", "Quor/1"}}));
  EXPECT_STREQ(refused.errorReason, "the EMS answered 0x12345678: EMS=Quor/1");
}

TEST(Errors, giveNoReasonForWhatIsNotOffered) {
  EXPECT_EQ(refusalBy([] { throw notImplemented(); }), "NOT_IMPLEMENTED: ");
}

TEST(Errors, describeAnEmptyName) { EXPECT_EQ(printableName(nameOf({})), "(empty name)"); }

TEST(Errors, keepControlCharactersOfANameOut) {
  EXPECT_EQ(printableName(nameOf({{"EMS", "a\nb\x7f"}})), "EMS=a?b?");
}

TEST(Errors, cutLongNames) {
  EXPECT_EQ(printableName(nameOf({{"EMS", std::string(1000, 'x')}})),
            "EMS=" + std::string(196, 'x') + "...");
  const std::vector<std::pair<std::string, std::string>> pairs(9, {"a", "b"});
  EXPECT_EQ(printableName(nameOf(pairs)), "a=b, a=b, a=b, a=b, a=b, a=b, a=b, a=b, ...");
}

TEST(Errors, hideFailuresOfTheStoreFromTheClient) {
  const std::string answer = refusalBy([] {
    refusingFailures("getEMS", [] { throw std::runtime_error("/var/secret.db is locked"); });
  });
  EXPECT_EQ(answer, "INTERNAL_ERROR: the EMS cannot answer at present; its log says why");
}

TEST(Errors, letRefusalsAndSystemExceptionsThrough) {
  EXPECT_EQ(refusalBy([] {
              refusingFailures("x", [] { throw refusal(globaldefs::EXCPT_INVALID_INPUT, "why"); });
            }),
            "INVALID_INPUT: why");
  EXPECT_THROW(refusingFailures("x", [] { throw CORBA::OBJECT_NOT_EXIST(); }),
               CORBA::OBJECT_NOT_EXIST);
}

TEST(Errors, handTheResultThrough) {
  EXPECT_EQ(refusingFailures("x", [] { return 7; }), 7);
}

}  // namespace
