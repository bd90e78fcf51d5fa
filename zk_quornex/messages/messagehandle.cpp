#include "zk_quornex/messages/messagehandle.h"

#include "zk_quornex/messages/traceorigin.h"
#include "zk_quornex/notify/missingservice.h"

namespace NS_QUORCORBA {

namespace {

// Without a text, nothing.
void trace(const char* text, int line = __builtin_LINE()) {
  if (text != nullptr) {
    traceOrigin(line);
    NS_CORBA::TaDebug(3, text);
  }
}

void traceClient(const char* format, long clientID, int line = __builtin_LINE()) {
  traceOrigin(line);
  NS_CORBA::TaDebugWithPara(3, format, shown(clientID));
}

}  // namespace

// Not every operation closes what it opens, and two lines bear another
// operation's name: so the lines are, deliberately.
const NXMessageHandle::FilterLines NXMessageHandle::GET = {
    "[NXMessageHandle::GetFilter]enter.", "[NXMessageCache::GetFilter]Enter.",
    "[NXMessageCache::GetFilter]Exit.", "[NXMessageHandle::GetFilter]. clientID=%d",
    "[NXMessageHandle::setFilter]exit."};
const NXMessageHandle::FilterLines NXMessageHandle::SUSPEND = {
    "[NXMessageHandle::suspendFilter]enter.", "[NXMessageCache::suspendFilter]Enter.",
    "[NXMessageCache::suspendFilter]Exit.", "[NXMessageHandle::suspendFilter]. clientID=%d",
    "[NXMessageHandle::suspendFilter]exit."};
const NXMessageHandle::FilterLines NXMessageHandle::RESUME = {
    "[NXMessageHandle::resumeFilter]enter.", "[NXMessageCache::suspendFilter]Enter.", nullptr,
    "[NXMessageHandle::resumeFilter]. clientID=%d", "[NXMessageHandle::resumeFilter]exit."};
const NXMessageHandle::FilterLines NXMessageHandle::CANCEL = {
    "[NXMessageHandle::cancelFilter]enter.", nullptr, nullptr,
    "[NXMessageHandle::cancelFilter]. clientID=%d", "[NXMessageHandle::cancelFilter]exit."};

NXMessageHandle::NXMessageHandle() : security_("SecurityIF") {}

int NXMessageHandle::subscribeMsg(long clientID, NXMessageFilter* filter,
                                  NXMsgExceptionHanle* handler) {
  auto client = std::make_unique<NXMessageCache>();

  const NXGuard guard(lock_);
  auto& stored = clients_[clientID];
  client->setFilter(filter);
  client->setHandler(handler);
  if (stored) {
    stored->handOverTo(*client);
  }
  stored = std::move(client);
  return 0;
}

int NXMessageHandle::unSubscribeMsg(long clientID) {
  const NXGuard guard(lock_);
  clients_.erase(clientID);
  return 0;
}

int NXMessageHandle::setReportStatus(long clientID, bool report) {
  const NXGuard guard(lock_);
  trace("[NXMessageHandle::setReportStatus]enter.");
  findOrCreate(clientID, "[NXMessageHandle::setReportStatus]. clientID=%d").setReportStatus(report);
  trace("[NXMessageHandle::setReportStatus]exit.");
  return 0;
}

int NXMessageHandle::setFilter(long clientID, NXMessageFilter* filter) {
  const NXGuard guard(lock_);
  trace("[NXMessageHandle::setFilter]enter.");
  findOrCreate(clientID, "[NXMessageHandle::setFilter]not found. clientID=%d").setFilter(filter);
  trace("[NXMessageHandle::setFilter]exit.");
  return 0;
}

int NXMessageHandle::setLayerFilter(long clientID, const NXLayerFilter& layers) {
  const NXGuard guard(lock_);
  trace("[NXMessageHandle::setLayerFilter]enter.");
  findOrCreate(clientID, "[NXMessageHandle::setLayerFilter]. clientID=%d").mergeLayerFilter(layers);
  trace("[NXMessageHandle::setLayerFilter]exit.");
  return 0;
}

int NXMessageHandle::onFilter(long clientID, const FilterLines& lines,
                              const std::function<int(NXMessageFilter&)>& operation) {
  const NXGuard guard(lock_);
  trace(lines.enter);
  int result = 0;
  if (NXMessageCache* client = find(clientID)) {
    trace(lines.enterClient);
    if (NXMessageFilter* filter = client->filter()) {
      result = operation(*filter);
    }
    trace(lines.exitClient);
  } else {
    traceClient(lines.unknownClient, clientID);
  }
  trace(lines.exit);
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
  const NXGuard guard(lock_);
  NXMessageCache* client = find(clientID);
  return client != nullptr ? client->getMsgList(list) : 0;
}

std::shared_ptr<NXListSignal> NXMessageHandle::listSignal(long clientID) {
  const NXGuard guard(lock_);
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
