#pragma once
// ModalWatch: acting on a modal window from inside its own loop. exec() does not return
// until the window closes, so whoever wants to look at it (a screenshot, a test playing the
// user) asks beforehand to be called once it is up. The watch polls the event loop for the
// active modal widget while it lives; destroying it stops the polling, so a window that never
// opened leaves nothing pending for later loops.
#include <QTimer>
#include <QWidget>
#include <functional>
#include <memory>

namespace cp {

class ModalWatch {
 public:
  // Calls act once, with the first visible active modal widget for which accepts is true.
  // Must be created on the GUI thread before the code that enters the modal loop.
  ModalWatch(std::function<bool(QWidget&)> accepts, std::function<void(QWidget&)> act,
             int pollMs = 10);
  ~ModalWatch();
  ModalWatch(const ModalWatch&) = delete;
  ModalWatch& operator=(const ModalWatch&) = delete;

  // True once act has been called.
  bool Acted() const { return acted_; }

 private:
  void Check();
  std::function<bool(QWidget&)> accepts_;
  std::function<void(QWidget&)> act_;
  std::unique_ptr<QTimer> timer_;
  bool acted_ = false;
};

// A watch for a window of class W (a QWidget subclass).
template <class W>
std::unique_ptr<ModalWatch> WatchFor(std::function<void(W&)> act) {
  return std::make_unique<ModalWatch>(
      [](QWidget& w) { return qobject_cast<W*>(&w) != nullptr; },
      [act = std::move(act)](QWidget& w) { act(*qobject_cast<W*>(&w)); });
}

}  // namespace cp
