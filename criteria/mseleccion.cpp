#include "criteria/mseleccion.h"

#include "common/error_handler.h"
#include "common/shared_state.h"
#include "common/sql_text.h"
#include "platform/core/clock.h"
#include "platform/core/conversions.h"
#include "platform/core/string_functions.h"
#include "platform/core/text_format.h"
#include "platform/dao/types.h"
#include "platform/form/control_container.h"
#include "platform/form/default_value.h"

namespace cp {
namespace {

// The date as the dialect writes it inside "#...#", whatever the machine's locale.
std::string JetDate(Date date) { return FormatDate(date, "mm/dd/yy"); }

std::string Column(const std::string& tabla, const std::string& campo) {
  return tabla + "." + campo;
}

// Join style A: the column and its operator part, in parentheses.
void JoinStyleA(std::string& where, const std::string& opening, const std::string& column,
                const std::string& operatorPart) {
  if (where.empty()) {
    where = opening + column + operatorPart + ") ";
  } else {
    where += " AND (" + column + operatorPart + ") ";
  }
}

// Join style B: nothing for an empty fragment.
void JoinStyleB(std::string& where, const std::string& fragment) {
  if (fragment.empty()) return;
  if (!where.empty()) where += " AND ";
  where += fragment;
}

// A value read from the database as the runtime's "&" concatenation writes it: Null is "".
std::string ConcatText(const Variant& value) { return value.IsNull() ? std::string() : CStr(value); }

std::string Decimal(const Variant& value) { return std::to_string(CLng(value)); }

}  // namespace

void SQL_Fecha(const form::DTPicker& ctl, const std::string& tabla, const std::string& campo,
               std::string& where) {
  const Variant value = ctl.Value();
  if (value.IsNull()) return;
  const std::string literal = "#" + JetDate(CDate(value)) + "# ";
  std::string operatorPart;
  if (ctl.Index() == 0) {
    operatorPart = " >= " + literal;
  } else if (ctl.Index() == 1) {
    operatorPart = " <= " + literal;
  }
  JoinStyleA(where, " ( ", Column(tabla, campo), operatorPart);
}

void SQL_FechaHoy(const form::CheckBox& chk, const std::string& tabla, const std::string& campo,
                  std::string& where) {
  if (chk.Value() == form::vbGrayed) return;
  const std::string today = JetDate(Today());
  const std::string operatorPart =
      chk.Value() == form::vbChecked ? " <= #" + today + "# " : " > #" + today + "# ";
  JoinStyleA(where, " (", Column(tabla, campo), operatorPart);
}

void SQL_InLista(const form::CheckBox& chk, const std::string& lista, const std::string& tabla,
                 const std::string& campo, std::string& where) {
  if (chk.Value() == form::vbGrayed) return;
  const std::string operatorPart =
      (chk.Value() == form::vbChecked ? " IN " : " NOT IN ") + lista;
  JoinStyleA(where, " ( ", Column(tabla, campo), operatorPart);
}

void SQL_BuscarAux(const std::string& patron, std::string& where, const std::string& tabla,
                   const std::string& campoId, const std::string& tablaAux,
                   const std::string& campoAux) {
  dao::Recordset rs = RequireBD().OpenRecordset("SELECT " + campoId + " FROM " + tablaAux +
                                                " WHERE " + campoAux + " LIKE " + patron);
  const std::string column = Column(tabla, campoId);
  // where grows step by step, so a failure half-way leaves the caller what was written.
  where = where.empty() ? "(" : where + " AND (";
  if (rs.Eof()) {
    where += column + " = -1";
  } else {
    where += column + " = " + ConcatText(rs.Fields(campoId).Value());
    for (rs.MoveNext(); !rs.Eof(); rs.MoveNext()) {
      where += " OR  (" + column + " = " + ConcatText(rs.Fields(campoId).Value()) + ") ";
    }
  }
  where += ")";
}

void SQL_NumEntre(const form::Control& ctl, std::string& where, const std::string& tabla,
                  std::string& campoMin, std::string& campoMax, bool incluirNulos) {
  const Variant value = form::DefaultValue(ctl);
  if (!IsNumeric(value)) return;
  const std::string n = Decimal(value);
  // The caller reuses its two variables qualified, as the original routine hands them back.
  campoMin = Column(tabla, campoMin);
  campoMax = Column(tabla, campoMax);
  std::string fragment = "(" + n + " BETWEEN " + campoMin + " AND " + campoMax + ")";
  if (incluirNulos) {
    fragment = " ( " + fragment + " OR (IsNull(" + campoMin + ") AND (" + campoMax + ">= " + n +
               ")) OR (IsNull(" + campoMax + ") AND (" + campoMin + "<= " + n +
               ")) OR (IsNull(" + campoMin + ") AND IsNull(" + campoMax + ")) )";
  }
  JoinStyleB(where, fragment);
}

void SQL_NumOp(const form::TextBox& txt, std::string& where, const std::string& tabla,
               const std::string& campo, bool incluirNulos, const std::string& operador) {
  const Variant value(txt.Text());
  if (!IsNumeric(value) || txt.Text().empty()) return;
  const std::string column = Column(tabla, campo);
  std::string fragment = " (" + column + operador + Decimal(value) + ") ";
  if (incluirNulos) fragment = " (" + fragment + "OR IsNull(" + column + ")) ";
  JoinStyleB(where, fragment);
}

void SQL_CheckInt(const form::CheckBox& chk, std::string& where, const std::string& tabla,
                  const std::string& campo, bool incluirIndiferente) {
  if (chk.Value() == form::vbGrayed) return;
  const std::string column = Column(tabla, campo);
  std::string fragment =
      " (" + column + " = " + (chk.Value() == form::vbChecked ? "1" : "0") + ") ";
  if (incluirIndiferente) fragment = "(" + fragment + "OR (" + column + "=2)) ";
  JoinStyleB(where, fragment);
}

void SQL_CheckBool(const form::CheckBox& chk, std::string& where, const std::string& tabla,
                   const std::string& campo) {
  if (chk.Value() == form::vbGrayed) return;
  JoinStyleB(where, " (" + Column(tabla, campo) + " = " +
                        (chk.Value() == form::vbChecked ? "TRUE" : "FALSE") + ") ");
}

void SQL_NumA(const std::vector<form::Control*>& ctls, std::string& where,
              const std::string& tabla, const std::string& campo, bool incluirNulos) {
  Atrapar("SQL_NumA de MSeleccion", [&] {
    auto element = [&](std::size_t index) -> const form::Control& {
      if (index >= ctls.size()) {
        Raise(err::kArrayElementMissing,
              "El elemento " + std::to_string(index) + " de la matriz de controles no existe");
      }
      if (!ctls[index]) RaiseObjectNotSet();
      return *ctls[index];
    };
    const Variant from = form::DefaultValue(element(0));
    const Variant to = form::DefaultValue(element(1));
    const bool hasFrom = IsNumeric(from);
    const bool hasTo = IsNumeric(to);
    if (!hasFrom && !hasTo) return;
    const std::string column = Column(tabla, campo);
    std::string fragment;
    if (hasFrom && hasTo) {
      fragment = column + " BETWEEN " + Decimal(from) + " AND " + Decimal(to);
    } else if (hasFrom) {
      fragment = column + " >= " + Decimal(from);
    } else {
      fragment = column + " <= " + Decimal(to);
    }
    if (incluirNulos) fragment = "(" + fragment + " OR IsNull(" + column + ")) ";
    if (!where.empty()) where += " AND ";
    where += " (" + fragment + ") ";
  });
}

void SQL_TablaIdAux(std::string& lista, std::string& where, const std::string& tabla,
                    const std::string& campoId, const std::string& tablaAux,
                    const std::string& campoAux) {
  Atrapar("SQL_TablaIdAux de MSeleccion", [&] {
    if (lista.empty()) return;
    if (lista.back() != ';') lista += ";";
    const std::string column = Column(tabla, campoId);
    std::string alternatives;
    for (std::size_t start = 0, end; (end = lista.find(';', start)) != std::string::npos;
         start = end + 1) {
      const std::string name = ComillaSQL(Trim(lista.substr(start, end - start)));
      dao::Recordset rs = RequireBD().OpenRecordset("SELECT " + campoId + " FROM " + tablaAux +
                                                    " WHERE " + campoAux + " = " + name);
      const dao::Field field = rs.Fields(campoId);
      std::string id = "-1";
      if (!rs.Eof()) id = ConcatText(field.Value());
      if (field.Type() == dao::dbText) id = ComillaSQL(id);
      alternatives += " OR (" + column + " = " + id + ") ";
    }
    if (!alternatives.empty()) {
      JoinStyleB(where, "( (" + column + " Is Null) " + alternatives + ")");
    }
  });
}

namespace {

// The typed list of a multi-valued criterion: trimmed, one trailing ";" dropped, split at
// every ";" keeping empty items. No items when nothing is left.
std::vector<std::string> TypedItems(const form::TextBox& txt) {
  std::string text = Trim(txt.Text());
  if (!text.empty() && text.back() == ';') text.pop_back();
  return Split(text, ";");
}

// The four ways an item X sits in a field of "A; B; " items: alone, first, last, inside.
std::string ItemPatterns(const std::string& column, const std::string& item) {
  const std::string x = Comilla(Trim(item));
  return "( (" + column + " = '" + x + "; ') " + " OR (" + column + " LIKE '" + x + ";*') " +
         " OR (" + column + " LIKE '*; " + x + "; ') " + " OR (" + column + " LIKE '*; " + x +
         ";*') )";
}

std::string ItemsCondition(const std::string& column, const std::vector<std::string>& items,
                           const std::string& joiner) {
  std::string fragment;
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (i) fragment += joiner;
    fragment += ItemPatterns(column, items[i]);
  }
  return fragment;
}

}  // namespace

