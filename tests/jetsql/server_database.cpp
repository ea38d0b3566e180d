// The semantics tests' database on the test server: a tool session writes the rows, a
// component session (read-only, with the Jet functions) runs the translated statements.
#include <gtest/gtest.h>

#include <regex>

#include "platform/core/error.h"
#include "platform/jetsql/translator.h"
#include "tests/jetsql/sqlite_database.h"
#include "tests/support/pg_server.h"

namespace cp::jetsql::testing {
namespace {

class ServerDatabase : public SemanticsDatabase {
 public:
  explicit ServerDatabase(const std::string& connection)
      : tool_(connection, postgres::Session::Purpose::Tool),
        component_(connection, postgres::Session::Purpose::Component) {}

  void Exec(const std::string& sql) override {
    static const std::vector<std::pair<std::regex, std::string>> types = {
        {std::regex(R"(\bDATETIME\b)"), "timestamp"},
        {std::regex(R"(\bDOUBLE\b)"), "double precision"},
        {std::regex(R"(\bBOOLEAN\b)"), "jet_yesno"}};
    std::string native = sql;
    for (const auto& [from, to] : types) native = std::regex_replace(native, from, to);
    try {
      tool_.Execute(native);
    } catch (const Error& e) {
      ADD_FAILURE() << native << ": " << e.description();
    }
  }

  std::vector<std::vector<std::string>> Rows(const std::string& jetSelect) override {
    try {
      postgres::Result r = component_.Exec(TranslateStatement(jetSelect, Dialect::Postgres));
      std::vector<std::vector<std::string>> rows;
      for (int i = 0; i < r.Rows(); ++i) {
        std::vector<std::string> row;
        for (int c = 0; c < r.Columns(); ++c) row.push_back(r.IsNull(i, c) ? "<Null>" : r.Text(i, c));
        rows.push_back(std::move(row));
      }
      return rows;
    } catch (const Error& e) {
      // The server's own text, as SQLite's test database reports it.
      static const std::string prefix = "Error en la llamada al motor de base de datos: ";
      std::string text = e.description();
      if (text.rfind(prefix, 0) == 0) text = text.substr(prefix.size());
      return {{"error: " + text}};
    }
  }

  bool Embedded() const override { return false; }

 private:
  postgres::Session tool_;
  postgres::Session component_;
};

}  // namespace

std::unique_ptr<SemanticsDatabase> MakeServerDatabase(const std::string& templ) {
  if (!cp::testing::TestServer()) return nullptr;
  return std::make_unique<ServerDatabase>(cp::testing::CreateServerDatabase(templ, true));
}

}  // namespace cp::jetsql::testing
