#include "sample/demo_data.h"

#include <algorithm>
#include <cstdio>
#include <functional>
#include <set>
#include <string_view>
#include <unordered_map>

#include "sample/demo_catalog.h"
#include "sample/random.h"
#include "sample/schema.h"
#include "platform/core/date.h"
#include "platform/core/error.h"

namespace cp::sample {
namespace {

using demo::Country;

const DbValue kNull{};

// ---- dates as day numbers (days since 1970-01-01) -----------------------------------------

std::int64_t DaysFromCivil(int y, int m, int d) {
  return DayOf(MakeDate(y, m, d)).time_since_epoch().count();
}

std::string IsoDate(std::int64_t day) {
  return cp::IsoDate(DateOfDay(std::chrono::sys_days{std::chrono::days{day}}));
}

// ---- rows by column name -----------------------------------------------------------------

// A table's writer plus its column positions, so rows are filled by name.
class Table {
 public:
  Table(RowSink& sink, const std::string& name) {
    const SchemaTable* layout = FindTable(name);
    if (!layout) Raise(err::kInvalidProcedureCall);
    std::vector<std::string> columns;
    for (const SchemaColumn& c : layout->columns) {
      index_[c.name] = columns.size();
      columns.push_back(c.name);
    }
    writer_ = sink.Open(name, columns);
    row_.assign(columns.size(), kNull);
  }

  Table& Set(std::string_view column, DbValue value) {
    auto it = index_.find(column);
    if (it == index_.end()) Raise(err::kInvalidProcedureCall);
    row_[it->second] = std::move(value);
    return *this;
  }
  // Writes the row and starts the next one with every column Null.
  void Write() {
    writer_->Write(row_);
    std::fill(row_.begin(), row_.end(), kNull);
  }

 private:
  struct NameHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view s) const { return std::hash<std::string_view>{}(s); }
  };
  std::unordered_map<std::string, std::size_t, NameHash, std::equal_to<>> index_;
  std::unique_ptr<TableWriter> writer_;
  std::vector<DbValue> row_;
};

DbValue Int(std::int64_t v) { return v; }
DbValue Str(std::string_view v) { return std::string(v); }

// ---- text helpers ---------------------------------------------------------------------------

