// One message class: its clients, and the distribution of events to them.
#ifndef ZK_MESSAGES_MESSAGEHANDLE_H
#define ZK_MESSAGES_MESSAGEHANDLE_H

#include <functional>
#include <map>
#include <memory>

#include "zk_quornex/messages/messagecache.h"
#include "zk_quornex/platform/services.h"

namespace NS_QUORCORBA {

// Safe on any thread: every operation holds the class lock for its whole run,
// except that subscribeMsg starts the new client before it takes the lock. All
// return 0 unless said otherwise. A client is created on the spot, with
// reporting off, by setReportStatus, setFilter and setLayerFilter. What creates
// a client throws std::bad_alloc when there is no memory for it or its list:
// the clients are then as they were, and nothing is adopted.
class NXMessageHandle {
 public:
  NXMessageHandle();
  NXMessageHandle(const NXMessageHandle&) = delete;
  NXMessageHandle& operator=(const NXMessageHandle&) = delete;

  // Adopts filter and handler. A client already there is destroyed with its
  // events; reporting is off again.
  int subscribeMsg(long clientID, NXMessageFilter* filter, NXMsgExceptionHanle* handler);
  int unSubscribeMsg(long clientID);
  int setReportStatus(long clientID, bool report);

  // Adopts filter; null removes the client's filter.
  int setFilter(long clientID, NXMessageFilter* filter);
  // Sets the given entries and keeps the others.
  int setLayerFilter(long clientID, const NXLayerFilter& layers);

  // These pass on to the client's filter and return its result; without a
  // filter or a client they leave the arguments as they are.
  template <class... Criteria>
  int GetFilter(long clientID, Criteria&... criteria) {
    return passOn(clientID, GET, &NXMessageFilter::GetFilter, criteria...);
  }
  template <class... Criteria>
  int suspendFilter(long clientID, Criteria&... criteria) {
    return passOn(clientID, SUSPEND, &NXMessageFilter::suspendFilter, criteria...);
  }
  template <class... Criteria>
  int resumeFilter(long clientID, Criteria&... criteria) {
    return passOn(clientID, RESUME, &NXMessageFilter::resumeFilter, criteria...);
  }
  template <class... Criteria>
  int cancelFilter(long clientID, Criteria&... criteria) {
    return passOn(clientID, CANCEL, &NXMessageFilter::cancelFilter, criteria...);
  }

  // Destroys the clients that the validity service no longer knows, then offers
  // the event to every other. Throws InterfaceNotExistException when there is
  // no validity service; the class lock then stays held, and every later
  // operation on the class blocks: without the service nobody may be served. So
  // it does when the service or a filter throws.
  int pushMessage(NXEventHolder* event, const void* context);

  // Gives the client's list to the caller, who frees it; list is untouched for
  // an unknown client. Throws std::bad_alloc when there is no memory for the next
  // list: the client then keeps this one.
  int getMsgList(long clientID, notifications::EventList_T*& list);

  // What to wait by for the client's list to hold events; null for an unknown
  // client.
  std::shared_ptr<NXListSignal> listSignal(long clientID);

 private:
  using Clients = std::map<long, std::unique_ptr<NXMessageCache>>;

  // The trace lines around an operation of a filter; null where there is none.
  struct FilterLines {
    const char* enter;
    const char* enterClient;
    const char* exitClient;
    const char* unknownClient;
    const char* exit;
  };
  static const FilterLines GET;
  static const FilterLines SUSPEND;
  static const FilterLines RESUME;
  static const FilterLines CANCEL;

  template <class Operation, class... Criteria>
  int passOn(long clientID, const FilterLines& lines, Operation operation, Criteria&... criteria) {
    return onFilter(clientID, lines,
                    [&](NXMessageFilter& filter) { return (filter.*operation)(criteria...); });
  }
  int onFilter(long clientID, const FilterLines& lines,
               const std::function<int(NXMessageFilter&)>& operation);

  NXMessageCache* find(long clientID) const ZK_REQUIRES(lock_);
  NXMessageCache& findOrCreate(long clientID, const char* tracedIfUnknown) ZK_REQUIRES(lock_);
  void removeInvalid() ZK_REQUIRES(lock_);

  NXLock lock_;
  Clients clients_ ZK_GUARDED_BY(lock_);
  NS_BUNDLEMGR1::CheckIFBuf<NS_SECURITY_SERVICE1::SecurityIF> security_ ZK_GUARDED_BY(lock_);
};

}  // namespace NS_QUORCORBA

#endif
