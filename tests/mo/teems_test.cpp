// The singleton that forwards the EMS-level setters.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <type_traits>

#include "tests/support/journal.h"
#include "zk_quornex/mo/commonfunc.h"

namespace zk::test {
namespace {

static_assert(!std::is_copy_constructible_v<NS_QUORCORBA::TEEMS>);
static_assert(!std::is_copy_assignable_v<NS_QUORCORBA::TEEMS>);

using NS_QUORCORBA::TEEMS;
using testing::ElementsAre;

class Teems : public testing::Test {
 protected:
  ~Teems() override { TEEMS::Destroy(); }

  Journal journal;
  JournalEms backend{journal};
};

TEST_F(Teems, isOneInstance) {
  TEEMS* const first = TEEMS::Instance();
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(TEEMS::Instance(), first);
}

TEST_F(Teems, forwardsAndReturnsTheEmssCodes) {
  backend.userLabelResult = 0x100000005;
  backend.ownerResult = 6;
  const TEEMS* const ems = TEEMS::Instance();
  EXPECT_EQ(ems->SetUserLabel(), 0x100000005U);
  EXPECT_EQ(ems->SetOwner(), 6U);
  EXPECT_THAT(journal, ElementsAre("setUserLabel", "setOwner"));
}

TEST_F(Teems, returnsZeroWhenTheEmsAccepts) {
  EXPECT_EQ(TEEMS::Instance()->SetUserLabel(), 0U);
  EXPECT_EQ(TEEMS::Instance()->SetOwner(), 0U);
}

TEST_F(Teems, tellsTheNmsNothing) {
  JournalPusher pusher(journal);
  TEEMS::Instance()->SetUserLabel();
  TEEMS::Instance()->SetOwner();
  EXPECT_THAT(journal, ElementsAre("setUserLabel", "setOwner"));
}

TEST_F(Teems, isMadeAgainAfterAnyNumberOfDestroys) {
  TEEMS::Destroy();
  ASSERT_NE(TEEMS::Instance(), nullptr);
  TEEMS::Destroy();
  TEEMS::Destroy();
  ASSERT_NE(TEEMS::Instance(), nullptr);
  EXPECT_EQ(TEEMS::Instance(), TEEMS::Instance());
  EXPECT_EQ(TEEMS::Instance()->SetOwner(), 0U);
}

}  // namespace
}  // namespace zk::test
