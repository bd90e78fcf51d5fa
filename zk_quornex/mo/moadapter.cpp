#include "zk_quornex/mo/moadapter.h"

#include <string>

#include "zk_quornex/names/tename.h"
#include "zk_quornex/platform/config.h"

namespace NS_QUORCORBA {

namespace {

constexpr char MAKER[] = "Veltra";

// Only the owner "3000" is kept, deliberately, though no device comes with one.
std::string ownerOf(const std::string& owner) { return owner == "3000" ? owner : MAKER; }

}  // namespace

unsigned long CAMOAdapter::AdapterEms(emsMgr::EMS_T& ems) {
  TEName name;
  const unsigned long result = name.Ems2NmsName(ems.name);
  if (result != RESULT_OK) {
    return result;
  }
  const auto* config = NS_CORBA::CorbaBaseAgentConfig::Instance();
  ems.owner = CORBA::string_dup(MAKER);
  ems.userLabel = CORBA::string_dup("Quor");
  ems.nativeEMSName = CORBA::string_dup(config->EmsName().c_str());
  ems.emsVersion = CORBA::string_dup(config->EmsVersion().c_str());
  ems.type = CORBA::string_dup("Veltra/Quor");
  return RESULT_OK;
}

unsigned long CAMOAdapter::AdapterMe(const Device& device, managedElement::ManagedElement_T& me) {
  TEMEName name;
  name.meId_ = static_cast<unsigned long>(device.id);
  const std::string owner = ownerOf("");

  std::string version;
  unsigned long result = EMFTopoI::getVersionOfDev(static_cast<int>(device.id), version);
  if (result != RESULT_OK) {
    return result;
  }
  std::string location;
  result = EMFTopoI::getLocationOfDev(device.id, location);
  if (result != RESULT_OK) {
    return result;
  }
  result = name.Ems2NmsName(me.name);
  if (result != RESULT_OK) {
    return result;
  }
  me.owner = CORBA::string_dup(owner.c_str());
  me.userLabel = CORBA::string_dup(device.name.c_str());
  me.nativeEMSName = CORBA::string_dup(device.name.c_str());
  me.productName = CORBA::string_dup(device.productName.c_str());
  me.location = CORBA::string_dup(location.c_str());
  me.version = CORBA::string_dup(version.c_str());
  me.emsInSyncState = true;
  me.communicationState = managedElement::CS_AVAILABLE;
  me.supportedRates.length(0);
  return RESULT_OK;
}

}  // namespace NS_QUORCORBA
