#include "platform/sqlite/connection.h"

#include <sqlite3.h>

#include <string>

#include "platform/sqlite/jet_functions.h"

namespace cp::sqlite {
namespace {

// SQLite reports unknown names and syntax errors all as SQLITE_ERROR: only its message
// tells them apart.
struct MessageKind {
  std::string_view prefix;
  dao::FailureKind kind;
};
constexpr MessageKind kNamedFailures[] = {
    {"no such table: ", dao::FailureKind::UnknownTable},
    {"no such column: ", dao::FailureKind::UnknownColumn},
    {"ambiguous column name: ", dao::FailureKind::AmbiguousColumn},
    {"no such function: ", dao::FailureKind::UnknownFunction},
};
constexpr std::string_view kSyntaxMarks[] = {"syntax error", "unrecognized token",
                                             "incomplete input"};
// SQLite's limits on one statement (expression depth, terms, arguments, parser stack); a
// criterion with a thousand list items reaches them.
constexpr std::string_view kTooComplexMarks[] = {"too large", "too many", "stack overflow",
                                                 "too complex"};

// The token a syntax message points at: `near "X": syntax error` or `unrecognized token: "X"`.
std::string NearToken(std::string_view message) {
  const auto open = message.find('"');
  if (open == std::string_view::npos) return {};
  const auto close = message.rfind('"');
  if (close <= open) return {};
  return std::string(message.substr(open + 1, close - open - 1));
}

// Sets the kind and the name at fault from the message; a message it does not know stays
// FailureKind::Other.
void ReadMessage(dao::EngineFailure& failure) {
  const std::string_view message = failure.message;
  for (const auto& named : kNamedFailures) {
    const auto at = message.find(named.prefix);
    if (at == std::string_view::npos) continue;
    std::string_view name = message.substr(at + named.prefix.size());
    // The schema qualifier is SQLite's, not the user's.
    if (name.rfind("main.", 0) == 0) name.remove_prefix(5);
    failure.kind = named.kind;
    failure.name = std::string(name);
    return;
  }
  for (const auto mark : kSyntaxMarks) {
    if (message.find(mark) == std::string_view::npos) continue;
    failure.kind = dao::FailureKind::Syntax;
    failure.name = NearToken(message);
    return;
  }
  for (const auto mark : kTooComplexMarks) {
    if (message.find(mark) == std::string_view::npos) continue;
    failure.kind = dao::FailureKind::TooComplex;
    return;
  }
}

}  // namespace

ProcessSlot<std::chrono::milliseconds>& BusyTimeoutSlot() {
  static ProcessSlot<std::chrono::milliseconds> slot(std::chrono::milliseconds(5000));
  return slot;
}

dao::EngineFailure DescribeFailure(int rc, std::string_view message, std::string_view path) {
  dao::EngineFailure failure;
  failure.code = "SQLite " + std::to_string(rc);
  failure.message = std::string(message);
  switch (rc & 0xff) {
    case SQLITE_BUSY: failure.kind = dao::FailureKind::Busy; break;
    case SQLITE_LOCKED: failure.kind = dao::FailureKind::Locked; break;
    case SQLITE_NOTADB: failure.kind = dao::FailureKind::NotADatabase; break;
    // A damaged file (cut short, overwritten) is what Jet calls a format it does not
    // recognise; SQLite's own text for it is English.
    case SQLITE_CORRUPT: failure.kind = dao::FailureKind::NotADatabase; break;
    case SQLITE_CANTOPEN: failure.kind = dao::FailureKind::CannotOpen; break;
    case SQLITE_ERROR: ReadMessage(failure); return failure;
    default: return failure;
  }
  // The failures about the file name the file.
  failure.name = std::string(path);
  return failure;
}

std::shared_ptr<Connection> Connection::Open(const std::string& path, Mode mode) {
  if (path.empty()) dao::RaiseInvalidPath(path);
  int flags = SQLITE_OPEN_READWRITE;
  if (mode == Mode::CreateIfMissing) flags |= SQLITE_OPEN_CREATE;
  sqlite3* raw = nullptr;
  const int rc = sqlite3_open_v2(path.c_str(), &raw, flags, nullptr);
  // The handle exists even when opening failed; the connection owns it from here on.
  std::shared_ptr<Connection> connection(new Connection(raw, path));
  if (rc != SQLITE_OK) connection->Fail(rc, {}, dao::SqlContext::Statement, dao::kDatabaseSource);
  sqlite3_busy_timeout(raw, static_cast<int>(BusyTimeoutSlot().Get().count()));
  sqlite3_extended_result_codes(raw, 1);
  // SQLite reads the header lazily: touch the schema now so a foreign file fails here.
  const int check = sqlite3_exec(raw, "SELECT count(*) FROM sqlite_master", nullptr, nullptr,
                                 nullptr);
  if (check != SQLITE_OK) connection->Fail(check, {}, dao::SqlContext::Statement,
                                           dao::kDatabaseSource);
  // Selections scan whole tables again and again (match crosses thousands of records): map
  // the file and keep a large page cache rather than reading every page through the kernel.
  sqlite3_exec(raw, "PRAGMA mmap_size = 1073741824; PRAGMA cache_size = -131072", nullptr,
               nullptr, nullptr);
  RegisterJetFunctions(raw);
  return connection;
}

Connection::~Connection() { sqlite3_close_v2(db_); }

void Connection::Fail(int rc, std::string_view sql, dao::SqlContext context,
                      std::string_view source) const {
  const std::string message = db_ ? sqlite3_errmsg(db_) : sqlite3_errstr(rc);
  dao::RaiseEngineError(DescribeFailure(rc, message, path_), sql, context, source);
}

}  // namespace cp::sqlite
