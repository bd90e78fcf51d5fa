#include "zk_quornex/messages/messagemgr.h"

#include <ace/Guard_T.h>
#include <ace/RW_Mutex.h>
#include <ace/Recursive_Thread_Mutex.h>
#include <ace/Static_Object_Lock.h>
#include <ace/Thread_Manager.h>

#include <memory>

#include "zk_quornex/messages/messagehandle.h"
#include "zk_quornex/messages/traceorigin.h"
#include "zk_quornex/platform/config.h"

namespace NS_QUORCORBA {

namespace {

using Numbers = std::vector<long>;
using Texts = std::vector<std::string>;
using StaticLock = ACE_Guard<ACE_Recursive_Thread_Mutex>;

// An ACE_RW_Mutex that clang can follow; read and write guards may fail to lock it.
class ZK_CAPABILITY("mutex") RegistryLock : public ACE_RW_Mutex {};

class ZK_SCOPED_CAPABILITY ReadGuard {
 public:
  explicit ReadGuard(RegistryLock& lock) ZK_ACQUIRE_SHARED(lock) : guard_(lock) {}
  ~ReadGuard() ZK_RELEASE() {}

 private:
  ACE_Read_Guard<ACE_RW_Mutex> guard_;
};

class ZK_SCOPED_CAPABILITY WriteGuard {
 public:
  explicit WriteGuard(RegistryLock& lock) ZK_ACQUIRE(lock) : guard_(lock) {}
  ~WriteGuard() ZK_RELEASE() {}

 private:
  ACE_Write_Guard<ACE_RW_Mutex> guard_;
};

// The registered classes, for the life of the process: never destroyed, since
// clients' threads and late pushes may outlive the end of main. A guard that
// could not lock is not noticed: the lookup then goes on without the lock.
struct Registry {
  // ACE sets up what its threads need on first use, under the process-wide lock:
  // the thread manager, and with the first thread ACE_Thread_Exit. Clients' threads
  // are started under the registry lock, which Instance takes after the other; so
  // a thread without work has all that set up before either is needed.
  // ACE_Thread_Exit cannot be asked for here: it ends the thread that it was made
  // in, when the process ends.
  Registry() {
    ACE_Thread_Manager* threads = ACE_Thread_Manager::instance();
    const int group = threads->spawn(&nothing, nullptr, THR_NEW_LWP | THR_JOINABLE);
    if (group != -1) {
      threads->wait_grp(group);
    }
  }

  static ACE_THR_FUNC_RETURN nothing(void*) { return {}; }

