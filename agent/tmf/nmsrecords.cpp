#include "agent/tmf/nmsrecords.h"

#include <algorithm>
#include <array>

#include "agent/base/sequences.h"
#include "agent/tmf/errors.h"
#include "agent/tmf/names.h"
#include "zk_quornex/mo/moadapter.h"
#include "zk_quornex/platform/config.h"
#include "zk_quornex/platform/default/clock.h"
#include "zk_quornex/platform/events.h"

namespace zk::agent {

namespace {

template <class Text>
void putOver(Text&& member, const std::string& stored) {
  if (!stored.empty()) {
    member = CORBA::string_dup(stored.c_str());
  }
}

template <class Record>
void setLabels(Record& record, const Labels& labels) {
  record.userLabel = CORBA::string_dup(labels.userLabel.c_str());
  record.nativeEMSName = CORBA::string_dup(labels.nativeName.c_str());
  record.owner = CORBA::string_dup(labels.owner.c_str());
}

topologyMap::MapObject_T labelled(const ObjectKey& key, const Labels& labels) {
  topologyMap::MapObject_T result;
  result.name = nmsNameOf(key);
  setLabels(result, labels);
  return result;
}

multiLayerSubnetwork::Topology_T topologyOf(Topology topology) {
  using namespace multiLayerSubnetwork;
  constexpr std::array<Topology_T, 6> TOPOLOGIES{TOPO_SINGLETON, TOPO_CHAIN,  TOPO_PSR,
                                                 TOPO_OPEN_PSR,  TOPO_SPRING, TOPO_OPEN_SPRING};
  const auto number = static_cast<std::size_t>(topology);
  return number < TOPOLOGIES.size() ? TOPOLOGIES[number] : TOPO_MESH;
}

// The number of the layer rate; 0 is none of them.
transmissionParameters::LayerRate_T layerRateOf(LinkRate rate) {
  switch (rate) {
    case LinkRate::STM_1:
      return 20;
    case LinkRate::STM_4:
      return 21;
    case LinkRate::STM_16:
      return 22;
    case LinkRate::WAVELENGTH:
      return 40;
    case LinkRate::UNKNOWN:
      break;
  }
  return 0;
}

constexpr CORBA::Short LAYER_NOT_APPLICABLE = 1;

constexpr CORBA::ULong PROPERTY_COUNT = 17;

struct SeverityPair {
  Severity ems;
  notifications::PerceivedSeverity_T nms;
};

constexpr std::array<SeverityPair, 6> SEVERITIES{
    {{Severity::INDETERMINATE, notifications::PS_INDETERMINATE},
     {Severity::CRITICAL, notifications::PS_CRITICAL},
     {Severity::MAJOR, notifications::PS_MAJOR},
     {Severity::MINOR, notifications::PS_MINOR},
     {Severity::WARNING, notifications::PS_WARNING},
     {Severity::CLEARED, notifications::PS_CLEARED}}};

notifications::PerceivedSeverity_T perceivedSeverityOf(Severity severity) {
  const auto* found = std::find_if(SEVERITIES.begin(), SEVERITIES.end(),
                                   [&](const auto& pair) { return pair.ems == severity; });
  return found != SEVERITIES.end() ? found->nms : notifications::PS_INDETERMINATE;
}

// Fills the filterable properties in order.
class Properties {
 public:
  explicit Properties(CosNotification::PropertySeq& properties) : properties_(properties) {
    properties_.length(PROPERTY_COUNT);
  }

  template <class Value>
  void add(const char* name, const Value& value) {
    next(name) <<= value;
  }
  void addText(const char* name, const std::string& text) { next(name) <<= text.c_str(); }
  void addBoolean(const char* name, bool value) { next(name) <<= CORBA::Any::from_boolean(value); }

 private:
  CORBA::Any& next(const char* name) {
    CosNotification::Property& property = properties_[filled_++];
    property.name = CORBA::string_dup(name);
    return property.value;
  }

