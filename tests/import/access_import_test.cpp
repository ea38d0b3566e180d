// Importing the agency's Access file: every row and value against libmdb's own bound reading
// of the file, the edge values the file holds, the component's selections on the copy, bad
// files, an interrupted import, and a server target.
#include <gtest/gtest.h>
#include <glib.h>  // before libmdb, which includes it inside extern "C"
#include <mdbtools.h>
#include <signal.h>
#include <strings.h>
#include <sys/wait.h>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <set>
#include <sstream>

#include "cli/commands.h"
#include "cli/import_command.h"
#include "cli/selection_commands.h"
#include "platform/postgres/session.h"
#include "platform/sqlite/iso_dates.h"
#include "sample/access_import.h"
#include "tests/cli/test_db.h"
#include "tests/support/pg_server.h"

namespace cp::cli {
namespace {

using testing::Result;
using testing::ScratchDb;
using testing::ScratchDir;
namespace fs = std::filesystem;

const std::string kFixture = std::string(CP_SHARED_DIR) + "/fixtures/agencia.mdb";

// A table as libmdb's bound reading gives it (the way its own tools read): one text per
// column, dates with four-digit years, Yes/No as 1/0, "" for Null and the empty text alike.
struct BoundTable {
  std::vector<std::string> columns;
  std::vector<int> types;
  std::vector<std::vector<std::string>> rows;
  std::string Value(std::size_t row, const std::string& column) const {
    const auto at = std::find(columns.begin(), columns.end(), column) - columns.begin();
    return rows[row][static_cast<std::size_t>(at)];
  }
};

BoundTable ReadBound(const std::string& name) {
  static std::map<std::string, BoundTable> cache;
  if (auto it = cache.find(name); it != cache.end()) return it->second;
  MdbHandle* mdb = mdb_open(kFixture.c_str(), MDB_NOFLAGS);
  EXPECT_NE(mdb, nullptr);
  constexpr std::size_t kBind = 1 << 20;  // well above the longest Memo
  mdb_set_bind_size(mdb, kBind);
  mdb_set_date_fmt(mdb, "%Y-%m-%d %H:%M:%S");
  mdb_set_boolean_fmt_numbers(mdb);
  mdb_read_catalog(mdb, MDB_TABLE);
  MdbTableDef* t = mdb_read_table_by_name(mdb, const_cast<char*>(name.c_str()), MDB_TABLE);
  EXPECT_NE(t, nullptr) << name;
  mdb_read_columns(t);
  mdb_rewind_table(t);
  BoundTable out;
  std::vector<std::vector<char>> buffers(t->num_cols, std::vector<char>(kBind));
  std::vector<int> lengths(t->num_cols);
  for (unsigned i = 0; i < t->num_cols; ++i) {
    const auto* col = static_cast<MdbColumn*>(g_ptr_array_index(t->columns, i));
    out.columns.push_back(col->name);
    out.types.push_back(col->col_type);
    mdb_bind_column(t, static_cast<int>(i) + 1, buffers[i].data(), &lengths[i]);
  }
  while (mdb_fetch_row(t)) {
    std::vector<std::string> row;
    for (unsigned i = 0; i < t->num_cols; ++i) row.emplace_back(buffers[i].data(), lengths[i]);
    out.rows.push_back(std::move(row));
  }
  mdb_free_tabledef(t);
  mdb_close(mdb);
  return cache[name] = out;
}

// One value as both sides are compared: numbers by value, a date at midnight without its
// time, Null and the empty text alike (kept apart by the cases further down).
std::string Comparable(int type, std::string v) {
  if (v == testing::kNullText) return "";
  if (v.empty()) return v;
  if (type == MDB_DATETIME && v.ends_with(" 00:00:00")) v.resize(v.size() - 9);
  if (type == MDB_MONEY || type == MDB_FLOAT || type == MDB_DOUBLE || type == MDB_NUMERIC) {
    std::replace(v.begin(), v.end(), ',', '.');  // libmdb prints through the locale
    double d = 0;
    std::from_chars(v.data(), v.data() + v.size(), d);
    char buf[40];
    std::snprintf(buf, sizeof buf, "%.15g", d);
    v = buf;
  }
  return v;
}

Result RunImport(const ImportOptions& options) {
  return testing::RunCommand([&](auto& out, auto& err) { return Import(options, out, err); });
}

// The first column of every row that a `query` subcommand printed.
std::set<std::string> Keys(const std::string& printed) {
  std::set<std::string> keys;
  std::istringstream in(printed);
  std::string line;
  std::getline(in, line);  // the condition
  std::getline(in, line);  // the header
  while (std::getline(in, line)) keys.insert(line.substr(0, line.find('\t')));
  return keys;
}

class ImportedFixture : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    dir_ = new ScratchDir;
    path_ = dir_->File("agencia.db");
    result_ = RunImport({kFixture, path_, false, true});
  }
  static void TearDownTestSuite() { delete dir_; }
  void SetUp() override { ASSERT_EQ(result_.status, kExitOk) << result_.err; }

