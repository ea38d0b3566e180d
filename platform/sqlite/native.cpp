#include "platform/sqlite/native.h"

#include <sqlite3.h>

#include "platform/core/date.h"
#include "platform/core/error.h"
#include "platform/sqlite/connection.h"
#include "platform/sqlite/statement.h"

namespace cp::sqlite {
namespace {

constexpr std::string_view kNativeSource = "SQLite";

dao::Cell ToCell(const Variant& value) {
  switch (value.type()) {
    case Variant::Type::Empty:
    case Variant::Type::Null: return std::monostate{};
    case Variant::Type::Boolean: return std::int64_t{value.AsBool() ? 1 : 0};
    case Variant::Type::Integer: return std::int64_t{value.AsInteger()};
    case Variant::Type::Long: return std::int64_t{value.AsLong()};
    case Variant::Type::Double: return value.AsDouble();
    case Variant::Type::Date: return StoredIsoDate(value.AsDate());
    case Variant::Type::String: return value.AsString();
    default: Raise(err::kTypeMismatch);
  }
}

}  // namespace

NativeStatement::NativeStatement(std::unique_ptr<Statement> statement)
    : statement_(std::move(statement)) {}
NativeStatement::NativeStatement(NativeStatement&&) noexcept = default;
NativeStatement& NativeStatement::operator=(NativeStatement&&) noexcept = default;
NativeStatement::~NativeStatement() = default;

void NativeStatement::Bind(int position, const Variant& value) {
  statement_->Bind(position, ToCell(value));
}
void NativeStatement::BindCell(int position, const dao::Cell& value) {
  statement_->Bind(position, value);
}
bool NativeStatement::Step() { return statement_->Step(); }
void NativeStatement::Reset() { statement_->Reset(); }
int NativeStatement::ColumnCount() const { return statement_->ColumnCount(); }
std::string NativeStatement::ColumnName(int column) const {
  return statement_->ColumnName(column);
}
Variant NativeStatement::Column(int column) const {
  return dao::ToVariant(statement_->Column(column), 0);
}

NativeDatabase::NativeDatabase(const std::string& path, Mode mode)
    : connection_(Connection::Open(path, mode == Mode::CreateIfMissing
                                             ? Connection::Mode::CreateIfMissing
                                             : Connection::Mode::OpenExisting)) {}
NativeDatabase::NativeDatabase(NativeDatabase&&) noexcept = default;
NativeDatabase& NativeDatabase::operator=(NativeDatabase&&) noexcept = default;
NativeDatabase::~NativeDatabase() = default;

void NativeDatabase::ExecuteNative(const std::string& sql) {
  char* message = nullptr;
  const int rc = sqlite3_exec(connection_->get(), sql.c_str(), nullptr, nullptr, &message);
  sqlite3_free(message);  // Fail reads the same text from the connection
  if (rc != SQLITE_OK) connection_->Fail(rc, sql, dao::SqlContext::Statement, kNativeSource);
}

void NativeDatabase::CopyTo(const std::string& path) {
  const auto copy = Connection::Open(path, Connection::Mode::CreateIfMissing);
  constexpr const char* kUnjournaled = "PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF";
  int rc = sqlite3_exec(copy->get(), kUnjournaled, nullptr, nullptr, nullptr);
  if (rc != SQLITE_OK) copy->Fail(rc, kUnjournaled, dao::SqlContext::Statement, kNativeSource);
  sqlite3_backup* backup = sqlite3_backup_init(copy->get(), "main", connection_->get(), "main");
  if (!backup) copy->Fail(sqlite3_errcode(copy->get()), "", dao::SqlContext::Statement, kNativeSource);
  sqlite3_backup_step(backup, -1);
  rc = sqlite3_backup_finish(backup);
  if (rc != SQLITE_OK) copy->Fail(rc, "", dao::SqlContext::Statement, kNativeSource);
}

NativeStatement NativeDatabase::Prepare(const std::string& sql) {
  return NativeStatement(
      std::make_unique<Statement>(connection_, sql, dao::SqlContext::Statement, kNativeSource));
}

void NativeDatabase::Begin() { ExecuteNative("BEGIN"); }
void NativeDatabase::Commit() { ExecuteNative("COMMIT"); }
void NativeDatabase::Rollback() { ExecuteNative("ROLLBACK"); }

std::int64_t NativeDatabase::LastInsertId() const {
  return sqlite3_last_insert_rowid(connection_->get());
}

Transaction::Transaction(NativeDatabase& database) : database_(database) { database_.Begin(); }

Transaction::~Transaction() {
  if (!open_) return;
  try {
    database_.Rollback();
  } catch (const Error&) {
    // A failed statement may already have ended the transaction; nothing is left to undo.
  }
}

void Transaction::Commit() {
  database_.Commit();
  open_ = false;
}

}  // namespace cp::sqlite
