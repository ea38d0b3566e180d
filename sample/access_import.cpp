#include "sample/access_import.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <filesystem>

#include "platform/core/date.h"
#include "platform/core/error.h"
#include "platform/dao/types.h"
#include "platform/jetsql/postgres_rules.h"
#include "platform/postgres/session.h"
#include "platform/sqlite/native.h"
#include "sample/server_database.h"
#include "sample/row_sink.h"

namespace cp::sample {
namespace {

namespace fs = std::filesystem;
using dao::SameName;  // Access, like DAO, finds names in any case
using mdb::ColumnType;

constexpr long kProgressEvery = 512;

const mdb::AccessTable* FindSource(const std::vector<mdb::AccessTable>& tables,
                                   std::string_view name) {
  for (const mdb::AccessTable& t : tables)
    if (SameName(t.name, name)) return &t;
  return nullptr;
}

DbValue ToDbValue(const Variant& v) {
  switch (v.type()) {
    case Variant::Type::Long: return std::int64_t{v.AsLong()};
    case Variant::Type::Integer: return std::int64_t{v.AsInteger()};
    case Variant::Type::Double: return v.AsDouble();
    case Variant::Type::Date: return StoredIsoDate(v.AsDate());
    case Variant::Type::String: return v.AsString();
    default: return std::monostate{};
  }
}

std::vector<std::string> TargetNames(const TablePlan& plan) {
  std::vector<std::string> names;
  for (const CopiedColumn& c : plan.copied) names.push_back(c.target);
  return names;
}

// Copies one table's rows through writer; returns the rows written.
long CopyRows(const mdb::AccessFile& file, const TablePlan& plan, TableWriter& writer,
              const ImportProgress& progress) {
  const std::string& name = plan.target.name;
  const long total = plan.source->rows;
  long done = 0;
  std::vector<DbValue> out(plan.copied.size());
  if (progress) progress(name, 0, total);
  file.ReadRows(plan.source->name, [&](const std::vector<Variant>& row) {
    for (std::size_t i = 0; i < plan.copied.size(); ++i) out[i] = ToDbValue(row[plan.copied[i].source]);
    writer.Write(out);
    if (++done % kProgressEvery == 0 && progress) progress(name, done, total);
  });
  if (progress) progress(name, done, total);
  return done;
}

// Rows into one SQLite table, many to a statement: an INSERT of kRowsPerInsert rows and one
// of a single row for the rest, each prepared once. Flush writes the rows still held. Access
// tables have at most 255 columns: 32 rows stay below SQLite's 32766 parameters.
class BatchedInsert : public TableWriter {
 public:
  static constexpr std::size_t kRowsPerInsert = 32;

  BatchedInsert(sqlite::NativeDatabase& db, const std::string& table,
                const std::vector<std::string>& columns)
      : columns_(columns.size()),
        many_(db.Prepare(Sql(table, columns, kRowsPerInsert))),
        one_(db.Prepare(Sql(table, columns, 1))) {
    held_.reserve(columns_ * kRowsPerInsert);
  }

  void Write(const std::vector<DbValue>& row) override {
    held_.insert(held_.end(), row.begin(), row.end());
    if (held_.size() == columns_ * kRowsPerInsert) Run(many_, held_.size());
  }

  void Flush() {
    for (std::size_t at = 0; at < held_.size(); at += columns_) {
      for (std::size_t i = 0; i < columns_; ++i) one_.BindCell(static_cast<int>(i) + 1, held_[at + i]);
      one_.Step();
      one_.Reset();
    }
    held_.clear();
  }

 private:
  static std::string Sql(const std::string& table, const std::vector<std::string>& columns,
                         std::size_t rows) {
    std::string names, marks = "(";
    for (const std::string& c : columns) {
      names += (names.empty() ? "\"" : ", \"") + c + "\"";
      marks += marks.size() == 1 ? "?" : ", ?";
    }
    marks += ")";
    std::string sql = "INSERT INTO \"" + table + "\" (" + names + ") VALUES " + marks;
    for (std::size_t r = 1; r < rows; ++r) sql += ", " + marks;
    return sql;
  }
  void Run(sqlite::NativeStatement& insert, std::size_t values) {
    for (std::size_t i = 0; i < values; ++i) insert.BindCell(static_cast<int>(i) + 1, held_[i]);
    insert.Step();
    insert.Reset();
    held_.clear();
  }

