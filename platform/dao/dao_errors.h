#pragma once
// The database errors that the DAO-like API raises, with DAO's numbers and Spanish texts.
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

namespace daoerr {
inline constexpr long kNoCurrentRecord = 3021;       // "No hay registro activo."
inline constexpr long kFileNotFound = 3024;
inline constexpr long kReadOnly = 3027;
inline constexpr long kInvalidPath = 3044;
inline constexpr long kTooFewParameters = 3061;      // unknown column in a statement
inline constexpr long kUnknownFieldInExpression = 3070;  // unknown column in a criterion
inline constexpr long kSyntaxInQuery = 3075;
inline constexpr long kSyntaxInExpression = 3077;
inline constexpr long kTableNotFound = 3078;
inline constexpr long kAmbiguousField = 3079;
inline constexpr long kUndefinedFunction = 3085;
inline constexpr long kTextAfterStatement = 3142;
inline constexpr long kEngineFailure = 3146;
inline constexpr long kConnectionFailed = 3151;
inline constexpr long kLocked = 3218;
inline constexpr long kInvalidOperation = 3219;
inline constexpr long kNotForThisType = 3251;
inline constexpr long kBusy = 3260;
inline constexpr long kItemNotFound = 3265;          // "Elemento no encontrado en esta colección."
inline constexpr long kUnrecognisedFormat = 3343;
inline constexpr long kObjectInvalid = 3420;         // closed database or recordset
}  // namespace daoerr

// Where an engine message came from: a statement handed to OpenRecordset, or a criterion of
// FindFirst (DAO reports their unknown names and syntax errors under different numbers).
enum class SqlContext { Statement, Criterion };

// Raises the DAO error for a number whose text needs no detail (3021, 3219, 3251, 3265,
// 3420, 3027).
[[noreturn]] void RaiseDao(long number, std::string_view source);

// Turns an engine's own message into the DAO error a Jet user would see: unknown table 3078,
// unknown column 3061 (3070 in a criterion), syntax 3075 (3077 in a criterion), ambiguous
// column 3079, unknown function 3085; anything else 3146 with the engine's message appended.
// sql: the translated text that failed, quoted when no better culprit is known.
[[noreturn]] void RaiseFromEngineMessage(std::string_view message, std::string_view sql,
                                         SqlContext context, std::string_view source);

// File errors of OpenDatabase: the file is missing (3024), its folder is not a valid path
// (3044), or it is not a database (3343).
[[noreturn]] void RaiseFileNotFound(std::string_view path);
[[noreturn]] void RaiseInvalidPath(std::string_view path);
[[noreturn]] void RaiseUnrecognisedFormat(std::string_view path);
// The database is busy with another process's write (3260) or a table is locked (3218).
[[noreturn]] void RaiseBusy(std::string_view path, std::string_view source);
[[noreturn]] void RaiseLocked(std::string_view detail, std::string_view source);
// Any other engine failure: 3146 with the engine's message.
[[noreturn]] void RaiseEngineFailure(std::string_view message, std::string_view source);

// The same error under another source (DAO reports a failed step as the recordset's error).
[[noreturn]] void RethrowWithSource(const Error& error, std::string_view source);

}  // namespace cp::dao
