// One NMS of the soak, for one stay: logs in, filters, takes events, and logs out
// or is gone without a word. Prints what it was owed and what it got as one line.
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <mutex>
#include <thread>

#include "agent/channel/events.h"
#include "options/options.h"
#include "tests/agent/support/names.h"
#include "tests/platform/waiting.h"
#include "tests/reliability/balance.h"
#include "tests/support/orb.h"
#include "zk_quornex/idl/channel.h"
#include "zk_quornex/idl/managers.h"
#include "zk_quornex/idl/sessions.h"
#include "zk_quornex/platform/timechange.h"

namespace {

using namespace zk::test;
using CosNotification::StructuredEvent;
using Clock = std::chrono::steady_clock;
using NS_QUORCORBA::TimeChange;
using Texts = std::map<Balance::Key, std::string>;

constexpr CORBA::ULong MOST_AT_ONCE = 500;
constexpr CORBA::ULong ALL_ELEMENTS = 10000;
constexpr std::chrono::milliseconds SLOWNESS_OF_MANY{1500};
constexpr std::chrono::milliseconds SLOWNESS_OF_ONE{10};

struct Stay {
  unsigned port = 0;
  double seconds = 10;
  std::string delivery = "pull";
  unsigned filter = 0;
  bool isSlow = false;
  bool vanishes = false;
};

// With each, all events about one of an object's texts come, or none does.
struct Choice {
  const char* constraint;
  bool hasLabels;
  bool hasNames;
};
constexpr Choice FILTERS[] = {
    {"$type_name == 'NT_ATTRIBUTE_VALUE_CHANGE'", true, true},
    {"exist $.filterable_data(attributeList)('userLabel')", true, false},
    {"exist $.filterable_data(attributeList)('nativeEMSName')", false, true},
    {"$.filterable_data(objectTypeQualifier) == 'ManagedElement'", true, true}};

template <class Value>
const Value* propertyOf(const StructuredEvent& event, const char* name) {
  const CosNotification::FilterableEventBody& properties = event.filterable_data;
  for (CORBA::ULong i = 0; i < properties.length(); ++i) {
    const Value* value = nullptr;
    if (std::string(properties[i].name) == name && (properties[i].value >>= value)) {
      return value;
    }
  }
  return nullptr;
}

// What this NMS is told, on any thread of the ORB.
class Told {
 public:
  // Nothing is taken in while read runs, which gives the texts as they are.
  template <class Read>
  void begin(Read read) {
    const std::lock_guard<std::mutex> guard(mutex_);
    const std::string time = TimeChange::getUTCTime();
    for (const auto& [key, text] : Texts(read())) {
      balance_.begin(key, text, time);
    }
  }

  template <class Events>
  void take(const Events& events) {
    if (isSlow) {
      std::this_thread::sleep_for(events.length() > 1 ? SLOWNESS_OF_MANY : SLOWNESS_OF_ONE);
    }
    const std::lock_guard<std::mutex> guard(mutex_);
    for (CORBA::ULong i = 0; i < events.length(); ++i) {
      take(events[i]);
    }
  }

  void lossBegan(const char* time) {
    const std::lock_guard<std::mutex> guard(mutex_);
    losses_.push_back({time, ""});
  }
  void lossEnded(const char* time) {
    const std::lock_guard<std::mutex> guard(mutex_);
    if (!losses_.empty()) {
      losses_.back().end = time;
    }
  }

  bool isComplete(const Texts& texts) const {
    const std::lock_guard<std::mutex> guard(mutex_);
    return balance_.isComplete(texts);
  }
  Balance::Sum close(const Texts& texts) {
    const std::lock_guard<std::mutex> guard(mutex_);
    balance_.close(texts, TimeChange::getUTCTime());
    return balance_.sum(losses_);
  }
  unsigned long events() const {
    const std::lock_guard<std::mutex> guard(mutex_);
    return events_;
  }
  std::size_t losses() const {
    const std::lock_guard<std::mutex> guard(mutex_);
    return losses_.size();
  }

  std::atomic<bool> isSlow{false};

 private:
  void take(const StructuredEvent& event) {
    ++events_;
    const auto* name = propertyOf<globaldefs::NVSList_T>(event, "objectName");
    const auto* changes = propertyOf<notifications::NVList_T>(event, "attributeList");
    for (CORBA::ULong i = 0; name != nullptr && changes != nullptr && i < changes->length(); ++i) {
      const char* text = nullptr;
      if ((*changes)[i].value >>= text) {
        balance_.add(dump(*name) + '|' + std::string((*changes)[i].name), text,
                     zk::agent::timeOf(event));
      }
    }
  }

