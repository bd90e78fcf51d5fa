#include <algorithm>

#include "agent/channel/proxyservant.h"
#include "agent/channel/proxyservants.h"
#include "agent/orb/orb.h"

namespace zk::agent {

namespace {

using CosNotification::EventBatch;
using CosNotification::EventBatch_var;
using CosNotification::StructuredEvent;
using CosNotification::StructuredEvent_var;
using CosNotifyComm::SequencePullConsumer;
using CosNotifyComm::SequencePullConsumer_ptr;
using CosNotifyComm::SequencePullConsumer_var;
using CosNotifyComm::StructuredPullConsumer;
using CosNotifyComm::StructuredPullConsumer_ptr;
using CosNotifyComm::StructuredPullConsumer_var;

class StructuredPullServant
    : public ProxyServant<POA_CosNotifyChannelAdmin::StructuredProxyPullSupplier> {
 public:
  using ProxyServant::ProxyServant;

  // A consumer that pulls may do without a reference: it is only told the end.
  void connect_structured_pull_consumer(StructuredPullConsumer_ptr consumer) override {
    if (CORBA::is_nil(consumer)) {
      proxy().connectPull(nullptr);
      return;
    }
    const CORBA::Object_var limited = withCallLimit(consumer, settings().callLimit);
    const StructuredPullConsumer_var kept = StructuredPullConsumer::_unchecked_narrow(limited.in());
    proxy().connectPull([kept] { kept->disconnect_structured_pull_consumer(); });
  }

  StructuredEvent* pull_structured_event() override { return next(true)._retn(); }

  StructuredEvent* try_pull_structured_event(CORBA::Boolean_out hasEvent) override {
    StructuredEvent_var event = next(false);
    hasEvent = event.operator->() != nullptr;
    return event.operator->() != nullptr ? event._retn() : new StructuredEvent;
  }

  void disconnect_structured_pull_supplier() override { disconnect(); }

 private:
  // Null when there is none.
  StructuredEvent_var next(bool wait) {
    EventBatch batch;
    return proxy().pull(1, batch, wait) != 0 ? new StructuredEvent(batch[0]) : nullptr;
  }
};

class SequencePullServant
    : public ProxyServant<POA_CosNotifyChannelAdmin::SequenceProxyPullSupplier> {
 public:
  using ProxyServant::ProxyServant;

  void connect_sequence_pull_consumer(SequencePullConsumer_ptr consumer) override {
    if (CORBA::is_nil(consumer)) {
      proxy().connectPull(nullptr);
      return;
    }
    const CORBA::Object_var limited = withCallLimit(consumer, settings().callLimit);
    const SequencePullConsumer_var kept = SequencePullConsumer::_unchecked_narrow(limited.in());
    proxy().connectPull([kept] { kept->disconnect_sequence_pull_consumer(); });
  }

  EventBatch* pull_structured_events(CORBA::Long most) override { return next(most, true); }

  EventBatch* try_pull_structured_events(CORBA::Long most, CORBA::Boolean_out hasEvents) override {
    EventBatch_var batch = next(most, false);
    hasEvents = batch->length() != 0;
    return batch._retn();
  }

  void disconnect_sequence_pull_supplier() override { disconnect(); }

 private:
  EventBatch* next(CORBA::Long most, bool wait) {
    if (most <= 0) {
      throw CORBA::BAD_PARAM();
    }
    EventBatch_var batch = new EventBatch;
    proxy().pull(std::min(static_cast<CORBA::ULong>(most), settings().eventsPerCall), batch.inout(),
                 wait);
    return batch._retn();
  }
};

}  // namespace

PortableServer::Servant makePullServant(const std::shared_ptr<SessionChannel>& channel,
                                        const std::shared_ptr<Proxy>& proxy) {
  if (proxy->type() == CosNotifyChannelAdmin::PULL_STRUCTURED) {
    return new StructuredPullServant(channel, proxy);
  }
  return new SequencePullServant(channel, proxy);
}

}  // namespace zk::agent
