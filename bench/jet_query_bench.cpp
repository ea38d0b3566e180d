// What Jet semantics cost on SQLite: the same question asked through the Jet translation
// (case-insensitive collation, Jet LIKE, date wrapping) and asked natively, on one demo
// database, timed alternately in the same loop so both see the same machine state.
#include <benchmark/benchmark.h>

#include <chrono>
#include <memory>
#include <string>

#include "bench/compare.h"
#include "bench/demo_file.h"
#include "platform/dao/connect.h"
#include "platform/dao/database.h"
#include "platform/jetsql/translator.h"
#include "platform/sqlite/native.h"

namespace {


// A demo database of 20,000 own properties, made once per run.
const std::string& DemoDb() {
  static const DemoFile demo("cp_bench", 20000);
  return demo.path();
}

long CountJet(cp::dao::Database& db, const std::string& sql) {
  cp::dao::Recordset rs = db.OpenRecordset(sql, cp::dao::dbOpenForwardOnly);
  long n = 0;
  for (; !rs.Eof(); rs.MoveNext()) ++n;
  return n;
}

long CountNative(cp::sqlite::NativeDatabase& db, const std::string& sql) {
  auto statement = db.Prepare(sql);
  long n = 0;
  while (statement.Step()) ++n;
  return n;
}


// A demand's cross-match condition over own properties, against the same filter written
// for SQLite by hand (numbers and ids only, where Jet and SQLite agree).
void BM_CrossConditionVsNative(benchmark::State& state) {
  auto jetDb = cp::dao::OpenDatabase(DemoDb());
  cp::sqlite::NativeDatabase nativeDb(DemoDb());
  const std::string where =
      " ( (IPropio.IdPais Is Null)  OR (IPropio.IdPais = 1) ) AND  ((IPropio.Precio BETWEEN "
      "100000 AND 400000 OR IsNull(IPropio.Precio)) )  AND  ( (IPropio.Huecos>=2) OR "
      "IsNull(IPropio.Huecos))  AND ( (IPropio.Amueblado = 1) OR (IPropio.Amueblado=2)) ";
  const std::string jet = "SELECT IPropio.* FROM IPropio LEFT JOIN Cliente ON "
                          "Cliente.IdCliente = IPropio.IdCliente WHERE " + where;
  const std::string native =
      "SELECT IPropio.* FROM IPropio LEFT JOIN Cliente ON Cliente.IdCliente = "
      "IPropio.IdCliente WHERE (IPropio.IdPais IS NULL OR IPropio.IdPais = 1) AND "
      "(IPropio.Precio BETWEEN 100000 AND 400000 OR IPropio.Precio IS NULL) AND "
      "(IPropio.Huecos >= 2 OR IPropio.Huecos IS NULL) AND (IPropio.Amueblado IN (1, 2))";
  Compare(state, [&] { return CountJet(*jetDb, jet); },
          [&] { return CountNative(nativeDb, native); });
}
BENCHMARK(BM_CrossConditionVsNative)->UseManualTime()->Unit(benchmark::kMillisecond);

// Multi-valued text search with Jet wildcards and case folding, against SQLite's own LIKE
// (ASCII-only case folding, "%" wildcards), which is what a native query would use.
void BM_MultiValuedLikeVsNative(benchmark::State& state) {
  auto jetDb = cp::dao::OpenDatabase(DemoDb());
  cp::sqlite::NativeDatabase nativeDb(DemoDb());
  const std::string jet =
      "SELECT IdDemanda FROM Demanda WHERE (( (Demanda.TipoInmueble = 'Piso; ')  OR "
      "(Demanda.TipoInmueble LIKE 'Piso;*')  OR (Demanda.TipoInmueble LIKE '*; Piso; ')  OR "
      "(Demanda.TipoInmueble LIKE '*; Piso;*') ))";
  const std::string native =
      "SELECT IdDemanda FROM Demanda WHERE TipoInmueble = 'Piso; ' OR TipoInmueble LIKE "
      "'Piso;%' OR TipoInmueble LIKE '%; Piso; ' OR TipoInmueble LIKE '%; Piso;%'";
  Compare(state, [&] { return CountJet(*jetDb, jet); },
          [&] { return CountNative(nativeDb, native); });
}
BENCHMARK(BM_MultiValuedLikeVsNative)->UseManualTime()->Unit(benchmark::kMillisecond);

// One Jet LIKE against SQLite's own LIKE on the same column with the same pattern.
void BM_LikeVsSqliteLike(benchmark::State& state) {
  auto jetDb = cp::dao::OpenDatabase(DemoDb());
  cp::sqlite::NativeDatabase nativeDb(DemoDb());
  Compare(state,
          [&] { return CountJet(*jetDb, "SELECT IdIPropio FROM IPropio WHERE Categorias LIKE '*lujo*'"); },
          [&] {
            return CountNative(nativeDb,
                               "SELECT IdIPropio FROM IPropio WHERE Categorias LIKE '%lujo%'");
          });
}
BENCHMARK(BM_LikeVsSqliteLike)->UseManualTime()->Unit(benchmark::kMillisecond);

// Equality under Jet's case-insensitive collation against SQLite's plain byte equality.
void BM_CollatedEqualsVsPlain(benchmark::State& state) {
  auto jetDb = cp::dao::OpenDatabase(DemoDb());
  cp::sqlite::NativeDatabase nativeDb(DemoDb());
  Compare(state,
          [&] { return CountJet(*jetDb, "SELECT IdDemanda FROM Demanda WHERE Poblacion = 'valència; '"); },
          [&] {
            return CountNative(nativeDb,
                               "SELECT IdDemanda FROM Demanda WHERE Poblacion = 'València; '");
          });
}
BENCHMARK(BM_CollatedEqualsVsPlain)->UseManualTime()->Unit(benchmark::kMillisecond);

// Translating a long condition, against preparing the translated SQL in SQLite.
void BM_TranslateVsPrepare(benchmark::State& state) {
  cp::sqlite::NativeDatabase nativeDb(DemoDb());
  const std::string jet =
      "SELECT IPropio.* FROM IPropio WHERE ( (IPropio.IdZona Is Null)  OR (IPropio.IdZona = 4) "
      " OR (IPropio.IdZona = 9) ) AND (( (IPropio.Categorias = 'Lujo; ')  OR "
      "(IPropio.Categorias LIKE 'Lujo;*')  OR (IPropio.Categorias LIKE '*; Lujo; ')  OR "
      "(IPropio.Categorias LIKE '*; Lujo;*') )) AND ( IPropio.FechaAlta >= #03/01/24# ) ";
  const std::string translated =
      cp::jetsql::TranslateStatement(jet, cp::jetsql::Dialect::Sqlite);
  Compare(state,
          [&] { return cp::jetsql::TranslateStatement(jet, cp::jetsql::Dialect::Sqlite).size(); },
          [&] { return nativeDb.Prepare(translated).ColumnCount(); });
}
BENCHMARK(BM_TranslateVsPrepare)->UseManualTime()->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
