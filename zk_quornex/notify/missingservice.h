// What the library does without a service that it needs.
#ifndef ZK_NOTIFY_MISSINGSERVICE_H
#define ZK_NOTIFY_MISSINGSERVICE_H

// Throws an InterfaceNotExistException with its code and no texts. Any thread may
// call.
[[noreturn]] void throwInterfaceNotExist();

#endif
