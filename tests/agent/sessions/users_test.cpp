#include "agent/sessions/users.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

#include "tests/agent/ems/support.h"

namespace {

using namespace zk::agent;
using zk::test::bytesOf;
using zk::test::TemporaryFolder;
using zk::test::writeBytes;

// A hash of the right form, for tests that verify nothing with it.
constexpr const char* ANY_HASH =
    "$argon2id$v=19$m=65536,t=2,p=1$c2FsdHNhbHRzYWx0$aGFzaGhhc2hoYXNoaGFzaGhhc2hoYXNo";

class UsersFile : public testing::Test {
 protected:
  std::string refusalOf(const std::string& bytes) {
    writeBytes(path, bytes);
    try {
      readUsers(path);
      return "";
    } catch (const UsersError& failure) {
      return failure.what();
    }
  }

  TemporaryFolder folder;
  const std::string path = folder.file("users");
};

TEST_F(UsersFile, letsInTheRightPasswordOnly) {
  setPassword(path, "operator", "secret");
  setPassword(path, "viewer", "other");
  UsersOfFile users(path);
  EXPECT_TRUE(users.mayLogIn("operator", "secret"));
  EXPECT_TRUE(users.mayLogIn("viewer", "other"));
  EXPECT_FALSE(users.mayLogIn("operator", "other"));
  EXPECT_FALSE(users.mayLogIn("operator", ""));
  EXPECT_FALSE(users.mayLogIn("operator", "secret "));
  EXPECT_FALSE(users.mayLogIn("nobody", "secret"));
  EXPECT_FALSE(users.mayLogIn("", ""));
}

TEST_F(UsersFile, replacesAPasswordAndKeepsTheOthers) {
  setPassword(path, "operator", "secret");
  setPassword(path, "viewer", "other");
  setPassword(path, "operator", "changed");
  UsersOfFile users(path);
  EXPECT_FALSE(users.mayLogIn("operator", "secret"));
  EXPECT_TRUE(users.mayLogIn("operator", "changed"));
  EXPECT_TRUE(users.mayLogIn("viewer", "other"));
}

TEST_F(UsersFile, countsChangesAtTheNextLogin) {
  setPassword(path, "operator", "secret");
  UsersOfFile users(path);
  setPassword(path, "operator", "changed");
  EXPECT_FALSE(users.mayLogIn("operator", "secret"));
  EXPECT_TRUE(users.mayLogIn("operator", "changed"));
}

TEST_F(UsersFile, letsNobodyInOnceItIsGone) {
  setPassword(path, "operator", "secret");
  UsersOfFile users(path);
  ASSERT_EQ(remove(path.c_str()), 0);
  EXPECT_FALSE(users.mayLogIn("operator", "secret"));
}

TEST_F(UsersFile, isReadableByItsOwnerOnlyAndHoldsNoPassword) {
  umask(0);
  setPassword(path, "operator", "secret");
  struct stat status {};
  ASSERT_EQ(stat(path.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0600U);
  EXPECT_EQ(bytesOf(path).find("secret"), std::string::npos);
  EXPECT_EQ(bytesOf(path).rfind("operator:$argon2id$", 0), 0U);
}

TEST_F(UsersFile, mayHoldCommentsAndBlankLines) {
  writeBytes(path, std::string("# who\n\noperator:") + ANY_HASH + "\n");
  EXPECT_EQ(readUsers(path).size(), 1U);
}

TEST_F(UsersFile, isRefusedWithTheLineThatIsWrong) {
  const std::string good = std::string("operator:") + ANY_HASH + "\n";
  EXPECT_EQ(refusalOf(good), "");
  EXPECT_EQ(refusalOf("operator\n"), path + ":1: not an entry of the form name:hash");
  EXPECT_EQ(refusalOf(good + ":" + ANY_HASH + "\n"),
            path + ":2: not an entry of the form name:hash");
  EXPECT_EQ(refusalOf("a b:" + std::string(ANY_HASH) + "\n"),
            path + ":1: not an entry of the form name:hash");
  EXPECT_EQ(refusalOf("operator:secret\n"),
            path + ":1: not a password hash made by 'zk-agent passwd'");
  EXPECT_EQ(refusalOf("operator:$argon2id$" + std::string(200, 'x') + "\n"),
            path + ":1: not a password hash made by 'zk-agent passwd'");
  EXPECT_EQ(refusalOf(good + good), path + ":2: a second entry for the same user");
}

TEST_F(UsersFile, mustBeThereAtTheStart) {
  try {
    UsersOfFile users(path);
    FAIL();
  } catch (const UsersError& failure) {
    EXPECT_EQ(failure.what(), "cannot read users file " + path + ": No such file or directory");
  }
}

TEST_F(UsersFile, takesNoNameThatItCouldNotHold) {
  for (const char* name : {"", "a:b", "a b", "#a", "a\nb"}) {
    EXPECT_THROW(setPassword(path, name, "secret"), UsersError) << name;
  }
  EXPECT_THROW(setPassword(path, std::string(65, 'a'), "secret"), UsersError);
  EXPECT_THROW(setPassword(path, "operator", ""), UsersError);
  EXPECT_THROW(setPassword(path, "operator", std::string(257, 'x')), UsersError);
  EXPECT_NO_THROW(setPassword(path, "operator", std::string(256, 'x')));
}

TEST_F(UsersFile, isLeftAsItWasWhenItCannotBeUnderstood) {
  writeBytes(path, "nonsense\n");
  EXPECT_THROW(setPassword(path, "operator", "secret"), UsersError);
  EXPECT_EQ(bytesOf(path), "nonsense\n");
}

TEST_F(UsersFile, saysWhyItCannotBeWritten) {
  const std::string nowhere = folder.file("missing") + "/users";
  try {
    setPassword(nowhere, "operator", "secret");
    FAIL();
  } catch (const UsersError& failure) {
    EXPECT_EQ(failure.what(), "cannot write " + nowhere + ": No such file or directory");
  }
}

TEST(Anyone, mayLogIn) { EXPECT_TRUE(Anyone().mayLogIn("", "")); }

}  // namespace
