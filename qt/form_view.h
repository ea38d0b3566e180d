#pragma once
// FormView: the widgets of one form::ControlContainer (a dialog form or a user control),
// kept in step with it in both directions.
//
// Model to widgets: every property change that the container's observers hear updates the
// widget, with the widget's signals blocked, so nothing feeds back into the model.
// Widgets to model: what the user does goes through the controls' public setters (setText,
// setValue, setListIndex, setTab, Press, SendKeyDown...), so the model's events fire exactly
// as when code makes the same change.
//
// Focus: the model's SetFocus moves the real focus; when the user moves the real focus, the
// model's MoveFocus runs (Validate first; a cancelled Validate puts the focus back). Moving
// between the dialog and a user control on it validates the control being left as well.
//
// Errors raised by model code that a widget event ran cannot travel through Qt's event loop:
// the view keeps the first one (TakePendingError) and tells the hook set with
// SetErrorHook, which the modal window uses to close and hand the error to its caller.
#include <exception>
#include <functional>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <QWidget>

#include "platform/form/control_container.h"

class QCheckBox;
class QDateEdit;
class QTabWidget;

namespace cp {

class FocusTracker;
class ControlKinds;
struct ControlBinding;

class FormView : public QWidget {
 public:
  // Builds the widgets of every control of container, laid out as qt/layouts.h says. The
  // container must outlive the view, or the view must be detached before it goes.
  explicit FormView(form::ControlContainer& container, QWidget* parent = nullptr);
  ~FormView() override;
  FormView(const FormView&) = delete;
  FormView& operator=(const FormView&) = delete;

  form::ControlContainer& Container() const { return *container_; }

  // The widget that shows a control of this container: QLineEdit, QComboBox, QCheckBox,
  // QPushButton, QLabel, QTabWidget, QGroupBox or QWidget (frames), QDateEdit (date pickers;
  // DateCheck gives its check box), FormView (user controls). nullptr when there is none.
  // Every widget is also named after its control ("txtPrecio(1)") for findChild.
  QWidget* WidgetOf(std::string_view name, int index = -1) const;
  QWidget* WidgetOf(const form::Control& control) const;
  QCheckBox* DateCheck(std::string_view name, int index = -1) const;
  // The nested view of a user control of this container, or nullptr.
  FormView* NestedView(std::string_view name, int index = -1) const;

  // Moves the focus to a control of this container as the user's click would (the model
  // validates what is left); returns false when it was refused.
  bool FocusAsUser(std::string_view name);

  // Stops all traffic between the widgets and the model, for good (the model's window is
  // being unloaded). Nested views are detached with it.
  void Detach();
  bool Detached() const { return detached_; }

  // The first error that model code raised from a widget event since the last call, if any.
  static std::exception_ptr TakePendingError();
  // Called once per error kept; null removes the hook.
  static void SetErrorHook(std::function<void()> hook);
  // Keeps an error raised by model code run from a Qt event (the first one wins) and calls
  // the hook.
  static void KeepError(std::exception_ptr error);

 private:
  using Binding = ControlBinding;
  FormView(form::ControlContainer& container, std::shared_ptr<FocusTracker> tracker,
           QWidget* parent);
  friend class FocusTracker;
  friend class ControlKinds;  // each kind's entry works as the view's own code

  void Build();
  void CreateWidget(form::Control& control);
  void Refresh(Binding& b, std::string_view property);
  void RefreshAll(Binding& b);
  void ApplyFocusFromModel();
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool ForwardKey(Binding& b, QEvent* event);
  Binding* BindingOf(const form::Control& control) const;
  // Runs model code from a widget event; keeps its error (see TakePendingError).
  void Guard(const std::function<void()>& action);
  // Focusable widgets in creation order, nested views' included at their place.
  void CollectFocusChain(std::vector<QWidget*>& chain) const;

  form::ControlContainer* container_;
  std::shared_ptr<FocusTracker> tracker_;
  std::vector<std::unique_ptr<Binding>> bindings_;
  std::unordered_map<const form::Control*, Binding*> byControl_;
  int observerId_ = 0;
  bool detached_ = false;
  int updating_ = 0;  // > 0 while the view writes model values into widgets
};

}  // namespace cp
