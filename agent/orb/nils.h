// The nil references of all interfaces that the agent meets.
#ifndef ZK_AGENT_ORB_NILS_H
#define ZK_AGENT_ORB_NILS_H

namespace zk::agent {

// Makes them. The ORB makes each at its first use, and another thread may see it
// before it is whole: to be called before there are other threads that use the ORB.
void makeNilReferences();

}  // namespace zk::agent

#endif
