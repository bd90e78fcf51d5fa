// From the EMS's own records to the TMF 814 records that the NMS is answered
// with. No state; any thread may call.
#ifndef ZK_MO_MOADAPTER_H
#define ZK_MO_MOADAPTER_H

#include "zk_quornex/idl/managers.h"
#include "zk_quornex/names/codes.h"
#include "zk_quornex/platform/ems.h"

namespace NS_QUORCORBA {

class ZK_EXPORT CAMOAdapter {
 public:
  // Fills everything but additionalInfo. Returns 0, or the code of the EMS
  // name's conversion with the other members as they were.
  static unsigned long AdapterEms(emsMgr::EMS_T& ems);

  // Fills everything but additionalInfo; supportedRates comes out empty. The
  // version is asked for by the low 32 bits of the device's id, which is all
  // that its service takes. Returns 0, or the first code other than 0 of the
  // version, the location (both with me untouched) and the name.
  static unsigned long AdapterMe(const Device& device, managedElement::ManagedElement_T& me);
};

}  // namespace NS_QUORCORBA

#endif
