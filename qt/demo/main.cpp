// criteriopredios-demo: the demo host window over a database (the demo database unless
// --db names another), or, with --screenshot / --screenshot-picker, a picture of the
// selection dialog or of one of its list windows, taken without a person.
#include <CLI/CLI.hpp>
#include <QApplication>
#include <iostream>
#include <memory>

#include "common/messenger.h"
#include "common/program_info.h"
#include "platform/core/error.h"
#include "platform/dao/connect.h"
#include "qt/demo/demo_database.h"
#include "qt/demo/host_window.h"
#include "qt/demo/screenshot.h"
#include "qt/qt_list_picker.h"
#include "qt/qt_messenger.h"
#include "qt/qt_modal_runner.h"
#include "qt/qt_window_capture.h"
#include "selection/c_seleccion.h"
#include "selection/modal_runner.h"

int main(int argc, char** argv) {
  CLI::App cli{"Demostración de CriterioPredios: la ventana de selección sobre una base de datos."};
  cli.allow_extras();  // Qt's own options (-platform ...) pass through
  std::string db = cp::DefaultDemoDatabase();
  std::string dialogPicture, listPicture, entity, picker;
  int tab = -1;
  bool checkNotBlank = false, liveCount = false;
  std::vector<std::string> entries;
  cli.add_option("--db", db, "Base de datos SQLite (se crea con datos de ejemplo si falta)");
  auto* dialogOpt = cli.add_option("--screenshot", dialogPicture,
                                   "Guarda una imagen del diálogo (PNG) y termina");
  auto* listOpt = cli.add_option("--screenshot-picker", listPicture,
                                 "Guarda una imagen de la lista que abre --picker (PNG) y termina");
  auto* entityOpt = cli.add_option("--entity", entity, "Entidad del diálogo para la imagen");
  auto* tabOpt = cli.add_option("--tab", tab, "Pestaña del control de criterios (0, 1, ...)");
  auto* pickerOpt = cli.add_option("--picker", picker, "Botón de lista, p. ej. cmdCategorias");
  cli.add_flag("--check-not-blank", checkNotBlank,
                                "Falla (1) si la imagen guardada está en blanco");
  cli.add_option("--set", entries, "NOMBRE=VALOR introducido en el control antes de la imagen");
  cli.add_flag("--count", liveCount, "La imagen muestra la cuenta de registros seleccionados");
  dialogOpt->excludes(listOpt);
  dialogOpt->needs(entityOpt);
  listOpt->needs(entityOpt)->needs(pickerOpt);
  tabOpt->needs(entityOpt);
  pickerOpt->needs(listOpt);
  try {
    cli.parse(argc, argv);
    if (checkNotBlank && dialogPicture.empty() && listPicture.empty())
      throw CLI::ValidationError("--check-not-blank", "necesita --screenshot o --screenshot-picker");
    if (!dialogPicture.empty() || !listPicture.empty()) {
      if (!*entityOpt) throw CLI::RequiredError("--entity");
    }
  } catch (const CLI::ParseError& e) {
    return cli.exit(e) == 0 ? 0 : 2;
  }

  if (!cp::EnsureDemoDatabase(db, std::cout, std::cerr)) return 2;
  QApplication app(argc, argv);
  cp::RegisterCSeleccion();
  cp::RegisterQtListPicker();
  cp::SetMessenger(std::make_shared<cp::QtMessenger>());
  // A support report carries a picture of the windows and goes to this address.
  cp::SetWindowCapture(std::make_shared<cp::QtWindowCapture>());
  cp::setSupportAddress("soporte@norvak.es");
  cp::SetModalRunner(std::make_shared<cp::QtModalRunner>());

  try {
    std::shared_ptr<cp::dao::Database> database = cp::dao::OpenDatabase(db);
    if (!dialogPicture.empty() || !listPicture.empty()) {
      cp::CSeleccion selection;
      selection.setBD(database);
      selection.setPathDB(db);
      cp::ScreenshotRequest request;
      request.file = dialogPicture.empty() ? listPicture : dialogPicture;
      request.entity = entity;
      request.tab = tab;
      request.picker = listPicture.empty() ? "" : picker;
      request.liveCount = liveCount;
      for (const std::string& entry : entries) request.entries.push_back(cp::ParseUserEntry(entry));
      const int status = cp::TakeScreenshot(selection, request, std::cerr);
      if (status != 0) return status;
      if (checkNotBlank && cp::LooksBlank(request.file)) {
        std::cerr << "La imagen " << request.file << " está en blanco.\n";
        return 1;
      }
      std::cout << request.file << "\n";
      return 0;
    }
    cp::DemoHostWindow window(database, db);
    window.show();
    return app.exec();
  } catch (const cp::Error& e) {
    std::cerr << e.description() << "\n";
    return 2;
  }
}
