#pragma once
// Helpers of the tool's tests: a subcommand's result, and the scratch folder and database
// helpers to read the files the tool writes.
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "cli/commands.h"
#include "common/error_log.h"
#include "tests/support/scratch_db.h"

// The tool's tests also cover the sample library the tool builds its databases with.
namespace cp::cli {
using namespace cp::sample;
}  // namespace cp::cli

namespace cp::cli::testing {

using cp::testing::kNullText;
using cp::testing::ScratchDb;
using cp::testing::ScratchDir;
using cp::testing::TextRow;

// What a subcommand gave: exit status, standard output, standard error.
struct Result {
  int status;
  std::string out, err;
};

// Runs command(out, err), which returns the exit status.
template <class Command>
Result RunCommand(Command&& command) {
  std::ostringstream out, err;
  const int status = command(out, err);
  return {status, out.str(), err.str()};
}

// init-db into path; fails the test when it does not succeed.
inline void MakeDb(const std::string& path, bool demo, int size) {
  const Result r =
      RunCommand([&](auto& out, auto& err) { return InitDb({path, demo, size}, out, err); });
  ASSERT_EQ(r.status, kExitOk) << r.err;
}

// A suite's demo database of kSize properties, with the error log in its folder.
template <int kSize>
class DemoDbTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    dir_ = new ScratchDir();
    db_ = dir_->File("demo.db");
    MakeDb(db_, true, kSize);
    setErrLogPath(dir_->File(""));
  }
  static void TearDownTestSuite() {
    setErrLogPath("");
    delete dir_;
  }
  static inline ScratchDir* dir_ = nullptr;
  static inline std::string db_;
};

}  // namespace cp::cli::testing
