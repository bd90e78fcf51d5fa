// Operations that the standard's managers have and the IDL of this agent leaves
// out. No state; any thread may call.
#ifndef ZK_AGENT_ORB_UNSERVED_H
#define ZK_AGENT_ORB_UNSERVED_H

#include <string_view>

namespace zk::agent {

// Whether it is one of them: answered with EXCPT_NOT_IMPLEMENTED, as the standard
// wants, where the ORB would say BAD_OPERATION.
bool isUnserved(std::string_view operation);

}  // namespace zk::agent

#endif
