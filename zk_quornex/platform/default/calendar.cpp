// Which dates and times the calendar has.

#include "zk_quornex/platform/timechange.h"

namespace {

bool within(int value, int lowest, int highest) { return value >= lowest && value <= highest; }

bool isLeapYear(int year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

// month is 1 to 12.
int daysOf(int month, int year) {
  static constexpr int DAYS[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return month == 2 && isLeapYear(year) ? 29 : DAYS[month - 1];
}

}  // namespace

namespace NS_QUORCORBA {

// Years are those that the time text has room for.
bool TimeChange::checkDateTimeValid(const stDateTimeType& time) {
  return within(time.year, 1, 9999) && within(time.month, 1, 12) &&
         within(time.day, 1, daysOf(time.month, time.year)) && within(time.hour, 0, 23) &&
         within(time.minute, 0, 59) && within(time.second, 0, 59);
}

}  // namespace NS_QUORCORBA
