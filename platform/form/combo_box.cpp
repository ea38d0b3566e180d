#include "platform/form/combo_box.h"

namespace cp::form {

ComboBox::ComboBox(ControlContainer& container, std::string name, int index)
    : Control(container, std::move(name), index) {}

void ComboBox::AddItem(std::string item, int position) {
  if (position == -1) position = ListCount();
  if (position < 0 || position > ListCount()) RaiseInvalidCall();
  items_.insert(items_.begin() + position, Item{std::move(item), 0});
  if (listIndex_ >= position) ++listIndex_;
  NotifyChanged("List");
}

void ComboBox::RemoveItem(int position) {
  if (position < 0 || position >= ListCount()) RaiseInvalidCall();
  items_.erase(items_.begin() + position);
  if (listIndex_ == position) {
    listIndex_ = -1;
  } else if (listIndex_ > position) {
    --listIndex_;
  }
  NotifyChanged("List");
}

void ComboBox::Clear() {
  items_.clear();
  listIndex_ = -1;
  NotifyChanged("List");
}

std::string ComboBox::List(int position) const {
  if (position < 0 || position >= ListCount()) return {};
  return items_[position].text;
}

void ComboBox::setList(int position, std::string item) {
  if (position < 0 || position >= ListCount()) RaiseInvalidArrayIndex();
  items_[position].text = std::move(item);
  NotifyChanged("List");
}

std::int32_t ComboBox::ItemData(int position) const {
  if (position < 0 || position >= ListCount()) RaiseInvalidArrayIndex();
  return items_[position].data;
}

void ComboBox::setItemData(int position, std::int32_t data) {
  if (position < 0 || position >= ListCount()) RaiseInvalidArrayIndex();
  items_[position].data = data;
}

void ComboBox::setListIndex(int index) {
  if (index < -1 || index >= ListCount()) RaiseInvalidValue();
  if (index == listIndex_) return;
  listIndex_ = index;
  NotifyChanged("ListIndex");
  Click.Fire();
}

std::string ComboBox::Text() const { return List(listIndex_); }

void ComboBox::setText(const std::string& text) {
  if (listIndex_ >= 0 ? items_[listIndex_].text == text : text.empty()) return;
  for (int i = 0; i < ListCount(); ++i) {
    if (items_[i].text == text) {
      setListIndex(i);
      return;
    }
  }
  Raise(err::kTextIsReadOnly, "La propiedad Text es de solo lectura");
}

}  // namespace cp::form
