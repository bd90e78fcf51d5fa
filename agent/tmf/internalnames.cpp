#include "agent/tmf/internalnames.h"

#include "agent/tmf/errors.h"

namespace zk::agent {

using namespace NS_QUORCORBA;

namespace {

// The physical root's own id is the character that separates the layers of a
// map name, so as a parent it goes by the text that the NMS has for it.
std::string parentText(const std::string& parentId) {
  return parentId == ROOT_SUBMAP_ID ? "VTMAP_PHY_SUBMAP" : parentId;
}

template <class Name, class Record>
std::unique_ptr<TEName> mapName(const Record& record) {
  auto name = std::make_unique<Name>();
  name->id_ = record.id;
  name->parentId_ = parentText(record.parentId);
  return name;
}

struct NameOf {
  std::unique_ptr<TEName> operator()(const EmsRecord&) const { return std::make_unique<TEName>(); }
  std::unique_ptr<TEName> operator()(const DeviceRecord& record) const {
    auto name = std::make_unique<TEMEName>();
    name->meId_ = static_cast<unsigned long>(record.id);
    return name;
  }
  std::unique_ptr<TEName> operator()(const SubnetworkRecord& record) const {
    auto name = std::make_unique<TESubnetworkName>();
    name->subnetId_ = record.id;
    return name;
  }
  std::unique_ptr<TEName> operator()(const LinkRecord& record) const {
    auto name = std::make_unique<TETopoLinkName>();
    name->topoLinkId_ = record.id;
    return name;
  }
  std::unique_ptr<TEName> operator()(const NodeRecord& record) const {
    return mapName<CANodeName>(record);
  }
  std::unique_ptr<TEName> operator()(const SubMapRecord& record) const {
    return mapName<CASubMapName>(record);
  }
  std::unique_ptr<TEName> operator()(const DisplayLinkRecord& record) const {
    return mapName<CADispLinkName>(record);
  }
  std::unique_ptr<TEName> operator()(const PhysicalLinkRecord& record) const {
    auto name = std::make_unique<CAPhyLinkName>();
    name->id_ = record.id;
    return name;
  }
};

}  // namespace

std::unique_ptr<TEName> internalNameOf(const ObjectRecord& object) {
  return std::visit(NameOf(), object);
}

globaldefs::NVSList_T nmsNameOf(const ObjectRecord& object) {
  globaldefs::NVSList_T name;
  if (TENameConvert::EmsToNmsNameConvert(internalNameOf(object).get(), name) != RESULT_OK) {
    throw refusal(globaldefs::EXCPT_INTERNAL_ERROR, "an object of the EMS cannot be named");
  }
  return name;
}

}  // namespace zk::agent
