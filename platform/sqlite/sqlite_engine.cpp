#include "platform/sqlite/sqlite_engine.h"

#include <sqlite3.h>

#include <cctype>

#include "platform/sqlite/iso_dates.h"
#include "platform/sqlite/statement.h"

namespace cp::sqlite {
namespace {

using dao::kDatabaseSource;

class SqliteCursor : public dao::Cursor {
 public:
  explicit SqliteCursor(Statement statement) : statement_(std::move(statement)) {
    for (int c = 0; c < statement_.ColumnCount(); ++c)
      columns_.push_back({statement_.ColumnName(c),
                          dao::TypeFromDeclaration(statement_.DeclaredType(c))});
  }
  const std::vector<dao::ColumnInfo>& Columns() const override { return columns_; }
  bool Next() override { return statement_.Step(); }
  dao::Cell Value(int column) const override { return statement_.Column(column); }

 private:
  Statement statement_;
  std::vector<dao::ColumnInfo> columns_;
};

class SqliteRowFilter : public dao::RowFilter {
 public:
  explicit SqliteRowFilter(Statement statement) : statement_(std::move(statement)) {}
  bool Matches(const std::vector<dao::Cell>& row) override {
    statement_.Reset();
    for (std::size_t i = 0; i < row.size(); ++i)
      statement_.Bind(static_cast<int>(i) + 1, row[i]);
    const bool match = statement_.Step();
    statement_.Reset();
    return match;
  }

 private:
  Statement statement_;
};

std::string QuoteName(const std::string& name) {
  std::string out = "\"";
  for (char c : name) {
    if (c == '"') out += '"';
    out += c;
  }
  return out + "\"";
}

// SQLite compares names ignoring ASCII case only.
std::string ColumnKey(std::string_view table, std::string_view column) {
  std::string key;
  for (char c : table) key += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  key += '\n';
  for (char c : column) key += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return key;
}

}  // namespace

SqliteEngine::SqliteEngine(const std::string& path)
    : connection_(Connection::Open(path, Connection::Mode::OpenExisting)) {
  // Looks at the stop every few thousand steps of a statement: cheap, and it catches a stop
  // that came before the statement started, which sqlite3_interrupt alone forgets.
  sqlite3_progress_handler(
      connection_->get(), 4000,
      [](void* stop) { return static_cast<std::atomic<bool>*>(stop)->load() ? 1 : 0; },
      &interrupted_);
}

std::unique_ptr<dao::Cursor> SqliteEngine::Query(const std::string& sql) {
  Statement statement(connection_, sql, dao::SqlContext::Statement, kDatabaseSource);
  if (!statement.ReadOnly()) dao::RaiseDao(dao::daoerr::kInvalidOperation, kDatabaseSource);
  return std::make_unique<SqliteCursor>(std::move(statement));
}

std::unique_ptr<dao::RowFilter> SqliteEngine::PrepareRowFilter(
    const std::vector<std::string>& columns, const std::string& condition) {
  std::string sql = "SELECT 1 FROM (SELECT ";
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (i > 0) sql += ", ";
    sql += "?" + std::to_string(i + 1) + " AS " + QuoteName(columns[i]);
  }
  sql += ") WHERE (" + condition + ")";
  // Messages must name the criterion, not the wrapper around it.
  try {
    return std::make_unique<SqliteRowFilter>(
        Statement(connection_, sql, dao::SqlContext::Criterion, kDatabaseSource));
  } catch (const Error& e) {
    if (e.number() != dao::daoerr::kSyntaxInExpression) throw;
    throw Error(e.number(),
                "Error de sintaxis (falta operador) en la expresión '" + condition + "'.",
                e.source(), e.engine_code());
  }
}

void SqliteEngine::ForgetOlderSchema() {
  Statement version(connection_, "PRAGMA schema_version", dao::SqlContext::Statement,
                    kDatabaseSource);
  version.Step();
  const long long current = std::get<std::int64_t>(version.Column(0));
  if (current == schemaVersion_) return;
  isoDateColumns_.reset();
  tables_.clear();
  schemaVersion_ = current;
}

dao::TableDefinition SqliteEngine::Table(const std::string& name) {
  ForgetOlderSchema();
  std::string key = name;
  for (char& c : key) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  if (const auto known = tables_.find(key); known != tables_.end()) return known->second;
  return tables_[key] = ReadTable(name);
}

dao::TableDefinition SqliteEngine::ReadTable(const std::string& name) {
  Statement lookup(connection_,
                   "SELECT name FROM sqlite_master WHERE type = 'table' AND name = ?1 "
                   "COLLATE NOCASE AND name NOT LIKE 'sqlite\\_%' ESCAPE '\\'",
                   dao::SqlContext::Statement, kDatabaseSource);
  lookup.Bind(1, name);
  if (!lookup.Step()) dao::RaiseDao(dao::daoerr::kItemNotFound, kDatabaseSource);
  dao::TableDefinition table;
  table.name = std::get<std::string>(lookup.Column(0));

  Statement columns(connection_, "SELECT name, type FROM pragma_table_info(?1) ORDER BY cid",
                    dao::SqlContext::Statement, kDatabaseSource);
  columns.Bind(1, table.name);
  while (columns.Step()) {
    dao::FieldDefinition field;
    field.name = std::get<std::string>(columns.Column(0));
    const dao::Cell declared = columns.Column(1);
    const auto type = dao::TypeFromDeclaration(
        std::holds_alternative<std::string>(declared) ? std::get<std::string>(declared) : "");
    field.type = type.type;
    field.size = type.size;
    int notNull = 0, primaryKey = 0, autoIncrement = 0;
    const int rc = sqlite3_table_column_metadata(connection_->get(), "main", table.name.c_str(),
                                                 field.name.c_str(), nullptr, nullptr, &notNull,
                                                 &primaryKey, &autoIncrement);
    if (rc != SQLITE_OK)
      connection_->Fail(rc, table.name, dao::SqlContext::Statement, kDatabaseSource);
    if (autoIncrement) {
      field.attributes = dao::dbFixedField | dao::dbAutoIncrField;
    } else {
      const bool variable = field.type == dao::dbText || field.type == dao::dbMemo;
      field.attributes = (variable ? dao::dbVariableField : dao::dbFixedField) |
                         dao::dbUpdatableField;
    }
    table.fields.push_back(std::move(field));
  }
  return table;
}

void SqliteEngine::Interrupt() {
  interrupted_ = true;
  sqlite3_interrupt(connection_->get());
}

jetsql::TranslateOptions SqliteEngine::TranslationOptions() {
  ForgetOlderSchema();
  if (!isoDateColumns_) {
    auto columns = std::make_shared<std::set<std::string>>();
    Statement tables(connection_,
                     "SELECT name, sql FROM sqlite_master WHERE type = 'table' AND sql IS NOT NULL",
                     dao::SqlContext::Statement, kDatabaseSource);
    while (tables.Step()) {
      const std::string table = std::get<std::string>(tables.Column(0));
      for (const std::string& column :
           IsoDateCheckedColumns(std::get<std::string>(tables.Column(1))))
        columns->insert(ColumnKey(table, column));
    }
    isoDateColumns_ = std::move(columns);
  }
  if (isoDateColumns_->empty()) return {};
  return {[columns = isoDateColumns_](std::string_view table, std::string_view column) {
    return columns->contains(ColumnKey(table, column));
  }};
}

}  // namespace cp::sqlite
