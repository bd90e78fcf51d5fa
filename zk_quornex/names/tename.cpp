#include "zk_quornex/names/tename.h"

#include <safeclib/safe_str_lib.h>

#include "zk_quornex/names/debuglog.h"
#include "zk_quornex/names/nameparse.h"
#include "zk_quornex/names/namevalidate.h"
#include "zk_quornex/names/pairs.h"
#include "zk_quornex/platform/config.h"

namespace NS_QUORCORBA {

namespace {

constexpr unsigned long LARGEST_WRITTEN_ID = 99999999999;  // 11 digits

// Lets the visitor judge the name by its own class and replaces whatever it
// answers other than 0 by the code that tells the kind of name.
template <class Name>
unsigned long acceptAs(Name* name, Name_Visitor* visitor, ResultCode refusal) {
  if (!assertHolds(visitor != nullptr, "nameconvert", "0 != visitor")) {
    return refusal;
  }
  return visitor->Visit(name) == 0 ? RESULT_OK : refusal;
}

// The two kinds whose identifier is a text that the validating visitor judges.
unsigned long readIdText(TEName& object, const globaldefs::NVSList_T& name, const char* key,
                         std::string& id) {
  const unsigned long result = readTwoLevels(name, key, object.emsName_);
  if (result != RESULT_OK) {
    return result;
  }
  if (!AssignNonEmpty(name[1].value.in(), id)) {
    return RESULT_BAD_NAME;
  }
  Name_Validate_Visitor visitor;
  return object.Accept(&visitor);
}

unsigned long writeIdText(const TEName& object, globaldefs::NVSList_T& name, const char* key,
                          const std::string& id) {
  if (id.empty()) {
    return RESULT_EMPTY_NAME;
  }
  writeTwoLevels(name, object.emsName_, key).value = CORBA::string_dup(id.c_str());
  return RESULT_OK;
}

}  // namespace

TEName::TEName()
    : type_(NAME_EMS), emsName_(NS_CORBA::CorbaBaseAgentConfig::Instance()->EmsName()) {}

TEName::~TEName() = default;

unsigned long TEName::Nms2EmsName(const globaldefs::NVSList_T& name) {
  if (name.length() != 1 || !sameText(name[0].name.in(), "EMS")) {
    return RESULT_BAD_NAME;
  }
  if (!isThisEms(name[0].value.in())) {
    return RESULT_OTHER_EMS;
  }
  emsName_ = NS_CORBA::CorbaBaseAgentConfig::Instance()->EmsName();
  return RESULT_OK;
}

unsigned long TEName::Ems2NmsName(globaldefs::NVSList_T& name) {
  name.length(1);
  setPair(name[0], "EMS", emsName_.c_str());
  return RESULT_OK;
}

unsigned long TEName::Accept(Name_Visitor* visitor) {
  return acceptAs(this, visitor, RESULT_OTHER_EMS);
}

TEMEName::TEMEName() : meId_(0) { type_ = NAME_MANAGED_ELEMENT; }

TEMEName::~TEMEName() = default;

unsigned long TEMEName::Nms2EmsName(const globaldefs::NVSList_T& name) {
  const unsigned long result = readTwoLevels(name, "ManagedElement", emsName_);
  if (result != RESULT_OK) {
    return result;
  }
  if (!ParseID(name[1].value.in(), meId_)) {
    return RESULT_BAD_NAME;
  }
  return meId_ != 0 ? RESULT_OK : RESULT_NO_ELEMENT_ID;
}

unsigned long TEMEName::Ems2NmsName(globaldefs::NVSList_T& name) {
  if (meId_ == 0) {
    return RESULT_EMPTY_NAME;
  }
  globaldefs::NameAndStringValue_T& pair = writeTwoLevels(name, emsName_, "ManagedElement");
  // Asked before formatting: what does not fit would go to the process's
  // constraint handler, and NMSs can name such an element.
  if (meId_ > LARGEST_WRITTEN_ID) {
    return RESULT_EMPTY_NAME;
  }
  char text[12] = {};
  snprintf_s(text, sizeof(text), "%lu", meId_);
  pair.value = CORBA::string_dup(text);
  return RESULT_OK;
}

unsigned long TEMEName::Accept(Name_Visitor* visitor) {
  return acceptAs(this, visitor, RESULT_NO_ELEMENT_ID);
}

TESubnetworkName::TESubnetworkName() : subnetId_("1") { type_ = NAME_SUBNETWORK; }

TESubnetworkName::~TESubnetworkName() = default;

unsigned long TESubnetworkName::Nms2EmsName(const globaldefs::NVSList_T& name) {
  return readIdText(*this, name, "MultiLayerSubnetwork", subnetId_);
}

unsigned long TESubnetworkName::Ems2NmsName(globaldefs::NVSList_T& name) {
  return writeIdText(*this, name, "MultiLayerSubnetwork", subnetId_);
}

unsigned long TESubnetworkName::Accept(Name_Visitor* visitor) {
  return acceptAs(this, visitor, RESULT_SUBNETWORK_REFUSED);
}

TETopoLinkName::TETopoLinkName() { type_ = NAME_TOPOLOGICAL_LINK; }

TETopoLinkName::~TETopoLinkName() = default;

unsigned long TETopoLinkName::Nms2EmsName(const globaldefs::NVSList_T& name) {
  return readIdText(*this, name, "TopologicalLink", topoLinkId_);
}

unsigned long TETopoLinkName::Ems2NmsName(globaldefs::NVSList_T& name) {
  return writeIdText(*this, name, "TopologicalLink", topoLinkId_);
}

unsigned long TETopoLinkName::Accept(Name_Visitor* visitor) {
  return acceptAs(this, visitor, RESULT_LINK_REFUSED);
}

}  // namespace NS_QUORCORBA
