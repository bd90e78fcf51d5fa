#include "tests/nms/support/fakechannel.h"

#include <algorithm>
#include <deque>

#include "tests/nms/support/refusingchannel.h"

namespace zk::test {

using CosNotification::EventBatch;
using CosNotification::EventTypeSeq;
using CosNotification::StructuredEvent;

// What a channel knows of one consumer.
class FakeProxy {
 public:
  virtual ~FakeProxy() = default;

  virtual void bring(const std::vector<StructuredEvent>& events) = 0;
  virtual void disconnect() = 0;

  void give(const std::vector<StructuredEvent>& events) {
    std::vector<StructuredEvent> wanted;
    std::copy_if(events.begin(), events.end(), std::back_inserter(wanted),
                 [this](const StructuredEvent& event) { return wants(event); });
    if (isConnected() && !wanted.empty()) {
      bring(wanted);
    }
  }

  bool isConnected() const {
    const std::lock_guard<std::mutex> guard(mutex_);
    return connected_;
  }

  void setConnected(bool connected) {
    const std::lock_guard<std::mutex> guard(mutex_);
    connected_ = connected;
  }

  void wantTypes(const EventTypeSeq& types) {
    const std::lock_guard<std::mutex> guard(mutex_);
    for (CORBA::ULong i = 0; i < types.length(); ++i) {
      types_.emplace_back(types[i].type_name.in());
    }
  }

  void wantConstraints(const std::vector<std::string>& constraints) {
    const std::lock_guard<std::mutex> guard(mutex_);
    constraints_ = constraints;
  }

 private:
  bool wants(const StructuredEvent& event) const {
    const std::string type = event.header.fixed_header.event_type.type_name.in();
    const std::string constraint = "$type_name == '" + type + "'";
    const std::lock_guard<std::mutex> guard(mutex_);
    return (types_.empty() || std::count(types_.begin(), types_.end(), type) > 0) &&
           (constraints_.empty() ||
            std::count(constraints_.begin(), constraints_.end(), constraint) > 0);
  }

  mutable std::mutex mutex_;
  bool connected_ = false;
  std::vector<std::string> types_;
  std::vector<std::string> constraints_;
};

namespace {

EventBatch batchOf(const std::vector<StructuredEvent>& events) {
  EventBatch batch;
  batch.length(static_cast<CORBA::ULong>(events.size()));
  for (CORBA::ULong i = 0; i < batch.length(); ++i) {
    batch[i] = events[i];
  }
  return batch;
}

std::string typesText(const char* sign, const EventTypeSeq& types) {
  std::string result;
  for (CORBA::ULong i = 0; i < types.length(); ++i) {
    result += std::string(" ") + sign + types[i].domain_name.in() + "/" + types[i].type_name.in();
  }
  return result;
}

class Filter : public RefusingFilter {
 public:
  explicit Filter(FakeEvents& events) : events_(events) {}

  CosNotifyFilter::ConstraintInfoSeq* add_constraints(
      const CosNotifyFilter::ConstraintExpSeq& added) override {
    for (CORBA::ULong i = 0; i < added.length(); ++i) {
      const std::string text = added[i].constraint_expr.in();
      if (text.find("wrong") != std::string::npos) {
        throw CosNotifyFilter::InvalidConstraint(added[i]);
      }
      events_.note("constraint " + text);
      constraints_.push_back(text);
    }
    return new CosNotifyFilter::ConstraintInfoSeq;
  }

  CosNotifyFilter::ConstraintInfoSeq* get_all_constraints() override {
    CosNotifyFilter::ConstraintInfoSeq_var all = new CosNotifyFilter::ConstraintInfoSeq;
    all->length(static_cast<CORBA::ULong>(constraints_.size()));
    for (CORBA::ULong i = 0; i < all->length(); ++i) {
      all[i].constraint_expression.constraint_expr = constraints_[i].c_str();
    }
    return all._retn();
  }