  std::size_t columns_;
  sqlite::NativeStatement many_, one_;
  std::vector<DbValue> held_;
};

ImportSummary Summarise(const std::vector<mdb::AccessTable>& tables,
                        const std::vector<TablePlan>& plans) {
  ImportSummary summary;
  for (const TablePlan& p : plans) {
    ImportedTable t;
    t.name = p.target.name;
    t.in_schema = p.in_schema;
    for (const SchemaColumn& c : p.added_columns) t.added_columns.push_back(c.name);
    t.skipped_columns = p.skipped_columns;
    summary.tables.push_back(std::move(t));
  }
  summary.missing_tables = MissingTables(tables);
  return summary;
}

[[noreturn]] void TargetExists(const std::string& target) {
  throw Error(err::kFileAlreadyExists, "El fichero '" + target + "' ya existe.");
}

void SyncFile(const std::string& path) {
  const int fd = ::open(path.c_str(), O_RDONLY);
  if (fd >= 0) {
    ::fsync(fd);
    ::close(fd);
  }
}

// An empty file beside target, hidden, that only this process uses.
std::string ReserveBeside(const fs::path& target) {
  const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
  const std::string stem =
      "." + target.filename().string() + ".importando-" + std::to_string(::getpid());
  for (int attempt = 0; attempt < 100; ++attempt) {
    const std::string path = (folder / (stem + "-" + std::to_string(attempt))).string();
    const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL, 0666);
    if (fd >= 0) {
      ::close(fd);
      return path;
    }
    if (errno != EEXIST)
      throw Error(err::kPathNotFound, "No se puede escribir en la carpeta '" + folder.string() + "'.");
  }
  throw Error(err::kPermissionDenied, "No se puede crear un fichero en '" + folder.string() + "'.");
}

void ImportToFile(const mdb::AccessFile& file, const std::vector<TablePlan>& plans,
                  const std::string& target, const ImportOptions& options,
                  ImportSummary& summary) {
  std::error_code ec;
  if (!options.replace && (fs::exists(target, ec) || fs::is_symlink(target, ec)))
    TargetExists(target);
  // The database is built in memory and written out whole at the end, so an interrupted
  // import leaves no file behind.
  sqlite::NativeDatabase db(":memory:", sqlite::NativeDatabase::Mode::CreateIfMissing);
  {
    sqlite::Transaction transaction(db);
    CreateSchema([&](const std::string& sql) { db.ExecuteNative(sql); });
    for (const TablePlan& p : plans) {
      if (!p.in_schema)
        for (const std::string& sql : TableStatements(p.target)) db.ExecuteNative(sql);
      for (const SchemaColumn& c : p.added_columns)
        db.ExecuteNative("ALTER TABLE \"" + p.target.name + "\" ADD COLUMN " + ColumnDefinition(c));
    }
    for (std::size_t i = 0; i < plans.size(); ++i) {
      BatchedInsert insert(db, plans[i].target.name, TargetNames(plans[i]));
      summary.tables[i].rows = CopyRows(file, plans[i], insert, options.progress);
      insert.Flush();
    }
    db.ExecuteNative("ANALYZE");  // the planner's statistics, as init-db leaves them
    transaction.Commit();
  }
  const std::string temporary = ReserveBeside(fs::path(target));
  try {
    db.CopyTo(temporary);
    SyncFile(temporary);
    if (options.replace) {
      fs::rename(temporary, target);
    } else {
      // A link never replaces: a file that appeared meanwhile is kept.
      if (::link(temporary.c_str(), target.c_str()) != 0) {
        if (errno == EEXIST) TargetExists(target);
        throw Error(err::kPermissionDenied, "No se puede crear el fichero '" + target + "'.");
      }
      fs::remove(temporary);
    }
  } catch (...) {
    fs::remove(temporary, ec);
    throw;
  }
}

void ImportToServer(const mdb::AccessFile& file, const std::vector<TablePlan>& plans,
                    const std::string& target, const ImportOptions& options,
                    ImportSummary& summary) {
  using jetsql::PostgresName;
  postgres::Session session(target, postgres::Session::Purpose::Tool);
  const std::string first = PostgresName(SchemaTables().front().name);
  const bool exists = !session.Exec("SELECT to_regclass($1)", {first}).IsNull(0, 0);
  if (exists && !options.replace)
    throw Error(err::kFileAlreadyExists, "La base de datos '" + target + "' ya tiene las tablas.");
  // Nothing is left behind on failure: the transaction dies with the session.
  session.Execute("BEGIN");
  if (exists) {
    for (const SchemaTable& t : SchemaTables())
      session.Execute("DROP TABLE IF EXISTS " + PostgresName(t.name));
    for (const TablePlan& p : plans)
      session.Execute("DROP TABLE IF EXISTS " + PostgresName(p.target.name));
    session.Execute("DROP DOMAIN IF EXISTS jet_yesno, jet_byte");
  }
  for (const std::string& sql : ServerSchemaStatements()) session.Execute(sql);
  for (const TablePlan& p : plans) {
    if (!p.in_schema)
      for (const std::string& sql : ServerTableStatements(p.target)) session.Execute(sql);
    for (const SchemaColumn& c : p.added_columns)
      session.Execute("ALTER TABLE " + PostgresName(p.target.name) + " ADD COLUMN " +
                      ServerColumnDefinition(c));
  }
  auto sink = MakeServerSink(session);
  for (std::size_t i = 0; i < plans.size(); ++i) {
    auto writer = sink->Open(plans[i].target.name, TargetNames(plans[i]));
    summary.tables[i].rows = CopyRows(file, plans[i], *writer, options.progress);
  }
  for (const TablePlan& p : plans) NumberAfterKeys(session, p.target);
  session.Execute("COMMIT");
  session.Execute("ANALYZE");
}

// FNV-1a over the canonical texts of a row, each followed by a separator.
std::uint64_t RowHash(const std::vector<std::string>& texts) {
  std::uint64_t h = 0xcbf29ce484222325ull;
  for (const std::string& t : texts) {
    for (unsigned char c : t) h = (h ^ c) * 0x100000001b3ull;
    h = (h ^ 0x1f) * 0x100000001b3ull;
  }
  return h;
}

bool IsWhole(ColumnType t) {
  return t == ColumnType::YesNo || t == ColumnType::Byte || t == ColumnType::Integer ||
         t == ColumnType::Long;
}
bool IsFractional(ColumnType t) {
  return t == ColumnType::Currency || t == ColumnType::Single || t == ColumnType::Double ||
         t == ColumnType::Decimal;
}

std::string NumberText(double d) {
  if (std::isfinite(d) && d == std::trunc(d) && std::fabs(d) < 1e15)
    return std::to_string(static_cast<long long>(d));
  char buf[40];
  return std::string(buf, std::to_chars(buf, buf + sizeof buf, d).ptr);
}

// A server's text for a value, as the Variant the file gives for that type.
Variant FromServerText(ColumnType type, const std::string& text) {
  if (IsWhole(type)) return Variant(static_cast<std::int32_t>(std::stol(text)));
  if (IsFractional(type)) {
    double d = 0;
    std::from_chars(text.data(), text.data() + text.size(), d);
    return Variant(d);
  }
  if (type == ColumnType::DateTime) {
    static const std::string midnight = " 00:00:00";
    if (text.size() > midnight.size() && text.ends_with(midnight))
      return Variant(text.substr(0, text.size() - midnight.size()));
  }
  return Variant(text);
}

struct Side {
  long rows = 0;
  std::uint64_t sum = 0;
  void Add(const std::vector<std::string>& texts) {
    ++rows;
    sum += RowHash(texts);
  }
};

Side TargetSide(const std::string& target, const TablePlan& plan,
                postgres::Session* server, sqlite::NativeDatabase* file) {
  Side side;
  std::vector<std::string> texts(plan.copied.size());
  std::string columns;
  const auto typeOf = [&](std::size_t i) {
    return plan.source->columns[plan.copied[i].source].type;
  };
  if (server) {
    for (const CopiedColumn& c : plan.copied)
      columns += (columns.empty() ? "" : ", ") + jetsql::PostgresName(c.target);
    const postgres::Result r = server->Exec("SELECT " + columns + " FROM " + jetsql::PostgresName(plan.target.name));
    for (int row = 0; row < r.Rows(); ++row) {
      for (std::size_t i = 0; i < texts.size(); ++i) {
        const int col = static_cast<int>(i);
        texts[i] = CanonicalText(r.IsNull(row, col) ? Variant::Null()
                                                              : FromServerText(typeOf(i), r.Text(row, col)));
      }
      side.Add(texts);
    }
    return side;
  }
  for (const CopiedColumn& c : plan.copied) columns += (columns.empty() ? "\"" : ", \"") + c.target + "\"";
  sqlite::NativeStatement select = file->Prepare("SELECT " + columns + " FROM \"" + plan.target.name + "\"");
  while (select.Step()) {
    for (std::size_t i = 0; i < texts.size(); ++i)
      texts[i] = CanonicalText(select.Column(static_cast<int>(i)));
    side.Add(texts);
  }
  return side;
}

}  // namespace

