// The inventory's tables: their file, and records to and from their rows. One
// thread at a time may use them: the caller holds the inventory's lock.
//
// Everything but open throws SQLite::Exception when the storage fails.
#ifndef ZK_AGENT_EMS_TABLES_H
#define ZK_AGENT_EMS_TABLES_H

#include <SQLiteCpp/SQLiteCpp.h>
#include <SQLiteCpp/VariadicBind.h>

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "agent/ems/columns.h"
#include "agent/ems/inventory.h"

namespace zk::agent {

class Tables {
 public:
  // See Inventory::open. The connection keeps every other one out until it closes,
  // or its process ends in whatever way.
  static Tables open(const std::string& path, const SeedOptions& seed);

  SQLite::Database& database() { return database_; }

  // A prepared statement on loan: at its end it is ready for the next borrower.
  // The same SQL text cannot be on loan twice at once.
  struct Reset {
    void operator()(SQLite::Statement* statement) const { statement->tryReset(); }
  };
  using Loan = std::unique_ptr<SQLite::Statement, Reset>;

  // values are for the statement's parameters, first to last.
  template <class... Values>
  Loan prepare(const std::string& sql, const Values&... values) {
    Loan statement(borrow(sql));
    SQLite::bind(*statement, values...);
    return statement;
  }

  // For a statement without rows.
  template <class... Values>
  void execute(const std::string& sql, const Values&... values) {
    prepare(sql, values...)->executeStep();
  }

  // The first column of the first row; 0 or empty without a row.
  template <class Value, class... Values>
  Value valueOf(const std::string& sql, const Values&... values) {
    const Loan row = prepare(sql, values...);
    Value value{};
    if (row->executeStep()) {
      readValue(row->getColumn(0), value);
    }
    return value;
  }

  // The first column of every row.
  template <class Value, class... Values>
  std::vector<Value> valuesOf(const std::string& sql, const Values&... values) {
    const Loan row = prepare(sql, values...);
    std::vector<Value> all;
    while (row->executeStep()) {
      readValue(row->getColumn(0), all.emplace_back());
    }
    return all;
  }

  // The record with the id.
  template <class Record, class Id>
  std::optional<Record> find(const Id& id) {
    static const std::string sql = selectOf<Record>("id = ?");
    const Loan row = prepare(sql, id);
    std::optional<Record> record;
    if (row->executeStep()) {
      readRow(*row, record.emplace());
    }
    return record;
  }

  // The records that the condition, with values for its parameters, is true of.
  template <class Record, class... Values>
  std::vector<Record> all(const std::string& condition, const Values&... values) {
    const Loan row = prepare(selectOf<Record>(condition), values...);
    std::vector<Record> records;
    while (row->executeStep()) {
      readRow(*row, records.emplace_back());
    }
    return records;
  }

  template <class Record>
  void insert(const Record& record) {
    static const std::string sql = insertOf<Record>();
    const Loan statement(borrow(sql));
    bindRow(*statement, record);
    statement->executeStep();
  }

  // Stores all members but the id.
  template <class Record, class Id>
  void update(const Record& record, const Id& id) {
    static const std::string sql = updateOf<Record>();
    const Loan statement(borrow(sql));
    statement->bind(bindRow(*statement, record), id);
    statement->executeStep();
  }

 private:
  explicit Tables(const std::string& path);
  SQLite::Statement* borrow(const std::string& sql);

  // The statements go before the connection.
  SQLite::Database database_;
  std::map<std::string, SQLite::Statement> statements_;
};

}  // namespace zk::agent

#endif
