// EmsAdmin_I: changes of the embedded EMS, and ends of sessions, on demand. Safe
// on any thread.
//
// Whoever reaches it may use it: it is for trials, and is served only when the
// agent is told to.
#ifndef ZK_AGENT_ADMIN_EMSADMINSERVANT_H
#define ZK_AGENT_ADMIN_EMSADMINSERVANT_H

#include "agent/ems/inventory.h"
#include "agent/ems/traffic/traffic.h"
#include "agent/sessions/sessions.h"
#include "zk_quornex/idl/admin.h"
#include "zk_quornex/idl/events.h"
#include "zk_quornex/idl/names.h"

namespace zk::agent {

class EmsAdminServant : public virtual POA_emsAdmin::EmsAdmin_I,
                        public virtual PortableServer::RefCountServantBase {
 public:
  // All must outlive this object.
  EmsAdminServant(Inventory& inventory, Traffic& traffic, Sessions& sessions)
      : inventory_(inventory), traffic_(traffic), sessions_(sessions) {}

  CORBA::Long createDevice(const char* name, const char* productName, const char* siteId) override;
  void renameDevice(CORBA::Long deviceId, const char* name) override;
  char* createLink(const char* name, CORBA::Long aDevice, const char* aPort, CORBA::Long zDevice,
                   const char* zPort) override;
  char* createMapObject(const char* kind, const globaldefs::NVSList_T& attributes) override;
  void setLabel(const char* kind, const char* id, const char* label, const char* text) override;
  void remove(const char* kind, const char* id) override;
  CORBA::Long raiseAlarm(CORBA::Long deviceId, const char* probableCause, const char* qualifier,
                         notifications::PerceivedSeverity_T severity, const char* text) override;
  void clearAlarm(CORBA::Long alarmId) override;
  void setTraffic(CORBA::Double rate) override;
  emsAdmin::NmsLoginList_T* getLogins() override;
  void endLogin(CORBA::Long sessionId) override;

 private:
  Inventory& inventory_;
  Traffic& traffic_;
  Sessions& sessions_;
};

}  // namespace zk::agent

#endif
