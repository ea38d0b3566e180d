// Smoke tests of the demo host: the dialog played by a script inside its modal loop, the rows
// of the accepted condition listed with their count, an Access file opened from the menu.
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QSettings>
#include <QTableWidget>
#include <filesystem>

#include "platform/dao/connect.h"
#include "qt/demo/host_window.h"
#include "tests/qt/gui_support.h"

namespace cp::testing {
namespace {

const char* const kRows = R"SQL(
INSERT INTO Provincia (IdProvincia, Nombre) VALUES (5, 'Málaga');
INSERT INTO Cliente (IdCliente, Alias, Apellidos) VALUES
  (1, 'García, Luis', 'García López'), (3, 'Pérez, Juan', 'Pérez Garcia'), (4, 'O''Brien', '');
INSERT INTO Agencia (IdAgencia, Alias) VALUES (1, 'Sol'), (2, 'Luna');
INSERT INTO Demanda (IdDemanda, IdCliente, PrecioMinimo, PrecioMaximo, Huecos) VALUES
  (1, 1, 100000, 200000, 3), (2, 1, 50000, 90000, 2);
INSERT INTO AliasInmueble (IdAliasInmueble, Inmueble, Activo) VALUES (4, 'Ático', 1);
INSERT INTO IPropio (IdIPropio, IdCliente, IdProvincia, Precio, Huecos, Exclusividad,
  IdAliasInmueble) VALUES (1, 3, NULL, 150000, 3, 0, 4), (2, 4, 5, 80000, 2, 1, NULL);
)SQL";

class DemoHostTest : public CommonTest {
 protected:
  static void SetUpTestSuite() { path_ = ScratchDb::Create("cp_demo_host", kRows); }
  static void TearDownTestSuite() { std::filesystem::remove(path_); }
  void SetUp() override {
    CommonTest::SetUp();
    // The user's configuration, where the host keeps selections, is the test's own.
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QString::fromStdString(dir_));
    host_ = std::make_unique<DemoHostWindow>(dao::OpenDatabase(path_), path_);
  }
  void TearDown() override {
    host_.reset();
    setBD(nullptr);
    CommonTest::TearDown();
  }

  // Selects with script playing the user in the dialog (Aceptar by default).
  bool Select(const std::string& entity, std::function<void(frmSeleccion&)> script = Accept) {
    host_->entityList().setCurrentText(QString::fromStdString(entity));
    ScopedModalRunner runner(std::make_shared<ScriptedModalRunner>(std::move(script)));
    return host_->Select();
  }
  static void Accept(frmSeleccion& dlg) {
    dlg.Controls().Get<form::CommandButton>("cmdAceptar").Press();
  }
  // The header, then the text of each row, in the column of the field.
  QStringList Column(const char* field) const {
    QTableWidget& rows = host_->rows();
    QStringList cells;
    for (int c = 0; c < rows.columnCount(); ++c) {
      if (rows.horizontalHeaderItem(c)->data(Qt::UserRole).toString() != field) continue;
      cells.push_back(rows.horizontalHeaderItem(c)->text());
      for (int r = 0; r < rows.rowCount(); ++r) cells.push_back(rows.item(r, c)->text());
    }
    return cells;
  }

  std::unique_ptr<DemoHostWindow> host_;
  static inline std::string path_;
};

TEST_F(DemoHostTest, ListsTheRowsOfTheAcceptedConditionWithTheirCount) {
  ASSERT_TRUE(Select("Clientes", [](frmSeleccion& dlg) {
    form::ControlContainer& c = dlg.SeleccionCli1().Controls();
    c.Get<form::TextBox>("txtPalabras").setText("garcia");
    c.Get<form::ComboBox>("cboOpPalabras").setText("Al final");
    c.Get<form::ComboBox>("cboEn").setText("Apellido");
    Accept(dlg);
  }));
  EXPECT_EQ(Column("IdCliente"), QStringList({"Nº", "3"}));
  const QString condition = QString::fromStdString(host_->selection().SQLW());
  EXPECT_TRUE(host_->conditionLabel().text().contains(condition));
  host_->rows().setCurrentCell(0, 0);
  EXPECT_FALSE(host_->CrossSelected()) << "clients cross with nothing";
  // Untouched, the dialog lists everything.
  ASSERT_TRUE(Select("Agencias"));
  EXPECT_EQ(host_->countLabel().text(), "2 registros de Agencias");
  EXPECT_TRUE(host_->conditionLabel().text().contains("todos los registros"));
  // Headers in words, lookups by name, Yes/No as Sí/No.
  ASSERT_TRUE(Select("Inm. Propios"));
  const std::pair<const char*, QStringList> columns[] = {
      {"IdAcceso", {"Acceso", "", ""}}, {"Banios", {"Baños", "", ""}},
      {"IdAliasInmueble", {"Inmueble", "Ático", ""}},
      {"FechaAlta", {"Fecha alta", "", ""}}, {"Exclusividad", {"Exclusividad", "No", "Sí"}}};
  for (const auto& [field, cells] : columns) EXPECT_EQ(Column(field), cells) << field;
}

