// The component on SQLite and on the server, from the same sample data: random criteria
// states of both controls for every entity, and cross-matches both ways, must return the
// same ids. The server side runs on a C-collation database and on a UTF-8 one.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "sample/demo_catalog.h"
#include "sample/random.h"
#include "tests/postgres/server_fixture.h"
#include "tests/support/pg_server.h"

namespace cp::testing {
namespace {

constexpr int kStatesPerEntity = 8;
constexpr int kCrossesPerDirection = 6;

// The demo data's generator with the few helpers the states need.
class Random : public sample::SplitMix64 {
 public:
  using SplitMix64::SplitMix64;
  int Below(int n) { return static_cast<int>(SplitMix64::Below(n)); }
  bool Chance(int percent) { return Percent(percent); }
  template <class T>
  const T& Pick(const std::vector<T>& v) { return v[static_cast<std::size_t>(Below(static_cast<int>(v.size())))]; }
};

// Every entity of the host's default list.
const std::vector<std::string> kContactEntities = {"Clientes", "Clientes Archivados", "Agencias"};
const std::vector<std::string> kPropertyEntities = {"Inm. Propios", "Inm. Ajenos",
                                                    "Inm. Archivados", "Inm. Vendidos",
                                                    "Demandas"};

// Accented capitals are where engines part ways: words come in every case.
std::string Upper(std::string s) {
  static const std::vector<std::pair<std::string, std::string>> accents = {
      {"á", "Á"}, {"é", "É"}, {"í", "Í"}, {"ó", "Ó"}, {"ú", "Ú"}, {"ñ", "Ñ"}, {"ü", "Ü"}};
  for (const auto& [lower, upper] : accents)
    for (std::size_t at; (at = s.find(lower)) != std::string::npos;) s.replace(at, lower.size(), upper);
  for (char& c : s)
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
  return s;
}

std::string Word(Random& r) {
  static const std::vector<std::string> odd = {"ÁLVAREZ", "muñoz", "NÚÑEZ", "o'", "[a-c]*",
                                               "50%", "_", "#", "Céntrico", "LÍNEA"};
  if (r.Chance(25)) return r.Pick(odd);
  std::vector<std::string> surnames;
  for (auto s : sample::demo::Surnames()) surnames.emplace_back(s);
  std::string w = r.Pick(surnames);
  if (r.Chance(40)) {
    // A prefix of whole characters: typed text is valid UTF-8.
    std::size_t cut = std::min(w.size(), 3 + static_cast<std::size_t>(r.Below(3)));
    while (cut < w.size() && (static_cast<unsigned char>(w[cut]) & 0xC0) == 0x80) ++cut;
    w.resize(cut);
  }
  return r.Chance(50) ? Upper(w) : w;
}

std::string Day(Random& r) {
  char text[16];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d", 1995 + r.Below(31), 1 + r.Below(12),
                1 + r.Below(28));
  return text;
}

void Dates(Random& r, std::vector<std::string>& sets) {
  for (const char* picker : {"dtpAlta", "dtpActualiza", "dtpTransmision"})
    for (int bound = 0; bound < 2; ++bound)
      if (r.Chance(15)) sets.push_back(std::string(picker) + "(" + std::to_string(bound) + ")=" + Day(r));
}

// The contact control lets the user choose where the words go; the property control fixes it.
void Words(Random& r, std::vector<std::string>& sets, const std::vector<std::string_view>& categories,
           bool where) {
  if (r.Chance(40)) {
    sets.push_back("txtPalabras=" + Word(r));
    if (where)
      sets.push_back("cboOpPalabras=" + r.Pick(std::vector<std::string>{"Al principio", "En todo el texto", "Al final"}));
  }
  if (r.Chance(30)) {
    std::string c(categories[static_cast<std::size_t>(r.Below(static_cast<int>(categories.size())))]);
    sets.push_back("txtCategorias=" + (r.Chance(30) ? Upper(c) : c) + "; ");
    sets.push_back("chkCategorias=" + std::to_string(r.Below(3)));
  }
}

std::vector<std::string> ContactState(Random& r) {
  std::vector<std::string> sets;
  Dates(r, sets);
  Words(r, sets, sample::demo::ContactCategories(), true);
  return sets;
}

// A demand's form has no check boxes.
std::vector<std::string> PropertyState(Random& r, bool demand) {
  std::vector<std::string> sets;
  if (r.Chance(30)) sets.push_back("txtPrecio(0)=" + std::to_string(50 + r.Below(400)) + ".000");
  if (r.Chance(30)) sets.push_back("txtPrecio(1)=" + std::to_string(200 + r.Below(900)) + ".000");
  if (r.Chance(25)) sets.push_back("txtSuper(0)=" + std::to_string(40 + r.Below(150)));
  if (r.Chance(20)) sets.push_back("txtSuper(1)=" + std::to_string(80 + r.Below(300)));
  for (const char* box : {"txtAltura", "txtHuecos", "txtAseos", "txtBanios", "txtGaraje"})
    if (r.Chance(15)) sets.push_back(std::string(box) + "=" + std::to_string(r.Below(4)));
  for (const char* check : {"chkAmueblado", "chkNuevo", "chkTrastero", "chkComercial",
                            "chkIndustrial", "chkExclusiva", "chkTransmitido", "chkCaducado"})
    if (!demand && r.Chance(20)) sets.push_back(std::string(check) + "=" + std::to_string(r.Below(3)));
  Dates(r, sets);
  Words(r, sets, sample::demo::PropertyCategories(), false);
  return sets;
}

std::string Describe(const std::string& entity, const std::vector<std::string>& sets) {
  std::string text = entity;
  for (const auto& s : sets) text += " --set '" + s + "'";
  return text;
}

class Differential : public ::testing::TestWithParam<std::string> {};

TEST_P(Differential, RandomStatesAndCrossMatchesReturnTheSameIds) {
  if (!TestServer()) GTEST_SKIP() << "no PostgreSQL test server";
  const SampleDatabases& db = Samples(GetParam(), 200);
  Random r(20240611);
  int states = 0, differences = 0, nonEmpty = 0, failed = 0;
  auto compare = [&](const std::vector<std::string>& a, const std::vector<std::string>& b,
                     const std::string& what) {
    ++states;
    const bool error = !a.empty() && a[0] == "error";
    failed += error;
    nonEmpty += !a.empty() && !error;
    if (a != b) {
      ++differences;
      ADD_FAILURE() << what << ": SQLite " << a.size() << " ids, server " << b.size()
                    << (a.empty() ? "" : " (" + a[0] + ")") << (b.empty() ? "" : " / " + b[0]);
    }
  };
  for (const auto* entities : {&kContactEntities, &kPropertyEntities}) {
    for (const std::string& entity : *entities) {
      for (int i = 0; i < kStatesPerEntity; ++i) {
        auto sets = entities == &kContactEntities ? ContactState(r)
                                                      : PropertyState(r, entity == "Demandas");
        compare(WhereIds(db.sqlite, entity, sets), WhereIds(db.server, entity, sets),
                Describe(entity, sets));
      }
    }
  }
  const std::vector<std::pair<std::string, std::string>> directions = {
      {"Demandas", "Inm. Propios"}, {"Demandas", "Inm. Ajenos"}, {"Inm. Propios", "Demandas"},
      {"Inm. Ajenos", "Demandas"}};
  for (const auto& [from, to] : directions) {
    for (int i = 0; i < kCrossesPerDirection; ++i) {
      const int id = 1 + r.Below(100);
      compare(CrossIds(db.sqlite, id, from, to), CrossIds(db.server, id, from, to),
              "cross " + from + " " + std::to_string(id) + " -> " + to);
    }
  }
  std::printf("%d criteria states and cross-matches compared (%d with rows, %d refused by "
              "the component), %d differences\n", states, nonEmpty, failed, differences);
  EXPECT_EQ(differences, 0);
  EXPECT_GT(nonEmpty, states / 5) << "the states should select something";
  EXPECT_LT(failed, states / 10) << "the states should be valid input";
}

INSTANTIATE_TEST_SUITE_P(Databases, Differential, ::testing::Values("cp_c", "cp_utf8"));

}  // namespace
}  // namespace cp::testing
