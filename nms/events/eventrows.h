// Events as rows. No state.
#ifndef ZK_NMS_EVENTS_EVENTROWS_H
#define ZK_NMS_EVENTS_EVENTROWS_H

#include <memory>

#include "nms/events/event.h"
#include "nms/output/rowstream.h"

namespace zk::nms {

Row eventRow(const Event& event);

std::unique_ptr<RowStream> eventStream(std::ostream& out, Format format);

}  // namespace zk::nms

#endif
