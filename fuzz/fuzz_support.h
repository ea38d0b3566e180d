#pragma once
// What the fuzz targets share: the way a broken promise stops the run, and the host of the
// component for one fuzzing process.
#include <memory>
#include <string>
#include <string_view>

#include "common/scripted_messenger.h"
#include "selection/c_seleccion.h"

namespace cp::fuzz {

// Stops the run so that libFuzzer records the input as a crash: what broke, and the text
// that shows it.
[[noreturn]] void Breach(std::string_view what, std::string_view detail);

// A condition that the component handed out must be Jet that our own parser reads (the
// empty text means no criterion). Breach otherwise.
void ExpectJetCondition(const std::string& condition, std::string_view where);

// The host of the component for one process, made on the first call and kept: a scripted
// messenger (a user who declines every question), an error log that goes nowhere, a fixed
// clock, and a small agency database with the demo data, shared as the component's database
// and removed when the process ends.
class FuzzHost {
 public:
  static FuzzHost& Get();

  const std::string& DatabasePath() const { return databasePath_; }
  // A fresh selection object on the shared database: it loads its dialog on first use.
  std::unique_ptr<CSeleccion> NewSelection() const;
  // Forgets the boxes shown so far, so that a long run does not pile them up.
  void ForgetMessages() { messenger_->ClearShown(); }

 private:
  FuzzHost();
  std::string folder_;
  std::string databasePath_;
  std::shared_ptr<ScriptedMessenger> messenger_;
};

}  // namespace cp::fuzz