SchemaColumn TargetColumn(const mdb::AccessColumn& column, bool key) {
  SchemaColumn c{column.name, "INTEGER"};
  switch (column.type) {
    case ColumnType::YesNo: c.type = "BOOLEAN", c.not_null = true; break;
    case ColumnType::Byte: c.type = "TINYINT"; break;
    case ColumnType::Integer: c.type = "SMALLINT"; break;
    case ColumnType::Long: c.auto_key = key; break;
    case ColumnType::Currency: c.type = "CURRENCY"; break;
    case ColumnType::Single:
    case ColumnType::Double:
    case ColumnType::Decimal: c.type = "DOUBLE"; break;
    case ColumnType::DateTime: c.type = "DATETIME"; break;
    case ColumnType::Text:
      c.type = "VARCHAR(" + std::to_string(column.size > 0 ? column.size : 255) + ")";
      break;
    case ColumnType::Memo: c.type = "TEXT"; break;
    case ColumnType::Guid: c.type = "VARCHAR(38)"; break;
    case ColumnType::Binary: c.type = "BLOB"; break;
  }
  return c;
}

std::vector<TablePlan> PlanImport(const std::vector<mdb::AccessTable>& tables) {
  std::vector<TablePlan> plans;
  std::vector<const mdb::AccessTable*> known;
  for (const SchemaTable& schema : SchemaTables()) {
    const mdb::AccessTable* source = FindSource(tables, schema.name);
    if (!source) continue;
    known.push_back(source);
    TablePlan p{source, schema, true, {}, {}, {}};
    for (std::size_t i = 0; i < source->columns.size(); ++i) {
      const mdb::AccessColumn& c = source->columns[i];
      if (c.type == ColumnType::Binary) {
        p.skipped_columns.push_back(c.name);
        continue;
      }
      const SchemaColumn* match = nullptr;
      for (const SchemaColumn& s : schema.columns)
        if (SameName(s.name, c.name)) match = &s;
      if (!match) p.added_columns.push_back(TargetColumn(c, false));
      p.copied.push_back({i, match ? match->name : c.name});
    }
    plans.push_back(std::move(p));
  }
  for (const mdb::AccessTable& source : tables) {
    if (std::find(known.begin(), known.end(), &source) != known.end()) continue;
    TablePlan p{&source, {source.name, {}, {}}, false, {}, {}, {}};
    bool keyed = false;
    for (std::size_t i = 0; i < source.columns.size(); ++i) {
      const mdb::AccessColumn& c = source.columns[i];
      if (c.type == ColumnType::Binary) {
        p.skipped_columns.push_back(c.name);
        continue;
      }
      const bool key = !keyed && c.auto_number && c.type == ColumnType::Long;
      keyed = keyed || key;
      p.target.columns.push_back(TargetColumn(c, key));
      p.copied.push_back({i, c.name});
    }
    plans.push_back(std::move(p));
  }
  return plans;
}

