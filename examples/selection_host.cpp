// A host program that uses CriterioPredios without a window: it opens its database, creates
// the selection object by its ProgID, chooses the entity, lets a script stand in for the user
// of the dialog, and runs the condition it gets back.
//
//   selection_host DATABASE [WORDS]
//
// DATABASE is an SQLite file (or a postgresql:// URI) with the agency schema, e.g. one made by
// `criteriopredios init-db --db demo.db --demo`. Prints the condition, the number of clients it
// selects out of all of them and the first few; exits 1 when something is wrong.
#include <iostream>
#include <memory>
#include <string>

#include "common/entity_catalogue.h"
#include "platform/automation/registry.h"
#include "platform/core/error.h"
#include "platform/dao/connect.h"
#include "platform/dao/database_object.h"
#include "platform/form/command_button.h"
#include "platform/form/text_box.h"
#include "selection/c_seleccion.h"
#include "selection/frm_seleccion.h"
#include "selection/modal_runner.h"

namespace {

// A snapshot knows its number of rows as soon as it opens.
long CountRows(cp::dao::Database& db, const std::string& table, const std::string& where) {
  return db.OpenRecordset("SELECT * FROM " + table + (where.empty() ? "" : " WHERE " + where))
      .RecordCount();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::cerr << "usage: selection_host DATABASE [WORDS]\n";
    return 2;
  }
  const std::string path = argv[1];
  const std::string words = argc > 2 ? argv[2] : "díaz";
  const std::string entity = "Clientes";
  try {
    // 1. Open the database; the component reads through the same object.
    std::shared_ptr<cp::dao::Database> db = cp::dao::OpenDatabase(path);

    // 2. Create the selection object by its ProgID and hand it the database.
    cp::RegisterCSeleccion();
    std::shared_ptr<cp::Dispatch> selection = cp::CreateObject("CriterioPredios.CSeleccion");
    selection->SetProperty("BD", cp::Variant(std::make_shared<cp::dao::DatabaseObject>(db)));
    selection->SetProperty("PathDB", cp::Variant(path));

    // 3. Choose the entity the user selects from.
    selection->SetProperty("Entidad", cp::Variant(entity));

    // 4. Answer the dialog: in place of a window, the modal runner runs this script as the
    //    user, who types words to search for in the clients' names and presses "Aceptar".
    //    A GUI host installs cp::QtModalRunner (qt/qt_modal_runner.h) instead.
    cp::SetModalRunner(std::make_shared<cp::ScriptedModalRunner>([&](cp::frmSeleccion& dialog) {
      dialog.SeleccionCli1().Controls().Get<cp::form::TextBox>("txtPalabras").setText(words);
      dialog.Controls().Get<cp::form::CommandButton>("cmdAceptar").Press();
    }));
    if (!selection->CallMethod("mtdMostrar").AsBool()) {
      std::cerr << "The dialog was not accepted.\n";
      return 1;
    }

    // 5. Run the condition. It is Jet SQL, which the database object translates.
    const std::string where = selection->GetProperty("SQLW").AsString();
    const std::string table = cp::FindEntity(entity)->table;
    const long selected = CountRows(*db, table, where);
    const long all = CountRows(*db, table, "");
    std::cout << "SQLW: " << where << "\n"
              << entity << ": " << selected << " of " << all << "\n";
    cp::dao::Recordset rows =
        db->OpenRecordset("SELECT Alias FROM " + table + " WHERE " + where + " ORDER BY Alias");
    for (int shown = 0; !rows.Eof() && shown < 5; rows.MoveNext(), ++shown)
      std::cout << "  " << rows.Fields("Alias").Value().AsString() << "\n";

    // The words must have given a condition that selects some clients, not all of them.
    if (where.empty() || selected == 0 || selected == all) {
      std::cerr << "The condition did not select a part of the clients.\n";
      return 1;
    }
    return 0;
  } catch (const cp::Error& e) {
    std::cerr << "Error " << e.number() << ": " << e.description() << "\n";
    return 1;
  }
}
