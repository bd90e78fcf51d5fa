// The servants of the four kinds of proxies.
#ifndef ZK_AGENT_CHANNEL_PROXYSERVANTS_H
#define ZK_AGENT_CHANNEL_PROXYSERVANTS_H

#include <memory>

#include "agent/channel/proxy.h"
#include "zk_quornex/idl/corba.h"

namespace zk::agent {

class SessionChannel;

// The servant for the proxy's type. The caller owns a reference to the result.
PortableServer::Servant makeProxyServant(const std::shared_ptr<SessionChannel>& channel,
                                         const std::shared_ptr<Proxy>& proxy);

PortableServer::Servant makePushServant(const std::shared_ptr<SessionChannel>& channel,
                                        const std::shared_ptr<Proxy>& proxy);
PortableServer::Servant makePullServant(const std::shared_ptr<SessionChannel>& channel,
                                        const std::shared_ptr<Proxy>& proxy);

}  // namespace zk::agent

#endif
