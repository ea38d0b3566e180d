// Interrupt on the server engine: a statement another thread runs is cancelled and raises.
#include <gtest/gtest.h>

#include <chrono>
#include <future>

#include "platform/core/error.h"
#include "platform/dao/connect.h"
#include "tests/support/pg_server.h"

namespace cp::testing {
namespace {

TEST(ServerInterrupt, StopsTheStatementAnotherThreadRuns) {
  if (!TestServer()) GTEST_SKIP() << "no PostgreSQL test server";
  std::shared_ptr<dao::Engine> engine = dao::OpenEngine(CreateServerDatabase("cp_c", false));
  // Runs for hours unless it is cancelled.
  auto running = std::async(std::launch::async, [&] {
    engine->Query("SELECT count(*) FROM generate_series(1, 100000000000)");
  });
  // A cancel that reaches the server before the statement does is lost: ask until it ends.
  while (running.wait_for(std::chrono::milliseconds(50)) != std::future_status::ready)
    engine->Interrupt();
  EXPECT_THROW(running.get(), Error);
  // The engine goes on working.
  EXPECT_TRUE(engine->Query("SELECT 1")->Next());
}

}  // namespace
}  // namespace cp::testing
