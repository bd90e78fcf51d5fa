// What the ORB makes of a request's parameters: its own decoders, and what the
// agent does with the values.
#ifndef ZK_TESTS_AGENT_ORB_DECODING_H
#define ZK_TESTS_AGENT_ORB_DECODING_H

#include <string>

#include "agent/orb/request.h"
#include "tests/agent/orb/messages.h"
#include "zk_quornex/idl/corba.h"

namespace zk::test {

// Decodes the parameters of those operations that take more than names and
// numbers, copies and encodes the values again, and holds an event against
// constraints that look into it; once for each of two code sets of the texts. The
// ORB must be there. False when it threw a CORBA exception, which is fine.
bool decodedByOrb(const std::string& message, const agent::Request& request);

// Parameters as the ORB encodes them. For messages in this machine's byte order
// whose parameters begin at a multiple of eight.
template <class Value>
Parameters encodedByOrb(const Value& value) {
  return [value](CdrWriter& out) {
    cdrMemoryStream stream(0, true);  // with zeros for padding
    value >>= stream;
    out.raw(std::string(static_cast<const char*>(stream.bufPtr()), stream.bufSize()));
  };
}

}  // namespace zk::test

#endif
