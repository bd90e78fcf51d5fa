#include "agent/ems/sqlite.h"

#include <sqlite3.h>

namespace zk::agent {

namespace {

[[noreturn]] void fail(sqlite3* database, int code) {
  throw SqliteError(code, database != nullptr ? sqlite3_errmsg(database) : sqlite3_errstr(code));
}

void checkStatement(sqlite3_stmt* statement, int code) {
  if (code != SQLITE_OK) {
    fail(sqlite3_db_handle(statement), code);
  }
}

}  // namespace

Statement::~Statement() {
  if (statement_ != nullptr) {
    sqlite3_reset(statement_);
    sqlite3_clear_bindings(statement_);
  }
}

bool Statement::step() {
  const int code = sqlite3_step(statement_);
  if (code != SQLITE_ROW && code != SQLITE_DONE) {
    fail(sqlite3_db_handle(statement_), code);
  }
  return code == SQLITE_ROW;
}

void Statement::bindOne(int index, long value) {
  checkStatement(statement_, sqlite3_bind_int64(statement_, index, value));
}

void Statement::bindOne(int index, const std::string& value) {
  checkStatement(statement_, sqlite3_bind_text64(statement_, index, value.data(), value.size(),
                                                 SQLITE_TRANSIENT, SQLITE_UTF8));
}

void Statement::bindNull(int index) {
  checkStatement(statement_, sqlite3_bind_null(statement_, index));
}

void Statement::readOne(int column, std::string& value) const {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
  const int size = sqlite3_column_bytes(statement_, column);
  value.assign(text != nullptr ? text : "", text != nullptr ? static_cast<std::size_t>(size) : 0);
}

void Statement::readOne(int column, long& value) const {
  value = sqlite3_column_int64(statement_, column);
}

void Statement::readOne(int column, int& value) const {
  value = sqlite3_column_int(statement_, column);
}

void Statement::readOne(int column, short& value) const {
  value = static_cast<short>(sqlite3_column_int(statement_, column));
}

void Statement::readOne(int column, bool& value) const {
  value = sqlite3_column_int(statement_, column) != 0;
}

Database::Database(const std::string& path) {
  sqlite3* opened = nullptr;
  const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX;
  const int code = sqlite3_open_v2(path.c_str(), &opened, flags, nullptr);
  database_.reset(opened);
  check(code);
  sqlite3_extended_result_codes(database_.get(), 1);
}

Database::Database(Database&&) noexcept = default;

Database::~Database() { statements_.clear(); }

void Database::Closer::operator()(sqlite3* database) const { sqlite3_close_v2(database); }

void Database::Finalizer::operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }

void Database::check(int code) const {
  if (code != SQLITE_OK) {
    fail(database_.get(), code);
  }
}

void Database::run(const char* sql) {
  check(sqlite3_exec(database_.get(), sql, nullptr, nullptr, nullptr));
}

sqlite3_stmt* Database::borrow(const std::string& sql) {
  const auto found = statements_.find(sql);
  if (found != statements_.end()) {
    return found->second.get();
  }
  sqlite3_stmt* statement = nullptr;
  check(sqlite3_prepare_v3(database_.get(), sql.data(), static_cast<int>(sql.size()),
                           SQLITE_PREPARE_PERSISTENT, &statement, nullptr));
  statements_[sql].reset(statement);
  return statement;
}

long Database::lastInsertId() const { return sqlite3_last_insert_rowid(database_.get()); }

bool Database::readOnly() const { return sqlite3_db_readonly(database_.get(), "main") == 1; }

void Database::checkpointOnClose(bool allowed) {
  check(sqlite3_db_config(database_.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, allowed ? 0 : 1,
                          nullptr));
}

Transaction::Transaction(Database& database, const char* begin) : database_(&database) {
  database.run(begin);
}

Transaction::~Transaction() {
  if (database_ == nullptr) {
    return;
  }
  try {
    database_->run("ROLLBACK");
  } catch (const SqliteError&) {
    // SQLite has rolled back by itself, as it does after some failures.
  }
}

void Transaction::commit() {
  database_->run("COMMIT");
  database_ = nullptr;
}

}  // namespace zk::agent