  CosNotification::PropertySeq& properties_;
  CORBA::ULong filled_ = 0;
};

bool isAboutTheEms(const AlarmRecord& alarm) { return alarm.deviceId == 0; }

ObjectKey objectOf(const AlarmRecord& alarm) {
  return isAboutTheEms(alarm) ? ObjectKey::ems()
                              : ObjectKey::device(static_cast<unsigned long>(alarm.deviceId));
}

void addObject(Properties& properties, const AlarmRecord& alarm, const std::string& nativeName) {
  properties.addText("notificationId", std::to_string(alarm.id));
  properties.add("objectName", nmsNameOf(objectOf(alarm)));
  properties.addText("nativeEMSName", nativeName);
  properties.addText("nativeProbableCause", alarm.nativeProbableCause);
  properties.add("objectType",
                 isAboutTheEms(alarm) ? notifications::OT_EMS : notifications::OT_MANAGED_ELEMENT);
}

void addCondition(Properties& properties, const AlarmRecord& alarm) {
  properties.addBoolean("isClearable", true);
  properties.add("layerRate", LAYER_NOT_APPLICABLE);
  properties.addText("probableCause", alarm.probableCause);
  properties.addText("probableCauseQualifier", alarm.qualifier);
  properties.add("perceivedSeverity", perceivedSeverityOf(alarm.severity));
  properties.add("serviceAffecting", notifications::SA_UNKNOWN);
  properties.add("affectedTPList", globaldefs::NamingAttributesList_T());
  properties.addText("additionalText", alarm.additionalText);
  properties.add("additionalInfo", globaldefs::NVSList_T());
}

}  // namespace

emsMgr::EMS_T emsOf(const EmsRecord& record) {
  emsMgr::EMS_T ems;
  const unsigned long code = NS_QUORCORBA::CAMOAdapter::AdapterEms(ems);
  if (code != 0) {
    throw refusalOf(code, ems.name);
  }
  putOver(ems.userLabel, record.userLabel);
  putOver(ems.nativeEMSName, record.nativeName);
  putOver(ems.owner, record.owner);
  return ems;
}

unsigned long fillElement(const DeviceRecord& record, managedElement::ManagedElement_T& element) {
  const unsigned long code = NS_QUORCORBA::CAMOAdapter::AdapterMe(record, element);
  if (code == 0) {
    putOver(element.userLabel, record.userLabel);
    putOver(element.owner, record.owner);
  }
  return code;
}

multiLayerSubnetwork::MultiLayerSubnetwork_T subnetworkOf(const SubnetworkRecord& record) {
  multiLayerSubnetwork::MultiLayerSubnetwork_T subnetwork;
  subnetwork.name = nmsNameOf(ObjectKey::subnetwork(record.id));
  setLabels(subnetwork, record);
  subnetwork.subnetworkType = topologyOf(record.topology);
  return subnetwork;
}

topologicalLink::TopologicalLink_T linkOf(const LinkRecord& record) {
  topologicalLink::TopologicalLink_T link;
  link.name = nmsNameOf(ObjectKey::link(record.id));
  setLabels(link, record);
  link.direction =
      record.direction == LinkDirection::UNIDIRECTIONAL ? globaldefs::CD_UNI : globaldefs::CD_BI;
  link.rate = layerRateOf(record.rate);
  link.aEndTP = nmsNameOf(record.aEnd);
  link.zEndTP = nmsNameOf(record.zEnd);
  return link;
}

topologyMap::MapObject_T mapObjectOf(const NodeRecord& node) {
  topologyMap::MapObject_T result = labelled({ObjectKind::NODE, node.id, node.parentId}, node);
  appendPair(result.additionalInfo, "managedElement", std::to_string(node.deviceId));
  return result;
}

topologyMap::MapObject_T mapObjectOf(const SubMapRecord& subMap) {
  return labelled({ObjectKind::SUB_MAP, subMap.id, subMap.parentId}, subMap);
}

topologyMap::MapObject_T mapObjectOf(const DisplayLinkRecord& displayLink) {
  topologyMap::MapObject_T result =
      labelled({ObjectKind::DISPLAY_LINK, displayLink.id, displayLink.parentId}, displayLink);
  appendPair(result.additionalInfo, "aEnd", displayLink.aEndId);
  appendPair(result.additionalInfo, "zEnd", displayLink.zEndId);
  return result;
}

topologyMap::MapObject_T mapObjectOf(const PhysicalLinkRecord& physicalLink) {
  topologyMap::MapObject_T result = labelled({ObjectKind::PHYSICAL_LINK, physicalLink.id, {}}, {});
  appendPair(result.additionalInfo, "topologicalLink", physicalLink.linkId);
  return result;
}

Severity severityOf(notifications::PerceivedSeverity_T severity) {
  const auto* found = std::find_if(SEVERITIES.begin(), SEVERITIES.end(),
                                   [&](const auto& pair) { return pair.nms == severity; });
  return found != SEVERITIES.end() ? found->ems : Severity::INDETERMINATE;
}

CosNotification::StructuredEvent alarmEvent(const AlarmRecord& alarm, const std::string& nativeName,
                                            const AlarmTimes& times) {
  CosNotification::StructuredEvent event;
  NS_CORBA::fillFixedHeader("NT_ALARM", event);
  Properties properties(event.filterable_data);
  addObject(properties, alarm, nativeName);
  properties.addText("emsTime", times.ems);
  properties.addText("neTime", times.ne);
  addCondition(properties, alarm);
  properties.addText("objectTypeQualifier", pairNameOf(objectOf(alarm).kind));
  return event;
}

std::string timeRaised(const AlarmRecord& alarm) { return zk::platform::timeText(alarm.raisedAt); }

std::string nativeNameOf(const Inventory& inventory, const AlarmRecord& alarm) {
  if (isAboutTheEms(alarm)) {
    const std::string stored = inventory.ems().nativeName;
    return stored.empty() ? NS_CORBA::CorbaBaseAgentConfig::Instance()->EmsName() : stored;
  }
  const auto device = inventory.device(alarm.deviceId);
  return device ? device->name : "";
}

}  // namespace zk::agent
