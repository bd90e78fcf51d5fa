// The entry to the event cache: message classes, their clients, and the events
// pushed to them.
#ifndef ZK_MESSAGES_MESSAGEMGR_H
#define ZK_MESSAGES_MESSAGEMGR_H

#include <atomic>
#include <list>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "zk_quornex/idl/events.h"
#include "zk_quornex/messages/filter.h"
#include "zk_quornex/messages/listsignal.h"
#include "zk_quornex/messages/refcount.h"

// The producer's own fault record; passed on to filters, never looked into.
struct AsnForwardFaultRptStrc;

// Passed on to filters, never looked into: users of this header need not have
// jsoncpp.
namespace Json {
class Value;
}

namespace NS_QUORCORBA {

// Any thread may call any operation. All return 0, or -1 when the message class
// is not registered (with a failure line at level 1 and nothing changed: what
// was to be adopted stays the caller's), unless said otherwise. What an
// operation of one class throws passes through after the registry lock is
// released. An operation that makes a client or fetches a list throws
// std::bad_alloc when there is no memory for a list of the configured size: the
// clients and their events are then as they were, and nothing is adopted.
//
// Events are offered in holders. The caller keeps its own reference; each client
// that takes the event adds one.
class __attribute__((visibility("default"))) NXMessageMgr {
 public:
  using Event = NXRefCountType<CosNotification::StructuredEvent>;

  // Made on first use, with the classes 8 and 10 registered. Null only when the
  // process-wide lock fails.
  static NXMessageMgr* Instance();
  static NXMessageMgr* getInstance();

  // Deletes the manager alone: the classes, their clients and the clients'
  // threads stay, and the next Instance() finds them again.
  static void Destroy();

  // Always 0; a class already registered is left as it is.
  int addMsgClassCache(long msgClass) const;

  // Adopts filter (may be null) and handler (may be null). A client that is
  // already there starts afresh, with reporting off and no events.
  int subscribeMsg(long msgClass, long clientID, NXMessageFilter* filter,
                   NXMsgExceptionHanle* handler) const;

  // Waits for the client's thread to end. 0 also for an unknown client.
  int unSubscribeMsg(long msgClass, long clientID) const;

  // Adopts filter; null removes the client's filter. An unknown client is
  // created.
  int setFilter(long msgClass, long clientID, NXMessageFilter* filter) const;

  // Sets the given entries and keeps the others. An unknown client is created.
  int setLayerFilter(long msgClass, long clientID,
                     const std::map<std::pair<long, long>, bool>& layers);

  // These four pass on to the client's filter and return its result; without a
  // filter or a client they return 0 and leave the arguments as they are.
  int GetFilter(long msgClass, long clientID, std::vector<long>&, std::vector<std::string>&,
                std::vector<long>&, std::vector<long>&, NS_QUORCORBA::stDateTimeType& start,
                NS_QUORCORBA::stDateTimeType& end, std::vector<std::string>&);
  int suspendFilter(long msgClass, long clientID, std::vector<long>&, std::vector<long>&,
                    std::vector<long>&, std::vector<long>&, NS_QUORCORBA::stDateTimeType& start,
                    NS_QUORCORBA::stDateTimeType& end, std::vector<std::string>&);
  int resumeFilter(long msgClass, long clientID, std::vector<long>&, std::vector<long>&,
                   std::vector<long>&, std::vector<long>&, NS_QUORCORBA::stDateTimeType& start,
                   NS_QUORCORBA::stDateTimeType& end, std::vector<std::string>&);
  int cancelFilter(long msgClass, long clientID, std::vector<long>&, std::vector<long>&,
                   std::vector<long>&, std::vector<long>&, NS_QUORCORBA::stDateTimeType& start,
                   NS_QUORCORBA::stDateTimeType& end, std::vector<std::string>&);

  // Whether events are kept for the client. What is pushed while they are not
  // is lost to it. An unknown client is created.
  int setReportStatus(long msgClass, long clientID, bool report);

  // Offers one event to every valid client. -1 for a null event; 0 without
  // doing anything unless the notify model is 2 or 3. context goes to the
  // filters. Throws InterfaceNotExistException when the validity service is
  // missing and the class has clients; the class is then blocked for good, and
  // whoever waits for it keeps new classes from being registered.
  int pushMessage(long msgClass, Event* event, const void* context) const;

  // Offer many events, in order, each with its own context. For callers that
  // have already decided that the cache is in use: neither the notify model nor
  // the events are looked at. Throw as pushMessage does, with what came before
  // delivered.
  int pushBulkMessage(long msgClass,
                      const std::list<std::pair<Event*, AsnForwardFaultRptStrc*>>& events) const;
  int PushBulkMessage(const long& msgClass,
                      const std::list<std::pair<Event*, Json::Value*>>& events);

  // Gives all events kept since the last call, oldest first, as a list that the
  // caller frees. For an unknown client list is untouched: set it to null first.
  int getMsgList(long msgClass, long clientID, notifications::EventList_T*& list) const;

  // What to wait by for getMsgList to have events. It tells of the client as it
  // is subscribed now: when it says that this one is over, another may be there
  // under the same id. Null, without a failure line, for an unknown class or
  // client.
  std::shared_ptr<NXListSignal> listSignal(long msgClass, long clientID) const;

 private:
  __attribute__((visibility("hidden"))) NXMessageMgr();
  ~NXMessageMgr() = default;

  __attribute__((visibility("hidden"))) static std::atomic<NXMessageMgr*> m_pInstance;
};

}  // namespace NS_QUORCORBA

#endif
