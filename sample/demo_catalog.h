#pragma once
// The real-world material the demo data is drawn from: countries with their provinces,
// towns and zones, the lookup lists of an agency, and Spanish names and streets.
#include <string_view>
#include <vector>

namespace cp::sample::demo {

struct Town {
  std::string_view name;
  int weight;  // relative share of the listings
  std::vector<std::string_view> zones;
};

struct Province {
  std::string_view name;
  std::vector<Town> towns;
};

struct Country {
  std::string_view name;
  std::vector<Province> provinces;
};

// Countries in id order; a name may repeat across levels ("Madrid", "Salamanca") and zone
// names repeat across towns ("Centro"), as in real files.
const std::vector<Country>& Countries();

struct PropertyType {
  std::string_view name;   // TipoInmueble
  std::string_view alias;  // AliasInmueble it is filed under
  bool dwelling;           // has rooms, bathrooms, a floor
  int min_area, max_area;  // square metres
};
const std::vector<PropertyType>& PropertyTypes();

struct AliasEntry {
  std::string_view name;
  bool active;
};
const std::vector<AliasEntry>& PropertyAliases();

// Plain lookup lists, in id order.
const std::vector<std::string_view>& Operations();  // Venta first, Alquiler second
const std::vector<std::string_view>& Heatings();    // "No se sabe" first
const std::vector<std::string_view>& Accesses();
const std::vector<std::string_view>& ContactCategories();
const std::vector<std::string_view>& PropertyCategories();

struct User {
  std::string_view name;
  std::string_view country, province, town;  // default location
};
const std::vector<User>& Users();

const std::vector<std::string_view>& FirstNames();
const std::vector<std::string_view>& Surnames();
const std::vector<std::string_view>& Streets();         // with their kind: "C/ Mayor"
const std::vector<std::string_view>& AgencyPrefixes();  // "Inmobiliaria", "Fincas"...
const std::vector<std::string_view>& AgencyNames();     // "Sol", "Mediterráneo"...
const std::vector<std::string_view>& CompanyKinds();    // "Construcciones", "Inversiones"...
const std::vector<std::string_view>& ContactNotes();
const std::vector<std::string_view>& PropertyNotes();
const std::vector<std::string_view>& DemandNotes();

}  // namespace cp::sample::demo
