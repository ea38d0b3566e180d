// Smoke tests of the demo host: the dialog played by a script inside its modal loop, the
// rows of the accepted condition listed with their count, the cross button, a screenshot.
#include <QAction>
#include <QComboBox>
#include <QFileDialog>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <filesystem>
#include <sstream>

#include "common/shared_state.h"
#include "platform/core/conversions.h"
#include "platform/dao/connect.h"
#include "platform/form/combo_box.h"
#include "platform/form/command_button.h"
#include "platform/form/text_box.h"
#include "qt/demo/host_window.h"
#include "qt/demo/screenshot.h"
#include "qt/qt_list_picker.h"
#include "qt/qt_modal_runner.h"
#include "common/list_picker.h"
#include "platform/automation/registry.h"
#include "selection/modal_runner.h"
#include "tests/common/common_fixture.h"
#include "tests/qt/picker_test_support.h"
#include "tests/support/scratch_db.h"

namespace cp::testing {
namespace {

const char* const kRows = R"SQL(
INSERT INTO Cliente (IdCliente, Alias, Apellidos) VALUES
  (1, 'García, Luis', 'García López'), (2, 'Garcia, Ana', 'garcia ruiz'),
  (3, 'Pérez, Juan', 'Pérez Garcia'), (4, 'O''Brien', 'O''Brien'), (5, 'Ruiz', 'Ruiz Garcia');
INSERT INTO Agencia (IdAgencia, Alias) VALUES (1, 'Sol'), (2, 'Luna');
INSERT INTO Demanda (IdDemanda, IdCliente, PrecioMinimo, PrecioMaximo, Huecos) VALUES
  (1, 1, 100000, 200000, 3), (2, 2, 50000, 90000, 2);
INSERT INTO IPropio (IdIPropio, IdCliente, Precio, Huecos) VALUES
  (1, 3, 150000, 3), (2, 4, 80000, 2), (3, 5, 300000, 4);
)SQL";

class DemoHostTest : public CommonTest {
 protected:
  static void SetUpTestSuite() {
    path_ = ScratchDb::Create("cp_demo_host", kRows);
  }
  static void TearDownTestSuite() { std::filesystem::remove(path_); }

  void SetUp() override {
    CommonTest::SetUp();
    TestApp();
    host_ = std::make_unique<DemoHostWindow>(dao::OpenDatabase(path_), path_);
  }
  void TearDown() override {
    host_.reset();
    setBD(nullptr);
    CommonTest::TearDown();
  }

  // Selects with script playing the user in the dialog; the entity is chosen first.
  bool Select(const std::string& entity, std::function<void(frmSeleccion&)> script) {
    host_->entityList().setCurrentText(QString::fromStdString(entity));
    ScopedModalRunner runner(std::make_shared<ScriptedModalRunner>(std::move(script)));
    return host_->Select();
  }

  static SelectionControl& Shown(frmSeleccion& dlg) {
    if (dlg.SeleccionInm1Control().Visible()) return dlg.SeleccionInm1();
    return dlg.SeleccionCli1();
  }
  static void Press(frmSeleccion& dlg, const char* button) {
    dlg.Controls().Get<form::CommandButton>(button).Press();
  }
  // The search for words as the contact control offers it.
  static void SearchWords(frmSeleccion& dlg, const std::string& words, const std::string& where,
                          const std::string& field) {
    form::ControlContainer& c = Shown(dlg).Controls();
    c.Get<form::TextBox>("txtPalabras").setText(words);
    c.Get<form::ComboBox>("cboOpPalabras").setText(where);
    c.Get<form::ComboBox>("cboEn").setText(field);
  }

  // The values of one column of the listed rows, in order.
  std::vector<long> Listed(const char* column) const {
    QTableWidget& rows = host_->rows();
    int c = -1;
    for (int i = 0; i < rows.columnCount(); ++i)
      if (rows.horizontalHeaderItem(i)->data(Qt::UserRole).toString() == column) c = i;
    EXPECT_GE(c, 0) << column;
    std::vector<long> values;
    for (int r = 0; c >= 0 && r < rows.rowCount(); ++r)
      values.push_back(rows.item(r, c)->text().toLong());
    return values;
  }

