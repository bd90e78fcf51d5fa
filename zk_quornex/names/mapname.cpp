#include "zk_quornex/names/mapname.h"

#include <cstring>
#include <map>

#include "zk_quornex/names/nameparse.h"
#include "zk_quornex/names/pairs.h"
#include "zk_quornex/platform/config.h"

namespace NS_QUORCORBA {

namespace {

constexpr char PHYSICAL_ROOT_SUBMAP[] = "VTMAP_PHY_SUBMAP";

// Reads the parent and the id by their keys; an absent key gives an empty text.
bool readMapPath(const char* text, std::string& parentId, std::string& id) {
  std::map<std::string, std::string> pairs;
  if (!ParseNameValuePath(text, pairs)) {
    return false;
  }
  parentId = pairs["parentid"];
  id = pairs["id"];
  return true;
}

// What follows the first "=" of a segment, or the whole segment.
std::string afterEquals(const std::string& segment) {
  const std::size_t equals = segment.find('=');
  return equals == std::string::npos ? segment : segment.substr(equals + 1);
}

void writeMapPath(globaldefs::NameAndStringValue_T& pair, const std::string& parentId,
                  const std::string& id) {
  std::string text("/parentid=");
  text += parentId;
  text += "/id=";
  text += id;
  pair.value = CORBA::string_dup(text.c_str());
}

}  // namespace

CANodeName::CANodeName() { type_ = NAME_NODE; }

CANodeName::~CANodeName() = default;

unsigned long CANodeName::Nms2EmsName(const globaldefs::NVSList_T& name) {
  const unsigned long result = readTwoLevels(name, "Node", emsName_);
  if (result != RESULT_OK) {
    return result;
  }
  if (!readMapPath(name[1].value.in(), parentId_, id_)) {
    return RESULT_BAD_NAME;
  }
  return id_.empty() ? RESULT_BAD_NAME : RESULT_OK;
}

unsigned long CANodeName::Ems2NmsName(globaldefs::NVSList_T& name) {
  if (id_.empty()) {
    return RESULT_EMPTY_NAME;
  }
  writeMapPath(writeTwoLevels(name, emsName_, "Node"), parentId_.empty() ? "AllSubMap" : parentId_,
               id_);
  return RESULT_OK;
}

unsigned long CANodeName::Accept(Name_Visitor*) { return RESULT_OK; }

CASubMapName::CASubMapName() { type_ = NAME_SUBMAP; }

CASubMapName::~CASubMapName() = default;

unsigned long CASubMapName::Nms2EmsName(const globaldefs::NVSList_T& name) {
  const unsigned long result = readTwoLevels(name, "SubMap", emsName_);
  if (result != RESULT_OK) {
    return result;
  }
  const char* text = name[1].value.in();
  if (text == nullptr || *text != '/') {
    return RESULT_BAD_NAME;
  }
  const char* parent = text + 1;
  const char* slash = std::strchr(parent, '/');
  if (slash == nullptr) {
    return RESULT_BAD_NAME;
  }
  parentId_ = afterEquals(std::string(parent, slash));
  id_ = afterEquals(slash + 1);
  if (id_ == PHYSICAL_ROOT_SUBMAP) {
    id_ = "/";
  }
  return id_.empty() || parentId_.empty() ? RESULT_BAD_NAME : RESULT_OK;
}

unsigned long CASubMapName::Ems2NmsName(globaldefs::NVSList_T& name) {
  if (id_.empty()) {
    return RESULT_EMPTY_NAME;
  }
  // Deliberately another spelling than for a node.
  writeMapPath(writeTwoLevels(name, emsName_, "SubMap"),
               parentId_.empty() ? "AllSubmap" : parentId_, id_);
  return RESULT_OK;
}

unsigned long CASubMapName::Accept(Name_Visitor*) { return RESULT_OK; }

CADispLinkName::CADispLinkName() { type_ = NAME_DISPLAY_LINK; }

CADispLinkName::~CADispLinkName() = default;

unsigned long CADispLinkName::Nms2EmsName(const globaldefs::NVSList_T& name) {
  const unsigned long result = readTwoLevels(name, "DisplayLink", emsName_);
  if (result != RESULT_OK) {
    return result;
  }
  if (!readMapPath(name[1].value.in(), parentId_, id_)) {
    return RESULT_BAD_NAME;
  }
  return id_.empty() || parentId_.empty() ? RESULT_BAD_NAME : RESULT_OK;
}

unsigned long CADispLinkName::Ems2NmsName(globaldefs::NVSList_T& name) {
  if (id_.empty() || parentId_.empty()) {
    return RESULT_EMPTY_NAME;
  }
  writeMapPath(writeTwoLevels(name, emsName_, "DisplayLink"), parentId_, id_);
  return RESULT_OK;
}

unsigned long CADispLinkName::Accept(Name_Visitor*) { return RESULT_OK; }

CAPhyLinkName::CAPhyLinkName() { type_ = NAME_PHYSICAL_LINK; }

CAPhyLinkName::~CAPhyLinkName() = default;

unsigned long CAPhyLinkName::Nms2EmsName(const globaldefs::NVSList_T& name) {
  const unsigned long result = readTwoLevels(name, "PhysicalLink", emsName_);
  if (result != RESULT_OK) {
    return result;
  }
  return AssignNonEmpty(name[1].value.in(), id_) ? RESULT_OK : RESULT_BAD_NAME;
}

unsigned long CAPhyLinkName::Ems2NmsName(globaldefs::NVSList_T& name) {
  if (id_.empty()) {
    return RESULT_EMPTY_NAME;
  }
  const std::string& emsName = NS_CORBA::CorbaBaseAgentConfig::Instance()->EmsName();
  writeTwoLevels(name, emsName, "PhysicalLink").value = CORBA::string_dup(id_.c_str());
  return RESULT_OK;
}

unsigned long CAPhyLinkName::Accept(Name_Visitor*) { return RESULT_OK; }

}  // namespace NS_QUORCORBA
