#include "agent/admin/emsadminservant.h"

#include <chrono>
#include <stdexcept>

#include "agent/admin/kinds.h"
#include "agent/admin/mapobjectrequest.h"
#include "agent/tmf/errors.h"

namespace zk::agent {

namespace {

constexpr short LINK_RATE = 20;

std::string describeDevice(long id) { return "device " + std::to_string(id); }

}  // namespace

CORBA::Long EmsAdminServant::createDevice(const char* name, const char* productName,
                                          const char* siteId) {
  return guarded("createDevice", [&] {
    DeviceRecord device;
    device.name = name;
    device.productName = productName;
    device.siteId = siteId;
    refuseFailure(inventory_.create(device), "the new device");
    return static_cast<CORBA::Long>(device.id);
  });
}

void EmsAdminServant::renameDevice(CORBA::Long deviceId, const char* name) {
  guarded("renameDevice", [&] {
    refuseFailure(inventory_.renameDevice(deviceId, name), describeDevice(deviceId));
  });
}

char* EmsAdminServant::createLink(const char* name, CORBA::Long aDevice, const char* aPort,
                                  CORBA::Long zDevice, const char* zPort) {
  return guarded("createLink", [&] {
    LinkRecord link;
    link.nativeName = name;
    link.rate = LINK_RATE;
    link.aEnd = {aDevice, aPort};
    link.zEnd = {zDevice, zPort};
    refuseFailure(inventory_.create(link), "the new link");
    return CORBA::string_dup(link.id.c_str());
  });
}

char* EmsAdminServant::createMapObject(const char* kind, const globaldefs::NVSList_T& attributes) {
  return guarded("createMapObject", [&] {
    return CORBA::string_dup(zk::agent::createMapObject(inventory_, kind, attributes).c_str());
  });
}

void EmsAdminServant::setLabel(const char* kind, const char* id, const char* label,
                               const char* text) {
  guarded("setLabel", [&] {
    const ObjectKey key{kindNamed(kind), id, {}};
    refuseFailure(inventory_.setAttribute(key, labelNamed(label), text), describe(kind, id));
  });
}

void EmsAdminServant::remove(const char* kind, const char* id) {
  guarded("remove", [&] {
    refuseFailure(inventory_.remove({kindNamed(kind), id, {}}), describe(kind, id));
  });
}

CORBA::Long EmsAdminServant::raiseAlarm(CORBA::Long deviceId, const char* probableCause,
                                        const char* qualifier,
                                        notifications::PerceivedSeverity_T severity,
                                        const char* text) {
  return guarded("raiseAlarm", [&] {
    AlarmRecord alarm;
    alarm.deviceId = deviceId;
    alarm.probableCause = probableCause;
    alarm.nativeProbableCause = probableCause;
    alarm.qualifier = qualifier;
    alarm.severity = static_cast<Severity>(severity);
    alarm.additionalText = text;
    alarm.raisedAt = std::chrono::system_clock::now();
    refuseFailure(inventory_.raiseAlarm(alarm), "an alarm of " + describeDevice(deviceId));
    return static_cast<CORBA::Long>(alarm.id);
  });
}

void EmsAdminServant::clearAlarm(CORBA::Long alarmId) {
  guarded("clearAlarm", [&] {
    refuseFailure(inventory_.clearAlarm(alarmId), "alarm " + std::to_string(alarmId));
  });
}

void EmsAdminServant::setTraffic(CORBA::Double rate) {
  guarded("setTraffic", [&] {
    try {
      traffic_.setRate(rate);
    } catch (const std::invalid_argument& wrong) {
      throw refusal(globaldefs::EXCPT_INVALID_INPUT, wrong.what());
    }
  });
}

emsAdmin::NmsLoginList_T* EmsAdminServant::getLogins() {
  return guarded("getLogins", [&] {
    const std::vector<Login> logins = logins_.all();
    emsAdmin::NmsLoginList_T_var list = new emsAdmin::NmsLoginList_T;
    list->length(static_cast<CORBA::ULong>(logins.size()));
    for (CORBA::ULong i = 0; i < list->length(); ++i) {
      list[i].sessionId = static_cast<CORBA::Long>(logins[i].session);
      list[i].user = CORBA::string_dup(logins[i].user.c_str());
    }
    return list._retn();
  });
}

void EmsAdminServant::endLogin(CORBA::Long sessionId) {
  guarded("endLogin", [&] {
    if (!logins_.end(sessionId)) {
      throw refusal(globaldefs::EXCPT_ENTITY_NOT_FOUND,
                    "there is no session " + std::to_string(sessionId));
    }
  });
}

}  // namespace zk::agent