  static inline ScratchDir* dir_ = nullptr;
  static inline std::string path_;
  static inline Result result_;
};

TEST_F(ImportedFixture, EveryTableHoldsTheFilesRowsAndValues) {
  EXPECT_NE(result_.out.find("Comprobación correcta: las 39 tablas"), std::string::npos)
      << result_.out;
  ScratchDb db(path_);
  for (const sample::SchemaTable& table : sample::SchemaTables()) {
    SCOPED_TRACE(table.name);
    const BoundTable file = ReadBound(table.name);
    std::string columns;
    for (const std::string& c : file.columns) columns += (columns.empty() ? "\"" : ", \"") + c + "\"";
    const auto comparable = [&](std::vector<std::vector<std::string>> rows) {
      for (auto& row : rows)
        for (std::size_t i = 0; i < row.size(); ++i) row[i] = Comparable(file.types[i], row[i]);
      std::sort(rows.begin(), rows.end());
      return rows;
    };
    const auto expected = comparable(file.rows);
    const auto copied = comparable(db.Rows("SELECT " + columns + " FROM \"" + table.name + "\""));
    ASSERT_EQ(copied.size(), expected.size());
    for (std::size_t r = 0; r < expected.size(); ++r) ASSERT_EQ(copied[r], expected[r]) << "row " << r;
  }
}

// What the comparison above cannot see, as it takes Null for the empty text and numbers by
// value: each holds on the copy.
TEST_F(ImportedFixture, TheFilesHardValuesAreThereAsThemselves) {
  const std::pair<const char*, const char*> cases[] = {
      {"Null dates", "SELECT count(*) > 0 FROM IPropio WHERE FechaBaja IS NULL"},
      {"empty text kept", "SELECT count(*) > 0 FROM Demanda WHERE Categorias = ''"},
      {"Null kept", "SELECT sum(Poblacion IS NULL) > 0 AND sum(Poblacion = '') = 0 FROM Demanda"},
      {"Currency exact", "SELECT count(*) = 0 FROM IPropio WHERE Precio <> round(Precio, 4)"},
      {"AutoNumber ids kept", "SELECT seq = (SELECT max(IdCliente) FROM Cliente) FROM sqlite_sequence WHERE name = 'Cliente'"},
  };
  ScratchDb db(path_);
  for (const auto& [what, sql] : cases) EXPECT_EQ(db.Scalar(sql), "1") << what;
}

