#include "agent/base/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <utility>

namespace zk::agent {

namespace {

bool writeAll(int file, const std::string& text) {
  std::size_t done = 0;
  while (done < text.size()) {
    const ssize_t count = write(file, text.data() + done, text.size() - done);
    if (count < 0 && errno != EINTR) {
      return false;
    }
    done += count < 0 ? 0 : static_cast<std::size_t>(count);
  }
  return true;
}

[[noreturn]] void fail(const std::string& path, int reason) {
  throw std::runtime_error("cannot write " + path + ": " + std::strerror(reason));
}

}  // namespace

void replaceFile(const std::string& path, const std::string& text, mode_t mode) {
  std::string temporary = path + ".XXXXXX";
  const int file = mkstemp(temporary.data());
  if (file < 0) {
    fail(path, errno);
  }
  const bool written = fchmod(file, mode) == 0 && writeAll(file, text) && fsync(file) == 0;
  int reason = errno;
  close(file);
  if (written && std::rename(temporary.c_str(), path.c_str()) == 0) {
    return;
  }
  reason = written ? errno : reason;
  std::remove(temporary.c_str());
  fail(path, reason);
}

PublishedFile::PublishedFile(std::string path, const std::string& text) : path_(std::move(path)) {
  replaceFile(path_, text, S_IRUSR | S_IWUSR | S_IRGRP | S_IROTH);
}

PublishedFile::~PublishedFile() { std::remove(path_.c_str()); }

}  // namespace zk::agent
