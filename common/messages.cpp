#include "common/messages.h"

#include "common/messenger.h"
#include "common/modal.h"

namespace cp {

int MostrarMensaje(const std::string& texto, int flags, const std::string& titulo) {
  ModalScope modal;
  return CurrentMessenger()->Show(texto, flags, titulo);
}

std::string PedirMensaje(const std::string& prompt, const std::string& titulo,
                         const std::string& defecto) {
  ModalScope modal;
  return CurrentMessenger()->Ask(prompt, titulo, defecto);
}

}  // namespace cp
