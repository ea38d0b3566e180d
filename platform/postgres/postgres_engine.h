#pragma once
// PostgresEngine: the server engine behind the DAO-like API, for an office whose workstations
// share one database. Reads only (the session is read-only); writes go through Session with
// Purpose::Tool. Table and column names are those the schema created unquoted (lower case).
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "platform/dao/engine.h"
#include "platform/postgres/session.h"

namespace cp::postgres {

class PostgresEngine : public dao::Engine {
 public:
  // Connects (errors as Session raises them).
  explicit PostgresEngine(const std::string& connection);

  const std::string& Name() const override { return session_->connection(); }
  jetsql::Dialect dialect() const override { return jetsql::Dialect::Postgres; }
  // The whole result is fetched at once; the cursor keeps it.
  std::unique_ptr<dao::Cursor> Query(const std::string& sql) override;
  // Runs "SELECT 1 FROM (SELECT $1::type AS col, ...) t WHERE condition" per row, each value
  // typed as it comes (integers int8, reals float8, ISO date text timestamp, text text).
  std::unique_ptr<dao::RowFilter> PrepareRowFilter(const std::vector<std::string>& columns,
                                                   const std::string& condition) override;
  // Auto-increment: identity columns and columns numbered by a sequence.
  dao::TableDefinition Table(const std::string& name) override;
  // Sends the server a cancel request for the running statement (a statement that has not
  // reached the server yet is not stopped).
  void Interrupt() override { session_->Cancel(); }

  // The DAO type of a column of a table (by the oids libpq reports), cached per table.
  dao::ColumnType DeclaredType(unsigned table, int column);

 private:
  std::shared_ptr<Session> session_;
  std::map<std::pair<unsigned, int>, dao::ColumnType> declared_;
};

// The DAO type for a server type as format_type() writes it ("character varying(50)",
// "jet_yesno", "timestamp without time zone"...); type 0 when unknown.
dao::ColumnType TypeFromServerType(const std::string& type);

}  // namespace cp::postgres
