// What the tests of the embedded EMS share.
#ifndef ZK_TESTS_AGENT_EMS_SUPPORT_H
#define ZK_TESTS_AGENT_EMS_SUPPORT_H

#include <filesystem>
#include <fstream>
#include <iterator>
#include <mutex>
#include <string>
#include <vector>

#include "agent/ems/changes.h"
#include "agent/ems/inventory.h"

namespace zk::test {

// A folder of its own, gone at the end.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "zk-ems-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
      throw std::runtime_error("no temporary folder");
    }
    path_ = name;
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  std::string file(const std::string& name) const { return (path_ / name).string(); }

 private:
  std::filesystem::path path_;
};

inline std::string bytesOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

inline void writeBytes(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

// A key as one text, such as "5:1/2" for the submap 2 in the submap 1.
inline std::string dump(const zk::agent::ObjectKey& key) {
  const std::string parent = key.parentId.empty() ? "" : key.parentId + "/";
  return std::to_string(static_cast<int>(key.kind)) + ":" + parent + key.id;
}

// Writes down every change it is told of as one line.
class RecordedChanges : public zk::agent::ChangeListener {
 public:
  void created(const zk::agent::ObjectRecord& record) override {
    add("created " + dump(keyOf(record)));
  }
  void removed(const zk::agent::ObjectRecord& record) override {
    add("removed " + dump(keyOf(record)));
  }
  void attributeChanged(const zk::agent::AttributeChange& change) override {
    static const char* const names[] = {"userLabel", "owner", "nativeName"};
    add(std::string(change.origin == zk::agent::Origin::NMS ? "nms " : "ems ") +
        names[static_cast<int>(change.attribute)] + " " + dump(keyOf(change.record)) + " '" +
        change.before + "' '" + change.after + "'");
  }
  void alarmRaised(const zk::agent::AlarmRecord& alarm) override { add("raised " + dump(alarm)); }
  void alarmCleared(const zk::agent::AlarmRecord& alarm) override { add("cleared " + dump(alarm)); }

  std::vector<std::string> lines() const {
    const std::lock_guard<std::mutex> guard(mutex_);
    return lines_;
  }

 private:
  static std::string dump(const zk::agent::ObjectKey& key) { return zk::test::dump(key); }
  static std::string dump(const zk::agent::AlarmRecord& alarm) {
    return std::to_string(alarm.deviceId) + " " + alarm.probableCause + " " + alarm.qualifier +
           " severity " + std::to_string(static_cast<int>(alarm.severity));
  }
  void add(std::string line) {
    const std::lock_guard<std::mutex> guard(mutex_);
    lines_.push_back(std::move(line));
  }

  mutable std::mutex mutex_;
  std::vector<std::string> lines_;
};

}  // namespace zk::test

#endif
