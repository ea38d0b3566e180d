#include "qt/qt_modal_runner.h"

#include "selection/frm_seleccion.h"

namespace cp {

void QtModalRunner::RunModal(frmSeleccion& dialog) {
  dialog.Form_Activate();
  dialog.Unload();
}

}  // namespace cp