void SQL_TablaMultiString(const form::TextBox& txt, const std::string& tabla,
                          const std::string& campo, std::string& where, bool incluirVacios) {
  Atrapar("SQL_TablaMultiString de MSeleccion", [&] {
    const std::vector<std::string> items = TypedItems(txt);
    if (items.empty()) return;
    const std::string column = Column(tabla, campo);
    std::string fragment = "(" + ItemsCondition(column, items, " OR ");
    if (incluirVacios) fragment += " OR (" + column + " = '')";
    JoinStyleB(where, fragment + ")");
  });
}

void SQL_TablaMultiStringAnd(const form::TextBox& txt, const std::string& tabla,
                             const std::string& campo, std::string& where, bool incluirVacios) {
  Atrapar("SQL_TablaMultiStringAnd de MSeleccion", [&] {
    const std::vector<std::string> items = TypedItems(txt);
    const std::string column = Column(tabla, campo);
    if (items.empty()) {
      // With nothing typed, the box asks for rows that have no item at all.
      if (incluirVacios) JoinStyleB(where, " (" + column + "='')");
      return;
    }
    // Here incluirVacios only matters with nothing typed: a typed list never adds ''.
    JoinStyleB(where, "(" + ItemsCondition(column, items, " AND ") + ")");
  });
}

}  // namespace cp