  RegistryLock lock;
  std::map<long, std::unique_ptr<NXMessageHandle>> classes ZK_GUARDED_BY(lock);
};

Registry& registry() {
  static auto& theRegistry = *new Registry;
  return theRegistry;
}

// Carries out the operation on the class under the registry lock. Without such
// a class, fail writes the failure line.
template <class Operation, class Failure>
int onClass(long msgClass, Operation operation, Failure fail) {
  Registry& all = registry();
  const ReadGuard guard(all.lock);
  const auto found = all.classes.find(msgClass);
  if (found == all.classes.end()) {
    fail();
    return -1;
  }
  return operation(*found->second);
}

template <class Operation>
int onClient(long msgClass, long clientID, const char* failure, Operation operation,
             int line = __builtin_LINE()) {
  return onClass(msgClass, operation, [&] {
    traceOrigin(line);
    NS_CORBA::TaDebugWithPara(1, failure, shown(msgClass), shown(clientID));
  });
}

template <class Operation>
int onPush(long msgClass, Operation operation, int line = __builtin_LINE()) {
  return onClass(msgClass, operation, [&] {
    traceOrigin(line);
    NS_CORBA::TaDebugWithPara(1, "NXMessageMgr::pushMessage failed.msgClass=%d", shown(msgClass));
  });
}

template <class Events>
int pushAll(long msgClass, const Events& events) {
  return onPush(msgClass, [&](NXMessageHandle& handle) {
    int sum = 0;
    for (const auto& [event, context] : events) {
      sum += handle.pushMessage(event, context);
    }
    return sum;
  });
}

bool usesCache() {
  const int model = CorbaAgentConfig::Instance()->GetNotifyModel();
  return model == 2 || model == 3;
}

}  // namespace

std::atomic<NXMessageMgr*> NXMessageMgr::m_pInstance{nullptr};

NXMessageMgr::NXMessageMgr() {
  addMsgClassCache(8);
  addMsgClassCache(10);
}

NXMessageMgr* NXMessageMgr::Instance() {
  if (NXMessageMgr* manager = m_pInstance.load(std::memory_order_acquire)) {
    return manager;
  }
  registry();  // needs the process-wide lock on a thread of its own
  StaticLock guard(*ACE_Static_Object_Lock::instance());
  if (guard.locked() && m_pInstance.load(std::memory_order_relaxed) == nullptr) {
    m_pInstance.store(new NXMessageMgr, std::memory_order_release);
  }
  return m_pInstance.load(std::memory_order_relaxed);
}

NXMessageMgr* NXMessageMgr::getInstance() { return Instance(); }

void NXMessageMgr::Destroy() {
  if (m_pInstance.load(std::memory_order_acquire) == nullptr) {
    return;
  }
  StaticLock guard(*ACE_Static_Object_Lock::instance());
  if (guard.locked()) {
    delete m_pInstance.exchange(nullptr, std::memory_order_acq_rel);
  }
}

int NXMessageMgr::addMsgClassCache(long msgClass) const {
  Registry& all = registry();
  const WriteGuard guard(all.lock);
  if (all.classes.count(msgClass) == 0) {
    // Deliberately written whenever a class is new, though nothing has failed.
    traceOrigin();
    NS_CORBA::TaDebugWithPara(1, "NXMessageMgr::addMsgClassCache failed.msgClass=%d",
                              shown(msgClass));
    all.classes.emplace(msgClass, std::make_unique<NXMessageHandle>());
  }
  return 0;
}

int NXMessageMgr::subscribeMsg(long msgClass, long clientID, NXMessageFilter* filter,
                               NXMsgExceptionHanle* handler) const {
  return onClient(
      msgClass, clientID, "NXMessageMgr::subscribeMsg failed.msgClass=%d,clientID=%d",
      [&](NXMessageHandle& handle) { return handle.subscribeMsg(clientID, filter, handler); });
}

int NXMessageMgr::unSubscribeMsg(long msgClass, long clientID) const {
  return onClient(msgClass, clientID, "NXMessageMgr::unSubscribeMsg failed.msgClass=%d,clientID=%d",
                  [&](NXMessageHandle& handle) { return handle.unSubscribeMsg(clientID); });
}

int NXMessageMgr::setFilter(long msgClass, long clientID, NXMessageFilter* filter) const {
  return onClient(msgClass, clientID, "NXMessageMgr::setFilter failed.msgClass=%d,clientID=%d",
                  [&](NXMessageHandle& handle) { return handle.setFilter(clientID, filter); });
}

int NXMessageMgr::setLayerFilter(long msgClass, long clientID,
                                 const std::map<std::pair<long, long>, bool>& layers) {
  return onClient(msgClass, clientID, "NXMessageMgr::setLayerFilter failed.msgClass=%d,clientID=%d",
                  [&](NXMessageHandle& handle) { return handle.setLayerFilter(clientID, layers); });
}

int NXMessageMgr::GetFilter(long msgClass, long clientID, Numbers& first, Texts& second,
                            Numbers& third, Numbers& fourth, stDateTimeType& start,
                            stDateTimeType& end, Texts& fifth) {
  return onClient(msgClass, clientID, "NXMessageMgr::GetFilter failed.msgClass=%d,clientID=%d",
                  [&](NXMessageHandle& handle) {
                    return handle.GetFilter(clientID, first, second, third, fourth, start, end,
                                            fifth);
                  });
}

int NXMessageMgr::suspendFilter(long msgClass, long clientID, Numbers& first, Numbers& second,
                                Numbers& third, Numbers& fourth, stDateTimeType& start,
                                stDateTimeType& end, Texts& fifth) {
  return onClient(msgClass, clientID, "NXMessageMgr::suspendFilter failed.msgClass=%d,clientID=%d",
                  [&](NXMessageHandle& handle) {
                    return handle.suspendFilter(clientID, first, second, third, fourth, start, end,
                                                fifth);
                  });
}

int NXMessageMgr::resumeFilter(long msgClass, long clientID, Numbers& first, Numbers& second,
                               Numbers& third, Numbers& fourth, stDateTimeType& start,
                               stDateTimeType& end, Texts& fifth) {
  return onClient(msgClass, clientID, "NXMessageMgr::resumeFilter failed.msgClass=%d,clientID=%d",
                  [&](NXMessageHandle& handle) {
                    return handle.resumeFilter(clientID, first, second, third, fourth, start, end,
                                               fifth);
                  });
}

int NXMessageMgr::cancelFilter(long msgClass, long clientID, Numbers& first, Numbers& second,
                               Numbers& third, Numbers& fourth, stDateTimeType& start,
                               stDateTimeType& end, Texts& fifth) {
  return onClient(msgClass, clientID, "NXMessageMgr::cancelFilter failed.msgClass=%d,clientID=%d",
                  [&](NXMessageHandle& handle) {
                    return handle.cancelFilter(clientID, first, second, third, fourth, start, end,
                                               fifth);
                  });
}

int NXMessageMgr::setReportStatus(long msgClass, long clientID, bool report) {
  traceOrigin();
  NS_CORBA::TaTrace("NXMessageMgr::setReportStatus in");
  return onClient(
      msgClass, clientID, "NXMessageMgr::setReportStatus failed.msgClass=%d,clientID=%d",
      [&](NXMessageHandle& handle) { return handle.setReportStatus(clientID, report); });
}

int NXMessageMgr::pushMessage(long msgClass, Event* event, const void* context) const {
  if (event == nullptr) {
    return -1;
  }
  if (!usesCache()) {
    return 0;
  }
  return onPush(msgClass,
                [&](NXMessageHandle& handle) { return handle.pushMessage(event, context); });
}

int NXMessageMgr::pushBulkMessage(
    long msgClass, const std::list<std::pair<Event*, AsnForwardFaultRptStrc*>>& events) const {
  return pushAll(msgClass, events);
}

int NXMessageMgr::PushBulkMessage(const long& msgClass,
                                  const std::list<std::pair<Event*, Json::Value*>>& events) {
  return pushAll(msgClass, events);
}

int NXMessageMgr::getMsgList(long msgClass, long clientID,
                             notifications::EventList_T*& list) const {
  return onClient(msgClass, clientID, "NXMessageMgr::getMsgList failed.msgClass=%d,clientID=%d",
                  [&](NXMessageHandle& handle) { return handle.getMsgList(clientID, list); });
}

std::shared_ptr<NXListSignal> NXMessageMgr::listSignal(long msgClass, long clientID) const {
  std::shared_ptr<NXListSignal> signal;
  const auto find = [&](NXMessageHandle& handle) {
    signal = handle.listSignal(clientID);
    return 0;
  };
  onClass(msgClass, find, [] {});
  return signal;
}

}  // namespace NS_QUORCORBA
