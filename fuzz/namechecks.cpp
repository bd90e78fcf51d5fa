#include "namechecks.h"

#include "input.h"
#include "zk_quornex/idl/names.h"
#include "zk_quornex/names/nameconvert.h"

namespace zk::fuzz {

namespace {

using namespace NS_QUORCORBA;

template <class Name>
const Name* as(const TEName& name) {
  return dynamic_cast<const Name*>(&name);
}

std::string mapText(const TEName& name) {
  if (const auto* node = as<CANodeName>(name)) {
    return "node [" + node->parentId_ + "] [" + node->id_ + "]";
  }
  if (const auto* submap = as<CASubMapName>(name)) {
    return "submap [" + submap->parentId_ + "] [" + submap->id_ + "]";
  }
  if (const auto* link = as<CADispLinkName>(name)) {
    return "display link [" + link->parentId_ + "] [" + link->id_ + "]";
  }
  if (const auto* link = as<CAPhyLinkName>(name)) {
    return "physical link [" + link->id_ + "]";
  }
  return "";
}

std::string treeText(const TEName& name) {
  if (const auto* element = as<TEMEName>(name)) {
    return "element " + std::to_string(element->meId_);
  }
  if (const auto* subnetwork = as<TESubnetworkName>(name)) {
    return "subnetwork [" + subnetwork->subnetId_ + "]";
  }
  if (const auto* link = as<TETopoLinkName>(name)) {
    return "link [" + link->topoLinkId_ + "]";
  }
  return "";
}

std::string pathText(const TEName& name) {
  std::string text;
  if (const auto* aid = as<CAAIDName>(name)) {
    for (const long number : aid->ids_) {
      text += "/" + std::to_string(number);
    }
  }
  return text;
}

// The names that are not written: an identifier beyond 11 digits has no text.
bool hasText(const TEName& name) {
  const auto* element = as<TEMEName>(name);
  return element == nullptr || element->meId_ <= 99999999999UL;
}

// The names that are written but not read back: a number path behind a negative
// first number, which no managed element can have.
bool isReadBack(const TEName& name) {
  const auto* aid = as<CAAIDName>(name);
  return aid == nullptr || aid->ids_.front() >= 0;
}

}  // namespace

std::string dump(const TEName& name) {
  return std::to_string(name.type_) + " " + name.emsName_ + " " + treeText(name) + mapText(name) +
         pathText(name);
}

// A missing parent is written as a text of its own, which is then the parent.
std::string dumpOfReread(const TEName& name) {
  if (const auto* node = as<CANodeName>(name); node != nullptr && node->parentId_.empty()) {
    CANodeName same(*node);
    same.parentId_ = "AllSubMap";
    return dump(same);
  }
  return dump(name);
}

bool isKnownCode(unsigned long code) {
  switch (code) {
    case RESULT_OK:
    case RESULT_BAD_NAME:
    case RESULT_EMPTY_NAME:
    case RESULT_OTHER_EMS:
    case RESULT_NO_ELEMENT_ID:
    case RESULT_LINK_REFUSED:
    case RESULT_SUBNETWORK_REFUSED:
      return true;
    default:
      return false;
  }
}

void checkWayBack(TEName& name, TEName& back) {
  globaldefs::NVSList_T written;
  const unsigned long code = TENameConvert::EmsToNmsNameConvert(&name, written);
  if (!hasText(name)) {
    ZK_FUZZ_CHECK(code == RESULT_EMPTY_NAME);
    return;
  }
  ZK_FUZZ_CHECK(code == RESULT_OK);
  if (!isReadBack(name)) {
    ZK_FUZZ_CHECK(back.Nms2EmsName(written) == RESULT_BAD_NAME);
    return;
  }
  ZK_FUZZ_CHECK(back.Nms2EmsName(written) == RESULT_OK);
  ZK_FUZZ_CHECK(dump(back) == dumpOfReread(name));
}

}  // namespace zk::fuzz
