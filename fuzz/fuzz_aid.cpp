// Number paths of an AID or DN, by all ways in: the first line chooses the third
// pair's name, the rest is the path.
#include "input.h"
#include "namechecks.h"
#include "tests/names/parsemodel.h"
#include "zk_quornex/idl/names.h"
#include "zk_quornex/names/nameparse.h"

namespace {

using namespace NS_QUORCORBA;
using zk::fuzz::ExactText;

constexpr std::size_t MOST_CHARACTERS = 245;

// Both ways in read the same numbers from the head of the text.
void checkNumbers(const CAAIDName& name, unsigned long code, const std::string& text) {
  const auto expected = zk::test::model::numbers(text.substr(0, MOST_CHARACTERS), "./");
  ZK_FUZZ_CHECK(name.ids_ == expected.items);
  const bool good = expected.accepted && !expected.items.empty();
  ZK_FUZZ_CHECK(code == (good ? RESULT_OK : RESULT_BAD_NAME));
}

// The text form ends in a zero character and is read back, unless it is longer
// than what is read.
void checkText(CAAIDName& name) {
  std::string text = "before";
  if (name.ids_.empty()) {
    ZK_FUZZ_CHECK(name.GetStrIDs(text) == RESULT_BAD_NAME && text == "before");
    return;
  }
  ZK_FUZZ_CHECK(name.GetStrIDs(text) == RESULT_OK);
  ZK_FUZZ_CHECK(text.size() > 2 && text[0] == '/' && text.find('\0') == text.size() - 1);
  CAAIDName back;
  if (text.size() - 1 <= MOST_CHARACTERS) {
    ZK_FUZZ_CHECK(back.SetStrIDs(text.c_str()) == RESULT_OK && back.ids_ == name.ids_);
  }
}

globaldefs::NVSList_T threeLevels(const char* kind, const char* path) {
  globaldefs::NVSList_T pairs;
  pairs.length(3);
  pairs[0].name = CORBA::string_dup("EMS");
  pairs[0].value = CORBA::string_dup(TEName().emsName_.c_str());
  pairs[1].name = CORBA::string_dup("ManagedElement");
  pairs[1].value = CORBA::string_dup("7");
  pairs[2].name = CORBA::string_dup(kind);
  pairs[2].value = CORBA::string_dup(path);
  return pairs;
}

void checkName(const char* kind, int type, const std::string& path) {
  CAAIDName name;
  const unsigned long code = name.Nms2EmsName(threeLevels(kind, path.c_str()));
  ZK_FUZZ_CHECK(name.type_ == type);
  checkNumbers(name, code, path);
  if (code == RESULT_OK) {
    CAAIDName back;
    zk::fuzz::checkWayBack(name, back);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  zk::fuzz::Input input(data, size);
  const bool dn = input.choice(2) == 1;
  ExactText path(input.rest());
  CAAIDName name;
  name.ids_ = {77};
  checkNumbers(name, name.SetStrIDs(path.get()), path.get());
  ZK_FUZZ_CHECK(name.type_ == NAME_AID);
  checkText(name);
  checkName(dn ? "DN" : "AID", dn ? NAME_DN : NAME_AID, path.get());
  return 0;
}
