// Small files: replaced as a whole, and there for as long as an object lives.
#ifndef ZK_AGENT_BASE_FILES_H
#define ZK_AGENT_BASE_FILES_H

#include <sys/types.h>
#include <string>

namespace zk::agent {

// Writes text to a new file beside path, with this mode whatever the umask, and
// moves it there: a reader sees the old text or the new one. Throws
// std::runtime_error, naming path and reason; path is then as it was.
void replaceFile(const std::string& path, const std::string& text, mode_t mode);

// A file that is there while its object lives.
class PublishedFile {
 public:
  // Writes the file, readable by everyone. Throws std::runtime_error.
  PublishedFile(std::string path, const std::string& text);
  ~PublishedFile();
  PublishedFile(const PublishedFile&) = delete;
  PublishedFile& operator=(const PublishedFile&) = delete;

 private:
  const std::string path_;
};

}  // namespace zk::agent

#endif
