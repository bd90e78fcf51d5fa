#include "agent/managers/commonoperations.h"

#include <cstring>
#include <memory>

#include "agent/ems/emsrequest.h"
#include "agent/tmf/errors.h"
#include "agent/tmf/objectnames.h"
#include "zk_quornex/mo/commonfunc.h"

namespace zk::agent {

using namespace NS_QUORCORBA;

namespace {

constexpr std::size_t longestText = 252;

void refuseFailure(unsigned long code, const globaldefs::NVSList_T& name) {
  if (code == RESULT_NOT_SUPPORTED) {
    throw notImplemented();
  }
  if (code != RESULT_OK) {
    throw refusalOf(code, name);
  }
}

void add(common::CapabilityList_T& list, const char* operation) {
  const CORBA::ULong last = list.length();
  list.length(last + 1);
  list[last].name = CORBA::string_dup(operation);
  list[last].value = CORBA::string_dup("Supported");
}

}  // namespace

// The EMS checks uniqueness itself, so the setter's own refusal is never asked
// for; the EMS's services take no arguments and read the request instead.
void CommonOperations::setUserLabel(const globaldefs::NVSList_T& name, const char* label,
                                    bool unique) const {
  guarded("setUserLabel", [&] {
    const EmsRequest request(keyOfName(*readName(name)), label, unique);
    refuseFailure(TECommonFunc::OnSetUserLabel(name, label, false), name);
  });
}

void CommonOperations::setOwner(const globaldefs::NVSList_T& name, const char* owner) const {
  guarded("setOwner", [&] {
    const EmsRequest request(keyOfName(*readName(name)), owner);
    refuseFailure(TECommonFunc::OnSetOwner(name, owner), name);
  });
}

// The library only reports a native name: storing it, and bounding it as the
// other texts are, is done here.
void CommonOperations::setNativeName(const globaldefs::NVSList_T& name,
                                     const char* nativeName) const {
  guarded("setNativeEMSName", [&] {
    const std::unique_ptr<TEName> object = readName(name);
    const ObjectKey key = keyOfName(*object);
    if (std::strlen(nativeName) > longestText) {
      throw refusalOf(RESULT_TEXT_TOO_LONG, name);
    }
    refuseFailure(codeOf(inventory_.setNativeName(key, nativeName, {false, Origin::Nms})), name);
    TECommonFunc::OnSetNativeEmsName(object.get(), nativeName);
  });
}

common::CapabilityList_T capabilitiesOf(const OperationNames& operations) {
  common::CapabilityList_T list;
  for (const char* operation :
       {"setNativeEMSName", "setUserLabel", "setOwner", "getCapabilities"}) {
    add(list, operation);
  }
  for (const char* operation : operations) {
    add(list, operation);
  }
  return list;
}

void refuseAdditionalInfo() { throw notImplemented(); }

}  // namespace zk::agent
