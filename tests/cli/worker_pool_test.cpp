// Worker processes: every record and logged text reaches the parent, and however a worker
// fails the run reports it and leaves no worker behind, even one that would never end.
#include "cli/worker_pool.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <set>
#include <sstream>
#include <stdexcept>

#include <sys/wait.h>
#include <unistd.h>

#include "platform/core/error.h"

namespace cp::cli {
namespace {

// True when this process has no child left, running or unreaped.
bool NoChildLeft() { return waitpid(-1, nullptr, WNOHANG) < 0 && errno == ECHILD; }

TEST(WorkerPool, EveryRecordAndLogReachesTheParent) {
  std::ostringstream log;
  std::multiset<std::string> records;
  const std::string failure = RunWorkers(
      3,
      [](int w, WorkerPipe& pipe) {
        pipe.Log("w" + std::to_string(w) + ";");
        // Large records span several reads of the pipe.
        for (int i = 0; i < 50; ++i) pipe.Send(std::to_string(w) + std::string(5000, 'x'));
        return std::string();
      },
      [&](std::string_view r) { records.emplace(r); }, log);
  EXPECT_EQ(failure, "");
  EXPECT_EQ(records.size(), 150u);
  for (const char w : {'0', '1', '2'}) {
    EXPECT_EQ(records.count(w + std::string(5000, 'x')), 50u) << w;
    EXPECT_NE(log.str().find(std::string("w") + w + ";"), std::string::npos) << log.str();
  }
  EXPECT_TRUE(NoChildLeft());
}

TEST(WorkerPool, AFailingWorkerEndsTheRunAndNoWorkerIsLeft) {
  const std::vector<std::pair<std::function<std::string()>, std::string>> cases = {
      {[] { return std::string("no hay tabla"); }, "no hay tabla"},
      {[]() -> std::string { throw Error(err::kInvalidProcedureCall, "llamada mala"); },
       "llamada mala"},
      {[]() -> std::string { throw std::runtime_error("otra cosa"); }, "otra cosa"},
      {[]() -> std::string { _exit(3); }, "estado 3"},
      {[]() -> std::string { raise(SIGKILL); return {}; }, "señal 9"},
  };
  for (const auto& [fail, expected] : cases) {
    std::ostringstream log;
    const std::string failure = RunWorkers(
        2,
        [&](int w, WorkerPipe&) {
          if (w == 0) return fail();
          pause();  // never ends on its own
          return std::string();
        },
        [](std::string_view) {}, log);
    EXPECT_NE(failure.find(expected), std::string::npos) << expected << ": " << failure;
    EXPECT_TRUE(NoChildLeft()) << expected;
  }
  // The parent's own failure while reading records stops the workers too.
  std::ostringstream log;
  EXPECT_THROW(RunWorkers(
                   2,
                   [](int, WorkerPipe& pipe) {
                     pipe.Send("r");
                     pause();
                     return std::string();
                   },
                   [](std::string_view) { throw std::runtime_error("lector"); }, log),
               std::runtime_error);
  EXPECT_TRUE(NoChildLeft());
}

}  // namespace
}  // namespace cp::cli