TEST_F(ImportedFixture, SelectionsReturnTheRowsTheFileHolds) {
  const struct {
    const char* entity;
    const char* table;
    std::vector<std::string> sets;
    std::function<bool(const BoundTable&, std::size_t)> holds;
  } cases[] = {
      // The component writes dates with two-digit years (#mm/dd/yy#, read with Jet's pivot),
      // so its date boxes reach 1930 to 2029 only.
      {"Inm. Propios", "IPropio", {"dtpAlta(0)=2010-01-01", "dtpAlta(1)=2029-12-31"},
       [](const BoundTable& t, std::size_t r) {
         const std::string d = t.Value(r, "FechaAlta").substr(0, 10);
         return !d.empty() && d >= "2010-01-01" && d <= "2029-12-31";
       }},
      {"Clientes", "Cliente", {"txtPalabras=o'neil", "cboEn=Apellido", "cboOpPalabras=Al principio"},
       [](const BoundTable& t, std::size_t r) {
         return strncasecmp(t.Value(r, "Apellidos").c_str(), "o'neil", 6) == 0;
       }},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.entity) + " " + c.sets.front());
    const BoundTable file = ReadBound(c.table);
    std::set<std::string> expected;
    for (std::size_t r = 0; r < file.rows.size(); ++r)
      if (c.holds(file, r)) expected.insert(file.rows[r][0]);
    ASSERT_FALSE(expected.empty()) << "the file has rows for this case";
    WhereOptions o;
    o.db = path_, o.entity = c.entity, o.sets = c.sets, o.query = true;
    std::ostringstream out, err;
    ASSERT_EQ(Where(o, out, err), kExitOk) << err.str();
    EXPECT_EQ(Keys(out.str()), expected);
  }
}

void Write(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

std::string Read(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), {});
}

