#include "properties/cross_fill.h"

#include <string>

#include "common/error_handler.h"
#include "common/shared_state.h"
#include "platform/core/conversions.h"
#include "platform/dao/recordset.h"
#include "platform/form/check_box.h"
#include "platform/form/control_container.h"
#include "platform/form/text_box.h"

namespace cp {
namespace {

enum class Source { Demanda, IPropio, IAjeno };

// What one step of the fill writes.
enum class Kind {
  Text,         // the column's text (Null gives "")
  Heating,      // the heating rule of the direction
  AllRequired,  // chkCategorias ticked
  Check,        // the column as a check-box state
};

// One step: the control (element index or -1) and the column it takes from each source
// (nullptr: that source leaves the control alone). The order is the order of the fill.
struct Step {
  Kind kind;
  const char* control;
  int index;
  const char* demanda;
  const char* propio;
  const char* ajeno;
};

constexpr Step kSteps[] = {
    {Kind::Text, "txtPais", -1, "Pais", "Pais", "Pais"},
    {Kind::Text, "txtProvincia", -1, "Provincia", "Provincia", "Provincia"},
    {Kind::Text, "txtPoblacion", -1, "Poblacion", "Poblacion", "Poblacion"},
    {Kind::Text, "txtZona", -1, "Zona", "Zona", "Zona"},
    {Kind::Text, "txtOperacion", -1, "Operacion", "Operacion", "Operacion"},
    {Kind::Text, "txtInmueble", -1, "Inmueble", "Inmueble", "Inmueble"},
    {Kind::Heating, "txtCalefaccion", -1, "Calefaccion", "Calefaccion", "Calefaccion"},
    {Kind::Text, "txtCategorias", -1, "Categorias", "Categorias", "Categorias"},
    {Kind::AllRequired, "chkCategorias", -1, "", "", ""},
    {Kind::Text, "txtTipos", -1, "TipoInmueble", "NombreTipoInmueble", nullptr},
    {Kind::Text, "txtPrecio", 0, "PrecioMinimo", "Precio", "Precio"},
    {Kind::Text, "txtPrecio", 1, "PrecioMaximo", nullptr, nullptr},
    {Kind::Text, "txtSuper", 0, "Superficie", "Superficie", "Superficie"},
    {Kind::Text, "txtSuper", 1, "SuperficieMaxima", nullptr, nullptr},
    {Kind::Text, "txtHuecos", -1, "Huecos", "Huecos", "Huecos"},
    {Kind::Text, "txtPiezasExt", -1, "Exterior", "Exterior", "Exterior"},
    {Kind::Text, "txtAscensor", -1, "Ascensor", "Ascensor", "Ascensor"},
    {Kind::Text, "txtGaraje", -1, "Garaje", "Garaje", "Garaje"},
    {Kind::Text, "txtAseos", -1, "Aseos", "Aseos", "Aseos"},
    {Kind::Text, "txtBanios", -1, "Banios", "Banios", "Banios"},
    {Kind::Text, "txtAltura", -1, "Altura", "Altura", "Altura"},
    {Kind::Check, "chkAmueblado", -1, "Amueblado", "Amueblado", "Amueblado"},
    {Kind::Check, "chkNuevo", -1, "Nuevo", "Nuevo", "Nuevo"},
    {Kind::Check, "chkTrastero", -1, "Trastero", "Trastero", "Trastero"},
    {Kind::Check, "chkComercial", -1, "Comercial", "Comercial", "Comercial"},
    {Kind::Check, "chkIndustrial", -1, "Industrial", "Industrial", "Industrial"},
};

// The statements, piece by piece as the record's side needs them; the record id follows.
std::string Statement(Source source) {
  switch (source) {
    case Source::Demanda:
      return std::string("SELECT Demanda.*, ") +
             "Operacion.Operacion, AliasInmueble.Inmueble, Calefaccion.Calefaccion " +
             "FROM ((( Demanda " +
             "LEFT JOIN AliasInmueble On AliasInmueble.IdAliasInmueble = "
             "Demanda.IdAliasInmueble) " +
             "LEFT JOIN Calefaccion On Calefaccion.IdCalefaccion = Demanda.IdCalefaccion) " +
             "LEFT JOIN Operacion On Operacion.IdOperacion = Demanda.IdOperacion) " +
             "WHERE Demanda.IdDemanda = ";
    case Source::IPropio:
      return std::string("SELECT IPropio.*, ") +
             "Operacion.Operacion, AliasInmueble.Inmueble, Calefaccion.Calefaccion, " +
             "Pais.Nombre AS Pais, Provincia.Nombre AS Provincia, " +
             "Poblacion.Nombre AS Poblacion, Zona.Nombre AS Zona, " +
             "TipoInmueble.Nombre AS NombreTipoInmueble " + "FROM (((((((( IPropio " +
             "LEFT JOIN AliasInmueble On AliasInmueble.IdAliasInmueble = "
             "IPropio.IdAliasInmueble) " +
             "LEFT JOIN Calefaccion On Calefaccion.IdCalefaccion = IPropio.IdCalefaccion) " +
             "LEFT JOIN Operacion On Operacion.IdOperacion = IPropio.IdOperacion) " +
             "LEFT JOIN Pais On Pais.IdPais = IPropio.IdPais) " +
             "LEFT JOIN Provincia On Provincia.IdProvincia = IPropio.IdProvincia) " +
             "LEFT JOIN Poblacion On Poblacion.IdPoblacion = IPropio.IdPoblacion) " +
             "LEFT JOIN Zona On Zona.IdZona = IPropio.IdZona) " +
             "LEFT JOIN TipoInmueble On TipoInmueble.IdTipoInmueble = IPropio.IdTipoInmueble) " +
             "WHERE IPropio.IdIPropio = ";
    case Source::IAjeno:
      return std::string("SELECT IAjeno.*, ") +
             "Operacion.Operacion, AliasInmueble.Inmueble, Calefaccion.Calefaccion, " +
             "Pais.Nombre AS Pais, Provincia.Nombre AS Provincia, " +
             "Poblacion.Nombre AS Poblacion, Zona.Nombre AS Zona " + "FROM ((((((( IAjeno " +
             "LEFT JOIN AliasInmueble On AliasInmueble.IdAliasInmueble = IAjeno.IdAliasInmueble) " +
             "LEFT JOIN Calefaccion On Calefaccion.IdCalefaccion = IAjeno.IdCalefaccion) " +
             "LEFT JOIN Operacion On Operacion.IdOperacion = IAjeno.IdOperacion) " +
             "LEFT JOIN Pais On Pais.IdPais = IAjeno.IdPais) " +
             "LEFT JOIN Provincia On Provincia.IdProvincia = IAjeno.IdProvincia) " +
             "LEFT JOIN Poblacion On Poblacion.IdPoblacion = IAjeno.IdPoblacion) " +
             "LEFT JOIN Zona On Zona.IdZona = IAjeno.IdZona) " + "WHERE IAjeno.IdIAjeno = ";
  }
  return {};
}

// A column joined to an empty text: Null reads as "".
std::string Joined(const dao::Recordset& rs, const std::string& column) {
  const Variant value = rs.Fields(column).Value();
  return value.IsNull() ? std::string() : CStr(value);
}

// True when the heating id is 2 or more; Null compares as false.
bool KnownHeating(const dao::Recordset& rs) {
  const Variant id = rs.Fields("IdCalefaccion").Value();
  return !id.IsNull() && CDbl(id) >= 2;
}

void Fill(const char* label, Source source, form::ControlContainer& controls,
          std::int32_t& plngID) {
  Atrapar(label, [&] {
    dao::Recordset rs = RequireBD().OpenRecordset(Statement(source) + std::to_string(plngID),
                                                  dao::dbOpenForwardOnly);
    if (rs.Eof()) return;
    for (const Step& step : kSteps) {
      const char* column = source == Source::Demanda   ? step.demanda
                           : source == Source::IPropio ? step.propio
                                                       : step.ajeno;
      if (!column) continue;
      switch (step.kind) {
        case Kind::Text:
          controls.Get<form::TextBox>(step.control, step.index).setText(Joined(rs, column));
          break;
        case Kind::Heating: {
          auto& box = controls.Get<form::TextBox>(step.control);
          // A demand for a given heating also takes properties whose heating is unknown;
          // a property offers its own heating, or unknown.
          if (source != Source::Demanda) box.setText(Joined(rs, column));
          if (KnownHeating(rs)) box.setText(Joined(rs, column) + ";No se sabe");
          break;
        }
        case Kind::AllRequired:
          controls.Get<form::CheckBox>(step.control).setValue(form::vbChecked);
          break;
        case Kind::Check:
          controls.Get<form::CheckBox>(step.control).setValue(CInt(rs.Fields(column).Value()));
          break;
      }
    }
  });
}

}  // namespace

void RellenarDemanda(form::ControlContainer& controls, std::int32_t& plngID) {
  Fill("RellenarDemanda de SeleccionInm", Source::Demanda, controls, plngID);
}

void RellenarInmueblePropio(form::ControlContainer& controls, std::int32_t& plngID) {
  Fill("RellenarInmueblePropio de SeleccionInm", Source::IPropio, controls, plngID);
}

void RellenarInmuebleAjeno(form::ControlContainer& controls, std::int32_t& plngID) {
  Fill("RellenarInmuebleAjeno de SeleccionInm", Source::IAjeno, controls, plngID);
}

}  // namespace cp
