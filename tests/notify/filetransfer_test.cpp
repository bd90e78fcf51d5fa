// The event that tells the state of a history-alarm file's transfer.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "tests/notify/properties.h"
#include "tests/support/journal.h"
#include "zk_quornex/notify/notification.h"

namespace zk::test {
namespace {

using NS_QUORCORBA::EnFileTransfStatus;
using NS_QUORCORBA::TANotification;
using testing::ElementsAre;

class FileTransfer : public testing::Test {
 protected:
  std::string sent(int status, int fileId, const std::string& filePath) {
    TANotification::SendNotification("NT_FILE_TRANSFER_STATUS",
                                     static_cast<EnFileTransfStatus>(status), fileId, filePath);
    return dumpEvent(pusher.last());
  }

  Journal journal;
  JournalClock clock{journal};
  JournalPusher pusher{journal};
};

TEST_F(FileTransfer, carriesThreePropertiesInStateZero) {
  EXPECT_EQ(sent(0, 41, "/var/history"),
            "header=domain|type|event\n"
            "0 notificationId=string:\n"
            "1 queryHistoryAlarmsStatus=FileTransferStatus_T:FT_IN_PROGRESS\n"
            "2 HistoryAlarmFileId=long:41\n"
            "body=empty\n");
}

TEST_F(FileTransfer, carriesThreePropertiesInStateOne) {
  EXPECT_EQ(sent(1, 42, "/var/history"),
            "header=domain|type|event\n"
            "0 notificationId=string:\n"
            "1 queryHistoryAlarmsStatus=FileTransferStatus_T:FT_FAILED\n"
            "2 HistoryAlarmFileId=long:42\n"
            "body=empty\n");
}

TEST_F(FileTransfer, carriesThePathInStateTwo) {
  EXPECT_EQ(sent(2, 43, "/var/history/43.csv"),
            "header=domain|type|event\n"
            "0 notificationId=string:\n"
            "1 queryHistoryAlarmsStatus=FileTransferStatus_T:FT_COMPLETED\n"
            "2 filePath=string:/var/history/43.csv\n"
            "3 HistoryAlarmFileId=long:43\n"
            "body=empty\n");
}

TEST_F(FileTransfer, writesTheStateAsTheSameNumber) {
  for (int status = 0; status <= 2; ++status) {
    sent(status, 1, "");
    const CORBA::Any& value = pusher.last().filterable_data[1].value;
    const CORBA::TypeCode_var type = value.type();
    notifications::FileTransferStatus_T received = notifications::FT_IN_PROGRESS;
    ASSERT_TRUE(value >>= received);
    EXPECT_EQ(static_cast<int>(received), status);
    EXPECT_STREQ(type->id(), "IDL:mtnm.tmforum.org/notifications/FileTransferStatus_T:1.0");
  }
}

TEST_F(FileTransfer, keepsAnEmptyPathInStateTwo) {
  EXPECT_EQ(sent(2, 1, ""),
            "header=domain|type|event\n"
            "0 notificationId=string:\n"
            "1 queryHistoryAlarmsStatus=FileTransferStatus_T:FT_COMPLETED\n"
            "2 filePath=string:\n"
            "3 HistoryAlarmFileId=long:1\n"
            "body=empty\n");
}

TEST_F(FileTransfer, sendsAnUnknownStateWithoutProperties) {
  std::size_t count = 0;
  for (const int status :
       {3, -1, 4, 256, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
    EXPECT_EQ(sent(status, 5, "/var/history"), "header=domain|type|event\nbody=empty\n") << status;
    EXPECT_EQ(pusher.pushed.size(), ++count);
  }
}

TEST_F(FileTransfer, carriesEveryFileIdSigned) {
  const auto lastProperty = [this] { return properties(pusher.last()).back(); };
  sent(0, -1, "");
  EXPECT_EQ(lastProperty(), "HistoryAlarmFileId=long:-1");
  sent(1, std::numeric_limits<int>::min(), "");
  EXPECT_EQ(lastProperty(), "HistoryAlarmFileId=long:-2147483648");
  sent(2, std::numeric_limits<int>::max(), "");
  EXPECT_EQ(lastProperty(), "HistoryAlarmFileId=long:2147483647");
}

TEST_F(FileTransfer, carriesALongPathWhole) {
  const std::string path(5000, 'p');
  sent(2, 1, path);
  EXPECT_EQ(properties(pusher.last()).at(2), "filePath=string:" + path);
}

TEST_F(FileTransfer, asksForTheHeaderAndPushesOnceAndReadsNoClock) {
  for (const int status : {0, 1, 2, 3}) {
    journal.clear();
    sent(status, 1, "");
    EXPECT_THAT(journal, ElementsAre("header NT_FILE_TRANSFER_STATUS", "push")) << status;
  }
}

TEST_F(FileTransfer, startsWithAnEmptyEvent) {
  sent(2, 1, "/var/history");
  EXPECT_EQ(dumpEvent(pusher.atHeader.at(0)), EMPTY_EVENT);
}

TEST_F(FileTransfer, neverCarriesABodyWhateverTheType) {
  TANotification::SendNotification("NT_OBJECT_CREATION", static_cast<EnFileTransfStatus>(0), 1, "");
  EXPECT_EQ(body(pusher.pushed.at(0)), "empty");
}

}  // namespace
}  // namespace zk::test
