// What an event says, on one line.
#include <algorithm>
#include <array>
#include <cctype>
#include <map>

#include "nms/events/alarm.h"
#include "nms/events/event.h"

namespace zk::nms {
namespace {

using Summarize = std::string (*)(const Event&);

// Shown in a column of their own, or of no interest on one line.
const std::array<const char*, 7> kNotSaid = {"notificationId",      "objectName", "objectType",
                                             "objectTypeQualifier", "emsTime",    "neTime",
                                             "edgePointRelated"};

std::string kindOf(const Event& event) {
  return objectTypeText(event.text("objectType"), event.text("objectTypeQualifier"));
}

std::string ofCreation(const Event& event) {
  std::string result = "created " + kindOf(event);
  const Json::Value& body = event.body;
  if (body.isObject() && body["userLabel"].isString() && !body["userLabel"].asString().empty()) {
    result += " \"" + body["userLabel"].asString() + "\"";
  }
  return result;
}

std::string ofDeletion(const Event& event) { return "deleted " + kindOf(event); }

std::string ofChange(const Event& event) { return event.text("attributeList"); }

std::string ofAlarm(const Event& event) { return alarmText(readAlarm(event)); }

std::string ofHeartbeat(const Event&) { return "the EMS is alive"; }

std::string ofAnythingElse(const Event& event) {
  std::string result;
  for (const std::string& name : event.properties.getMemberNames()) {
    const bool said = std::find(kNotSaid.begin(), kNotSaid.end(), name) == kNotSaid.end();
    if (said) {
      result += (result.empty() ? "" : ", ") + name + "=" + event.text(name);
    }
  }
  return result;
}

const std::map<std::string, Summarize> kSummaries = {{"NT_OBJECT_CREATION", ofCreation},
                                                     {"NT_OBJECT_DELETION", ofDeletion},
                                                     {"NT_ATTRIBUTE_VALUE_CHANGE", ofChange},
                                                     {"NT_STATE_CHANGE", ofChange},
                                                     {"NT_ALARM", ofAlarm},
                                                     {"NT_HEARTBEAT", ofHeartbeat},
                                                     {"NT_HEART_BEAT", ofHeartbeat}};

}  // namespace

std::string summary(const Event& event) {
  const auto found = kSummaries.find(event.type);
  return found == kSummaries.end() ? ofAnythingElse(event) : found->second(event);
}

std::string objectTypeText(const std::string& type, const std::string& qualifier) {
  if (!qualifier.empty()) {
    return qualifier;
  }
  if (type.rfind("OT_", 0) != 0) {
    return type.empty() ? "object" : type;
  }
  if (type == "OT_EMS" || type == "OT_AID") {
    return type.substr(3);
  }
  std::string result = type.substr(3);
  for (char& character : result) {
    character = character == '_'
                    ? ' '
                    : static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
  }
  return result;
}

}  // namespace zk::nms
