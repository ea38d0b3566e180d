#include "platform/form/control_container.h"

#include <algorithm>

#include "platform/form/check_box.h"
#include "platform/form/combo_box.h"
#include "platform/form/command_button.h"
#include "platform/form/date_picker.h"
#include "platform/form/frame.h"
#include "platform/form/label.h"
#include "platform/form/ss_tab.h"
#include "platform/form/text_box.h"
#include "platform/form/user_control.h"

namespace cp::form {
namespace {

bool SameName(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    if (lower(a[i]) != lower(b[i])) return false;
  }
  return true;
}

}  // namespace

ControlContainer::ControlContainer(std::string name) : name_(std::move(name)) {}

ControlContainer::~ControlContainer() = default;

void ControlContainer::CheckNewName(const std::string& name, int index,
                                    std::string_view typeName) const {
  if (name.empty() || index < -1) RaiseInvalidCall();
  for (const Control* c : order_) {
    if (!SameName(c->Name(), name)) continue;
    // A name is either one plain control or one array of a single type.
    if (c->Index() == index || (c->Index() < 0) != (index < 0) || c->TypeName() != typeName) {
      RaiseInvalidCall();
    }
  }
}

template <class T, class... Extra>
T& ControlContainer::Add(std::string name, int index, Extra&&... extra) {
  auto control = std::make_unique<T>(*this, std::move(name), index, std::forward<Extra>(extra)...);
  CheckNewName(control->Name(), index, control->TypeName());
  T& ref = *control;
  order_.push_back(control.get());
  owned_.push_back(std::move(control));
  return ref;
}

TextBox& ControlContainer::AddTextBox(std::string name, int index) {
  return Add<TextBox>(std::move(name), index);
}
ComboBox& ControlContainer::AddComboBox(std::string name, int index) {
  return Add<ComboBox>(std::move(name), index);
}
CheckBox& ControlContainer::AddCheckBox(std::string name, int index) {
  return Add<CheckBox>(std::move(name), index);
}
DTPicker& ControlContainer::AddDTPicker(std::string name, int index) {
  return Add<DTPicker>(std::move(name), index);
}
CommandButton& ControlContainer::AddCommandButton(std::string name, int index) {
  return Add<CommandButton>(std::move(name), index);
}
Label& ControlContainer::AddLabel(std::string name, int index) {
  return Add<Label>(std::move(name), index);
}
Frame& ControlContainer::AddFrame(std::string name, int index) {
  return Add<Frame>(std::move(name), index);
}
SSTab& ControlContainer::AddSSTab(std::string name, int tabs, int index) {
  return Add<SSTab>(std::move(name), index, tabs);
}

UserControl& ControlContainer::AddUserControl(std::string name,
                                              std::shared_ptr<ControlContainer> content,
                                              int index) {
  return Add<UserControl>(std::move(name), index, std::move(content));
}

Control* ControlContainer::Find(std::string_view name, int index) const {
  for (Control* c : order_) {
    if (c->Index() == index && SameName(c->Name(), name)) return c;
  }
  return nullptr;
}

Control& ControlContainer::Item(std::string_view name, int index) const {
  if (Control* c = Find(name, index)) return *c;
  const std::string quoted = "'" + std::string(name) + "'";
  bool known = false, isArray = false;
  for (const Control* c : order_) {
    if (SameName(c->Name(), name)) {
      known = true;
      isArray = c->Index() >= 0;
      break;
    }
  }
  if (!known) Raise(err::kControlNotFound, "No se encuentra el control " + quoted);
  if (isArray && index < 0) {
    Raise(err::kIndexRequired, "Hay que especificar el índice de la matriz de controles " + quoted);
  }
  if (!isArray) Raise(err::kNotAnArray, "El control " + quoted + " no es una matriz de controles");
  Raise(err::kArrayElementMissing, "El elemento " + std::to_string(index) +
                                  " de la matriz de controles " + quoted + " no existe");
}

bool ControlContainer::IsControlArray(std::string_view name) const {
  return std::any_of(order_.begin(), order_.end(), [&](const Control* c) {
    return c->Index() >= 0 && SameName(c->Name(), name);
  });
}

std::vector<Control*> ControlContainer::ControlArray(std::string_view name) const {
  std::vector<Control*> elements;
  for (Control* c : order_) {
    if (c->Index() >= 0 && SameName(c->Name(), name)) elements.push_back(c);
  }
  std::sort(elements.begin(), elements.end(),
            [](const Control* a, const Control* b) { return a->Index() < b->Index(); });
  return elements;
}

bool ControlContainer::MoveFocus(Control& target) {
  if (&target.Container() != this) RaiseInvalidCall();
  if (!target.CanHaveFocus()) Raise(err::kPropertyNotFound);
  if (!target.EffectivelyEnabled() || !target.EffectivelyVisible()) RaiseInvalidCall();
  Control* previous = active_;
  if (previous == &target) return true;
  if (previous && target.CausesValidation()) {
    bool cancel = false;
    previous->Validate.Fire(cancel);
    if (cancel) {
      // The view may already show the focus on the target: tell it where it stays.
      NotifyChanged(*previous, "Focus");
      return false;
    }
    // A Validate handler may itself have moved the focus; its move stands.
    if (active_ != previous) return active_ == &target;
  }
  active_ = &target;
  NotifyChanged(target, "Focus");
  if (previous) previous->LostFocus.Fire();
  // A LostFocus handler that moved the focus elsewhere has the last word.
  if (active_ == &target) target.GotFocus.Fire();
  return active_ == &target;
}

void ControlContainer::CheckFocus() {
  Control* active = active_;
  if (!active || (active->EffectivelyEnabled() && active->EffectivelyVisible())) return;
  active_ = nullptr;
  NotifyChanged(*active, "Focus");
  active->LostFocus.Fire();
}

int ControlContainer::AddObserver(Observer observer) {
  return observers_.Connect(std::move(observer));
}

void ControlContainer::RemoveObserver(int id) { observers_.Disconnect(id); }

void ControlContainer::NotifyChanged(Control& control, std::string_view property) {
  observers_.Fire(control, property);
}

}  // namespace cp::form
