#pragma once
// The subcommands of the criteriopredios tool, callable without a process: each writes its
// result to out and its errors (Spanish text) to err, and returns the exit status.
#include <iosfwd>
#include <string>

#include "platform/dao/recordset.h"
#include "platform/jetsql/translator.h"

namespace cp::cli {

inline constexpr int kExitOk = 0;
inline constexpr int kExitError = 2;  // bad arguments, or an error that reached the caller

struct InitDbOptions {
  std::string db;
  bool demo = false;
  int size = 2000;  // own properties with demo data
};

// Creates a new SQLite file with the schema and, with demo, the sample data, all in one
// transaction. Refuses a path that already exists; a failure removes the half-made file.
int InitDb(const InitDbOptions& options, std::ostream& out, std::ostream& err);

struct TranslateOptions {
  jetsql::Dialect dialect = jetsql::Dialect::Sqlite;
  bool condition = false;  // the text is a bare condition, not a statement
  std::string sql;
};

// Prints the Jet SQL translated for the dialect, on one line.
int Translate(const TranslateOptions& options, std::ostream& out, std::ostream& err);

struct SqlOptions {
  std::string db;
  bool json = false;
  std::string statement;
};

// Runs one Jet SELECT through the DAO-like API and prints its rows: a header line of column
// names, then one line per row, values tab-separated; Null is an empty field, integers are
// plain, doubles use "." as decimal mark, dates are ISO ("yyyy-mm-dd", with " hh:mm:ss" when
// they hold a time), Yes/No is 1 or 0; tab, newline, carriage return and backslash inside
// text are written \t, \n, \r and \\. With json, an array of objects, one per row, keyed by
// column name (Null as null, Yes/No as true/false).
int Sql(const SqlOptions& options, std::ostream& out, std::ostream& err);

// Reads every remaining row of rs and formats them as Sql prints them.
std::string FormatRows(dao::Recordset& rs, bool json);

}  // namespace cp::cli
