#include "nms/output/rowstream.h"

#include <ostream>

#include "nms/output/cells.h"
#include "nms/wire/text.h"

namespace zk::nms {

RowStream::RowStream(std::ostream& out, Format format, Columns columns,
                     std::vector<std::size_t> widths)
    : out_(out), format_(format), columns_(std::move(columns)), widths_(std::move(widths)) {
  std::vector<std::string> titles;
  for (const Column& column : columns_) {
    if (!column.detail) {
      titles.push_back(column.title);
    }
  }
  if (format_ == Format::kTable) {
    writeAligned(titles);
    flush(out_);
  } else if (format_ == Format::kCsv) {
    writeList(out_, format_, columns_, {});
  }
}

void RowStream::write(const Row& row) {
  std::vector<std::string> shown;
  switch (format_) {
    case Format::kJson:
      out_ << jsonObject(columns_, row) << '\n';
      break;
    case Format::kCsv:
      writeCsvRow(out_, row);
      break;
    case Format::kTable:
      for (std::size_t c = 0; c < columns_.size(); ++c) {
        if (!columns_[c].detail) {
          shown.push_back(printable(cellText(row.at(c))));
        }
      }
      writeAligned(shown);
      break;
  }
  flush(out_);
}

void RowStream::writeAligned(const std::vector<std::string>& cells) {
  std::string line;
  std::size_t gap = 0;
  for (std::size_t c = 0; c < cells.size(); ++c) {
    if (!cells[c].empty()) {
      line += std::string(gap, ' ') + cells[c];
      gap = 0;
    }
    const std::size_t width = displayWidth(cells[c]);
    const std::size_t least = c < widths_.size() ? widths_[c] : 0;
    gap += (width < least ? least - width : 0) + 2;
  }
  out_ << line << '\n';
}

}  // namespace zk::nms