std::vector<std::string> MissingTables(const std::vector<mdb::AccessTable>& tables) {
  std::vector<std::string> missing;
  for (const SchemaTable& schema : SchemaTables())
    if (!FindSource(tables, schema.name)) missing.push_back(schema.name);
  return missing;
}

ImportSummary ImportAccess(const std::string& mdbPath, const std::string& target,
                           const ImportOptions& options) {
  // A bad file raises here, before the target is touched.
  const mdb::AccessFile file(mdbPath);
  const std::vector<TablePlan> plans = PlanImport(file.tables());
  ImportSummary summary = Summarise(file.tables(), plans);
  if (postgres::IsServerConnection(target))
    ImportToServer(file, plans, target, options, summary);
  else
    ImportToFile(file, plans, target, options, summary);
  return summary;
}

std::string CanonicalText(const Variant& v) {
  switch (v.type()) {
    case Variant::Type::Empty:
    case Variant::Type::Null: return "\x1e";
    case Variant::Type::Boolean: return v.AsBool() ? "1" : "0";
    case Variant::Type::Integer: return std::to_string(v.AsInteger());
    case Variant::Type::Long: return std::to_string(v.AsLong());
    case Variant::Type::Double: return NumberText(v.AsDouble());
    case Variant::Type::Date: return StoredIsoDate(v.AsDate());
    case Variant::Type::String: return v.AsString();
    default: return v.TypeName();
  }
}

std::vector<TableCheck> CheckImport(const std::string& mdbPath, const std::string& target) {
  const mdb::AccessFile file(mdbPath);
  const std::vector<TablePlan> plans = PlanImport(file.tables());
  std::unique_ptr<postgres::Session> server;
  std::unique_ptr<sqlite::NativeDatabase> db;
  if (postgres::IsServerConnection(target))
    server = std::make_unique<postgres::Session>(target, postgres::Session::Purpose::Tool);
  else
    db = std::make_unique<sqlite::NativeDatabase>(target);
  std::vector<TableCheck> checks;
  for (const TablePlan& p : plans) {
    Side access;
    std::vector<std::string> texts(p.copied.size());
    file.ReadRows(p.source->name, [&](const std::vector<Variant>& row) {
      for (std::size_t i = 0; i < texts.size(); ++i)
        texts[i] = CanonicalText(row[p.copied[i].source]);
      access.Add(texts);
    });
    const Side copy = TargetSide(target, p, server.get(), db.get());
    checks.push_back({p.target.name, access.rows, copy.rows, access.sum, copy.sum});
  }
  return checks;
}

}  // namespace cp::sample
