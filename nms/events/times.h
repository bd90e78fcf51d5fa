// Times as people and scripts read them: ISO 8601. No state.
#ifndef ZK_NMS_EVENTS_TIMES_H
#define ZK_NMS_EVENTS_TIMES_H

#include <chrono>
#include <string>

namespace zk::nms {

using Clock = std::chrono::system_clock;

// In UTC, to the millisecond: 2012-11-20T09:42:00.000Z.
std::string timeText(Clock::time_point time);

// 20121120094200.0Z becomes 2012-11-20T09:42:00.0Z, and an offset from UTC
// likewise; without either, it stays local to whoever sent it. A text that is
// no such time stays as it is.
std::string isoTime(const std::string& sent);

}  // namespace zk::nms

#endif
