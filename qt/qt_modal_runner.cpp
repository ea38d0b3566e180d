#include "qt/qt_modal_runner.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QVBoxLayout>

#include "qt/form_view.h"
#include "qt/live_count_label.h"
#include "selection/frm_seleccion.h"

namespace cp {

SelectionWindow::SelectionWindow(frmSeleccion& dialog, QWidget* parent)
    : QDialog(parent), dialog_(dialog) {
  setWindowTitle(QString::fromUtf8(frmSeleccion::kCaption));
  setObjectName(QStringLiteral("frmSeleccion"));
  auto* layout = new QVBoxLayout(this);
  view_ = new FormView(dialog.Controls(), this);
  layout->addWidget(view_);
  if (dialog.LiveCount()) {
    count_ = new LiveCountLabel(dialog, this);
    layout->addWidget(count_);
  }
  // Wide enough for the property control's rows; still well inside a 1366x768 screen.
  setMinimumSize(720, 520);
  resize(sizeHint().expandedTo(QSize(760, 560)));
  unloadedId_ = dialog.Unloaded.Connect([this] { Finish(); });
  if (QPushButton* aceptar = Button("cmdAceptar")) aceptar->setDefault(true);
}

QPushButton* SelectionWindow::Button(const char* name) const {
  return qobject_cast<QPushButton*>(view_->WidgetOf(name));
}

SelectionWindow::~SelectionWindow() {
  dialog_.Unloaded.Disconnect(unloadedId_);
  if (count_) count_->Detach();
  view_->Detach();
}

void SelectionWindow::Finish() {
  if (finished_) return;
  finished_ = true;
  // The model's window is gone: nothing the widgets do may reach it any more.
  view_->Detach();
  if (count_) count_->Detach();
  done(QDialog::Rejected);
}

void SelectionWindow::closeEvent(QCloseEvent* event) {
  // The close box unloads the window without raising Aceptar or Cancel.
  if (!finished_) dialog_.Unload();
  Finish();
  event->accept();
}

void SelectionWindow::reject() {
  if (finished_) {
    QDialog::reject();
  } else if (QPushButton* cancelar = Button("cmdCancelar")) {
    cancelar->click();  // no focus move: nothing is validated
  }
}

void SelectionWindow::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  // Shift+Enter belongs to the box (it opens a list); a focused button takes Enter itself.
  if (!enter || (event->modifiers() & ~Qt::KeypadModifier) || finished_) {
    QDialog::keyPressEvent(event);
    return;
  }
  event->accept();
  QPushButton* aceptar = Button("cmdAceptar");
  if (!aceptar || !aceptar->isEnabled() || !aceptar->isVisible()) return;
  // As a click would: the focus moves first, and a box that refuses to let go wins.
  if (view_->FocusAsUser("cmdAceptar") && !finished_) aceptar->click();
}

bool SelectionWindow::event(QEvent* event) {
  const bool handled = QDialog::event(event);
  if (event->type() == QEvent::WindowActivate && !activated_ && !finished_) {
    // Once per showing: coming back from a message box or the list window must not move
    // the focus to the first criterion again.
    activated_ = true;
    try {
      dialog_.Form_Activate();
    } catch (...) {
      FormView::KeepError(std::current_exception());
    }
  }
  return handled;
}

void QtModalRunner::RunModal(frmSeleccion& dialog) {
  dialog.Load();
  std::exception_ptr failure;
  {
    SelectionWindow window(dialog);
    FormView::TakePendingError();  // a stale error of an earlier view is not ours
    FormView::SetErrorHook([&] {
      if (dialog.Loaded()) dialog.Unload();
    });
    window.exec();
    FormView::SetErrorHook(nullptr);
    failure = FormView::TakePendingError();
  }
  if (dialog.Loaded()) dialog.Unload();
  if (failure) std::rethrow_exception(failure);
}

}  // namespace cp
