#include "qt/focus_tracker.h"

#include <QApplication>
#include <QTimer>

#include "platform/form/control_container.h"
#include "qt/form_view.h"

namespace cp {

FocusTracker::FocusTracker() {
  connect(qApp, &QApplication::focusChanged, this,
          [this](QWidget*, QWidget* now) { OnFocusChanged(now); });
}

void FocusTracker::Register(QWidget* widget, FormView* view, form::Control* control) {
  entries_[widget] = {view, control};
}

void FocusTracker::Unregister(const FormView* view) {
  for (auto it = entries_.begin(); it != entries_.end();) {
    if (it->second.view == view) {
      if (current == it->second.control) current = nullptr;
      it = entries_.erase(it);
    } else {
      ++it;
    }
  }
}

const FocusTracker::Entry* FocusTracker::Find(QWidget* widget) const {
  for (; widget; widget = widget->parentWidget()) {
    const auto it = entries_.find(widget);
    if (it != entries_.end()) return &it->second;
  }
  return nullptr;
}

void FocusTracker::MoveRealFocus(QWidget* widget, form::Control* control) {
  ++programmatic_;
  current = control;
  widget->setFocus(Qt::OtherFocusReason);
  --programmatic_;
}

bool FocusTracker::UserMove(FormView* view, form::Control* target, QWidget* widget) {
  if (!target->EffectivelyEnabled() || !target->EffectivelyVisible()) return false;
  handling_ = true;
  bool accepted = false;
  view->Guard([&] {
    form::ControlContainer& container = target->Container();
    // Leaving a user control for its form (or the other way) validates what is left.
    form::Control* left = current;
    if (left && left != target && &left->Container() != &container &&
        left->Container().ActiveControl() == left && target->CausesValidation()) {
      bool cancel = false;
      left->Validate.Fire(cancel);
      if (cancel) {
        refused = widget;
        RestoreLater(left);
        return;
      }
    }
    if (container.MoveFocus(*target)) {
      current = target;
      refused = nullptr;
      accepted = true;
    } else {
      // The container's "Focus" notice puts the real focus back.
      refused = widget;
    }
  });
  handling_ = false;
  return accepted;
}

void FocusTracker::OnFocusChanged(QWidget* now) {
  if (!now) return;
  const Entry* entry = Find(now);
  if (!entry) return;
  if (programmatic_) {
    current = entry->control;
    return;
  }
  // A message box shown by a handler hands the focus back while we are still inside it.
  if (handling_ || entry->view->Detached()) return;
  UserMove(entry->view, entry->control, now);
}

void FocusTracker::RestoreLater(form::Control* control) {
  for (const auto& [widget, entry] : entries_) {
    if (entry.control != control) continue;
    QPointer<QWidget> target(widget);
    QTimer::singleShot(0, widget, [this, target, control] {
      if (target) MoveRealFocus(target, control);
    });
    return;
  }
}

}  // namespace cp
