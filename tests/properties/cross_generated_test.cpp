// Crossing both ways on generated records whose every criterion is known: a demand finds the
// property built to meet it, that property finds the demand back, and a record that breaks
// any single criterion is left out.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <map>

#include "sample/random.h"
#include "tests/properties/property_fixture.h"

namespace cp::testing {
namespace {

// The demo data's generator, so every run checks the same records; ints for the tables here.
class Generator : public sample::SplitMix64 {
 public:
  using SplitMix64::SplitMix64;
  int Below(int n) { return static_cast<int>(SplitMix64::Below(n)); }
  int Between(int lo, int hi) { return static_cast<int>(SplitMix64::Between(lo, hi)); }
};

const char* const kFeatures[] = {"Huecos", "Exterior", "Ascensor", "Garaje",
                                 "Altura", "Aseos",    "Banios"};
const char* const kChecks[] = {"Amueblado", "Nuevo", "Trastero", "Comercial", "Industrial"};

struct Place {
  int pais, provincia, poblacion, zona;
  const char *paisName, *provinciaName, *poblacionName, *zonaName;
};
// Only places whose zone hangs from the town (BZona), so that a property's names resolve.
const Place kPlaces[] = {{1, 1, 1, 1, "España", "Madrid", "Madrid", "Centro"},
                         {1, 1, 1, 2, "España", "Madrid", "Madrid", "Norte"}};
const char* const kTypes[] = {"", "Piso", "Local", "Chalet"};         // by IdTipoInmueble
const char* const kCategories[] = {"Reformado", "Vistas"};

// One record as column → SQL literal.
using Row = std::map<std::string, std::string>;

std::string Quote(const std::string& s) { return "'" + s + "'"; }

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
    sqlite::NativeDatabase db(path_);
    db.ExecuteNative("DELETE FROM IPropio WHERE IdIPropio >= 1000; "
                     "DELETE FROM Demanda WHERE IdDemanda >= 1000;");
    PropertyTest::TearDown();
  }

  std::string Cross(std::int32_t id, std::string to, std::string from) {
    sel_->Cruzar(id, to, from);
    return sel_->SQLW();
  }
};

