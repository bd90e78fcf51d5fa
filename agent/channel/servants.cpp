#include "agent/channel/servants.h"

#include <algorithm>
#include <utility>

#include "agent/channel/events.h"
#include "agent/channel/sessionchannel.h"
#include "agent/orb/orb.h"
#include "zk_quornex/messages/messagecach.h"

namespace zk::agent {

namespace {

using CosNotification::EventBatch;
using CosNotification::EventBatch_var;
using CosNotification::StructuredEvent;
using CosNotification::StructuredEvent_var;
using CosNotifyComm::SequencePullConsumer;
using CosNotifyComm::SequencePullConsumer_ptr;
using CosNotifyComm::SequencePushConsumer_ptr;
using CosNotifyComm::StructuredPullConsumer;
using CosNotifyComm::StructuredPullConsumer_ptr;
using CosNotifyComm::StructuredPushConsumer_ptr;

// What the four kinds of proxies have in common.
template <class Skeleton>
class ProxyServant : public QosPart<Skeleton>,
                     public SelectionPart<Skeleton>,
                     public MappingPart<Skeleton>,
                     public virtual PortableServer::RefCountServantBase {
 public:
  ProxyServant(std::shared_ptr<SessionChannel> channel, std::shared_ptr<Proxy> proxy)
      : channel_(std::move(channel)), proxy_(std::move(proxy)) {}

  CosNotifyChannelAdmin::ProxyType MyType() override { return proxy_->type(); }
  CosNotifyChannelAdmin::ConsumerAdmin_ptr MyAdmin() override {
    return channel_->admins().find(proxy_->group().id);
  }

  // What the EMS sends never changes: no consumer is ever called about it,
  // whatever the mode asks for.
  CosNotification::EventTypeSeq* obtain_offered_types(
      CosNotifyChannelAdmin::ObtainInfoMode mode) override {
    return offeredTypes(mode);
  }

  void validate_event_qos(const CosNotification::QoSProperties& wanted,
                          CosNotification::NamedPropertyRangeSeq_out available) override {
    available = validateEventQos(wanted);
  }

 protected:
  Qos& qos() override { return proxy_->qos(); }
  Selection& selection() override { return proxy_->selection(); }
  Filters& filters() override { return channel_->filters(); }

  const ChannelSettings& settings() const { return channel_->parts().settings; }
  Proxy& proxy() { return *proxy_; }

  // The client's own end of the proxy.
  void disconnect() {
    channel_->proxies().close(static_cast<CosNotifyChannelAdmin::ProxyID>(proxy_->number()),
                              Proxy::Ending::BY_CLIENT);
  }

 private:
  const std::shared_ptr<SessionChannel> channel_;
  const std::shared_ptr<Proxy> proxy_;
};

// A consumer that pulls may do without a reference: it is only told the end.
template <class Skeleton>
class PullServant : public ProxyServant<Skeleton> {
 public:
  using ProxyServant<Skeleton>::ProxyServant;

 protected:
  template <class Consumer, class End>
  void connect(typename Consumer::_ptr_type consumer, End end) {
    if (CORBA::is_nil(consumer)) {
      this->proxy().connectPull(nullptr);
      return;
    }
    const CORBA::Object_var limited = withCallLimit(consumer, this->settings().callLimit);
    const typename Consumer::_var_type kept = Consumer::_unchecked_narrow(limited.in());
    this->proxy().connectPull([kept, end] { end(kept.in()); });
  }
};

class StructuredPullServant
    : public PullServant<POA_CosNotifyChannelAdmin::StructuredProxyPullSupplier> {
 public:
  using PullServant::PullServant;

  void connect_structured_pull_consumer(StructuredPullConsumer_ptr consumer) override {
    connect<StructuredPullConsumer>(consumer, [](StructuredPullConsumer_ptr kept) {
      kept->disconnect_structured_pull_consumer();
    });
  }
  StructuredEvent* pull_structured_event() override {
    CORBA::Boolean hasEvent = false;
    return next(true, hasEvent);
  }
  StructuredEvent* try_pull_structured_event(CORBA::Boolean_out hasEvent) override {
    return next(false, hasEvent);
  }
  void disconnect_structured_pull_supplier() override { disconnect(); }

 private:
  // An empty event when there is none.
  StructuredEvent* next(bool wait, CORBA::Boolean& hasEvent) {
    EventBatch batch;
    hasEvent = proxy().pull(1, batch, wait) != 0;
    StructuredEvent_var event = new StructuredEvent;
    if (hasEvent) {
      NS_QUORCORBA::moveEvent(batch[0], event.inout());
    }
    return event._retn();
  }
};

class SequencePullServant
    : public PullServant<POA_CosNotifyChannelAdmin::SequenceProxyPullSupplier> {
 public:
  using PullServant::PullServant;

  void connect_sequence_pull_consumer(SequencePullConsumer_ptr consumer) override {
    connect<SequencePullConsumer>(
        consumer, [](SequencePullConsumer_ptr kept) { kept->disconnect_sequence_pull_consumer(); });
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

template <class Skeleton>
class PushServant : public ProxyServant<Skeleton> {
 public:
  using ProxyServant<Skeleton>::ProxyServant;
  void suspend_connection() override { this->proxy().suspend(); }
  void resume_connection() override { this->proxy().resume(); }

 protected:
  // A push proxy has to have somebody to push to.
  template <class Pointer>
  void connect(Pointer consumer) {
    if (CORBA::is_nil(consumer)) {
      throw CORBA::BAD_PARAM();
    }
    this->proxy().connectPush(targetOf(consumer, this->settings().callLimit));
  }
};

class StructuredPushServant
    : public PushServant<POA_CosNotifyChannelAdmin::StructuredProxyPushSupplier> {
 public:
  using PushServant::PushServant;
  void connect_structured_push_consumer(StructuredPushConsumer_ptr consumer) override {
    connect(consumer);
  }
  void disconnect_structured_push_supplier() override { disconnect(); }
};

class SequencePushServant
    : public PushServant<POA_CosNotifyChannelAdmin::SequenceProxyPushSupplier> {
 public:
  using PushServant::PushServant;
  void connect_sequence_push_consumer(SequencePushConsumer_ptr consumer) override {
    connect(consumer);
  }
  void disconnect_sequence_push_supplier() override { disconnect(); }
};

}  // namespace

PortableServer::Servant makeProxyServant(const std::shared_ptr<SessionChannel>& channel,
                                         const std::shared_ptr<Proxy>& proxy) {
  switch (proxy->type()) {
    case CosNotifyChannelAdmin::PULL_STRUCTURED:
      return new StructuredPullServant(channel, proxy);
    case CosNotifyChannelAdmin::PULL_SEQUENCE:
      return new SequencePullServant(channel, proxy);
    case CosNotifyChannelAdmin::PUSH_STRUCTURED:
      return new StructuredPushServant(channel, proxy);
    default:
      return new SequencePushServant(channel, proxy);
  }
}

}  // namespace zk::agent
