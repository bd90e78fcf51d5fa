// The TMF 814 attribute setters: convert the name, let the EMS apply the
// change, and on success report it to the NMS as an attribute-value change. No
// shared state but TEEMS's instance; any thread may call.
#ifndef ZK_MO_COMMONFUNC_H
#define ZK_MO_COMMONFUNC_H

#include "zk_quornex/idl/names.h"
#include "zk_quornex/names/codes.h"
#include "zk_quornex/names/tename.h"

namespace NS_QUORCORBA {

// All return 0 or a result code; a code of the name's conversion or of the EMS
// is passed on as it is. No notification is sent unless the EMS accepted the
// change, and none is awaited; what sending one throws is traced at level 1 and
// goes no further.
class ZK_EXPORT TECommonFunc {
 public:
  // refused: the caller already knows that the change must not be made; returns
  // 0x41180032 before anything else is looked at. Otherwise, in this order: an
  // empty name 0x41180060, a null text 0x4118005F, a text of more than 252
  // characters 0x4118006A, the name's conversion, and the overload below.
  static unsigned long OnSetUserLabel(const globaldefs::NVSList_T& name, const char* userLabel,
                                      bool refused);

  // For a name already converted, which stays the caller's; a null name returns
  // 0x4118005F, and a kind without setters 0x41180032.
  static unsigned long OnSetUserLabel(TEName* name, const char* userLabel);

  // As for the user label, without the flag.
  static unsigned long OnSetOwner(const globaldefs::NVSList_T& name, const char* owner);
  static unsigned long OnSetOwner(TEName* name, const char* owner);

  // Reports a native EMS name that has already changed. Always returns 0.
  static unsigned long OnSetNativeEmsName(TEName* name, const char* nativeEmsName);

  // Not supported: return 0x41180032.
  static unsigned long OnSetNativeEmsName();
  static unsigned long OnsetAdditionalInfo();
};

// Forwards the two setters to the EMS's managed-object service. The instance is
// made on first use without a lock: do not race a first Instance() against
// another or against Destroy().
class ZK_EXPORT TEEMS {
 public:
  static TEEMS* Instance();
  static void Destroy();

  TEEMS(const TEEMS&) = delete;
  TEEMS& operator=(const TEEMS&) = delete;

  unsigned long SetUserLabel() const;
  unsigned long SetOwner() const;

 private:
  TEEMS() = default;

  ZK_HIDDEN static TEEMS* m_pInstance;
};

}  // namespace NS_QUORCORBA

#endif
