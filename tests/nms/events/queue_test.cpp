#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "nms/events/subscription.h"

namespace zk::nms {
namespace {

using Steady = std::chrono::steady_clock;

Event event(const std::string& type) {
  Event result;
  result.type = type;
  return result;
}

std::optional<Told> takeNow(EventQueue& queue) { return queue.take(Steady::now()); }

TEST(EventQueue, keepsTheOrderOfAllThatIsTold) {
  EventQueue queue;
  queue.put(event("A"));
  queue.eventLossOccurred("t1", "9");
  queue.put(event("B"));
  queue.eventLossCleared("t2");
  queue.disconnected();
  queue.sessionEnded();
  EXPECT_EQ(takeNow(queue)->event.type, "A");
  const auto loss = takeNow(queue);
  EXPECT_EQ(loss->kind, Told::LOSS_BEGAN);
  EXPECT_EQ(loss->time, "t1");
  EXPECT_EQ(loss->notificationId, "9");
  EXPECT_EQ(takeNow(queue)->event.type, "B");
  EXPECT_EQ(takeNow(queue)->kind, Told::LOSS_ENDED);
  EXPECT_EQ(takeNow(queue)->kind, Told::DISCONNECTED);
  EXPECT_EQ(takeNow(queue)->kind, Told::SESSION_ENDED);
  EXPECT_FALSE(takeNow(queue));
}

TEST(EventQueue, tellsTheLossOfAlarmsAsALoss) {
  EventQueue queue;
  queue.alarmLossOccurred("t", "1");
  EXPECT_EQ(takeNow(queue)->kind, Told::LOSS_BEGAN);
}

TEST(EventQueue, makesWhoBringsMoreThanItHoldsWait) {
  EventQueue queue(2);
  EXPECT_TRUE(queue.put(event("1")));
  EXPECT_TRUE(queue.put(event("2")));
  std::atomic<bool> through{false};
  std::thread bringer([&] {
    queue.put(event("3"));
    through = true;
  });
  queue.sessionEnded();  // finds room all the same
  EXPECT_FALSE(through);
  EXPECT_EQ(takeNow(queue)->event.type, "1");
  EXPECT_EQ(takeNow(queue)->event.type, "2");
  bringer.join();
  EXPECT_TRUE(through);
  EXPECT_EQ(takeNow(queue)->kind, Told::SESSION_ENDED);
  EXPECT_EQ(takeNow(queue)->event.type, "3");
}

TEST(EventQueue, letsGoWhoWaitsWhenItCloses) {
  EventQueue queue(1);
  queue.put(event("1"));
  std::thread bringer([&] { EXPECT_FALSE(queue.put(event("2"))); });
  queue.close();
  bringer.join();
  EXPECT_EQ(takeNow(queue)->event.type, "1");
  EXPECT_FALSE(queue.put(event("3")));
  queue.reopen();
  EXPECT_TRUE(queue.put(event("4")));
  EXPECT_EQ(takeNow(queue)->event.type, "4");
}

TEST(EventQueue, wakesWhoTakes) {
  EventQueue queue;
  std::thread bringer([&] { queue.put(event("1")); });
  EXPECT_EQ(queue.take(Steady::now() + std::chrono::minutes(1))->event.type, "1");
  bringer.join();
}

}  // namespace
}  // namespace zk::nms
