#include <gtest/gtest.h>

#include <ostream>

#include "zk_quornex/platform/timechange.h"

namespace NS_QUORCORBA {

void PrintTo(const stDateTimeType& time, std::ostream* out) {
  *out << time.year << '-' << time.month << '-' << time.day << ' ' << time.hour << ':'
       << time.minute << ':' << time.second;
}

}  // namespace NS_QUORCORBA

namespace zk::test {
namespace {

using NS_QUORCORBA::stDateTimeType;
using NS_QUORCORBA::TimeChange;

TEST(Calendar, acceptsTimesThatItHas) {
  const stDateTimeType accepted[] = {
      {1, 1, 1, 0, 0, 0},        {1970, 1, 1, 0, 0, 0},   {2012, 11, 20, 9, 42, 0},
      {2012, 2, 29, 0, 0, 0},    {2000, 2, 29, 0, 0, 0},  {2400, 2, 29, 23, 59, 59},
      {2013, 2, 28, 12, 0, 0},   {2013, 1, 31, 0, 0, 0},  {2013, 3, 31, 0, 0, 0},
      {2013, 4, 30, 0, 0, 0},    {2013, 5, 31, 0, 0, 0},  {2013, 6, 30, 0, 0, 0},
      {2013, 7, 31, 0, 0, 0},    {2013, 8, 31, 0, 0, 0},  {2013, 9, 30, 0, 0, 0},
      {2013, 10, 31, 0, 0, 0},   {2013, 11, 30, 0, 0, 0}, {2013, 12, 31, 23, 59, 59},
      {9999, 12, 31, 23, 59, 59}};
  for (const stDateTimeType& time : accepted) {
    EXPECT_TRUE(TimeChange::checkDateTimeValid(time)) << testing::PrintToString(time);
  }
}

TEST(Calendar, refusesTimesThatItDoesNotHave) {
  const stDateTimeType refused[] = {{},
                                    {0, 1, 1, 0, 0, 0},
                                    {-1, 1, 1, 0, 0, 0},
                                    {10000, 1, 1, 0, 0, 0},
                                    {2012, 0, 1, 0, 0, 0},
                                    {2012, 13, 1, 0, 0, 0},
                                    {2012, -1, 1, 0, 0, 0},
                                    {2012, 1, 0, 0, 0, 0},
                                    {2012, 1, -1, 0, 0, 0},
                                    {2012, 1, 32, 0, 0, 0},
                                    {2012, 2, 30, 0, 0, 0},
                                    {2013, 2, 29, 0, 0, 0},
                                    {1900, 2, 29, 0, 0, 0},
                                    {2100, 2, 29, 0, 0, 0},
                                    {2013, 4, 31, 0, 0, 0},
                                    {2013, 6, 31, 0, 0, 0},
                                    {2013, 9, 31, 0, 0, 0},
                                    {2013, 11, 31, 0, 0, 0},
                                    {2013, 12, 32, 0, 0, 0},
                                    {2012, 1, 1, 24, 0, 0},
                                    {2012, 1, 1, -1, 0, 0},
                                    {2012, 1, 1, 0, 60, 0},
                                    {2012, 1, 1, 0, -1, 0},
                                    {2012, 1, 1, 0, 0, 60},
                                    {2012, 1, 1, 0, 0, -1},
                                    {0, 0, 0, 1, 1, 1},
                                    {2012, 0, 0, 0, 0, 0}};
  for (const stDateTimeType& time : refused) {
    EXPECT_FALSE(TimeChange::checkDateTimeValid(time)) << testing::PrintToString(time);
  }
}

}  // namespace
}  // namespace zk::test
