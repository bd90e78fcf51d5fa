// Who calls: the peer whose request a thread of the ORB serves. Peers are told
// apart by their hosts' addresses, since an NMS may open several connections.
#ifndef ZK_AGENT_ORB_CALLER_H
#define ZK_AGENT_ORB_CALLER_H

#include <optional>
#include <string>
#include <string_view>

#include "agent/orb/objectkeys.h"

namespace zk::agent {

// The peer of the request that this thread serves: an address without a port, or
// THIS_HOST. Empty on a thread that serves none, and for a call from within this
// process.
std::string callingPeer();

// The peer at the other end of a connection. Both ends as the ORB writes them:
// giop:tcp:10.1.2.3:4711, giop:tcp:[fe80::1]:4711. A client on the agent's host
// that uses one of the host's addresses now and another one later is one peer:
// whose both ends have the same address is THIS_HOST.
inline constexpr char THIS_HOST[] = "localhost";
std::string peerOf(std::string_view peerAddress, std::string_view ownAddress);

// The id in an object key as it comes over the wire; none when it is not the key
// of a session's object.
std::optional<std::string_view> sessionObjectIn(std::string_view objectKey);

// From now on requests are served with callingPeer() set, and those for objects
// of sessions get OBJECT_NOT_EXIST unless keys admits them: a stranger does not
// learn which there are. To be called once the ORB is initialised and before it
// serves; keys must stay until it has stopped.
void screenCallers(const ObjectKeys& keys);

}  // namespace zk::agent

#endif
