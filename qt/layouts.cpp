#include "qt/layouts.h"

#include <algorithm>
#include <charconv>
#include <set>

#include "platform/core/error.h"
#include "platform/form/control.h"
#include "platform/form/user_control.h"

namespace cp::layout {
namespace {

using Rows = std::vector<std::vector<std::string>>;

// The dialog: the entity list on top, the criteria area, then the buttons. Buttons follow
// creation order (Nueva Selección, Aceptar, Cancelar) so the tab order reads left to right.
const Rows kSeleccion = {
    {"lblGrupo", "cboEntidad"},
    {"fraTodo"},
    {"", "chkGuardar"},
    {"cmdNuevo", "|", "cmdAceptar", "cmdCancelar"},
};

// Contact criteria: rows in creation order so that Tab walks them top to bottom.
const Rows kSeleccionCli = {
    {"tbsSelec"},
    {"lblCategorias", "txtCategorias", "cmdCategorias"},
    {"", "chkCategorias"},
    {"lblPalabras", "txtPalabras", "cboOpPalabras", "lblEn", "cboEn"},
    {"lblAlta1", "dtpAlta(0)", "lblAlta2", "dtpAlta(1)"},
    {"lblModif1", "dtpActualiza(0)", "lblModif2", "dtpActualiza(1)"},
    {"lblEnvio1", "dtpTransmision(0)", "lblEnvio2", "dtpTransmision(1)"},
};

// Property criteria: one frame per tab, the word search below the tabs.
const Rows kSeleccionInm = {
    {"tbsSelec"},
    // General
    {"lblInmueble", "txtInmueble", "cmdInmueble"},
    {"lblOperacion", "txtOperacion", "cmdOperacion"},
    {"lblPais", "txtPais", "cmdPais"},
    {"lblProvincia", "txtProvincia", "cmdProvincia"},
    {"lblPoblacion", "txtPoblacion", "cmdPoblacion"},
    {"lblZona", "txtZona", "cmdZona"},
    {"lblPrecio", "txtPrecio(0):12", "lbly1", "txtPrecio(1):12"},
    {"lblSuper", "txtSuper(0):12", "lbly2", "txtSuper(1):12"},
    // Tipo
    {"lblCategorias", "txtCategorias", "cmdCategorias"},
    {"", "chkCategorias"},
    {"lblTipos", "txtTipos", "cmdTipos"},
    {"lblCalefaccion", "txtCalefaccion", "cmdCalefaccion"},
    {"lblAcceso", "txtAcceso", "cmdAcceso"},
    // Características: small numbers, then the yes/no features in two rows.
    {"lblAltura", "txtAltura:8"},
    {"lblHuecos", "txtHuecos:8"},
    {"lblPiezasExt", "txtPiezasExt:8"},
    {"lblAscensor", "txtAscensor:8"},
    {"lblGaraje", "txtGaraje:8"},
    {"lblAseos", "txtAseos:8"},
    {"lblBanios", "txtBanios:8"},
    {"", "chkAmueblado", "chkNuevo", "chkTrastero"},
    {"", "chkComercial", "chkIndustrial", "chkExclusiva"},
    // Agencia
    {"lblAgencias", "txtAgencias", "cmdAgencias"},
    {"lblUsuarios", "txtUsuarios", "cmdAgentes"},
    {"", "chkIntBolsa", "chkIntAgencia"},
    {"", "chkTransmitido", "chkCaducado"},
    // Fechas
    {"lblAlta1", "dtpAlta(0)", "lblAlta2", "dtpAlta(1)"},
    {"lblModif1", "dtpActualiza(0)", "lblModif2", "dtpActualiza(1)"},
    {"lblTransm1", "dtpTransmision(0)", "lblTransm2", "dtpTransmision(1)"},
    // Below the tabs
    {"lblPalabras", "txtPalabras", "lblEn", "cboEn", "cboOpPalabras"},
};

// Frames, tab strips and user controls always take a row of their own.
bool IsContainerKind(const form::Control& c) {
  const std::string t = c.TypeName();
  return t == "Frame" || t == "SSTab" || dynamic_cast<const form::UserControl*>(&c) != nullptr;
}

int ParseInt(std::string_view text) {
  int value = 0;
  const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (text.empty() || ec != std::errc() || end != text.data() + text.size() || value < 0)
    Raise(err::kInvalidProcedureCall);
  return value;
}

}  // namespace

Cell ParseCell(std::string_view text) {
  Cell cell;
  if (text.empty()) {
    cell.kind = Cell::Kind::Blank;
    return cell;
  }
  if (text == "|") {
    cell.kind = Cell::Kind::Stretch;
    return cell;
  }
  if (const auto colon = text.find(':'); colon != std::string_view::npos) {
    cell.widthChars = ParseInt(text.substr(colon + 1));
    text = text.substr(0, colon);
  }
  if (const auto open = text.find('('); open != std::string_view::npos) {
    if (text.back() != ')') Raise(err::kInvalidProcedureCall);
    cell.index = ParseInt(text.substr(open + 1, text.size() - open - 2));
    text = text.substr(0, open);
  }
  if (text.empty()) Raise(err::kInvalidProcedureCall);
  cell.name = std::string(text);
  return cell;
}

std::vector<std::vector<std::string>> DescriptionFor(std::string_view containerName) {
  if (containerName == "frmSeleccion") return kSeleccion;
  if (containerName == "SeleccionCli") return kSeleccionCli;
  if (containerName == "SeleccionInm") return kSeleccionInm;
  return {};
}

Area AreaOf(const form::Control& control) {
  const form::Control* parent = control.Parent();
  if (!parent) return {};
  return {parent, parent->TypeName() == "SSTab" ? std::max(control.ParentTab(), 0) : -1};
}

std::vector<PlacedRow> PlanRows(const form::ControlContainer& container) {
  std::vector<PlacedRow> rows;
  std::set<const form::Control*> placed;

  const auto finish = [&](PlacedRow& row) {
    if (row.cells.empty()) return;
    const auto first = std::find_if(row.cells.begin(), row.cells.end(),
                                    [](const PlacedCell& c) { return c.control; });
    if (first == row.cells.end()) return;  // blanks and stretches only
    row.area = AreaOf(*first->control);
    const PlacedCell& lead = row.cells.front();
    row.labelled = lead.kind == Cell::Kind::Blank ||
                   (lead.control && lead.control->TypeName() == "Label");
    rows.push_back(std::move(row));
  };

  for (const auto& described : DescriptionFor(container.Name())) {
    PlacedRow row;
    for (const std::string& text : described) {
      const Cell cell = ParseCell(text);
      if (cell.kind != Cell::Kind::Control) {
        row.cells.push_back({cell.kind, nullptr, 0});
        continue;
      }
      form::Control* control = container.Find(cell.name, cell.index);
      if (!control || placed.count(control)) continue;
      placed.insert(control);
      row.cells.push_back({Cell::Kind::Control, control, cell.widthChars});
    }
    finish(row);
  }

  // Generic rule for the rest, area by area in the order the areas first appear.
  std::vector<std::pair<Area, PlacedRow>> current;  // the row being filled, per area
  const auto currentFor = [&](const Area& area) -> PlacedRow* {
    for (auto& [a, row] : current)
      if (a == area) return &row;
    return nullptr;
  };
  for (form::Control* control : container.Controls()) {
    if (placed.count(control)) continue;
    const Area area = AreaOf(*control);
    PlacedRow* row = currentFor(area);
    const bool label = control->TypeName() == "Label";
    const bool own = IsContainerKind(*control);
    if (row && (label || own)) {
      finish(*row);
      *row = PlacedRow{};
    }
    if (!row) {
      current.push_back({area, PlacedRow{}});
      row = &current.back().second;
    }
    row->cells.push_back({Cell::Kind::Control, control, 0});
    if (own) {
      finish(*row);
      *row = PlacedRow{};
    }
  }
  for (auto& [area, row] : current) finish(row);
  return rows;
}

}  // namespace cp::layout
