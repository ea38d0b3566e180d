// The same ratios on a PostgreSQL server: the translated Jet condition (pg_temp collation and
// functions) against the same filter written natively, timed alternately in the same run.
// Runs when CP_BENCH_PG names a server database (a connection text); it gets the demo data
// once (the demo data, 20,000 own properties) if it has no tables yet.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <stdexcept>
#include <string>

#include "bench/compare.h"
#include "platform/dao/connect.h"
#include "platform/dao/database.h"
#include "platform/postgres/session.h"
#include "sample/sample_database.h"

namespace {


const std::string& ServerDb() {
  static const std::string connection = [] {
    std::string c = std::getenv("CP_BENCH_PG");
    cp::postgres::Session probe(c, cp::postgres::Session::Purpose::Tool);
    if (probe.Exec("SELECT to_regclass('ipropio')").IsNull(0, 0))
      cp::sample::CreateSampleDatabase(c, cp::sample::DemoOptions{20000, cp::sample::kDemoSeed});
    return c;
  }();
  return connection;
}

long CountJet(cp::dao::Database& db, const std::string& sql) {
  cp::dao::Recordset rs = db.OpenRecordset(sql, cp::dao::dbOpenForwardOnly);
  long n = 0;
  for (; !rs.Eof(); rs.MoveNext()) ++n;
  return n;
}

void CompareOnServer(benchmark::State& state, const std::string& jet, const std::string& native) {
  auto jetDb = cp::dao::OpenDatabase(ServerDb());
  cp::postgres::Session nativeDb(ServerDb(), cp::postgres::Session::Purpose::Tool);
  Compare(state, [&] { return CountJet(*jetDb, jet); }, [&] { return nativeDb.Exec(native).Rows(); });
}

// As BM_CrossConditionVsNative: numbers and ids only, where Jet and the server agree.
void CrossCondition(benchmark::State& state) {
  const std::string where =
      " ( (IPropio.IdPais Is Null)  OR (IPropio.IdPais = 1) ) AND  ((IPropio.Precio BETWEEN "
      "100000 AND 400000 OR IsNull(IPropio.Precio)) )  AND  ( (IPropio.Huecos>=2) OR "
      "IsNull(IPropio.Huecos))  AND ( (IPropio.Amueblado = 1) OR (IPropio.Amueblado=2)) ";
  CompareOnServer(state,
          "SELECT IPropio.* FROM IPropio LEFT JOIN Cliente ON Cliente.IdCliente = "
          "IPropio.IdCliente WHERE " + where,
          "SELECT IPropio.* FROM IPropio LEFT JOIN Cliente ON Cliente.IdCliente = "
          "IPropio.IdCliente WHERE (IPropio.IdPais IS NULL OR IPropio.IdPais = 1) AND "
          "(IPropio.Precio BETWEEN 100000 AND 400000 OR IPropio.Precio IS NULL) AND "
          "(IPropio.Huecos >= 2 OR IPropio.Huecos IS NULL) AND (IPropio.Amueblado IN (1, 2))");
}

// As BM_MultiValuedLikeVsNative: Jet LIKE with folding against the server's ILIKE.
void MultiValuedLike(benchmark::State& state) {
  CompareOnServer(state,
          "SELECT IdDemanda FROM Demanda WHERE (( (Demanda.TipoInmueble = 'Piso; ')  OR "
          "(Demanda.TipoInmueble LIKE 'Piso;*')  OR (Demanda.TipoInmueble LIKE '*; Piso; ')  OR "
          "(Demanda.TipoInmueble LIKE '*; Piso;*') ))",
          "SELECT IdDemanda FROM Demanda WHERE TipoInmueble ILIKE 'Piso; ' OR TipoInmueble "
          "ILIKE 'Piso;%' OR TipoInmueble ILIKE '%; Piso; ' OR TipoInmueble ILIKE '%; Piso;%'");
}

const bool registered = [] {
  if (!std::getenv("CP_BENCH_PG")) {
    std::fprintf(stderr, "PostgreSQL benchmarks skipped: set CP_BENCH_PG to a server database.\n");
    return false;
  }
  benchmark::RegisterBenchmark("BM_Postgres_CrossConditionVsNative", CrossCondition)
      ->UseManualTime()->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark("BM_Postgres_MultiValuedLikeVsNative", MultiValuedLike)
      ->UseManualTime()->Unit(benchmark::kMillisecond);
  return true;
}();

}  // namespace
