#include "agent/channel/proxyservant.h"
#include "agent/channel/proxyservants.h"

namespace zk::agent {

namespace {

using CosNotifyComm::SequencePushConsumer_ptr;
using CosNotifyComm::StructuredPushConsumer_ptr;

// A push proxy has to have somebody to push to.
template <class Consumer>
std::shared_ptr<PushTarget> targetFor(Consumer consumer, const ChannelSettings& settings) {
  if (CORBA::is_nil(consumer)) {
    throw CORBA::BAD_PARAM();
  }
  return targetOf(consumer, settings.callLimit);
}

template <class Skeleton>
class PushServant : public ProxyServant<Skeleton> {
 public:
  using ProxyServant<Skeleton>::ProxyServant;
  void suspend_connection() override { this->proxy().suspend(); }
  void resume_connection() override { this->proxy().resume(); }
};

class StructuredPushServant
    : public PushServant<POA_CosNotifyChannelAdmin::StructuredProxyPushSupplier> {
 public:
  using PushServant::PushServant;
  void connect_structured_push_consumer(StructuredPushConsumer_ptr consumer) override {
    proxy().connectPush(targetFor(consumer, settings()));
  }
  void disconnect_structured_push_supplier() override { disconnect(); }
};

class SequencePushServant
    : public PushServant<POA_CosNotifyChannelAdmin::SequenceProxyPushSupplier> {
 public:
  using PushServant::PushServant;
  void connect_sequence_push_consumer(SequencePushConsumer_ptr consumer) override {
    proxy().connectPush(targetFor(consumer, settings()));
  }
  void disconnect_sequence_push_supplier() override { disconnect(); }
};

}  // namespace

PortableServer::Servant makePushServant(const std::shared_ptr<SessionChannel>& channel,
                                        const std::shared_ptr<Proxy>& proxy) {
  if (proxy->type() == CosNotifyChannelAdmin::PUSH_STRUCTURED) {
    return new StructuredPushServant(channel, proxy);
  }
  return new SequencePushServant(channel, proxy);
}

PortableServer::Servant makeProxyServant(const std::shared_ptr<SessionChannel>& channel,
                                         const std::shared_ptr<Proxy>& proxy) {
  return proxy->isPush() ? makePushServant(channel, proxy) : makePullServant(channel, proxy);
}

}  // namespace zk::agent
