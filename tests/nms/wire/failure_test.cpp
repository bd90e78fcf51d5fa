#include <gtest/gtest.h>

#include <functional>
#include <sstream>

#include "nms/wire/failure.h"
#include "tests/support/exceptiontypes.h"

namespace zk::nms {
namespace {

using globaldefs::ProcessingFailureException;

struct Reported {
  int code;
  std::string text;
};

Reported report(const std::function<void()>& failing) {
  std::ostringstream err;
  try {
    failing();
  } catch (...) {
    const int code = reportCurrentException("here:1", err);
    return {code, err.str()};
  }
  return {-1, "nothing thrown"};
}

template <class Failure>
Reported reportSystem() {
  return report([] { throw Failure(5, CORBA::COMPLETED_NO); });
}

TEST(ExitCode, ofARefusalIs1WithTypeAndReason) {
  const Reported reported = report(
      [] { throw ProcessingFailureException(globaldefs::EXCPT_ENTITY_NOT_FOUND, "no device 9"); });
  EXPECT_EQ(reported.code, 1);
  EXPECT_EQ(reported.text, "zk-nms: refused: EXCPT_ENTITY_NOT_FOUND: no device 9\n");
}

TEST(Refusal, namesEveryType) {
  for (std::size_t i = 0; i < test::EXCEPTION_TYPES.size(); ++i) {
    const auto type = static_cast<globaldefs::ExceptionType_T>(i);
    EXPECT_EQ(refusalText(ProcessingFailureException(type, "")),
              std::string("EXCPT_") + test::EXCEPTION_TYPES.at(i) + ": ");
  }
}

TEST(Refusal, staysOnOneLineAndOffTheTerminal) {
  EXPECT_EQ(refusalText(ProcessingFailureException(globaldefs::EXCPT_INTERNAL_ERROR,
                                                   "a\nb \x1B[2J M\xFCnchen")),
            "EXCPT_INTERNAL_ERROR: a\\nb \\x1B[2J M\xC3\xBCnchen");
}

TEST(ExitCode, ofALostConnectionIs2WithTheAddress) {
  for (const Reported& reported :
       {reportSystem<CORBA::COMM_FAILURE>(), reportSystem<CORBA::TRANSIENT>(),
        reportSystem<CORBA::TIMEOUT>(), reportSystem<CORBA::OBJECT_NOT_EXIST>(),
        reportSystem<CORBA::MARSHAL>(), reportSystem<CORBA::UNKNOWN>()}) {
    EXPECT_EQ(reported.code, 2) << reported.text;
    EXPECT_NE(reported.text.find("here:1"), std::string::npos) << reported.text;
  }
}

TEST(ExitCode, ofAnOperationThatIsNotOfferedIs1) {
  for (const Reported& reported :
       {reportSystem<CORBA::BAD_OPERATION>(), reportSystem<CORBA::NO_IMPLEMENT>(),
        reportSystem<CORBA::NO_PERMISSION>()}) {
    EXPECT_EQ(reported.code, 1) << reported.text;
    EXPECT_NE(reported.text.find("refused"), std::string::npos) << reported.text;
  }
}

TEST(ExitCode, ofOurOwnErrors) {
  EXPECT_EQ(report([] { throw RefusedError("x"); }).code, 1);
  EXPECT_EQ(report([] { throw RefusedError("x"); }).text, "zk-nms: refused: x\n");
  EXPECT_EQ(report([] { throw ConnectionError("x"); }).code, 2);
  EXPECT_EQ(report([] { throw UsageError("x"); }).code, 3);
  EXPECT_EQ(report([] { throw OutputError("x"); }).code, 6);
  EXPECT_EQ(report([] { throw OutputError(""); }).code, 6);
  EXPECT_EQ(report([] { throw OutputError(""); }).text, "");
}

TEST(ExitCode, isNeverFineForTheUnexpected) {
  EXPECT_EQ(report([] { throw std::runtime_error("x"); }).code, 2);
  EXPECT_EQ(report([] { throw 1; }).code, 2);
}

}  // namespace
}  // namespace zk::nms
