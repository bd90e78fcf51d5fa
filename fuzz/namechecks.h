// What holds for every name that was read from the NMS.
#ifndef ZK_FUZZ_NAMECHECKS_H
#define ZK_FUZZ_NAMECHECKS_H

#include <string>

#include "zk_quornex/names/aidname.h"
#include "zk_quornex/names/mapname.h"
#include "zk_quornex/names/tename.h"

namespace zk::fuzz {

// The fields of a name as one text.
std::string dump(const NS_QUORCORBA::TEName& name);

// Whether a conversion may return this code.
bool isKnownCode(unsigned long code);

// The fields of a name that was read, after it is written and read again:
// mostly its own.
std::string dumpOfReread(const NS_QUORCORBA::TEName& name);

// The name was read without a failure: writes it, and where it can be written,
// reads it back into back, which must be of the same class and new, and
// compares.
void checkWayBack(NS_QUORCORBA::TEName& name, NS_QUORCORBA::TEName& back);

}  // namespace zk::fuzz

#endif