 private:
  FakeEvents& events_;
  std::vector<std::string> constraints_;
};

class FilterFactory : public POA_CosNotifyFilter::FilterFactory {
 public:
  FilterFactory(PortableServer::POA_ptr poa, FakeEvents& events)
      : poa_(PortableServer::POA::_duplicate(poa)), events_(events) {}

  CosNotifyFilter::Filter_ptr create_filter(const char* grammar) override {
    events_.note(std::string("grammar ") + grammar);
    return activate<CosNotifyFilter::Filter>(poa_.in(), new Filter(events_));
  }
  CosNotifyFilter::MappingFilter_ptr create_mapping_filter(const char*,
                                                           const CORBA::Any&) override {
    notOffered();
  }

 private:
  PortableServer::POA_var poa_;
  FakeEvents& events_;
};

// The part of a proxy's servant that is alike in all.
template <class Base>
class Wished : public Base {
 public:
  Wished(FakeEvents& events, std::shared_ptr<FakeProxy> state)
      : events_(events), state_(std::move(state)) {}

  void subscription_change(const EventTypeSeq& added, const EventTypeSeq& removed) override {
    events_.note("types" + typesText("+", added) + typesText("-", removed));
    state_->wantTypes(added);
  }

  CosNotifyFilter::FilterID add_filter(CosNotifyFilter::Filter_ptr filter) override {
    CosNotifyFilter::ConstraintInfoSeq_var all = filter->get_all_constraints();
    std::vector<std::string> texts;
    for (CORBA::ULong i = 0; i < all->length(); ++i) {
      texts.emplace_back(all[i].constraint_expression.constraint_expr.in());
    }
    state_->wantConstraints(texts);
    return 1;
  }

 protected:
  void connected(const char* how) {
    state_->setConnected(true);
    events_.add(state_);
    events_.note(how);
    events_.onConnected();
  }

 private:
  FakeEvents& events_;
  const std::shared_ptr<FakeProxy> state_;
};

class SequencePushState : public FakeProxy {
 public:
  void bring(const std::vector<StructuredEvent>& events) override {
    consumer->push_structured_events(batchOf(events));
  }
  void disconnect() override { consumer->disconnect_sequence_push_consumer(); }

  CosNotifyComm::SequencePushConsumer_var consumer;
};

class SequencePush
    : public Wished<RefusingPushProxy<POA_CosNotifyChannelAdmin::SequenceProxyPushSupplier>> {
 public:
  SequencePush(FakeEvents& events, const std::shared_ptr<SequencePushState>& state)
      : Wished(events, state), own_(state) {}

  void connect_sequence_push_consumer(CosNotifyComm::SequencePushConsumer_ptr consumer) override {
    own_->consumer = CosNotifyComm::SequencePushConsumer::_duplicate(consumer);
    connected("push sequence");
  }
  void disconnect_sequence_push_supplier() override { own_->setConnected(false); }

 private:
  const std::shared_ptr<SequencePushState> own_;
};

class StructuredPushState : public FakeProxy {
 public:
  void bring(const std::vector<StructuredEvent>& events) override {
    for (const StructuredEvent& event : events) {
      consumer->push_structured_event(event);
    }
  }
  void disconnect() override { consumer->disconnect_structured_push_consumer(); }

  CosNotifyComm::StructuredPushConsumer_var consumer;
};

class StructuredPush
    : public Wished<RefusingPushProxy<POA_CosNotifyChannelAdmin::StructuredProxyPushSupplier>> {
 public:
  StructuredPush(FakeEvents& events, const std::shared_ptr<StructuredPushState>& state)
      : Wished(events, state), own_(state) {}

  void connect_structured_push_consumer(
      CosNotifyComm::StructuredPushConsumer_ptr consumer) override {
    own_->consumer = CosNotifyComm::StructuredPushConsumer::_duplicate(consumer);
    connected("push structured");
  }
  void disconnect_structured_push_supplier() override { own_->setConnected(false); }

 private:
  const std::shared_ptr<StructuredPushState> own_;
};

class SequencePullState : public FakeProxy {
 public:
  void bring(const std::vector<StructuredEvent>& events) override {
    const std::lock_guard<std::mutex> guard(mutex_);
    waiting_.insert(waiting_.end(), events.begin(), events.end());
  }
  void disconnect() override { consumer->disconnect_sequence_pull_consumer(); }

