#include "zk_quornex/notify/notification.h"

#include <cstring>

#include "zk_quornex/names/nameconvert.h"
#include "zk_quornex/platform/events.h"
#include "zk_quornex/platform/timechange.h"

namespace NS_QUORCORBA {

namespace {

constexpr char CREATION[] = "NT_OBJECT_CREATION";
constexpr char DELETION[] = "NT_OBJECT_DELETION";
constexpr char ATTRIBUTE_CHANGE[] = "NT_ATTRIBUTE_VALUE_CHANGE";
constexpr char STATE_CHANGE[] = "NT_STATE_CHANGE";

// Fills the filterable data of an event in order; its length is set first.
class PropertyWriter {
 public:
  PropertyWriter(CosNotification::StructuredEvent& event, CORBA::ULong count)
      : properties_(event.filterable_data) {
    properties_.length(count);
  }

  template <class Value>
  void add(const char* name, const Value& value) {
    property(name) <<= value;
  }

  void addBoolean(const char* name, bool value) {
    property(name) <<= CORBA::Any::from_boolean(value);
  }

 private:
  CORBA::Any& property(const char* name) {
    CosNotification::Property& property = properties_[next_++];
    property.name = CORBA::string_dup(name);
    return property.value;
  }

  CosNotification::PropertySeq& properties_;
  CORBA::ULong next_ = 0;
};

// Any insertion of a text takes a pointer, not a reference to an array.
const char* text(const char* characters) { return characters; }

void startEvent(CosNotification::StructuredEvent& event, const char* type) {
  event.header.fixed_header.event_type.domain_name = CORBA::string_dup("");
  event.header.fixed_header.event_type.type_name = CORBA::string_dup("");
  event.header.fixed_header.event_name = CORBA::string_dup("");
  NS_CORBA::fillFixedHeader(type, event);
}

struct ObjectTypeRow {
  int nameType;
  int objectType;
  const char* qualifier;
};

// Every object of the map and every DN is deliberately an AID to the NMS; the
// qualifier tells the kinds apart.
constexpr ObjectTypeRow OBJECT_TYPES[] = {
    {NAME_EMS, 0, "EMS"},
    {NAME_MANAGED_ELEMENT, 1, "ManagedElement"},
    {NAME_SUBNETWORK, 2, "MultiLayerSubnetwork"},
    {NAME_TOPOLOGICAL_LINK, 3, "TopologicalLink"},
    {NAME_SUBNETWORK_CONNECTION, 4, "SubnetworkConnection"},
    {NAME_PTP, 5, "PTP"},
    {NAME_CTP, 6, "CTP"},
    {NAME_PGP, 10, "PGP"},
    {NAME_AID, 12, "AID"},
    {NAME_NODE, 12, "NODE"},
    {NAME_SUBMAP, 12, "SUBMAP"},
    {NAME_PHYSICAL_LINK, 12, "PHYSICALLINK"},
    {NAME_DN, 12, "DN"},
};

}  // namespace

void TANotification::OnObjectCreated(TEName* name, bool edgePointRelated, CORBA::Any& object) {
  SendObjectNotification(CREATION, name, edgePointRelated, object, notifications::NVList_T());
}

void TANotification::OnObjectDeleted(TEName* name, bool edgePointRelated) {
  SendObjectNotification(DELETION, name, edgePointRelated, CORBA::Any(), notifications::NVList_T());
}

void TANotification::OnObjectAVC(TEName* name, const notifications::NVList_T& attributes,
                                 bool edgePointRelated) {
  SendObjectNotification(ATTRIBUTE_CHANGE, name, edgePointRelated, CORBA::Any(), attributes);
}

void TANotification::OnObjectStateChanged(TEName* name, const notifications::NVList_T& attributes,
                                          bool edgePointRelated) {
  SendObjectNotification(STATE_CHANGE, name, edgePointRelated, CORBA::Any(), attributes);
}

void TANotification::SendObjectNotification(const char* type, TEName* name, bool edgePointRelated,
                                            const CORBA::Any& body,
                                            const notifications::NVList_T& attributes) {
  if (name == nullptr) {
    return;
  }
  globaldefs::NVSList_T objectName;
  if (TENameConvert::EmsToNmsNameConvert(name, objectName) != RESULT_OK) {
    return;
  }
  notifications::ObjectType_T objectType = notifications::OT_EMS;
  std::string qualifier;
  if (GetOjectType(name, objectType, qualifier) != RESULT_OK) {
    return;
  }
  SendNotification(type, objectType, objectName, edgePointRelated, attributes, body,
                   qualifier.data());
}

void TANotification::SendNotification(const char* type, notifications::ObjectType_T objectType,
                                      const globaldefs::NVSList_T& objectName,
                                      bool edgePointRelated,
                                      const notifications::NVList_T& attributes,
                                      const CORBA::Any& body, char* qualifier) {
  CosNotification::StructuredEvent event;
  startEvent(event, type);

  const CORBA::ULong count =
      6U + (qualifier != nullptr ? 1U : 0U) + (attributes.length() > 0 ? 1U : 0U);
  PropertyWriter properties(event, count);
  properties.add("notificationId", text("0"));
  properties.add("objectName", objectName);
  properties.add("objectType", objectType);
  if (qualifier != nullptr) {
    properties.add("objectTypeQualifier", text(qualifier));
  }
  properties.add("emsTime", text(TimeChange::getUTCTime().c_str()));
  properties.add("neTime", text(TimeChange::getUTCTime().c_str()));
  properties.addBoolean("edgePointRelated", edgePointRelated);
  if (attributes.length() > 0) {
    properties.add("attributeList", attributes);
  }
  if (std::strcmp(type, CREATION) == 0 &&
      objectType != notifications::OT_CONNECTION_TERMINATION_POINT) {
    event.remainder_of_body = body;
  }
  PushEvent(event);
}

// filePath comes by value: that is the interface.
void TANotification::SendNotification(const char* type, const EnFileTransfStatus& status,
                                      const int& fileId,
                                      // NOLINTNEXTLINE(performance-unnecessary-value-param)
                                      std::string filePath) {
  CosNotification::StructuredEvent event;
  startEvent(event, type);

  const bool known = status >= FILE_TRANSFER_IN_PROGRESS && status <= FILE_TRANSFER_COMPLETED;
  const bool completed = status == FILE_TRANSFER_COMPLETED;
  if (known) {
    PropertyWriter properties(event, completed ? 4 : 3);
    properties.add("notificationId", text(""));
    properties.add("queryHistoryAlarmsStatus",
                   static_cast<notifications::FileTransferStatus_T>(status));
    if (completed) {
      properties.add("filePath", text(filePath.c_str()));
    }
    properties.add("HistoryAlarmFileId", static_cast<CORBA::Long>(fileId));
  }
  PushEvent(event);
}

unsigned int TANotification::GetOjectType(TEName* name, notifications::ObjectType_T& objectType,
                                          std::string& qualifier) {
  qualifier.clear();
  if (name == nullptr) {
    return RESULT_NO_OBJECT_TYPE;
  }
  for (const ObjectTypeRow& row : OBJECT_TYPES) {
    if (row.nameType == name->type_) {
      objectType = static_cast<notifications::ObjectType_T>(row.objectType);
      qualifier = row.qualifier;
      return RESULT_OK;
    }
  }
  return RESULT_NO_OBJECT_TYPE;
}

}  // namespace NS_QUORCORBA
