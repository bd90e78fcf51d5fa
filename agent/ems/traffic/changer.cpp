#include "agent/ems/traffic/changer.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <regex>

namespace zk::agent {

namespace {

constexpr std::array<const char*, 3> OWNERS{{"Veltra", "Northern region", "Southern region"}};
constexpr std::array<ObjectKind, 4> LABELLED{
    {ObjectKind::DEVICE, ObjectKind::LINK, ObjectKind::NODE, ObjectKind::SUB_MAP}};

Labels labelsIn(const DeviceRecord& device) {
  return {device.userLabel, device.owner, device.name};
}
Labels labelsIn(const Labels& labels) { return labels; }

template <class Record>
std::optional<Labels> labelsIn(const std::optional<Record>& record) {
  return record ? std::optional<Labels>(labelsIn(*record)) : std::nullopt;
}

std::optional<Labels> labelsOf(const Inventory& inventory, const ObjectKey& key) {
  switch (key.kind) {
    case ObjectKind::DEVICE:
      return labelsIn(inventory.device(std::stol(key.id)));
    case ObjectKind::LINK:
      return labelsIn(inventory.link(key.id));
    case ObjectKind::NODE:
      return labelsIn(inventory.node(key.id));
    case ObjectKind::SUB_MAP:
      return labelsIn(inventory.subMap(key.id));
    default:
      return std::nullopt;
  }
}

long idOf(const ObjectKey& device) { return std::stol(device.id); }

void setNames(DeviceRecord& record, const char* name) { record.name = name; }
void setNames(Labels& record, const char* name) { record.nativeName = name; }

struct Cause {
  const char* probableCause;
  const char* nativeText;
  Severity severity;
};

constexpr std::array<Cause, 6> OF_DEVICES{
    {{"LOS", "Receive power lost", Severity::CRITICAL},
     {"LOF", "Frame alignment lost", Severity::CRITICAL},
     {"AIS", "Upstream failure signalled", Severity::MINOR},
     {"BER_SD", "Bit errors above 1E-6", Severity::MINOR},
     {"EQPT", "Card does not answer", Severity::MAJOR},
     {"TEMPERATURE", "Temperature above 60 degrees", Severity::WARNING}}};

constexpr std::array<Cause, 2> OF_EMS{{{"EMS", "Disk of the server nearly full", Severity::WARNING},
                                       {"EMS", "Backup is overdue", Severity::INDETERMINATE}}};

bool sameAlarm(const AlarmRecord& left, const AlarmRecord& right) {
  return left.deviceId == right.deviceId && left.probableCause == right.probableCause &&
         left.qualifier == right.qualifier;
}

std::string port(std::size_t number) {
  return "/rack=1/shelf=1/slot=" + std::to_string(1 + number / 16) +
         "/port=" + std::to_string(1 + number % 16);
}

}  // namespace

std::string nextNumbered(const std::string& text) {
  static const std::regex numbered(R"(([\s\S]*) \(([1-9][0-9]{0,2})\))");
  std::smatch parts;
  if (!std::regex_match(text, parts, numbered)) {
    return text + " (2)";
  }
  const int number = std::stoi(parts[2]);
  return parts[1].str() + " (" + std::to_string(number == 999 ? 2 : number + 1) + ")";
}

Result Changer::step() {
  struct Weighted {
    std::size_t weight;
    Result (Changer::*make)();
  };
  static constexpr std::array<Weighted, 7> CHANGES{{{20, &Changer::rename},
                                                    {25, &Changer::label},
                                                    {10, &Changer::changeOwner},
                                                    {16, &Changer::raiseAlarm},
                                                    {14, &Changer::clearAlarm},
                                                    {8, &Changer::create},
                                                    {7, &Changer::remove}}};
  std::size_t point = chance_.below(100);
  const auto* chosen = CHANGES.begin();
  while (point >= chosen->weight) {
    point -= chosen->weight;
    ++chosen;
  }
  return (this->*chosen->make)();
}

Result Changer::noted(const ObjectKey& key, Result result) {
  if (result != Result::DONE) {
    population_.forget(key);
  }
  return result;
}

// --- Attributes ---

Result Changer::setNext(const ObjectKey& key, Attribute attribute) {
  const std::optional<Labels> labels = labelsOf(inventory_, key);
  if (!labels) {
    return noted(key, Result::NO_SUCH_OBJECT);
  }
  const std::string& text =
      attribute == Attribute::NATIVE_NAME ? labels->nativeName : labels->userLabel;
  return noted(key, inventory_.setAttribute(key, attribute, nextNumbered(text)));
}

Result Changer::rename() {
  const auto& devices = population_.others(ObjectKind::DEVICE);
  return devices.empty() ? create()
                         : setNext(ObjectKey(chance_.oneOf(devices)), Attribute::NATIVE_NAME);
}

Result Changer::label() {
  const auto& objects = population_.others(chance_.oneOf(LABELLED));
  return objects.empty() ? create()
                         : setNext(ObjectKey(chance_.oneOf(objects)), Attribute::USER_LABEL);
}

// Not of its own objects, which it finds again by their owner.
Result Changer::changeOwner() {
  const auto& devices = population_.others(ObjectKind::DEVICE);
  if (devices.empty()) {
    return create();
  }
  const ObjectKey key = chance_.oneOf(devices);
  const std::optional<Labels> labels = labelsOf(inventory_, key);
  if (!labels) {
    return noted(key, Result::NO_SUCH_OBJECT);
  }
  std::size_t owner = chance_.below(OWNERS.size());
  if (labels->owner == OWNERS[owner]) {
    owner = (owner + 1) % OWNERS.size();
  }
  return noted(key, inventory_.setOwner(key, OWNERS[owner]));
}

// --- Alarms ---

Result Changer::raiseAlarm() {
  if (alarms_.own().size() >= MOST_TRAFFIC_ALARMS) {
    return alarms_.clear();
  }
  const auto& devices = population_.others(ObjectKind::DEVICE);
  const bool onTheEms = devices.empty() || chance_.below(12) == 0;
  if (onTheEms) {
    return alarms_.raise(0);
  }
  const ObjectKey key = chance_.oneOf(devices);
  return noted(key, alarms_.raise(idOf(key)));
}

Result Changer::clearAlarm() { return alarms_.own().empty() ? raiseAlarm() : alarms_.clear(); }

// --- Objects of its own ---

template <class Record>
Result Changer::store(Record record) {
  const Result result = inventory_.create(record);
  if (result == Result::DONE) {
    population_.addOwn(keyOf(record));
  }
  return result;
}

template <class Record>
Result Changer::add(Record record, const char* name) {
  setNames(record, name);
  record.owner = TRAFFIC_OWNER;
  return store(std::move(record));
}

ObjectKey Changer::anyDevice() { return chance_.oneOf(population_.others(ObjectKind::DEVICE)); }

std::string Changer::anySubMap() {
  const auto& subMaps = population_.others(ObjectKind::SUB_MAP);
  return subMaps.empty() ? ROOT_SUBMAP_ID : chance_.oneOf(subMaps).id;
}

// They refer to others' objects only, so that each of them can go at any time.
Result Changer::create() {
  if (population_.own().size() >= MOST_TRAFFIC_OBJECTS) {
    return remove();
  }
  const std::size_t devices = population_.others(ObjectKind::DEVICE).size();
  const std::size_t links = population_.others(ObjectKind::LINK).size();
  switch (chance_.below(5)) {
    case 0:
      return createSubMap();
    case 1:
      return devices > 0 ? createNode() : createDevice();
    case 2:
      return devices > 1 ? createLink() : createDevice();
    case 3:
      return links > 0 ? createPhysicalLink() : createDevice();
    default:
      return createDevice();
  }
}

Result Changer::createDevice() {
  DeviceRecord device;
  device.productName = "Quor QA-8 Access Multiplexer";
  device.version = "3.1.4";
  device.location = "not installed yet";
  device.siteId = anySubMap();
  return add(std::move(device), "New device");
}

Result Changer::createSubMap() {
  SubMapRecord subMap;
  subMap.parentId = anySubMap();
  return add(std::move(subMap), "New submap");
}

Result Changer::createNode() {
  NodeRecord node;
  node.parentId = anySubMap();
  node.deviceId = idOf(anyDevice());
  return add(std::move(node), "New node");
}

Result Changer::createLink() {
  const auto& devices = population_.others(ObjectKind::DEVICE);
  const std::size_t a = chance_.below(devices.size());
  const std::size_t z = (a + 1 + chance_.below(devices.size() - 1)) % devices.size();
  LinkRecord link;
  link.rate = LinkRate::STM_1;
  link.aEnd = {idOf(devices[a]), "/rack=1/shelf=1/slot=30/port=1"};
  link.zEnd = {idOf(devices[z]), "/rack=1/shelf=1/slot=30/port=2"};
  return add(std::move(link), "New link");
}

Result Changer::createPhysicalLink() {
  PhysicalLinkRecord link;
  link.linkId = chance_.oneOf(population_.others(ObjectKind::LINK)).id;
  for (std::size_t number = 1; link.id.empty() || inventory_.physicalLink(link.id); ++number) {
    link.id = TRAFFIC_PHYSICAL_LINK + std::to_string(number);
  }
  return store(std::move(link));
}

Result Changer::remove() {
  if (population_.own().empty()) {
    return create();
  }
  const ObjectKey key = chance_.oneOf(population_.own());
  const Result result = inventory_.remove(key);
  population_.forget(key);
  return result;
}

std::vector<AlarmRecord> AlarmChanger::own() const {
  std::vector<AlarmRecord> alarms = inventory_.activeAlarms();
  const auto notOurs = [](const AlarmRecord& alarm) {
    return alarm.additionalText != TRAFFIC_ALARM_TEXT;
  };
  alarms.erase(std::remove_if(alarms.begin(), alarms.end(), notOurs), alarms.end());
  return alarms;
}

Result AlarmChanger::raise(long deviceId) {
  const Cause& cause = deviceId == 0 ? chance_.oneOf(OF_EMS) : chance_.oneOf(OF_DEVICES);
  AlarmRecord alarm;
  alarm.deviceId = deviceId;
  alarm.probableCause = cause.probableCause;
  alarm.nativeProbableCause = cause.nativeText;
  alarm.severity = cause.severity;
  alarm.additionalText = TRAFFIC_ALARM_TEXT;
  alarm.raisedAt = std::chrono::system_clock::now();
  const std::vector<AlarmRecord> active = inventory_.activeAlarms(deviceId);
  const auto isActive = [&] {
    return std::any_of(active.begin(), active.end(),
                       [&](const AlarmRecord& other) { return sameAlarm(alarm, other); });
  };
  std::size_t number = chance_.below(64);
  do {
    alarm.qualifier = port(number++);
  } while (isActive());
  return inventory_.raiseAlarm(alarm);
}

Result AlarmChanger::clear() {
  const std::vector<AlarmRecord> alarms = own();
  return alarms.empty() ? Result::NO_SUCH_OBJECT : inventory_.clearAlarm(chance_.oneOf(alarms).id);
}

}  // namespace zk::agent
