// The name of an object inside a managed element, by a path of numbers: an AID
// or a DN. No shared state and no locks.
#ifndef ZK_NAMES_AIDNAME_H
#define ZK_NAMES_AIDNAME_H

#include <string>
#include <vector>

#include "zk_quornex/names/tename.h"

namespace NS_QUORCORBA {

// ("EMS", EMS name), ("ManagedElement", first number), ("AID" or "DN", the
// numbers joined by "/"). A two-level name without the third pair is read too,
// and comes back as a three-level one. Never made by TENameConvert: callers
// construct it.
//
// After a failed Nms2EmsName or SetStrIDs the list may be partly filled and
// the type changed: discard or refill the object.
class ZK_EXPORT CAAIDName : public TEName {
 public:
  CAAIDName();
  ~CAAIDName() override;

  // A two-level name appends its number to the list; a three-level name
  // replaces the list with the numbers of its third pair.
  unsigned long Nms2EmsName(const globaldefs::NVSList_T& name) override;
  // Writes the configured EMS name, not the object's.
  unsigned long Ems2NmsName(globaldefs::NVSList_T& name) override;
  unsigned long Accept(Name_Visitor* visitor) override;

  // Replaces the list with the numbers of the text, separated by "/" or "." in
  // any mix. Only the first 245 characters count.
  unsigned long SetStrIDs(const char* strIDs);

  // Replaces strIDs with "/" before every number and one NUL character at the
  // end, which counts in the string's length. Untouched when the list is empty.
  unsigned long GetStrIDs(std::string& strIDs);

  std::vector<long> ids_;  // the managed element's id first

 private:
  ZK_HIDDEN unsigned long readPath(const globaldefs::NameAndStringValue_T& pair);
  ZK_HIDDEN unsigned long readNumbers(char* text);  // cuts text up
};

}  // namespace NS_QUORCORBA

#endif
