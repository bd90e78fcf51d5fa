#include "zk_quornex/platform/default/clock.h"

#include <cstdio>
#include <ctime>
#include <ratio>

#include "zk_quornex/platform/default/immortal.h"
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

Replaceable<Clock>& clock() {
  static Replaceable<Clock> current(&immortal<SystemClock>());
  return current;
}

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

std::string TimeChange::getUTCTime() {
  return zk::platform::timeText(zk::platform::clock().get()->now());
}

}  // namespace NS_QUORCORBA
