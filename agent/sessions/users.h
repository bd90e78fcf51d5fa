// The users who may log in: a file of lines "name:hash", with hashes that
// libsodium makes (Argon2id). Passwords are neither kept nor logged.
#ifndef ZK_AGENT_SESSIONS_USERS_H
#define ZK_AGENT_SESSIONS_USERS_H

#include <cstddef>
#include <map>
#include <stdexcept>
#include <string>

namespace zk::agent {

// Bytes of the longest name or password that is looked at.
inline constexpr std::size_t LONGEST_WORD = 256;

// What is wrong with a users file, or with a name or password, in one line.
class UsersError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Name to hash.
using UserTable = std::map<std::string, std::string>;

// Reads the file. Throws UsersError, naming file and line, when it cannot be
// read or holds anything but entries, blank lines and lines that start with #.
UserTable readUsers(const std::string& path);

// Adds the user or replaces the password. The file, made if there is none, is
// replaced as a whole and readable by its owner only. Throws UsersError, and
// std::bad_alloc without the 64 MiB that a hash takes.
void setPassword(const std::string& path, const std::string& user, const std::string& password);

// Decides about logins. Safe on any thread. Each may take the 64 MiB of a
// comparison, and throws std::bad_alloc without them: how many there are at once is
// up to the caller.
class Users {
 public:
  virtual ~Users() = default;
  virtual bool mayLogIn(const std::string& user, const std::string& password) = 0;
};

// For an agent without a users file: no authentication, everyone may.
class Anyone : public Users {
 public:
  bool mayLogIn(const std::string&, const std::string&) override { return true; }
};

// Reads the file at every login, so that a changed password or a removed user
// counts at once. A file that cannot be read lets nobody in.
class UsersOfFile : public Users {
 public:
  // Throws UsersError when the file cannot be used as it is now.
  explicit UsersOfFile(std::string path);

  // Takes as long for a user that does not exist as for a wrong password.
  bool mayLogIn(const std::string& user, const std::string& password) override;

 private:
  const std::string path_;
  std::string nobodysHash_;  // what a password of an unknown user is compared with
};

}  // namespace zk::agent

#endif