// Lower-case ASCII letters and digits of a Spanish name, accents dropped: for e-mails, webs.
std::string Slug(std::string_view text) {
  static const std::pair<std::string_view, char> kFolds[] = {
      {"á", 'a'}, {"à", 'a'}, {"é", 'e'}, {"è", 'e'}, {"í", 'i'}, {"ï", 'i'}, {"ó", 'o'},
      {"ò", 'o'}, {"ú", 'u'}, {"ü", 'u'}, {"ñ", 'n'}, {"ç", 'c'}, {"Á", 'a'}, {"É", 'e'},
      {"Í", 'i'}, {"Ó", 'o'}, {"Ú", 'u'}, {"Ñ", 'n'}, {"Ç", 'c'}};
  std::string out;
  for (std::size_t i = 0; i < text.size();) {
    const unsigned char c = static_cast<unsigned char>(text[i]);
    if (c < 0x80) {
      if (c >= 'A' && c <= 'Z')
        out += static_cast<char>(c - 'A' + 'a');
      else if ((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9'))
        out += static_cast<char>(c);
      ++i;
      continue;
    }
    bool folded = false;
    for (const auto& [from, to] : kFolds) {
      if (text.substr(i, from.size()) == from) {
        out += to;
        i += from.size();
        folded = true;
        break;
      }
    }
    if (!folded) ++i;
  }
  return out;
}

// Items in the stored multi-value form: every one followed by "; ".
std::string MultiValue(const std::vector<std::string_view>& items) {
  std::string out;
  for (std::string_view item : items) (out += item) += "; ";
  return out;
}

template <typename T>
const T& Pick(SplitMix64& rng, const std::vector<T>& v) {
  return v[static_cast<std::size_t>(rng.Below(static_cast<std::int64_t>(v.size())))];
}

// k distinct items of v in their catalogue order.
std::vector<std::string_view> PickSome(SplitMix64& rng, const std::vector<std::string_view>& v,
                                       int k) {
  std::vector<bool> chosen(v.size(), false);
  k = std::min<int>(k, static_cast<int>(v.size()));
  for (int n = 0; n < k;) {
    const auto i = static_cast<std::size_t>(rng.Below(static_cast<std::int64_t>(v.size())));
    if (!chosen[i]) chosen[i] = true, ++n;
  }
  std::vector<std::string_view> out;
  for (std::size_t i = 0; i < v.size(); ++i)
    if (chosen[i]) out.push_back(v[i]);
  return out;
}

std::string Digits(SplitMix64& rng, int count) {
  std::string s;
  for (int i = 0; i < count; ++i) s += static_cast<char>('0' + rng.Below(10));
  return s;
}

std::string PersonalNif(SplitMix64& rng) {
  const std::int64_t n = rng.Between(1000000, 79999999);
  char buf[16];
  std::snprintf(buf, sizeof buf, "%08lld%c", static_cast<long long>(n),
                "TRWAGMYFPDXBNJZSQVHLCKE"[n % 23]);
  return buf;
}

// A company's tax code: a letter, seven digits and the control digit.
std::string CompanyNif(SplitMix64& rng) {
  const std::string digits = Digits(rng, 7);
  int sum = 0;
  for (int i = 0; i < 7; ++i) {
    int d = digits[i] - '0';
    if (i % 2 == 0) {
      d *= 2;
      d = d / 10 + d % 10;
    }
    sum += d;
  }
  const char letter = rng.Percent(70) ? 'B' : 'A';
  return std::string(1, letter) + digits + static_cast<char>('0' + (10 - sum % 10) % 10);
}

// ---- the generator --------------------------------------------------------------------------

struct Place {
  std::int64_t country, province, town;
  std::string_view country_name, province_name, town_name;
  std::vector<std::int64_t> zones;
  std::vector<std::string_view> zone_names;
  int weight;
};

struct ContactKind {
  const char *table, *key, *phones, *mails;
  int company_percent;  // share of companies among the contacts
};

class Generator {
 public:
  Generator(RowSink& sink, const DemoOptions& options)
      : sink_(sink), rng_(options.seed), sizes_(SizesFor(options.properties)) {}

  void Run() {
    Places();
    Lookups();
    UsersTable();
    Contacts({"Cliente", "IdCliente", "TfnoCli", "CorreoECli", 20}, sizes_.clients);
    Agencies();
    Contacts({"Abogado", "IdAbogado", "TfnoAbogado", "CorreoEAbogado", 30}, sizes_.other_contacts);
    Contacts({"ClienteContrario", "IdClienteContrario", "TfnoCliCont", "CorreoECliCont", 25},
             sizes_.other_contacts);
    Contacts({"Procurador", "IdProcurador", "TfnoProcurador", "CorreoEProcurador", 10},
             sizes_.other_contacts);
    Contacts({"ClienteContArch", "IdClienteContArch", "TfnoCliContArch", "CorreoECliContArch", 25},
             sizes_.other_contacts);
    Properties("IPropio", "IdIPropio", sizes_.own_properties, 50, false);
    Properties("IAjeno", "IdIAjeno", sizes_.other_agency_properties, 100, false);
    Properties("IArchivado", "IdIArchivado", sizes_.archived_properties, 40, true);
    Properties("IVendido", "IdIVendido", sizes_.sold_properties, 40, true);
    Demands();
  }

 private:
  // Countries, provinces, towns and zones with their join rows.
  void Places() {
    Table pais(sink_, "Pais"), provincia(sink_, "Provincia"), prpa(sink_, "PrPa"),
        poblacion(sink_, "Poblacion"), poprpa(sink_, "PoPrPa"), zona(sink_, "Zona"),
        bzona(sink_, "BZona");
    std::unordered_map<std::string_view, std::int64_t> zone_ids;
    std::int64_t country_id = 0, province_id = 0, town_id = 0;
    for (const Country& c : demo::Countries()) {
      pais.Set("IdPais", ++country_id).Set("Nombre", Str(c.name)).Write();
      for (const demo::Province& p : c.provinces) {
        provincia.Set("IdProvincia", ++province_id).Set("Nombre", Str(p.name)).Write();
        prpa.Set("IdProvincia", province_id).Set("IdPais", country_id).Write();
        for (const demo::Town& t : p.towns) {
          poblacion.Set("IdPoblacion", ++town_id).Set("Nombre", Str(t.name)).Write();
          poprpa.Set("IdPoblacion", town_id)
              .Set("IdProvincia", province_id)
              .Set("IdPais", country_id)
              .Write();
          Place place{country_id, province_id, town_id, c.name, p.name, t.name, {}, {}, t.weight};
          for (std::string_view z : t.zones) {
            auto [it, added] = zone_ids.emplace(z, static_cast<std::int64_t>(zone_ids.size()) + 1);
            if (added) zona.Set("IdZona", it->second).Set("Nombre", Str(z)).Write();
            bzona.Set("IdZona", it->second)
                .Set("IdPais", country_id)
                .Set("IdProvincia", province_id)
                .Set("IdPoblacion", town_id)
                .Write();
            place.zones.push_back(it->second);
            place.zone_names.push_back(z);
          }
          total_weight_ += t.weight;
          places_.push_back(std::move(place));
        }
      }
    }
  }

  const Place& AnyPlace() {
    std::int64_t w = rng_.Below(total_weight_);
    for (const Place& p : places_) {
      if (w < p.weight) return p;
      w -= p.weight;
    }
    return places_.back();
  }

  std::size_t PlaceIndex(std::string_view town) const {
    for (std::size_t i = 0; i < places_.size(); ++i)
      if (places_[i].town_name == town) return i;
    Raise(err::kInvalidProcedureCall);
  }

  void NameList(const std::string& table, const std::string& key, const std::string& column,
                const std::vector<std::string_view>& names) {
    Table t(sink_, table);
    std::int64_t id = 0;
    for (std::string_view n : names) t.Set(key, ++id).Set(column, Str(n)).Write();
  }

  void Lookups() {
    std::vector<std::string_view> types;
    for (const demo::PropertyType& t : demo::PropertyTypes()) types.push_back(t.name);
    NameList("TipoInmueble", "IdTipoInmueble", "Nombre", types);
    NameList("Operacion", "IdOperacion", "Operacion", demo::Operations());
    Table alias(sink_, "AliasInmueble");
    std::vector<std::string_view> alias_names;
    std::int64_t id = 0;
    for (const demo::AliasEntry& a : demo::PropertyAliases()) {
      alias.Set("IdAliasInmueble", ++id)
          .Set("Inmueble", Str(a.name))
          .Set("Activo", Int(a.active ? 1 : 0))
          .Write();
      alias_names.push_back(a.name);
    }
    NameList("Inmueble", "IdInmueble", "Inmueble", alias_names);
    NameList("Calefaccion", "IdCalefaccion", "Calefaccion", demo::Heatings());
    NameList("Acceso", "IdAcceso", "Acceso", demo::Accesses());
    NameList("TipoCategoria", "IdTipoCategoria", "Nombre", demo::ContactCategories());
    NameList("TipoCategoriaI", "IdTipoCategoriaI", "Nombre", demo::PropertyCategories());
  }

  void UsersTable() {
    Table t(sink_, "Usuario");
    std::int64_t id = 0;
    for (const demo::User& u : demo::Users()) {
      const Place& p = places_[PlaceIndex(u.town)];
      t.Set("IdUsuario", ++id)
          .Set("Nombre", Str(u.name))
          .Set("IdPoblacion", p.town)
          .Set("IdProvincia", p.province)
          .Set("IdPais", p.country)
          .Write();
    }
  }

  std::int64_t AnyUser() {
    return rng_.Between(1, static_cast<std::int64_t>(demo::Users().size()));
  }

  std::int64_t DayBetween(int from_year, int to_year) {
    return rng_.Between(DaysFromCivil(from_year, 1, 1), DaysFromCivil(to_year, 12, 31));
  }

  // A date some days after day, with a time of day in office hours.
  std::string StampAfter(std::int64_t day, int max_days) {
    char time[16];
    std::snprintf(time, sizeof time, " %02d:%02d:00", static_cast<int>(rng_.Between(8, 20)),
                  static_cast<int>(rng_.Below(12) * 5));
    return IsoDate(day + rng_.Between(1, max_days)) + time;
  }

  // The long history note that a veteran client accumulates over the years.
  std::string LongHistory(std::int64_t since) {
    std::string note;
    std::int64_t day = since;
    // Counted in characters, as the database measures a Memo.
    std::size_t characters = 0;
    while (characters <= 20000) {
      day += rng_.Between(3, 40);
      const std::string entry =
          IsoDate(day) + ": " + std::string(Pick(rng_, demo::ContactNotes())) + "\r\n";
      for (unsigned char c : entry) characters += (c & 0xC0) != 0x80;
      note += entry;
    }
    return note;
  }

  // Shared by every contact table: name, address, ids, categories and dates.
  void FillContact(Table& t, std::string_view key, std::int64_t id, int company_percent,
                   std::string& alias, std::string& mail_name, bool& company) {
    const Place& place = AnyPlace();
    company = rng_.Percent(company_percent);
    const std::string_view first = Pick(rng_, demo::FirstNames());
    const std::string surnames =
        std::string(Pick(rng_, demo::Surnames())) + " " + std::string(Pick(rng_, demo::Surnames()));
    t.Set(key, id);
    if (company) {
      const std::string_view surname = Pick(rng_, demo::Surnames());
      const std::string org = std::string(Pick(rng_, demo::CompanyKinds())) + " " +
                              std::string(surname) + (rng_.Percent(60) ? " S.L." : " S.A.");
      alias = org;
      mail_name = Slug(org);
      t.Set("Organizacion", org).Set("NIF", CompanyNif(rng_));
      if (rng_.Percent(50)) t.Set("Apellidos", surnames);
      if (rng_.Percent(60)) t.Set("PagWeb", "www." + mail_name + ".es");
    } else {
      alias = surnames + ", " + std::string(first);
      mail_name = Slug(first) + "." + Slug(surnames.substr(0, surnames.find(' ')));
      t.Set("Apellidos", surnames);
      if (rng_.Percent(85)) t.Set("NIF", PersonalNif(rng_));
      if (rng_.Percent(5)) t.Set("PagWeb", "www." + Slug(surnames) + ".com");
    }
    t.Set("Alias", alias);
    if (rng_.Percent(90))
      t.Set("Calle",
            std::string(Pick(rng_, demo::Streets())) + ", " + std::to_string(rng_.Between(1, 180)));
    t.Set("IdPais", place.country);
    if (rng_.Percent(95)) t.Set("IdProvincia", place.province).Set("IdPoblacion", place.town);
    t.Set("IdUsuario", AnyUser());
    if (rng_.Percent(55))
      t.Set("Categorias", MultiValue(PickSome(rng_, demo::ContactCategories(),
                                              static_cast<int>(rng_.Between(1, 2)))));
    const std::int64_t since = DayBetween(1995, 2025);
    t.Set("FechaAlta", IsoDate(since));
    if (rng_.Percent(65)) t.Set("FechaActualizacion", StampAfter(since, 1200));
    if (rng_.Percent(35)) t.Set("FechaEnvioAnotaciones", IsoDate(since + rng_.Between(10, 900)));
    if (key == "IdCliente" && id == 7)
      t.Set("Notas", LongHistory(since));
    else if (rng_.Percent(45))
      t.Set("Notas", Str(Pick(rng_, demo::ContactNotes())));
  }

  void PhonesAndMails(Table& phones, Table& mails, std::string_view key, std::int64_t id,
                      const std::string& mail_name, bool company) {
    static const std::vector<std::string_view> kDomains = {"gmail.com", "hotmail.com", "yahoo.es",
                                                           "telefonica.net", "outlook.es"};
    const std::int64_t r = rng_.Below(100);
    const int phone_count = r < 10 ? 0 : r < 60 ? 1 : r < 90 ? 2 : 3;
    for (int i = 0; i < phone_count; ++i) {
      const char lead = (i == 0 && !company) || rng_.Percent(40) ? '6' : '9';
      phones.Set(key, id).Set("Numero", std::string(1, lead) + Digits(rng_, 8)).Write();
    }
    const std::int64_t m = rng_.Below(100);
    const int mail_count = m < 45 ? 0 : m < 90 ? 1 : 2;
    for (int i = 0; i < mail_count; ++i) {
      std::string address;
      if (company)
        address = (i == 0 ? "info@" : "administracion@") + mail_name + ".es";
      else
        address = mail_name + (i == 0 ? "" : std::to_string(rng_.Between(1, 99))) + "@" +
                  std::string(Pick(rng_, kDomains));
      mails.Set(key, id).Set("Numero", address).Write();
    }
  }

  void Contacts(const ContactKind& kind, int count) {
    Table t(sink_, kind.table), phones(sink_, kind.phones), mails(sink_, kind.mails);
    for (std::int64_t id = 1; id <= count; ++id) {
      std::string alias, mail_name;
      bool company = false;
      FillContact(t, kind.key, id, kind.company_percent, alias, mail_name, company);
      t.Write();
      PhonesAndMails(phones, mails, kind.key, id, mail_name, company);
    }
  }

  // Agencies are companies with a distinct trade name; the last one, id 1000000, stands for
  // private sellers and is left out of the agency picker.
  void Agencies() {
    Table t(sink_, "Agencia"), phones(sink_, "TfnoAgencia"), mails(sink_, "CorreoEAgencia");
    std::set<std::string> used;
    auto write = [&](std::int64_t id, const std::string& name, const Place& place) {
      std::string alias, mail_name;
      bool company = true;
      FillContact(t, "IdAgencia", id, 100, alias, mail_name, company);
      mail_name = Slug(name);
      t.Set("Alias", name)
          .Set("Organizacion", name)
          .Set("IdPais", place.country)
          .Set("IdProvincia", place.province)
          .Set("IdPoblacion", place.town)
          .Set("PagWeb", "www." + mail_name + ".es")
          .Write();
      PhonesAndMails(phones, mails, "IdAgencia", id, mail_name, true);
    };
    for (std::int64_t id = 1; id <= sizes_.agencies; ++id) {
      const Place& place = AnyPlace();
      std::string name = std::string(Pick(rng_, demo::AgencyPrefixes())) + " " +
                         std::string(Pick(rng_, demo::AgencyNames()));
      if (used.count(name)) name += " " + std::string(place.town_name);
      for (int n = 2; used.count(name); ++n) name += " " + std::to_string(n);
      used.insert(name);
      write(id, name, place);
    }
    write(1000000, "Particulares", places_.front());
  }

  std::int64_t AnyAgency() { return rng_.Between(1, std::max(1, sizes_.agencies)); }
  std::int64_t AnyClient() { return rng_.Between(1, std::max(1, sizes_.clients)); }

  // A check-box column: 0 no, 1 yes, 2 indifferent.
  std::int64_t CheckState(int yes_percent, int grey_percent) {
    const std::int64_t r = rng_.Below(100);
    return r < yes_percent ? 1 : r < yes_percent + grey_percent ? 2 : 0;
  }

  std::int64_t Price(const demo::PropertyType& type, std::string_view operation, double area) {
    if (operation == "Traspaso") return rng_.Between(12, 180) * 1000;
    if (operation == "Venta") {
      if (type.name == "Plaza de garaje") return rng_.Between(8, 45) * 1000;
      const std::int64_t per_metre = type.name == "Nave"    ? rng_.Between(300, 900)
                                     : type.name == "Solar" ? rng_.Between(60, 450)
                                                            : rng_.Between(1200, 5200);
      return std::max<std::int64_t>(1, static_cast<std::int64_t>(area) * per_metre / 1000) * 1000;
    }
    if (type.name == "Plaza de garaje") return rng_.Between(5, 15) * 10;
    const std::int64_t rent = static_cast<std::int64_t>(area) * rng_.Between(7, 22);
    return std::max<std::int64_t>(5, rent / 10) * 10;
  }

  void Properties(const std::string& table, const std::string& key, int count, int agency_percent,
                  bool filed) {
    Table t(sink_, table);
    const auto& types = demo::PropertyTypes();
    const auto& aliases = demo::PropertyAliases();
    static const int kTypeWeights[] = {40, 8, 5, 5, 10, 7, 10, 5, 3, 3, 4};
    for (std::int64_t id = 1; id <= count; ++id) {
      t.Set(key, id).Set("IdCliente", AnyClient());
      const Place& place = AnyPlace();
      t.Set("IdPais", place.country);
      if (rng_.Percent(97)) {
        t.Set("IdProvincia", place.province).Set("IdPoblacion", place.town);
        if (!place.zones.empty() && rng_.Percent(75)) t.Set("IdZona", Pick(rng_, place.zones));
      }
      std::int64_t w = rng_.Below(100);
      std::size_t ti = 0;
      while (w >= kTypeWeights[ti]) w -= kTypeWeights[ti++];
      const demo::PropertyType& type = types[ti];
      t.Set("IdTipoInmueble", static_cast<std::int64_t>(ti) + 1);
      std::int64_t alias_id = 1;
      for (std::size_t a = 0; a < aliases.size(); ++a)
        if (aliases[a].name == type.alias) alias_id = static_cast<std::int64_t>(a) + 1;
      // Old files still hold storerooms filed under the alias that is no longer offered.
      if (filed && type.name == "Plaza de garaje" && rng_.Percent(30)) alias_id = 5;
      t.Set("IdAliasInmueble", alias_id);

      const std::int64_t r = rng_.Below(100);
      std::int64_t op = r < 60 ? 1 : r < 92 ? 2 : r < 96 ? 4 : 3;
      if (op == 3 && type.name != "Local") op = 1;  // only businesses are transferred
      t.Set("IdOperacion", op);
      if (rng_.Percent(90)) t.Set("IdCalefaccion", rng_.Between(1, 7));
      if (rng_.Percent(agency_percent)) t.Set("IdAgencia", AnyAgency());
      t.Set("IdUsuario", AnyUser())
          .Set("IdAcceso", rng_.Between(1, 5))
          .Set("IdDestino", rng_.Between(1, 3));
      const std::int64_t c = rng_.Below(100);
      if (c < 3)
        t.Set("Categorias", std::string());
      else if (c < 80)
        t.Set("Categorias", MultiValue(PickSome(rng_, demo::PropertyCategories(),
                                                static_cast<int>(rng_.Between(1, 3)))));

      const double area = static_cast<double>(rng_.Between(type.min_area, type.max_area)) +
                          (rng_.Percent(20) ? 0.5 : 0.0);
      if (rng_.Percent(95)) t.Set("Superficie", area);
      if (rng_.Percent(95))
        t.Set("Precio", Price(type, demo::Operations()[static_cast<std::size_t>(op - 1)], area));

      if (type.dwelling) {
        const std::int64_t rooms = std::max<std::int64_t>(1, static_cast<std::int64_t>(area) / 35);
        if (rng_.Percent(92)) t.Set("Huecos", std::min<std::int64_t>(rooms, 7));
        if (rng_.Percent(85)) t.Set("Exterior", rng_.Between(0, std::min<std::int64_t>(rooms, 4)));
        if (rng_.Percent(90)) t.Set("Ascensor", type.name == "Chalet" ? 0 : rng_.Between(0, 2));
        if (rng_.Percent(90))
          t.Set("Altura", type.name == "Ático" ? rng_.Between(4, 14) : rng_.Between(0, 9));
        if (rng_.Percent(90)) t.Set("Aseos", rng_.Between(0, 2));
        if (rng_.Percent(95)) t.Set("Banios", rng_.Between(1, 3));
      } else if (rng_.Percent(40)) {
        t.Set("Aseos", rng_.Between(0, 2));
      }
      if (rng_.Percent(80)) t.Set("Garaje", rng_.Between(0, 2));
      t.Set("Exclusividad", Int(rng_.Percent(30) ? 1 : 0));

      const bool business = type.name == "Local" || type.name == "Oficina";
      const bool industry = type.name == "Nave" || type.name == "Solar";
      const std::pair<const char*, std::int64_t> checks[] = {
          {"Amueblado", CheckState(30, 30)},
          {"Nuevo", CheckState(20, 30)},
          {"Trastero", CheckState(35, 30)},
          {"Comercial", business ? CheckState(80, 10) : CheckState(5, 45)},
          {"Industrial", industry ? CheckState(80, 10) : CheckState(5, 45)},
          {"Transmitido", CheckState(35, 30)}};
      for (const auto& [column, state] : checks) {
        // Filed records from before the check boxes existed keep an empty state.
        if (filed && rng_.Percent(3)) continue;
        t.Set(column, state);
      }

      const std::int64_t since = DayBetween(1998, 2025);
      t.Set("FechaAlta", IsoDate(since));
      if (rng_.Percent(60)) t.Set("FechaActualizacion", StampAfter(since, 900));
      if (filed || rng_.Percent(55)) t.Set("FechaBaja", IsoDate(since + rng_.Between(90, 2200)));
      if (rng_.Percent(35)) t.Set("FechaTransmision", IsoDate(since + rng_.Between(1, 120)));
      if (rng_.Percent(55)) {
        std::string note(Pick(rng_, demo::PropertyNotes()));
        if (rng_.Percent(40)) note += "; reformado en " + std::to_string(rng_.Between(1985, 2024));
        t.Set("Notas", note);
      }
      t.Write();
    }
  }

  void Demands() {
    Table t(sink_, "Demanda");
    const auto& types = demo::PropertyTypes();
    const auto& aliases = demo::PropertyAliases();
    const auto& countries = demo::Countries();
    for (std::int64_t id = 1; id <= sizes_.demands; ++id) {
      t.Set("IdDemanda", id).Set("IdCliente", AnyClient());
      // "No preference" is the empty text, as the demand forms write it: the cross-match
      // finds such demands through "= ''", never through Null.
      for (const char* column :
           {"Pais", "Provincia", "Poblacion", "Zona", "TipoInmueble", "Categorias"})
        t.Set(column, std::string());
      const Place& place = AnyPlace();
      if (rng_.Percent(92)) {
        std::vector<std::string_view> pais = {place.country_name};
        if (place.country_name == "España" && rng_.Percent(3)) pais.push_back("Portugal");
        t.Set("Pais", MultiValue(pais));
      }
      if (rng_.Percent(75)) {
        std::vector<std::string_view> provinces = {place.province_name};
        if (rng_.Percent(15)) {
          for (const Country& c : countries) {
            if (c.name != place.country_name) continue;
            std::string_view other = Pick(rng_, c.provinces).name;
            if (other != place.province_name) provinces.push_back(other);
          }
        }
        t.Set("Provincia", MultiValue(provinces));
        if (rng_.Percent(55)) {
          std::vector<std::string_view> towns = {place.town_name};
          if (rng_.Percent(12)) {
            std::vector<std::string_view> neighbours;
            for (const Place& p : places_)
              if (p.province == place.province && p.town != place.town)
                neighbours.push_back(p.town_name);
            if (!neighbours.empty()) towns.push_back(Pick(rng_, neighbours));
          }
          t.Set("Poblacion", MultiValue(towns));
          if (!place.zone_names.empty() && rng_.Percent(50))
            t.Set("Zona", MultiValue(PickSome(rng_, place.zone_names,
                                              static_cast<int>(rng_.Between(1, 2)))));
        }
      }
      std::vector<std::string_view> type_names;
      for (const demo::PropertyType& p : types) type_names.push_back(p.name);
      // Most demands are for homes: draw from the dwellings unless the demand is for a business.
      const bool business = rng_.Percent(15);
      std::vector<std::string_view> pool(type_names.begin() + (business ? 6 : 0),
                                         type_names.begin() + (business ? 11 : 6));
      const std::vector<std::string_view> wanted =
          PickSome(rng_, pool, static_cast<int>(rng_.Between(1, 3)));
      t.Set("TipoInmueble", MultiValue(wanted));
      for (std::size_t a = 0; a < aliases.size(); ++a)
        for (const demo::PropertyType& p : types)
          if (p.name == wanted.front() && p.alias == aliases[a].name)
            t.Set("IdAliasInmueble", static_cast<std::int64_t>(a) + 1);

      const std::int64_t r = rng_.Below(100);
      const std::int64_t op = r < 65 ? 1 : r < 95 ? 2 : 4;
      t.Set("IdOperacion", op);
      if (rng_.Percent(60)) t.Set("IdCalefaccion", rng_.Between(1, 7));
      if (rng_.Percent(15)) t.Set("IdAgencia", AnyAgency());
      t.Set("IdUsuario", AnyUser()).Set("IdDestino", rng_.Between(1, 3));
      if (rng_.Percent(50)) t.Set("IdAcceso", rng_.Between(1, 5));
      if (rng_.Below(100) < 45)
        t.Set("Categorias", MultiValue(PickSome(rng_, demo::PropertyCategories(),
                                                static_cast<int>(rng_.Between(1, 2)))));

      const std::int64_t low = op == 1 ? rng_.Between(60, 600) * 1000 : rng_.Between(6, 40) * 50;
      const std::int64_t high =
          low + (op == 1 ? rng_.Between(20, 400) * 1000 : rng_.Between(2, 30) * 50);
      if (rng_.Percent(90)) t.Set("PrecioMinimo", low);
      if (rng_.Percent(90)) t.Set("PrecioMaximo", high);
      const std::int64_t area = rng_.Between(40, 200);
      if (rng_.Percent(70)) t.Set("Superficie", static_cast<double>(area));
      if (rng_.Percent(60))
        t.Set("SuperficieMaxima", static_cast<double>(area + rng_.Between(20, 150)));

      if (rng_.Percent(60)) t.Set("Huecos", rng_.Between(1, 5));
      if (rng_.Percent(40)) t.Set("Exterior", rng_.Between(0, 3));
      if (rng_.Percent(50)) t.Set("Ascensor", rng_.Between(0, 1));
      if (rng_.Percent(50)) t.Set("Garaje", rng_.Between(0, 2));
      if (rng_.Percent(40)) t.Set("Altura", rng_.Between(0, 10));
      if (rng_.Percent(40)) t.Set("Aseos", rng_.Between(0, 2));
      if (rng_.Percent(60)) t.Set("Banios", rng_.Between(1, 3));
      t.Set("Exclusividad", Int(rng_.Percent(10) ? 1 : 0));
      for (const char* column :
           {"Amueblado", "Nuevo", "Trastero", "Comercial", "Industrial", "Transmitido"})
        t.Set(column, CheckState(25, 50));

      const std::int64_t since = DayBetween(2005, 2025);
      t.Set("FechaAlta", IsoDate(since));
      if (rng_.Percent(50)) t.Set("FechaActualizacion", StampAfter(since, 700));
      if (rng_.Percent(40)) t.Set("FechaBaja", IsoDate(since + rng_.Between(90, 1500)));
      if (rng_.Percent(25)) t.Set("FechaTransmision", IsoDate(since + rng_.Between(1, 60)));
      if (rng_.Percent(50)) t.Set("Notas", Str(Pick(rng_, demo::DemandNotes())));
      t.Write();
    }
  }

  RowSink& sink_;
  SplitMix64 rng_;
  DemoSizes sizes_;
  std::vector<Place> places_;
  std::int64_t total_weight_ = 0;
};

}  // namespace

DemoSizes SizesFor(int properties) {
  if (properties < 0) Raise(err::kInvalidProcedureCall);
  DemoSizes s;
  s.own_properties = properties;
  s.other_agency_properties = properties / 4;
  s.archived_properties = properties / 4;
  s.sold_properties = properties / 4;
  s.demands = properties / 2;
  s.clients = std::max(20, properties / 2);
  s.agencies = std::max(10, properties / 24);
  s.other_contacts = std::max(10, properties / 30);
  return s;
}

void GenerateDemoData(RowSink& sink, const DemoOptions& options) { Generator(sink, options).Run(); }

}  // namespace cp::sample
