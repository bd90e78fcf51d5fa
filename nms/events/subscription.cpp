#include "nms/events/subscription.h"

#include "nms/events/consumers.h"
#include "nms/wire/text.h"

namespace zk::nms {
namespace {

using CosNotifyChannelAdmin::ClientType;
using CosNotifyChannelAdmin::ProxySupplier_var;
using CosNotifyChannelAdmin::SequenceProxyPullSupplier;
using CosNotifyChannelAdmin::SequenceProxyPushSupplier;
using CosNotifyChannelAdmin::StructuredProxyPushSupplier;

constexpr CORBA::Long kMostAtOnce = 500;

CosNotifyChannelAdmin::EventChannel_var channelOf(Connection& connection) {
  CosNotifyChannelAdmin::EventChannel_var channel;
  connection.session()->getEventChannel(channel.out());
  if (CORBA::is_nil(channel.in())) {
    throw RefusedError("the EMS gave no event channel");
  }
  return channel;
}

CosNotifyFilter::Filter_var emptyFilter(CosNotifyChannelAdmin::EventChannel_ptr channel) {
  CosNotifyFilter::FilterFactory_var factory = channel->default_filter_factory();
  if (CORBA::is_nil(factory.in())) {
    throw RefusedError("the EMS's event channel offers no filters");
  }
  try {
    return factory->create_filter("EXTENDED_TCL");
  } catch (const CosNotifyFilter::InvalidGrammar&) {
    throw RefusedError("the EMS's event channel does not know the grammar EXTENDED_TCL");
  }
}

CosNotifyFilter::Filter_var filterOf(CosNotifyChannelAdmin::EventChannel_ptr channel,
                                     const std::vector<std::string>& constraints) {
  CosNotifyFilter::Filter_var filter = emptyFilter(channel);
  CosNotifyFilter::ConstraintExpSeq expressions;
  expressions.length(static_cast<CORBA::ULong>(constraints.size()));
  CORBA::ULong i = 0;
  for (const std::string& constraint : constraints) {
    expressions[i++].constraint_expr = constraint.c_str();
  }
  try {
    CosNotifyFilter::ConstraintInfoSeq_var added = filter->add_constraints(expressions);
  } catch (const CosNotifyFilter::InvalidConstraint& invalid) {
    // The answer has no place for a reason: only for the constraint.
    const char* text = invalid.constr.constraint_expr.in();
    throw RefusedError("InvalidConstraint: the EMS does not understand the constraint '" +
                       printable(asUtf8(text)) + "' as EXTENDED_TCL");
  }
  return filter;
}

CosNotification::EventTypeSeq typesOf(const std::vector<std::string>& names) {
  CosNotification::EventTypeSeq types;
  types.length(static_cast<CORBA::ULong>(names.size()));
  CORBA::ULong i = 0;
  for (const std::string& name : names) {
    types[i].domain_name = "tmf_mtnm";
    types[i++].type_name = name.c_str();
  }
  return types;
}

// A proxy starts with the one type that stands for all.
CosNotification::EventTypeSeq everyType() {
  CosNotification::EventTypeSeq types;
  types.length(1);
  types[0].domain_name = "*";
  types[0].type_name = "%ALL";
  return types;
}

ProxySupplier_var obtain(CosNotifyChannelAdmin::EventChannel_ptr channel, Delivery delivery) {
  CosNotifyChannelAdmin::ConsumerAdmin_var admin = channel->default_consumer_admin();
  const ClientType type = delivery == Delivery::kPushOneByOne
                              ? CosNotifyChannelAdmin::STRUCTURED_EVENT
                              : CosNotifyChannelAdmin::SEQUENCE_EVENT;
  CosNotifyChannelAdmin::ProxyID id = 0;
  try {
    return delivery == Delivery::kPull ? admin->obtain_notification_pull_supplier(type, id)
                                       : admin->obtain_notification_push_supplier(type, id);
  } catch (const CosNotifyChannelAdmin::AdminLimitExceeded&) {
    throw RefusedError("the EMS's event channel takes no further consumers");
  }
}

// A proxy with the wishes told to it, not connected yet.
template <class Proxy>
typename Proxy::_var_type proxyFor(Connection& connection, const Wishes& wishes) {
  const auto channel = channelOf(connection);
  const ProxySupplier_var supplier = obtain(channel.in(), wishes.delivery);
  typename Proxy::_var_type proxy = Proxy::_narrow(supplier.in());
  if (CORBA::is_nil(proxy.in())) {
    throw RefusedError("the EMS's event channel does not serve this form of delivery");
  }
  if (!wishes.types.empty()) {
    try {
      proxy->subscription_change(typesOf(wishes.types), everyType());
    } catch (const CosNotifyComm::InvalidEventType& invalid) {
      throw RefusedError("the EMS has no events of the type '" +
                         printable(asUtf8(invalid.type.type_name.in())) + "'");
    }
  }
  if (!wishes.constraints.empty()) {
    const auto filter = filterOf(channel.in(), wishes.constraints);
    proxy->add_filter(filter.in());
  }
  return proxy;
}

template <class Interface>
typename Interface::_var_type activated(Connection& connection,
                                        PortableServer::ServantBase* servant) {
  const PortableServer::Servant_var<PortableServer::ServantBase> owner(servant);
  CORBA::Object_var object = connection.orb().activate(servant);
  return Interface::_narrow(object.in());
}

void checkProxy(CORBA::Object_ptr proxy) {
  if (proxy->_non_existent()) {
    throw CORBA::OBJECT_NOT_EXIST();
  }
}

class PushedSequences : public Subscription {
 public:
  PushedSequences(Connection& connection, const Wishes& wishes, EventQueue& queue)
      : proxy_(proxyFor<SequenceProxyPushSupplier>(connection, wishes)) {
    const ValueReader reader(connection.orb().dynAnyFactory().in());
    const auto consumer = activated<CosNotifyComm::SequencePushConsumer>(
        connection, new SequenceConsumer(queue, reader));
    proxy_->connect_sequence_push_consumer(consumer.in());
  }

