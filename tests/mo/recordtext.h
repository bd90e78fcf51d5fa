// The records that the adapter fills: as text, a line a member, and filled in
// advance with values that no adapter writes.
#ifndef ZK_TESTS_MO_RECORDTEXT_H
#define ZK_TESTS_MO_RECORDTEXT_H

#include <string>

#include "tests/support/dump.h"
#include "zk_quornex/idl/managers.h"

namespace zk::test {

inline std::string line(const char* member, const std::string& value) {
  return std::string(member) + " " + value + "\n";
}

inline std::string recordText(const emsMgr::EMS_T& ems) {
  return line("name", dumpName(ems.name)) + line("userLabel", ems.userLabel.in()) +
         line("nativeEMSName", ems.nativeEMSName.in()) + line("owner", ems.owner.in()) +
         line("emsVersion", ems.emsVersion.in()) + line("type", ems.type.in()) +
         line("additionalInfo", dumpName(ems.additionalInfo));
}

inline std::string recordText(const managedElement::ManagedElement_T& me) {
  return line("name", dumpName(me.name)) + line("userLabel", me.userLabel.in()) +
         line("nativeEMSName", me.nativeEMSName.in()) + line("owner", me.owner.in()) +
         line("location", me.location.in()) + line("version", me.version.in()) +
         line("productName", me.productName.in()) +
         line("communicationState", std::to_string(static_cast<int>(me.communicationState))) +
         line("emsInSyncState", me.emsInSyncState ? "true" : "false") +
         line("supportedRates", std::to_string(me.supportedRates.length())) +
         line("additionalInfo", dumpName(me.additionalInfo));
}

inline emsMgr::EMS_T filledEms() {
  emsMgr::EMS_T ems;
  ems.name = makeName({{"Old", "1"}, {"Older", "2"}});
  ems.userLabel = CORBA::string_dup("old label");
  ems.nativeEMSName = CORBA::string_dup("old native name");
  ems.owner = CORBA::string_dup("old owner");
  ems.emsVersion = CORBA::string_dup("old version");
  ems.type = CORBA::string_dup("old type");
  ems.additionalInfo = makeName({{"Kept", "yes"}});
  return ems;
}

inline managedElement::ManagedElement_T filledMe() {
  managedElement::ManagedElement_T me;
  me.name = makeName({{"Old", "1"}, {"Older", "2"}, {"Oldest", "3"}});
  me.userLabel = CORBA::string_dup("old label");
  me.nativeEMSName = CORBA::string_dup("old native name");
  me.owner = CORBA::string_dup("old owner");
  me.location = CORBA::string_dup("old location");
  me.version = CORBA::string_dup("old version");
  me.productName = CORBA::string_dup("old product");
  me.communicationState = managedElement::CS_UNAVAILABLE;
  me.emsInSyncState = false;
  me.supportedRates.length(3);
  me.supportedRates[0] = 1;
  me.supportedRates[1] = 15;
  me.supportedRates[2] = 20;
  me.additionalInfo = makeName({{"Kept", "yes"}});
  return me;
}

}  // namespace zk::test

#endif
