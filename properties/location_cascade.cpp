#include "properties/location_cascade.h"

#include <array>
#include <cstdint>
#include <functional>
#include <vector>

#include "common/error_handler.h"
#include "common/list_picker.h"
#include "common/messages.h"
#include "common/shared_state.h"
#include "common/sql_text.h"
#include "criteria/cfield_linker.h"
#include "platform/core/conversions.h"
#include "platform/core/error.h"
#include "platform/dao/recordset.h"
#include "platform/form/command_button.h"
#include "platform/form/control_container.h"
#include "platform/form/keys.h"
#include "platform/form/text_box.h"

namespace cp {

namespace {

enum Level { kPais = 0, kProvincia = 1, kPoblacion = 2, kZona = 3, kLevels = 4 };

struct LevelSetup {
  const char* box;
  const char* button;
  const char* title;      // of the picker and of the validation's picker
  const char* idFilter;   // how this level narrows the levels below it
  const char* clickLabel;
  // The linker's binding: the table that uses the names, the names' table, id, name.
  const char* mainTable;
  const char* lookupTable;
  const char* idField;
};

constexpr std::array<LevelSetup, kLevels> kSetup = {{
    // The país picker has always reported under the demand form's label.
    {"txtPais", "cmdPais", "Paises", "IdPais = ", "cmdPais_Click de FichaDemanda", "Pais", "Pais",
     "IdPais"},
    {"txtProvincia", "cmdProvincia", "Provincias", "IdProvincia = ",
     "cmdProvincia_Click de SeleccionInm", "PrPa", "Provincia", "IdProvincia"},
    {"txtPoblacion", "cmdPoblacion", "Poblaciones", "IdPoblacion = ",
     "cmdPoblacion_Click de SeleccionInm", "PoPrPa", "Poblacion", "IdPoblacion"},
    {"txtZona", "cmdZona", "Zonas", "IdZona = ", "cmdZona_Click de SeleccionInm", "BZona", "Zona",
     "IdZona"},
}};

constexpr std::int16_t kPickerWidth = 3000;

std::string Lower(std::string_view text) {
  std::string s(text);
  for (char& c : s) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return s;
}

int LevelOf(const std::string& controlName) {
  const std::string name = Lower(controlName);
  for (int level = 0; level < kLevels; ++level) {
    if (name == Lower(kSetup[level].box)) return level;
  }
  return -1;
}

std::string Handler(int level, const char* event) {
  return std::string(kSetup[level].box) + "_" + event + " de SeleccionInm";
}

}  // namespace

struct LocationCascade::Impl {
  explicit Impl(form::ControlContainer& c) : controls(c) {
    for (int level = 0; level < kLevels; ++level) {
      boxes[level] = &controls.Get<form::TextBox>(kSetup[level].box);
      buttons[level] = &controls.Get<form::CommandButton>(kSetup[level].button);
    }
    for (int level = 0; level < kLevels; ++level) {
      const LevelSetup& s = kSetup[level];
      linkers[level].Init(s.mainTable, s.lookupTable, s.idField, "Nombre", ";");
    }
    for (int level = 0; level < kLevels; ++level) {
      form::TextBox& box = *boxes[level];
      form::CommandButton& button = *buttons[level];
      Track(box.Change, box.Change.Connect([this, level] { Change(level); }));
      Track(box.Validate,
            box.Validate.Connect([this, level](bool& cancel) { Validate(level, cancel); }));
      Track(box.KeyDown, box.KeyDown.Connect([this, level](int& keyCode, int& shift) {
        KeyDown(level, keyCode, shift);
      }));
      Track(button.Click, button.Click.Connect([this, level] { Click(level); }));
    }
  }

  ~Impl() {
    for (auto& disconnect : disconnects) disconnect();
  }

  template <class E>
  void Track(E& event, int id) {
    disconnects.push_back([&event, id] { event.Disconnect(id); });
  }

  // A single name (or none) in an enabled box unlocks the levels below; several names lock
  // them, since the lower lists could not be narrowed by one upper id.
  void Change(int level) {
    Atrapar(Handler(level, "Change"), [&] {
      linkers[level].setValue(boxes[level]->Text());
      if (level == kZona) return;
      const bool enabled = !linkers[level].MoreValues() && boxes[level]->Enabled();
      for (int below = level + 1; below < kLevels; ++below) {
        boxes[below]->setEnabled(enabled);
        buttons[below]->setEnabled(enabled);
      }
    });
  }

  // "IdPais = 1 AND IdProvincia = 7": the ids of the filled levels above this one.
  std::string UpperFilter(int level) {
    std::string filter;
    for (int upper = 0; upper < level && upper < kZona; ++upper) {
      if (linkers[upper].IsEmpty()) continue;
      if (!filter.empty()) filter += " AND ";
      filter += kSetup[upper].idFilter + std::to_string(linkers[upper].ID());
    }
    return filter;
  }

  void Validate(int level, bool& cancel) {
    Atrapar(Handler(level, "Validate"), [&] {
      CFieldLinker& linker = linkers[level];
      linker.setFilter(UpperFilter(level));
      std::string result = kSetup[level].title;
      if (!linker.Validate(result)) {
        cancel = true;
        return;
      }
      // The linker's text differs from the box's only when the user picked other names.
      boxes[level]->setText(linker.Value());
      // Another upper name makes the lower names meaningless; emptying the level keeps them.
      if (linker.Value() != linker.PreviousValue() && !linker.Value().empty()) {
        for (int below = level + 1; below < kLevels; ++below) boxes[below]->setText("");
      }
      linker.setPreviousValue(linker.Value());
    });
  }

