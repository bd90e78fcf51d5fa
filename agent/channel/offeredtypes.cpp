#include "agent/channel/offeredtypes.h"

#include <array>

namespace zk::agent {

namespace {

constexpr std::array<const char*, 6> names = {
    "NT_OBJECT_CREATION", "NT_OBJECT_DELETION", "NT_ATTRIBUTE_VALUE_CHANGE",
    "NT_STATE_CHANGE",    "NT_ALARM",           "NT_FILE_TRANSFER_STATUS"};

}  // namespace

CosNotification::EventTypeSeq* offeredTypes(CosNotifyChannelAdmin::ObtainInfoMode mode) {
  CosNotification::EventTypeSeq_var types = new CosNotification::EventTypeSeq;
  if (mode == CosNotifyChannelAdmin::ALL_NOW_UPDATES_OFF ||
      mode == CosNotifyChannelAdmin::ALL_NOW_UPDATES_ON) {
    types->length(static_cast<CORBA::ULong>(names.size()));
    for (CORBA::ULong i = 0; i < types->length(); ++i) {
      types[i].domain_name = CORBA::string_dup("tmf_mtnm");
      types[i].type_name = CORBA::string_dup(names[i]);
    }
  }
  return types._retn();
}

}  // namespace zk::agent
