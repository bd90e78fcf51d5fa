// Reading and writing the pairs of an NMS name, as every name class does.
#ifndef ZK_NAMES_PAIRS_H
#define ZK_NAMES_PAIRS_H

#include <string>

#include "zk_quornex/idl/names.h"

namespace NS_QUORCORBA {

// Exact comparison; a null text equals nothing.
bool sameText(const char* text, const char* expected);

// Whether value is the configured EMS name.
bool isThisEms(const char* value);

// The checks that open the reading of every two-level name, in order: exactly
// two pairs, named "EMS" and key (else RESULT_BAD_NAME), the first naming this
// EMS (else RESULT_OTHER_EMS). On success emsName is set from the
// configuration.
unsigned long readTwoLevels(const globaldefs::NVSList_T& name, const char* key,
                            std::string& emsName);

// Sets the list to exactly the pair ("EMS", emsName) and one pair named key
// whose value is the caller's to set. Returns that pair.
globaldefs::NameAndStringValue_T& writeTwoLevels(globaldefs::NVSList_T& name,
                                                 const std::string& emsName, const char* key);

void setPair(globaldefs::NameAndStringValue_T& pair, const char* name, const char* value);

}  // namespace NS_QUORCORBA

#endif
