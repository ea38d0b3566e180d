// The conditions and statements that the selection component writes, run on small tables
// with the component's column names; the expected ids are those Jet selects.
#include <gtest/gtest.h>

#include "tests/jetsql/semantics_database.h"

namespace cp::jetsql {
namespace {

using testing::MemoryDatabase;
using Ids = std::vector<long>;

struct Case {
  const char* condition;
  Ids expected;
};

// The host's query for an entity: SELECT <table>.* FROM <table> WHERE <condition>.
void ExpectSelected(MemoryDatabase& db, const std::string& table, const std::string& key,
                    const std::vector<Case>& cases) {
  for (const Case& c : cases) {
    EXPECT_EQ(db.Ids("SELECT " + table + "." + key + " FROM " + table + " WHERE " + c.condition +
                     " ORDER BY " + table + "." + key),
              c.expected)
        << "Jet: " << c.condition;
  }
}

class ComponentQueries : public ::testing::Test {
 protected:
  void SetUp() override {
    db_.Exec(
        "CREATE TABLE Cliente (IdCliente INTEGER PRIMARY KEY, Alias VARCHAR(50), "
        "Apellidos VARCHAR(50), FechaAlta DATETIME, Categorias TEXT, IdUsuario INTEGER);"
        "INSERT INTO Cliente VALUES"
        " (1, 'garcía', 'García López', '2024-03-01', 'Inversor; ', 3),"
        " (2, 'GARCIA', 'GARCIA', '2024-03-01 09:00:00', 'Inversor; Vip; ', 8),"
        " (3, 'garcia', 'Garcia', '2024-02-29 23:59:59', '', 5),"
        " (4, 'Ruiz', 'garciaz', '2024-05-01', NULL, NULL),"
        " (5, 'O''Brien|2', 'Pérez', NULL, 'vip; ', 3);"
        "CREATE TABLE TfnoCli (IdTfno INTEGER PRIMARY KEY, IdCliente INTEGER, Numero VARCHAR(20));"
        "INSERT INTO TfnoCli VALUES (1, 1, '91 555 12'), (2, 3, '555'), (3, 3, '666'),"
        " (4, 4, '777');"
        "CREATE TABLE Usuario (IdUsuario INTEGER PRIMARY KEY, Nombre VARCHAR(50),"
        " IdPoblacion INTEGER, IdProvincia INTEGER, IdPais INTEGER);"
        "INSERT INTO Usuario VALUES (3, 'Ana', 1, 2, 1), (8, 'ANABEL', NULL, NULL, NULL),"
        " (5, 'Juan', NULL, NULL, NULL);"
        "CREATE TABLE IPropio (IdIPropio INTEGER PRIMARY KEY, IdCliente INTEGER, Precio INTEGER,"
        " Superficie INTEGER, Huecos SMALLINT, Amueblado TINYINT, Transmitido TINYINT,"
        " Exclusividad BOOLEAN, FechaBaja DATETIME, IdDestino INTEGER, IdAcceso INTEGER,"
        " IdZona INTEGER, IdPais INTEGER, Categorias TEXT, Notas TEXT);"
        "INSERT INTO IPropio VALUES"
        " (1, 1, 150000, 90, 3, 1, 0, 1, '2026-11-15', 1, 2, 4, 1, 'Piso; Local; ', 'Luminoso'),"
        " (2, 2, 200000, 120, 2, 2, 2, 0, '2026-11-15 08:00:00', 3, 1, 9, 1, 'Local; ', NULL),"
        " (3, 4, NULL, NULL, NULL, 0, 1, -1, NULL, 2, 3, NULL, 2, 'Ático; Piso; ', 'lUMINOSO'),"
        " (4, NULL, 99999, 60, 5, NULL, NULL, NULL, '2026-11-16', 1, 1, 5, 1, '', 'oscuro');"
        "CREATE TABLE Demanda (IdDemanda INTEGER PRIMARY KEY, PrecioMinimo INTEGER,"
        " PrecioMaximo INTEGER, Pais TEXT, IdAliasInmueble INTEGER, IdCalefaccion INTEGER,"
        " IdOperacion INTEGER);"
        "INSERT INTO Demanda VALUES (1, 100000, 200000, 'España; ', 1, 2, NULL),"
        " (2, NULL, 160000, 'FRANCIA; España; ', NULL, NULL, 1),"
        " (3, 140000, NULL, '', 2, 3, 1), (4, NULL, NULL, NULL, NULL, NULL, NULL),"
        " (5, 160000, 300000, 'españa; ', NULL, NULL, NULL), (6, NULL, 140000, NULL, NULL, NULL, NULL),"
        " (7, 150000, 150000, 'Portugal; ', NULL, NULL, NULL);");
  }
  MemoryDatabase db_;
};

TEST_F(ComponentQueries, ContactConditions) {
  ExpectSelected(db_, "Cliente", "IdCliente",
                 {
                     // The contact example: from 1 March 2024, surname beginning with garcia.
                     // 'García' has an accent the pattern lacks; 09:00 on the day is inside.
                     {"( Cliente.FechaAlta >= #03/01/24# )  AND Cliente.Apellidos LIKE 'garcia*'",
                      {2, 4}},
                     {" ( Cliente.FechaAlta <= #02/29/24# ) ", {}},
                     {" ( Cliente.FechaAlta >= #02/29/24# )  AND (Cliente.FechaAlta <= #03/01/24# ) ",
                      {1, 3}},
                     {"Cliente.IdCliente In (SELECT IdCliente FROM TfnoCli WHERE Numero LIKE '*555*')",
                      {1, 3}},
                     {"Cliente.IdCliente In (SELECT IdCliente FROM TfnoCli Where Numero LIKE '555*')",
                      {3}},
                     {"Cliente.Alias LIKE '*' + 'O''Brien' + chr(124) + '2' + '*'", {5}},
                     {"Cliente.Alias LIKE 'o''brien|2'", {5}},
                     {"(Cliente.IdUsuario = 3 OR  (Cliente.IdUsuario = 8) )", {1, 2, 5}},
                     {"(Cliente.IdUsuario = -1)", {}},
                     // Any of the categories, then all of them, then the empty list.
                     {"(( (Cliente.Categorias = 'vip; ')  OR (Cliente.Categorias LIKE 'vip;*')  OR "
                      "(Cliente.Categorias LIKE '*; vip; ')  OR (Cliente.Categorias LIKE '*; vip;*') ))",
                      {2, 5}},
                     {"(( (Cliente.Categorias = 'Inversor; ')  OR (Cliente.Categorias LIKE 'Inversor;*')  "
                      "OR (Cliente.Categorias LIKE '*; Inversor; ')  OR (Cliente.Categorias LIKE "
                      "'*; Inversor;*') ) AND ( (Cliente.Categorias = 'Vip; ')  OR "
                      "(Cliente.Categorias LIKE 'Vip;*')  OR (Cliente.Categorias LIKE '*; Vip; ')  OR "
                      "(Cliente.Categorias LIKE '*; Vip;*') ))",
                      {2}},
                     {" (Cliente.Categorias='')", {3}},
                 });
  // The word search through the users table: the ids of names that match.
  EXPECT_EQ(db_.Ids("SELECT IdUsuario FROM Usuario WHERE Nombre LIKE 'ana*' ORDER BY IdUsuario"),
            (Ids{3, 8}));
}

TEST_F(ComponentQueries, PropertyConditions) {
  ExpectSelected(db_, "IPropio", "IdIPropio",
                 {
                     {"(( (IPropio.Categorias = 'Piso; ')  OR (IPropio.Categorias LIKE 'Piso;*')  OR "
                      "(IPropio.Categorias LIKE '*; Piso; ')  OR (IPropio.Categorias LIKE '*; Piso;*') )"
                      " OR ( (IPropio.Categorias = 'Local; ')  OR (IPropio.Categorias LIKE 'Local;*')  "
                      "OR (IPropio.Categorias LIKE '*; Local; ')  OR (IPropio.Categorias LIKE "
                      "'*; Local;*') ))",
                      {1, 2, 3}},
                     {"( (IPropio.IdZona Is Null)  OR (IPropio.IdZona = 4)  OR (IPropio.IdZona = 9) )",
                      {1, 2, 3}},
                     {" ( (IPropio.Huecos>=3) OR IsNull(IPropio.Huecos)) ", {1, 3, 4}},
                     {" ((IPropio.Precio BETWEEN 100000 AND 150000 OR IsNull(IPropio.Precio)) ) ",
                      {1, 3}},
                     {" ((IPropio.Superficie <= 90 OR IsNull(IPropio.Superficie)) ) ", {1, 3, 4}},
                     {"( (IPropio.Amueblado = 1) OR (IPropio.Amueblado=2)) ", {1, 2}},
                     {"( (IPropio.Amueblado = 0) OR (IPropio.Amueblado=2)) ", {2, 3}},
                     {" (IPropio.Transmitido = 1) ", {3}},
                     {" (IPropio.Exclusividad = TRUE) ", {1, 3}},
                     {" (IPropio.Exclusividad = FALSE) ", {2}},
                     // Expired: the leaving date has passed or is today (15 November 2026).
                     {" (IPropio.FechaBaja <= #11/15/26# ) ", {1}},
                     {" (IPropio.FechaBaja > #11/15/26# ) ", {2, 4}},
                     {" ( IPropio.IdDestino IN (1, 3) AND (IPropio.IdAcceso >1)) ", {1}},
                     {" ( IPropio.IdDestino NOT IN (1, 3) AND (IPropio.IdAcceso >1)) ", {3}},
                     {"IPropio.IdIPropio>=2", {2, 3, 4}},
                     {"IPropio.Notas LIKE '*luminoso*'", {1, 3}},
                 });
  // The host joins the owner so that "Propietario" can be searched.
  EXPECT_EQ(db_.Ids("SELECT IPropio.IdIPropio FROM IPropio LEFT JOIN Cliente ON "
                    "Cliente.IdCliente = IPropio.IdCliente WHERE Cliente.Alias LIKE 'garcia*' "
                    "ORDER BY IPropio.IdIPropio"),
            (Ids{2}));
  EXPECT_EQ(db_.Ids("SELECT IPropio.IdIPropio FROM IPropio LEFT JOIN Cliente ON "
                    "Cliente.IdCliente = IPropio.IdCliente WHERE Cliente.IdCliente Is Null"),
            (Ids{4}));
}

TEST_F(ComponentQueries, DemandConditions) {
  ExpectSelected(db_, "Demanda", "IdDemanda",
                 {
                     // A price of 150000 inside each demand's range, a missing bound open.
                     {" ( (150000 BETWEEN Demanda.PrecioMinimo AND Demanda.PrecioMaximo) OR "
                      "(IsNull(Demanda.PrecioMinimo) AND (Demanda.PrecioMaximo>= 150000)) OR "
                      "(IsNull(Demanda.PrecioMaximo) AND (Demanda.PrecioMinimo<= 150000)) OR "
                      "(IsNull(Demanda.PrecioMinimo) AND IsNull(Demanda.PrecioMaximo)) )",
                      {1, 2, 3, 4, 7}},
                     {"(150000 BETWEEN Demanda.PrecioMinimo AND Demanda.PrecioMaximo)", {1, 7}},
                     {"((( (Demanda.Pais = 'España; ')  OR (Demanda.Pais LIKE 'España;*')  OR "
                      "(Demanda.Pais LIKE '*; España; ')  OR (Demanda.Pais LIKE '*; España;*') )) OR "
                      "(Demanda.Pais = ''))",
                      {1, 2, 3, 5}},
                     {"Demanda.IdDemanda=-1", {}},
                 });
}

}  // namespace
}  // namespace cp::jetsql
