// Smoke tests of the demo host: the dialog played by a script inside its modal loop, the rows
// of the accepted condition listed with their count, the cross button, a screenshot.
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QStatusBar>
#include <QTableWidget>
#include <filesystem>
#include <sstream>

#include "platform/dao/connect.h"
#include "qt/demo/host_window.h"
#include "qt/demo/screenshot.h"
#include "tests/qt/gui_support.h"

namespace cp::testing {
namespace {

const char* const kRows = R"SQL(
INSERT INTO Provincia (IdProvincia, Nombre) VALUES (5, 'Málaga');
INSERT INTO Cliente (IdCliente, Alias, Apellidos) VALUES
  (1, 'García, Luis', 'García López'), (2, 'Garcia, Ana', 'garcia ruiz'),
  (3, 'Pérez, Juan', 'Pérez Garcia'), (4, 'O''Brien', 'O''Brien'), (5, 'Ruiz', 'Ruiz Garcia');
INSERT INTO Agencia (IdAgencia, Alias) VALUES (1, 'Sol'), (2, 'Luna');
INSERT INTO Demanda (IdDemanda, IdCliente, PrecioMinimo, PrecioMaximo, Huecos) VALUES
  (1, 1, 100000, 200000, 3), (2, 2, 50000, 90000, 2);
INSERT INTO IPropio (IdIPropio, IdCliente, IdProvincia, Precio, Huecos) VALUES
  (1, 3, NULL, 150000, 3), (2, 4, 5, 80000, 2), (3, 5, NULL, 300000, 4);
)SQL";

class DemoHostTest : public CommonTest {
 protected:
  static void SetUpTestSuite() { path_ = ScratchDb::Create("cp_demo_host", kRows); }
  static void TearDownTestSuite() { std::filesystem::remove(path_); }
  void SetUp() override {
    CommonTest::SetUp();
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
  static void Accept(frmSeleccion& dlg) { Press(dlg, "cmdAceptar"); }
  static void Press(frmSeleccion& dlg, const char* button) {
    dlg.Controls().Get<form::CommandButton>(button).Press();
  }
  int Column(const char* name) const {
    QTableWidget& rows = host_->rows();
    for (int c = 0; c < rows.columnCount(); ++c)
      if (rows.horizontalHeaderItem(c)->data(Qt::UserRole).toString() == name) return c;
    ADD_FAILURE() << name;
    return -1;
  }
  std::vector<long> Listed(const char* column) const {
    std::vector<long> values;
    const int c = Column(column);
    for (int r = 0; c >= 0 && r < host_->rows().rowCount(); ++r)
      values.push_back(host_->rows().item(r, c)->text().toLong());
    return values;
  }
  QString Cell(int row, const char* column) const {
    const int c = Column(column);
    return host_->rows().horizontalHeaderItem(c)->text() + "=" + host_->rows().item(row, c)->text();
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
  EXPECT_EQ(Listed("IdCliente"), (std::vector<long>{3, 5}));
  EXPECT_EQ(host_->countLabel().text(), "2 registros de Clientes");
  const QString condition = QString::fromStdString(host_->selection().SQLW());
  EXPECT_TRUE(host_->conditionLabel().text().contains(condition));

  // Cancelling keeps the rows listed.
  EXPECT_FALSE(Select("Agencias", [](frmSeleccion& dlg) { Press(dlg, "cmdCancelar"); }));
  EXPECT_EQ(host_->ListedEntity(), "Clientes");

  // The select button runs the dialog for the chosen entity; untouched, it lists everything.
  std::string shownEntity;
  ScopedModalRunner runner(std::make_shared<ScriptedModalRunner>([&](frmSeleccion& dlg) {
    shownEntity = dlg.cboEntidad().Text();
    Accept(dlg);
  }));
  QTest::mouseClick(&host_->selectButton(), Qt::LeftButton);
  EXPECT_EQ(shownEntity, "Agencias");
  EXPECT_EQ(Listed("IdAgencia"), (std::vector<long>{1, 2}));
  EXPECT_EQ(host_->countLabel().text(), "2 registros de Agencias");
  EXPECT_TRUE(host_->conditionLabel().text().contains("todos los registros"));
}

// The cross button follows the chosen entity and crosses the current row; the rows read as
// names under Spanish headers.
TEST_F(DemoHostTest, CrossesTheCurrentRowWithTheOtherSideOfTheMarketButNotContacts) {
  EXPECT_FALSE(host_->crossButton().isEnabled());  // nothing listed yet
  ASSERT_TRUE(Select("Clientes"));
  host_->rows().setCurrentCell(0, 0);
  EXPECT_FALSE(host_->crossButton().isEnabled());
  EXPECT_FALSE(host_->CrossSelected());
  ASSERT_TRUE(Select("Demandas"));
  QPushButton& cross = host_->crossButton();
  host_->entityList().setCurrentText(QStringLiteral("Inm. Propios"));
  EXPECT_FALSE(cross.isEnabled()) << "the rows listed are not of the chosen entity";
  host_->entityList().setCurrentText(QStringLiteral("Demandas"));
  EXPECT_EQ(cross.text(), QStringLiteral("&Cruzar con Inm. Propios"));
  // The second row, so that a host that always took the first would be caught.
  host_->rows().setCurrentCell(1, 0);
  std::int32_t id = static_cast<std::int32_t>(Listed("IdDemanda").at(1));
  QTest::mouseClick(&cross, Qt::LeftButton);
  ASSERT_EQ(host_->ListedEntity(), "Inm. Propios");
  CSeleccion reference;
  std::string to = "Inm. Propios", from = "Demandas";
  reference.Cruzar(id, to, from);
  EXPECT_EQ(host_->selection().SQLW(), reference.SQLW());
  EXPECT_FALSE(host_->statusBar()->currentMessage().isEmpty());
  // Demand 2 crosses with property 2.
  EXPECT_EQ(Cell(0, "IdProvincia"), QStringLiteral("Provincia=Málaga"));
  EXPECT_EQ(Cell(0, "IdCliente"), QStringLiteral("Cliente=O'Brien"));
  ASSERT_TRUE(Select("Clientes"));
  EXPECT_TRUE(host_->statusBar()->currentMessage().isEmpty()) << "the cross is no longer shown";
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
