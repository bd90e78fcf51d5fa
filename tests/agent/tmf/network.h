// A small embedded EMS in memory whose changes are told, and what was told.
#ifndef ZK_TESTS_AGENT_TMF_NETWORK_H
#define ZK_TESTS_AGENT_TMF_NETWORK_H

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "agent/ems/inventorybackend.h"
#include "agent/tmf/changenotifier.h"
#include "tests/support/doubles.h"
#include "tests/support/dump.h"

namespace zk::test {

// 2012-11-20 09:42:00 UTC.
inline constexpr std::chrono::system_clock::time_point NOW{std::chrono::seconds(1353404520)};

// Four devices at two sites: device 1 is "Aldermoor-QM32-01".
class Network : public testing::Test {
 protected:
  Network() { clock.time = NOW; }
  ~Network() override { zk::platform::install(static_cast<zk::platform::EmsBackend*>(nullptr)); }

  // Every event since the last call, as text.
  std::vector<std::string> told() {
    std::vector<std::string> texts;
    const auto all = captured.events();
    for (; seen < all.size(); ++seen) {
      texts.push_back(dumpEvent(all[seen]));
    }
    return texts;
  }

  // The one event since the last call; an empty one, failing, otherwise.
  CosNotification::StructuredEvent onlyEvent() {
    const auto all = captured.events();
    EXPECT_EQ(all.size(), seen + 1);
    const bool one = all.size() == seen + 1;
    seen = all.size();
    return one ? all.back() : CosNotification::StructuredEvent();
  }

  FixedEmsConfig config;
  FixedClock clock;
  CapturedEvents captured;
  const std::unique_ptr<zk::agent::Inventory> inventory =
      zk::agent::Inventory::open(":memory:", {4, 2});
  zk::agent::InventoryBackend backend{*inventory};
  zk::agent::ChangeReporting reporting{*inventory};

 private:
  zk::platform::EmsBackend* const before = zk::platform::install(&backend);
  std::size_t seen = 0;
};

}  // namespace zk::test

#endif
