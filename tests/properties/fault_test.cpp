// Faults from outside the component met through the host's calls: a log that cannot be
// written, and a database file that is missing, damaged, locked by another writer or of an
// older schema. Each ends the same way: a Spanish message through the central handler, an
// entry in the log (or word that the log could not be written), no exception reaching the
// host, and the same call working again once the cause is gone.
#include <unistd.h>

#include <gmock/gmock.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <optional>

#include "platform/sqlite/connection.h"
#include "tests/properties/property_fixture.h"

namespace cp::testing {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::StartsWith;

using FaultTest = PropertyTest;

TEST_F(FaultTest, EachFaultIsReportedLoggedSurvivedAndOverWithItsCause) {
  ScratchDir dir;
  const std::string db = dir.File("agencia.sqlite"), blocker = dir.File("fichero"),
                    full = dir.File("lleno");
  std::ofstream(blocker) << "x";
  ASSERT_EQ(access("/dev/full", W_OK), 0);
  fs::create_directory(full);
  fs::create_symlink("/dev/full", full + "/" + kErrorLogName);  // a log on a full disk
  const auto restore = [&] { fs::copy_file(path_, db, fs::copy_options::overwrite_existing); };
  const auto damage = [&](std::uintmax_t keep, const std::string& garbage) {
    fs::resize_file(db, keep);
    std::ofstream(db, std::ios::binary | std::ios::app) << garbage;
  };
  const auto exec = [&](const std::string& sql) { ScratchDb(db).Exec(sql); };
  const auto hideTable = [&] { exec("ALTER TABLE Calefaccion RENAME TO Calefaccion1"); };
  const std::string noTable =
      "El motor de base de datos no encuentra la tabla o consulta de entrada 'Calefaccion'.";
  // A writer's transaction on its own connection, and a short wait for it to end.
  std::optional<ScratchDb> writer;
  ProcessSlot<std::chrono::milliseconds>::Scoped wait(sqlite::BusyTimeoutSlot(),
                                                      std::chrono::milliseconds(20));

  // The host opens the file under its own trap, as on start-up, then crosses demand 1.
  const std::string kOpen = "AbrirBD de frmPrincipal", kFill = "RellenarDemanda de SeleccionInm";
  const auto open = [&] {
    return Atrapar(kOpen, [&] {
      sel_->setBD(dao::OpenDatabase(db));
      sel_->setPathDB(db);
    });
  };
  const auto cross = [&] { return Cross(1, "Inm. Propios", "Demandas"); };
  restore();
  ASSERT_TRUE(open());
  const std::string crossed = cross();
  ASSERT_NE(crossed, "");
  ASSERT_TRUE(messenger_->shown().empty()) << DescribeMessages(*messenger_);

  const struct {
    std::string name;
    bool atOpen;  // the fault shows when the file is opened, else on the open connection
    std::function<void()> cause, cure;
    std::string label;
    long number;
    std::string description;  // what it begins with
    std::string logBox;       // what the user is told when the log cannot be written
  } rows[] = {
      {"missing file", true, [&] { fs::remove(db); }, restore, kOpen, 3024,
       "No se encuentra el archivo '" + db + "'."},
      {"garbage", true, [&] { damage(0, std::string(8192, '\x5a')); }, restore, kOpen, 3343,
       "Formato de base de datos no reconocido '" + db + "'."},
      {"cut short", true, [&] { damage(fs::file_size(db) / 2, ""); }, restore, kOpen, 3343,
       "Formato de base de datos no reconocido '" + db + "'."},
      {"cut short while open", false, [&] { damage(fs::file_size(db) / 4, ""); }, restore,
       kFill, 3343, "Formato de base de datos no reconocido '" + db + "'."},
      {"busy", false, [&] { writer.emplace(db), writer->Exec("BEGIN EXCLUSIVE"); },
       [&] { writer.reset(); }, kFill, 3260,
       "No se pudo leer: la base de datos '" + db + "' está bloqueada por otro proceso."},
      {"no table", false, hideTable,
       [&] { exec("ALTER TABLE Calefaccion1 RENAME TO Calefaccion"); }, kFill, 3078, noTable},
      {"no column", false, [&] { exec("ALTER TABLE Demanda RENAME Huecos TO Huecos1"); },
       [&] { exec("ALTER TABLE Demanda RENAME Huecos1 TO Huecos"); }, kFill, 3265,
       "Elemento no encontrado en esta colección."},
      // The log's cure leaves the table missing: the same error must then reach the log.
      {"log folder is a file", false, [&] { sel_->setErrLogPath(blocker), hideTable(); },
       [&] { sel_->setErrLogPath(dir_); }, kFill, 3078, noTable,
       "Error al crear " + blocker + "/" + kErrorLogName},
      {"log disk full", false, [&] { sel_->setErrLogPath(full), hideTable(); },
       [&] { sel_->setErrLogPath(dir_); }, kFill, 3078, noTable,
       "Error al escribir en " + full + "/" + kErrorLogName},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    sel_->setBD(nullptr);
    restore();
    messenger_->ClearShown();
    const std::size_t logged = Log().size();
    // After a failed open the host does not cross: that would report the missing database.
    const auto host = [&] {
      if (!row.atOpen || open()) cross();
    };
    if (!row.atOpen) {
      ASSERT_TRUE(open());
    }
    row.cause();
    EXPECT_NO_THROW(host());

    // One fault may fail several procedures in turn: each reports it, and the log's failure
    // follows each report.
    const auto& shown = messenger_->shown();
    const std::size_t step = row.logBox.empty() ? 1 : 2, reports = shown.size() / step;
    ASSERT_GE(reports, 1u);
    ASSERT_EQ(shown.size() % step, 0u) << DescribeMessages(*messenger_);
    EXPECT_THAT(shown[0].text, StartsWith("Error en la rutina: " + row.label + "\r\n"));
    for (std::size_t i = 0; i < shown.size(); i += step) {
      EXPECT_THAT(shown[i].text, HasSubstr("\r\nTexto del error: " + row.description));
      EXPECT_THAT(shown[i].text,
                  HasSubstr("\r\nNúmero del error: " + std::to_string(row.number) + "\r\n"));
      if (step == 2) {
        EXPECT_EQ(shown[i + 1].text, row.logBox);
        EXPECT_EQ(shown[i + 1].flags, 0x10);
      }
    }
    const std::string entry =
        row.label + " [" + std::to_string(row.number) + "] " + row.description;
    if (row.logBox.empty()) {
      EXPECT_THAT(Log().substr(logged), HasSubstr(entry));
    } else {
      EXPECT_EQ(Log().size(), logged);
    }

    row.cure();
    messenger_->ClearShown();
    host();
    if (row.logBox.empty()) {
      EXPECT_EQ(sel_->SQLW(), crossed);
      EXPECT_TRUE(messenger_->shown().empty()) << DescribeMessages(*messenger_);
    } else {
      EXPECT_EQ(messenger_->shown().size(), reports) << DescribeMessages(*messenger_);
      EXPECT_THAT(Log().substr(logged), HasSubstr(entry));
    }
  }
}

}  // namespace
}  // namespace cp::testing
