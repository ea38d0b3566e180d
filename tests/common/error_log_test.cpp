#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <set>

#include "tests/common/common_fixture.h"

namespace cp::testing {
namespace {

using ErrorLogTest = CommonTest;

TEST_F(ErrorLogTest, EntryNamesTheActiveFormItsControlAndEveryOpenForm) {
  const struct {
    std::string name;
    std::vector<std::string> open;
    std::optional<std::string> active, control;
    std::string first_line_end, second_line;
  } rows[] = {
      {"form and control", {"frmClientes", "frmSeleccion"}, "frmSeleccion", "txtPalabras",
       " (frmSeleccion)->(txtPalabras)", "    Formularios: {frmClientes} {frmSeleccion} "},
      {"form without control", {"frmInmuebles"}, "frmInmuebles", std::nullopt,
       " (frmInmuebles)", "    Formularios: {frmInmuebles} "},
      {"control without form", {}, std::nullopt, "txtZona", "", "    Formularios: "},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    std::filesystem::remove(LogFile());
    SetHostForms(std::make_shared<FakeHostForms>(row.open, row.active, row.control));
    EXPECT_TRUE(AppendErrorLog("cmdAceptar_Click en frmSeleccion", 3021,
                               "No hay ningún registro activo.", LogFile()));
    EXPECT_EQ(Log(),
              "05/03/24 09:07:02 cmdAceptar_Click en frmSeleccion [3021] "
              "No hay ningún registro activo." + row.first_line_end + "\n" + row.second_line +
                  "\n");
  }
  EXPECT_TRUE(messenger_->shown().empty());
}

TEST_F(ErrorLogTest, EmptyPathMeansTheTemporaryFolder) {
  for (const std::string& tmpdir : {dir_, dir_ + "/"}) {
    setenv("TMPDIR", tmpdir.c_str(), 1);
    std::filesystem::remove_all(dir_ + "/Norvak");
    EXPECT_EQ(rutaCarpetaTemporal(), dir_ + "/Norvak/");
    EXPECT_TRUE(std::filesystem::is_directory(dir_ + "/Norvak"));
    EXPECT_TRUE(AppendErrorLog("a", 5, "d", ""));
    EXPECT_EQ(ReadFile(dir_ + "/Norvak/ErrLog[_].txt"),
              "05/03/24 09:07:02 a [5] d\n    Formularios: \n");
  }
  setenv("TMPDIR", "", 1);
  EXPECT_EQ(ErrorLogFile(""), "/tmp/Norvak/ErrLog[_].txt");
}

TEST_F(ErrorLogTest, ConcurrentProcessesNeverInterleaveOrLoseEntries) {
  constexpr int kProcesses = 8;
  constexpr int kEntries = 1000;
  // Longer than the size the kernel writes atomically to a pipe: a torn or interleaved
  // write shows as a broken entry.
  const std::string description(PIPE_BUF + 100, 'x');
  // The children start together when the parent closes the pipe, so their writes overlap.
  int start[2];
  ASSERT_EQ(pipe(start), 0);
  std::vector<pid_t> children;
  for (int p = 0; p < kProcesses; ++p) {
    const pid_t pid = fork();
    ASSERT_GE(pid, 0);
    if (pid == 0) {
      close(start[1]);
      char byte;
      while (read(start[0], &byte, 1) < 0 && errno == EINTR) {
      }
      bool ok = true;
      for (int n = 0; n < kEntries; ++n)
        ok &= AppendErrorLog("p" + std::to_string(p) + " e" + std::to_string(n), p, description,
                             LogFile());
      _exit(ok ? 0 : 1);
    }
    children.push_back(pid);
  }
  close(start[0]);
  close(start[1]);
  for (pid_t pid : children) {
    int status = 0;
    ASSERT_EQ(waitpid(pid, &status, 0), pid);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
  }

  std::istringstream log(Log());
  std::set<std::string> seen;
  std::size_t entries = 0;
  std::string first, second;
  while (std::getline(log, first)) {
    ++entries;
    ASSERT_TRUE(std::getline(log, second));
    ASSERT_EQ(second, "    Formularios: ");
    const std::string prefix = "05/03/24 09:07:02 ";
    const auto number_end = first.find("] ", prefix.size());
    ASSERT_NE(number_end, std::string::npos);
    ASSERT_EQ(first.substr(number_end + 2), description);
    seen.insert(first.substr(prefix.size(), number_end - prefix.size()));
  }
  // Every entry once, whole: "pP eN [P".
  EXPECT_EQ(entries, static_cast<std::size_t>(kProcesses * kEntries));
  EXPECT_EQ(seen.size(), entries);
  EXPECT_TRUE(seen.count("p7 e999 [7")) << *seen.begin();
}

}  // namespace
}  // namespace cp::testing
