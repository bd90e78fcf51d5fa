// Rows that come one by one, each written out at once.
#ifndef ZK_NMS_OUTPUT_ROWSTREAM_H
#define ZK_NMS_OUTPUT_ROWSTREAM_H

#include <iosfwd>
#include <vector>

#include "nms/output/output.h"

namespace zk::nms {

class RowStream {
 public:
  // widths: of the columns that tables show, at least; the last needs none,
  // since nothing follows it. Writes the line of titles (tables) or of keys
  // (CSV); JSON is one object a line. Everything throws OutputError.
  RowStream(std::ostream& out, Format format, Columns columns, std::vector<std::size_t> widths);

  void write(const Row& row);

 private:
  void writeAligned(const std::vector<std::string>& cells);

  std::ostream& out_;
  const Format format_;
  const Columns columns_;
  const std::vector<std::size_t> widths_;
};

}  // namespace zk::nms

#endif
