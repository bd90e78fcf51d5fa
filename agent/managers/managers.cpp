#include "agent/managers/managers.h"

#include <utf8.h>

#include <cstring>

#include "agent/base/sequences.h"
#include "agent/ems/inventorybackend.h"
#include "agent/managers/queries.h"
#include "agent/tmf/errors.h"
#include "agent/tmf/names.h"
#include "agent/tmf/nmsrecords.h"
#include "zk_quornex/mo/commonfunc.h"
#include "zk_quornex/names/codes.h"

namespace zk::agent {

using namespace NS_QUORCORBA;

namespace {

constexpr std::size_t LONGEST_TEXT = 252;

// A text that is no UTF-8 could not be told to other clients.
void requireUtf8(const char* text) {
  if (!utf8::is_valid(text, text + std::strlen(text))) {
    throw refusal(globaldefs::EXCPT_INVALID_INPUT, "a text is not UTF-8");
  }
}

void throwUnlessOk(unsigned long code, const globaldefs::NVSList_T& name) {
  if (code == RESULT_NOT_SUPPORTED) {
    throw notImplemented();
  }
  if (code != RESULT_OK) {
    throw refusalOf(code, name);
  }
}

}  // namespace

// The EMS checks uniqueness itself, so the setter's own refusal is never asked
// for; the EMS's services take no arguments and read the request instead.
void CommonOperations::setUserLabel(const globaldefs::NVSList_T& name, const char* label,
                                    bool unique) const {
  refusingFailures("setUserLabel", [&] {
    const EmsRequest request(readKey(name), label, unique);
    requireUtf8(label);
    throwUnlessOk(TECommonFunc::OnSetUserLabel(name, label, false), name);
  });
}

void CommonOperations::setOwner(const globaldefs::NVSList_T& name, const char* owner) const {
  refusingFailures("setOwner", [&] {
    const EmsRequest request(readKey(name), owner);
    requireUtf8(owner);
    throwUnlessOk(TECommonFunc::OnSetOwner(name, owner), name);
  });
}

// The library only reports a native name: storing it, and bounding it as the
// other texts are, is done here.
void CommonOperations::setNativeName(const globaldefs::NVSList_T& name,
                                     const char* nativeName) const {
  refusingFailures("setNativeEMSName", [&] {
    const InternalName object = readName(name);
    requireUtf8(nativeName);
    const ObjectKey key = keyOfName(*object);
    if (std::strlen(nativeName) > LONGEST_TEXT) {
      throw refusalOf(RESULT_TEXT_TOO_LONG, name);
    }
    throwUnlessOk(codeOf(inventory_.setNativeName(key, nativeName, {false, Origin::NMS})), name);
    TECommonFunc::OnSetNativeEmsName(object.get(), nativeName);
  });
}

common::CapabilityList_T capabilitiesOf(const OperationNames& operations) {
  common::CapabilityList_T list;
  for (const char* operation :
       {"setNativeEMSName", "setUserLabel", "setOwner", "getCapabilities"}) {
    appendPair(list, operation, "Supported");
  }
  for (const char* operation : operations) {
    appendPair(list, operation, "Supported");
  }
  return list;
}

EmsManager::EmsManager(Paging paging, Inventory& inventory)
    : ManagerServant(std::move(paging), inventory,
                     {"getEMS", "getAllTopLevelSubnetworks", "getAllTopLevelSubnetworkNames",
                      "getAllTopLevelTopologicalLinks", "getAllTopLevelTopologicalLinkNames",
                      "getTopLevelTopologicalLink", "getAllEMSAndMEActiveAlarms",
                      "getAllEMSSystemActiveAlarms"}) {}

void EmsManager::getEMS(emsMgr::EMS_T_out ems) {
  refusingFailures("getEMS", [&] { ems = new emsMgr::EMS_T(emsOf(inventory_.ems())); });
}

void EmsManager::getAllTopLevelSubnetworks(CORBA::ULong howMany,
                                           multiLayerSubnetwork::SubnetworkList_T_out list,
                                           multiLayerSubnetwork::SubnetworkIterator_I_out it) {
  answer("getAllTopLevelSubnetworks", howMany, list, it, allSubnetworks);
}

void EmsManager::getAllTopLevelSubnetworkNames(CORBA::ULong howMany, NamesOut list, NamesLeft it) {
  answer("getAllTopLevelSubnetworkNames", howMany, list, it, allSubnetworkNames);
}

void EmsManager::getAllTopLevelTopologicalLinks(CORBA::ULong howMany, LinksOut list, LinksLeft it) {
  answer("getAllTopLevelTopologicalLinks", howMany, list, it, allLinks);
}

void EmsManager::getAllTopLevelTopologicalLinkNames(CORBA::ULong howMany, NamesOut list,
                                                    NamesLeft it) {
  answer("getAllTopLevelTopologicalLinkNames", howMany, list, it, allLinkNames);
}

void EmsManager::getTopLevelTopologicalLink(const Name& name, LinkOut link) {
  refusingFailures("getTopLevelTopologicalLink", [&] {
    link = new topologicalLink::TopologicalLink_T(linkNamed(inventory_, name));
  });
}

void EmsManager::getAllEMSAndMEActiveAlarms(const Causes& excludedCauses,
                                            const Severities& excludedSeverities,
                                            CORBA::ULong howMany, EventsOut list, EventsLeft it) {
  answer("getAllEMSAndMEActiveAlarms", howMany, list, it, [&](const Inventory& inventory) {
    return activeAlarms(inventory, {excludedCauses, excludedSeverities});
  });
}

void EmsManager::getAllEMSSystemActiveAlarms(const Severities& excludedSeverities,
                                             CORBA::ULong howMany, EventsOut list, EventsLeft it) {
  answer("getAllEMSSystemActiveAlarms", howMany, list, it, [&](const Inventory& inventory) {
    return activeAlarms(inventory, {{}, excludedSeverities}, THE_EMS);
  });
}

ElementManager::ElementManager(Paging paging, Inventory& inventory)
    : ManagerServant(std::move(paging), inventory,
                     {"getAllManagedElements", "getAllManagedElementNames",
                      "getContainingSubnetworkNames", "getManagedElement", "getAllActiveAlarms"}) {}

void ElementManager::getAllManagedElements(CORBA::ULong howMany, ElementsOut list,
                                           ElementsLeft it) {
  answer("getAllManagedElements", howMany, list, it, allElements);
}

void ElementManager::getAllManagedElementNames(CORBA::ULong howMany, NamesOut list, NamesLeft it) {
  answer("getAllManagedElementNames", howMany, list, it, allElementNames);
}

void ElementManager::getContainingSubnetworkNames(const Name& name, NamesOut names) {
  refusingFailures("getContainingSubnetworkNames", [&] {
    auto list = std::make_unique<globaldefs::NamingAttributesList_T>();
    append(*list, subnetworkNameOfElement(inventory_, name));
    names = list.release();
  });
}

void ElementManager::getManagedElement(const Name& name,
                                       managedElement::ManagedElement_T_out element) {
  refusingFailures("getManagedElement", [&] {
    element = new managedElement::ManagedElement_T(elementNamed(inventory_, name));
  });
}

void ElementManager::getAllActiveAlarms(const Name& name, const Causes& excludedCauses,
                                        const Severities& excludedSeverities, CORBA::ULong howMany,
                                        EventsOut list, EventsLeft it) {
  answer("getAllActiveAlarms", howMany, list, it, [&](const Inventory& inventory) {
    const long device = existingDeviceId(inventory, name);
    return activeAlarms(inventory, {excludedCauses, excludedSeverities}, device);
  });
}

SubnetworkManager::SubnetworkManager(Paging paging, Inventory& inventory)
    : ManagerServant(
          std::move(paging), inventory,
          {"getAllManagedElements", "getAllManagedElementNames", "getMultiLayerSubnetwork",
           "getAllTopologicalLinks", "getAllTopologicalLinkNames", "getTopologicalLink"}) {}

template <class ListOut, class IteratorOut, class List>
void SubnetworkManager::answerWithin(const Name& subnetwork, const char* operation,
                                     CORBA::ULong howMany, ListOut list, IteratorOut it,
                                     PagedList<List> (*all)(const Inventory&)) const {
  answer(operation, howMany, list, it, [&](const Inventory& inventory) {
    subnetworkNamed(inventory, subnetwork);
    return all(inventory);
  });
}

void SubnetworkManager::getAllManagedElements(const Name& subnetwork, CORBA::ULong howMany,
                                              ElementsOut list, ElementsLeft it) {
  answerWithin(subnetwork, "getAllManagedElements", howMany, list, it, allElements);
}

void SubnetworkManager::getAllManagedElementNames(const Name& subnetwork, CORBA::ULong howMany,
                                                  NamesOut list, NamesLeft it) {
  answerWithin(subnetwork, "getAllManagedElementNames", howMany, list, it, allElementNames);
}

void SubnetworkManager::getMultiLayerSubnetwork(
    const Name& name, multiLayerSubnetwork::MultiLayerSubnetwork_T_out subnetwork) {
  refusingFailures("getMultiLayerSubnetwork", [&] {
    subnetwork =
        new multiLayerSubnetwork::MultiLayerSubnetwork_T(subnetworkNamed(inventory_, name));
  });
}

void SubnetworkManager::getAllTopologicalLinks(const Name& subnetwork, CORBA::ULong howMany,
                                               LinksOut list, LinksLeft it) {
  answerWithin(subnetwork, "getAllTopologicalLinks", howMany, list, it, allLinks);
}

void SubnetworkManager::getAllTopologicalLinkNames(const Name& subnetwork, CORBA::ULong howMany,
                                                   NamesOut list, NamesLeft it) {
  answerWithin(subnetwork, "getAllTopologicalLinkNames", howMany, list, it, allLinkNames);
}

void SubnetworkManager::getTopologicalLink(const Name& name, LinkOut link) {
  refusingFailures("getTopologicalLink", [&] {
    link = new topologicalLink::TopologicalLink_T(linkNamed(inventory_, name));
  });
}

MapManager::MapManager(Paging paging, Inventory& inventory)
    : ManagerServant(std::move(paging), inventory,
                     {"getAllNodes", "getAllSubMaps", "getAllDisplayLinks", "getMapObject"}) {}

void MapManager::getAllNodes(CORBA::ULong howMany, ObjectsOut list, ObjectsLeft it) {
  answer("getAllNodes", howMany, list, it, allNodes);
}

void MapManager::getAllSubMaps(CORBA::ULong howMany, ObjectsOut list, ObjectsLeft it) {
  answer("getAllSubMaps", howMany, list, it, allSubMaps);
}

void MapManager::getAllDisplayLinks(CORBA::ULong howMany, ObjectsOut list, ObjectsLeft it) {
  answer("getAllDisplayLinks", howMany, list, it, allDisplayLinks);
}

void MapManager::getMapObject(const Name& name, topologyMap::MapObject_T_out object) {
  refusingFailures("getMapObject", [&] {
    object = new topologyMap::MapObject_T(mapObjectNamed(inventory_, name));
  });
}

}  // namespace zk::agent
