// Writing a small file so that a reader sees the old text or the new one, and
// never half of it.
#ifndef ZK_AGENT_BASE_ATOMICFILE_H
#define ZK_AGENT_BASE_ATOMICFILE_H

#include <sys/types.h>

#include <string>

namespace zk::agent {

// Writes text to a new file beside path, with this mode whatever the umask, and
// moves it there. Throws std::runtime_error, naming path and reason; path is
// then as it was.
void replaceFile(const std::string& path, const std::string& text, mode_t mode);

}  // namespace zk::agent

#endif
