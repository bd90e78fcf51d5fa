// Each name class by itself, whatever the last pair says. The first line chooses
// the class; then a line is a pair.
#include "input.h"
#include "namechecks.h"
#include "zk_quornex/idl/names.h"

namespace {

using namespace NS_QUORCORBA;

std::unique_ptr<TEName> make(unsigned int which) {
  switch (which) {
    case 0:
      return std::make_unique<TEName>();
    case 1:
      return std::make_unique<TEMEName>();
    case 2:
      return std::make_unique<TESubnetworkName>();
    case 3:
      return std::make_unique<TETopoLinkName>();
    case 4:
      return std::make_unique<CANodeName>();
    case 5:
      return std::make_unique<CASubMapName>();
    case 6:
      return std::make_unique<CADispLinkName>();
    case 7:
      return std::make_unique<CAPhyLinkName>();
    default:
      return std::make_unique<CAAIDName>();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  zk::fuzz::Input input(data, size);
  const unsigned int which = input.choice(9);
  const globaldefs::NVSList_T pairs = input.name();
  const std::unique_ptr<TEName> name = make(which);
  const unsigned long code = name->Nms2EmsName(pairs);
  ZK_FUZZ_CHECK(zk::fuzz::isKnownCode(code));
  if (code == RESULT_OK) {
    zk::fuzz::checkWayBack(*name, *make(which));
  } else {
    // Half filled perhaps, but never beyond writing.
    globaldefs::NVSList_T written;
    ZK_FUZZ_CHECK(zk::fuzz::isKnownCode(name->Ems2NmsName(written)));
  }
  return 0;
}
