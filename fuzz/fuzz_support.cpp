#include "fuzz/fuzz_support.h"

#include <sqlite3.h>
#include <stdlib.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>

#include "common/error_log.h"
#include "common/host_forms.h"
#include "common/messenger.h"
#include "common/modal.h"
#include "common/shared_state.h"
#include "platform/core/clock.h"
#include "platform/core/error.h"
#include "platform/dao/connect.h"
#include "platform/jetsql/parser.h"
#include "sample/sample_database.h"

namespace cp::fuzz {
namespace {

// Run by SQLite on every connection it opens. The process owns its database alone, so the
// connection takes its lock once and keeps it, instead of taking and leaving it around every
// statement and checking the file again each time: those system calls cost more than the
// statements of a fuzz input.
int HoldTheLock(sqlite3* db, char** /*error*/, const sqlite3_api_routines* /*api*/) {
  return sqlite3_exec(db, "PRAGMA locking_mode = EXCLUSIVE", nullptr, nullptr, nullptr);
}

}  // namespace

void Breach(std::string_view what, std::string_view detail) {
  // Written whole: the detail may hold NULs.
  std::fputs("\n*** ", stderr);
  std::fwrite(what.data(), 1, what.size(), stderr);
  std::fputs("\n*** ", stderr);
  std::fwrite(detail.data(), 1, detail.size(), stderr);
  std::fputs("\n", stderr);
  std::abort();
}

void ExpectJetCondition(const std::string& condition, std::string_view where) {
  if (condition.empty()) return;
  try {
    jetsql::ParseCondition(condition);
  } catch (const Error& e) {
    Breach(std::string(where) + ": the condition is not Jet (" + std::to_string(e.number()) +
               " " + e.description() + ")",
           condition);
  }
}

FuzzHost& FuzzHost::Get() {
  static FuzzHost* host = new FuzzHost();  // kept to the end: the component's slots hold it
  return *host;
}

FuzzHost::FuzzHost() : messenger_(std::make_shared<ScriptedMessenger>()) {
  char pattern[] = "/tmp/cp-fuzz-XXXXXX";
  if (!mkdtemp(pattern)) Breach("cannot create the host's folder", pattern);
  folder_ = pattern;
  // Millions of handled errors would fill a real log: the handler writes through to nothing.
  if (::symlink("/dev/null", (folder_ + "/" + kErrorLogName).c_str()) != 0)
    Breach("cannot point the error log at /dev/null", folder_);
  setErrLogPath(folder_);
  SetMessenger(messenger_);
  SetHostForms(nullptr);
  setgModalAbierto(false);
  SetFixedNow(MakeDate(2026, 11, 15, 10, 30, 0));

  databasePath_ = folder_ + "/agencia.db";
  sample::CreateSampleDatabase(databasePath_, sample::DemoOptions{.properties = 40});
  if (sqlite3_auto_extension(reinterpret_cast<void (*)()>(&HoldTheLock)) != SQLITE_OK)
    Breach("cannot have SQLite hold the database's lock", databasePath_);
  setBD(dao::OpenDatabase(databasePath_));
  setPathDB(databasePath_);
  static const std::string folder = folder_;
  std::atexit([] {
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
  });
}

std::unique_ptr<CSeleccion> FuzzHost::NewSelection() const {
  auto selection = std::make_unique<CSeleccion>();
  selection->setBD(BD());
  selection->setPathDB(databasePath_);
  return selection;
}

}  // namespace cp::fuzz