TEST(ImportBadFiles, ExitTwoWithTheirMessageAndNothingCreated) {
  const std::string whole = Read(kFixture);
  std::string otherVersion = whole;
  otherVersion[0x14] = 0x42;
  const struct {
    const char* what;
    std::string bytes;
    const char* message;
  } cases[] = {
      {"text", "hola, esto no es una base de datos\n", "no es una base de datos de Access"},
      {"empty", "", "no es una base de datos de Access"},
      {"an SQLite file", "SQLite format 3" + std::string(4096, '\0'), "no es una base de datos de Access"},
      {"cut mid-page", whole.substr(0, whole.size() / 2 + 100), "incompleto o dañado"},
      {"cut at a page", whole.substr(0, whole.size() / 2 / 4096 * 4096), "incompleto o dañado"},
      {"cut after the catalog", whole.substr(0, 5 * 4096), "incompleto o dañado"},
      {"last page missing", whole.substr(0, whole.size() - 4096), "incompleto o dañado"},
      {"unknown version", otherVersion, "versión de Access que no se puede leer"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    ScratchDir dir;
    Write(dir.File("in.mdb"), c.bytes);
    const Result r = RunImport({dir.File("in.mdb"), dir.File("out.db"), false, false});
    EXPECT_EQ(r.status, kExitError);
    EXPECT_NE(r.err.find(c.message), std::string::npos) << r.err;
    EXPECT_EQ(std::distance(fs::directory_iterator(fs::path(dir.File(""))), {}), 1);
  }
}

TEST(ImportTarget, AnExistingOneIsReplacedOnlyWhenAsked) {
  ScratchDir dir;
  const std::string target = dir.File("agencia.db");
  Write(target, "ya estaba");
  Result r = RunImport({kFixture, target, false, false});
  EXPECT_EQ(r.status, kExitError);
  EXPECT_NE(r.err.find("--replace"), std::string::npos);
  EXPECT_EQ(Read(target), "ya estaba");
  r = RunImport({kFixture, target, true, false});
  ASSERT_EQ(r.status, kExitOk) << r.err;
  EXPECT_EQ(ScratchDb(target).Scalar("SELECT count(*) FROM Demanda"), "300");
  EXPECT_EQ(std::distance(fs::directory_iterator(fs::path(dir.File(""))), {}), 1);
}

// The tool killed at moments through the import: either no target or a whole one.
TEST(ImportTarget, AKilledImportLeavesNoTarget) {
  int killedEarly = 0;
  for (const char* seconds : {"0.005", "0.02", "0.04", "0.06", "0.08", "0.12", "0.16", "0.24",
                              "0.4"}) {
    ScratchDir dir;
    const std::string target = dir.File("agencia.db");
    const int status = std::system((std::string("timeout -s KILL ") + seconds + " " + CP_TOOL +
                                    " import --mdb '" + kFixture + "' --db '" + target +
                                    "' >/dev/null").c_str());
    const bool killed = WEXITSTATUS(status) == 128 + SIGKILL;
    if (!killed) {
      ASSERT_EQ(WEXITSTATUS(status), 0);
    }
    // A kill between the target's rename and the tool's exit leaves a whole target.
    if (killed && !fs::exists(target)) {
      ++killedEarly;
      continue;
    }
    EXPECT_EQ(ScratchDb(target).Scalar("SELECT count(*) FROM Demanda"), "300")
        << "after " << seconds << " s";
  }
  EXPECT_GT(killedEarly, 0) << "no import was interrupted";
}

TEST(ImportPlan, TablesAndColumnsTheSchemaDoesNotKnowAreCopiedOrListed) {
  using mdb::ColumnType;
  const std::vector<mdb::AccessTable> file = {
      {"ZONA", {{"idzona", ColumnType::Long, 4, true}, {"Nombre", ColumnType::Text, 50},
                {"Color", ColumnType::Text, 20}, {"Foto", ColumnType::Binary, 0}}, 3},
      {"Visitas", {{"IdVisita", ColumnType::Long, 4, true}, {"Fecha", ColumnType::DateTime, 8},
                   {"Hecha", ColumnType::YesNo, 1}, {"Coste", ColumnType::Currency, 8}}, 9},
  };
  const std::vector<sample::TablePlan> plans = sample::PlanImport(file);
  ASSERT_EQ(plans.size(), 2u);
  EXPECT_EQ(plans[0].target.name, "Zona");
  EXPECT_TRUE(plans[0].in_schema);
  ASSERT_EQ(plans[0].copied.size(), 3u);
  EXPECT_EQ(plans[0].copied[0].target, "IdZona");
  ASSERT_EQ(plans[0].added_columns.size(), 1u);
  EXPECT_EQ(plans[0].added_columns[0].name + " " + plans[0].added_columns[0].type, "Color VARCHAR(20)");
  EXPECT_EQ(plans[0].skipped_columns, std::vector<std::string>{"Foto"});
  EXPECT_FALSE(plans[1].in_schema);
  std::string created;
  for (const sample::SchemaColumn& c : plans[1].target.columns) created += sample::ColumnDefinition(c) + ", ";
  // A date column of a new table only takes ISO text, as the schema's own do.
  EXPECT_EQ(created,
            "\"IdVisita\" INTEGER PRIMARY KEY AUTOINCREMENT, \"Fecha\" DATETIME " +
                sqlite::IsoDateCheck("Fecha") +
                ", \"Hecha\" BOOLEAN NOT NULL DEFAULT 0, \"Coste\" CURRENCY, ");
  EXPECT_EQ(sample::MissingTables(file).size(), sample::SchemaTables().size() - 1);
}

TEST(ImportServer, TheFileLandsOnTheServerAndChecksClean) {
  if (!cp::testing::TestServer()) GTEST_SKIP() << "no test server";
  const std::string connection = cp::testing::CreateServerDatabase("cp_utf8", false);
  Result r = RunImport({kFixture, connection, false, true});
  ASSERT_EQ(r.status, kExitOk) << r.err << r.out;
  EXPECT_NE(r.out.find("Comprobación correcta"), std::string::npos);
  r = RunImport({kFixture, connection, false, false});
  EXPECT_EQ(r.status, kExitError);
  EXPECT_NE(r.err.find("ya tiene las tablas"), std::string::npos);
  postgres::Session s(connection, postgres::Session::Purpose::Tool);
  // Keys were kept: the next client is numbered after the file's last one.
  EXPECT_EQ(s.Exec("INSERT INTO cliente (alias) VALUES ('nuevo') RETURNING idcliente").Text(0, 0),
            std::to_string(ReadBound("Cliente").rows.size() + 1));
}

}  // namespace
}  // namespace cp::cli
