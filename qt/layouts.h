#pragma once
// Layouts: where each control of a container goes on screen. A container known by name
// (frmSeleccion, SeleccionCli, SeleccionInm) has a description: rows of control names. Any
// other container, and any control that its description does not name, is placed by the
// generic rule: a label starts a row and the controls after it join that row; frames, tab
// strips and user controls take a row of their own.
//
// Rows belong to an area: the container itself, a frame, or one page of a tab strip (the
// area of a row is that of its first control). Within an area the view lays rows out on a
// grid: a row that starts with a label (or a blank) puts it in the label column, so labels
// line up; the rest of the row follows it from left to right.
#include <string>
#include <string_view>
#include <vector>

#include "platform/form/control_container.h"

namespace cp::layout {

// One cell of a described row, parsed from its text:
//   "txtPrecio(0)"     a control (element 0 of an array)
//   "txtAltura:8"      a control given a width of about 8 characters
//   ""                 an empty label column
//   "|"                stretchable space (pushes what follows to the right)
struct Cell {
  enum class Kind { Control, Blank, Stretch };
  Kind kind = Kind::Control;
  std::string name;
  int index = -1;
  int widthChars = 0;  // 0: the control's natural width
};

// Parses one cell as above. Raises error 5 for a malformed control reference ("txt(", "a:x").
Cell ParseCell(std::string_view text);

// The description of a container by its name; empty when there is none.
std::vector<std::vector<std::string>> DescriptionFor(std::string_view containerName);

// Where a row goes: the container (frame null, tab -1), a frame (tab -1), or a page of a tab
// strip (frame is the SSTab, tab its page).
struct Area {
  const form::Control* owner = nullptr;
  int tab = -1;
  bool operator==(const Area&) const = default;
};

// A row ready to be built: its cells, with the controls resolved.
struct PlacedCell {
  Cell::Kind kind = Cell::Kind::Control;
  form::Control* control = nullptr;
  int widthChars = 0;
};
struct PlacedRow {
  Area area;
  std::vector<PlacedCell> cells;
  // True when the first cell belongs in the label column (a Label or a blank).
  bool labelled = false;
};

// The area a control is drawn in, from its parent.
Area AreaOf(const form::Control& control);

// Every control of the container placed once: first the described rows (cells naming no
// control of this container are skipped, so are rows left empty), then the remaining
// controls by the generic rule, in creation order.
std::vector<PlacedRow> PlanRows(const form::ControlContainer& container);

}  // namespace cp::layout
