#pragma once
// LiveCountLabel: the line under the selection window's criteria that tells how many records
// the current criteria select ("1.234 inmuebles", "Ningún cliente"; "—" when the criteria
// cannot be counted). It follows every change of the dialog's inputs, waits for a pause in the
// typing, builds the count's query and hands it to a CountWorker (selection/live_count.h),
// whose result comes back to this thread through the event loop. A change stops the count
// running at once (the line keeps the last count until the next one); typing never waits for
// a count.
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include <QLabel>
#include <QTimer>

#include "selection/live_count.h"

namespace cp {

class frmSeleccion;
namespace form {
class ControlContainer;
}

class LiveCountLabel : public QLabel {
  Q_OBJECT

 public:
  // How long the inputs must rest before a count starts.
  static constexpr int kPauseMs = 250;
  static constexpr const char* kUnknown = "—";

  // dialog must be loaded; the label follows it until Detach or its own end.
  explicit LiveCountLabel(frmSeleccion& dialog, QWidget* parent = nullptr);
  ~LiveCountLabel() override;

  // The dialog's window is gone: stop following it and drop any count.
  void Detach();

 signals:
  // A count (or "—") was shown.
  void countShown();

 private:
  void Changed();
  void Start();
  void Show(std::uint64_t ticket, CountWorker::Result result);

  frmSeleccion* dialog_;
  std::vector<std::pair<form::ControlContainer*, int>> observers_;
  QTimer pause_;
  std::unique_ptr<CountWorker> worker_;
  std::uint64_t latest_ = 0;
  bool building_ = false;  // the query is being built: what it reads is no change
  const EntityInfo* entity_ = nullptr;
};

}  // namespace cp