TEST_F(CrossGeneratedTest, BothDirectionsAndEverySingleBreak) {
  Generator g(20261121);
  std::string inserts;
  struct Expectation {
    int demand, property;
    std::vector<int> brokenProperties, brokenDemands;
  };
  std::vector<Expectation> expectations;
  int nextProperty = 1000, nextDemand = 1000;

  for (int pair = 0; pair < 12; ++pair) {
    const Place& place = kPlaces[g.Below(2)];
    const int type = g.Between(1, 3);
    const int operacion = g.Between(1, 2), alias = g.Between(1, 2);
    const int heating = g.Between(1, 3);
    const int minPrice = g.Between(5, 30) * 10000, maxPrice = minPrice + g.Between(1, 20) * 10000;
    const int minSurface = g.Between(40, 90), maxSurface = minSurface + g.Between(5, 60);
    std::vector<std::string> wanted;
    for (const char* c : kCategories)
      if (g.Below(2)) wanted.push_back(c);

    Row demand = {{"Pais", Quote(std::string(place.paisName) + "; ")},
                  {"Provincia", Quote(std::string(place.provinciaName) + "; ")},
                  {"Poblacion", Quote(std::string(place.poblacionName) + "; ")},
                  {"Zona", Quote(std::string(place.zonaName) + "; ")},
                  {"TipoInmueble", Quote(std::string(kTypes[type]) + "; ")},
                  {"IdOperacion", std::to_string(operacion)},
                  {"IdAliasInmueble", std::to_string(alias)},
                  {"IdCalefaccion", std::to_string(heating)},
                  {"PrecioMinimo", std::to_string(minPrice)},
                  {"PrecioMaximo", std::to_string(maxPrice)},
                  {"Superficie", std::to_string(minSurface)},
                  {"SuperficieMaxima", std::to_string(maxSurface)}};
    std::string demandCategories;
    for (const auto& c : wanted) demandCategories += c + "; ";
    demand["Categorias"] = Quote(demandCategories);

    Row property = {{"IdPais", std::to_string(place.pais)},
                    {"IdProvincia", std::to_string(place.provincia)},
                    {"IdPoblacion", std::to_string(place.poblacion)},
                    {"IdZona", std::to_string(place.zona)},
                    {"IdTipoInmueble", std::to_string(type)},
                    {"IdOperacion", std::to_string(operacion)},
                    {"IdAliasInmueble", std::to_string(alias)},
                    {"IdCalefaccion", std::to_string(heating)},
                    {"Precio", std::to_string(g.Between(minPrice, maxPrice))},
                    {"Superficie", std::to_string(g.Between(minSurface, maxSurface))}};
    // The property has every wanted category, and maybe more.
    std::string propertyCategories = demandCategories;
    if (wanted.size() < 2 && g.Below(2)) propertyCategories += "Piscina; ";
    property["Categorias"] = Quote(propertyCategories);
    for (const char* f : kFeatures) {
      const int asked = g.Between(0, 3);
      demand[f] = std::to_string(asked);
      property[f] = std::to_string(asked + g.Between(0, 2));  // at least what is asked
    }
    for (const char* c : kChecks) {
      const int asked = g.Between(0, 2);  // 2: either
      demand[c] = std::to_string(asked);
      property[c] = std::to_string(asked == 2 ? g.Between(0, 2) : (g.Below(3) ? asked : 2));
    }

    Expectation e{nextDemand++, nextProperty++, {}, {}};
    demand["IdDemanda"] = std::to_string(e.demand);
    property["IdIPropio"] = std::to_string(e.property);
    inserts += Insert("Demanda", demand) + Insert("IPropio", property);

    // Properties that break one criterion of the demand each.
    const auto breakProperty = [&](const std::function<void(Row&)>& change) {
      Row broken = property;
      change(broken);
      broken["IdIPropio"] = std::to_string(nextProperty);
      e.brokenProperties.push_back(nextProperty++);
      inserts += Insert("IPropio", broken);
    };
    breakProperty([&](Row& r) { r["Precio"] = std::to_string(maxPrice + 1); });
    breakProperty([&](Row& r) { r["Superficie"] = std::to_string(minSurface - 1); });
    breakProperty([&](Row& r) { r["IdTipoInmueble"] = std::to_string(type % 3 + 1); });
    breakProperty([&](Row& r) { r["IdZona"] = std::to_string(3 - place.zona); });
    breakProperty([&](Row& r) { r["IdOperacion"] = std::to_string(3 - operacion); });
    if (heating >= 2) breakProperty([&](Row& r) { r["IdCalefaccion"] = std::to_string(5 - heating); });
    if (!wanted.empty()) breakProperty([&](Row& r) { r["Categorias"] = Quote("Piscina; "); });
    for (const char* f : kFeatures)
      if (std::stoi(demand[f]) > 0)
        breakProperty([&](Row& r) { r[f] = std::to_string(std::stoi(demand[f]) - 1); });
    for (const char* c : kChecks)
      if (demand[c] != "2")
        breakProperty([&](Row& r) { r[c] = std::to_string(1 - std::stoi(demand[c])); });

    // Demands that break one criterion of the property each.
    const auto breakDemand = [&](const std::function<void(Row&)>& change) {
      Row broken = demand;
      change(broken);
      broken["IdDemanda"] = std::to_string(nextDemand);
      e.brokenDemands.push_back(nextDemand++);
      inserts += Insert("Demanda", broken);
    };
    breakDemand([&](Row& r) { r["PrecioMinimo"] = std::to_string(std::stoi(property["Precio"]) + 1); });
    breakDemand([&](Row& r) { r["SuperficieMaxima"] = std::to_string(std::stoi(property["Superficie"]) - 1); });
    breakDemand([&](Row& r) { r["Pais"] = Quote("Francia; "); });
    breakDemand([&](Row& r) { r["TipoInmueble"] = Quote(std::string(kTypes[type % 3 + 1]) + "; "); });
    breakDemand([&](Row& r) { r["IdAliasInmueble"] = std::to_string(3); });
    // A demand that asks for a category the property lacks (unless it has the extra one).
    if (!wanted.empty() && propertyCategories == demandCategories)
      breakDemand([&](Row& r) { r["Categorias"] = Quote("Piscina; "); });
    for (const char* f : kFeatures)
      breakDemand([&](Row& r) { r[f] = std::to_string(std::stoi(property[f]) + 1); });
    for (const char* c : kChecks)
      if (property[c] != "2")
        breakDemand([&](Row& r) { r[c] = std::to_string(1 - std::stoi(property[c])); });
    expectations.push_back(std::move(e));
  }
  sqlite::NativeDatabase(path_).ExecuteNative(inserts);

  for (const Expectation& e : expectations) {
    const std::vector<long> properties = Own(Cross(e.demand, "Inm. Propios", "Demandas"));
    EXPECT_TRUE(std::count(properties.begin(), properties.end(), e.property))
        << "demand " << e.demand << " should find property " << e.property << "\n" << sel_->SQLW();
    for (int broken : e.brokenProperties)
      EXPECT_FALSE(std::count(properties.begin(), properties.end(), broken))
          << "demand " << e.demand << " should not find property " << broken;

    const std::vector<long> demands = Demands(Cross(e.property, "Demandas", "Inm. Propios"));
    EXPECT_TRUE(std::count(demands.begin(), demands.end(), e.demand))
        << "property " << e.property << " should find demand " << e.demand << "\n" << sel_->SQLW();
    for (int broken : e.brokenDemands)
      EXPECT_FALSE(std::count(demands.begin(), demands.end(), broken))
          << "property " << e.property << " should not find demand " << broken;
  }
  EXPECT_TRUE(messenger_->shown().empty()) << DescribeMessages(*messenger_);
}

}  // namespace
}  // namespace cp::testing
