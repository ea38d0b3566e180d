#include "platform/sqlite/statement.h"

#include <sqlite3.h>

#include <utility>

namespace cp::sqlite {

Statement::Statement(std::shared_ptr<Connection> connection, const std::string& sql,
                     dao::SqlContext context, std::string_view source)
    : connection_(std::move(connection)), sql_(sql), context_(context), source_(source) {
  const char* tail = nullptr;
  const int rc = sqlite3_prepare_v2(connection_->get(), sql.c_str(),
                                    static_cast<int>(sql.size()), &stmt_, &tail);
  if (rc != SQLITE_OK) connection_->Fail(rc, sql_, context_, source_);
  // Only blanks or comments: SQLite prepares nothing and reports no error.
  if (!stmt_)
    dao::RaiseEngineError({dao::FailureKind::Syntax, {}, {}, "incomplete input"}, sql_,
                          context_, source_);
  for (const char* p = tail; p && *p; ++p) {
    if (*p != ' ' && *p != ';' && *p != '\n' && *p != '\r' && *p != '\t') {
      sqlite3_finalize(std::exchange(stmt_, nullptr));
      throw Error(dao::daoerr::kTextAfterStatement,
                  "Se encontraron caracteres después del final de la instrucción SQL: '" +
                      std::string(p) + "'.",
                  source_);
    }
  }
}

Statement::Statement(Statement&& other) noexcept
    : connection_(std::move(other.connection_)),
      stmt_(std::exchange(other.stmt_, nullptr)),
      sql_(std::move(other.sql_)),
      context_(other.context_),
      source_(std::move(other.source_)) {}

Statement& Statement::operator=(Statement&& other) noexcept {
  if (this != &other) {
    sqlite3_finalize(stmt_);
    stmt_ = std::exchange(other.stmt_, nullptr);
    connection_ = std::move(other.connection_);
    sql_ = std::move(other.sql_);
    context_ = other.context_;
    source_ = std::move(other.source_);
  }
  return *this;
}

Statement::~Statement() { sqlite3_finalize(stmt_); }

bool Statement::Step() {
  const int rc = sqlite3_step(stmt_);
  if (rc == SQLITE_ROW) return true;
  if (rc == SQLITE_DONE) return false;
  // The statement's own error code is the one to report; reset clears it for a retry.
  sqlite3_reset(stmt_);
  connection_->Fail(rc, sql_, context_, source_);
}

void Statement::Reset() { sqlite3_reset(stmt_); }

void Statement::Bind(int position, const dao::Cell& value) {
  int rc = SQLITE_OK;
  if (const auto* i = std::get_if<std::int64_t>(&value))
    rc = sqlite3_bind_int64(stmt_, position, *i);
  else if (const auto* d = std::get_if<double>(&value))
    rc = sqlite3_bind_double(stmt_, position, *d);
  else if (const auto* s = std::get_if<std::string>(&value))
    rc = sqlite3_bind_text(stmt_, position, s->data(), static_cast<int>(s->size()),
                           SQLITE_TRANSIENT);
  else
    rc = sqlite3_bind_null(stmt_, position);
  if (rc != SQLITE_OK) connection_->Fail(rc, sql_, context_, source_);
}

int Statement::ColumnCount() const { return sqlite3_column_count(stmt_); }

std::string Statement::ColumnName(int column) const {
  const char* name = sqlite3_column_name(stmt_, column);
  return name ? name : "";
}

std::string Statement::DeclaredType(int column) const {
  const char* type = sqlite3_column_decltype(stmt_, column);
  return type ? type : "";
}

dao::Cell Statement::Column(int column) const {
  switch (sqlite3_column_type(stmt_, column)) {
    case SQLITE_INTEGER: return static_cast<std::int64_t>(sqlite3_column_int64(stmt_, column));
    case SQLITE_FLOAT: return sqlite3_column_double(stmt_, column);
    case SQLITE_NULL: return std::monostate{};
    default: {
      const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(stmt_, column));
      const int bytes = sqlite3_column_bytes(stmt_, column);
      return std::string(text ? text : "", static_cast<std::size_t>(bytes));
    }
  }
}

bool Statement::ReadOnly() const { return sqlite3_stmt_readonly(stmt_) != 0; }

}  // namespace cp::sqlite
