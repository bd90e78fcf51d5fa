#include "zk_quornex/notify/missingservice.h"

#include "zk_quornex/notify/exceptions.h"

// Copied from a reference: since C++23 the name of a local variable would be
// thrown as something to move from, which these classes do not take.
void throwInterfaceNotExist() {
  InterfaceNotExistException missing;
  missing.code_ = 0x41180004;
  InterfaceNotExistException& source = missing;
  throw source;
}
