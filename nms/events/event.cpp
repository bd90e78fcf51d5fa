#include "nms/events/event.h"

#include "nms/events/times.h"
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

}  // namespace zk::nms
