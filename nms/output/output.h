// Data on its way out: aligned tables, JSON, CSV. No state. writeList, writeOne
// and flush flush, and throw OutputError when the stream does not take it all; one
// without a text when the reader has gone.
#ifndef ZK_NMS_OUTPUT_OUTPUT_H
#define ZK_NMS_OUTPUT_OUTPUT_H

#include <json/value.h>

#include <iosfwd>
#include <string>
#include <vector>

namespace zk::nms {

enum class Format { kTable, kJson, kCsv };

struct Column {
  std::string key;      // in JSON and in the first line of CSV
  std::string title;    // in tables
  bool detail = false;  // left out of tables that list many objects
};
using Columns = std::vector<Column>;

// One cell a column, in UTF-8. See cells.h.
using Row = std::vector<Json::Value>;
using Rows = std::vector<Row>;

// Table: a line of titles, then one line an object. JSON: an array, one object
// a line. CSV: quoted as in RFC 4180, lines end with a line feed alone.
void writeList(std::ostream& out, Format format, const Columns& columns, const Rows& rows);

// One object: a table then has one line a field; JSON and CSV are a list of one.
void writeOne(std::ostream& out, Format format, const Columns& columns, const Row& row);

// {"key": value, ...} in the order of the columns, without a line end.
std::string jsonObject(const Columns& columns, const Row& row);

// One line of CSV.
void writeCsvRow(std::ostream& out, const Row& row);

void flush(std::ostream& out);

}  // namespace zk::nms

#endif
