// Texts that people type and read: the names of objects, pairs separated by commas,
// outermost first, as in EMS=Quor/1,ManagedElement=7; and what comes over the wire,
// made fit for them and for files. No state but a locale made once; any thread may
// call.
#ifndef ZK_NMS_WIRE_TEXT_H
#define ZK_NMS_WIRE_TEXT_H

#include <chrono>
#include <string>
#include <utility>
#include <vector>

#include "zk_quornex/idl/names.h"

namespace zk::nms {

using Pairs = std::vector<std::pair<std::string, std::string>>;

// Reads a typed name; parsePairs(formatPairs(p)) is p for every non-empty p
// whose pair names are not empty. Throws UsageError, with the text in it, for
// an empty text, a pair without "=" or without a name, and a backslash that
// does not stand before "\", "," or "=".
Pairs parsePairs(const std::string& text);

// The one spelling that needs no more backslashes than necessary.
std::string formatPairs(const Pairs& pairs);

Pairs toPairs(const globaldefs::NVSList_T& name);
globaldefs::NVSList_T toName(const Pairs& pairs);

std::string formatName(const globaldefs::NVSList_T& name);

// Whether an argument is a full name rather than a bare id. A path such as
// /parentid=0/id=17 is an id.
bool isFullName(const std::string& argument);

// Throws UsageError for an argument that names nothing, so that nobody logs in
// for it.
void checkArgument(const std::string& argument);

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
