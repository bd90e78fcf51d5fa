#include "agent/tmf/nmsrecords.h"

#include "agent/base/sequences.h"
#include "agent/tmf/errors.h"
#include "agent/tmf/names.h"
#include "zk_quornex/mo/moadapter.h"

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
  switch (topology) {
    case Topology::SINGLE:
      return multiLayerSubnetwork::TOPO_SINGLETON;
    case Topology::CHAIN:
      return multiLayerSubnetwork::TOPO_CHAIN;
    case Topology::PATH_RING:
      return multiLayerSubnetwork::TOPO_PSR;
    case Topology::OPEN_PATH_RING:
      return multiLayerSubnetwork::TOPO_OPEN_PSR;
    case Topology::SHARED_RING:
      return multiLayerSubnetwork::TOPO_SPRING;
    case Topology::OPEN_SHARED_RING:
      return multiLayerSubnetwork::TOPO_OPEN_SPRING;
    case Topology::MESH:
      break;
  }
  return multiLayerSubnetwork::TOPO_MESH;
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

}  // namespace zk::agent
