#include "nms/events/times.h"

#include <time.h>

#include <cstdio>
#include <regex>

namespace zk::nms {

std::string timeText(Clock::time_point time) {
  const auto sinceEpoch = time.time_since_epoch();
  const auto seconds = std::chrono::floor<std::chrono::seconds>(sinceEpoch);
  const auto rest = std::chrono::duration_cast<std::chrono::milliseconds>(sinceEpoch - seconds);
  const time_t whole = static_cast<time_t>(seconds.count());
  tm parts{};
  gmtime_r(&whole, &parts);
  char text[32];
  const std::size_t length = strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", &parts);
  std::snprintf(text + length, sizeof text - length, ".%03dZ", static_cast<int>(rest.count()));
  return text;
}

std::string isoTime(const std::string& sent) {
  static const std::regex form(
      "([0-9]{4})([0-9]{2})([0-9]{2})([0-9]{2})([0-9]{2})([0-9]{2})(\\.[0-9]+)?"
      "(Z|[+-][0-9]{4})?");
  std::smatch part;
  if (!std::regex_match(sent, part, form)) {
    return sent;
  }
  std::string zone = part[8];
  if (zone.size() == 5) {
    zone.insert(3, ":");
  }
  return part.str(1) + "-" + part.str(2) + "-" + part.str(3) + "T" + part.str(4) + ":" +
         part.str(5) + ":" + part.str(6) + part.str(7) + zone;
}

}  // namespace zk::nms
