#include "agent/admin/emsadminservant.h"

#include <chrono>
#include <map>
#include <stdexcept>

#include "agent/base/log.h"
#include "agent/base/sequences.h"
#include "agent/sessions/nmscalls.h"
#include "agent/tmf/errors.h"
#include "agent/tmf/names.h"
#include "agent/tmf/nmsrecords.h"

namespace zk::agent {

namespace {

constexpr LinkRate LINK_RATE = LinkRate::STM_1;

std::string deviceText(long id) { return "device " + std::to_string(id); }

// "device 7", for reasons.
std::string objectText(const char* kind, const char* id) {
  return std::string(kind) + (*id == '\0' ? "" : " " + printable(id));
}

// Refuses, saying what it was about.
void throwUnlessDone(Result result, const std::string& about) {
  if (result != Result::DONE) {
    throw refusalOf(codeOf(result), about);
  }
}

[[noreturn]] void refuseInput(const std::string& reason) {
  throw refusal(globaldefs::EXCPT_INVALID_INPUT, reason);
}

// The attributes of a request. Each is taken once; what nobody takes does not
// belong to the kind.
class Attributes {
 public:
  explicit Attributes(const globaldefs::NVSList_T& list) {
    for (CORBA::ULong i = 0; i < list.length(); ++i) {
      const std::string name(list[i].name);
      if (!values_.emplace(name, list[i].value).second) {
        refuseInput("given twice: " + printable(name.c_str()));
      }
    }
  }

  std::string optional(const char* name) {
    const auto found = values_.find(name);
    if (found == values_.end()) {
      return {};
    }
    std::string value = found->second;
    values_.erase(found);
    return value;
  }

  std::string required(const char* name) {
    const std::string value = optional(name);
    return value.empty()
               ? throw refusal(globaldefs::EXCPT_INVALID_INPUT, std::string("missing: ") + name)
               : value;
  }

  void expectNoMore() const {
    if (!values_.empty()) {
      refuseInput("not an attribute of this kind: " + printable(values_.begin()->first.c_str()));
    }
  }

