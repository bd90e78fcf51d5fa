// A process that uses the shared library with a platform of its own: one check
// for each way across the library's border. Exit status 0 when all hold.
#include <chrono>
#include <cstdio>
#include <memory>
#include <string>
#include <thread>

#include "tests/build/consumer/platform.h"
#include "zk_quornex/messages/messagecach.h"
#include "zk_quornex/mo/commonfunc.h"
#include "zk_quornex/mo/moadapter.h"
#include "zk_quornex/names/nameconvert.h"
#include "zk_quornex/names/namevalidate.h"
#include "zk_quornex/notify/exceptions.h"
#include "zk_quornex/notify/notification.h"

namespace {

using namespace NS_QUORCORBA;

int failures = 0;

void check(bool holds, const char* what) {
  std::printf("%s  %s\n", holds ? "ok    " : "FAILED", what);
  failures += holds ? 0 : 1;
}

globaldefs::NVSList_T elementName() {
  globaldefs::NVSList_T name;
  name.length(2);
  name[0].name = CORBA::string_dup("EMS");
  name[0].value = CORBA::string_dup("Consumer/1");
  name[1].name = CORBA::string_dup("ManagedElement");
  name[1].value = CORBA::string_dup("7");
  return name;
}

void convertsANameBothWays() {
  TEName* made = nullptr;
  check(TENameConvert::NmsToEmsNameConvert(elementName(), made) == 0, "a name is read");
  const std::unique_ptr<TEName> name(made);
  const auto* element = dynamic_cast<const TEMEName*>(made);
  check(element != nullptr && element->meId_ == 7, "its type is known on this side");
  globaldefs::NVSList_T back;
  check(TENameConvert::EmsToNmsNameConvert(made, back) == 0 && back.length() == 2 &&
            std::string(back[1].value.in()) == "7",
        "and it is written back");
  Name_Validate_Visitor visitor;
  check(name->Accept(&visitor) == 0, "a visitor made here is called");
}

void tracesHere() {
  CAAIDName name;
  name.SetStrIDs(nullptr);
  const auto& traces = consumer::seen().traces;
  check(!traces.empty() && traces.back() == "2 nameconvert: [CAAIDName::SetStrIDs] strIDs is null.",
        "the library traces here");
}

void notifiesHere() {
  check(TECommonFunc::OnSetOwner(elementName(), "me") == 0, "an owner is set");
  const auto& seen = consumer::seen();
  check(seen.calls.size() == 1 && seen.calls[0] == "setOwner", "by the EMS here");
  check(seen.events.size() == 1, "and the event is pushed here");
  if (seen.events.size() == 1) {
    const auto& type = seen.events[0].header.fixed_header.event_type;
    check(std::string(type.type_name.in()) == "NT_ATTRIBUTE_VALUE_CHANGE", "as what it is");
    check(seen.events[0].filterable_data.length() > 0, "with its properties");
  }
}

void adaptsADevice() {
  Device device;
  device.id = 7;
  managedElement::ManagedElement_T record;
  check(
      CAMOAdapter::AdapterMe(device, record) == 0 && std::string(record.location.in()) == "Hall 3",
      "a device becomes a record");
}

void catchesWhatTheLibraryThrows() {
  TETopoLinkName name;
  int code = 0;
  try {
    name.Accept(nullptr);
  } catch (InterfaceNotExistException& missing) {
    code = missing.code_;
  }
  check(code == 0x41180004, "a missing service's exception is caught by its own type");
  bool caught = false;
  try {
    name.Accept(nullptr);
  } catch (ProcessException&) {
    caught = true;
  }
  check(caught, "and by its base");
  consumer::offerLogService(true);
  check(name.Accept(nullptr) == 0x411800D4 && consumer::seen().log.size() == 1,
        "once the service is there, the assertion is logged here");
}

// Waits for the client's thread to have taken the one event.
bool fetchesOneEvent(long msgClass, long client) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
  while (std::chrono::steady_clock::now() < deadline) {
    notifications::EventList_T* list = nullptr;
    NXMessageMgr::Instance()->getMsgList(msgClass, client, list);
    const std::unique_ptr<notifications::EventList_T> owned(list);
    if (owned != nullptr && owned->length() == 1) {
      return true;
    }
    std::this_thread::yield();
  }
  return false;
}

void cachesEvents() {
  constexpr long MESSAGE_CLASS = 8;
  constexpr long CLIENT = 7;
  NXMessageMgr* cache = NXMessageMgr::Instance();
  check(cache->subscribeMsg(MESSAGE_CLASS, CLIENT, nullptr, nullptr) == 0, "a client subscribes");
  cache->setReportStatus(MESSAGE_CLASS, CLIENT, true);
  auto* holder =
      new NXRefCountType<CosNotification::StructuredEvent>(new CosNotification::StructuredEvent);
  check(cache->pushMessage(MESSAGE_CLASS, holder, nullptr) == 0, "an event is pushed to it");
  holder->release();
  check(fetchesOneEvent(MESSAGE_CLASS, CLIENT), "and fetched by it");
  check(cache->unSubscribeMsg(MESSAGE_CLASS, CLIENT) == 0, "and it leaves");
  NXMessageMgr::Destroy();
}

}  // namespace

int main(int argc, char** argv) {
  CORBA::ORB_var orb = CORBA::ORB_init(argc, argv);
  convertsANameBothWays();
  tracesHere();
  notifiesHere();
  adaptsADevice();
  catchesWhatTheLibraryThrows();
  cachesEvents();
  orb->destroy();
  return failures == 0 ? 0 : 1;
}
