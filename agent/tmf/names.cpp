#include "agent/tmf/names.h"

#include <algorithm>
#include <array>
#include <string>

#include "agent/base/log.h"
#include "agent/base/sequences.h"
#include "agent/tmf/errors.h"
#include "zk_quornex/names/nameconvert.h"

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

// The identifier of a name that has to be of this kind. The kind is checked
// first: what it then converts to is of its class.
ObjectKey readKeyOf(ObjectKind kind, const globaldefs::NVSList_T& name) {
  const std::string expected = pairNameOf(kind);
  if (name.length() != 0 && expected != static_cast<const char*>(name[name.length() - 1].name)) {
    throw refusal(globaldefs::EXCPT_INVALID_INPUT,
                  "expected the name of a " + expected + ": " + printableName(name));
  }
  return readKey(name);
}

constexpr char NMS_ROOT_SUBMAP[] = "VTMAP_PHY_SUBMAP";

// What a parent's text in a map object's name means to the EMS. Nodes and submaps
// without a known parent carry one of two texts for "any submap".
std::string parentIdOf(const std::string& text) {
  if (text == "AllSubMap" || text == "AllSubmap") {
    return {};
  }
  return text == NMS_ROOT_SUBMAP ? ROOT_SUBMAP_ID : text;
}

template <class Name>
ObjectKey mapKey(ObjectKind kind, const TEName& name) {
  const auto& mapName = static_cast<const Name&>(name);
  return {kind, mapName.id_, parentIdOf(mapName.parentId_)};
}

// The physical root's own id is the character that separates the layers of a
// map name, so as a parent it goes by the text that the NMS has for it.
template <class Name>
InternalName mapName(const ObjectKey& key) {
  auto* const name = new Name;
  InternalName result(name);
  name->id_ = key.id;
  name->parentId_ = key.parentId == ROOT_SUBMAP_ID ? NMS_ROOT_SUBMAP : key.parentId;
  return result;
}

template <class Name, class Field, class Value>
InternalName nameWith(Field Name::*field, const Value& value) {
  auto* const name = new Name;
  InternalName result(name);
  name->*field = value;
  return result;
}

struct Kind {
  const char* name;
  ObjectKind value;
  const char* pairName;
};

constexpr std::array<Kind, 8> KINDS{{{"ems", ObjectKind::EMS, "EMS"},
                                     {"subnetwork", ObjectKind::SUBNETWORK, "MultiLayerSubnetwork"},
                                     {"device", ObjectKind::DEVICE, "ManagedElement"},
                                     {"link", ObjectKind::LINK, "TopologicalLink"},
                                     {"node", ObjectKind::NODE, ""},
                                     {"submap", ObjectKind::SUB_MAP, ""},
                                     {"display-link", ObjectKind::DISPLAY_LINK, ""},
                                     {"physical-link", ObjectKind::PHYSICAL_LINK, ""}}};

struct Label {
  const char* name;
  Attribute value;
};

constexpr std::array<Label, 3> LABELS{{{"userLabel", Attribute::USER_LABEL},
                                       {"owner", Attribute::OWNER},
                                       {"nativeEMSName", Attribute::NATIVE_NAME}}};

template <class Table>
auto valueNamed(const Table& table, const char* what, const char* text) {
  std::string known;
  for (const auto& row : table) {
    if (std::string(row.name) == text) {
      return row.value;
    }
    known += (known.empty() ? "" : ", ") + std::string(row.name);
  }
  throw refusal(globaldefs::EXCPT_INVALID_INPUT, std::string("no ") + what + " is called '" +
                                                     printable(text) + "'; there are " + known);
}

// Every value has its row.
template <class Table, class Value>
const auto& rowOf(const Table& table, Value value) {
  return *std::find_if(table.begin(), table.end(),
                       [value](const auto& row) { return row.value == value; });
}

}  // namespace

void DeleteName::operator()(TEName* name) const { delete name; }

InternalName readName(const globaldefs::NVSList_T& name) {
  TEName* made = nullptr;
  const unsigned long code = TENameConvert::NmsToEmsNameConvert(name, made);
  if (code != RESULT_OK) {
    throw refusalOf(code, name);
  }
  InternalName result(made);
  if (result->type_ == NAME_MANAGED_ELEMENT) {
    refuseChangedId(static_cast<TEMEName&>(*result), name);
  }
  return result;
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
      return mapKey<CANodeName>(ObjectKind::NODE, name);
    case NAME_SUBMAP:
      return mapKey<CASubMapName>(ObjectKind::SUB_MAP, name);
    case NAME_DISPLAY_LINK:
      return mapKey<CADispLinkName>(ObjectKind::DISPLAY_LINK, name);
    default:
      throw refusal(globaldefs::EXCPT_NOT_IMPLEMENTED, "not supported for this kind of object");
  }
}

ObjectKey readKey(const globaldefs::NVSList_T& name) { return keyOfName(*readName(name)); }

long readDeviceId(const globaldefs::NVSList_T& name) {
  return std::stol(readKeyOf(ObjectKind::DEVICE, name).id);
}

std::string readLinkId(const globaldefs::NVSList_T& name) {
  return readKeyOf(ObjectKind::LINK, name).id;
}

std::string readSubnetworkId(const globaldefs::NVSList_T& name) {
  return readKeyOf(ObjectKind::SUBNETWORK, name).id;
}

bool canNameMapObject(const std::string& id) {
  return id.find_first_of("/=") == std::string::npos && parentIdOf(id) == id;
}

InternalName internalNameOf(const ObjectKey& key) {
  switch (key.kind) {
    case ObjectKind::EMS:
      return InternalName(new TEName);
    case ObjectKind::DEVICE:
      return nameWith(&TEMEName::meId_, std::stoul(key.id));
    case ObjectKind::SUBNETWORK:
      return nameWith(&TESubnetworkName::subnetId_, key.id);
    case ObjectKind::LINK:
      return nameWith(&TETopoLinkName::topoLinkId_, key.id);
    case ObjectKind::NODE:
      return mapName<CANodeName>(key);
    case ObjectKind::SUB_MAP:
      return mapName<CASubMapName>(key);
    case ObjectKind::DISPLAY_LINK:
      return mapName<CADispLinkName>(key);
    case ObjectKind::PHYSICAL_LINK:
      break;
  }
  return nameWith(&CAPhyLinkName::id_, key.id);
}

globaldefs::NVSList_T nmsNameOf(const ObjectKey& key) {
  globaldefs::NVSList_T name;
  if (TENameConvert::EmsToNmsNameConvert(internalNameOf(key).get(), name) != RESULT_OK) {
    throw refusal(globaldefs::EXCPT_INTERNAL_ERROR, "an object of the EMS cannot be named");
  }
  return name;
}

globaldefs::NVSList_T nmsNameOf(const LinkEnd& end) {
  globaldefs::NVSList_T name =
      nmsNameOf(ObjectKey::device(static_cast<unsigned long>(end.deviceId)));
  appendPair(name, "PTP", end.port);
  return name;
}

ObjectKind kindNamed(const char* text) { return valueNamed(KINDS, "kind of object", text); }

Attribute labelNamed(const char* text) { return valueNamed(LABELS, "label", text); }

const char* nameOfLabel(Attribute label) { return rowOf(LABELS, label).name; }

const char* pairNameOf(ObjectKind kind) { return rowOf(KINDS, kind).pairName; }

}  // namespace zk::agent