 private:
  std::map<std::string, std::string> values_;
};

long deviceIn(const std::string& text) {
  const bool digits = text.find_first_not_of("0123456789") == std::string::npos;
  if (!digits || text.size() > 10) {
    refuseInput("not the id of a device: " + printable(text.c_str()));
  }
  return std::stol(text);
}

void readPlace(Attributes& attributes, Labels& labels, std::string& id, std::string& parentId) {
  labels.nativeName = attributes.required("name");
  id = attributes.optional("id");
  parentId = attributes.required("parent");
}

template <class Record>
std::string create(Inventory& inventory, const Attributes& attributes, Record record) {
  attributes.expectNoMore();
  throwUnlessDone(inventory.create(record), "the new object");
  return record.id;
}

template <class Record>
std::string createInMap(Inventory& inventory, const Attributes& attributes, Record record) {
  attributes.expectNoMore();
  throwUnlessDone(canNameMapObject(record.id) ? Result::DONE : Result::BAD_VALUE, "the new object");
  return create(inventory, attributes, std::move(record));
}

std::string createNode(Inventory& inventory, Attributes& attributes) {
  NodeRecord node;
  readPlace(attributes, node, node.id, node.parentId);
  node.deviceId = deviceIn(attributes.required("device"));
  return createInMap(inventory, attributes, std::move(node));
}

std::string createSubMap(Inventory& inventory, Attributes& attributes) {
  SubMapRecord subMap;
  readPlace(attributes, subMap, subMap.id, subMap.parentId);
  return createInMap(inventory, attributes, std::move(subMap));
}

std::string createDisplayLink(Inventory& inventory, Attributes& attributes) {
  DisplayLinkRecord link;
  readPlace(attributes, link, link.id, link.parentId);
  link.aEndId = attributes.required("aEnd");
  link.zEndId = attributes.required("zEnd");
  return createInMap(inventory, attributes, std::move(link));
}

std::string createPhysicalLink(Inventory& inventory, Attributes& attributes) {
  PhysicalLinkRecord link;
  link.id = attributes.optional("id");
  link.linkId = attributes.required("link");
  return create(inventory, attributes, std::move(link));
}

// Refuses another kind, and an attribute that the kind does not have, is given
// twice, or is missing.
std::string createNamed(Inventory& inventory, const char* kind,
                        const globaldefs::NVSList_T& attributes) {
  Attributes given(attributes);
  switch (kindNamed(kind)) {
    case ObjectKind::NODE:
      return createNode(inventory, given);
    case ObjectKind::SUB_MAP:
      return createSubMap(inventory, given);
    case ObjectKind::DISPLAY_LINK:
      return createDisplayLink(inventory, given);
    case ObjectKind::PHYSICAL_LINK:
      return createPhysicalLink(inventory, given);
    default:
      refuseInput(std::string("not an object of the map: ") + kind);
  }
}

}  // namespace

CORBA::Long EmsAdminServant::createDevice(const char* name, const char* productName,
                                          const char* siteId) {
  return refusingFailures("createDevice", [&] {
    DeviceRecord device;
    device.name = name;
    device.productName = productName;
    device.siteId = siteId;
    throwUnlessDone(inventory_.create(device), "the new device");
    return static_cast<CORBA::Long>(device.id);
  });
}

void EmsAdminServant::renameDevice(CORBA::Long deviceId, const char* name) {
  refusingFailures("renameDevice", [&] {
    throwUnlessDone(inventory_.renameDevice(deviceId, name), deviceText(deviceId));
  });
}

char* EmsAdminServant::createLink(const char* name, CORBA::Long aDevice, const char* aPort,
                                  CORBA::Long zDevice, const char* zPort) {
  return refusingFailures("createLink", [&] {
    LinkRecord link;
    link.nativeName = name;
    link.rate = LINK_RATE;
    link.aEnd = {aDevice, aPort};
    link.zEnd = {zDevice, zPort};
    throwUnlessDone(inventory_.create(link), "the new link");
    return CORBA::string_dup(link.id.c_str());
  });
}

char* EmsAdminServant::createMapObject(const char* kind, const globaldefs::NVSList_T& attributes) {
  return refusingFailures("createMapObject", [&] {
    return CORBA::string_dup(createNamed(inventory_, kind, attributes).c_str());
  });
}

void EmsAdminServant::setLabel(const char* kind, const char* id, const char* label,
                               const char* text) {
  refusingFailures("setLabel", [&] {
    const ObjectKey key{kindNamed(kind), id, {}};
    throwUnlessDone(inventory_.setAttribute(key, labelNamed(label), text), objectText(kind, id));
  });
}

void EmsAdminServant::remove(const char* kind, const char* id) {
  refusingFailures("remove", [&] {
    throwUnlessDone(inventory_.remove({kindNamed(kind), id, {}}), objectText(kind, id));
  });
}

CORBA::Long EmsAdminServant::raiseAlarm(CORBA::Long deviceId, const char* probableCause,
                                        const char* qualifier,
                                        notifications::PerceivedSeverity_T severity,
                                        const char* text) {
  return refusingFailures("raiseAlarm", [&] {
    AlarmRecord alarm;
    alarm.deviceId = deviceId;
    alarm.probableCause = probableCause;
    alarm.nativeProbableCause = probableCause;
    alarm.qualifier = qualifier;
    alarm.severity = severityOf(severity);
    alarm.additionalText = text;
    alarm.raisedAt = std::chrono::system_clock::now();
    throwUnlessDone(inventory_.raiseAlarm(alarm), "an alarm of " + deviceText(deviceId));
    return static_cast<CORBA::Long>(alarm.id);
  });
}

void EmsAdminServant::clearAlarm(CORBA::Long alarmId) {
  refusingFailures("clearAlarm", [&] {
    throwUnlessDone(inventory_.clearAlarm(alarmId), "alarm " + std::to_string(alarmId));
  });
}

void EmsAdminServant::setTraffic(CORBA::Double rate) {
  refusingFailures("setTraffic", [&] {
    try {
      traffic_.setRate(rate);
    } catch (const std::invalid_argument& wrong) {
      throw refusal(globaldefs::EXCPT_INVALID_INPUT, wrong.what());
    }
  });
}

emsAdmin::NmsLoginList_T* EmsAdminServant::getLogins() {
  return refusingFailures("getLogins", [&] {
    auto list = std::make_unique<emsAdmin::NmsLoginList_T>();
    for (const std::shared_ptr<Session>& session : sessions_.all()) {
      emsAdmin::NmsLogin_T login;
      login.sessionId = static_cast<CORBA::Long>(session->id);
      login.user = CORBA::string_dup(session->user.c_str());
      append(*list, login);
    }
    return list.release();
  });
}

void EmsAdminServant::endLogin(CORBA::Long sessionId) {
  refusingFailures("endLogin", [&] {
    const nmsSession::NmsSession_I_var client =
        sessions_.end(sessionId, "the administration ended it");
    if (CORBA::is_nil(client.in())) {
      throw refusal(globaldefs::EXCPT_ENTITY_NOT_FOUND,
                    "there is no session " + std::to_string(sessionId));
    }
    endSessionsOf({client});
  });
}

}  // namespace zk::agent
