#include "zk_quornex/platform/default/emsbackend.h"

#include <gtest/gtest.h>

#include "tests/support/doubles.h"

namespace zk::test {
namespace {

using zk::platform::EmsBackend;

class AnsweringEms : public Installed<EmsBackend> {
 public:
  unsigned long setOwner() override { return 0; }
  unsigned long setUserLabel() override { return 5; }
  unsigned long getVersionOfDev(int id, std::string& version) override {
    version = "version of " + std::to_string(id);
    return 0;
  }
  unsigned long getLocationOfDev(long id, std::string& location) override {
    location = "location of " + std::to_string(id);
    return 0;
  }
};

TEST(EmsBackend, refusesEverythingWithoutAnEms) {
  std::string text = "as before";
  EXPECT_EQ(EMFMOMgrI::setOwner(), EmsBackend::NO_EMS);
  EXPECT_EQ(EMFMOMgrI::setUserLabel(), EmsBackend::NO_EMS);
  EXPECT_EQ(EMFTopoI::getVersionOfDev(1, text), EmsBackend::NO_EMS);
  EXPECT_EQ(EMFTopoI::getLocationOfDev(1, text), EmsBackend::NO_EMS);
  EXPECT_EQ(text, "as before");
}

TEST(EmsBackend, forwardsToTheInstalledEms) {
  AnsweringEms ems;
  std::string text;
  EXPECT_EQ(EMFMOMgrI::setOwner(), 0u);
  EXPECT_EQ(EMFMOMgrI::setUserLabel(), 5u);
  EXPECT_EQ(EMFTopoI::getVersionOfDev(-3, text), 0u);
  EXPECT_EQ(text, "version of -3");
  EXPECT_EQ(EMFTopoI::getLocationOfDev(5000000000L, text), 0u);
  EXPECT_EQ(text, "location of 5000000000");
}

}  // namespace
}  // namespace zk::test
