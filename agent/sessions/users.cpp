#include "agent/sessions/users.h"

#include <fcntl.h>
#include <sodium.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <new>
#include <vector>

#include "agent/base/files.h"
#include "agent/base/log.h"

namespace zk::agent {

namespace {

constexpr const char* HASH_PREFIX = "$argon2id$";

void startSodium() {
  if (sodium_init() < 0) {
    throw UsersError("the cryptographic library cannot be started");
  }
}

std::string hashOf(const std::string& password) {
  startSodium();
  std::array<char, crypto_pwhash_STRBYTES> hash{};
  if (crypto_pwhash_str(hash.data(), password.data(), password.size(),
                        crypto_pwhash_OPSLIMIT_INTERACTIVE,
                        crypto_pwhash_MEMLIMIT_INTERACTIVE) != 0) {
    throw std::bad_alloc();
  }
  return hash.data();
}

// A comparison without the memory for it is none: the password may be right.
bool isPassword(const std::string& password, const std::string& hash) {
  errno = 0;
  const bool same = crypto_pwhash_str_verify(hash.c_str(), password.data(), password.size()) == 0;
  if (!same && errno == ENOMEM) {
    throw std::bad_alloc();
  }
  return same;
}

bool isUserName(const std::string& name) {
  return !name.empty() && name.size() <= 64 && name.front() != '#' &&
         std::none_of(name.begin(), name.end(), [](unsigned char byte) {
           return byte <= 0x20 || byte == 0x7f || byte == ':';
         });
}

void addEntry(UserTable& users, const std::string& line, const std::string& where) {
  const std::size_t colon = line.find(':');
  if (colon == std::string::npos || !isUserName(line.substr(0, colon))) {
    throw UsersError(where + ": not an entry of the form name:hash");
  }
  const std::string hash = line.substr(colon + 1);
  if (hash.rfind(HASH_PREFIX, 0) != 0 || hash.size() >= crypto_pwhash_STRBYTES) {
    throw UsersError(where + ": not a password hash made by 'zk-agent passwd'");
  }
  if (!users.emplace(line.substr(0, colon), hash).second) {
    throw UsersError(where + ": a second entry for the same user");
  }
}

}  // namespace

UserTable readUsers(const std::string& path) {
  std::ifstream file(path);
  if (!file) {
    throw UsersError("cannot read users file " + path + ": " + std::strerror(errno));
  }
  UserTable users;
  std::string line;
  for (int number = 1; std::getline(file, line); ++number) {
    if (!line.empty() && line.front() != '#') {
      addEntry(users, line, path + ":" + std::to_string(number));
    }
  }
  if (file.bad()) {
    throw UsersError("cannot read users file " + path);
  }
  return users;
}

void setPassword(const std::string& path, const std::string& user, const std::string& password) {
  if (!isUserName(user)) {
    throw UsersError("a user name has 1 to 64 characters, no blank, no colon and no # in front");
  }
  if (password.empty() || password.size() > LONGEST_WORD) {
    throw UsersError("the password is empty or has more than 256 bytes");
  }
  UserTable users = access(path.c_str(), F_OK) == 0 ? readUsers(path) : UserTable{};
  users[user] = hashOf(password);
  std::string text;
  for (const auto& [name, hash] : users) {
    text.append(name).append(":").append(hash).append("\n");
  }
  try {
    replaceFile(path, text, S_IRUSR | S_IWUSR);
  } catch (const std::runtime_error& failure) {
    throw UsersError(failure.what());
  }
}

UsersOfFile::UsersOfFile(std::string path) : path_(std::move(path)) {
  readUsers(path_);
  std::array<char, 16> secret{};
  startSodium();
  randombytes_buf(secret.data(), secret.size());
  nobodysHash_ = hashOf(std::string(secret.data(), secret.size()));
}

bool UsersOfFile::mayLogIn(const std::string& user, const std::string& password) {
  UserTable users;
  try {
    users = readUsers(path_);
  } catch (const UsersError& failure) {
    logFailure(std::string("nobody can log in: ") + failure.what());
  }
  const auto found = users.find(user);
  const bool known = found != users.end();
  const std::string& hash = known ? found->second : nobodysHash_;
  return isPassword(password, hash) && known;
}

}  // namespace zk::agent
