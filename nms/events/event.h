// One event as the program keeps it: in UTF-8, free of the ORB that brought it.
#ifndef ZK_NMS_EVENTS_EVENT_H
#define ZK_NMS_EVENTS_EVENT_H

#include <json/value.h>

#include <iosfwd>
#include <memory>
#include <string>

#include "nms/events/value.h"
#include "nms/output/output.h"
#include "zk_quornex/idl/events.h"

namespace zk::nms {

struct Event {
  std::string domain;
  std::string type;
  std::string name;
  std::string object;      // a typed name; empty when the event is about none
  Json::Value header;      // the variable header, by name
  Json::Value properties;  // the filterable properties, by name
  Json::Value body;
  std::string received;  // this machine's time

  // A property as a text; empty when the event has none of the name.
  std::string text(const std::string& property) const;
};

// Throws nothing of the ORB's.
Event readEvent(const CosNotification::StructuredEvent& event, const ValueReader& reader);

// One line for people: what happened, without the object's name.
std::string summary(const Event& event);

// ("OT_MANAGED_ELEMENT", "") is "managed element"; a qualifier says it better.
std::string objectTypeText(const std::string& type, const std::string& qualifier);

Row eventRow(const Event& event);

// Of such rows.
std::unique_ptr<RowStream> eventStream(std::ostream& out, Format format);

}  // namespace zk::nms

#endif
