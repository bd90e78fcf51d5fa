#include "zk_quornex/platform/default/clock.h"

#include <cstdio>
#include <ctime>
#include <ratio>

#include "zk_quornex/platform/default/replaceable.h"
#include "zk_quornex/platform/timechange.h"

namespace zk::platform {
namespace {

using std::chrono::system_clock;
using Seconds = std::chrono::seconds;
using Tenths = std::chrono::duration<long long, std::deci>;

class SystemClock : public Clock {
 public:
  system_clock::time_point now() override { return system_clock::now(); }
};

Replaceable<Clock>& clock() { return replaceable<Clock, SystemClock>(); }

}  // namespace

Clock* install(Clock* replacement) { return clock().install(replacement); }

// Both steps round towards the past: rounding towards zero would show times
// before 1970 a second late and their tenths negative.
std::string timeText(system_clock::time_point time) {
  const auto tenths = std::chrono::floor<Tenths>(time);
  const auto seconds = std::chrono::floor<Seconds>(tenths);
  const std::time_t whole = static_cast<std::time_t>(seconds.time_since_epoch().count());
  const int tenth = static_cast<int>((tenths - seconds).count());
  std::tm parts{};
  gmtime_r(&whole, &parts);
  char text[96];
  std::snprintf(text, sizeof text, "%04d%02d%02d%02d%02d%02d.%dZ", parts.tm_year + 1900,
                parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min, parts.tm_sec, tenth);
  return text;
}

}  // namespace zk::platform

namespace NS_QUORCORBA {
namespace {

bool within(int value, int lowest, int highest) { return value >= lowest && value <= highest; }

bool isLeapYear(int year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

// month is 1 to 12.
int daysOf(int month, int year) {
  static constexpr int DAYS[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return month == 2 && isLeapYear(year) ? 29 : DAYS[month - 1];
}

}  // namespace

// Years are those that the time text has room for.
bool TimeChange::checkDateTimeValid(const stDateTimeType& time) {
  return within(time.year, 1, 9999) && within(time.month, 1, 12) &&
         within(time.day, 1, daysOf(time.month, time.year)) && within(time.hour, 0, 23) &&
         within(time.minute, 0, 59) && within(time.second, 0, 59);
}

std::string TimeChange::getUTCTime() {
  return zk::platform::timeText(zk::platform::clock().get()->now());
}

}  // namespace NS_QUORCORBA