  mutable std::mutex mutex_;
  Balance balance_;
  std::vector<Balance::Loss> losses_;
  unsigned long events_ = 0;
};

class Nms : public virtual POA_nmsSession::NmsSession_I,
            public virtual PortableServer::RefCountServantBase {
 public:
  explicit Nms(Told& told) : told_(told) {}
  session::Session_I_ptr associatedSession() override { return session::Session_I::_nil(); }
  void ping() override {}
  void endSession() override {}
  void eventLossOccurred(const char* time, const char*) override { told_.lossBegan(time); }
  void eventLossCleared(const char* time) override { told_.lossEnded(time); }
  void alarmLossOccurred(const char* time, const char*) override { told_.lossBegan(time); }

 private:
  Told& told_;
};

template <class Skeleton>
class Consumer : public virtual Skeleton, public virtual PortableServer::RefCountServantBase {
 public:
  explicit Consumer(Told& receiver) : told(receiver) {}
  void offer_change(const CosNotification::EventTypeSeq&,
                    const CosNotification::EventTypeSeq&) override {}
  Told& told;
};

class OneByOne : public Consumer<POA_CosNotifyComm::StructuredPushConsumer> {
 public:
  using Consumer::Consumer;
  void push_structured_event(const StructuredEvent& event) override {
    CosNotification::EventBatch one(1);
    one.length(1);
    one[0] = event;
    told.take(one);
  }
  void disconnect_structured_push_consumer() override {}
};

class InBatches : public Consumer<POA_CosNotifyComm::SequencePushConsumer> {
 public:
  using Consumer::Consumer;
  void push_structured_events(const CosNotification::EventBatch& events) override {
    told.take(events);
  }
  void disconnect_sequence_push_consumer() override {}
};

PortableServer::POA_var rootAdapter() {
  int count = 0;
  const CORBA::ORB_var orb = CORBA::ORB_init(count, nullptr);
  const CORBA::Object_var object = orb->resolve_initial_references("RootPOA");
  PortableServer::POA_var adapter = PortableServer::POA::_narrow(object.in());
  const PortableServer::POAManager_var manager = adapter->the_POAManager();
  manager->activate();
  return adapter;
}

// The servant stays for the process's life.
template <class Interface>
typename Interface::_var_type activated(PortableServer::Servant servant) {
  const PortableServer::POA_var adapter = rootAdapter();
  const PortableServer::ObjectId_var id = adapter->activate_object(servant);
  const CORBA::Object_var object = adapter->id_to_reference(id.in());
  return Interface::_narrow(object.in());
}

class Client {
 public:
  Client(const Stay& stay, Told& told) : stay_(stay), told_(told) {
    int count = 0;
    const CORBA::ORB_var orb = CORBA::ORB_init(count, nullptr);
    const std::string where =
        "corbaloc:iiop:127.0.0.1:" + std::to_string(stay.port) + "/EmsSessionFactory";
    const CORBA::Object_var object = orb->string_to_object(where.c_str());
    const auto factory = emsSessionFactory::EmsSessionFactory_I::_narrow(object.in());
    const emsSessionFactory::EmsSessionFactory_I_var owner = factory;
    const auto self = activated<nmsSession::NmsSession_I>(new Nms(told));
    factory->getEmsSession("", "", self.in(), session_.out());
    common::Common_I_var common;
    session_->getManager("ManagedElement", common.out());
    elements_ = managedElementManager::ManagedElementMgr_I::_narrow(common.in());
  }

  void subscribe() {
    CosNotifyChannelAdmin::EventChannel_var channel;
    session_->getEventChannel(channel.out());
    const CosNotifyChannelAdmin::ConsumerAdmin_var admin = channel->default_consumer_admin();
    const auto kind = stay_.delivery == "structured" ? CosNotifyChannelAdmin::STRUCTURED_EVENT
                                                     : CosNotifyChannelAdmin::SEQUENCE_EVENT;
    CosNotifyChannelAdmin::ProxyID id = 0;
    CosNotifyChannelAdmin::ProxySupplier_var proxy =
        stay_.delivery == "pull" ? admin->obtain_notification_pull_supplier(kind, id)
                                 : admin->obtain_notification_push_supplier(kind, id);
    filter(channel.in(), proxy.in());
    connect(proxy.in());
    told_.begin([this] { return texts(); });
  }

  void takeEvents(Clock::time_point until) {
    while (Clock::now() < until) {
      pullOnce();
    }
  }

  // Until there is nothing more to come of what happened up to now.
  Balance::Sum catchUp() {
    told_.isSlow = false;
    const Texts now = texts();
    const auto end = Clock::now() + DEADLINE;
    while (!told_.isComplete(now) && Clock::now() < end) {
      pullOnce();
    }
    const auto told = Clock::now() + std::chrono::seconds(5);
    Balance::Sum sum = told_.close(now);
    while (sum.unexplained != 0 && Clock::now() < told) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
      sum = told_.close({});
    }
    return sum;
  }

  void logOut() { session_->endSession(); }

 private:
  void filter(CosNotifyChannelAdmin::EventChannel_ptr channel,
              CosNotifyFilter::FilterAdmin_ptr proxy) const {
    const CosNotifyFilter::FilterFactory_var factory = channel->default_filter_factory();
    const CosNotifyFilter::Filter_var filter = factory->create_filter("EXTENDED_TCL");
    CosNotifyFilter::ConstraintExpSeq constraints;
    constraints.length(1);
    constraints[0].constraint_expr = CORBA::string_dup(FILTERS[stay_.filter].constraint);
    const CosNotifyFilter::ConstraintInfoSeq_var added = filter->add_constraints(constraints);
    proxy->add_filter(filter.in());
  }

