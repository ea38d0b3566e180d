#include "selection/modal_runner.h"

#include "selection/frm_seleccion.h"

namespace cp {
namespace {
std::shared_ptr<ModalRunner>& Slot() {
  static std::shared_ptr<ModalRunner> runner;
  return runner;
}
}  // namespace

void NoWindowRunner::RunModal(frmSeleccion& dialog) {
  dialog.Form_Activate();
  dialog.Unload();
}

void ScriptedModalRunner::RunModal(frmSeleccion& dialog) {
  dialog.Form_Activate();
  if (script_) script_(dialog);
  if (dialog.Loaded()) dialog.Unload();
}

ModalRunner& CurrentModalRunner() {
  static NoWindowRunner fallback;
  return Slot() ? *Slot() : fallback;
}

void SetModalRunner(std::shared_ptr<ModalRunner> runner) { Slot() = std::move(runner); }

ScopedModalRunner::ScopedModalRunner(std::shared_ptr<ModalRunner> runner)
    : previous_(Slot()) {
  Slot() = std::move(runner);
}

ScopedModalRunner::~ScopedModalRunner() { Slot() = std::move(previous_); }

}  // namespace cp
