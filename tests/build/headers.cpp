// Every header that is installed for agents, in one source: it is compiled under
// each standard that an agent may be written in.
#include "zk_quornex/messages/messagecach.h"
#include "zk_quornex/mo/commonfunc.h"
#include "zk_quornex/mo/moadapter.h"
#include "zk_quornex/names/nameconvert.h"
#include "zk_quornex/names/namevalidate.h"
#include "zk_quornex/notify/exceptions.h"
#include "zk_quornex/notify/notification.h"

// As an agent raises them.
[[noreturn]] void raise() {
  InterfaceNotExistException missing;
  InterfaceNotExistException copy(missing);
  throw ProcessException();
}