  void connect(CosNotifyChannelAdmin::ProxySupplier_ptr proxy) {
    using namespace CosNotifyChannelAdmin;
    if (stay_.delivery == "pull") {
      puller_ = SequenceProxyPullSupplier::_narrow(proxy);
      puller_->connect_sequence_pull_consumer(CosNotifyComm::SequencePullConsumer::_nil());
    } else if (stay_.delivery == "push") {
      const SequenceProxyPushSupplier_var pusher = SequenceProxyPushSupplier::_narrow(proxy);
      pusher->connect_sequence_push_consumer(
          activated<CosNotifyComm::SequencePushConsumer>(new InBatches(told_)).in());
    } else {
      const StructuredProxyPushSupplier_var pusher = StructuredProxyPushSupplier::_narrow(proxy);
      pusher->connect_structured_push_consumer(
          activated<CosNotifyComm::StructuredPushConsumer>(new OneByOne(told_)).in());
    }
  }

  void pullOnce() {
    CORBA::Boolean hasEvents = false;
    if (!CORBA::is_nil(puller_.in())) {
      const CosNotification::EventBatch_var events =
          puller_->try_pull_structured_events(MOST_AT_ONCE, hasEvents);
      if (hasEvents) {
        told_.take(events.in());
      }
    }
    if (!hasEvents) {
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
  }

  Texts texts() const {
    managedElement::ManagedElementList_T_var list;
    managedElement::ManagedElementIterator_I_var iterator;
    elements_->getAllManagedElements(ALL_ELEMENTS, list.out(), iterator.out());
    Texts found;
    add(list.in(), found);
    for (CORBA::Boolean isMore = !CORBA::is_nil(iterator.in()); isMore;) {
      managedElement::ManagedElementList_T_var more;
      isMore = iterator->next_n(ALL_ELEMENTS, more.out());
      add(more.in(), found);
    }
    return found;
  }

  void add(const managedElement::ManagedElementList_T& list, Texts& found) const {
    const Choice& choice = FILTERS[stay_.filter];
    for (CORBA::ULong i = 0; i < list.length(); ++i) {
      const std::string name = dump(list[i].name);
      if (choice.hasLabels) {
        found[name + "|userLabel"] = list[i].userLabel.in();
      }
      if (choice.hasNames) {
        found[name + "|nativeEMSName"] = list[i].nativeEMSName.in();
      }
    }
  }

  const Stay& stay_;
  Told& told_;
  emsSession::EmsSession_I_var session_;
  managedElementManager::ManagedElementMgr_I_var elements_;
  CosNotifyChannelAdmin::SequenceProxyPullSupplier_var puller_;
};

// The line is complete before the end, whichever it is.
[[noreturn]] void finish(const std::string& line, bool vanishes) {
  std::printf("%s\n", line.c_str());
  std::fflush(stdout);
  if (vanishes) {
    kill(getpid(), SIGKILL);
  }
  _exit(0);
}

void stay(const Stay& stay) {
  Told told;
  told.isSlow = stay.isSlow;
  Client client(stay, told);
  client.subscribe();
  client.takeEvents(Clock::now() + std::chrono::milliseconds(long(stay.seconds * 1000)));
  const Balance::Sum sum = client.catchUp();
  const std::string line = "sum " + std::to_string(told.events()) + ' ' +
                           std::to_string(sum.delivered) + ' ' + std::to_string(sum.due) + ' ' +
                           std::to_string(sum.lost) + ' ' + std::to_string(sum.unexplained) + ' ' +
                           std::to_string(sum.repeated) + ' ' + std::to_string(told.losses());
  if (!stay.vanishes) {
    client.logOut();
  }
  finish(line, stay.vanishes);
}

}  // namespace

int main(int argc, char** argv) {
  setenv("ORBmaxGIOPConnectionPerServer", "20", 1);
  Stay options;
  zk::options::Program program("reliability_soak_client", "One NMS of the soak",
                               {2, "", "Run with --help for more information."});
  program.add("--port", options.port, "The agent's").required();
  program.add("--seconds", options.seconds, "How long to stay");
  program.add("--delivery", options.delivery, "How events come")
      .oneOf({"push", "structured", "pull"});
  program.add("--filter", options.filter, "Which of the filters").range(0U, 3U);
  program.flag("--slow", options.isSlow, "Wait before taking each call's events");
  program.flag("--vanish", options.vanishes, "End without a word");
  if (const auto ending = program.parse(argc, argv)) {
    std::fputs((ending->output + ending->error).c_str(), stderr);
    return ending->status;
  }
  const ServingOrb orb;
  try {
    stay(options);
  } catch (const globaldefs::ProcessingFailureException& failure) {
    finish(std::string("refused ") + failure.errorReason.in(), false);
  } catch (const CORBA::Exception& failure) {
    finish(std::string("failed ") + failure._name(), false);
  }
}
