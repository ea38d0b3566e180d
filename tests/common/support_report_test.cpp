// The support report that a Yes to the error box sends: the archive beside the log, and the
// message handed to the mail client (a fake xdg-email first on PATH that records its
// arguments), or, when that cannot be done, the user told where the archive is.
#include <chrono>
#include <stdexcept>

#include "common/mail_client.h"
#include "tests/common/common_fixture.h"
#include "tests/support/zip_entries.h"

namespace cp::testing {
namespace {

// Splits the NUL-separated arguments that the fake tool wrote.
std::vector<std::string> RecordedArguments(const std::string& file) {
  std::vector<std::string> args;
  const std::string all = ReadFile(file);
  std::size_t start = 0;
  for (std::size_t end; (end = all.find('\0', start)) != std::string::npos; start = end + 1)
    args.push_back(all.substr(start, end - start));
  return args;
}

// Notes whether the report-sent flag was already up when the message came, then fails.
class ThrowingMailClient : public MailClient {
 public:
  bool Compose(const MailMessage&) override {
    flag_was_up = ReportSent();
    throw std::runtime_error("sin correo");
  }
  bool flag_was_up = false;
};

class SupportReportTest : public CommonTest {
 protected:
  void SetUp() override {
    CommonTest::SetUp();
    if (const char* path = getenv("PATH")) saved_path_ = path;
  }
  void TearDown() override {
    setenv("PATH", saved_path_.c_str(), 1);
    setSupportAddress("");
    SetMailClient(nullptr);
    CommonTest::TearDown();
  }
  std::string saved_path_;
};

TEST_F(SupportReportTest, YesBuildsTheArchiveAndHandsItToTheMailClientOrSaysWhereItIs) {
  setProgramTitle("Gestión Inmobiliaria");
  setVersionPrograma("4.2.17");
  enum Client { kFake, kNone, kThrows };
  const struct {
    std::string name;
    Client client;
    std::string script_end;  // what the fake does after recording its arguments
    std::string address;
    bool log_folder_exists;
    bool name_taken;         // an archive of that name is already there
    bool mailed;             // the client took the message: nothing more is shown
    bool built;              // false: the user is told where the log is
  } rows[] = {
      {"client takes it", kFake, "exit 0", "soporte@norvak.es", true, false, true, true},
      {"client fails", kFake, "exit 4", "soporte@norvak.es", true, false, false, true},
      {"client stays open", kFake, "exec sleep 8 >/dev/null 2>&1", "soporte@norvak.es", true,
       false, true, true},
      {"no client on PATH", kNone, "", "soporte@norvak.es", true, false, false, true},
      {"client throws", kThrows, "", "soporte@norvak.es", true, false, false, true},
      {"no address", kFake, "exit 0", "", true, true, false, true},
      {"log folder missing", kFake, "exit 0", "soporte@norvak.es", false, false, false, false},
  };
  // Quotes, a dollar and a semicolon reach the tool as they are: no shell stands between.
  const Error error(3021, "No hay registro activo; 'Zona' \"$HOME\"");
  const std::string label = "cmdAceptar_Click en frmSeleccion";
  int n = 0;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const std::string folder = dir_ + "/" + std::to_string(++n);
    const std::string tools = folder + "-bin", record = folder + "-args";
    std::filesystem::create_directory(tools);
    if (row.log_folder_exists) std::filesystem::create_directory(folder);
    setErrLogPath(folder);
    setSupportAddress(row.address);
    setReportSent(false);
    auto throwing = std::make_shared<ThrowingMailClient>();
    if (row.client == kThrows) {
      SetMailClient(throwing);
    } else {
      // A tool that stays open is waited for a second; the others end well before ten.
      const bool stays_open = row.script_end.starts_with("exec sleep");
      SetMailClient(std::make_shared<XdgEmailClient>(std::chrono::seconds(stays_open ? 1 : 10)));
    }
    if (row.client == kFake) {
      std::ofstream(tools + "/xdg-email") << "#!/bin/sh\nprintf '%s\\0' \"$@\" > '" << record
                                         << "'\n" << row.script_end << "\n";
      std::filesystem::permissions(tools + "/xdg-email", std::filesystem::perms::owner_all);
    }
    // The fake's shell needs the system folders after it; without a fake, not even those, so
    // that a real xdg-email on this machine stays out.
    setenv("PATH", (row.client == kFake ? tools + ":/usr/bin:/bin" : tools).c_str(), 1);
    const std::string archive = folder + "/Incidencia-20240305-090702" +
                                (row.name_taken ? "-2" : "") + ".zip";
    if (row.name_taken) std::ofstream(folder + "/Incidencia-20240305-090702.zip") << "otro";
    auto messenger = std::make_shared<ScriptedMessenger>();
    SetMessenger(messenger);
    messenger->QueueAnswer(msg::kYes);

    const auto start = std::chrono::steady_clock::now();
    EXPECT_NO_THROW(ManejarError(label, error));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(8));
    EXPECT_TRUE(ReportSent());
    EXPECT_EQ(throwing->flag_was_up, row.client == kThrows);

    const auto entries = ZipEntries(archive);
    if (row.built) {
      ASSERT_EQ(entries.size(), 2u) << archive;  // no capture installed: no picture
      EXPECT_EQ(entries.at(kErrorLogName), ReadFile(folder + "/" + kErrorLogName));
      const std::string& about = entries.at("Informe.txt");
      for (const std::string& line : std::vector<std::string>{
               "Fecha: 05/03/2024 09:07:02\n", "Programa: Gestión Inmobiliaria\n",
            "Versión del programa: 4.2.17\n",
            "Versión de CriterioPredios: " + ComponentVersion() + "\n",
            "Rutina: " + label + "\n", "Número del error: 3021\n", "Sistema: Linux ",
            "\nDistribución: ", "\nLC_ALL="}) {
        EXPECT_NE(about.find(line), std::string::npos) << line << "\n" << about;
      }
    } else {
      EXPECT_TRUE(entries.empty());
    }

    const auto args = RecordedArguments(record);
    if (row.client == kFake && !row.address.empty() && row.built) {
      ASSERT_EQ(args.size(), 7u);
      EXPECT_EQ(args[0], "--subject");
      EXPECT_EQ(args[1], "Incidencia en Gestión Inmobiliaria 4.2.17");
      EXPECT_EQ(args[2], "--body");
      EXPECT_EQ(args[3].rfind("Descripción: error 3021 en " + label + ": " + error.description() +
                                  "\n",
                              0),
                0u)
          << args[3];
      EXPECT_EQ(args[4], "--attach");
      EXPECT_EQ(args[5], archive);
      EXPECT_EQ(args[6], "soporte@norvak.es");
    } else {
      EXPECT_TRUE(args.empty());
    }

    // The question, "Error al crear" when the log has no folder, then (unless the mail client
    // took the message) where to find the files.
    ASSERT_EQ(messenger->shown().size(), (row.mailed ? 1u : 2u) + (row.log_folder_exists ? 0u : 1u))
        << DescribeMessages(*messenger);
    if (!row.mailed) {
      const auto& info = messenger->shown().back();
      EXPECT_EQ(info.flags, 0x1040);
      const std::string file = row.built ? archive : folder + "/" + kErrorLogName;
      EXPECT_NE(info.text.find("Envíe al soporte técnico de Norvak"), std::string::npos);
      EXPECT_NE(info.text.find(file), std::string::npos) << info.text;
    }
  }
}

}  // namespace
}  // namespace cp::testing
