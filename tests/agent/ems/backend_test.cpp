#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>

#include <thread>

#include "agent/ems/inventorybackend.h"
#include "tests/agent/ems/support.h"
#include "tests/support/doubles.h"
#include "zk_quornex/mo/commonfunc.h"
#include "zk_quornex/names/tename.h"
#include "zk_quornex/platform/ems.h"

using namespace zk::agent;
using testing::ElementsAre;
using testing::IsEmpty;
using zk::test::RecordedChanges;

namespace {

class Backend : public testing::Test {
 protected:
  Backend() : Backend(":memory:") {}
  explicit Backend(const std::string& path)
      : inventory(Inventory::open(path, {20, 2})), backend(*inventory) {
    inventory->setListener(&heard);
    before = zk::platform::install(&backend);
  }
  ~Backend() override { zk::platform::install(before); }

  RecordedChanges heard;
  std::unique_ptr<Inventory> inventory;
  InventoryBackend backend;
  zk::platform::EmsBackend* before = nullptr;
};

TEST_F(Backend, documentsItsCodes) {
  EXPECT_EQ(codeOf(Result::NO_SUCH_OBJECT), 0x41190001u);
  EXPECT_EQ(codeOf(Result::LABEL_IN_USE), 0x41190002u);
  EXPECT_EQ(codeOf(Result::STORAGE_FAILURE), 0x41190003u);
  EXPECT_EQ(codeOf(Result::NO_REQUEST), 0x41190004u);
}

TEST_F(Backend, answersForDevices) {
  std::string version;
  std::string location;
  EXPECT_EQ(EMFTopoI::getVersionOfDev(3, version), 0u);
  EXPECT_EQ(EMFTopoI::getLocationOfDev(3, location), 0u);
  EXPECT_EQ(version, inventory->device(3)->version);
  EXPECT_EQ(location, inventory->device(3)->location);
}

TEST_F(Backend, leavesTheTextOfAnUnknownDeviceAlone) {
  for (const long id : {0L, -1L, 21L}) {
    std::string text = "as it was";
    EXPECT_EQ(EMFTopoI::getVersionOfDev(static_cast<int>(id), text), 0x41190001u) << id;
    EXPECT_EQ(EMFTopoI::getLocationOfDev(id, text), 0x41190001u) << id;
    EXPECT_EQ(text, "as it was");
  }
  std::string text;
  EXPECT_EQ(EMFTopoI::getLocationOfDev(4294967297, text), 0x41190001u);
}

TEST_F(Backend, changesNothingWithoutARequest) {
  EXPECT_EQ(EMFMOMgrI::setOwner(), 0x41190004u);
  EXPECT_EQ(EMFMOMgrI::setUserLabel(), 0x41190004u);
  EXPECT_THAT(heard.lines(), IsEmpty());
}

TEST_F(Backend, appliesTheRequestOfTheThread) {
  const EmsRequest request(ObjectKey::device(3), "text");
  EXPECT_EQ(EMFMOMgrI::setOwner(), 0u);
  EXPECT_EQ(inventory->device(3)->owner, "text");
  EXPECT_NE(inventory->device(3)->userLabel, "text");
  EXPECT_EQ(EMFMOMgrI::setUserLabel(), 0u);
  EXPECT_EQ(inventory->device(3)->userLabel, "text");
  std::thread([] { EXPECT_EQ(EMFMOMgrI::setOwner(), 0x41190004u); }).join();
}

TEST_F(Backend, passesTheInventorysRefusalOn) {
  {
    const EmsRequest request(ObjectKey::device(99), "text");
    EXPECT_EQ(EMFMOMgrI::setUserLabel(), 0x41190001u);
  }
  const std::string taken = inventory->device(1)->userLabel;
  {
    const EmsRequest request(ObjectKey::device(2), taken, true);
    EXPECT_EQ(EMFMOMgrI::setUserLabel(), 0x41190002u);
    EXPECT_EQ(EMFMOMgrI::setOwner(), 0u) << "only user labels are unique";
  }
  const EmsRequest request(ObjectKey::device(2), taken, false);
  EXPECT_EQ(EMFMOMgrI::setUserLabel(), 0u);
}

TEST_F(Backend, endsTheInnerRequestBeforeTheOuter) {
  EXPECT_EQ(EmsRequest::current(), nullptr);
  {
    const EmsRequest outer(ObjectKey::ems(), "outer", true);
    {
      const EmsRequest inner(ObjectKey::link("1"), "inner");
      EXPECT_EQ(EmsRequest::current(), &inner);
      EXPECT_FALSE(EmsRequest::current()->enforceUniqueness());
    }
    ASSERT_EQ(EmsRequest::current(), &outer);
    EXPECT_EQ(EmsRequest::current()->target(), ObjectKey::ems());
    EXPECT_EQ(EmsRequest::current()->text(), "outer");
    EXPECT_TRUE(EmsRequest::current()->enforceUniqueness());
  }
  EXPECT_EQ(EmsRequest::current(), nullptr);
}

// The library reports the change itself, and so the listener can leave it out.
TEST_F(Backend, servesTheLibrarysSetters) {
  zk::test::CapturedEvents events;
  globaldefs::NVSList_T name;
  name.length(2);
  name[0].name = CORBA::string_dup("EMS");
  name[0].value = CORBA::string_dup("Quor/1");
  name[1].name = CORBA::string_dup("ManagedElement");
  name[1].value = CORBA::string_dup("3");
  const EmsRequest request(ObjectKey::device(3), "fresh");
  EXPECT_EQ(NS_QUORCORBA::TECommonFunc::OnSetUserLabel(name, "fresh", false), 0u);
  EXPECT_EQ(events.events().size(), 1u);
  EXPECT_THAT(heard.lines(), ElementsAre("nms userLabel 1:3 'Aldermoor-QW40-03' 'fresh'"));
}

class BackendOnDisk : public zk::test::TemporaryFolder, public Backend {
 protected:
  BackendOnDisk() : Backend(file("ems.db")) {}
};

TEST_F(BackendOnDisk, turnsAStorageFailureIntoItsCode) {
  zk::test::CapturedTrace trace;
  signal(SIGXFSZ, SIG_IGN);
  rlimit limit{};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
  const rlimit none{0, limit.rlim_max};
  const EmsRequest request(ObjectKey::device(3), "too much");
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &none), 0);
  const unsigned long code = EMFMOMgrI::setUserLabel();
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
  EXPECT_EQ(code, 0x41190003u);
  EXPECT_NE(inventory->device(3)->userLabel, "too much");
  EXPECT_THAT(heard.lines(), IsEmpty());
  EXPECT_THAT(trace.texts(),
              ElementsAre(testing::StartsWith("1 InventoryBackend::setAttribute failed.inventory " +
                                              file("ems.db") + ": ")));
}

}  // namespace
