// The schema follows a real agency file: every table and column of the Access fixture exists
// in ours with a type that holds the same values. The fixture is read with mdbtools.
#include <gtest/gtest.h>

#include <cstdio>
#include <map>
#include <memory>
#include <regex>
#include <sstream>

#include "tests/cli/test_db.h"

namespace cp::cli {
namespace {

const std::string kFixture = std::string(CP_SHARED_DIR) + "/fixtures/agencia.mdb";

// The output of a command, or an empty text when it could not run.
std::string Capture(const std::string& command) {
  std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
  std::string out;
  char buf[4096];
  for (std::size_t n; pipe && (n = fread(buf, 1, sizeof buf, pipe.get())) > 0;) out.append(buf, n);
  return out;
}

// table -> column -> Access type, as mdb-schema writes them ("Long Integer", "Text (50)"...).
using AccessSchema = std::map<std::string, std::map<std::string, std::string>>;

AccessSchema ReadFixtureSchema() {
  AccessSchema schema;
  std::istringstream text(Capture("mdb-schema '" + kFixture + "' access 2>/dev/null"));
  const std::regex table_re(R"(^CREATE TABLE \[([^\]]+)\])");
  const std::regex column_re(R"(^\s*\[([^\]]+)\]\s+(.*?)\s*,?\s*$)");
  std::string line, table;
  std::smatch m;
  while (std::getline(text, line)) {
    if (std::regex_search(line, m, table_re))
      table = m[1];
    else if (!table.empty() && std::regex_match(line, m, column_re))
      schema[table][m[1]] = m[2];
  }
  return schema;
}

// Whether our declared type stores every value of the Access type without loss.
bool Compatible(const std::string& access, const std::string& ours) {
  static const std::map<std::string, std::string> exact = {
      {"Long Integer", "INTEGER"},     {"Integer", "SMALLINT"}, {"Byte", "TINYINT"},
      {"Currency", "CURRENCY"},        {"Double", "DOUBLE"},    {"DateTime", "DATETIME"},
      {"Boolean NOT NULL", "BOOLEAN"}, {"Boolean", "BOOLEAN"}};
  if (auto it = exact.find(access); it != exact.end()) return it->second == ours;
  if (access.rfind("Memo", 0) == 0) return ours == "TEXT";
  std::smatch a, o;
  static const std::regex text_re(R"(Text \((\d+)\))"), varchar_re(R"(VARCHAR\((\d+)\))");
  if (std::regex_match(access, a, text_re) && std::regex_match(ours, o, varchar_re))
    return std::stoi(o[1]) >= std::stoi(a[1]);
  return false;
}

TEST(FixtureSchema, EveryFixtureTableAndColumnExistsWithACompatibleType) {
  const AccessSchema fixture = ReadFixtureSchema();
  ASSERT_GE(fixture.size(), 30u) << "mdb-schema (mdbtools) could not read " << kFixture;

  testing::ScratchDir dir;
  testing::MakeDb(dir.File("esquema.db"), false, 0);
  testing::ScratchDb db(dir.File("esquema.db"));

  for (const auto& [table, columns] : fixture) {
    std::map<std::string, std::string> ours;
    for (const auto& row : db.Rows("PRAGMA table_info(\"" + table + "\")")) ours[row[1]] = row[2];
    ASSERT_FALSE(ours.empty()) << "table " << table << " of the fixture is missing";
    for (const auto& [column, type] : columns) {
      auto it = ours.find(column);
      ASSERT_NE(it, ours.end()) << table << "." << column << " is missing";
      EXPECT_TRUE(Compatible(type, it->second))
          << table << "." << column << ": " << type << " stored as " << it->second;
    }
  }
  // And no table of ours that a real file lacks.
  for (const auto& row : db.Rows("SELECT name FROM sqlite_master WHERE type = 'table' AND "
                                 "name NOT LIKE 'sqlite_%'"))
    EXPECT_TRUE(fixture.count(row[0])) << "table " << row[0] << " is not in the fixture";
}

}  // namespace
}  // namespace cp::cli
