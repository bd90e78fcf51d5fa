#include "zk_quornex/names/pairs.h"

#include <cstring>

#include "zk_quornex/names/codes.h"
#include "zk_quornex/platform/config.h"

namespace NS_QUORCORBA {

bool sameText(const char* text, const char* expected) {
  return text != nullptr && std::strcmp(text, expected) == 0;
}

bool isThisEms(const char* value) {
  return sameText(value, NS_CORBA::CorbaBaseAgentConfig::Instance()->EmsName().c_str());
}

unsigned long readTwoLevels(const globaldefs::NVSList_T& name, const char* key,
                            std::string& emsName) {
  if (name.length() != 2 || !sameText(name[0].name.in(), "EMS") ||
      !sameText(name[1].name.in(), key)) {
    return RESULT_BAD_NAME;
  }
  if (!isThisEms(name[0].value.in())) {
    return RESULT_OTHER_EMS;
  }
  emsName = NS_CORBA::CorbaBaseAgentConfig::Instance()->EmsName();
  return RESULT_OK;
}

globaldefs::NameAndStringValue_T& writeTwoLevels(globaldefs::NVSList_T& name,
                                                 const std::string& emsName, const char* key) {
  name.length(2);
  setPair(name[0], "EMS", emsName.c_str());
  name[1].name = CORBA::string_dup(key);
  return name[1];
}

void setPair(globaldefs::NameAndStringValue_T& pair, const char* name, const char* value) {
  pair.name = CORBA::string_dup(name);
  pair.value = CORBA::string_dup(value);
}

}  // namespace NS_QUORCORBA
