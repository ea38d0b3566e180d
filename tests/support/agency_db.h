#pragma once
// A scratch agency database for tests: a plain SQLite file with the schema and the rows a
// suite needs, named after the suite and the process so parallel runs do not collide.
#include <unistd.h>

#include <filesystem>
#include <string>

#include "cli/schema.h"
#include "platform/sqlite/native.h"

namespace cp::testing {

// Creates the file afresh (schema, then rows) and returns its path; the caller removes it.
inline std::string CreateAgencyDb(const std::string& tag, const std::string& rows) {
  const std::string path = (std::filesystem::temp_directory_path() /
                            (tag + "_" + std::to_string(::getpid()) + ".sqlite"))
                               .string();
  std::filesystem::remove(path);
  sqlite::NativeDatabase db(path, sqlite::NativeDatabase::Mode::CreateIfMissing);
  cli::CreateSchema([&](const std::string& sql) { db.ExecuteNative(sql); });
  if (!rows.empty()) db.ExecuteNative(rows);
  return path;
}

}  // namespace cp::testing
