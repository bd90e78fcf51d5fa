// What every command understands.
#ifndef ZK_NMS_COMMANDS_OPTIONS_H
#define ZK_NMS_COMMANDS_OPTIONS_H

#include <string>

#include "nms/output/output.h"
#include "nms/wire/connection.h"

namespace CLI {
class App;
}

namespace zk::nms {

struct Options : Access {
  std::string passwordFile;
  Format format = Format::kTable;
  unsigned page = 100;  // entries asked for at a time
};

// options must outlive app.
void declareOptions(CLI::App& app, Options& options);

// Fills options.password from the file, or when neither it nor the file was
// given from ZK_NMS_PASSWORD. Throws UsageError when the file cannot be read.
void readPassword(Options& options);

}  // namespace zk::nms

#endif
