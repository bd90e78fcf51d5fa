// Whole names through the converter and back. A line is a pair.
#include "input.h"
#include "namechecks.h"
#include "zk_quornex/idl/names.h"
#include "zk_quornex/names/nameconvert.h"

namespace {

using namespace NS_QUORCORBA;

// What the caller's pointer holds on each outcome.
void checkResult(unsigned long code, const TEName* result, const TEName& before) {
  if (code == RESULT_OK) {
    ZK_FUZZ_CHECK(result != nullptr && result != &before);
  } else {
    ZK_FUZZ_CHECK(result == nullptr || (result == &before && code == RESULT_BAD_NAME));
  }
}

bool isMade(const char* lastPair) {
  for (const char* made : {"EMS", "ManagedElement", "MultiLayerSubnetwork", "TopologicalLink",
                           "SubMap", "Node", "DisplayLink"}) {
    if (std::strcmp(lastPair, made) == 0) {
      return true;
    }
  }
  return false;
}

void checkConvertedBack(TEName& name) {
  globaldefs::NVSList_T written;
  if (TENameConvert::EmsToNmsNameConvert(&name, written) != RESULT_OK) {
    return;
  }
  TEName* result = nullptr;
  ZK_FUZZ_CHECK(TENameConvert::NmsToEmsNameConvert(written, result) == RESULT_OK);
  const std::unique_ptr<TEName> back(result);
  ZK_FUZZ_CHECK(zk::fuzz::dump(*back) == zk::fuzz::dumpOfReread(name));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const globaldefs::NVSList_T name = zk::fuzz::Input(data, size).name();
  TEName before;
  TEName* result = &before;
  const unsigned long code = TENameConvert::NmsToEmsNameConvert(name, result);
  ZK_FUZZ_CHECK(zk::fuzz::isKnownCode(code));
  checkResult(code, result, before);
  const bool made = name.length() > 0 && isMade(name[name.length() - 1].name.in());
  ZK_FUZZ_CHECK(made == (result != &before));
  if (code != RESULT_OK) {
    return 0;
  }
  const std::unique_ptr<TEName> owned(result);
  checkConvertedBack(*owned);
  return 0;
}
