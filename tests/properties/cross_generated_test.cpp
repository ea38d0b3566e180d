// Crossing both ways on generated records whose every criterion is known: a demand finds the
// property built to meet it, that property finds the demand back, and a record that breaks
// any single criterion is left out.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "sample/random.h"
#include "tests/properties/property_fixture.h"

namespace cp::testing {
namespace {

const char* const kFeatures[] = {"Huecos", "Exterior", "Ascensor", "Garaje",
                                 "Altura", "Aseos",    "Banios"};
const char* const kChecks[] = {"Amueblado", "Nuevo", "Trastero", "Comercial", "Industrial"};
// Only places whose zone hangs from the town (BZona), so that a property's names resolve.
const char* const kZones[] = {"", "Centro", "Norte"};          // by IdZona, in Madrid
const char* const kTypes[] = {"", "Piso", "Local", "Chalet"};  // by IdTipoInmueble

// One record as column -> SQL literal.
using Row = std::map<std::string, std::string>;
std::string N(std::int64_t v) { return std::to_string(v); }
std::string List(const std::string& item) { return "'" + item + "; '"; }
int Int(const std::string& literal) { return std::stoi(literal); }
std::string Insert(const std::string& table, const Row& row) {
  std::string columns, values;
  for (const auto& [column, value] : row) {
    columns += (columns.empty() ? "" : ", ") + column;
    values += (values.empty() ? "" : ", ") + value;
  }
  return "INSERT INTO " + table + " (" + columns + ") VALUES (" + values + ");";
}

class CrossGeneratedTest : public PropertyTest {
 protected:
  void TearDown() override {
    sqlite::NativeDatabase(path_).ExecuteNative("DELETE FROM IPropio WHERE IdIPropio >= 1000; "
                                                "DELETE FROM Demanda WHERE IdDemanda >= 1000;");
    PropertyTest::TearDown();
  }
};

TEST_F(CrossGeneratedTest, BothDirectionsAndEverySingleBreak) {
  sample::SplitMix64 g(20261121);  // the demo data's generator: every run checks the same records
  std::string inserts;
  struct Expectation { int demand, property; std::vector<int> brokenProperties, brokenDemands; };
  std::vector<Expectation> expectations;
  int nextProperty = 1000, nextDemand = 1000;

  for (int pair = 0; pair < 12; ++pair) {
    const int zone = 1 + g.Below(2), type = g.Between(1, 3);
    const int operacion = g.Between(1, 2), alias = g.Between(1, 2), heating = g.Between(1, 3);
    const int minPrice = g.Between(5, 30) * 10000, maxPrice = minPrice + g.Between(1, 20) * 10000;
    const int minSurface = g.Between(40, 90), maxSurface = minSurface + g.Between(5, 60);
    std::string wanted;  // the demand's categories
    int count = 0;
    for (const char* c : {"Reformado", "Vistas"})
      if (g.Below(2)) { wanted += std::string(c) + "; "; ++count; }
    Row demand = {{"Pais", List("España")}, {"Provincia", List("Madrid")},
                  {"Poblacion", List("Madrid")}, {"Zona", List(kZones[zone])},
                  {"TipoInmueble", List(kTypes[type])}, {"IdOperacion", N(operacion)},
                  {"IdAliasInmueble", N(alias)}, {"IdCalefaccion", N(heating)},
                  {"PrecioMinimo", N(minPrice)}, {"PrecioMaximo", N(maxPrice)},
                  {"Superficie", N(minSurface)}, {"SuperficieMaxima", N(maxSurface)},
                  {"Categorias", "'" + wanted + "'"}};
    Row property = {{"IdPais", "1"}, {"IdProvincia", "1"}, {"IdPoblacion", "1"},
                    {"IdZona", N(zone)}, {"IdTipoInmueble", N(type)}, {"IdOperacion", N(operacion)},
                    {"IdAliasInmueble", N(alias)}, {"IdCalefaccion", N(heating)},
                    {"Precio", N(g.Between(minPrice, maxPrice))},
                    {"Superficie", N(g.Between(minSurface, maxSurface))}};
    // The property has every wanted category, and maybe more.
    const bool extra = count < 2 && g.Below(2);
    property["Categorias"] = "'" + wanted + (extra ? "Piscina; " : "") + "'";
    for (const char* f : kFeatures) {
      const int asked = g.Between(0, 3);
      demand[f] = N(asked);
      property[f] = N(asked + g.Between(0, 2));  // at least what is asked
    }
    for (const char* c : kChecks) {
      const int asked = g.Between(0, 2);  // 2: either
      demand[c] = N(asked);
      property[c] = N(asked == 2 ? g.Between(0, 2) : (g.Below(3) ? asked : 2));
    }
    Expectation e{nextDemand++, nextProperty++, {}, {}};
    demand["IdDemanda"] = N(e.demand);
    property["IdIPropio"] = N(e.property);
    inserts += Insert("Demanda", demand) + Insert("IPropio", property);

    // Records that break one criterion of the other side each.
    const auto breakOne = [&](Row base, const char* column, const std::string& value) {
      const bool own = base.count("IdIPropio");
      base[column] = value;
      base[own ? "IdIPropio" : "IdDemanda"] = N(own ? nextProperty : nextDemand);
      (own ? e.brokenProperties : e.brokenDemands).push_back(own ? nextProperty++ : nextDemand++);
      inserts += Insert(own ? "IPropio" : "Demanda", base);
    };
    breakOne(property, "Precio", N(maxPrice + 1));
    breakOne(property, "Superficie", N(minSurface - 1));
    breakOne(property, "IdTipoInmueble", N(type % 3 + 1));
    breakOne(property, "IdZona", N(3 - zone));
    breakOne(property, "IdOperacion", N(3 - operacion));
    if (heating >= 2) breakOne(property, "IdCalefaccion", N(5 - heating));
    if (!wanted.empty()) breakOne(property, "Categorias", List("Piscina"));
    for (const char* f : kFeatures)
      if (Int(demand[f]) > 0) breakOne(property, f, N(Int(demand[f]) - 1));
    for (const char* c : kChecks)
      if (demand[c] != "2") breakOne(property, c, N(1 - Int(demand[c])));
    breakOne(demand, "PrecioMinimo", N(Int(property["Precio"]) + 1));
    breakOne(demand, "SuperficieMaxima", N(Int(property["Superficie"]) - 1));
    breakOne(demand, "Pais", List("Francia"));
    breakOne(demand, "TipoInmueble", List(kTypes[type % 3 + 1]));
    breakOne(demand, "IdAliasInmueble", "3");
    // A category the property lacks (unless it has the extra one).
    if (!wanted.empty() && !extra) breakOne(demand, "Categorias", List("Piscina"));
    for (const char* f : kFeatures) breakOne(demand, f, N(Int(property[f]) + 1));
    for (const char* c : kChecks)
      if (property[c] != "2") breakOne(demand, c, N(1 - Int(property[c])));
    expectations.push_back(std::move(e));
  }
  sqlite::NativeDatabase(path_).ExecuteNative(inserts);

  const auto has = [](const Ids& ids, int id) { return std::count(ids.begin(), ids.end(), id); };
  for (const Expectation& e : expectations) {
    const Ids properties = Own(Cross(e.demand, "Inm. Propios", "Demandas"));
    EXPECT_TRUE(has(properties, e.property))
        << "demand " << e.demand << " should find property " << e.property << "\n" << sel_->SQLW();
    for (int broken : e.brokenProperties)
      EXPECT_FALSE(has(properties, broken)) << "demand " << e.demand << " found " << broken;
    const Ids demands = Demands(Cross(e.property, "Demandas", "Inm. Propios"));
    EXPECT_TRUE(has(demands, e.demand))
        << "property " << e.property << " should find demand " << e.demand << "\n" << sel_->SQLW();
    for (int broken : e.brokenDemands)
      EXPECT_FALSE(has(demands, broken)) << "property " << e.property << " found " << broken;
  }
  EXPECT_TRUE(messenger_->shown().empty()) << DescribeMessages(*messenger_);
}

}  // namespace
}  // namespace cp::testing
