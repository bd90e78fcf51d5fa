// Object names as people type and read them: pairs separated by commas,
// outermost first, as in EMS=Quor/1,ManagedElement=7. No state.
#ifndef ZK_NMS_WIRE_OBJECTNAME_H
#define ZK_NMS_WIRE_OBJECTNAME_H

#include <string>
#include <utility>
#include <vector>

#include "zk_quornex/idl/names.h"

namespace zk::nms {

using Pairs = std::vector<std::pair<std::string, std::string>>;

// Reads a typed name; parsePairs(formatPairs(p)) is p for every non-empty p
// whose pair names are not empty. Throws UsageError, with the text in it, for
// an empty text, a pair without "=" or without a name, and a backslash that
// does not stand before "\", "," or "=".
Pairs parsePairs(const std::string& text);

// The one spelling that needs no more backslashes than necessary.
std::string formatPairs(const Pairs& pairs);

Pairs toPairs(const globaldefs::NVSList_T& name);
globaldefs::NVSList_T toName(const Pairs& pairs);

std::string formatName(const globaldefs::NVSList_T& name);

// Whether an argument is a full name rather than a bare id. A path such as
// /parentid=0/id=17 is an id.
bool isFullName(const std::string& argument);

// Throws UsageError for an argument that names nothing, so that nobody logs in
// for it.
void checkArgument(const std::string& argument);

}  // namespace zk::nms

#endif
