#include "nms/wire/agentref.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <regex>

#include "nms/wire/errors.h"

namespace zk::nms {
namespace {

const char* const kFactoryKey = "EmsSessionFactory";

bool isReference(const std::string& text) {
  for (const char* scheme : {"corbaloc:", "corbaname:", "IOR:"}) {
    if (text.rfind(scheme, 0) == 0) {
      return true;
    }
  }
  return false;
}

// A name, an IPv4 address or an IPv6 address in brackets; then the port.
bool isHostAndPort(const std::string& text) {
  static const std::regex form("([A-Za-z0-9._-]+|\\[[0-9A-Fa-f:.]+\\]):([0-9]{1,5})");
  std::smatch found;
  if (!std::regex_match(text, found, form)) {
    return false;
  }
  const int port = std::stoi(found[2]);
  return port > 0 && port < 65536;
}

std::string fromFile(const std::string& path) {
  std::ifstream file(path);
  if (!file) {
    throw ConnectionError("cannot read the agent's reference from " + path + ": " +
                          std::strerror(errno));
  }
  std::string reference;
  file >> reference;
  if (!isReference(reference)) {
    throw ConnectionError("the file " + path + " holds no agent reference");
  }
  return reference;
}

}  // namespace

std::string agentReference(const std::string& text) {
  std::error_code ignored;
  if (isReference(text)) {
    return text;
  }
  if (std::filesystem::exists(text, ignored) || text.find('/') != std::string::npos) {
    return fromFile(text);
  }
  if (isHostAndPort(text)) {
    return "corbaloc:iiop:" + text + "/" + kFactoryKey;
  }
  throw UsageError("not an agent: '" + text +
                   "' is neither HOST:PORT, nor a corbaloc: or IOR: reference, nor a file");
}

}  // namespace zk::nms
