#include "nms/events/consumers.h"

namespace zk::nms {

void SequenceConsumer::push_structured_events(const CosNotification::EventBatch& events) {
  for (CORBA::ULong i = 0; i < events.length(); ++i) {
    if (!queue_.put(readEvent(events[i], reader_))) {
      throw CosEventComm::Disconnected();
    }
  }
}

void StructuredConsumer::push_structured_event(const CosNotification::StructuredEvent& event) {
  if (!queue_.put(readEvent(event, reader_))) {
    throw CosEventComm::Disconnected();
  }
}

}  // namespace zk::nms
