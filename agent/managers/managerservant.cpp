#include "agent/managers/managerservant.h"

#include <cstring>

#include "agent/base/sequences.h"
#include "agent/ems/inventorybackend.h"
#include "agent/tmf/errors.h"
#include "agent/tmf/names.h"
#include "zk_quornex/mo/commonfunc.h"
#include "zk_quornex/names/codes.h"

namespace zk::agent {

using namespace NS_QUORCORBA;

namespace {

constexpr std::size_t LONGEST_TEXT = 252;

void throwUnlessOk(unsigned long code, const globaldefs::NVSList_T& name) {
  if (code == RESULT_NOT_SUPPORTED) {
    throw notImplemented();
  }
  if (code != RESULT_OK) {
    throw refusalOf(code, name);
  }
}

}  // namespace

// The EMS checks uniqueness itself, so the setter's own refusal is never asked
// for; the EMS's services take no arguments and read the request instead.
void CommonOperations::setUserLabel(const globaldefs::NVSList_T& name, const char* label,
                                    bool unique) const {
  refusingFailures("setUserLabel", [&] {
    const EmsRequest request(readKey(name), label, unique);
    throwUnlessOk(TECommonFunc::OnSetUserLabel(name, label, false), name);
  });
}

void CommonOperations::setOwner(const globaldefs::NVSList_T& name, const char* owner) const {
  refusingFailures("setOwner", [&] {
    const EmsRequest request(readKey(name), owner);
    throwUnlessOk(TECommonFunc::OnSetOwner(name, owner), name);
  });
}

// The library only reports a native name: storing it, and bounding it as the
// other texts are, is done here.
void CommonOperations::setNativeName(const globaldefs::NVSList_T& name,
                                     const char* nativeName) const {
  refusingFailures("setNativeEMSName", [&] {
    const InternalName object = readName(name);
    const ObjectKey key = keyOfName(*object);
    if (std::strlen(nativeName) > LONGEST_TEXT) {
      throw refusalOf(RESULT_TEXT_TOO_LONG, name);
    }
    throwUnlessOk(codeOf(inventory_.setNativeName(key, nativeName, {false, Origin::NMS})), name);
    TECommonFunc::OnSetNativeEmsName(object.get(), nativeName);
  });
}

common::CapabilityList_T capabilitiesOf(const OperationNames& operations) {
  common::CapabilityList_T list;
  for (const char* operation :
       {"setNativeEMSName", "setUserLabel", "setOwner", "getCapabilities"}) {
    appendPair(list, operation, "Supported");
  }
  for (const char* operation : operations) {
    appendPair(list, operation, "Supported");
  }
  return list;
}

}  // namespace zk::agent
