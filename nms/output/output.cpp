#include "nms/output/output.h"

#include <json/writer.h>

#include <algorithm>
#include <cerrno>
#include <ostream>

#include "nms/wire/failure.h"
#include "nms/wire/text.h"

namespace zk::nms {
namespace {

using Line = std::vector<std::string>;

std::string pairsText(const Json::Value& cell) {
  Pairs pairs;
  for (const Json::Value& pair : cell) {
    pairs.emplace_back(pair["name"].asString(), pair["value"].asString());
  }
  return formatPairs(pairs);
}

std::string numbersText(const Json::Value& cell) {
  std::string result;
  for (const Json::Value& number : cell) {
    result += (result.empty() ? "" : " ") + number.asString();
  }
  return result;
}

// Cells two blanks apart, each as wide as its width if there is one; no blanks at
// the line's end.
void writeAligned(std::ostream& out, const Line& cells, const std::vector<std::size_t>& widths) {
  std::size_t gap = 0;
  for (std::size_t c = 0; c < cells.size(); ++c) {
    if (!cells[c].empty()) {
      out << std::string(gap, ' ') << cells[c];
      gap = 0;
    }
    const std::size_t width = displayWidth(cells[c]);
    gap += std::max(width, c < widths.size() ? widths[c] : 0) - width + 2;
  }
  out << '\n';
}

// Columns as wide as their widest text.
void writeAligned(std::ostream& out, const std::vector<Line>& lines) {
  std::vector<std::size_t> widths;
  for (const Line& line : lines) {
    widths.resize(std::max(widths.size(), line.size()));
    for (std::size_t i = 0; i < line.size(); ++i) {
      widths[i] = std::max(widths[i], displayWidth(line[i]));
    }
  }
  for (const Line& line : lines) {
    writeAligned(out, line, widths);
  }
}

Line shownTitles(const Columns& columns) {
  Line line;
  for (const Column& column : columns) {
    if (!column.detail) {
      line.push_back(column.title);
    }
  }
  return line;
}

Line shownCells(const Columns& columns, const Row& row) {
  Line line;
  for (std::size_t c = 0; c < columns.size(); ++c) {
    if (!columns[c].detail) {
      line.push_back(printable(cellText(row.at(c))));
    }
  }
  return line;
}

void writeTable(std::ostream& out, const Columns& columns, const Rows& rows) {
  std::vector<Line> lines = {shownTitles(columns)};
  for (const Row& row : rows) {
    lines.push_back(shownCells(columns, row));
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

// {"key": value, ...} in the order of the columns, without a line end.
std::string jsonObject(const Columns& columns, const Row& row) {
  std::string result = "{";
  for (std::size_t c = 0; c < columns.size(); ++c) {
    result += (c == 0 ? "" : ", ") + jsonText(columns[c].key) + ": " + jsonText(row.at(c));
  }
  return result + "}";
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

void writeCsvRow(std::ostream& out, const Row& row) {
  Line fields;
  std::transform(row.begin(), row.end(), std::back_inserter(fields), cellText);
  writeCsvLine(out, fields);
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

Json::Value textCell(const char* text) { return asUtf8(text); }

Json::Value nameCell(const globaldefs::NVSList_T& name) { return asUtf8(formatName(name)); }

Json::Value pairsCell(const globaldefs::NVSList_T& pairs) {
  Json::Value cell(Json::arrayValue);
  for (CORBA::ULong i = 0; i < pairs.length(); ++i) {
    Json::Value pair;
    pair["name"] = asUtf8(pairs[i].name.in());
    pair["value"] = asUtf8(pairs[i].value.in());
    cell.append(pair);
  }
  return cell;
}

Json::Value ratesCell(const transmissionParameters::LayerRateList_T& rates) {
  Json::Value cell(Json::arrayValue);
  for (CORBA::ULong i = 0; i < rates.length(); ++i) {
    cell.append(rates[i]);
  }
  return cell;
}

std::string jsonText(const Json::Value& value) {
  Json::StreamWriterBuilder builder;
  builder["indentation"] = "";
  builder["emitUTF8"] = true;
  return Json::writeString(builder, value);
}

std::string cellText(const Json::Value& cell) {
  if (cell.isArray()) {
    return !cell.empty() && cell[0].isObject() ? pairsText(cell) : numbersText(cell);
  }
  if (cell.isBool()) {
    return cell.asBool() ? "yes" : "no";
  }
  return cell.isObject() ? jsonText(cell) : cell.asString();
}

void writeList(std::ostream& out, Format format, const Columns& columns, const Rows& rows) {
  switch (format) {
    case Format::TABLE:
      writeTable(out, columns, rows);
      break;
    case Format::JSON:
      writeJson(out, columns, rows);
      break;
    case Format::CSV:
      writeCsv(out, columns, rows);
      break;
  }
  flush(out);
}

void writeOne(std::ostream& out, Format format, const Columns& columns, const Row& row) {
  if (format != Format::TABLE) {
    writeList(out, format, columns, {row});
    return;
  }
  writeFields(out, columns, row);
  flush(out);
}

void flush(std::ostream& out) {
  if (!out.flush()) {
    // Whoever reads no further (zk-nms me | head) need not be told about it.
    throw OutputError(errno == EPIPE ? "" : "the output cannot be written");
  }
}

RowStream::RowStream(std::ostream& out, Format format, Columns columns,
                     std::vector<std::size_t> widths)
    : out_(out), format_(format), columns_(std::move(columns)), widths_(std::move(widths)) {
  if (format_ == Format::TABLE) {
    writeAligned(out_, shownTitles(columns_), widths_);
    flush(out_);
  } else if (format_ == Format::CSV) {
    writeList(out_, format_, columns_, {});
  }
}

void RowStream::write(const Row& row) {
  switch (format_) {
    case Format::JSON:
      out_ << jsonObject(columns_, row) << '\n';
      break;
    case Format::CSV:
      writeCsvRow(out_, row);
      break;
    case Format::TABLE:
      writeAligned(out_, shownCells(columns_, row), widths_);
      break;
  }
  flush(out_);
}

}  // namespace zk::nms
