// Texts that come over the wire, made fit for people and for files. No state
// but a locale made once; any thread may call.
#ifndef ZK_NMS_WIRE_TEXT_H
#define ZK_NMS_WIRE_TEXT_H

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

}  // namespace zk::nms

#endif
