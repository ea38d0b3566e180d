#pragma once
// The condition of the property control: each input of SeleccionInm feeds one condition
// builder of MSeleccion, with the columns and flags of its entity (a property table or
// Demanda), in the order the inputs stand in the control.
#include <string>

namespace cp {

class SeleccionInm;

// The bare Jet condition of the control's inputs over its entity's table ("" when no input
// holds anything). Errors are reported under "SQLSeleccion de SeleccionInm"; the condition
// built up to the error is returned.
std::string SQLSeleccion(const SeleccionInm& control);

// Appends the free-word condition of txtPalabras (field from cboEn, manner from
// cboOpPalabras) to where, joined with "AND " straight after the text so far. A number field
// compares the key column with the word read as a whole number (-1 when it is none). Errors
// are reported under "SQL_cboEn de SeleccionInm"; where keeps what it held.
void SQL_cboEn(const SeleccionInm& control, std::string& where);

}  // namespace cp
