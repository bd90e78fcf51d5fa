#include "nms/events/subscription.h"

#include <utility>

#include "nms/wire/lists.h"
#include "nms/wire/text.h"
#include "zk_quornex/idl/channel.h"

namespace zk::nms {

namespace {

using CosNotifyChannelAdmin::ClientType;
using CosNotifyChannelAdmin::ProxySupplier_var;
using CosNotifyChannelAdmin::SequenceProxyPullSupplier;
using CosNotifyChannelAdmin::SequenceProxyPushSupplier;
using CosNotifyChannelAdmin::StructuredProxyPushSupplier;

constexpr CORBA::Long MOST_AT_ONCE = 500;

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
  const auto expressions = listOf<CosNotifyFilter::ConstraintExpSeq>(
      constraints, [](auto& entry, const std::string& constraint) {
        entry.constraint_expr = constraint.c_str();
      });
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

CosNotification::EventTypeSeq typesOf(const char* domain, const std::vector<std::string>& names) {
  return listOf<CosNotification::EventTypeSeq>(names, [&](auto& entry, const std::string& name) {
    entry.domain_name = domain;
    entry.type_name = name.c_str();
  });
}

ProxySupplier_var obtain(CosNotifyChannelAdmin::EventChannel_ptr channel, Delivery delivery) {
  CosNotifyChannelAdmin::ConsumerAdmin_var admin = channel->default_consumer_admin();
  const ClientType type = delivery == Delivery::PUSH_ONE_BY_ONE
                              ? CosNotifyChannelAdmin::STRUCTURED_EVENT
                              : CosNotifyChannelAdmin::SEQUENCE_EVENT;
  CosNotifyChannelAdmin::ProxyID id = 0;
  try {
    return delivery == Delivery::PULL ? admin->obtain_notification_pull_supplier(type, id)
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
      // A proxy starts with the one type that stands for all.
      proxy->subscription_change(typesOf("tmf_mtnm", wishes.types), typesOf("*", {"%ALL"}));
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

// What the agent's channel calls: consumers that pass on what they are given.
// Called on the ORB's threads; the queue must outlive the ORB.
template <class Skeleton>
class Consumer : public Skeleton {
 public:
  Consumer(EventQueue& queue, const ValueReader& reader) : queue_(queue), reader_(reader) {}

  void offer_change(const CosNotification::EventTypeSeq&,
                    const CosNotification::EventTypeSeq&) override {}

 protected:
  void put(const CosNotification::StructuredEvent& event) {
    if (!queue_.put(readEvent(event, reader_))) {
      throw CosEventComm::Disconnected();
    }
  }
  void end() { queue_.disconnected(); }

 private:
  EventQueue& queue_;
  const ValueReader reader_;
};

class SequenceConsumer : public Consumer<POA_CosNotifyComm::SequencePushConsumer> {
 public:
  using Consumer::Consumer;

  void push_structured_events(const CosNotification::EventBatch& events) override {
    for (CORBA::ULong i = 0; i < events.length(); ++i) {
      put(events[i]);
    }
  }
  void disconnect_sequence_push_consumer() override { end(); }
};

class StructuredConsumer : public Consumer<POA_CosNotifyComm::StructuredPushConsumer> {
 public:
  using Consumer::Consumer;

  void push_structured_event(const CosNotification::StructuredEvent& event) override { put(event); }
  void disconnect_structured_push_consumer() override { end(); }
};

// Only hears of the end: it is this program that fetches.
class PullConsumer : public Consumer<POA_CosNotifyComm::SequencePullConsumer> {
 public:
  using Consumer::Consumer;

  void disconnect_sequence_pull_consumer() override { end(); }
};

// The agent brings the events.
class Pushed : public Subscription {
 public:
  explicit Pushed(CORBA::Object_ptr proxy) : proxy_(CORBA::Object::_duplicate(proxy)) {}

  bool fetch() override { return false; }
  void check() override {
    if (proxy_->_non_existent()) {
      throw CORBA::OBJECT_NOT_EXIST();
    }
  }

 private:
  const CORBA::Object_var proxy_;
};

std::unique_ptr<Subscription> pushedSequences(Connection& connection, const Wishes& wishes,
                                              EventQueue& queue, const ValueReader& reader) {
  const auto proxy = proxyFor<SequenceProxyPushSupplier>(connection, wishes);
  const auto consumer = activated<CosNotifyComm::SequencePushConsumer>(
      connection, new SequenceConsumer(queue, reader));
  proxy->connect_sequence_push_consumer(consumer.in());
  return std::make_unique<Pushed>(proxy.in());
}

std::unique_ptr<Subscription> pushedOneByOne(Connection& connection, const Wishes& wishes,
                                             EventQueue& queue, const ValueReader& reader) {
  const auto proxy = proxyFor<StructuredProxyPushSupplier>(connection, wishes);
  const auto consumer = activated<CosNotifyComm::StructuredPushConsumer>(
      connection, new StructuredConsumer(queue, reader));
  proxy->connect_structured_push_consumer(consumer.in());
  return std::make_unique<Pushed>(proxy.in());
}

class Pulled : public Subscription {
 public:
  Pulled(Connection& connection, const Wishes& wishes, EventQueue& queue, const ValueReader& reader)
      : proxy_(proxyFor<SequenceProxyPullSupplier>(connection, wishes)),
        reader_(reader),
        queue_(queue) {
    const auto consumer =
        activated<CosNotifyComm::SequencePullConsumer>(connection, new PullConsumer(queue, reader));
    proxy_->connect_sequence_pull_consumer(consumer.in());
  }

  // Never the call that waits at the agent: when it ran into the limit of one
  // call, the events of a late answer would be lost.
  bool fetch() override {
    CORBA::Boolean hasEvents = false;
    CosNotification::EventBatch_var events =
        proxy_->try_pull_structured_events(MOST_AT_ONCE, hasEvents);
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
  const ValueReader reader(connection.orb().dynAnyFactory().in());
  switch (wishes.delivery) {
    case Delivery::PUSH_ONE_BY_ONE:
      return pushedOneByOne(connection, wishes, queue, reader);
    case Delivery::PULL:
      return std::make_unique<Pulled>(connection, wishes, queue, reader);
    case Delivery::PUSH_SEQUENCES:
      break;
  }
  return pushedSequences(connection, wishes, queue, reader);
}

bool EventQueue::put(Event event) {
  const MutexLock lock(mutex_);
  while (!closed_ && told_.size() >= limit_) {
    changed_.wait(mutex_);
  }
  if (closed_) {
    return false;
  }
  told_.push_back({Told::EVENT, std::move(event), "", ""});
  changed_.notifyAll();
  return true;
}

void EventQueue::tell(Told told) {
  const MutexLock guard(mutex_);
  told_.push_back(std::move(told));
  changed_.notifyAll();
}

void EventQueue::add(Event event) { tell({Told::EVENT, std::move(event), "", ""}); }

void EventQueue::disconnected() { tell({Told::DISCONNECTED, {}, "", ""}); }

void EventQueue::sessionEnded() { tell({Told::SESSION_ENDED, {}, "", ""}); }

void EventQueue::eventLossOccurred(const std::string& startTime,
                                   const std::string& notificationId) {
  tell({Told::LOSS_BEGAN, {}, startTime, notificationId});
}

void EventQueue::alarmLossOccurred(const std::string& startTime,
                                   const std::string& notificationId) {
  tell({Told::LOSS_BEGAN, {}, startTime, notificationId});
}

void EventQueue::eventLossCleared(const std::string& endTime) {
  tell({Told::LOSS_ENDED, {}, endTime, ""});
}

std::optional<Told> EventQueue::take(std::chrono::steady_clock::time_point until) {
  const MutexLock lock(mutex_);
  while (told_.empty()) {
    if (!changed_.waitUntil(mutex_, until) && told_.empty()) {
      return std::nullopt;
    }
  }
  std::optional<Told> result(std::move(told_.front()));
  told_.pop_front();
  changed_.notifyAll();
  return result;
}

void EventQueue::close() {
  const MutexLock guard(mutex_);
  closed_ = true;
  changed_.notifyAll();
}

void EventQueue::reopen() {
  const MutexLock guard(mutex_);
  closed_ = false;
}

}  // namespace zk::nms
