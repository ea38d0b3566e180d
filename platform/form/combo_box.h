#pragma once
// ComboBox in its drop-down list style (no free text): a list of items, each with an ItemData
// number, and the selected item ListIndex (-1 when none).
#include <cstdint>
#include <string>
#include <vector>

#include "platform/form/control.h"

namespace cp::form {

class ComboBox : public Control {
 public:
  ComboBox(ControlContainer& container, std::string name, int index);
  std::string TypeName() const override { return "ComboBox"; }

  // Inserts an item at position (-1: at the end); a position outside 0..ListCount raises 5.
  // The selected item stays selected (its ListIndex moves with it); no Click fires.
  void AddItem(std::string item, int position = -1);
  // Removes an item; outside 0..ListCount-1 raises 5. Removing the selected item leaves
  // nothing selected (-1) without Click; removing one above it moves ListIndex down.
  void RemoveItem(int position);
  // Removes every item; ListIndex becomes -1, no Click.
  void Clear();
  int ListCount() const { return static_cast<int>(items_.size()); }
  // The item's text; "" outside the list, as the runtime answers.
  std::string List(int position) const;
  // Replaces an item's text; outside the list raises 381.
  void setList(int position, std::string item);
  // The number kept with an item (0 when added); outside the list raises 381.
  std::int32_t ItemData(int position) const;
  void setItemData(int position, std::int32_t data);

  int ListIndex() const { return listIndex_; }
  // Selects an item (-1: none). Outside -1..ListCount-1 raises 380 and changes nothing.
  // A different value is reported as "ListIndex" and fires Click; the same one does nothing.
  void setListIndex(int index);

  // The selected item's text, "" when none.
  std::string Text() const;
  // Selects the first item whose text equals the given text exactly (case included: entity
  // names are compared exactly). A text that no item has raises 383 "La propiedad Text es de
  // solo lectura" and changes nothing. Setting the text already shown does nothing.
  void setText(const std::string& text);

  Event<> Click;

 private:
  struct Item {
    std::string text;
    std::int32_t data = 0;
  };
  std::vector<Item> items_;
  int listIndex_ = -1;
};

}  // namespace cp::form
