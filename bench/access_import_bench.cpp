// The Access import on the agency fixture: rows per second written into a new SQLite file,
// against reading the same rows with libmdb alone (every column bound, as its own tools read).
#include <glib.h>  // before libmdb, which includes it inside extern "C"
#include <mdbtools.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "bench/compare.h"
#include "sample/access_import.h"

namespace {

const std::string kFixture = std::string(CP_SHARED_DIR) + "/fixtures/agencia.mdb";

long ReadWithLibmdb() {
  MdbHandle* mdb = mdb_open(kFixture.c_str(), MDB_NOFLAGS);
  mdb_set_date_fmt(mdb, "%Y-%m-%d %H:%M:%S");
  mdb_read_catalog(mdb, MDB_TABLE);
  long rows = 0;
  std::vector<std::vector<char>> buffers;
  std::vector<int> lengths(MDB_MAX_COLS);
  for (unsigned i = 0; i < mdb->num_catalog; ++i) {
    auto* entry = static_cast<MdbCatalogEntry*>(g_ptr_array_index(mdb->catalog, i));
    if (entry->object_type != MDB_TABLE || !mdb_is_user_table(entry)) continue;
    MdbTableDef* t = mdb_read_table(entry);
    mdb_read_columns(t);
    mdb_rewind_table(t);
    buffers.assign(t->num_cols, std::vector<char>(MDB_BIND_SIZE));
    for (unsigned c = 0; c < t->num_cols; ++c)
      mdb_bind_column(t, static_cast<int>(c) + 1, buffers[c].data(), &lengths[c]);
    while (mdb_fetch_row(t)) ++rows;
    mdb_free_tabledef(t);
  }
  mdb_close(mdb);
  return rows;
}

void BM_AccessImport(benchmark::State& state) {
  const std::string target =
      (std::filesystem::temp_directory_path() / ("cp_bench_import_" + std::to_string(getpid()) + ".db"))
          .string();
  long rows = 0;
  Compare(
      state,
      [&] {
        rows = 0;
        for (const auto& t : cp::sample::ImportAccess(kFixture, target, {true, {}}).tables) rows += t.rows;
        return rows;
      },
      [] { return ReadWithLibmdb(); });
  state.counters["rows_per_s"] = benchmark::Counter(static_cast<double>(rows) * state.iterations(),
                                                    benchmark::Counter::kIsRate);
  std::filesystem::remove(target);
}
BENCHMARK(BM_AccessImport)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
