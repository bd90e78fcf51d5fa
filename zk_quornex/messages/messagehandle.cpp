#include "zk_quornex/messages/messagehandle.h"

#include <ace/Guard_T.h>

#include "zk_quornex/messages/traceorigin.h"
#include "zk_quornex/notify/exceptions.h"

namespace NS_QUORCORBA {

namespace {

constexpr mode_t LOCK_MODE = 0644;

void trace(const char* text, int line = __builtin_LINE()) {
  traceOrigin(line);
  NS_CORBA::TaDebug(3, text);
}

void traceClient(const char* format, long clientID, int line = __builtin_LINE()) {
  traceOrigin(line);
  NS_CORBA::TaDebugWithPara(3, format, shown(clientID));
}

}  // namespace

NXMessageHandle::NXMessageHandle()
    : lock_(USYNC_THREAD, nullptr, nullptr, LOCK_MODE), security_("SecurityIF") {}

int NXMessageHandle::subscribeMsg(long clientID, NXMessageFilter* filter,
                                  NXMsgExceptionHanle* handler) {
  auto client = std::make_unique<NXMessageCache>();
  client->setFilter(filter);
  client->setHandler(handler);

  ACE_Guard<ACE_Mutex> guard(lock_);
  auto& stored = clients_[clientID];
  if (stored) {
    stored->handOverTo(*client);
  }
  stored = std::move(client);
  return 0;
}

int NXMessageHandle::unSubscribeMsg(long clientID) {
  ACE_Guard<ACE_Mutex> guard(lock_);
  clients_.erase(clientID);
  return 0;
}

int NXMessageHandle::setReportStatus(long clientID, bool report) {
  ACE_Guard<ACE_Mutex> guard(lock_);
  trace("[NXMessageHandle::setReportStatus]enter.");
  findOrCreate(clientID, "[NXMessageHandle::setReportStatus]. clientID=%d").setReportStatus(report);
  trace("[NXMessageHandle::setReportStatus]exit.");
  return 0;
}

int NXMessageHandle::setFilter(long clientID, NXMessageFilter* filter) {
  ACE_Guard<ACE_Mutex> guard(lock_);
  trace("[NXMessageHandle::setFilter]enter.");
  findOrCreate(clientID, "[NXMessageHandle::setFilter]not found. clientID=%d").setFilter(filter);
  trace("[NXMessageHandle::setFilter]exit.");
  return 0;
}

int NXMessageHandle::setLayerFilter(long clientID, const NXLayerFilter& layers) {
  ACE_Guard<ACE_Mutex> guard(lock_);
  trace("[NXMessageHandle::setLayerFilter]enter.");
  findOrCreate(clientID, "[NXMessageHandle::setLayerFilter]. clientID=%d").mergeLayerFilter(layers);
  trace("[NXMessageHandle::setLayerFilter]exit.");
  return 0;
}

// Operators' log readers match the closing line as it is written here, with the
// other operation's name.
int NXMessageHandle::GetFilter(long clientID, std::vector<long>& first,
                               std::vector<std::string>& second, std::vector<long>& third,
                               std::vector<long>& fourth, stDateTimeType& start,
                               stDateTimeType& end, std::vector<std::string>& fifth) {
  ACE_Guard<ACE_Mutex> guard(lock_);
  trace("[NXMessageHandle::GetFilter]enter.");
  int result = 0;
  if (NXMessageCache* client = find(clientID)) {
    trace("[NXMessageCache::GetFilter]Enter.");
    if (NXMessageFilter* filter = client->filter()) {
      result = filter->GetFilter(first, second, third, fourth, start, end, fifth);
    }
    trace("[NXMessageCache::GetFilter]Exit.");
  } else {
    traceClient("[NXMessageHandle::GetFilter]. clientID=%d", clientID);
  }
  trace("[NXMessageHandle::setFilter]exit.");
  return result;
}

int NXMessageHandle::suspendFilter(long clientID, std::vector<long>& first,
                                   std::vector<long>& second, std::vector<long>& third,
                                   std::vector<long>& fourth, stDateTimeType& start,
                                   stDateTimeType& end, std::vector<std::string>& fifth) {
  ACE_Guard<ACE_Mutex> guard(lock_);
  trace("[NXMessageHandle::suspendFilter]enter.");
  int result = 0;
  if (NXMessageCache* client = find(clientID)) {
    trace("[NXMessageCache::suspendFilter]Enter.");
    if (NXMessageFilter* filter = client->filter()) {
      result = filter->suspendFilter(first, second, third, fourth, start, end, fifth);
    }
    trace("[NXMessageCache::suspendFilter]Exit.");
  } else {
    traceClient("[NXMessageHandle::suspendFilter]. clientID=%d", clientID);
  }
  trace("[NXMessageHandle::suspendFilter]exit.");
  return result;
}

// Opens its client's step with the suspend line and does not close it: log
// readers know it so.
int NXMessageHandle::resumeFilter(long clientID, std::vector<long>& first,
                                  std::vector<long>& second, std::vector<long>& third,
                                  std::vector<long>& fourth, stDateTimeType& start,
                                  stDateTimeType& end, std::vector<std::string>& fifth) {
  ACE_Guard<ACE_Mutex> guard(lock_);
  trace("[NXMessageHandle::resumeFilter]enter.");
  int result = 0;
  if (NXMessageCache* client = find(clientID)) {
    trace("[NXMessageCache::suspendFilter]Enter.");
    if (NXMessageFilter* filter = client->filter()) {
      result = filter->resumeFilter(first, second, third, fourth, start, end, fifth);
    }
  } else {
    traceClient("[NXMessageHandle::resumeFilter]. clientID=%d", clientID);
  }
  trace("[NXMessageHandle::resumeFilter]exit.");
  return result;
}

int NXMessageHandle::cancelFilter(long clientID, std::vector<long>& first,
                                  std::vector<long>& second, std::vector<long>& third,
                                  std::vector<long>& fourth, stDateTimeType& start,
                                  stDateTimeType& end, std::vector<std::string>& fifth) {
  ACE_Guard<ACE_Mutex> guard(lock_);
  trace("[NXMessageHandle::cancelFilter]enter.");
  int result = 0;
  if (NXMessageCache* client = find(clientID)) {
    if (NXMessageFilter* filter = client->filter()) {
      result = filter->cancelFilter(first, second, third, fourth, start, end, fifth);
    }
  } else {
    traceClient("[NXMessageHandle::cancelFilter]. clientID=%d", clientID);
  }
  trace("[NXMessageHandle::cancelFilter]exit.");
  return result;
}

// Locks and unlocks by hand, so that the lock stays held when there is no
// validity service: better no client served than one served unchecked.
int NXMessageHandle::pushMessage(NXEventHolder* event, const void* context) {
  lock_.acquire();
  removeInvalid();
  for (const auto& [clientID, client] : clients_) {
    client->offer(event, context);
  }
  lock_.release();
  return 0;
}

int NXMessageHandle::getMsgList(long clientID, notifications::EventList_T*& list) {
  ACE_Guard<ACE_Mutex> guard(lock_);
  NXMessageCache* client = find(clientID);
  return client != nullptr ? client->getMsgList(list) : 0;
}

std::shared_ptr<NXListSignal> NXMessageHandle::listSignal(long clientID) {
  ACE_Guard<ACE_Mutex> guard(lock_);
  NXMessageCache* client = find(clientID);
  return client != nullptr ? client->listSignal() : nullptr;
}

NXMessageCache* NXMessageHandle::find(long clientID) const {
  const auto found = clients_.find(clientID);
  return found != clients_.end() ? found->second.get() : nullptr;
}

NXMessageCache& NXMessageHandle::findOrCreate(long clientID, const char* tracedIfUnknown) {
  if (NXMessageCache* client = find(clientID)) {
    return *client;
  }
  traceClient(tracedIfUnknown, clientID);
  return *(clients_[clientID] = std::make_unique<NXMessageCache>());
}

// Asks for every client on every push, before any delivery.
void NXMessageHandle::removeInvalid() {
  for (auto next = clients_.begin(); next != clients_.end();) {
    NS_SECURITY_SERVICE1::SecurityIF* security = security_.Get();
    if (security == nullptr) {
      throwInterfaceNotExist();
    }
    const long clientID = next->first;
    next = security->IsClientValid(clientID, clientID, "", "", "") ? std::next(next)
                                                                   : clients_.erase(next);
  }
}

}  // namespace NS_QUORCORBA
