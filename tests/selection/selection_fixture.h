#pragma once
// The selection object's tests: the shared routines in a known state (scripted messenger,
// log folder, fixed clock), an agency database with a few contacts, and a dialog that "the
// user" drives through a script inside the modal loop.
#include <array>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "platform/core/conversions.h"
#include "platform/dao/connect.h"
#include "platform/form/check_box.h"
#include "platform/form/combo_box.h"
#include "platform/form/command_button.h"
#include "platform/form/date_picker.h"
#include "platform/form/text_box.h"
#include "selection/modal_runner.h"
#include "tests/support/host_test.h"
#include "tests/support/scratch_db.h"

namespace cp::testing {

inline const char* const kContactRows = R"SQL(
INSERT INTO Usuario (IdUsuario, Nombre) VALUES (3, 'Ana Pérez'), (8, 'Álvaro Gil');
INSERT INTO Poblacion (IdPoblacion, Nombre) VALUES (1, 'Ávila'), (2, 'Madrid');
INSERT INTO Cliente
  (IdCliente, Alias, Apellidos, FechaAlta, IdUsuario, IdPoblacion, Categorias, Notas) VALUES
  (1, 'García, Luis', 'García López', '2024-02-29', 3, 1, 'Inversor; ', NULL),
  (2, 'Garcia, Ana', 'garcia ruiz', '2024-03-01', 8, 2, 'Inversor; Vip; ', 'Cliente O''Brien'),
  (3, 'Pérez, Juan', 'Pérez Garcia', '2024-03-01 18:30:00', 3, NULL, 'Vip; ', NULL),
  (4, 'O''Brien', 'O''Brien', NULL, NULL, 2, NULL, NULL),
  (5, 'Ruiz', 'Ruiz Garcia', '2023-12-31', 8, 1, '', NULL);
INSERT INTO TfnoCli (IdCliente, Numero) VALUES (1, '600 111 222'), (2, '91 555 1234'),
  (4, '600 999 000');
INSERT INTO CorreoECli (IdCliente, Numero) VALUES (3, 'juan@garcia.es'), (5, 'ruiz@correo.es');
)SQL";

class SelectionTest : public HostTest {
 protected:
  static void SetUpTestSuite() {
    path_ = ScratchDb::Create("cp_selection", kContactRows);
  }
  static void TearDownTestSuite() { std::filesystem::remove(path_); }

  // Shows the dialog with script acting as the user; returns what mtdMostrar returns.
  bool Show(std::function<void(frmSeleccion&)> script) {
    ScopedModalRunner runner(std::make_shared<ScriptedModalRunner>(std::move(script)));
    return sel_->mtdMostrar();
  }

  static void Press(frmSeleccion& dlg, const std::string& button) {
    dlg.Controls().Get<form::CommandButton>(button).Press();
  }
  static form::ControlContainer& Cli(frmSeleccion& dlg) { return dlg.SeleccionCli1().Controls(); }

  // The keys of the rows that the host query returns for a condition.
  std::vector<long> Clients(const std::string& where) {
    std::vector<long> ids;
    for (dao::Recordset rs = BD()->OpenRecordset("SELECT IdCliente FROM Cliente WHERE " + where +
                                                 " ORDER BY IdCliente");
         !rs.Eof(); rs.MoveNext())
      ids.push_back(CLng(rs.Fields(0).Value()));
    return ids;
  }
};

// A saved selection as the host stores it: rows of name, index and value, all as text.
inline Variant Saved(const std::vector<std::array<std::string, 3>>& rows) {
  Array2D a(0, static_cast<int>(rows.size()) - 1, 0, 2);
  for (std::size_t i = 0; i < rows.size(); ++i)
    for (int j = 0; j < 3; ++j) a.at(static_cast<int>(i), j) = Variant(rows[i][j]);
  return Variant(std::move(a));
}

}  // namespace cp::testing
