#include "properties/sql_seleccion.h"

#include <vector>

#include "common/error_handler.h"
#include "common/sql_text.h"
#include "criteria/mseleccion.h"
#include "platform/core/conversions.h"
#include "platform/form/check_box.h"
#include "platform/form/combo_box.h"
#include "platform/form/date_picker.h"
#include "platform/form/text_box.h"
#include "properties/seleccion_inm.h"

namespace cp {
namespace {

// Boxes of names resolved through a lookup table on the property tables.
struct LookupBox {
  const char* control;
  const char* campoId;
  const char* tablaAux;
  const char* campoAux;
  bool multiStringOnDemand;  // Demanda keeps these names as a text list in its own column
  const char* columnaDemanda;
};
constexpr LookupBox kLookupBoxes[] = {
    {"txtPais", "IdPais", "Pais", "Nombre", true, "Pais"},
    {"txtProvincia", "IdProvincia", "Provincia", "Nombre", true, "Provincia"},
    {"txtPoblacion", "IdPoblacion", "Poblacion", "Nombre", true, "Poblacion"},
    {"txtZona", "IdZona", "Zona", "Nombre", true, "Zona"},
    {"txtTipos", "IdTipoInmueble", "TipoInmueble", "Nombre", true, "TipoInmueble"},
    {"txtOperacion", "IdOperacion", "Operacion", "Operacion", false, ""},
    {"txtInmueble", "IdAliasInmueble", "AliasInmueble", "Inmueble", false, ""},
    {"txtCalefaccion", "IdCalefaccion", "Calefaccion", "Calefaccion", false, ""},
    {"txtAgencias", "IdAgencia", "Agencia", "Alias", false, ""},
    {"txtUsuarios", "IdUsuario", "Usuario", "Nombre", false, ""},
    {"txtAcceso", "IdAcceso", "Acceso", "Acceso", false, ""},
};

// Counts: a property qualifies with at least the number asked, a demand when it asks for no
// more than the number given.
struct CountBox {
  const char* control;
  const char* campo;
};
constexpr CountBox kCountBoxes[] = {{"txtHuecos", "Huecos"},     {"txtPiezasExt", "Exterior"},
                                    {"txtAscensor", "Ascensor"}, {"txtGaraje", "Garaje"},
                                    {"txtAltura", "Altura"},     {"txtAseos", "Aseos"},
                                    {"txtBanios", "Banios"}};

// Feature boxes over 0/1/2 columns; only Transmitido refuses the stored "indifferent" 2.
struct FeatureBox {
  const char* control;
  const char* campo;
  bool incluirIndiferente;
};
constexpr FeatureBox kFeatureBoxes[] = {
    {"chkAmueblado", "Amueblado", true},   {"chkNuevo", "Nuevo", true},
    {"chkTrastero", "Trastero", true},     {"chkComercial", "Comercial", true},
    {"chkIndustrial", "Industrial", true}, {"chkTransmitido", "Transmitido", false}};

struct DateBox {
  const char* control;
  const char* campo;
};
constexpr DateBox kDateBoxes[] = {{"dtpAlta", "FechaAlta"},
                                  {"dtpActualiza", "FechaActualizacion"},
                                  {"dtpTransmision", "FechaTransmision"}};

template <class Table>
const auto* FindBox(const Table& table, const std::string& name) {
  for (const auto& entry : table)
    if (name == entry.control) return &entry;
  return static_cast<decltype(&table[0])>(nullptr);
}

// The categories: any listed item, unless chkCategorias asks for all of them; a demand being
// crossed accepts any item and also an empty list.
void Categorias(const SeleccionInm& control, const form::TextBox& txt, std::string& where) {
  const std::string& tabla = control.Tabla();
  const bool todas =
      control.Controls().Get<form::CheckBox>("chkCategorias").Value() == form::vbChecked;
  if (!todas) {
    SQL_TablaMultiString(txt, tabla, "Categorias", where, false);
  } else if (tabla == "Demanda" && control.Cruzando()) {
    SQL_TablaMultiString(txt, tabla, "Categorias", where, true);
  } else {
    SQL_TablaMultiStringAnd(txt, tabla, "Categorias", where, false);
  }
}

// The price or surface pair, met at its element 0: a property's value within the typed
// range; a demand's range holding the single typed value.
void Range(const SeleccionInm& control, const std::string& name, std::string& where) {
  const form::ControlContainer& c = control.Controls();
  const std::string& tabla = control.Tabla();
  const bool precio = name == "txtPrecio";
  if (tabla == "Demanda") {
    std::string campoMin = precio ? "PrecioMinimo" : "Superficie";
    std::string campoMax = precio ? "PrecioMaximo" : "SuperficieMaxima";
    SQL_NumEntre(c.Item(name, 0), where, tabla, campoMin, campoMax, true);
  } else {
    const std::vector<form::Control*> pair = c.ControlArray(name);
    SQL_NumA(pair, where, tabla, precio ? "Precio" : "Superficie", true);
  }
}

// One input's condition, chosen by the input's name; inputs of no criterion add nothing.
void ApplyInput(const SeleccionInm& control, form::Control& child, std::string& where) {
  const std::string& name = child.Name();
  const std::string& tabla = control.Tabla();
  const bool demanda = tabla == "Demanda";

  if (name == "txtPalabras") {
    SQL_cboEn(control, where);
  } else if (const LookupBox* box = FindBox(kLookupBoxes, name)) {
    auto& txt = static_cast<form::TextBox&>(child);
    if (name == "txtCalefaccion" && txt.Text() == "No se sabe") return;
    if (demanda && box->multiStringOnDemand) {
      SQL_TablaMultiString(txt, tabla, box->columnaDemanda, where, control.Cruzando());
    } else {
      std::string lista = txt.Text();  // the builder completes its own copy with ";"
      SQL_TablaIdAux(lista, where, tabla, box->campoId, box->tablaAux, box->campoAux);
    }
  } else if (name == "txtCategorias") {
    Categorias(control, static_cast<form::TextBox&>(child), where);
  } else if (name == "txtPrecio" || name == "txtSuper") {
    if (child.Index() == 0) Range(control, name, where);
  } else if (const CountBox* box = FindBox(kCountBoxes, name)) {
    SQL_NumOp(static_cast<form::TextBox&>(child), where, tabla, box->campo, true,
              demanda ? "<=" : ">=");
  } else if (name == "chkExclusiva") {
    SQL_CheckBool(static_cast<form::CheckBox&>(child), where, tabla, "Exclusividad");
  } else if (const FeatureBox* box = FindBox(kFeatureBoxes, name)) {
    SQL_CheckInt(static_cast<form::CheckBox&>(child), where, tabla, box->campo,
                 box->incluirIndiferente);
  } else if (name == "chkCaducado") {
    SQL_FechaHoy(static_cast<form::CheckBox&>(child), tabla, "FechaBaja", where);
  } else if (name == "chkIntBolsa" || name == "chkIntAgencia") {
    // The list carries a second test after the destination codes: SQL_InLista's own
    // parentheses close around both, IN or NOT IN by the box.
    const std::string codigos = name == "chkIntBolsa" ? "(1, 3)" : "(2, 3)";
    SQL_InLista(static_cast<form::CheckBox&>(child), codigos + " AND (" + tabla + ".IdAcceso >1)",
                tabla, "IdDestino", where);
  } else if (const DateBox* box = FindBox(kDateBoxes, name)) {
    SQL_Fecha(static_cast<form::DTPicker&>(child), tabla, box->campo, where);
  }
}

}  // namespace

std::string SQLSeleccion(const SeleccionInm& control) {
  std::string where;
  Atrapar("SQLSeleccion de SeleccionInm", [&] {
    for (form::Control* child : control.Controls().Controls()) ApplyInput(control, *child, where);
  });
  return where;
}

void SQL_cboEn(const SeleccionInm& control, std::string& where) {
  Atrapar("SQL_cboEn de SeleccionInm", [&] {
    const form::ControlContainer& c = control.Controls();
    const std::string& palabras = c.Get<form::TextBox>("txtPalabras").Text();
    if (palabras.empty()) return;
    const auto& cboEn = c.Get<form::ComboBox>("cboEn");
    const std::string etiqueta = cboEn.Text();
    const int manera = c.Get<form::ComboBox>("cboOpPalabras").ListIndex();
    const std::string join = where.empty() ? "" : "AND ";

    if (etiqueta == "Nº Inmueble" || etiqueta == "Nº Demanda") {
      const Variant word(palabras);
      const std::string numero = IsNumeric(word) ? std::to_string(CLng(word)) : "-1";
      const char* op = manera == 0 ? "<=" : manera == 1 ? "=" : manera == 2 ? ">=" : "";
      where += join + control.Tabla() + "." + control.CampoId() + op + numero;
      return;
    }
    const char* abre = manera == 0 ? "'" : (manera == 1 || manera == 2) ? "'*" : "";
    const char* cierra = (manera == 0 || manera == 1) ? "*'" : manera == 2 ? "'" : "";
    const std::string patron = abre + Comilla(palabras) + cierra;
    if (etiqueta == "Propietario") {
      where += join + "Cliente.Alias LIKE " + patron;
    } else {
      const std::string& campo = control.En().at(static_cast<std::size_t>(cboEn.ListIndex())).campo;
      where += join + control.Tabla() + "." + campo + " LIKE " + patron;
    }
  });
}

}  // namespace cp
