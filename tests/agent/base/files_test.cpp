#include "agent/base/files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <stdexcept>

#include "tests/agent/ems/support.h"

namespace {

using zk::agent::PublishedFile;
using zk::agent::replaceFile;
using zk::test::bytesOf;
using zk::test::TemporaryFolder;
using zk::test::writeBytes;

mode_t modeOf(const std::string& path) {
  struct stat status {};
  EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
  return status.st_mode & 0777;
}

TEST(ReplacedFile, hasTheNewTextAndModeAndNothingBesideIt) {
  const TemporaryFolder folder;
  const std::string path = folder.file("users");
  writeBytes(path, "old, and longer");
  replaceFile(path, "new", 0600);
  EXPECT_EQ(bytesOf(path), "new");
  EXPECT_EQ(modeOf(path), 0600U);
  const std::filesystem::directory_iterator files(std::filesystem::path(path).parent_path());
  EXPECT_EQ(std::distance(begin(files), end(files)), 1);
}

TEST(ReplacedFile, saysWhatItCannotWrite) {
  try {
    replaceFile("/nowhere/users", "new", 0600);
    FAIL() << "written";
  } catch (const std::runtime_error& failure) {
    EXPECT_STREQ(failure.what(), "cannot write /nowhere/users: No such file or directory");
  }
}

TEST(PublishedFile, isThereWhileItsObjectLives) {
  const TemporaryFolder folder;
  const std::string path = folder.file("agent.ior");
  {
    const PublishedFile file(path, "IOR:00\n");
    EXPECT_EQ(bytesOf(path), "IOR:00\n");
    EXPECT_EQ(modeOf(path), 0644U);
  }
  EXPECT_FALSE(std::filesystem::exists(path));
}

}  // namespace
