// One message class: its clients, and the distribution of events to them.
#ifndef ZK_MESSAGES_MESSAGEHANDLE_H
#define ZK_MESSAGES_MESSAGEHANDLE_H

#include <ace/Mutex.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "zk_quornex/messages/messagecache.h"
#include "zk_quornex/platform/services.h"

namespace NS_QUORCORBA {

// Safe on any thread: every operation holds the class lock for its whole run,
// except that subscribeMsg starts the new client before it takes the lock. All
// return 0 unless said otherwise. A client is created on the spot, with
// reporting off, by setReportStatus, setFilter and setLayerFilter.
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
  int GetFilter(long clientID, std::vector<long>&, std::vector<std::string>&, std::vector<long>&,
                std::vector<long>&, stDateTimeType& start, stDateTimeType& end,
                std::vector<std::string>&);
  int suspendFilter(long clientID, std::vector<long>&, std::vector<long>&, std::vector<long>&,
                    std::vector<long>&, stDateTimeType& start, stDateTimeType& end,
                    std::vector<std::string>&);
  int resumeFilter(long clientID, std::vector<long>&, std::vector<long>&, std::vector<long>&,
                   std::vector<long>&, stDateTimeType& start, stDateTimeType& end,
                   std::vector<std::string>&);
  int cancelFilter(long clientID, std::vector<long>&, std::vector<long>&, std::vector<long>&,
                   std::vector<long>&, stDateTimeType& start, stDateTimeType& end,
                   std::vector<std::string>&);

  // Destroys the clients that the validity service no longer knows, then offers
  // the event to every other. Throws InterfaceNotExistException when there is
  // no validity service; the class lock then stays held, and every later
  // operation on the class blocks: without the service nobody may be served. So
  // it does when the service or a filter throws.
  int pushMessage(NXEventHolder* event, const void* context);

  // Gives the client's list to the caller, who frees it; list is untouched for
  // an unknown client.
  int getMsgList(long clientID, notifications::EventList_T*& list);

  // What to wait by for the client's list to hold events; null for an unknown
  // client.
  std::shared_ptr<NXListSignal> listSignal(long clientID);

 private:
  using Clients = std::map<long, std::unique_ptr<NXMessageCache>>;

  // These need the class lock.
  NXMessageCache* find(long clientID) const;
  NXMessageCache& findOrCreate(long clientID, const char* tracedIfUnknown);
  void removeInvalid();

  ACE_Mutex lock_;
  Clients clients_;                                                       // guarded by lock_
  NS_BUNDLEMGR1::CheckIFBuf<NS_SECURITY_SERVICE1::SecurityIF> security_;  // guarded by lock_
};

}  // namespace NS_QUORCORBA

#endif