  void KeyDown(int level, int& keyCode, int& shift) {
    Atrapar(Handler(level, "KeyDown"), [&] {
      if (keyCode == form::vbKeyReturn && (shift & form::vbShiftMask) != 0) Click(level);
    });
  }

  void Click(int level) {
    if (level == kZona) {
      ZonePicker();
      return;
    }
    Atrapar(kSetup[level].clickLabel, [&] {
      CFieldLinker& linker = linkers[level];
      linker.setFilter(UpperFilter(level));
      boxes[level]->setText(linker.Choose(kSetup[level].title));
      boxes[level]->SetFocus();
    });
  }

  // The zone picker resolves the upper levels from the boxes' text itself; without a
  // población it offers every zone.
  void ZonePicker() {
    Atrapar(kSetup[kZona].clickLabel, [&] {
      std::string sql;
      if (!boxes[kPoblacion]->Text().empty()) {
        std::int32_t idPais = 0, idProvincia = 0, idPoblacion = 0;
        if (!LookUp("SELECT IdPais FROM Pais WHERE Nombre = " + Quoted(kPais), "IdPais", idPais,
                    "País incorrecto.", kPais))
          return;
        if (!LookUp("SELECT Provincia.IdProvincia FROM Provincia INNER JOIN PrPa"
                    " ON Provincia.IdProvincia = PrPa.IdProvincia"
                    " WHERE IdPais = " + std::to_string(idPais) +
                        " AND Provincia.Nombre = " + Quoted(kProvincia),
                    "IdProvincia", idProvincia, "Provincia incorrecto.", kProvincia))
          return;
        if (!LookUp("SELECT Poblacion.IdPoblacion FROM Poblacion INNER JOIN PoPrPa"
                    " ON Poblacion.IdPoblacion = PoPrPa.IdPoblacion"
                    " WHERE IdProvincia = " + std::to_string(idProvincia) +
                        " AND IdPais = " + std::to_string(idPais) +
                        " AND Poblacion.Nombre = " + Quoted(kPoblacion),
                    "IdPoblacion", idPoblacion, "Población incorrecta.", kPoblacion))
          return;
        sql = "SELECT DISTINCT Zona.Nombre FROM Zona INNER JOIN BZona"
              " ON BZona.IdZona = Zona.IdZona "
              " WHERE IdPais = " + std::to_string(idPais) +
              " AND IdProvincia = " + std::to_string(idProvincia) +
              " AND IdPoblacion = " + std::to_string(idPoblacion);
      }
      form::TextBox& zona = *boxes[kZona];
      zona.setText(VerListadoMult(zona.Text(), "Zona", "Nombre", false, false, false,
                                  kPickerWidth, kSetup[kZona].title, sql));
      zona.SetFocus();
    });
  }

  // The box's text without the one trailing ";" that the pickers leave, as a Jet literal.
  std::string Quoted(int level) const {
    std::string text = boxes[level]->Text();
    if (text.ends_with(";")) text.pop_back();
    return "'" + Comilla(text) + "'";
  }

  // Runs a look-up of one id; with no row, tells the user and sends him to the box at fault.
  bool LookUp(const std::string& sql, const char* field, std::int32_t& id,
              const char* message, int level) {
    dao::Recordset rs = RequireBD().OpenRecordset(sql);
    if (rs.Eof()) {
      rs.Close();
      MostrarMensaje(message);
      boxes[level]->SetFocus();
      return false;
    }
    id = CLng(rs.Fields(field).Value());
    rs.Close();
    return true;
  }

  form::ControlContainer& controls;
  std::array<CFieldLinker, kLevels> linkers;
  std::array<form::TextBox*, kLevels> boxes{};
  std::array<form::CommandButton*, kLevels> buttons{};
  std::vector<std::function<void()>> disconnects;
};

LocationCascade::LocationCascade(form::ControlContainer& controls)
    : impl_(std::make_unique<Impl>(controls)) {}

LocationCascade::~LocationCascade() = default;

CFieldLinker& LocationCascade::Pais() { return impl_->linkers[kPais]; }
CFieldLinker& LocationCascade::Provincia() { return impl_->linkers[kProvincia]; }
CFieldLinker& LocationCascade::Poblacion() { return impl_->linkers[kPoblacion]; }
CFieldLinker& LocationCascade::Zona() { return impl_->linkers[kZona]; }

bool LocationCascade::IsLocationBox(const std::string& controlName) {
  return LevelOf(controlName) >= 0;
}

void LocationCascade::Restore(const std::string& controlName, const std::string& value) {
  const int level = LevelOf(controlName);
  if (level < 0) Raise(err::kInvalidProcedureCall);
  CFieldLinker& linker = impl_->linkers[level];
  // The linker holds what the box can hold, or its look-ups would search for more.
  const std::string text = form::EditBoxText(value);
  linker.setValue(text);
  linker.setPreviousValue(text);
  impl_->boxes[level]->setText(linker.Value());
}

}  // namespace cp
