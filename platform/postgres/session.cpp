#include "platform/postgres/session.h"

#include <libpq-fe.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstring>
#include <cstdlib>
#include <regex>
#include <utility>

#include "platform/postgres/jet_functions.h"

namespace cp::postgres {
namespace {

using dao::kDatabaseSource;
namespace daoerr = dao::daoerr;

// Type oids of pg_type that come back as numbers.
constexpr unsigned kBool = 16, kInt8 = 20, kInt2 = 21, kInt4 = 23, kFloat4 = 700,
                   kFloat8 = 701, kNumeric = 1700;

[[noreturn]] void Throw(long number, std::string text, std::string_view source) {
  throw Error(number, std::move(text), std::string(source));
}

// The quoted name in a server message ("relation \"x\" does not exist"), or "".
std::string QuotedName(const char* message) {
  std::string_view m = message ? message : "";
  const auto open = m.find('"');
  const auto close = open == std::string_view::npos ? open : m.find('"', open + 1);
  if (close == std::string_view::npos) return {};
  return std::string(m.substr(open + 1, close - open - 1));
}

std::string Field(const PGresult* r, int code) {
  const char* v = PQresultErrorField(r, code);
  return v ? v : "";
}

// The name the server points at, as the statement spells it (the server reports names
// folded to lower case): the dotted identifier at the error's position in the statement.
std::string Culprit(const PGresult* r, std::string_view sql) {
  const std::string position = Field(r, PG_DIAG_STATEMENT_POSITION);
  if (!position.empty()) {
    // The position counts characters from 1; the text is UTF-8.
    long chars = std::strtol(position.c_str(), nullptr, 10) - 1;
    std::size_t at = 0;
    while (at < sql.size() && chars > 0) {
      ++at;
      if (at < sql.size() && (static_cast<unsigned char>(sql[at]) & 0xC0) != 0x80) --chars;
    }
    std::size_t end = at;
    while (end < sql.size() && (std::isalnum(static_cast<unsigned char>(sql[end])) ||
                                sql[end] == '_' || sql[end] == '.' || sql[end] == '"' ||
                                static_cast<unsigned char>(sql[end]) >= 0x80))
      ++end;
    std::string name;
    for (char c : sql.substr(at, end - at))
      if (c != '"') name += c;
    if (!name.empty()) return name;
  }
  return QuotedName(Field(r, PG_DIAG_MESSAGE_PRIMARY).c_str());
}

// The server's SQLSTATE codes in neutral terms; any other code is FailureKind::Other.
struct StateKind {
  std::string_view state;
  dao::FailureKind kind;
};
constexpr StateKind kStateKinds[] = {
    {"42P01", dao::FailureKind::UnknownTable},
    {"42703", dao::FailureKind::UnknownColumn},
    {"42702", dao::FailureKind::AmbiguousColumn},
    {"42883", dao::FailureKind::UnknownFunction},
    {"42601", dao::FailureKind::Syntax},
    {"25006", dao::FailureKind::ReadOnly},
    {"40P01", dao::FailureKind::Locked},  // deadlock
    {"55P03", dao::FailureKind::Locked},  // lock not available
    {"40001", dao::FailureKind::Locked},  // serialization failure
    {"54000", dao::FailureKind::TooComplex},  // program limit exceeded
    {"54001", dao::FailureKind::TooComplex},  // statement too complex, stack depth
    {"54011", dao::FailureKind::TooComplex},  // too many columns
    {"54023", dao::FailureKind::TooComplex},  // too many arguments
};

// Raises the DAO error for a failed statement by its SQLSTATE.
[[noreturn]] void RaiseStatementError(const PGresult* r, std::string_view sql,
                                      dao::SqlContext context, std::string_view source) {
  const std::string state = Field(r, PG_DIAG_SQLSTATE);
  dao::EngineFailure failure;
  failure.code = "SQLSTATE " + state;
  failure.message = Field(r, PG_DIAG_MESSAGE_PRIMARY);
  for (const auto& entry : kStateKinds)
    if (entry.state == state) failure.kind = entry.kind;
  // Only unknown and ambiguous names are named by position; an unknown function keeps the
  // server's message, which also gives the argument types it looked for.
  if (failure.kind == dao::FailureKind::UnknownTable ||
      failure.kind == dao::FailureKind::UnknownColumn ||
      failure.kind == dao::FailureKind::AmbiguousColumn)
    failure.name = Culprit(r, sql);
  dao::RaiseEngineError(failure, sql, context, source);
}

bool ConnectionLost(const std::string& state) {
  return state.rfind("08", 0) == 0 || state == "57P01" || state == "57P02" || state == "57P03";
}

// The same connection text aimed at the server's maintenance database.
std::string MaintenanceConnection(const std::string& connection) {
  if (IsServerConnection(connection) && connection.find("://") != std::string::npos) {
    std::string prefix = connection.substr(0, connection.find("://") + 3);
    std::string rest = connection.substr(prefix.size());
    const auto query = rest.find('?');
    std::string tail = query == std::string::npos ? "" : rest.substr(query);
    std::string authority = rest.substr(0, std::min(rest.find('/'), query));
    return prefix + authority + "/postgres" + tail;
  }
  return connection + " dbname=postgres";
}

}  // namespace

// ---- Result

Result::Result(PGresult* result) : result_(result) {}
Result::Result(Result&& other) noexcept : result_(std::exchange(other.result_, nullptr)) {}
Result& Result::operator=(Result&& other) noexcept {
  if (this != &other) {
    PQclear(result_);
    result_ = std::exchange(other.result_, nullptr);
  }
  return *this;
}
Result::~Result() { PQclear(result_); }

int Result::Rows() const { return PQntuples(result_); }
int Result::Columns() const { return PQnfields(result_); }
std::string Result::ColumnName(int column) const { return PQfname(result_, column); }
unsigned Result::TypeOid(int column) const { return PQftype(result_, column); }
unsigned Result::TableOid(int column) const { return PQftable(result_, column); }
int Result::TableColumn(int column) const { return PQftablecol(result_, column); }
int Result::TypeModifier(int column) const { return PQfmod(result_, column); }
bool Result::IsNull(int row, int column) const { return PQgetisnull(result_, row, column); }
std::string Result::Text(int row, int column) const {
  return std::string(PQgetvalue(result_, row, column),
                     static_cast<std::size_t>(PQgetlength(result_, row, column)));
}

dao::Cell Result::Value(int row, int column) const {
  if (IsNull(row, column)) return std::monostate{};
  const char* text = PQgetvalue(result_, row, column);
  switch (TypeOid(column)) {
    case kInt2:
    case kInt4:
    case kInt8: return static_cast<std::int64_t>(std::strtoll(text, nullptr, 10));
    case kFloat4:
    case kFloat8:
    case kNumeric: {
      // from_chars, not strtod: the server's "2.5" must not depend on the desktop's locale.
      double value = 0;
      std::from_chars(text, text + std::strlen(text), value);
      return value;
    }
    case kBool: return static_cast<std::int64_t>(text[0] == 't' ? 1 : 0);
    default: return Text(row, column);
  }
}

// ---- Session

bool IsServerConnection(std::string_view c) {
  auto starts = [&](std::string_view p) {
    return c.size() >= p.size() && dao::SameName(c.substr(0, p.size()), p);
  };
  if (starts("postgresql://") || starts("postgres://")) return true;
  // libpq's key=value form, with libpq's own keywords: a file called "a=b.db" stays a file.
  if (c.find('=') == std::string_view::npos) return false;
  char* error = nullptr;
  PQconninfoOption* options = PQconninfoParse(std::string(c).c_str(), &error);
  PQfreemem(error);
  if (!options) return false;
  PQconninfoFree(options);
  return true;
}

Session::Session(std::string connection, Purpose purpose)
    : connection_(std::move(connection)), purpose_(purpose) {
  Connect();
}

Session::~Session() {
  PQfreeCancel(cancel_);
  PQfinish(conn_);
}

void Session::Cancel() {
  std::lock_guard lock(cancelMutex_);
  char message[256];
  if (cancel_) PQcancel(cancel_, message, sizeof message);
}

void Session::Connect() {
  PQfinish(std::exchange(conn_, nullptr));
  conn_ = PQconnectdb(connection_.c_str());
  if (!conn_ || PQstatus(conn_) != CONNECTION_OK) RaiseConnectFailure();
  PQsetClientEncoding(conn_, "UTF8");
  // Dates travel as ISO text; the component's sessions only read.
  std::string setup = "SET DateStyle = ISO, YMD; SET IntervalStyle = iso_8601;";
  if (purpose_ == Purpose::Component)
    setup += "SET default_transaction_read_only = on;" + JetFunctionsSql();
  PGresult* r = PQexec(conn_, setup.c_str());
  const bool ok = PQresultStatus(r) == PGRES_COMMAND_OK;
  const std::string message = ok ? "" : Field(r, PG_DIAG_MESSAGE_PRIMARY);
  PQclear(r);
  if (!ok) {
    PQfinish(std::exchange(conn_, nullptr));
    Throw(daoerr::kConnectionFailed,
          "No se pudo preparar la conexión con el servidor PostgreSQL '" + Shown() + "': " +
              message,
          kDatabaseSource);
  }
  std::lock_guard lock(cancelMutex_);
  PQfreeCancel(std::exchange(cancel_, PQgetCancel(conn_)));
}

void Session::RaiseConnectFailure() {
  const bool password = conn_ && (PQconnectionUsedPassword(conn_) || PQconnectionNeedsPassword(conn_));
  PQfinish(std::exchange(conn_, nullptr));
  if (password)
    Throw(daoerr::kInvalidAccount,
          "No es un nombre de cuenta o una contraseña válidos para el servidor '" + Shown() +
              "'.",
          kDatabaseSource);
  // The server answers: if its maintenance database accepts us, the database is missing.
  PGconn* probe = PQconnectdb(MaintenanceConnection(connection_).c_str());
  const bool serverUp = probe && PQstatus(probe) == CONNECTION_OK;
  PQfinish(probe);
  if (serverUp)
    Throw(daoerr::kFileNotFound,
          "No se encuentra la base de datos de '" + Shown() + "' en el servidor.",
          kDatabaseSource);
  Throw(daoerr::kConnectionFailed,
        "Error de conexión con el servidor '" + Shown() +
            "': el servidor no responde o rechaza la conexión.",
        kDatabaseSource);
}

std::string Session::Shown() const {
  // Messages and the error log never show a password.
  static const std::regex uri(R"((://[^:/@]*):[^@/]*@)"), keyword(R"((password\s*=\s*)('[^']*'|\S+))");
  return std::regex_replace(std::regex_replace(connection_, uri, "$1:***@"), keyword, "$1***");
}

void Session::RaiseLost() {
  Throw(daoerr::kConnectionFailed,
        "Se perdió la conexión con el servidor '" + Shown() +
            "'. Se volverá a conectar en el próximo intento.",
        kDatabaseSource);
}

void Session::EnsureConnected() {
  if (conn_ && PQstatus(conn_) == CONNECTION_OK) return;
  Connect();
}

Result Session::Exec(const std::string& sql, const std::vector<std::optional<std::string>>& params,
                     dao::SqlContext context, std::string_view source) {
  EnsureConnected();
  std::vector<const char*> values;
  for (const auto& p : params) values.push_back(p ? p->c_str() : nullptr);
  return Check(PQexecParams(conn_, sql.c_str(), static_cast<int>(values.size()), nullptr,
                            values.data(), nullptr, nullptr, 0),
               sql, context, source);
}

void Session::Execute(const std::string& sql) {
  EnsureConnected();
  Check(PQexec(conn_, sql.c_str()), sql, dao::SqlContext::Statement, kDatabaseSource);
}

Result Session::Check(pg_result* raw, const std::string& sql, dao::SqlContext context,
                      std::string_view source) {
  Result result(raw);
  const auto status = PQresultStatus(raw);
  if (status == PGRES_TUPLES_OK || status == PGRES_COMMAND_OK) return result;
  const std::string state = raw ? Field(raw, PG_DIAG_SQLSTATE) : "";
  if (!raw || PQstatus(conn_) != CONNECTION_OK || ConnectionLost(state)) {
    // The session's temporary functions went with the connection: the next call connects
    // afresh and creates them again.
    PQfinish(std::exchange(conn_, nullptr));
    RaiseLost();
  }
  RaiseStatementError(raw, sql, context, source);
}

}  // namespace cp::postgres
