// Object names and their conversion between the NMS's form and the EMS's: all
// name classes, the visitor interface, and the converter's two entries. Nothing
// here keeps shared state or takes a lock; any thread may convert names while
// others do.
#ifndef ZK_NAMES_NAMECONVERT_H
#define ZK_NAMES_NAMECONVERT_H

#include "zk_quornex/idl/names.h"
#include "zk_quornex/names/aidname.h"
#include "zk_quornex/names/codes.h"
#include "zk_quornex/names/mapname.h"
#include "zk_quornex/names/tename.h"

namespace NS_QUORCORBA {

class ZK_EXPORT TENameConvert {
 public:
  TENameConvert() = default;
  ~TENameConvert() = default;

  // Makes the name object that the last pair of name calls for and fills it.
  // The last pair alone chooses the class; physical link, AID and DN names are
  // not made here. Returns 0, with result a new object that the caller deletes,
  // or a code of names/codes.h, with result untouched when no class could be
  // chosen and null when the object was made and then failed.
  static unsigned long NmsToEmsNameConvert(const globaldefs::NVSList_T& name, TEName*& result);

  // Writes the NMS's form of name into result; name stays the caller's. A null
  // name returns 0x411800BD and leaves result as it was.
  static unsigned long EmsToNmsNameConvert(TEName* name, globaldefs::NVSList_T& result);
};

}  // namespace NS_QUORCORBA

#endif
