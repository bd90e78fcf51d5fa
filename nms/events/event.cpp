#include "nms/events/event.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <map>

#include "nms/events/alarm.h"
#include "nms/wire/text.h"

namespace zk::nms {
namespace {

Json::Value readProperties(const CosNotification::PropertySeq& properties,
                           const ValueReader& reader) {
  Json::Value result(Json::objectValue);
  for (CORBA::ULong i = 0; i < properties.length(); ++i) {
    result[asUtf8(properties[i].name.in())] = reader.read(properties[i].value);
  }
  return result;
}

using Summarize = std::string (*)(const Event&);

// Shown in a column of their own, or of no interest on one line.
const std::array<const char*, 7> NOT_SAID = {"notificationId",      "objectName", "objectType",
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
    const bool said = std::find(NOT_SAID.begin(), NOT_SAID.end(), name) == NOT_SAID.end();
    if (said) {
      result += (result.empty() ? "" : ", ") + name + "=" + event.text(name);
    }
  }
  return result;
}

const std::map<std::string, Summarize> SUMMARIES = {{"NT_OBJECT_CREATION", ofCreation},
                                                    {"NT_OBJECT_DELETION", ofDeletion},
                                                    {"NT_ATTRIBUTE_VALUE_CHANGE", ofChange},
                                                    {"NT_STATE_CHANGE", ofChange},
                                                    {"NT_ALARM", ofAlarm},
                                                    {"NT_HEARTBEAT", ofHeartbeat},
                                                    {"NT_HEART_BEAT", ofHeartbeat}};

}  // namespace

std::string Event::text(const std::string& property) const {
  const Json::Value* value = properties.find(property.data(), property.data() + property.size());
  return value == nullptr ? "" : valueText(*value);
}

Event readEvent(const CosNotification::StructuredEvent& event, const ValueReader& reader) {
  const CosNotification::FixedEventHeader& fixed = event.header.fixed_header;
  Event result;
  result.domain = asUtf8(fixed.event_type.domain_name.in());
  result.type = asUtf8(fixed.event_type.type_name.in());
  result.name = asUtf8(fixed.event_name.in());
  result.header = readProperties(event.header.variable_header, reader);
  result.properties = readProperties(event.filterable_data, reader);
  // Agents declare it a name or just a list of pairs.
  if (result.properties.isMember("objectName")) {
    result.object = nameText(result.properties["objectName"]);
    result.properties["objectName"] = result.object;
  }
  result.body = reader.read(event.remainder_of_body);
  result.received = timeText(Clock::now());
  return result;
}

std::string summary(const Event& event) {
  const auto found = SUMMARIES.find(event.type);
  return found == SUMMARIES.end() ? ofAnythingElse(event) : found->second(event);
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

Row eventRow(const Event& event) {
  // An event without a time of its own came when it came.
  const std::string sent = event.text("emsTime");
  return {sent.empty() ? event.received : isoTime(sent),
          event.type,
          event.object,
          summary(event),
          event.text("notificationId"),
          event.domain,
          event.name,
          event.received,
          event.header,
          event.properties,
          event.body};
}

std::unique_ptr<RowStream> eventStream(std::ostream& out, Format format) {
  const Columns columns = {{"time", "TIME"},
                           {"type", "TYPE"},
                           {"objectName", "OBJECT"},
                           {"summary", "SUMMARY"},
                           {"notificationId", "ID", true},
                           {"domain", "DOMAIN", true},
                           {"eventName", "EVENT NAME", true},
                           {"received", "RECEIVED", true},
                           {"header", "HEADER", true},
                           {"properties", "PROPERTIES", true},
                           {"body", "BODY", true}};
  return std::make_unique<RowStream>(out, format, columns, std::vector<std::size_t>{24, 25, 32});
}

}  // namespace zk::nms
