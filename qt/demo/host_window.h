#pragma once
// DemoHostWindow: a small host that uses the selection component as the office application
// does. The user picks an entity and presses "Seleccionar…": the host hands the component
// the entity (and the selection saved for it, if any), shows the dialog, and on acceptance
// runs its own query with the returned condition and lists the rows with their count. A
// selection accepted with "Guardar Selección" ticked is kept and handed back the next time
// that entity is chosen. The menu "Selecciones recientes" offers the entity's last five
// accepted selections; choosing one reopens the dialog with it. Both are kept per database in
// the user's configuration (QSettings), so they outlive the program. "Cruzar" crosses the
// demand or property of the selected row with the other side of the market (a demand with
// "Inm. Propios", a property with "Demandas").
//
// The list is for people: Spanish column headers (each header item keeps the column's name
// as its Qt::UserRole data) and the names behind lookup ids. The condition shows a few
// lines; "cmdVerCondicion" opens the rest.
//
// "Abrir base de datos de Access…" (menu Archivo) brings an office's Access file in: it is
// imported into a database in the user's cache folder, named after the file and reused while
// it is newer than the file, and then the host works on that database.
//
// Widgets are named for tests: "cboEntidad", "cmdSeleccionar", "cmdCruzar", "lblCondicion",
// "cmdVerCondicion", "lblFilas", "grdFilas", the action "actAbrirAccess", the menu
// "mnuRecientes".
#include <QMainWindow>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/dao/database.h"
#include "selection/c_seleccion.h"

class QComboBox;
class QLabel;
class QMenu;
class QSettings;
class QPushButton;
class QTableWidget;

namespace cp {

class DemoHostWindow : public QMainWindow {
 public:
  // The host of one open database; path is what the component gets as PathDB. Sets the
  // database shared by the component (the last host to set it wins).
  DemoHostWindow(std::shared_ptr<dao::Database> db, const std::string& path,
                 QWidget* parent = nullptr);

  CSeleccion& selection() { return selection_; }

  // Runs the dialog for the entity chosen in the list, with the current ModalRunner. True
  // when the user accepted: the rows of the condition are then listed. A failure of the
  // component is shown to the user (MostrarMensaje) and gives false.
  bool Select();
  // The same with a selection of the entity handed to the dialog (Empty: none), as the
  // recent selections' menu does.
  bool Select(const std::string& entity, const Variant& saved);
  // Asks for an Access file (a QFileDialog, answered in tests by watching for it), imports
  // it under a progress dialog unless its cached copy is newer, opens the copy and lists the
  // chosen entity's rows. False when the user cancels either window, or after an error, which
  // is shown to the user; a cancelled or failed import keeps the database in use.
  bool OpenAccessFile();
  // Works on db from now on: what was listed for the previous one is forgotten, and the
  // selections kept are those of db.
  void UseDatabase(std::shared_ptr<dao::Database> db, const std::string& path);
  // Crosses the record of the current row; true when rows were listed. False (nothing done)
  // when there is no current row or the listed entity cannot be crossed.
  bool CrossSelected();

  // The selection kept for an entity (Empty when none).
  Variant SavedSelection(const std::string& entity) const;
  // The entity whose rows are listed ("" before the first selection).
  const std::string& ListedEntity() const { return listedEntity_; }
  int ListedRows() const;

  QComboBox& entityList() const { return *entities_; }
  QPushButton& selectButton() const { return *select_; }
  QPushButton& crossButton() const { return *cross_; }
  QTableWidget& rows() const { return *rows_; }
  QLabel& conditionLabel() const { return *condition_; }
  QWidget& conditionArea() const { return *conditionArea_; }
  QPushButton& conditionButton() const { return *conditionMore_; }
  QLabel& countLabel() const { return *count_; }
  // The chosen entity's recent selections, one action each, kept up to date.
  QMenu& recentMenu() const { return *recent_; }

  // The entities a host offers, in the dialog's default order.
  static const std::vector<std::string>& Entities();
  // The entity a record of entity is crossed with ("" when it cannot be crossed).
  static std::string CrossTarget(const std::string& entity);

 private:
  void ListRows(const std::string& entity, const std::string& condition);
  void UpdateCrossButton();
  void UpdateRecentMenu();
  // The settings of this database's entity: its kept selection and its recent ones.
  std::unique_ptr<QSettings> Settings(const std::string& entity) const;
  void ShowWholeCondition(bool whole);
  // The names of a lookup table by id, read once.
  const std::map<long, QString>& LookupNames(const std::string& column);

  std::shared_ptr<dao::Database> db_;
  CSeleccion selection_;
  std::string path_;
  std::string listedEntity_;
  QComboBox* entities_ = nullptr;
  QPushButton* select_ = nullptr;
  QPushButton* cross_ = nullptr;
  QLabel* condition_ = nullptr;
  QWidget* conditionArea_ = nullptr;
  QPushButton* conditionMore_ = nullptr;
  std::map<std::string, std::map<long, QString>> lookups_;
  QLabel* count_ = nullptr;
  QMenu* recent_ = nullptr;
  QTableWidget* rows_ = nullptr;
};

}  // namespace cp
