#include "zk_quornex/names/aidname.h"

#include <safeclib/safe_str_lib.h>

#include "zk_quornex/names/nameparse.h"
#include "zk_quornex/names/pairs.h"
#include "zk_quornex/platform/config.h"
#include "zk_quornex/platform/trace.h"

namespace NS_QUORCORBA {

namespace {

constexpr std::size_t MOST_CHARACTERS = 245;

// The text as the EMS keeps it: cut after 245 characters. Says whether the
// bounds-checked copy went well; the copy is usable either way.
struct BoundedText {
  explicit BoundedText(const char* text)
      : copied(strncpy_s(characters, sizeof(characters), text, MOST_CHARACTERS) == 0) {}

  char characters[MOST_CHARACTERS + 1] = {};
  bool copied;
};

std::string joined(const std::vector<long>& numbers) {
  std::string text;
  for (const long number : numbers) {
    if (!text.empty()) {
      text += '/';
    }
    text += std::to_string(number);
  }
  return text;
}

}  // namespace

CAAIDName::CAAIDName() { type_ = NAME_AID; }

CAAIDName::~CAAIDName() = default;

unsigned long CAAIDName::Nms2EmsName(const globaldefs::NVSList_T& name) {
  if (name.length() < 2 || !sameText(name[0].name.in(), "EMS") ||
      !sameText(name[1].name.in(), "ManagedElement")) {
    return RESULT_BAD_NAME;
  }
  if (!isThisEms(name[0].value.in())) {
    return RESULT_OTHER_EMS;
  }
  emsName_ = NS_CORBA::CorbaBaseAgentConfig::Instance()->EmsName();
  unsigned long meId = 0;
  if (!ParseID(name[1].value.in(), meId)) {
    return RESULT_BAD_NAME;
  }
  if (name.length() == 2) {
    ids_.push_back(static_cast<long>(meId));
    return RESULT_OK;
  }
  return name.length() == 3 ? readPath(name[2]) : RESULT_BAD_NAME;
}

unsigned long CAAIDName::readPath(const globaldefs::NameAndStringValue_T& pair) {
  if (sameText(pair.name.in(), "DN")) {
    type_ = NAME_DN;
  } else if (sameText(pair.name.in(), "AID")) {
    type_ = NAME_AID;
  } else {
    return RESULT_BAD_NAME;
  }
  if (pair.value.in() == nullptr) {
    return RESULT_BAD_NAME;
  }
  BoundedText text(pair.value.in());
  return readNumbers(text.characters);
}

unsigned long CAAIDName::Ems2NmsName(globaldefs::NVSList_T& name) {
  if (ids_.empty()) {
    return RESULT_EMPTY_NAME;
  }
  name.length(3);
  setPair(name[0], "EMS", NS_CORBA::CorbaBaseAgentConfig::Instance()->EmsName().c_str());
  setPair(name[1], "ManagedElement", std::to_string(ids_.front()).c_str());
  setPair(name[2], type_ == NAME_AID ? "AID" : "DN", joined(ids_).c_str());
  return RESULT_OK;
}

unsigned long CAAIDName::Accept(Name_Visitor*) { return RESULT_OK; }

unsigned long CAAIDName::SetStrIDs(const char* strIDs) {
  if (strIDs == nullptr) {
    NS_CORBA::SetTraceOrigin("nameconvert", __LINE__);
    NS_CORBA::TaDebug(2, "[CAAIDName::SetStrIDs] strIDs is null.");
    return RESULT_BAD_NAME;
  }
  BoundedText text(strIDs);
  if (!text.copied) {
    NS_CORBA::SetTraceOrigin("nameconvert", __LINE__);
    NS_CORBA::TaDebugWithPara(1, "strncpy_s failed.");
  }
  return readNumbers(text.characters);
}

unsigned long CAAIDName::GetStrIDs(std::string& strIDs) {
  if (ids_.empty()) {
    return RESULT_BAD_NAME;
  }
  std::string text;
  for (const long number : ids_) {
    text += '/';
    text += std::to_string(number);
  }
  text += '\0';  // deliberately part of the text
  strIDs.swap(text);
  return RESULT_OK;
}

unsigned long CAAIDName::readNumbers(char* text) {
  return SplitNumbers(text, ids_, "./") && !ids_.empty() ? RESULT_OK : RESULT_BAD_NAME;
}

}  // namespace NS_QUORCORBA
