#include "nms/events/eventrows.h"

#include "nms/events/times.h"

namespace zk::nms {

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
