// The demo host's window follows what the user did: the cross button the chosen entity, the
// status line the latest selection; the condition takes a few lines, and the rows read as
// names under Spanish headers.
#include <unistd.h>

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QStatusBar>
#include <QTableWidget>
#include <QTest>
#include <filesystem>

#include "sample/schema.h"
#include "common/shared_state.h"
#include "platform/dao/connect.h"
#include "platform/form/command_button.h"
#include "platform/sqlite/native.h"
#include "qt/demo/host_window.h"
#include "selection/modal_runner.h"
#include "tests/common/common_fixture.h"
#include "tests/qt/picker_test_support.h"

namespace cp::testing {
namespace {

const char* const kRows = R"SQL(
INSERT INTO Provincia (IdProvincia, Nombre) VALUES (5, 'Málaga');
INSERT INTO Cliente (IdCliente, Alias) VALUES (1, 'García, Luis'), (2, 'Ruiz');
INSERT INTO Demanda (IdDemanda, IdCliente, Provincia, PrecioMinimo, PrecioMaximo, Huecos)
  VALUES (1, 1, '', 100000, 200000, 3);
INSERT INTO IPropio (IdIPropio, IdCliente, IdProvincia, Precio, Huecos) VALUES (1, 2, 5, 150000, 3);
)SQL";

class DemoHostWindowTest : public CommonTest {
 protected:
  void SetUp() override {
    CommonTest::SetUp();
    TestApp();
    path_ = (std::filesystem::temp_directory_path() /
             ("cp_demo_window_" + std::to_string(::getpid()) + ".sqlite")).string();
    std::filesystem::remove(path_);
    {
      sqlite::NativeDatabase db(path_, sqlite::NativeDatabase::Mode::CreateIfMissing);
      sample::CreateSchema([&](const std::string& sql) { db.ExecuteNative(sql); });
      db.ExecuteNative(kRows);
    }
    host_ = std::make_unique<DemoHostWindow>(dao::OpenDatabase(path_), path_);
  }
  void TearDown() override {
    host_.reset();
    setBD(nullptr);
    std::filesystem::remove(path_);
    CommonTest::TearDown();
  }
  bool Accept(const char* entity) {
    host_->entityList().setCurrentText(QString::fromUtf8(entity));
    ScopedModalRunner runner(std::make_shared<ScriptedModalRunner>([](frmSeleccion& dlg) {
      dlg.Controls().Get<form::CommandButton>("cmdAceptar").Press();
    }));
    return host_->Select();
  }
  QString Cell(int row, const char* column) const {
    QTableWidget& rows = host_->rows();
    for (int c = 0; c < rows.columnCount(); ++c)
      if (rows.horizontalHeaderItem(c)->data(Qt::UserRole).toString() == column)
        return rows.horizontalHeaderItem(c)->text() + "=" + rows.item(row, c)->text();
    return {};
  }

  std::string path_;
  std::unique_ptr<DemoHostWindow> host_;
};

TEST_F(DemoHostWindowTest, FollowsWhatTheUserDid) {
  ASSERT_TRUE(Accept("Demandas"));
  QPushButton& cross = host_->crossButton();
  EXPECT_EQ(cross.text(), QStringLiteral("&Cruzar con Inm. Propios"));
  host_->entityList().setCurrentText(QStringLiteral("Agencias"));
  EXPECT_EQ(cross.text(), QStringLiteral("&Cruzar"));
  EXPECT_FALSE(cross.isEnabled());
  host_->entityList().setCurrentText(QStringLiteral("Inm. Propios"));
  EXPECT_FALSE(cross.isEnabled()) << "the demands listed are not properties";
  host_->entityList().setCurrentText(QStringLiteral("Demandas"));
  ASSERT_TRUE(cross.isEnabled());

  QTest::mouseClick(&cross, Qt::LeftButton);
  ASSERT_EQ(host_->ListedEntity(), "Inm. Propios");
  EXPECT_EQ(Cell(0, "IdProvincia"), QStringLiteral("Provincia=Málaga"));
  EXPECT_EQ(Cell(0, "IdCliente"), QStringLiteral("Cliente=Ruiz"));
  EXPECT_EQ(Cell(0, "IdIPropio"), QStringLiteral("Nº=1"));
  // The cross's long condition takes a few lines until the user opens the rest.
  const int line = host_->conditionLabel().fontMetrics().lineSpacing();
  EXPECT_LE(host_->conditionArea().maximumHeight(), 4 * line);
  QTest::mouseClick(&host_->conditionButton(), Qt::LeftButton);
  EXPECT_GE(host_->conditionArea().maximumHeight(), host_->conditionLabel().sizeHint().height());

  EXPECT_FALSE(host_->statusBar()->currentMessage().isEmpty());
  ASSERT_TRUE(Accept("Clientes"));
  EXPECT_TRUE(host_->statusBar()->currentMessage().isEmpty()) << "the cross is no longer shown";
}

}  // namespace
}  // namespace cp::testing
