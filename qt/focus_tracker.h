#pragma once
// FocusTracker: which control each focusable widget stands for, shared by a view and its
// nested views. It turns the user's focus moves into the model's (Validate first, also when
// the focus leaves a user control for its form) and remembers the control last focused.
#include <map>

#include <QObject>
#include <QPointer>
#include <QWidget>

#include "platform/form/control.h"

namespace cp {

class FormView;

class FocusTracker : public QObject {
 public:
  struct Entry {
    FormView* view;
    form::Control* control;
  };

  // Listens to the application's focus changes for as long as it lives.
  FocusTracker();

  // widget stands for control of view; Unregister forgets every widget of view.
  void Register(QWidget* widget, FormView* view, form::Control* control);
  void Unregister(const FormView* view);
  // The entry of widget or of its nearest registered ancestor; nullptr when none.
  const Entry* Find(QWidget* widget) const;

  // Moves the real focus for the model (no model event follows).
  void MoveRealFocus(QWidget* widget, form::Control* control);

  // The user put the focus on widget (control target of view): runs the model's focus move.
  // Returns whether the model accepted it.
  bool UserMove(FormView* view, form::Control* target, QWidget* widget);

  // True while UserMove runs model code.
  bool Handling() const { return handling_; }

  form::Control* current = nullptr;  // the control that last had the real focus
  QPointer<QWidget> refused;         // a widget whose focus the model refused

 private:
  void OnFocusChanged(QWidget* now);
  void RestoreLater(form::Control* control);

  std::map<QWidget*, Entry> entries_;
  bool handling_ = false;
  int programmatic_ = 0;
};

}  // namespace cp
