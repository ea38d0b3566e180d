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

// NAME=VALUE, or NAME(I)=VALUE for the I-th control of an array.
struct UserEntry {
  std::string name;
  int index = -1;
  std::string value;
};

// Parses "NAME=VALUE" or "NAME(I)=VALUE"; raises 5 with a Spanish message otherwise.
UserEntry ParseUserEntry(const std::string& text);

// Shows the dialog of sel (Entidad already set) through a scripted modal runner, enters each
// entry into the criteria control that the dialog shows, and presses "Aceptar". Returns what
// mtdMostrar returns: false when no control serves the entity. An error raised while entering
// (unknown control, bad value) is raised again here; a box that refuses its value only writes a
// warning ("Aviso: ...") to warnings. The caller owns the process-wide slots (database,
// messenger, list picker) for the time of the call.
bool AcceptWithEntries(CSeleccion& sel, const std::vector<UserEntry>& entries,
                       std::ostream& warnings);

}  // namespace cp
