#include "sample/sample_database.h"

#include <filesystem>

#include "platform/core/error.h"
#include "platform/postgres/session.h"
#include "platform/sqlite/native.h"
#include "sample/schema.h"
#include "sample/server_database.h"
#include "sample/sqlite_sink.h"

namespace cp::sample {

void CreateSampleDatabase(const std::string& path, const std::optional<DemoOptions>& demo) {
  if (postgres::IsServerConnection(path)) return CreateServerSampleDatabase(path, demo);
  namespace fs = std::filesystem;
  std::error_code ec;
  if (fs::exists(path, ec) || fs::is_symlink(path, ec))
    throw Error(err::kFileAlreadyExists, "El fichero '" + path + "' ya existe.");
  try {
    sqlite::NativeDatabase db(path, sqlite::NativeDatabase::Mode::CreateIfMissing);
    sqlite::Transaction transaction(db);
    CreateSchema([&](const std::string& sql) { db.ExecuteNative(sql); });
    if (demo) {
      SqliteSink sink(db);
      GenerateDemoData(sink, *demo);
    }
    // Without statistics SQLite takes an index on a column of a few values over a scan of
    // the table, and a selection gets several times slower.
    db.ExecuteNative("ANALYZE");
    transaction.Commit();
  } catch (const Error&) {
    // The path did not exist before, so whatever is there now is our own half-made file.
    fs::remove(path, ec);
    throw;
  }
}

}  // namespace cp::sample
