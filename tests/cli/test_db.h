#pragma once
// Helpers of the tool's tests: a scratch folder removed at the end, and the scratch
// database helper to read the files the tool writes.

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/support/scratch_db.h"

// The tool's tests also cover the sample library the tool builds its databases with.
namespace cp::cli {
using namespace cp::sample;
}  // namespace cp::cli

namespace cp::cli::testing {

class ScratchDir {
 public:
  ScratchDir() {
    std::string pattern = (std::filesystem::temp_directory_path() / "cp_cli_XXXXXX").string();
    if (!mkdtemp(pattern.data())) throw std::runtime_error("mkdtemp");
    path_ = pattern;
  }
  ~ScratchDir() {
    std::error_code ec;
    std::filesystem::remove_all(path_, ec);
  }
  std::string File(const std::string& name) const { return (path_ / name).string(); }

 private:
  std::filesystem::path path_;
};

// What a subcommand gave: exit status, standard output, standard error.
struct Result {
  int status;
  std::string out, err;
};

using cp::testing::kNullText;
using cp::testing::ScratchDb;
using cp::testing::TextRow;

}  // namespace cp::cli::testing
