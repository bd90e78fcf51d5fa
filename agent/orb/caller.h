// Who calls: the peer whose request a thread of the ORB serves. Peers are told
// apart by their hosts' addresses, since an NMS may open several connections.
#ifndef ZK_AGENT_ORB_CALLER_H
#define ZK_AGENT_ORB_CALLER_H

#include <optional>
#include <string>
#include <string_view>

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

// For what serves: the request of this peer is served on this thread until it is
// over, or the next begins.
void beginCall(const std::string& peer);
void endCall();

}  // namespace zk::agent

#endif
