#include "agent/managers/queries.h"

#include <string>
#include <vector>

#include "agent/base/log.h"
#include "agent/managers/listof.h"
#include "agent/tmf/errors.h"
#include "agent/tmf/objectnames.h"
#include "agent/tmf/records.h"

namespace zk::agent {

namespace {

using globaldefs::NamingAttributesList_T;
using globaldefs::NVSList_T;

auto fetchDevices(const Inventory& inventory) {
  return [&inventory](const std::vector<long>& ids) { return inventory.devices(ids); };
}

auto fetchLinks(const Inventory& inventory) {
  return [&inventory](const std::vector<std::string>& ids) { return inventory.links(ids); };
}

auto fetchSubnetworks(const Inventory& inventory) {
  return [&inventory](const std::vector<std::string>&) {
    return std::vector<SubnetworkRecord>{inventory.subnetwork()};
  };
}

std::vector<std::string> subnetworkIds(const Inventory& inventory) {
  return {inventory.subnetwork().id};
}

// A device that the EMS cannot tell everything about at present is left out
// rather than spoiling the whole list; one removed meanwhile is simply gone.
void addElement(managedElement::ManagedElementList_T& out, const DeviceRecord& record) {
  managedElement::ManagedElement_T element;
  const unsigned long code = fillElement(record, element);
  if (code == 0) {
    appendEntry(out, element);
  } else if (code != codeOf(Result::NoSuchObject)) {
    logFailure("device " + std::to_string(record.id) + " left out of a list: " + reasonOf(code));
  }
}

Refusal noSuchObject(const NVSList_T& name) {
  return refusalOf(codeOf(Result::NoSuchObject), name);
}

}  // namespace

PagedList<managedElement::ManagedElementList_T> allElements(const Inventory& inventory) {
  return listOf<managedElement::ManagedElementList_T>(inventory.deviceIds(),
                                                      fetchDevices(inventory), addElement);
}

PagedList<NamingAttributesList_T> allElementNames(const Inventory& inventory) {
  return listOf<NamingAttributesList_T>(
      inventory.deviceIds(), fetchDevices(inventory),
      [](NamingAttributesList_T& out, const DeviceRecord& record) {
        appendEntry(out, nameOfDevice(record.id));
      });
}

PagedList<topologicalLink::TopologicalLinkList_T> allLinks(const Inventory& inventory) {
  return listOf<topologicalLink::TopologicalLinkList_T>(
      inventory.ids(ObjectKind::Link), fetchLinks(inventory),
      [](topologicalLink::TopologicalLinkList_T& out, const LinkRecord& record) {
        appendEntry(out, linkOf(record));
      });
}

PagedList<NamingAttributesList_T> allLinkNames(const Inventory& inventory) {
  return listOf<NamingAttributesList_T>(inventory.ids(ObjectKind::Link), fetchLinks(inventory),
                                        [](NamingAttributesList_T& out, const LinkRecord& record) {
                                          appendEntry(out, nameOfLink(record.id));
                                        });
}

PagedList<multiLayerSubnetwork::SubnetworkList_T> allSubnetworks(const Inventory& inventory) {
  return listOf<multiLayerSubnetwork::SubnetworkList_T>(
      subnetworkIds(inventory), fetchSubnetworks(inventory),
      [](multiLayerSubnetwork::SubnetworkList_T& out, const SubnetworkRecord& record) {
        appendEntry(out, subnetworkOf(record));
      });
}

PagedList<NamingAttributesList_T> allSubnetworkNames(const Inventory& inventory) {
  return listOf<NamingAttributesList_T>(
      subnetworkIds(inventory), fetchSubnetworks(inventory),
      [](NamingAttributesList_T& out, const SubnetworkRecord& record) {
        appendEntry(out, nameOfSubnetwork(record.id));
      });
}

managedElement::ManagedElement_T elementNamed(const Inventory& inventory, const NVSList_T& name) {
  const auto record = inventory.device(readDeviceId(name));
  if (!record) {
    throw noSuchObject(name);
  }
  managedElement::ManagedElement_T element;
  const unsigned long code = fillElement(*record, element);
  if (code != 0) {
    throw refusalOf(code, name);
  }
  return element;
}

topologicalLink::TopologicalLink_T linkNamed(const Inventory& inventory, const NVSList_T& name) {
  const auto record = inventory.link(readLinkId(name));
  if (!record) {
    throw noSuchObject(name);
  }
  return linkOf(*record);
}

multiLayerSubnetwork::MultiLayerSubnetwork_T subnetworkNamed(const Inventory& inventory,
                                                             const NVSList_T& name) {
  const SubnetworkRecord record = inventory.subnetwork();
  if (record.id != readSubnetworkId(name)) {
    throw noSuchObject(name);
  }
  return subnetworkOf(record);
}

long existingDeviceId(const Inventory& inventory, const NVSList_T& name) {
  const long id = readDeviceId(name);
  if (!inventory.device(id)) {
    throw noSuchObject(name);
  }
  return id;
}

NVSList_T subnetworkNameOfElement(const Inventory& inventory, const NVSList_T& name) {
  existingDeviceId(inventory, name);
  return nameOfSubnetwork(inventory.subnetwork().id);
}

}  // namespace zk::agent
