#include "qt/form_view.h"

#include <QApplication>
#include <QCheckBox>
#include <QKeyEvent>
#include <QSignalBlocker>
#include <QTimer>

#include "qt/control_kinds.h"
#include "qt/focus_tracker.h"
#include "qt/grid_placement.h"
#include "qt/key_mapping.h"

namespace cp {
namespace {

std::exception_ptr& Pending() {
  static std::exception_ptr pending;
  return pending;
}
std::function<void()>& Hook() {
  static std::function<void()> hook;
  return hook;
}

}  // namespace

FormView::FormView(form::ControlContainer& container, QWidget* parent)
    : FormView(container, std::make_shared<FocusTracker>(), parent) {
  std::vector<QWidget*> chain;
  CollectFocusChain(chain);
  for (std::size_t i = 1; i < chain.size(); ++i) QWidget::setTabOrder(chain[i - 1], chain[i]);
}

FormView::FormView(form::ControlContainer& container, std::shared_ptr<FocusTracker> tracker,
                   QWidget* parent)
    : QWidget(parent), container_(&container), tracker_(std::move(tracker)) {
  setObjectName(QString::fromStdString(container.Name()));
  Build();
}

FormView::~FormView() { Detach(); }

void FormView::Detach() {
  if (detached_) return;
  detached_ = true;
  container_->RemoveObserver(observerId_);
  tracker_->Unregister(this);
  for (const auto& b : bindings_)
    if (b->nested) b->nested->Detach();
}

std::exception_ptr FormView::TakePendingError() { return std::exchange(Pending(), nullptr); }

void FormView::SetErrorHook(std::function<void()> hook) { Hook() = std::move(hook); }

void FormView::Guard(const std::function<void()>& action) {
  if (detached_) return;
  try {
    action();
  } catch (...) {
    KeepError(std::current_exception());
  }
}

void FormView::KeepError(std::exception_ptr error) {
  if (!Pending()) Pending() = std::move(error);
  if (Hook()) Hook()();
}

void FormView::Build() {
  for (form::Control* control : container_->Controls()) CreateWidget(*control);
  PlaceRows(*this, *container_, [this](const form::Control& c) { return BindingOf(c); });
  for (const auto& b : bindings_) {
    if (b->kind->connect) b->kind->connect(*this, *b);
    RefreshAll(*b);
  }
  observerId_ = container_->AddObserver([this](form::Control& control, std::string_view what) {
    if (detached_) return;
    if (Binding* b = BindingOf(control)) Refresh(*b, what);
  });
}

void FormView::CreateWidget(form::Control& control) {
  auto b = std::make_unique<Binding>();
  b->control = &control;
  b->kind = &ControlKinds::Of(control);
  b->kind->create(*this, *b);
  if (b->input) b->input->setObjectName(WidgetName(control));
  else b->outer->setObjectName(WidgetName(control));
  if (b->input) {
    tracker_->Register(b->input, this, &control);
    b->input->installEventFilter(this);
  }
  if (b->dateCheck) {
    tracker_->Register(b->dateCheck, this, &control);
    b->dateCheck->installEventFilter(this);
  }
  byControl_[&control] = b.get();
  bindings_.push_back(std::move(b));
}

void FormView::RefreshAll(Binding& b) {
  for (const char* property :
       {"Enabled", "Visible", "Text", "List", "Value", "Caption", "Tabs", "TabCaption", "Tab",
        "CustomFormat", "Locked", "MaxLength"})
    Refresh(b, property);
}

void FormView::Refresh(Binding& b, std::string_view property) {
  form::Control& control = *b.control;
  if (property == "Focus") {
    ApplyFocusFromModel();
    return;
  }
  ++updating_;
  const QSignalBlocker blockOuter(b.outer);
  const QSignalBlocker blockInput(b.input);
  if (property == "Enabled") {
    b.outer->setEnabled(control.Enabled());
  } else if (property == "Visible") {
    b.outer->setVisible(control.Visible());
  } else if (b.kind->refresh) {
    b.kind->refresh(*this, b, property);
  }
  --updating_;
}

void FormView::ApplyFocusFromModel() {
  form::Control* active = container_->ActiveControl();
  if (!active) return;
  Binding* b = BindingOf(*active);
  if (!b || !b->input) return;
  // Already there (a date picker's check box counts as the picker).
  if (const auto* e = tracker_->Find(QApplication::focusWidget()); e && e->control == active)
    return;
  QWidget* widget = b->input;
  if (tracker_->Handling()) {
    // Inside the user's own focus move: put the focus back once Qt has finished it.
    QTimer::singleShot(0, widget, [this, widget, active] {
      if (!detached_ && container_->ActiveControl() == active)
        tracker_->MoveRealFocus(widget, active);
    });
  } else {
    tracker_->MoveRealFocus(widget, active);
  }
}

bool FormView::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress && !detached_) {
    for (const auto& b : bindings_)
      if (b->input == watched || b->dateCheck == watched) return ForwardKey(*b, event);
  }
  return QWidget::eventFilter(watched, event);
}

bool FormView::ForwardKey(Binding& b, QEvent* event) {
  auto* key = static_cast<QKeyEvent*>(event);
  bool drop = false;
  if (const int code = VbKeyCode(key->key())) {
    Guard([&] { drop = b.control->SendKeyDown(code, VbShift(key->modifiers())) == 0; });
    if (drop || detached_) return true;
  }
  const QString typed = key->text();
  if (typed.size() == 1) {
    const char16_t ch = typed.at(0).unicode();
    if ((ch >= 32 && ch < 256 && ch != 127) || ch == 13 || ch == 8)
      Guard([&] { drop = b.control->SendKeyPress(ch) == 0; });
  }
  return drop || detached_;
}

FormView::Binding* FormView::BindingOf(const form::Control& control) const {
  const auto it = byControl_.find(&control);
  return it == byControl_.end() ? nullptr : it->second;
}

QWidget* FormView::WidgetOf(const form::Control& control) const {
  const Binding* b = BindingOf(control);
  if (!b) return nullptr;
  return b->input ? b->input : b->outer;
}

bool FormView::FocusAsUser(std::string_view name) {
  form::Control* control = container_->Find(name, -1);
  Binding* b = control ? BindingOf(*control) : nullptr;
  if (!b || !b->input || detached_) return false;
  if (!tracker_->UserMove(this, control, b->input)) return false;
  if (!detached_) tracker_->MoveRealFocus(b->input, control);
  return true;
}

QWidget* FormView::WidgetOf(std::string_view name, int index) const {
  const form::Control* c = container_->Find(name, index);
  return c ? WidgetOf(*c) : nullptr;
}

QCheckBox* FormView::DateCheck(std::string_view name, int index) const {
  const form::Control* c = container_->Find(name, index);
  const Binding* b = c ? BindingOf(*c) : nullptr;
  return b ? b->dateCheck : nullptr;
}

FormView* FormView::NestedView(std::string_view name, int index) const {
  const form::Control* c = container_->Find(name, index);
  const Binding* b = c ? BindingOf(*c) : nullptr;
  return b ? b->nested : nullptr;
}

void FormView::CollectFocusChain(std::vector<QWidget*>& chain) const {
  for (const auto& b : bindings_) {
    if (b->nested) b->nested->CollectFocusChain(chain);
    if (b->dateCheck) chain.push_back(b->dateCheck);
    if (b->input) chain.push_back(b->input);
  }
}

}  // namespace cp
