#include "agent/managers/queries.h"

#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "agent/base/log.h"
#include "agent/base/sequences.h"
#include "agent/tmf/errors.h"
#include "agent/tmf/names.h"
#include "agent/tmf/nmsrecords.h"

namespace zk::agent {

namespace {

using globaldefs::NamingAttributesList_T;
using globaldefs::NVSList_T;
using topologyMap::MapObject_T;
using topologyMap::MapObjectList_T;

// The records of some keys, in order, without those that are gone.
template <class Record, class Key>
using Fetch = std::vector<Record> (Inventory::*)(const std::vector<Key>& keys) const;

// add appends what one record becomes to the answer.
template <class List, class Record, class Key, class Add>
PagedList<List> listOf(const Inventory& inventory, std::vector<Key> keys, Fetch<Record, Key> fetch,
                       Add add) {
  const std::size_t length = keys.size();
  return {length, [&inventory, keys = std::move(keys), fetch, add](std::size_t from,
                                                                   std::size_t count, List& out) {
            const auto first = keys.begin() + static_cast<std::ptrdiff_t>(from);
            const std::vector<Key> some(first, first + static_cast<std::ptrdiff_t>(count));
            for (const Record& record : (inventory.*fetch)(some)) {
              add(out, record);
            }
          }};
}

// A device that the EMS cannot tell everything about at present is left out
// rather than spoiling the whole list; one removed meanwhile is simply gone.
void addElement(managedElement::ManagedElementList_T& out, const DeviceRecord& record) {
  managedElement::ManagedElement_T element;
  const unsigned long code = fillElement(record, element);
  if (code == 0) {
    append(out, element);
  } else if (code != codeOf(Result::NO_SUCH_OBJECT)) {
    logFailure("device " + std::to_string(record.id) + " left out of a list: " + reasonOf(code));
  }
}

template <class Record>
PagedList<MapObjectList_T> mapObjects(const Inventory& inventory, ObjectKind kind,
                                      Fetch<Record, std::string> fetch) {
  return listOf<MapObjectList_T>(
      inventory, inventory.ids(kind), fetch,
      [](MapObjectList_T& out, const Record& record) { append(out, mapObjectOf(record)); });
}

Refusal noSuchObject(const NVSList_T& name) {
  return refusalOf(codeOf(Result::NO_SUCH_OBJECT), name);
}

// What was found under this name, which has to be something.
template <class Record>
const Record& found(const std::optional<Record>& record, const NVSList_T& name) {
  return record ? *record : throw noSuchObject(name);
}

template <class Record>
MapObject_T heldBy(const std::string& parentId, const std::optional<Record>& record,
                   const NVSList_T& name) {
  if (!parentId.empty() && found(record, name).parentId != parentId) {
    throw noSuchObject(name);
  }
  return mapObjectOf(found(record, name));
}

// Of what a query leaves out: some times as much as there is.
constexpr std::size_t MOST_CAUSES = 1024;
constexpr std::size_t MOST_SEVERITIES = 64;
constexpr std::size_t LONGEST_CAUSE = 255;

void requireAtMost(std::size_t most, std::size_t count, const char* what) {
  if (count > most) {
    throw refusal(globaldefs::EXCPT_INVALID_INPUT,
                  "more than " + std::to_string(most) + " " + what);
  }
}

std::vector<long> idsOfActive(const Inventory& inventory, const ExcludedAlarms& excluded,
                              std::optional<long> deviceId) {
  std::vector<long> ids;
  for (const AlarmRecord& alarm : inventory.activeAlarms(deviceId)) {
    if (!excluded.contains(alarm)) {
      ids.push_back(alarm.id);
    }
  }
  return ids;
}

CosNotification::StructuredEvent listed(const Inventory& inventory, const AlarmRecord& alarm) {
  const std::string raised = timeRaised(alarm);
  return alarmEvent(alarm, nativeNameOf(inventory, alarm), {raised, raised});
}

}  // namespace

PagedList<managedElement::ManagedElementList_T> allElements(const Inventory& inventory) {
  return listOf<managedElement::ManagedElementList_T>(inventory, inventory.deviceIds(),
                                                      &Inventory::devices, addElement);
}

PagedList<NamingAttributesList_T> allElementNames(const Inventory& inventory) {
  return listOf<NamingAttributesList_T>(
      inventory, inventory.deviceIds(), &Inventory::devices,
      [](NamingAttributesList_T& out, const DeviceRecord& record) {
        append(out, nmsNameOf(ObjectKey::device(static_cast<unsigned long>(record.id))));
      });
}

PagedList<topologicalLink::TopologicalLinkList_T> allLinks(const Inventory& inventory) {
  return listOf<topologicalLink::TopologicalLinkList_T>(
      inventory, inventory.ids(ObjectKind::LINK), &Inventory::links,
      [](topologicalLink::TopologicalLinkList_T& out, const LinkRecord& record) {
        append(out, linkOf(record));
      });
}

PagedList<NamingAttributesList_T> allLinkNames(const Inventory& inventory) {
  return listOf<NamingAttributesList_T>(inventory, inventory.ids(ObjectKind::LINK),
                                        &Inventory::links,
                                        [](NamingAttributesList_T& out, const LinkRecord& record) {
                                          append(out, nmsNameOf(ObjectKey::link(record.id)));
                                        });
}

PagedList<multiLayerSubnetwork::SubnetworkList_T> allSubnetworks(const Inventory& inventory) {
  return {
      1, [&inventory](std::size_t, std::size_t count, multiLayerSubnetwork::SubnetworkList_T& out) {
        if (count != 0) {
          append(out, subnetworkOf(inventory.subnetwork()));
        }
      }};
}

PagedList<NamingAttributesList_T> allSubnetworkNames(const Inventory& inventory) {
  return {1, [&inventory](std::size_t, std::size_t count, NamingAttributesList_T& out) {
            if (count != 0) {
              append(out, nmsNameOf(ObjectKey::subnetwork(inventory.subnetwork().id)));
            }
          }};
}

PagedList<MapObjectList_T> allNodes(const Inventory& inventory) {
  return mapObjects(inventory, ObjectKind::NODE, &Inventory::nodes);
}

PagedList<MapObjectList_T> allSubMaps(const Inventory& inventory) {
  return mapObjects(inventory, ObjectKind::SUB_MAP, &Inventory::subMaps);
}

PagedList<MapObjectList_T> allDisplayLinks(const Inventory& inventory) {
  return mapObjects(inventory, ObjectKind::DISPLAY_LINK, &Inventory::displayLinks);
}

managedElement::ManagedElement_T elementNamed(const Inventory& inventory, const NVSList_T& name) {
  managedElement::ManagedElement_T element;
  const unsigned long code =
      fillElement(found(inventory.device(readDeviceId(name)), name), element);
  if (code != 0) {
    throw refusalOf(code, name);
  }
  return element;
}

topologicalLink::TopologicalLink_T linkNamed(const Inventory& inventory, const NVSList_T& name) {
  return linkOf(found(inventory.link(readLinkId(name)), name));
}

multiLayerSubnetwork::MultiLayerSubnetwork_T subnetworkNamed(const Inventory& inventory,
                                                             const NVSList_T& name) {
  const SubnetworkRecord record = inventory.subnetwork();
  if (record.id != readSubnetworkId(name)) {
    throw noSuchObject(name);
  }
  return subnetworkOf(record);
}

MapObject_T mapObjectNamed(const Inventory& inventory, const NVSList_T& name) {
  const ObjectKey key = readKey(name);
  switch (key.kind) {
    case ObjectKind::NODE:
      return heldBy(key.parentId, inventory.node(key.id), name);
    case ObjectKind::SUB_MAP:
      return heldBy(key.parentId, inventory.subMap(key.id), name);
    case ObjectKind::DISPLAY_LINK:
      return heldBy(key.parentId, inventory.displayLink(key.id), name);
    default:
      throw refusal(globaldefs::EXCPT_INVALID_INPUT,
                    "expected the name of a node, submap or display link");
  }
}

long existingDeviceId(const Inventory& inventory, const NVSList_T& name) {
  return found(inventory.device(readDeviceId(name)), name).id;
}

NVSList_T subnetworkNameOfElement(const Inventory& inventory, const NVSList_T& name) {
  existingDeviceId(inventory, name);
  return nmsNameOf(ObjectKey::subnetwork(inventory.subnetwork().id));
}

ExcludedAlarms::ExcludedAlarms(const notifications::ProbableCauseList_T& causes,
                               const notifications::PerceivedSeverityList_T& excludedSeverities) {
  requireAtMost(MOST_CAUSES, causes.length(), "probable causes");
  requireAtMost(MOST_SEVERITIES, excludedSeverities.length(), "severities");
  for (CORBA::ULong i = 0; i < causes.length(); ++i) {
    requireAtMost(LONGEST_CAUSE, std::strlen(causes[i]), "characters in a probable cause");
    probableCauses.emplace(causes[i]);
  }
  for (CORBA::ULong i = 0; i < excludedSeverities.length(); ++i) {
    severities.insert(severityOf(excludedSeverities[i]));
  }
}

bool ExcludedAlarms::contains(const AlarmRecord& alarm) const {
  return probableCauses.count(alarm.probableCause) != 0 || severities.count(alarm.severity) != 0;
}

PagedList<notifications::EventList_T> activeAlarms(const Inventory& inventory,
                                                   const ExcludedAlarms& excluded,
                                                   std::optional<long> deviceId) {
  std::vector<long> ids = idsOfActive(inventory, excluded, deviceId);
  const std::size_t length = ids.size();
  return {length, [&inventory, excluded, ids = std::move(ids)](std::size_t from, std::size_t count,
                                                               notifications::EventList_T& out) {
            for (std::size_t i = from; i < from + count; ++i) {
              const std::optional<AlarmRecord> alarm = inventory.alarm(ids[i]);
              // It may have become one of those that are left out.
              if (alarm && !excluded.contains(*alarm)) {
                append(out, listed(inventory, *alarm));
              }
            }
          }};
}

}  // namespace zk::agent
