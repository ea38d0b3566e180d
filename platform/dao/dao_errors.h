#pragma once
// The database errors that the DAO-like API raises, with DAO's numbers (kept in
// platform/core/error_numbers.h) and Spanish texts.
// Every function here throws cp::Error; the text names the table, column, file or SQL at
// fault so that the user (and the error log) can see what went wrong.
#include <string>
#include <string_view>

#include "platform/core/error.h"

namespace cp::dao {

// Sources of the errors, as DAO reports them.
inline constexpr std::string_view kDatabaseSource = "DAO.Database";
inline constexpr std::string_view kRecordsetSource = "DAO.Recordset";
inline constexpr std::string_view kFieldSource = "DAO.Field";

// Where an engine message came from: a statement handed to OpenRecordset, or a criterion of
// FindFirst (DAO reports their unknown names and syntax errors under different numbers).
enum class SqlContext { Statement, Criterion };

// Raises the DAO error for a number whose text needs no detail (3021, 3219, 3251, 3265,
// 3420, 3027).
[[noreturn]] void RaiseDao(long number, std::string_view source);

// What went wrong in an engine, in terms that every engine can name. Each engine maps its
// own codes to these; only here do they become DAO numbers and texts.
enum class FailureKind {
  UnknownTable,
  UnknownColumn,
  AmbiguousColumn,
  UnknownFunction,
  Syntax,
  Busy,          // another process is writing
  Locked,        // a table or row is locked
  NotADatabase,  // or a damaged one
  CannotOpen,
  ReadOnly,      // a write on a read-only connection
  TooComplex,    // beyond the engine's limits of depth or size for one statement
  Other,
};

// One engine failure in neutral shape.
struct EngineFailure {
  FailureKind kind = FailureKind::Other;
  // The table, column, function, syntax token or file path at fault; "" when the engine
  // names none.
  std::string name;
  // The engine's own code, kept on the raised Error ("SQLite 1", "SQLSTATE 42P01").
  std::string code;
  // The engine's own message.
  std::string message;
};

// Raises the DAO error a Jet user would see for an engine failure, carrying failure.code:
// unknown table 3078, unknown column 3061 (3070 in a criterion), ambiguous column 3079,
// unknown function 3085 (with the engine's message when no name is given), syntax 3075
// (3077 in a criterion; sql is quoted, with the token near which it failed), busy 3260,
// locked 3218, not a database (or a damaged one) 3343, cannot open 3044 when the file's
// folder is missing and 3024 otherwise, read-only 3219, too complex 3360; anything else 3146 with the engine's
// message appended.
[[noreturn]] void RaiseEngineError(const EngineFailure& failure, std::string_view sql,
                                   SqlContext context, std::string_view source);

// OpenDatabase given a path that is not a valid path (3044).
[[noreturn]] void RaiseInvalidPath(std::string_view path);

// The same error under another source (DAO reports a failed step as the recordset's error).
[[noreturn]] void RethrowWithSource(const Error& error, std::string_view source);

}  // namespace cp::dao
