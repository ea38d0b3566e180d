#include "selection/modal_runner.h"

#include "selection/frm_seleccion.h"

namespace cp {

ProcessSlot<std::shared_ptr<ModalRunner>>& ModalRunnerSlot() {
  static ProcessSlot<std::shared_ptr<ModalRunner>> slot;
  return slot;
}

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
  const auto& runner = ModalRunnerSlot().Get();
  return runner ? *runner : fallback;
}

void SetModalRunner(std::shared_ptr<ModalRunner> runner) {
  ModalRunnerSlot().Set(std::move(runner));
}

}  // namespace cp