  std::vector<StructuredEvent> take(std::size_t most) {
    const std::lock_guard<std::mutex> guard(mutex_);
    const auto end =
        waiting_.begin() + static_cast<std::ptrdiff_t>(std::min(most, waiting_.size()));
    std::vector<StructuredEvent> result(waiting_.begin(), end);
    waiting_.erase(waiting_.begin(), end);
    return result;
  }

  CosNotifyComm::SequencePullConsumer_var consumer;

 private:
  std::mutex mutex_;
  std::deque<StructuredEvent> waiting_;
};

class SequencePull
    : public Wished<RefusingProxy<POA_CosNotifyChannelAdmin::SequenceProxyPullSupplier>> {
 public:
  SequencePull(FakeEvents& events, const std::shared_ptr<SequencePullState>& state)
      : Wished(events, state), own_(state) {}

  void connect_sequence_pull_consumer(CosNotifyComm::SequencePullConsumer_ptr consumer) override {
    own_->consumer = CosNotifyComm::SequencePullConsumer::_duplicate(consumer);
    connected("pull sequence");
  }
  EventBatch* pull_structured_events(CORBA::Long) override { notOffered(); }
  EventBatch* try_pull_structured_events(CORBA::Long most, CORBA::Boolean& has) override {
    const auto events = own_->take(static_cast<std::size_t>(most));
    has = !events.empty();
    return new EventBatch(batchOf(events));
  }
  void disconnect_sequence_pull_supplier() override { own_->setConnected(false); }

 private:
  const std::shared_ptr<SequencePullState> own_;
};

class Admin : public RefusingAdmin {
 public:
  Admin(PortableServer::POA_ptr poa, FakeEvents& events)
      : poa_(PortableServer::POA::_duplicate(poa)), events_(events) {}

  CosNotifyChannelAdmin::ProxySupplier_ptr obtain_notification_push_supplier(
      CosNotifyChannelAdmin::ClientType type, CosNotifyChannelAdmin::ProxyID_out id) override {
    id = 1;
    if (type == CosNotifyChannelAdmin::SEQUENCE_EVENT) {
      return proxy(new SequencePush(events_, std::make_shared<SequencePushState>()));
    }
    return proxy(new StructuredPush(events_, std::make_shared<StructuredPushState>()));
  }
  CosNotifyChannelAdmin::ProxySupplier_ptr obtain_notification_pull_supplier(
      CosNotifyChannelAdmin::ClientType type, CosNotifyChannelAdmin::ProxyID_out id) override {
    id = 1;
    if (type != CosNotifyChannelAdmin::SEQUENCE_EVENT) {
      notOffered();
    }
    return proxy(new SequencePull(events_, std::make_shared<SequencePullState>()));
  }

 private:
  CosNotifyChannelAdmin::ProxySupplier_ptr proxy(PortableServer::ServantBase* servant) {
    return activate<CosNotifyChannelAdmin::ProxySupplier>(poa_.in(), servant);
  }

  PortableServer::POA_var poa_;
  FakeEvents& events_;
};

class Channel : public RefusingChannel {
 public:
  Channel(PortableServer::POA_ptr poa, FakeEvents& events)
      : poa_(PortableServer::POA::_duplicate(poa)), events_(events) {}

