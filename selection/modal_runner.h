#pragma once
// ModalRunner: the seam around the dialog's modal loop. The GUI shows a real window; tests
// and the command-line tool drive the dialog's controls without one. A runner returns when
// the window is unloaded; if it ends with the window still loaded, the window is closed as
// with its close box (unloaded without any event).
#include <functional>
#include <memory>

#include "platform/core/process_slot.h"

namespace cp {

class frmSeleccion;

class ModalRunner {
 public:
  virtual ~ModalRunner() = default;
  // Runs the modal loop of an already loaded dialog: activates it and lets the user act.
  virtual void RunModal(frmSeleccion& dialog) = 0;
};

// Without a display: the window is activated and closed at once, as with its close box.
class NoWindowRunner : public ModalRunner {
 public:
  void RunModal(frmSeleccion& dialog) override;
};

// Runs a script as "the user" inside the modal loop (pressing buttons, typing), after the
// window was activated.
class ScriptedModalRunner : public ModalRunner {
 public:
  explicit ScriptedModalRunner(std::function<void(frmSeleccion&)> script)
      : script_(std::move(script)) {}
  void RunModal(frmSeleccion& dialog) override;

 private:
  std::function<void(frmSeleccion&)> script_;
};

// The process-wide runner that mtdMostrar uses (NoWindowRunner until one is set; null puts
// it back).
ModalRunner& CurrentModalRunner();
void SetModalRunner(std::shared_ptr<ModalRunner> runner);
// The slot behind both; null while the NoWindowRunner default is in use.
ProcessSlot<std::shared_ptr<ModalRunner>>& ModalRunnerSlot();

// Installs a runner for one scope and puts the previous one back on every exit.
class ScopedModalRunner : public ProcessSlot<std::shared_ptr<ModalRunner>>::Scoped {
 public:
  explicit ScopedModalRunner(std::shared_ptr<ModalRunner> runner)
      : Scoped(ModalRunnerSlot(), std::move(runner)) {}
};

}  // namespace cp
