#include "sample/schema.h"

#include <initializer_list>

#include "platform/sqlite/iso_dates.h"

namespace cp::sample {
namespace {

SchemaColumn Key(std::string name) { return {std::move(name), "INTEGER", true, false}; }
SchemaColumn Long(std::string name) { return {std::move(name), "INTEGER"}; }
SchemaColumn Small(std::string name) { return {std::move(name), "SMALLINT"}; }
SchemaColumn Money(std::string name) { return {std::move(name), "CURRENCY"}; }
SchemaColumn Real(std::string name) { return {std::move(name), "DOUBLE"}; }
SchemaColumn Memo(std::string name) { return {std::move(name), "TEXT"}; }
SchemaColumn When(std::string name) { return {std::move(name), "DATETIME"}; }
SchemaColumn YesNo(std::string name) { return {std::move(name), "BOOLEAN", false, true}; }
SchemaColumn Text(std::string name, int size) {
  return {std::move(name), "VARCHAR(" + std::to_string(size) + ")"};
}

// A lookup table: auto-increment key and one indexed name column.
SchemaTable Lookup(const std::string& table, const std::string& key, const std::string& name) {
  return {table, {Key(key), Text(name, 50)}, {name}};
}

// A contact table (clients, agencies, lawyers...): every one has the same columns.
SchemaTable Contact(const std::string& table, const std::string& key) {
  return {
      table,
      {Key(key), Text("Alias", 100), Text("Organizacion", 100), Text("Apellidos", 100),
       Text("Calle", 100), Long("IdPoblacion"), Long("IdProvincia"), Long("IdPais"), Memo("Notas"),
       Text("NIF", 15), Text("PagWeb", 100), Long("IdUsuario"), Text("Categorias", 255),
       When("FechaAlta"), When("FechaActualizacion"), When("FechaEnvioAnotaciones")},
      {"Alias", "IdPoblacion", "IdProvincia", "IdPais", "IdUsuario"}};
}

// The phone or e-mail table of a contact table: both keep the value in "Numero".
SchemaTable ContactDetail(const std::string& table, const std::string& key, int size) {
  return {table, {Long(key), Text("Numero", size)}, {key}};
}

// The columns that properties and demands share after their location and type columns.
void AppendFeatures(std::vector<SchemaColumn>& c) {
  for (const char* n : {"Huecos", "Exterior", "Ascensor", "Garaje", "Altura", "Aseos", "Banios"})
    c.push_back(Small(n));
  c.push_back(YesNo("Exclusividad"));
  // Check-box columns: 0 no, 1 yes, 2 indifferent.
  for (const char* n : {"Amueblado", "Nuevo", "Trastero", "Comercial", "Industrial", "Transmitido"})
    c.push_back(Small(n));
  for (const char* n : {"FechaBaja", "FechaAlta", "FechaActualizacion", "FechaTransmision"})
    c.push_back(When(n));
  c.push_back(Memo("Notas"));
}

const std::vector<std::string> kPropertyIndexed = {
    "IdCliente",   "IdPais",          "IdProvincia",   "IdPoblacion", "IdZona",    "IdTipoInmueble",
    "IdOperacion", "IdAliasInmueble", "IdCalefaccion", "IdAgencia",   "IdUsuario", "IdAcceso"};

// A property table: the location and the type are ids into the lookup tables.
SchemaTable Property(const std::string& table, const std::string& key) {
  std::vector<SchemaColumn> c = {Key(key)};
  for (const std::string& id : kPropertyIndexed) c.push_back(Long(id));
  c.push_back(Long("IdDestino"));
  c.push_back(Text("Categorias", 255));
  c.push_back(Money("Precio"));
  c.push_back(Real("Superficie"));
  AppendFeatures(c);
  std::vector<std::string> indexed = kPropertyIndexed;
  indexed.insert(indexed.end(), {"FechaAlta", "FechaActualizacion"});
  return {table, std::move(c), std::move(indexed)};
}

// The demand table keeps its location and property types as multi-valued text.
SchemaTable Demand() {
  std::vector<SchemaColumn> c = {Key("IdDemanda"), Long("IdCliente")};
  for (const char* n : {"Pais", "Provincia", "Poblacion", "Zona", "TipoInmueble"})
    c.push_back(Text(n, 255));
  for (const char* n : {"IdOperacion", "IdAliasInmueble", "IdCalefaccion", "IdAgencia", "IdUsuario",
                        "IdAcceso", "IdDestino"})
    c.push_back(Long(n));
  c.push_back(Text("Categorias", 255));
  c.push_back(Money("PrecioMinimo"));
  c.push_back(Money("PrecioMaximo"));
  c.push_back(Real("Superficie"));
  c.push_back(Real("SuperficieMaxima"));
  AppendFeatures(c);
  return {"Demanda",
          std::move(c),
          {"IdCliente", "IdOperacion", "IdAliasInmueble", "IdCalefaccion", "IdAgencia", "IdUsuario",
           "IdAcceso", "FechaAlta", "FechaActualizacion"}};
}

std::vector<SchemaTable> BuildTables() {
  std::vector<SchemaTable> t;
  t.push_back(Lookup("Pais", "IdPais", "Nombre"));
  t.push_back(Lookup("Provincia", "IdProvincia", "Nombre"));
  t.push_back({"PrPa", {Long("IdProvincia"), Long("IdPais")}, {"IdProvincia", "IdPais"}});
  t.push_back(Lookup("Poblacion", "IdPoblacion", "Nombre"));
  t.push_back({"PoPrPa",
               {Long("IdPoblacion"), Long("IdProvincia"), Long("IdPais")},
               {"IdPoblacion", "IdProvincia", "IdPais"}});
  t.push_back(Lookup("Zona", "IdZona", "Nombre"));
  t.push_back({"BZona",
               {Long("IdZona"), Long("IdPais"), Long("IdProvincia"), Long("IdPoblacion")},
               {"IdZona", "IdPais", "IdProvincia", "IdPoblacion"}});
  t.push_back(Lookup("TipoInmueble", "IdTipoInmueble", "Nombre"));
  t.push_back(Lookup("Operacion", "IdOperacion", "Operacion"));
  t.push_back({"AliasInmueble",
               {Key("IdAliasInmueble"), Text("Inmueble", 50), YesNo("Activo")},
               {"Inmueble"}});
  t.push_back(Lookup("Inmueble", "IdInmueble", "Inmueble"));
  t.push_back(Lookup("Calefaccion", "IdCalefaccion", "Calefaccion"));
  t.push_back(Lookup("Acceso", "IdAcceso", "Acceso"));
  t.push_back(Lookup("TipoCategoria", "IdTipoCategoria", "Nombre"));
  t.push_back(Lookup("TipoCategoriaI", "IdTipoCategoriaI", "Nombre"));
  t.push_back({"Usuario",
               {Key("IdUsuario"), Text("Nombre", 50), Long("IdPoblacion"), Long("IdProvincia"),
                Long("IdPais")},
               {"Nombre"}});

  struct ContactNames {
    const char *table, *key, *phones, *mails;
  };
  for (const ContactNames& n :
       {ContactNames{"Cliente", "IdCliente", "TfnoCli", "CorreoECli"},
        {"Agencia", "IdAgencia", "TfnoAgencia", "CorreoEAgencia"},
        {"Abogado", "IdAbogado", "TfnoAbogado", "CorreoEAbogado"},
        {"ClienteContrario", "IdClienteContrario", "TfnoCliCont", "CorreoECliCont"},
        {"Procurador", "IdProcurador", "TfnoProcurador", "CorreoEProcurador"},
        {"ClienteContArch", "IdClienteContArch", "TfnoCliContArch", "CorreoECliContArch"}}) {
    t.push_back(Contact(n.table, n.key));
    t.push_back(ContactDetail(n.phones, n.key, 30));
    t.push_back(ContactDetail(n.mails, n.key, 100));
  }

  t.push_back(Property("IPropio", "IdIPropio"));
  t.push_back(Property("IAjeno", "IdIAjeno"));
  t.push_back(Property("IArchivado", "IdIArchivado"));
  t.push_back(Property("IVendido", "IdIVendido"));
  t.push_back(Demand());
  return t;
}

}  // namespace

const SchemaColumn* SchemaTable::Find(std::string_view column) const {
  for (const SchemaColumn& c : columns)
    if (c.name == column) return &c;
  return nullptr;
}

const std::vector<SchemaTable>& SchemaTables() {
  static const std::vector<SchemaTable> tables = BuildTables();
  return tables;
}

const SchemaTable* FindTable(std::string_view name) {
  for (const SchemaTable& t : SchemaTables())
    if (t.name == name) return &t;
  return nullptr;
}

std::string ColumnDefinition(const SchemaColumn& c) {
  std::string sql = "\"" + c.name + "\" " + c.type;
  if (c.auto_key) sql += " PRIMARY KEY AUTOINCREMENT";
  if (c.not_null) sql += " NOT NULL DEFAULT 0";
  // Dates are stored as ISO text only, so the engine compares them bare and uses their
  // indexes; a value in any other form is refused instead of silently slowing every query.
  if (c.type == "DATETIME") sql += " " + sqlite::IsoDateCheck(c.name);
  return sql;
}

std::vector<std::string> TableStatements(const SchemaTable& t) {
  std::string sql = "CREATE TABLE \"" + t.name + "\" (";
  for (std::size_t i = 0; i < t.columns.size(); ++i)
    sql += (i ? ", " : "") + ColumnDefinition(t.columns[i]);
  std::vector<std::string> out = {sql + ")"};
  for (const std::string& column : t.indexed)
    out.push_back("CREATE INDEX \"" + t.name + "_" + column + "\" ON \"" + t.name + "\" (\"" +
                  column + "\")");
  return out;
}

std::vector<std::string> SchemaStatements() {
  std::vector<std::string> out;
  for (const SchemaTable& t : SchemaTables())
    for (std::string& sql : TableStatements(t)) out.push_back(std::move(sql));
  return out;
}

void CreateSchema(const std::function<void(const std::string&)>& execute) {
  for (const std::string& statement : SchemaStatements()) execute(statement);
}

}  // namespace cp::sample
