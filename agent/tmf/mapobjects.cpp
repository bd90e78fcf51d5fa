#include "agent/tmf/mapobjects.h"

#include "agent/tmf/internalnames.h"

namespace zk::agent {

namespace {

using topologyMap::MapObject_T;

MapObject_T labelled(const ObjectRecord& object, const Labels& labels) {
  MapObject_T result;
  result.name = nmsNameOf(object);
  result.userLabel = CORBA::string_dup(labels.userLabel.c_str());
  result.nativeEMSName = CORBA::string_dup(labels.nativeName.c_str());
  result.owner = CORBA::string_dup(labels.owner.c_str());
  return result;
}

void addInfo(MapObject_T& object, const char* name, const std::string& value) {
  const CORBA::ULong last = object.additionalInfo.length();
  object.additionalInfo.length(last + 1);
  object.additionalInfo[last].name = CORBA::string_dup(name);
  object.additionalInfo[last].value = CORBA::string_dup(value.c_str());
}

}  // namespace

MapObject_T mapObjectOf(const NodeRecord& node) {
  MapObject_T result = labelled(node, node);
  addInfo(result, "managedElement", std::to_string(node.deviceId));
  return result;
}

MapObject_T mapObjectOf(const SubMapRecord& subMap) { return labelled(subMap, subMap); }

MapObject_T mapObjectOf(const DisplayLinkRecord& displayLink) {
  MapObject_T result = labelled(displayLink, displayLink);
  addInfo(result, "aEnd", displayLink.aEndId);
  addInfo(result, "zEnd", displayLink.zEndId);
  return result;
}

MapObject_T mapObjectOf(const PhysicalLinkRecord& physicalLink) {
  MapObject_T result = labelled(physicalLink, {});
  addInfo(result, "topologicalLink", physicalLink.linkId);
  return result;
}

}  // namespace zk::agent
