#pragma once
// QtModalRunner: shows frmSeleccion as a real modal window titled "Selección". The window's
// widgets are a view of the dialog's controls; the loop ends when the model unloads the
// window (after Aceptar or Cancel) or when the user closes it with the close box, which
// unloads it without any event.
#include "selection/modal_runner.h"

namespace cp {

class QtModalRunner : public ModalRunner {
 public:
  // Needs a QApplication alive in the calling thread. Returns once the window is unloaded.
  void RunModal(frmSeleccion& dialog) override;
};

}  // namespace cp
