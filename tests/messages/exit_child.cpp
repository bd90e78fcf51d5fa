// Ends while its clients' threads have only just been started.
#include "zk_quornex/messages/messagemgr.h"
#include "zk_quornex/platform/default/logs.h"

int main() {
  zk::platform::setTraceLevel(0);
  auto* manager = NS_QUORCORBA::NXMessageMgr::Instance();
  for (const long msgClass : {8L, 10L}) {
    for (long client = 0; client < 3; ++client) {
      manager->subscribeMsg(msgClass, client, nullptr, nullptr);
    }
  }
  return 0;
}
