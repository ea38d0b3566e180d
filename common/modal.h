#pragma once
// gModalAbierto: True while the component shows a modal window of its own (a message box,
// an input box, the list picker). The component runs on the host's one UI thread, so this
// is a plain global without locking. No decision of the component reads it; the host may.

namespace cp {

bool gModalAbierto();
void setgModalAbierto(bool value);

// Saves gModalAbierto, sets it to True, and puts the saved value back when it goes out of
// scope (on every exit, exceptions included). Use it around anything that shows a window.
class ModalScope {
 public:
  ModalScope();
  ~ModalScope();
  ModalScope(const ModalScope&) = delete;
  ModalScope& operator=(const ModalScope&) = delete;

 private:
  bool saved_;
};

}  // namespace cp