  std::unique_ptr<DemoHostWindow> host_;
  static inline std::string path_;
};

TEST_F(DemoHostTest, ListsTheRowsOfTheAcceptedConditionWithTheirCount) {
  ASSERT_TRUE(Select("Clientes", [](frmSeleccion& dlg) {
    SearchWords(dlg, "garcia", "Al final", "Apellido");
    Press(dlg, "cmdAceptar");
  }));
  EXPECT_EQ(Listed("IdCliente"), (std::vector<long>{3, 5}));
  EXPECT_EQ(host_->countLabel().text(), "2 registros de Clientes");
  EXPECT_TRUE(host_->conditionLabel().text().contains(QString::fromStdString(host_->selection().SQLW())));

  // Cancelling keeps the rows listed.
  host_->entityList().setCurrentText("Agencias");
  {
    ScopedModalRunner runner(std::make_shared<ScriptedModalRunner>(
        [](frmSeleccion& dlg) { Press(dlg, "cmdCancelar"); }));
    EXPECT_FALSE(host_->Select());
  }
  EXPECT_EQ(host_->ListedEntity(), "Clientes");

  // The select button runs the dialog for the chosen entity; untouched, it lists everything.
  std::string shownEntity;
  ScopedModalRunner runner(std::make_shared<ScriptedModalRunner>([&](frmSeleccion& dlg) {
    shownEntity = dlg.cboEntidad().Text();
    Press(dlg, "cmdAceptar");
  }));
  QTest::mouseClick(&host_->selectButton(), Qt::LeftButton);
  EXPECT_EQ(shownEntity, "Agencias");
  EXPECT_EQ(Listed("IdAgencia"), (std::vector<long>{1, 2}));
  EXPECT_EQ(host_->countLabel().text(), "2 registros de Agencias");
  EXPECT_TRUE(host_->conditionLabel().text().contains("todos los registros"));
}

TEST_F(DemoHostTest, CrossesTheCurrentRowWithTheOtherSideOfTheMarketButNotContacts) {
  EXPECT_FALSE(host_->crossButton().isEnabled());  // nothing listed yet
  ASSERT_TRUE(Select("Clientes", [](frmSeleccion& dlg) { Press(dlg, "cmdAceptar"); }));
  host_->rows().setCurrentCell(0, 0);
  EXPECT_FALSE(host_->crossButton().isEnabled());
  EXPECT_FALSE(host_->CrossSelected());

  struct Case {
    std::string listed, key, target;
  };
  const Case cases[] = {{"Demandas", "IdDemanda", "Inm. Propios"},
                        {"Inm. Propios", "IdIPropio", "Demandas"}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.listed);
    // A fresh host: after a cross the dialog opens on the crossed criteria.
    host_ = std::make_unique<DemoHostWindow>(dao::OpenDatabase(path_), path_);
    ASSERT_TRUE(Select(c.listed, [](frmSeleccion& dlg) { Press(dlg, "cmdAceptar"); }));
    EXPECT_TRUE(host_->crossButton().text().contains(QString::fromStdString(c.target)));
    // The second row, so that a host that always took the first would be caught.
    ASSERT_GE(host_->ListedRows(), 2) << host_->selection().SQLW();
    host_->rows().setCurrentCell(1, 0);
    std::int32_t id = static_cast<std::int32_t>(Listed(c.key.c_str()).at(1));
    QTest::mouseClick(&host_->crossButton(), Qt::LeftButton);
    EXPECT_EQ(host_->ListedEntity(), c.target);

    CSeleccion reference;
    std::string to = c.target, from = c.listed;
    reference.Cruzar(id, to, from);
    EXPECT_EQ(host_->selection().SQLW(), reference.SQLW());
  }
}

// An office's Access file opened from the menu: imported into the cache folder, reused while
// the copy is newer than the file and imported again once it is older, then listed.
TEST_F(DemoHostTest, OpensAnAccessFileThroughACopyInTheCacheFolder) {
  namespace fs = std::filesystem;
  qputenv("XDG_CACHE_HOME", QByteArray::fromStdString(dir_));
  const std::string mdb = std::string(CP_SHARED_DIR) + "/fixtures/agencia.mdb";
  const auto user = [&] {
    return AsUserIn<QFileDialog>([&](QFileDialog& ask) {
      // Typed, as selecting waits for the folder to be read.
      ask.findChild<QLineEdit*>("fileNameEdit")->setText(QString::fromStdString(mdb));
      static_cast<QDialog&>(ask).accept();  // as the Open button does
    });
  };
  host_->entityList().setCurrentText("Demandas");
  {
    const auto watch = user();
    ASSERT_TRUE(host_->OpenAccessFile());
  }
  EXPECT_EQ(host_->countLabel().text(), "300 registros de Demandas");
  std::vector<fs::path> copies;  // in the cache folder, named after the file
  for (const fs::directory_entry& e : fs::recursive_directory_iterator(dir_))
    if (e.path().filename().string().starts_with("agencia")) copies.push_back(e.path());
  ASSERT_EQ(copies.size(), 1u);
  const fs::path copy = copies.front();

  struct Case {
    std::chrono::hours copy_age;  // against the Access file
    bool imported;
  };
  host_->entityList().setCurrentText("Clientes");
  for (const Case c : {Case{std::chrono::hours(1), false}, Case{std::chrono::hours(-1), true}}) {
    const auto stamp = fs::last_write_time(mdb) + c.copy_age;
    fs::last_write_time(copy, stamp);
    const auto watch = user();
    host_->findChild<QAction*>("actAbrirAccess")->trigger();
    EXPECT_TRUE(watch->Acted());
    EXPECT_EQ(fs::last_write_time(copy) != stamp, c.imported);
    EXPECT_EQ(host_->countLabel().text(), "300 registros de Clientes");
  }
}

// A picture through the real modal window, as --screenshot takes it.
TEST_F(DemoHostTest, ScreenshotShowsTheTabAndClosesEverything) {
  ScopedModalRunner runner(std::make_shared<QtModalRunner>());
  std::ostringstream err;
  const std::string tab = dir_ + "/fechas.png";
  EXPECT_EQ(TakeScreenshot(host_->selection(), {tab, "Clientes", 1, ""}, err), 0) << err.str();
  EXPECT_FALSE(LooksBlank(tab));
  EXPECT_TRUE(LooksBlank(dir_ + "/missing.png"));
  EXPECT_EQ(TakeScreenshot(host_->selection(), {dir_ + "/x.png", "Clientes", 7, ""}, err), 2);
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  EXPECT_FALSE(std::filesystem::exists(dir_ + "/x.png"));
}

}  // namespace
}  // namespace cp::testing
