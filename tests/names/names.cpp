#include "tests/names/names.h"

namespace zk::test {

namespace {

using namespace NS_QUORCORBA;

template <class Name>
std::unique_ptr<TEName> make() {
  return std::make_unique<Name>();
}

std::string joined(const std::vector<long>& numbers) {
  std::string text;
  for (const long number : numbers) {
    text += (text.empty() ? "" : ",") + std::to_string(number);
  }
  return text;
}

std::string describeTree(const TEName& name) {
  if (const auto* element = dynamic_cast<const TEMEName*>(&name)) {
    return " me=" + std::to_string(element->meId_);
  }
  if (const auto* subnetwork = dynamic_cast<const TESubnetworkName*>(&name)) {
    return " subnet=" + subnetwork->subnetId_;
  }
  if (const auto* link = dynamic_cast<const TETopoLinkName*>(&name)) {
    return " link=" + link->topoLinkId_;
  }
  return "";
}

template <class Name>
std::string describeMapObject(const TEName& name) {
  const auto* object = dynamic_cast<const Name*>(&name);
  return object == nullptr ? "" : " id=" + object->id_ + " parent=" + object->parentId_;
}

std::string describeMap(const TEName& name) {
  if (const auto* link = dynamic_cast<const CAPhyLinkName*>(&name)) {
    return " id=" + link->id_;
  }
  if (const auto* inside = dynamic_cast<const CAAIDName*>(&name)) {
    return " ids=" + joined(inside->ids_);
  }
  return describeMapObject<CANodeName>(name) + describeMapObject<CASubMapName>(name) +
         describeMapObject<CADispLinkName>(name);
}

}  // namespace

std::string describe(const TEName& name) {
  return std::to_string(name.type_) + " " + name.emsName_ + describeTree(name) + describeMap(name);
}

const std::vector<TwoLevelKind> TWO_LEVEL_KINDS = {
    {"ManagedElement", make<TEMEName>, "7", "12a", false},
    {"MultiLayerSubnetwork", make<TESubnetworkName>, "1", "", false},
    {"TopologicalLink", make<TETopoLinkName>, "5", "", false},
    {"Node", make<CANodeName>, "/parentid=3/id=17", "id=17", false},
    {"SubMap", make<CASubMapName>, "/parentid=3/id=17", "/parentid=3", false},
    {"DisplayLink", make<CADispLinkName>, "/parentid=3/id=17", "id=17", false},
    {"PhysicalLink", make<CAPhyLinkName>, "42", "", true},
};

}  // namespace zk::test
