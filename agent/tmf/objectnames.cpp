#include "agent/tmf/objectnames.h"

#include <cstring>

#include "agent/tmf/errors.h"

namespace zk::agent {

using namespace NS_QUORCORBA;

namespace {

// Digits without what does not count: blanks around and zeros in front.
std::string significant(const char* text) {
  std::string digits(text);
  const std::size_t first = digits.find_first_not_of(" \t\r\n\v\f0");
  const std::size_t last = digits.find_last_not_of(" \t\r\n\v\f");
  return first == std::string::npos ? "" : digits.substr(first, last - first + 1);
}

// The library keeps the low 32 bits of a managed element's identifier. Here the
// NMS must not reach element 7 by the name 4294967303, so the identifier as the
// library writes it back has to be the one that was given.
void refuseChangedId(TEMEName& read, const globaldefs::NVSList_T& name) {
  globaldefs::NVSList_T written;
  if (read.Ems2NmsName(written) != RESULT_OK ||
      significant(written[1].value) != significant(name[1].value)) {
    throw refusalOf(RESULT_NO_ELEMENT_ID, name);
  }
}

void expectKind(const globaldefs::NVSList_T& name, const char* kind) {
  if (name.length() != 0 && std::strcmp(name[name.length() - 1].name, kind) != 0) {
    throw refusal(globaldefs::EXCPT_INVALID_INPUT,
                  std::string("expected the name of a ") + kind + ": " + describe(name));
  }
}

// The name must already be known to end in the pair of this class.
template <class Name>
Name readAs(const globaldefs::NVSList_T& name) {
  return static_cast<const Name&>(*readName(name));
}

template <class Name>
ObjectKey mapKey(ObjectKind kind, const TEName& name) {
  const auto& mapName = static_cast<const Name&>(name);
  return ObjectKey::mapObject(kind, mapName.id_, mapName.parentId_);
}

globaldefs::NVSList_T written(TEName& name) {
  globaldefs::NVSList_T result;
  const unsigned long code = TENameConvert::EmsToNmsNameConvert(&name, result);
  if (code != RESULT_OK) {
    throw refusal(globaldefs::EXCPT_INTERNAL_ERROR, "an object of the EMS cannot be named");
  }
  return result;
}

void addPair(globaldefs::NVSList_T& name, const char* kind, const std::string& value) {
  const CORBA::ULong last = name.length();
  name.length(last + 1);
  name[last].name = CORBA::string_dup(kind);
  name[last].value = CORBA::string_dup(value.c_str());
}

}  // namespace

std::unique_ptr<TEName> readName(const globaldefs::NVSList_T& name) {
  TEName* made = nullptr;
  const unsigned long code = TENameConvert::NmsToEmsNameConvert(name, made);
  if (code != RESULT_OK) {
    throw refusalOf(code, name);
  }
  std::unique_ptr<TEName> result(made);
  if (result->type_ == NAME_MANAGED_ELEMENT) {
    refuseChangedId(static_cast<TEMEName&>(*result), name);
  }
  return result;
}

long readDeviceId(const globaldefs::NVSList_T& name) {
  expectKind(name, "ManagedElement");
  return static_cast<long>(readAs<TEMEName>(name).meId_);
}

std::string readLinkId(const globaldefs::NVSList_T& name) {
  expectKind(name, "TopologicalLink");
  return readAs<TETopoLinkName>(name).topoLinkId_;
}

std::string readSubnetworkId(const globaldefs::NVSList_T& name) {
  expectKind(name, "MultiLayerSubnetwork");
  return readAs<TESubnetworkName>(name).subnetId_;
}

ObjectKey keyOfName(const TEName& name) {
  switch (name.type_) {
    case NAME_EMS:
      return ObjectKey::ems();
    case NAME_MANAGED_ELEMENT:
      return ObjectKey::device(static_cast<const TEMEName&>(name).meId_);
    case NAME_SUBNETWORK:
      return ObjectKey::subnetwork(static_cast<const TESubnetworkName&>(name).subnetId_);
    case NAME_TOPOLOGICAL_LINK:
      return ObjectKey::link(static_cast<const TETopoLinkName&>(name).topoLinkId_);
    case NAME_NODE:
      return mapKey<CANodeName>(ObjectKind::Node, name);
    case NAME_SUBMAP:
      return mapKey<CASubMapName>(ObjectKind::SubMap, name);
    case NAME_DISPLAY_LINK:
      return mapKey<CADispLinkName>(ObjectKind::DisplayLink, name);
    default:
      throw refusal(globaldefs::EXCPT_NOT_IMPLEMENTED, "not supported for this kind of object");
  }
}

globaldefs::NVSList_T nameOfDevice(long id) {
  TEMEName name;
  name.meId_ = static_cast<unsigned long>(id);
  return written(name);
}

globaldefs::NVSList_T nameOfLink(const std::string& id) {
  TETopoLinkName name;
  name.topoLinkId_ = id;
  return written(name);
}

globaldefs::NVSList_T nameOfSubnetwork(const std::string& id) {
  TESubnetworkName name;
  name.subnetId_ = id;
  return written(name);
}

globaldefs::NVSList_T nameOfPort(const LinkEnd& end) {
  globaldefs::NVSList_T name = nameOfDevice(end.deviceId);
  addPair(name, "PTP", end.port);
  return name;
}

}  // namespace zk::agent
