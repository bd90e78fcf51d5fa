#include "agent/tmf/changenotifier.h"

#include "agent/tmf/names.h"
#include "agent/tmf/nmsrecords.h"
#include "zk_quornex/notify/notification.h"
#include "zk_quornex/platform/events.h"
#include "zk_quornex/platform/timechange.h"

namespace zk::agent {

using NS_QUORCORBA::TANotification;

namespace {

// What no change here concerns: the edge of the network is not marked in this
// EMS.
constexpr bool EDGE_POINT_RELATED = false;

struct BodyOf {
  CORBA::Any operator()(const EmsRecord& record) const { return holding(emsOf(record)); }
  CORBA::Any operator()(const DeviceRecord& record) const {
    managedElement::ManagedElement_T element;
    return fillElement(record, element) == 0 ? holding(element) : CORBA::Any();
  }
  CORBA::Any operator()(const SubnetworkRecord& record) const {
    return holding(subnetworkOf(record));
  }
  CORBA::Any operator()(const LinkRecord& record) const { return holding(linkOf(record)); }
  template <class MapRecord>
  CORBA::Any operator()(const MapRecord& record) const {
    return holding(mapObjectOf(record));
  }

 private:
  template <class Struct>
  static CORBA::Any holding(const Struct& content) {
    CORBA::Any any;
    any <<= content;
    return any;
  }
};

notifications::NVList_T oneAttribute(const char* name, const std::string& value) {
  notifications::NVList_T list;
  list.length(1);
  list[0].name = CORBA::string_dup(name);
  list[0].value <<= value.c_str();
  return list;
}

}  // namespace

void ChangeNotifier::created(const ObjectRecord& object) {
  CORBA::Any body = std::visit(BodyOf(), object);
  TANotification::OnObjectCreated(internalNameOf(keyOf(object)).get(), EDGE_POINT_RELATED, body);
}

void ChangeNotifier::removed(const ObjectRecord& object) {
  TANotification::OnObjectDeleted(internalNameOf(keyOf(object)).get(), EDGE_POINT_RELATED);
}

void ChangeNotifier::attributeChanged(const AttributeChange& change) {
  if (change.origin == Origin::EMS) {
    TANotification::OnObjectAVC(internalNameOf(keyOf(change.record)).get(),
                                oneAttribute(nameOfLabel(change.attribute), change.after),
                                EDGE_POINT_RELATED);
  }
}

void ChangeNotifier::alarmRaised(const AlarmRecord& alarm) {
  const std::string now = NS_QUORCORBA::TimeChange::getUTCTime();
  CosNotification::StructuredEvent event =
      alarmEvent(alarm, nativeNameOf(inventory_, alarm), {now, timeRaised(alarm)});
  NS_QUORCORBA::PushEvent(event);
}

void ChangeNotifier::alarmCleared(const AlarmRecord& alarm) {
  const std::string now = NS_QUORCORBA::TimeChange::getUTCTime();
  CosNotification::StructuredEvent event =
      alarmEvent(alarm, nativeNameOf(inventory_, alarm), {now, now});
  NS_QUORCORBA::PushEvent(event);
}

}  // namespace zk::agent
