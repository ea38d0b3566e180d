#pragma once
// Values entered in the selection dialog as a user enters them: the control's tab is clicked
// when it lies on another, a text box is typed into and then left (Change, Validate,
// LostFocus), a check box is ticked, a list item chosen, a date set or cleared. The command-line
// tool's --set and the tests that compare engines go through here.
#include <iosfwd>
#include <string>
#include <vector>

namespace cp {

class CSeleccion;
namespace form {
class ControlContainer;
}

// NAME=VALUE, or NAME(I)=VALUE for the I-th control of an array.
struct UserEntry {
  std::string name;
  int index = -1;
  std::string value;
};

// Parses "NAME=VALUE" or "NAME(I)=VALUE"; raises 5 with a Spanish message otherwise.
UserEntry ParseUserEntry(const std::string& text);

// Enters one value into the control of that name among controls, as a user does (see above).
// A text box that refuses its value when left writes a warning ("Aviso: ...") to warnings; an
// unknown control or a bad check box or date value raises.
void EnterUserEntry(form::ControlContainer& controls, const UserEntry& entry,
                    std::ostream& warnings);

// Shows the dialog of sel (Entidad already set) through a scripted modal runner, enters each
// entry into the criteria control that the dialog shows, and presses "Aceptar". Returns what
// mtdMostrar returns: false when no control serves the entity. An error raised while entering
// (unknown control, bad value) is raised again here; a box that refuses its value only writes a
// warning ("Aviso: ...") to warnings. The caller owns the process-wide slots (database,
// messenger, list picker) for the time of the call.
bool AcceptWithEntries(CSeleccion& sel, const std::vector<UserEntry>& entries,
                       std::ostream& warnings);

}  // namespace cp
