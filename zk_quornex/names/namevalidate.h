// The check that a name, once read, denotes something this EMS can own. No
// state; any number of visitors may run at once.
#ifndef ZK_NAMES_NAMEVALIDATE_H
#define ZK_NAMES_NAMEVALIDATE_H

#include <string>

#include "zk_quornex/names/codes.h"
#include "zk_quornex/names/tename.h"
#include "zk_quornex/platform/config.h"
#include "zk_quornex/platform/trace.h"

namespace NS_QUORCORBA {

// Each visit returns 0 for a valid name. A null name is traced at level 2 and
// refused with 0x411800CB. Another EMS's name is refused with the raw result
// of comparing the two names, widened with its sign: callers take anything but
// 0 for a refusal. Defined here in whole, so that users of the library need no
// exported symbol for it.
class Name_Validate_Visitor : public Name_Visitor {
 public:
  ~Name_Validate_Visitor() override = default;

  unsigned long Visit(TEName* name) override {
    if (name == nullptr) {
      return refuseNull("Name_Validate_Visitor::Visit fail,TEName *pName is nil", __LINE__);
    }
    const std::string& configured = NS_CORBA::CorbaBaseAgentConfig::Instance()->EmsName();
    return static_cast<unsigned long>(static_cast<long>(configured.compare(name->emsName_)));
  }

  unsigned long Visit(TEMEName* name) override {
    if (name == nullptr) {
      return refuseNull("Name_Validate_Visitor::Visit fail,TEMEName* pName is nil", __LINE__);
    }
    return visitEmsThen(name, [name] { return name->meId_ != 0; });
  }

  // The EMS has one multi-layer subnetwork, and its id is "1".
  unsigned long Visit(TESubnetworkName* name) override {
    if (name == nullptr) {
      return refuseNull("Name_Validate_Visitor::Visit fail,TESubnetworkName* pName is nil",
                        __LINE__);
    }
    return visitEmsThen(name, [name] { return name->subnetId_ == "1"; });
  }

  unsigned long Visit(TETopoLinkName* name) override {
    if (name == nullptr) {
      return refuseNull("Name_Validate_Visitor::Visit fail,TETopoLinkName* pName is nil", __LINE__);
    }
    return visitEmsThen(name, [name] { return !name->topoLinkId_.empty(); });
  }

 private:
  static unsigned long refuseNull(const char* message, int line) {
    NS_CORBA::SetTraceOrigin("namevalidate", line);
    NS_CORBA::TaDebug(2, message);
    return RESULT_OTHER_EMS;
  }

  // Through the virtual slot, so that a subclass's own check of the EMS counts. It
  // may change the name: the id is judged afterwards.
  template <class Check>
  unsigned long visitEmsThen(TEName* name, Check idIsValid) {
    const unsigned long result = Visit(name);
    if (result != 0) {
      return result;
    }
    return idIsValid() ? RESULT_OK : RESULT_OTHER_EMS;
  }
};

}  // namespace NS_QUORCORBA

#endif
