// Parameters of requests, walked by their operation's layout before the ORB
// decodes them: it trusts lengths and TypeCodes that strangers choose. Pure; any
// thread may call.
#ifndef ZK_AGENT_ORB_SCREENING_H
#define ZK_AGENT_ORB_SCREENING_H

#include <string>

#include "agent/orb/request.h"

namespace zk::agent {

enum class Verdict {
  PASS,       // the ORB may decode it
  BAD_PARAM,  // well-formed as far as read, but nothing the agent takes
  MARSHAL,    // damaged
};

// request: as read from the message. The parameters of a known operation pass when
// - a list has at most 1024 elements, a text 64 KiB, and all of it 65536 values,
//   256 Anys among them;
// - booleans are 0 or 1, enums in range, references sound;
// - an Any holds a number, a boolean, a character, a text or nothing, or exactly a
//   type of the IDL, names included, and is at most the Any in an Any.
// What passes and goes on after its parameters is cut off there, as the standard
// lets a later version of an operation have further ones: the message then is no
// more than what was looked at, by whichever form of the operation takes most of it.
// Requests of an operation that no interface has pass: the ORB answers these
// without decoding. Time and memory are bounded by the message's size.
Verdict screen(std::string& message, const Request& request);

}  // namespace zk::agent

#endif