  CosNotifyChannelAdmin::ConsumerAdmin_ptr default_consumer_admin() override {
    return activate<CosNotifyChannelAdmin::ConsumerAdmin>(poa_.in(), new Admin(poa_.in(), events_));
  }
  CosNotifyFilter::FilterFactory_ptr default_filter_factory() override {
    return activate<CosNotifyFilter::FilterFactory>(poa_.in(),
                                                    new FilterFactory(poa_.in(), events_));
  }

 private:
  PortableServer::POA_var poa_;
  FakeEvents& events_;
};

}  // namespace

void FakeEvents::raise(const StructuredEvent& event) { raise(std::vector<StructuredEvent>{event}); }

// A consumer that is gone need not keep the others from their events.
void FakeEvents::raise(const std::vector<StructuredEvent>& events) {
  for (const auto& proxy : proxies()) {
    try {
      proxy->give(events);
    } catch (const CORBA::Exception&) {
      proxy->setConnected(false);
    }
  }
}

void FakeEvents::disconnectAll() {
  for (const auto& proxy : proxies()) {
    if (proxy->isConnected()) {
      proxy->setConnected(false);
      try {
        proxy->disconnect();
      } catch (const CORBA::Exception&) {
        // It has gone without a word.
      }
    }
  }
}

std::vector<std::shared_ptr<FakeProxy>> FakeEvents::proxies() const {
  const std::lock_guard<std::mutex> guard(mutex_);
  return proxies_;
}

int FakeEvents::connected() const {
  const auto all = proxies();
  return static_cast<int>(std::count_if(all.begin(), all.end(),
                                        [](const auto& proxy) { return proxy->isConnected(); }));
}

int FakeEvents::everConnected() const { return static_cast<int>(proxies().size()); }

std::vector<std::string> FakeEvents::told() const {
  const std::lock_guard<std::mutex> guard(mutex_);
  return told_;
}

void FakeEvents::note(const std::string& what) {
  const std::lock_guard<std::mutex> guard(mutex_);
  told_.push_back(what);
}

void FakeEvents::add(std::shared_ptr<FakeProxy> proxy) {
  const std::lock_guard<std::mutex> guard(mutex_);
  proxies_.push_back(std::move(proxy));
}

CosNotifyChannelAdmin::EventChannel_ptr makeFakeChannel(PortableServer::POA_ptr poa,
                                                        FakeEvents& events) {
  return activate<CosNotifyChannelAdmin::EventChannel>(poa, new Channel(poa, events));
}

StructuredEvent fakeEvent(const std::string& type,
                          const std::vector<std::pair<std::string, std::string>>& texts) {
  StructuredEvent event;
  event.header.fixed_header.event_type.domain_name = "tmf_mtnm";
  event.header.fixed_header.event_type.type_name = type.c_str();
  event.header.fixed_header.event_name = "";
  for (const auto& [name, text] : texts) {
    CORBA::Any value;
    value <<= text.c_str();
    addProperty(event, name.c_str(), value);
  }
  return event;
}

void addProperty(StructuredEvent& event, const char* name, const CORBA::Any& value) {
  CosNotification::Property& property = added(event.filterable_data);
  property.name = name;
  property.value = value;
}

StructuredEvent fakeAlarm(unsigned element, const std::string& cause,
                          notifications::PerceivedSeverity_T severity, const std::string& text) {
  StructuredEvent event = fakeEvent("NT_ALARM", {{"notificationId", "1"},
                                                 {"emsTime", "20121120094200.0Z"},
                                                 {"probableCause", cause},
                                                 {"probableCauseQualifier", ""},
                                                 {"additionalText", text}});
  globaldefs::NVSList_T name;
  name.length(2);
  name[0].name = "EMS";
  name[0].value = "Quor/1";
  name[1].name = "ManagedElement";
  name[1].value = std::to_string(element).c_str();
  CORBA::Any value;
  value <<= name;
  addProperty(event, "objectName", value);
  value <<= severity;
  addProperty(event, "perceivedSeverity", value);
  return event;
}

}  // namespace zk::test
