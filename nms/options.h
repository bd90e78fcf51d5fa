// What every command understands.
#ifndef ZK_NMS_OPTIONS_H
#define ZK_NMS_OPTIONS_H

#include <string>

#include "nms/output.h"

namespace CLI {
class App;
}

namespace zk::nms {

struct Options {
  std::string agent = "corbaloc:iiop:127.0.0.1:5814/EmsSessionFactory";
  std::string user;  // empty: no authentication offered
  std::string password;
  std::string passwordFile;
  Format format = Format::kTable;
  unsigned page = 100;                 // entries asked for at a time
  unsigned timeout = 30;               // seconds for one call to the agent
  std::string callback = "127.0.0.1";  // where the agent calls back: HOST or HOST:PORT
};

// options must outlive app.
void declareOptions(CLI::App& app, Options& options);

// Fills options.password from the file, or when neither it nor the file was
// given from ZK_NMS_PASSWORD. Throws UsageError when the file cannot be read.
void readPassword(Options& options);

}  // namespace zk::nms

#endif
