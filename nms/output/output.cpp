#include "nms/output/output.h"

#include <algorithm>
#include <cerrno>
#include <ostream>

#include "nms/output/cells.h"
#include "nms/wire/errors.h"
#include "nms/wire/text.h"

namespace zk::nms {
namespace {

using Line = std::vector<std::string>;

// Columns two blanks apart, as wide as their widest text; no blanks at line ends.
void writeAligned(std::ostream& out, const std::vector<Line>& lines) {
  std::vector<std::size_t> widths;
  for (const Line& line : lines) {
    widths.resize(std::max(widths.size(), line.size()));
    for (std::size_t i = 0; i < line.size(); ++i) {
      widths[i] = std::max(widths[i], displayWidth(line[i]));
    }
  }
  for (const Line& line : lines) {
    std::size_t gap = 0;
    for (std::size_t i = 0; i < line.size(); ++i) {
      if (!line[i].empty()) {
        out << std::string(gap, ' ') << line[i];
        gap = 0;
      }
      gap += widths[i] - displayWidth(line[i]) + 2;
    }
    out << '\n';
  }
}

void writeTable(std::ostream& out, const Columns& columns, const Rows& rows) {
  std::vector<Line> lines(rows.size() + 1);
  for (std::size_t c = 0; c < columns.size(); ++c) {
    if (columns[c].detail) {
      continue;
    }
    lines[0].push_back(columns[c].title);
    for (std::size_t r = 0; r < rows.size(); ++r) {
      lines[r + 1].push_back(printable(cellText(rows[r].at(c))));
    }
  }
  writeAligned(out, lines);
}

void writeFields(std::ostream& out, const Columns& columns, const Row& row) {
  std::vector<Line> lines;
  for (std::size_t c = 0; c < columns.size(); ++c) {
    lines.push_back({columns[c].title, printable(cellText(row.at(c)))});
  }
  writeAligned(out, lines);
}

void writeJson(std::ostream& out, const Columns& columns, const Rows& rows) {
  out << '[';
  const char* separator = "\n  ";
  for (const Row& row : rows) {
    out << separator << jsonObject(columns, row);
    separator = ",\n  ";
  }
  out << (rows.empty() ? "]\n" : "\n]\n");
}

std::string quoted(const std::string& field) {
  if (field.find_first_of(",\"\r\n") == std::string::npos) {
    return field;
  }
  std::string result = "\"";
  for (const char character : field) {
    result += character == '"' ? "\"\"" : std::string(1, character);
  }
  return result + "\"";
}

void writeCsvLine(std::ostream& out, const Line& fields) {
  if (fields.size() == 1 && fields[0].empty()) {
    out << "\"\"\n";  // an empty line would be no record at all
    return;
  }
  const char* separator = "";
  for (const std::string& field : fields) {
    out << separator << quoted(field);
    separator = ",";
  }
  out << '\n';
}

void writeCsv(std::ostream& out, const Columns& columns, const Rows& rows) {
  Line keys;
  for (const Column& column : columns) {
    keys.push_back(column.key);
  }
  writeCsvLine(out, keys);
  for (const Row& row : rows) {
    writeCsvRow(out, row);
  }
}

}  // namespace

std::string jsonObject(const Columns& columns, const Row& row) {
  std::string result = "{";
  for (std::size_t c = 0; c < columns.size(); ++c) {
    result += (c == 0 ? "" : ", ") + jsonText(columns[c].key) + ": " + jsonText(row.at(c));
  }
  return result + "}";
}

void writeList(std::ostream& out, Format format, const Columns& columns, const Rows& rows) {
  switch (format) {
    case Format::kTable:
      writeTable(out, columns, rows);
      break;
    case Format::kJson:
      writeJson(out, columns, rows);
      break;
    case Format::kCsv:
      writeCsv(out, columns, rows);
      break;
  }
  flush(out);
}

void writeOne(std::ostream& out, Format format, const Columns& columns, const Row& row) {
  if (format != Format::kTable) {
    writeList(out, format, columns, {row});
    return;
  }
  writeFields(out, columns, row);
  flush(out);
}

void writeCsvRow(std::ostream& out, const Row& row) {
  Line fields;
  std::transform(row.begin(), row.end(), std::back_inserter(fields), cellText);
  writeCsvLine(out, fields);
}

void flush(std::ostream& out) {
  if (!out.flush()) {
    // Whoever reads no further (zk-nms me | head) need not be told about it.
    throw OutputError(errno == EPIPE ? "" : "the output cannot be written");
  }
}

}  // namespace zk::nms
