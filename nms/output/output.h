// Data on its way out: the cells of rows, and rows as aligned tables, JSON, CSV.
// No state but a stream's. What writes rows flushes, and throws OutputError when
// the stream does not take it all; one without a text when the reader has gone.
#ifndef ZK_NMS_OUTPUT_OUTPUT_H
#define ZK_NMS_OUTPUT_OUTPUT_H

#include <json/value.h>

#include <iosfwd>
#include <string>
#include <vector>

#include "zk_quornex/idl/managers.h"
#include "zk_quornex/idl/names.h"

namespace zk::nms {

enum class Format { TABLE, JSON, CSV };

struct Column {
  std::string key;      // in JSON and in the first line of CSV
  std::string title;    // in tables
  bool detail = false;  // left out of tables that list many objects
};
using Columns = std::vector<Column>;

// One cell a column, in UTF-8.
using Row = std::vector<Json::Value>;
using Rows = std::vector<Row>;

// The cells, from what the records hold.
Json::Value textCell(const char* text);
Json::Value nameCell(const globaldefs::NVSList_T& name);
Json::Value pairsCell(const globaldefs::NVSList_T& pairs);
Json::Value ratesCell(const transmissionParameters::LayerRateList_T& rates);

// What a table and a CSV file show for a cell: lists of numbers with blanks
// between them, pairs as in a typed name, yes and no, anything deeper as JSON.
std::string cellText(const Json::Value& cell);

// On one line.
std::string jsonText(const Json::Value& value);

// Table: a line of titles, then one line an object. JSON: an array, one object
// a line. CSV: quoted as in RFC 4180, lines end with a line feed alone.
void writeList(std::ostream& out, Format format, const Columns& columns, const Rows& rows);

// One object: a table then has one line a field; JSON and CSV are a list of one.
void writeOne(std::ostream& out, Format format, const Columns& columns, const Row& row);

void flush(std::ostream& out);

// Rows that come one by one, each written out at once.
class RowStream {
 public:
  // widths: of the columns that tables show, at least; the last needs none,
  // since nothing follows it. Writes the line of titles (tables) or of keys
  // (CSV); JSON is one object a line.
  RowStream(std::ostream& out, Format format, Columns columns, std::vector<std::size_t> widths);

  void write(const Row& row);

 private:
  std::ostream& out_;
  const Format format_;
  const Columns columns_;
  const std::vector<std::size_t> widths_;
};

}  // namespace zk::nms

#endif