// The selection saved with "Guardar Selección" and the last five accepted outlive the window;
// the same selection accepted again moves up; a recent one reopens the dialog with it.
TEST_F(DemoHostTest, KeepsSavedAndRecentSelectionsAcrossRestarts) {
  const auto typed = [](std::string words, bool keep) {
    return [=](frmSeleccion& dlg) {
      dlg.SeleccionCli1().Controls().Get<form::TextBox>("txtPalabras").setText(words);
      dlg.chkGuardar().setValue(keep ? 1 : 0);
      Accept(dlg);
    };
  };
  for (const char* words : {"uno", "dos", "tres", "cuatro", "cinco", "seis", "cinco"})
    ASSERT_TRUE(Select("Clientes", typed(words, words == std::string("tres"))));
  ASSERT_TRUE(Select("Agencias"));

  host_ = std::make_unique<DemoHostWindow>(dao::OpenDatabase(path_), path_);
  host_->entityList().setCurrentText("Clientes");
  QStringList names;
  for (QAction* action : host_->recentMenu().actions()) names.push_back(action->text());
  ASSERT_EQ(names.size(), 5);
  const char* newestFirst[] = {"cinco", "seis", "cuatro", "tres", "dos"};
  for (int i = 0; i < 5; ++i)
    EXPECT_TRUE(names[i].contains(QStringLiteral("'*%1*'").arg(newestFirst[i]))) << names[i].toStdString();
  EXPECT_FALSE(names[0].contains("Cliente.")) << "named without the tables";

  std::string shown;
  const auto read = [&](frmSeleccion& dlg) {
    shown = dlg.SeleccionCli1().Controls().Get<form::TextBox>("txtPalabras").Text();
    Accept(dlg);
  };
  ASSERT_TRUE(Select("Clientes", read));
  EXPECT_EQ(shown, "tres") << "the saved selection is handed back";
  ScopedModalRunner runner(std::make_shared<ScriptedModalRunner>(read));
  host_->recentMenu().actions()[4]->trigger();
  EXPECT_EQ(shown, "dos");
  EXPECT_EQ(host_->ListedEntity(), "Clientes");

  host_->entityList().setCurrentText("Inm. Propios");
  ASSERT_EQ(host_->recentMenu().actions().size(), 1);
  EXPECT_FALSE(host_->recentMenu().actions()[0]->isEnabled()) << "none for this entity";
}

// An office's Access file opened from the menu: imported into the cache folder, then listed.
TEST_F(DemoHostTest, OpensAnAccessFileThroughACopyInTheCacheFolder) {
  namespace fs = std::filesystem;
  qputenv("XDG_CACHE_HOME", QByteArray::fromStdString(dir_));
  const std::string mdb = std::string(CP_SHARED_DIR) + "/fixtures/agencia.mdb";
  ModalAnswer user([&](QWidget& window) {
    auto& ask = static_cast<QFileDialog&>(window);
    // Typed, as selecting waits for the folder to be read.
    ask.findChild<QLineEdit*>("fileNameEdit")->setText(QString::fromStdString(mdb));
    static_cast<QDialog&>(ask).accept();  // as the Open button does
  });
  host_->entityList().setCurrentText("Demandas");
  ASSERT_TRUE(host_->OpenAccessFile());
  EXPECT_TRUE(user.Answered());
  EXPECT_EQ(host_->countLabel().text(), "300 registros de Demandas");
  std::vector<fs::path> copies;  // in the cache folder, named after the file
  for (const fs::directory_entry& e : fs::recursive_directory_iterator(dir_))
    if (e.path().filename().string().starts_with("agencia")) copies.push_back(e.path());
  EXPECT_EQ(copies.size(), 1u);
}

}  // namespace
}  // namespace cp::testing
