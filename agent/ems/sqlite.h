// An SQLite connection and its statements, as values that clean up after
// themselves. One thread at a time may use a connection and its statements.
#ifndef ZK_AGENT_EMS_SQLITE_H
#define ZK_AGENT_EMS_SQLITE_H

#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

struct sqlite3;
struct sqlite3_stmt;

namespace zk::agent {

// what() is SQLite's own text; code() its extended result code.
class SqliteError : public std::runtime_error {
 public:
  SqliteError(int code, const std::string& text) : std::runtime_error(text), code_(code) {}
  int code() const { return code_; }
  int primaryCode() const { return code_ & 0xff; }

 private:
  int code_;
};

// A prepared statement on loan from its connection: at its end it is ready for
// the next borrower. The same SQL text cannot be on loan twice at once.
class Statement {
 public:
  explicit Statement(sqlite3_stmt* statement) : statement_(statement) {}
  ~Statement();
  Statement(Statement&& other) noexcept : statement_(other.statement_) {
    other.statement_ = nullptr;
  }
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;
  Statement& operator=(Statement&&) = delete;

  // Binds the statement's parameters, first to last.
  template <class... Values>
  void bind(const Values&... values) {
    int index = 0;
    (bindOne(++index, values), ...);
  }

  // Goes to the next row; false after the last one.
  bool step();

  // Reads the row's columns, first to last; null reads as 0 or the empty text.
  template <class... Values>
  void read(Values&... values) const {
    int column = 0;
    (readOne(column++, values), ...);
  }

 private:
  void bindOne(int index, long value);
  void bindOne(int index, const std::string& value);
  void bindNull(int index);
  template <class Value>
  void bindOne(int index, const std::optional<Value>& value) {
    value ? bindOne(index, *value) : bindNull(index);
  }
  void readOne(int column, std::string& value) const;
  void readOne(int column, long& value) const;
  void readOne(int column, int& value) const;
  void readOne(int column, short& value) const;
  void readOne(int column, bool& value) const;

  sqlite3_stmt* statement_;
};

class Database {
 public:
  // Opens, or makes when there is none, the file path; ":memory:" is no file.
  explicit Database(const std::string& path);
  Database(Database&&) noexcept;
  ~Database();

  // Runs statements that have no parameters and whose rows are not wanted.
  void run(const char* sql);

  template <class... Values>
  Statement prepare(const std::string& sql, const Values&... values) {
    Statement statement(borrow(sql));
    statement.bind(values...);
    return statement;
  }

  // prepare, for a statement without rows.
  template <class... Values>
  void execute(const std::string& sql, const Values&... values) {
    prepare(sql, values...).step();
  }

  // The first column of the first row; null without a row.
  template <class Value, class... Values>
  Value valueOf(const std::string& sql, const Values&... values) {
    Statement row = prepare(sql, values...);
    Value value{};
    if (row.step()) {
      row.read(value);
    }
    return value;
  }

  long lastInsertId() const;
  bool readOnly() const;

  // Whether closing may move what the write-ahead log holds into the file.
  void checkpointOnClose(bool allowed);

 private:
  struct Closer {
    void operator()(sqlite3* database) const;
  };
  struct Finalizer {
    void operator()(sqlite3_stmt* statement) const;
  };

  sqlite3_stmt* borrow(const std::string& sql);
  void check(int code) const;

  // The statements go before the connection.
  std::unique_ptr<sqlite3, Closer> database_;
  std::map<std::string, std::unique_ptr<sqlite3_stmt, Finalizer>> statements_;
};

// Everything between its start and commit() happens, or nothing.
class Transaction {
 public:
  explicit Transaction(Database& database, const char* begin = "BEGIN IMMEDIATE");
  ~Transaction();
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  void commit();

 private:
  Database* database_;
};

}  // namespace zk::agent

#endif
