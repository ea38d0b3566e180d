#pragma once
// MSeleccion: the condition builders. Each turns one criterion of a selection form into a
// fragment of a bare Jet SQL condition and appends it to `where`, the caller's growing
// condition. An empty, Null, non-numeric or grey criterion leaves `where` untouched.
//
// Dialect: columns "Tabla.Campo" unbracketed, dates "#mm/dd/yy# ", "*" wildcards, IsNull(),
// TRUE/FALSE, single-quoted text quoted with Comilla/ComillaSQL. Numbers go through CLng
// (half to even), so "2,5" becomes 2. "Today" is cp::Today().
//
// Two join styles. A (SQL_Fecha, SQL_FechaHoy, SQL_InLista): an empty `where` becomes
// " ( " + column + operator + ") " (" (" for SQL_FechaHoy), otherwise `where` gets
// " AND (" + column + operator + ") ". B (the rest): the fragment is built first and, only
// when it is not empty, " AND " goes after a non-empty `where`, then the fragment.
//
// The scalar builders (first group) have no trap: an error of a control or of the database
// reaches the caller's trap. The multi-valued builders (second group) run under Atrapar
// with the label "<name> de MSeleccion"; after the report they end and `where` keeps what it
// held at the moment of the error. Database reads go to the shared BD() (error 91 if unset).
#include <string>
#include <vector>

#include "platform/form/check_box.h"
#include "platform/form/control.h"
#include "platform/form/date_picker.h"
#include "platform/form/text_box.h"

namespace cp {

// Scalar builders ------------------------------------------------------------------------

// A date bound: element 0 of its control array gives " >= ", element 1 " <= " (any other
// index no operator). Null (unchecked) adds nothing. Style A.
void SQL_Fecha(const form::DTPicker& ctl, const std::string& tabla, const std::string& campo,
               std::string& where);

// Checked: the date is today or past (" <= #today# "); unchecked: still to come
// (" > #today# "); grey: nothing. Style A, opening " (".
void SQL_FechaHoy(const form::CheckBox& chk, const std::string& tabla, const std::string& campo,
                  std::string& where);

// Checked: " IN " + lista; unchecked: " NOT IN " + lista; grey: nothing. lista comes already
// parenthesised, e.g. "(3,7,12)", and is inserted as is. Style A.
void SQL_InLista(const form::CheckBox& chk, const std::string& lista, const std::string& tabla,
                 const std::string& campo, std::string& where);

// Looks up the ids of tablaAux whose campoAux is LIKE patron (patron is a finished Jet
// literal, quotes and wildcards included) and adds "(T.Id = a OR  (T.Id = b) )", or
// "(T.Id = -1)" when nothing matches. Database errors propagate.
void SQL_BuscarAux(const std::string& patron, std::string& where, const std::string& tabla,
                   const std::string& campoId, const std::string& tablaAux,
                   const std::string& campoAux);

// The control's default value n inside the stored range [campoMin, campoMax]. With a numeric
// value campoMin and campoMax come back qualified as tabla + "." + name; with incluirNulos a
// missing bound is open. Non-numeric: nothing, names untouched. Style B.
void SQL_NumEntre(const form::Control& ctl, std::string& where, const std::string& tabla,
                  std::string& campoMin, std::string& campoMax, bool incluirNulos);

// " (T.campo" + operador + n + ") " for a numeric, non-empty text; operador (">=", "<=") is
// inserted as is. incluirNulos also accepts Null. Style B.
void SQL_NumOp(const form::TextBox& txt, std::string& where, const std::string& tabla,
               const std::string& campo, bool incluirNulos, const std::string& operador);

// A 0/1 column against a tri-state box; incluirIndiferente also accepts the stored 2
// ("either"). Grey: nothing. Style B.
void SQL_CheckInt(const form::CheckBox& chk, std::string& where, const std::string& tabla,
                  const std::string& campo, bool incluirIndiferente);

// A Yes/No column against a tri-state box (TRUE/FALSE). Grey: nothing. Style B.
void SQL_CheckBool(const form::CheckBox& chk, std::string& where, const std::string& tabla,
                   const std::string& campo);

// Multi-valued builders (trapped) ---------------------------------------------------------

// A from/to pair: ctls[0] the lower bound, ctls[1] the upper one (default values). BETWEEN
// when both are numeric (never reordered), ">=" or "<=" when only one is. The fragment is
// wrapped as " (" + F + ") ". A missing element is reported as error 340.
void SQL_NumA(const std::vector<form::Control*>& ctls, std::string& where,
              const std::string& tabla, const std::string& campo, bool incluirNulos);

// Names separated by ";" resolved to ids through tablaAux (campoAux = name). Appends ";" to
// the caller's lista when it lacks one. Rows with a Null id always pass; an unknown name
// contributes "= -1". Text ids are quoted.
void SQL_TablaIdAux(std::string& lista, std::string& where, const std::string& tabla,
                    const std::string& campoId, const std::string& tablaAux,
                    const std::string& campoAux);

// Rows whose multi-valued field ("A; B; ") holds ANY of the typed items; incluirVacios also
// accepts the empty text '' (ignored when nothing is typed).
void SQL_TablaMultiString(const form::TextBox& txt, const std::string& tabla,
                          const std::string& campo, std::string& where, bool incluirVacios);

// Rows whose multi-valued field holds EVERY typed item; with nothing typed and incluirVacios,
// only rows whose field is ''.
void SQL_TablaMultiStringAnd(const form::TextBox& txt, const std::string& tabla,
                             const std::string& campo, std::string& where, bool incluirVacios);

}  // namespace cp
