// From the embedded EMS's records to those that the NMS is told, alarms as the
// standard's NT_ALARM events. No state; any thread may call. What gives a record
// or an event throws Refusal, internal error, for an object that cannot be named.
#ifndef ZK_AGENT_TMF_NMSRECORDS_H
#define ZK_AGENT_TMF_NMSRECORDS_H

#include <string>

#include "agent/ems/inventory.h"
#include "agent/ems/records.h"
#include "zk_quornex/idl/events.h"
#include "zk_quornex/idl/managers.h"

namespace zk::agent {

// The library's own texts, and over them what the EMS has stored: a stored text
// that is empty leaves the library's.
emsMgr::EMS_T emsOf(const EmsRecord& record);

// Likewise for one device. Returns 0, or the code of the EMS's services or of
// the name, with element not to be used; a device that was removed a moment ago
// gives Result::NO_SUCH_OBJECT.
unsigned long fillElement(const DeviceRecord& record, managedElement::ManagedElement_T& element);

multiLayerSubnetwork::MultiLayerSubnetwork_T subnetworkOf(const SubnetworkRecord& record);
topologicalLink::TopologicalLink_T linkOf(const LinkRecord& record);

topologyMap::MapObject_T mapObjectOf(const NodeRecord& node);
topologyMap::MapObject_T mapObjectOf(const SubMapRecord& subMap);
topologyMap::MapObject_T mapObjectOf(const DisplayLinkRecord& displayLink);
// It has no labels; "topologicalLink" in its additionalInfo is the id of the
// link over it.
topologyMap::MapObject_T mapObjectOf(const PhysicalLinkRecord& physicalLink);

// What the EMS calls the severity.
Severity severityOf(notifications::PerceivedSeverity_T severity);

// As texts of the standard's form.
struct AlarmTimes {
  std::string ems;  // when the EMS tells it
  std::string ne;   // when it happened
};

// The NT_ALARM event, its properties in the standard's order; a receiver may read them by
// position. The notification id is the alarm's own number: the same in every
// event about it and in every list of active alarms, over restarts.
//
// objectTypeQualifier follows at the end, where it moves no older property.
// Acknowledgement is not told: the EMS keeps none.
CosNotification::StructuredEvent alarmEvent(const AlarmRecord& alarm, const std::string& nativeName,
                                            const AlarmTimes& times);

std::string timeRaised(const AlarmRecord& alarm);

// What the EMS calls the object that the alarm is about; empty for a device
// that is not there any more.
std::string nativeNameOf(const Inventory& inventory, const AlarmRecord& alarm);

}  // namespace zk::agent

#endif
