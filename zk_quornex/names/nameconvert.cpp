#include "zk_quornex/names/nameconvert.h"

#include <memory>

#include "zk_quornex/names/pairs.h"

namespace NS_QUORCORBA {

namespace {

template <class Name>
std::unique_ptr<TEName> make() {
  return std::make_unique<Name>();
}

struct Kind {
  const char* lastPair;
  std::unique_ptr<TEName> (*make)();
};

constexpr Kind KINDS[] = {
    {"EMS", make<TEName>},
    {"ManagedElement", make<TEMEName>},
    {"MultiLayerSubnetwork", make<TESubnetworkName>},
    {"TopologicalLink", make<TETopoLinkName>},
    {"SubMap", make<CASubMapName>},
    {"Node", make<CANodeName>},
    {"DisplayLink", make<CADispLinkName>},
};

std::unique_ptr<TEName> makeFor(const char* lastPair) {
  for (const Kind& kind : KINDS) {
    if (sameText(lastPair, kind.lastPair)) {
      return kind.make();
    }
  }
  return nullptr;
}

}  // namespace

unsigned long TENameConvert::NmsToEmsNameConvert(const globaldefs::NVSList_T& name,
                                                 TEName*& result) {
  if (name.length() == 0) {
    return RESULT_BAD_NAME;
  }
  std::unique_ptr<TEName> made = makeFor(name[name.length() - 1].name.in());
  if (!made) {
    return RESULT_BAD_NAME;
  }
  result = nullptr;
  const unsigned long code = made->Nms2EmsName(name);
  if (code == RESULT_OK) {
    result = made.release();
  }
  return code;
}

unsigned long TENameConvert::EmsToNmsNameConvert(TEName* name, globaldefs::NVSList_T& result) {
  return name == nullptr ? RESULT_EMPTY_NAME : name->Ems2NmsName(result);
}

}  // namespace NS_QUORCORBA