  bool fetch() override { return false; }
  void check() override { checkProxy(proxy_.in()); }

 private:
  CosNotifyChannelAdmin::SequenceProxyPushSupplier_var proxy_;
};

class PushedOneByOne : public Subscription {
 public:
  PushedOneByOne(Connection& connection, const Wishes& wishes, EventQueue& queue)
      : proxy_(proxyFor<StructuredProxyPushSupplier>(connection, wishes)) {
    const ValueReader reader(connection.orb().dynAnyFactory().in());
    const auto consumer = activated<CosNotifyComm::StructuredPushConsumer>(
        connection, new StructuredConsumer(queue, reader));
    proxy_->connect_structured_push_consumer(consumer.in());
  }

  bool fetch() override { return false; }
  void check() override { checkProxy(proxy_.in()); }

 private:
  CosNotifyChannelAdmin::StructuredProxyPushSupplier_var proxy_;
};

class Pulled : public Subscription {
 public:
  Pulled(Connection& connection, const Wishes& wishes, EventQueue& queue)
      : proxy_(proxyFor<SequenceProxyPullSupplier>(connection, wishes)),
        reader_(connection.orb().dynAnyFactory().in()),
        queue_(queue) {
    const auto consumer =
        activated<CosNotifyComm::SequencePullConsumer>(connection, new PullConsumer(queue));
    proxy_->connect_sequence_pull_consumer(consumer.in());
  }

  // Never the call that waits at the agent: when it ran into the limit of one
  // call, the events of a late answer would be lost.
  bool fetch() override {
    CORBA::Boolean hasEvents = false;
    CosNotification::EventBatch_var events =
        proxy_->try_pull_structured_events(kMostAtOnce, hasEvents);
    if (!hasEvents) {
      return false;
    }
    for (CORBA::ULong i = 0; i < events->length(); ++i) {
      queue_.add(readEvent(events[i], reader_));
    }
    return true;
  }

  void check() override {}  // fetching says it

 private:
  CosNotifyChannelAdmin::SequenceProxyPullSupplier_var proxy_;
  const ValueReader reader_;
  EventQueue& queue_;
};

}  // namespace

std::unique_ptr<Subscription> subscribe(Connection& connection, const Wishes& wishes,
                                        EventQueue& queue) {
  switch (wishes.delivery) {
    case Delivery::kPushOneByOne:
      return std::make_unique<PushedOneByOne>(connection, wishes, queue);
    case Delivery::kPull:
      return std::make_unique<Pulled>(connection, wishes, queue);
    case Delivery::kPushSequences:
      break;
  }
  return std::make_unique<PushedSequences>(connection, wishes, queue);
}

}  // namespace zk::nms
