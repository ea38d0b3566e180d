#pragma once
// QtModalRunner: shows frmSeleccion as a real modal window titled "Selección". The window's
// widgets are a view of the dialog's controls (qt/form_view.h); the loop ends when the model
// unloads the window (its owner does so after Aceptar or Cancel) or when the user closes it
// with the close box, which unloads it without any event.
#include <QDialog>
#include <QPushButton>

#include "selection/modal_runner.h"

namespace cp {

class frmSeleccion;
class FormView;
class LiveCountLabel;

class QtModalRunner : public ModalRunner {
 public:
  // Needs a QApplication alive in the calling thread. Returns once the window is unloaded.
  // An error that the dialog's code raised from a widget event closes the window (unloaded
  // without any event) and is raised again here, to the caller of mtdMostrar.
  void RunModal(frmSeleccion& dialog) override;
};

// The window itself. Form_Activate runs the first time it becomes active. Enter presses
// "Aceptar" as a click does (the box left is validated first); Escape presses "Cancelar",
// which, like the close box, never validates the box left. When the dialog's LiveCount is on,
// a LiveCountLabel under the criteria tells how many records they select.
class SelectionWindow : public QDialog {
 public:
  // dialog must be loaded and outlive the window; the window shows dialog.Controls().
  explicit SelectionWindow(frmSeleccion& dialog, QWidget* parent = nullptr);
  ~SelectionWindow() override;

  FormView& View() const { return *view_; }
  // The running count; null when the dialog's LiveCount is off.
  LiveCountLabel* Count() const { return count_; }

 protected:
  void closeEvent(QCloseEvent* event) override;
  void reject() override;
  void keyPressEvent(QKeyEvent* event) override;
  bool event(QEvent* event) override;

 private:
  void Finish();
  QPushButton* Button(const char* name) const;

  frmSeleccion& dialog_;
  FormView* view_;
  LiveCountLabel* count_ = nullptr;
  int unloadedId_ = 0;
  bool activated_ = false;
  bool finished_ = false;
};

}  // namespace cp
