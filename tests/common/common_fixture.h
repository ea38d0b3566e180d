#pragma once
// Puts the shared routines in a known state for each test: a scripted messenger, a fresh
// log folder, a fixed clock, no host forms, no reload hook, no report sent yet.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>

#include "common/error_handler.h"
#include "common/error_log.h"
#include "common/host_forms.h"
#include "common/messenger.h"
#include "common/modal.h"
#include "common/program_info.h"
#include "common/scripted_messenger.h"
#include "platform/core/clock.h"

namespace cp::testing {

inline std::string ReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::stringstream content;
  content << in.rdbuf();
  return content.str();
}

// Every box shown so far, for a failure message.
inline std::string DescribeMessages(const ScriptedMessenger& m) {
  std::string all;
  for (const auto& s : m.shown()) all += "[" + s.title + "] " + s.text + "\n";
  return all;
}

class CommonTest : public ::testing::Test {
 protected:
  void SetUp() override {
    char pattern[] = "/tmp/cp-common-test-XXXXXX";
    ASSERT_NE(mkdtemp(pattern), nullptr);
    dir_ = pattern;
    messenger_ = std::make_shared<ScriptedMessenger>();
    previous_messenger_ = SetMessenger(messenger_);
    previous_title_ = ProgramTitle();
    previous_version_ = VersionPrograma();
    setErrLogPath(dir_);
    setReportSent(false);
    setgModalAbierto(false);
    SetHostForms(nullptr);
    SetReloadHook({});
    SetFixedNow(MakeDate(2024, 3, 5, 9, 7, 2));
    if (const char* tmp = getenv("TMPDIR")) saved_tmpdir_ = tmp;
  }

  void TearDown() override {
    SetMessenger(previous_messenger_);
    setProgramTitle(previous_title_);
    setVersionPrograma(previous_version_);
    setErrLogPath("");
    setReportSent(false);
    SetHostForms(nullptr);
    SetReloadHook({});
    SetFixedNow(std::nullopt);
    if (saved_tmpdir_) {
      setenv("TMPDIR", saved_tmpdir_->c_str(), 1);
    } else {
      unsetenv("TMPDIR");
    }
    std::error_code ignored;
    std::filesystem::remove_all(dir_, ignored);
  }

  std::string LogFile() const { return dir_ + "/" + kErrorLogName; }
  std::string Log() const { return ReadFile(LogFile()); }

  std::string dir_;
  std::shared_ptr<ScriptedMessenger> messenger_;

 private:
  std::shared_ptr<Messenger> previous_messenger_;
  std::string previous_title_, previous_version_;
  std::optional<std::string> saved_tmpdir_;
};

// A host with the given windows.
class FakeHostForms : public HostForms {
 public:
  FakeHostForms(std::vector<std::string> open, std::optional<std::string> active,
                std::optional<std::string> control)
      : open_(std::move(open)), active_(std::move(active)), control_(std::move(control)) {}
  std::vector<std::string> OpenForms() const override { return open_; }
  std::optional<std::string> ActiveForm() const override { return active_; }
  std::optional<std::string> ActiveControl() const override { return control_; }

 private:
  std::vector<std::string> open_;
  std::optional<std::string> active_, control_;
};

}  // namespace cp::testing
