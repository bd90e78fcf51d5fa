// An agent made of servants in this process, serving a small made-up network.
#ifndef ZK_TESTS_NMS_SUPPORT_FAKEAGENT_H
#define ZK_TESTS_NMS_SUPPORT_FAKEAGENT_H

#include <atomic>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

#include "tests/nms/support/fakechannel.h"
#include "tests/nms/support/orb.h"
#include "zk_quornex/idl/events.h"
#include "zk_quornex/idl/names.h"
#include "zk_quornex/idl/sessions.h"

namespace zk::test {

struct FakeAlarm {
  unsigned element;
  std::string cause;
  notifications::PerceivedSeverity_T severity;
  std::string text;
};

// What the agent serves, and what tests hang into it. Set up before the agent
// is called; counted on its threads.
struct FakeNetwork {
  // A test may change these while clients are served.
  std::atomic<unsigned> elements{0};  // ids 1, 2, …
  std::atomic<unsigned> subnetworks{0};
  std::atomic<unsigned> links{0};
  std::atomic<unsigned> nodes{0};  // and as many submaps and display links; 0: no map manager
  std::string elementLabel = "label";
  std::vector<FakeAlarm> alarms;  // active ones; locked while it is read
  FakeEvents events;
  std::function<void()> onLogin = [] {};
  std::function<void()> onGetEms = [] {};
  std::function<void()> onGetElement = [] {};
  std::function<void()> onNext = [] {};

  std::atomic<int> logins{0};
  std::atomic<int> pingsAnswered{0};
  std::atomic<int> sessionsEnded{0};
  std::atomic<int> iteratorsMade{0};
  std::atomic<int> iteratorsDestroyed{0};

  void noteName(const globaldefs::NVSList_T& name);
  std::string lastName();  // "EMS:Quor/1 ManagedElement:7"

  void noteChange(const std::string& change);
  std::vector<std::string> changes();  // "ManagedElement setOwner 'ops'"

  void setClient(nmsSession::NmsSession_I_ptr client);
  nmsSession::NmsSession_I_var client();  // who logged in last

  // Called before a client is started and when it logs in: what was set up before
  // is seen by whoever serves it.
  void handOver() const { const std::lock_guard<std::mutex> guard(mutex_); }

  // Held while the alarms are read, and by who changes them meanwhile.
  class Locked {
   public:
    explicit Locked(FakeNetwork& network) : guard_(network.alarmsMutex_) {}

   private:
    const std::lock_guard<std::mutex> guard_;
  };

 private:
  mutable std::mutex mutex_;
  std::mutex alarmsMutex_;
  std::string lastName_;
  std::vector<std::string> changes_;
  nmsSession::NmsSession_I_var client_;
};

// Accepts the user "admin" with the password "secret". The network must
// outlive it.
class FakeAgent {
 public:
  explicit FakeAgent(FakeNetwork& network);
  ~FakeAgent();
  FakeAgent(const FakeAgent&) = delete;
  FakeAgent& operator=(const FakeAgent&) = delete;

  std::string reference() const;
  std::string referenceOfSomethingElse() const;  // of a manager

 private:
  PortableServer::POA_var poa_;
  FakeNetwork& network_;
};

// An iterator over count entries; make(i) gives number i.
template <class Skeleton, class List, class ListOut, class Make>
class FakeIterator : public Skeleton {
 public:
  FakeIterator(PortableServer::POA_ptr poa, FakeNetwork& network, unsigned from, unsigned count,
               Make make)
      : poa_(PortableServer::POA::_duplicate(poa)),
        network_(network),
        next_(from),
        end_(count + 1),
        make_(make) {}

  CORBA::Boolean next_n(CORBA::ULong howMany, ListOut list) override {
    network_.onNext();
    list = take(howMany)._retn();
    return next_ < end_;
  }

  CORBA::ULong getLength() override { return end_ - next_; }

  void destroy() override {
    ++network_.iteratorsDestroyed;
    PortableServer::ObjectId_var id = poa_->servant_to_id(this);
    poa_->deactivate_object(id.in());
  }

  typename List::_var_type take(CORBA::ULong howMany) {
    typename List::_var_type result = new List;
    while (next_ < end_ && result->length() < howMany) {
      added(result.inout()) = make_(next_++);
    }
    return result;
  }

 private:
  PortableServer::POA_var poa_;
  FakeNetwork& network_;
  unsigned next_;
  const unsigned end_;
  const Make make_;
};

// An agent that writes its reference to this file, answers the first page of
// elements, and is gone when asked for the second.
int runDyingAgent(const char* referenceFile);

// An agent that writes its reference to this file and gives every consumer two
// events, 1 and 2.
int runEventsAgent(const char* referenceFile);

}  // namespace zk::test

#endif
