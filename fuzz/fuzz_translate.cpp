// Jet statements and bare conditions through the translator, for SQLite and PostgreSQL.
// Translation either raises one of its documented errors (3075 syntax, 3085 unknown function,
// 3296 untranslatable, 3306 subquery of several fields, 5 chr out of range, from
// "DAO.Database") or gives text; SQLite text must then prepare, whole, on a connection with the
// agency schema and the Jet functions.
// Only names that the schema lacks and the engine's limits may stop it.
//
// Input: the first byte chooses: bit 0 PostgreSQL, bit 1 a bare condition, bit 2 the date
// columns vouched for as the SQLite engine vouches for its own schema's. The rest is Jet.
#include <sqlite3.h>

#include <cctype>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>

#include "fuzz/fuzz_support.h"
#include "platform/core/error.h"
#include "platform/jetsql/translator.h"
#include "platform/sqlite/connection.h"
#include "platform/sqlite/iso_dates.h"
#include "platform/sqlite/jet_functions.h"
#include "sample/schema.h"

namespace {

using namespace cp;

std::string Lower(std::string_view text) {
  std::string s(text);
  for (char& c : s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return s;
}

// An in-memory database with the schema and the Jet functions, and the date columns its
// CHECKs vouch for, made once per process.
struct SchemaDatabase {
  sqlite3* db = nullptr;
  std::set<std::string> isoDateColumns;  // "table\ncolumn", lower case

  SchemaDatabase() {
    if (sqlite3_open(":memory:", &db) != SQLITE_OK) fuzz::Breach("sqlite3_open", ":memory:");
    sqlite::RegisterJetFunctions(db);
    sample::CreateSchema([&](const std::string& sql) {
      if (sqlite3_exec(db, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
        fuzz::Breach("the schema does not load", sql);
      if (sql.rfind("CREATE TABLE", 0) != 0) return;
      // "CREATE TABLE Name (" or "CREATE TABLE "Name" ("
      std::string_view rest = std::string_view(sql).substr(13);
      std::string table(rest.substr(0, rest.find(" (")));
      if (!table.empty() && table.front() == '"') table = table.substr(1, table.size() - 2);
      for (const std::string& column : sqlite::IsoDateCheckedColumns(sql))
        isoDateColumns.insert(Lower(table) + "\n" + Lower(column));
    });
    if (isoDateColumns.empty()) fuzz::Breach("no date column is vouched for", "schema");
  }

  jetsql::TranslateOptions Options() const {
    return {[this](std::string_view table, std::string_view column) {
      return isoDateColumns.contains(Lower(table) + "\n" + Lower(column));
    }};
  }
};

bool DocumentedError(const Error& e) {
  const long n = e.number();
  return e.source() == "DAO.Database" &&
         (n == 3075 || n == 3085 || n == 3296 || n == 3306 || n == 5);
}

// What the engine reports without fault: names the schema lacks (any Jet text may name
// them), and SQLite's limits on one statement, which the engine raises as Jet's 3360.
bool ExpectedRefusal(int rc, std::string_view message) {
  switch (sqlite::DescribeFailure(rc, message, ":memory:").kind) {
    case dao::FailureKind::UnknownTable:
    case dao::FailureKind::UnknownColumn:
    case dao::FailureKind::AmbiguousColumn:
    case dao::FailureKind::TooComplex:
      return true;
    default:
      return false;
  }
}

void Prepare(const SchemaDatabase& schema, const std::string& sql, std::string_view jet) {
  sqlite3_stmt* stmt = nullptr;
  const char* tail = nullptr;
  const int rc = sqlite3_prepare_v2(schema.db, sql.c_str(), static_cast<int>(sql.size()) + 1,
                                    &stmt, &tail);
  sqlite3_finalize(stmt);
  if (rc != SQLITE_OK) {
    const std::string message = sqlite3_errmsg(schema.db);
    if (ExpectedRefusal(rc, message)) return;
    fuzz::Breach("SQLite refuses the translation: " + message,
                 "Jet: " + std::string(jet) + "\nSQL: " + sql);
  }
  if (!stmt) fuzz::Breach("the translation is no statement", "Jet: " + std::string(jet) + "\nSQL: " + sql);
  // One statement only: nothing but blanks and ";" may follow it.
  for (; tail && *tail; ++tail)
    if (!std::isspace(static_cast<unsigned char>(*tail)) && *tail != ';')
      fuzz::Breach("text after the translated statement", "Jet: " + std::string(jet) + "\nSQL: " + sql);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const SchemaDatabase schema;
  if (size == 0) return -1;
  const std::uint8_t mode = data[0];
  const std::string_view jet(reinterpret_cast<const char*>(data + 1), size - 1);
  const auto dialect = (mode & 1) ? jetsql::Dialect::Postgres : jetsql::Dialect::Sqlite;
  const bool condition = mode & 2;
  const jetsql::TranslateOptions options = (mode & 4) ? schema.Options() : jetsql::TranslateOptions{};

  std::string sql;
  try {
    sql = condition ? jetsql::TranslateCondition(jet, dialect, options)
                    : jetsql::TranslateStatement(jet, dialect, options);
  } catch (const Error& e) {
    if (!DocumentedError(e))
      fuzz::Breach("undocumented error " + std::to_string(e.number()) + " from " + e.source() +
                       ": " + e.description(),
                   jet);
    return 0;
  }
  // Other exceptions reach libFuzzer, which reports them as a crash.
  if (dialect == jetsql::Dialect::Sqlite)
    Prepare(schema, condition ? "SELECT 1 FROM Cliente WHERE " + sql : sql, jet);
  return 0;
}
