// Texts and times that come over the wire, made fit for people and for files. No
// state but a locale made once; any thread may call.
#ifndef ZK_NMS_WIRE_TEXT_H
#define ZK_NMS_WIRE_TEXT_H

#include <chrono>
#include <string>

namespace zk::nms {

// The text itself when it is UTF-8; otherwise each byte taken as ISO 8859-1,
// the code set that ORBs agree on when nobody chooses one.
std::string asUtf8(const std::string& text);

// The text with everything that would move the cursor or change the terminal
// written as \n, \t or \xHH. Takes UTF-8.
std::string printable(const std::string& text);

// Columns that the text takes in a terminal. Takes UTF-8 that is printable.
std::size_t displayWidth(const std::string& text);

using Clock = std::chrono::system_clock;

// As ISO 8601 has it, in UTC, to the millisecond: 2012-11-20T09:42:00.000Z.
std::string timeText(Clock::time_point time);

// 20121120094200.0Z becomes 2012-11-20T09:42:00.0Z, and an offset from UTC
// likewise; without either, it stays local to whoever sent it. A text that is
// no such time stays as it is.
std::string isoTime(const std::string& sent);

}  // namespace zk::nms

#endif
