#include "platform/postgres/postgres_engine.h"

#include <cctype>
#include <charconv>
#include <regex>

#include "platform/jetsql/postgres_rules.h"

namespace cp::postgres {
namespace {

using dao::kDatabaseSource;

constexpr unsigned kTimestamp = 1114, kDate = 1082;

// The server folds unquoted names to lower case; a name the statement spells is given back
// as the statement spells it, as Jet does.
std::string SpelledAsWritten(const std::string& name, const std::string& sql) {
  auto word = [](char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_'; };
  for (std::size_t at = 0; (at = sql.find_first_not_of(" \t\n(),.", at)) != std::string::npos;) {
    std::size_t end = at;
    while (end < sql.size() && word(sql[end])) ++end;
    if (end == at) {
      ++at;
      continue;
    }
    if (end - at == name.size() && dao::SameName(sql.substr(at, end - at), name))
      return sql.substr(at, end - at);
    at = end;
  }
  return name;
}

class PostgresCursor : public dao::Cursor {
 public:
  PostgresCursor(Result result, PostgresEngine& engine, const std::string& sql)
      : result_(std::move(result)) {
    for (int c = 0; c < result_.Columns(); ++c) {
      dao::ColumnType type;
      if (result_.TableOid(c) != 0) {
        type = engine.DeclaredType(result_.TableOid(c), result_.TableColumn(c));
      } else if (result_.TypeOid(c) == kTimestamp || result_.TypeOid(c) == kDate) {
        type = {dao::dbDate, dao::DefaultSize(dao::dbDate)};
      }
      columns_.push_back({SpelledAsWritten(result_.ColumnName(c), sql), type});
    }
  }
  const std::vector<dao::ColumnInfo>& Columns() const override { return columns_; }
  bool Next() override { return ++row_ < result_.Rows(); }
  dao::Cell Value(int column) const override { return result_.Value(row_, column); }

 private:
  Result result_;
  std::vector<dao::ColumnInfo> columns_;
  int row_ = -1;
};

bool LooksLikeIsoDate(const std::string& s) {
  static const std::regex iso(R"(\d{4}-\d\d-\d\d( \d\d:\d\d:\d\d)?)");
  return std::regex_match(s, iso);
}

class PostgresRowFilter : public dao::RowFilter {
 public:
  PostgresRowFilter(std::shared_ptr<Session> session, std::vector<std::string> columns,
                    std::string condition)
      : session_(std::move(session)), columns_(std::move(columns)),
        condition_(std::move(condition)), types_(columns_.size(), "text") {}

  bool Matches(const std::vector<dao::Cell>& row) override {
    std::vector<std::optional<std::string>> values;
    for (std::size_t i = 0; i < row.size(); ++i) {
      // A Null keeps the type its column last had, so comparisons stay well typed.
      if (const auto* n = std::get_if<std::int64_t>(&row[i])) {
        types_[i] = "int8";
        values.emplace_back(std::to_string(*n));
      } else if (const auto* d = std::get_if<double>(&row[i])) {
        types_[i] = "float8";
        char buffer[40];  // to_chars: the server wants "." whatever the locale
        const auto end = std::to_chars(buffer, buffer + sizeof buffer, *d).ptr;
        values.emplace_back(std::string(buffer, end));
      } else if (const auto* s = std::get_if<std::string>(&row[i])) {
        types_[i] = LooksLikeIsoDate(*s) ? "timestamp" : "text";
        values.emplace_back(*s);
      } else {
        values.emplace_back(std::nullopt);
      }
    }
    return session_->Exec(Sql(), values, dao::SqlContext::Criterion).Rows() > 0;
  }

  std::string Sql() const {
    std::string sql = "SELECT 1 FROM (SELECT ";
    for (std::size_t i = 0; i < columns_.size(); ++i)
      sql += (i ? ", $" : "$") + std::to_string(i + 1) + "::" + types_[i] + " AS " +
             jetsql::PostgresName(columns_[i]);
    return sql + ") AS jet_row WHERE (" + condition_ + ")";
  }

 private:
  std::shared_ptr<Session> session_;
  std::vector<std::string> columns_;
  std::string condition_;
  std::vector<std::string> types_;
};

}  // namespace

dao::ColumnType TypeFromServerType(const std::string& type) {
  auto size = [](int t) { return dao::ColumnType{t, dao::DefaultSize(t)}; };
  if (type == "integer" || type == "bigint") return size(dao::dbLong);
  if (type == "smallint") return size(dao::dbInteger);
  if (type == "jet_byte") return size(dao::dbByte);
  if (type == "jet_yesno") return size(dao::dbBoolean);
  if (type == "double precision" || type == "real") return size(dao::dbDouble);
  if (type.rfind("numeric", 0) == 0) return size(dao::dbCurrency);
  if (type == "text") return size(dao::dbMemo);
  if (type.rfind("timestamp", 0) == 0 || type == "date") return size(dao::dbDate);
  if (type.rfind("character varying", 0) == 0) {
    const auto open = type.find('(');
    return {dao::dbText, open == std::string::npos ? 255 : std::stol(type.substr(open + 1))};
  }
  return {};
}

PostgresEngine::PostgresEngine(const std::string& connection)
    : session_(std::make_shared<Session>(connection, Session::Purpose::Component)) {}

std::unique_ptr<dao::Cursor> PostgresEngine::Query(const std::string& sql) {
  return std::make_unique<PostgresCursor>(session_->Exec(sql), *this, sql);
}

dao::ColumnType PostgresEngine::DeclaredType(unsigned table, int column) {
  const auto key = std::make_pair(table, column);
  if (auto it = declared_.find(key); it != declared_.end()) return it->second;
  Result r = session_->Exec(
      "SELECT attnum, format_type(atttypid, atttypmod) FROM pg_attribute "
      "WHERE attrelid = $1::oid AND attnum > 0",
      {std::to_string(table)});
  for (int i = 0; i < r.Rows(); ++i)
    declared_[{table, std::stoi(r.Text(i, 0))}] = TypeFromServerType(r.Text(i, 1));
  return declared_[key];
}

std::unique_ptr<dao::RowFilter> PostgresEngine::PrepareRowFilter(
    const std::vector<std::string>& columns, const std::string& condition) {
  auto filter = std::make_unique<PostgresRowFilter>(session_, columns, condition);
  // Names and syntax are checked now, as DAO does; the real types come with the rows.
  try {
    session_->Exec(filter->Sql() + " AND false", {std::vector<std::optional<std::string>>(
                                                      columns.size(), std::nullopt)},
                   dao::SqlContext::Criterion);
  } catch (const Error& e) {
    if (e.number() == dao::daoerr::kSyntaxInExpression)
      throw Error(e.number(),
                  "Error de sintaxis (falta operador) en la expresión '" + condition + "'.",
                  e.source(), e.engine_code());
    if (e.number() == dao::daoerr::kUnknownFieldInExpression ||
        e.number() == dao::daoerr::kConnectionFailed)
      throw;
  }
  return filter;
}

dao::TableDefinition PostgresEngine::Table(const std::string& name) {
  Result table = session_->Exec(
      "SELECT c.oid, c.relname FROM pg_class c WHERE c.relkind IN ('r', 'v', 'p') "
      "AND c.relnamespace = current_schema()::regnamespace AND lower(c.relname) = lower($1)",
      {name});
  if (table.Rows() == 0) dao::RaiseDao(dao::daoerr::kItemNotFound, kDatabaseSource);
  dao::TableDefinition def;
  def.name = table.Text(0, 1);
  Result columns = session_->Exec(
      "SELECT a.attname, format_type(a.atttypid, a.atttypmod), "
      "a.attidentity <> '' OR coalesce(pg_get_expr(d.adbin, d.adrelid), '') LIKE 'nextval(%' "
      "FROM pg_attribute a LEFT JOIN pg_attrdef d ON d.adrelid = a.attrelid AND d.adnum = a.attnum "
      "WHERE a.attrelid = $1::oid AND a.attnum > 0 AND NOT a.attisdropped ORDER BY a.attnum",
      {table.Text(0, 0)});
  for (int i = 0; i < columns.Rows(); ++i) {
    dao::FieldDefinition field;
    field.name = columns.Text(i, 0);
    const auto type = TypeFromServerType(columns.Text(i, 1));
    field.type = type.type;
    field.size = type.size;
    if (columns.Text(i, 2) == "t") {
      field.attributes = dao::dbFixedField | dao::dbAutoIncrField;
    } else {
      const bool variable = field.type == dao::dbText || field.type == dao::dbMemo;
      field.attributes =
          (variable ? dao::dbVariableField : dao::dbFixedField) | dao::dbUpdatableField;
    }
    def.fields.push_back(std::move(field));
  }
  return def;
}

}  // namespace cp::postgres
