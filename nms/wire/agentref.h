// What the user says about where the agent is, as a text for the ORB.
#ifndef ZK_NMS_WIRE_AGENTREF_H
#define ZK_NMS_WIRE_AGENTREF_H

#include <string>

namespace zk::nms {

// Takes a reference (corbaloc:, corbaname:, IOR:), HOST:PORT, or a file that
// holds a reference. Throws UsageError when text is none of these, and
// ConnectionError when the file cannot be read: an agent that is not running
// has not written it.
std::string agentReference(const std::string& text);

}  // namespace zk::nms

#endif
