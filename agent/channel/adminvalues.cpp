#include "agent/channel/adminvalues.h"

#include "agent/channel/propertychecks.h"

namespace zk::agent {

using namespace CosNotification;

AdminProperties* AdminValues::get() const {
  AdminProperties_var list = new AdminProperties;
  append(list.inout(), "MaxQueueLength", anyOf(CORBA::Long{0}));
  append(list.inout(), "MaxConsumers", anyOf(maxConsumers_));
  append(list.inout(), "MaxSuppliers", anyOf(CORBA::Long{1}));
  append(list.inout(), "RejectNewEvents", anyOfBoolean(true));
  return list._retn();
}

void AdminValues::check(const AdminProperties& properties) const {
  PropertyErrorSeq errors;
  for (CORBA::ULong i = 0; i < properties.length(); ++i) {
    const Property& property = properties[i];
    if (same(property.name, "RejectNewEvents")) {
      checkBoolean(property, true, errors);
    } else if (same(property.name, "MaxQueueLength")) {
      checkNumber<CORBA::Long>(property, 0, errors);
    } else if (same(property.name, "MaxConsumers")) {
      checkNumber<CORBA::Long>(property, maxConsumers_, errors);
    } else if (same(property.name, "MaxSuppliers")) {
      checkNumber<CORBA::Long>(property, 1, errors);
    } else {
      append(errors, BAD_PROPERTY, property.name);
    }
  }
  if (errors.length() != 0) {
    throw UnsupportedAdmin(errors);
  }
}

}  // namespace zk::agent
