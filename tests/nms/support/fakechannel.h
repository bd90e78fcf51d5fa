// An event channel of a fake agent: push and pull, structured and sequence.
#ifndef ZK_TESTS_NMS_SUPPORT_FAKECHANNEL_H
#define ZK_TESTS_NMS_SUPPORT_FAKECHANNEL_H

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "tests/nms/support/orb.h"
#include "zk_quornex/idl/channel.h"
#include "zk_quornex/idl/events.h"

namespace zk::test {

class FakeProxy;

// Its consumers, and what they asked for. Locks internally.
class FakeEvents {
 public:
  // Called with every connected consumer, on the thread that connects it.
  std::function<void()> onConnected = [] {};

  // Brings the event to those whose types and constraints it meets; keeps it for
  // those that fetch. Of constraints, the fake knows $type_name == 'X' only.
  void raise(const CosNotification::StructuredEvent& event);
  void raise(const std::vector<CosNotification::StructuredEvent>& events);  // in one batch

  // As for a consumer that the channel gives up.
  void disconnectAll();

  int connected() const;
  int everConnected() const;

  // What was told, in order: "push sequence", "type +tmf_mtnm/NT_ALARM -*/%ALL",
  // "filter EXTENDED_TCL $a == 1", …
  std::vector<std::string> told() const;

  // Of the servants.
  void note(const std::string& what);
  void add(std::shared_ptr<FakeProxy> proxy);

 private:
  std::vector<std::shared_ptr<FakeProxy>> proxies() const;

  mutable std::mutex mutex_;
  std::vector<std::shared_ptr<FakeProxy>> proxies_;
  std::vector<std::string> told_;
};

// events must outlive poa.
CosNotifyChannelAdmin::EventChannel_ptr makeFakeChannel(PortableServer::POA_ptr poa,
                                                        FakeEvents& events);

// An event with a text property for each pair, in domain tmf_mtnm.
CosNotification::StructuredEvent fakeEvent(
    const std::string& type, const std::vector<std::pair<std::string, std::string>>& texts);

void addProperty(CosNotification::StructuredEvent& event, const char* name,
                 const CORBA::Any& value);

// NT_ALARM of the managed element with this id.
CosNotification::StructuredEvent fakeAlarm(unsigned element, const std::string& cause,
                                           notifications::PerceivedSeverity_T severity,
                                           const std::string& text = "");

}  // namespace zk::test

#endif
