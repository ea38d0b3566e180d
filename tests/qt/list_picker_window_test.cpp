// The Qt list window behind "NListado.CListado", driven through the bridge VerListadoMult as
// the criteria controls call it, with a user who types, ticks and presses the real buttons.
#include <unistd.h>

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>
#include <QPushButton>
#include <QTest>
#include <filesystem>

#include "sample/schema.h"
#include "common/list_picker.h"
#include "common/scripted_list_picker.h"
#include "common/shared_state.h"
#include "platform/automation/registry.h"
#include "platform/core/conversions.h"
#include "platform/core/error.h"
#include "platform/dao/connect.h"
#include "platform/sqlite/native.h"
#include "qt/list_picker_window.h"
#include "qt/qt_list_picker.h"
#include "tests/common/common_fixture.h"
#include "tests/qt/picker_test_support.h"
#include "tests/support/errors.h"
#include "tests/support/scratch_db.h"

namespace cp::testing {
namespace {

class QtListPickerTest : public CommonTest {
 protected:
  static void SetUpTestSuite() {
    path_ = ScratchDb::Create(
        "cp_qt_picker",
        "INSERT INTO TipoCategoria (IdTipoCategoria, Nombre) VALUES (1, 'Vip'), (2, 'Inversor'),"
        " (3, 'Extranjero'), (4, 'Compra rápida'), (5, NULL), (6, 'Vip');"
        "INSERT INTO Agencia (IdAgencia, Alias) VALUES (1, 'Sol'), (2, 'Luna'), (1000001, 'Interna');");
  }
  static void TearDownTestSuite() { std::filesystem::remove(path_); }

  void SetUp() override {
    CommonTest::SetUp();
    TestApp();
    previous_ = RegisterQtListPicker();
    setBD(dao::OpenDatabase(path_));
    setPathDB(path_);
  }
  void TearDown() override {
    if (previous_) {
      RegisterProgId(kListPickerProgId, *previous_);
    } else {
      UnregisterProgId(kListPickerProgId);
    }
    setBD(nullptr);
    setPathDB("");
    CommonTest::TearDown();
  }

  // The category picker of the contact control.
  static std::string Categories(const std::string& text) {
    return VerListadoMult(text, "TipoCategoria", "Nombre", false, false, false, 3000,
                          "Categorías", "");
  }

  static QStringList Listed(const ListPickerWindow& w, bool onlyShown = false) {
    QStringList values;
    for (int row = 0; row < w.list().count(); ++row) {
      const QListWidgetItem* item = w.list().item(row);
      if (!onlyShown || !item->isHidden()) values.push_back(item->text());
    }
    return values;
  }
  static QStringList Ticked(const ListPickerWindow& w) {
    QStringList values;
    for (int row = 0; row < w.list().count(); ++row)
      if (w.list().item(row)->checkState() == Qt::Checked) values.push_back(w.list().item(row)->text());
    return values;
  }
  // Ticks or unticks a row as a user does: makes it current and presses Space in the list.
  static void PressSpaceOn(ListPickerWindow& w, const QString& value) {
    const auto found = w.list().findItems(value, Qt::MatchExactly);
    ASSERT_EQ(found.size(), 1) << value.toStdString();
    w.list().setCurrentItem(found.front());
    QTest::keyClick(&w.list(), Qt::Key_Space);
  }
  static void Click(QPushButton& button) { QTest::mouseClick(&button, Qt::LeftButton); }

  std::optional<ObjectFactory> previous_;
  static inline std::string path_;
};

const QStringList kAllCategories = {"Compra rápida", "Extranjero", "Inversor", "Vip"};

TEST_F(QtListPickerTest, OpensWithTheBridgeTitleAndWidthListingTheFieldOfTheTable) {
  auto user = AsUserIn<ListPickerWindow>([](ListPickerWindow& w) {
    EXPECT_EQ(w.windowTitle(), "Categorías");
    EXPECT_EQ(w.width(), WidthForAnchura(3000));
    // Distinct, ordered, Null left out.
    EXPECT_EQ(Listed(w), kAllCategories);
    EXPECT_TRUE(Ticked(w).isEmpty());
    Click(w.cancelButton());
  });
  EXPECT_EQ(Categories(""), "");
  EXPECT_TRUE(user->Acted());
  EXPECT_TRUE(messenger_->shown().empty());
}

TEST_F(QtListPickerTest, AValueTheStatementRepeatsIsListedOnce) {
  auto user = AsUserIn<ListPickerWindow>([](ListPickerWindow& w) {
    EXPECT_EQ(Listed(w), QStringList({"Vip", "Inversor"}));
    Click(w.acceptButton());
  });
  EXPECT_EQ(VerListadoMult("vip", "TipoCategoria", "Nombre", false, false, false, 3000,
                           "Categorías", "SELECT Nombre FROM TipoCategoria WHERE IdTipoCategoria IN (1, 6, 2) ORDER BY IdTipoCategoria DESC"),
            "Vip; ");
  EXPECT_TRUE(user->Acted());
}

TEST_F(QtListPickerTest, PreTicksTheValuesOfTheCriterionAndAcceptingUntouchedNormalisesThem) {
  struct Case {
    std::string text;
    QStringList ticked;    // in list order
    std::string accepted;  // what Aceptar at once returns
  };
  const Case cases[] = {
      {"", {}, ""},
      {"Vip; ", {"Vip"}, "Vip; "},
      {"vip;inversor", {"Inversor", "Vip"}, "Inversor; Vip; "},
      {"  COMPRA RÁPIDA ; ;", {"Compra rápida"}, "Compra rápida; "},
      // A value the table lacks stays ticked at the end instead of being dropped.
      {"Otra; Extranjero; ", {"Extranjero", "Otra"}, "Extranjero; Otra; "},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    auto user = AsUserIn<ListPickerWindow>([&](ListPickerWindow& w) {
      EXPECT_EQ(Ticked(w), c.ticked);
      const auto* count = w.findChild<QLabel*>("lblMarcados");
      ASSERT_NE(count, nullptr);
      EXPECT_TRUE(count->text().startsWith(QString::number(c.ticked.size()))) << count->text().toStdString();
      Click(w.acceptButton());
    });
    EXPECT_EQ(Categories(c.text), c.accepted);
    EXPECT_TRUE(user->Acted());
  }
}

TEST_F(QtListPickerTest, FiltersAsTheUserTypesIgnoringCaseAndAccentsAndKeepsTicksHidden) {
  auto user = AsUserIn<ListPickerWindow>([](ListPickerWindow& w) {
    QLineEdit& filter = w.filterBox();
    QTest::keyClicks(&filter, "r");
    EXPECT_EQ(Listed(w, true), QStringList({"Compra rápida", "Extranjero", "Inversor"}));
    QTest::keyClicks(&filter, "s");
    EXPECT_EQ(Listed(w, true), QStringList({"Inversor"}));
    // Down moves into the list, onto the one row left; Space ticks it.
    QTest::keyClick(&filter, Qt::Key_Down);
    QTest::keyClick(&w.list(), Qt::Key_Space);
    filter.clear();
    EXPECT_EQ(Listed(w, true), kAllCategories);
    QTest::keyClicks(&filter, "RAPIDA");
    EXPECT_EQ(Listed(w, true), QStringList({"Compra rápida"}));
    filter.clear();
    QTest::keyClicks(&filter, "zzz");
    EXPECT_TRUE(Listed(w, true).isEmpty());
    // Values filtered out of sight stay ticked.
    EXPECT_EQ(Ticked(w), QStringList({"Inversor", "Vip"}));
    Click(w.acceptButton());
  });
  EXPECT_EQ(Categories("Vip; "), "Inversor; Vip; ");
  EXPECT_TRUE(user->Acted());
}

TEST_F(QtListPickerTest, AcceptReturnsTheTickedValuesInListOrder) {
  auto user = AsUserIn<ListPickerWindow>([](ListPickerWindow& w) {
    PressSpaceOn(w, "Vip");
    PressSpaceOn(w, "Compra rápida");
    PressSpaceOn(w, "Extranjero");
    PressSpaceOn(w, "Extranjero");  // ticked, then unticked again
    Click(w.acceptButton());
  });
  EXPECT_EQ(Categories(""), "Compra rápida; Vip; ");
  EXPECT_TRUE(user->Acted());
}

TEST_F(QtListPickerTest, UnticingEverythingAndAcceptingClearsTheCriterion) {
  auto user = AsUserIn<ListPickerWindow>([](ListPickerWindow& w) {
    PressSpaceOn(w, "Vip");
    Click(w.acceptButton());
  });
  EXPECT_EQ(Categories("Vip; "), "");
  EXPECT_TRUE(user->Acted());
}

TEST_F(QtListPickerTest, CancelOrEscapeReturnsTheOriginalTextExactlyWhateverWasTicked) {
  const std::function<void(ListPickerWindow&)> closers[] = {
      [](ListPickerWindow& w) { Click(w.cancelButton()); },
      [](ListPickerWindow& w) { QTest::keyClick(&w.list(), Qt::Key_Escape); },
  };
  for (const auto& close : closers) {
    auto user = AsUserIn<ListPickerWindow>([&](ListPickerWindow& w) {
      PressSpaceOn(w, "Inversor");
      PressSpaceOn(w, "Vip");
      EXPECT_EQ(w.Chosen(), "Inversor; Otra; ");
      close(w);
    });
    EXPECT_EQ(Categories("vip ;Otra"), "vip ;Otra");
    EXPECT_TRUE(user->Acted());
  }
}

TEST_F(QtListPickerTest, DoubleClickTicksARowAndEnterInTheListAcceptsWithoutTicking) {
  auto user = AsUserIn<ListPickerWindow>([](ListPickerWindow& w) {
    QListWidget& list = w.list();
    QListWidgetItem* row = list.findItems("Extranjero", Qt::MatchExactly).front();
    // Delivered straight to the list (QTest's double click does not reach item views on the
    // offscreen platform): press, release, double click, release.
    const QPointF at = list.visualItemRect(row).center();
    const QPointF global = list.viewport()->mapToGlobal(at);
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease,
                                    QEvent::MouseButtonDblClick, QEvent::MouseButtonRelease}) {
      QMouseEvent event(type, at, global, Qt::LeftButton,
                        type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton,
                        Qt::NoModifier);
      QApplication::sendEvent(list.viewport(), &event);
    }
    EXPECT_EQ(row->checkState(), Qt::Checked);
    list.setCurrentItem(list.findItems("Vip", Qt::MatchExactly).front());
    QTest::keyClick(&list, Qt::Key_Return);
  });
  EXPECT_EQ(Categories(""), "Extranjero; ");
  EXPECT_TRUE(user->Acted());
}

TEST_F(QtListPickerTest, AStatementThatFailsIsReportedByTheBridgeAndClearsTheCriterion) {
  const std::string result = VerListadoMult("Vip; ", "TipoCategoria", "Nombre", false, false,
                                            false, 3000, "Categorías", "SELECT Nada FROM NoHay");
  EXPECT_EQ(result, "");
  ASSERT_EQ(messenger_->shown().size(), 1u);
  EXPECT_NE(messenger_->shown().front().text.find("VerListadoMult de RutinasErr"), std::string::npos);
  // A failure inside mtdMostrar leaves the modal flag set, as the bridge always did.
  EXPECT_TRUE(gModalAbierto());
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(QtListPickerTest, AcceptsTheProtocolsPropertiesByNameAndRefusesOthers) {
  QtListPicker picker;
  const std::pair<const char*, Variant> properties[] = {
      {"TipoLista", Variant(std::int16_t{1})}, {"TituloForm", Variant("Zonas")},
      {"tabla", Variant("Zona")},              {"BDatos", Variant(path_)},
      {"campo", Variant("Nombre")},            {"IdCampo", Variant("IdZona")},
      {"SQLSentencia", Variant("SELECT 1")},   {"Seleccionar", Variant("Norte; ")},
      {"nuevoId", Variant(std::int16_t{-1})},  {"Op_Nuevo", Variant(false)},
      {"Op_Borrar", Variant(true)},            {"Op_Modificar", Variant(false)},
      {"anchura", Variant(std::int16_t{3000})}};
  for (const auto& [name, value] : properties) picker.SetProperty(name, value);
  for (const auto& [name, value] : properties) {
    EXPECT_EQ(picker.GetProperty(name), value) << name;
    EXPECT_EQ(picker.GetProperty(LowerAscii(name)), value) << name;
  }
  EXPECT_EQ(CaughtError([&] { picker.SetProperty("Multiple", Variant(true)); }).number(), err::kPropertyNotFound);
}

TEST_F(QtListPickerTest, WithoutTheHostsDatabaseItReadsTheFileNamedByBDatos) {
  setBD(nullptr);
  QtListPicker picker;
  picker.SetProperty("BDatos", Variant(path_));
  picker.SetProperty("tabla", Variant("TipoCategoria"));
  picker.SetProperty("campo", Variant("Nombre"));
  const std::vector<std::string> expected = {"Compra rápida", "Extranjero", "Inversor", "Vip"};
  EXPECT_EQ(picker.Values(), expected);
}

TEST_F(QtListPickerTest, RegistrationReplacesTheStandInAndHandsItBack) {
  UnregisterProgId(kListPickerProgId);
  {
    ScriptedListPickerRegistration scripted;
    const auto replaced = RegisterQtListPicker();
    ASSERT_TRUE(replaced.has_value());
    EXPECT_NE(std::dynamic_pointer_cast<QtListPicker>(CreateObject(kListPickerProgId)), nullptr);
    EXPECT_NE(std::dynamic_pointer_cast<ScriptedListPicker>((*replaced)()), nullptr);
  }
  EXPECT_FALSE(RegisterQtListPicker().has_value());
}

TEST(ListPickerTextTest, SplitsJoinsAndFoldsTheCriterionText) {
  EXPECT_EQ(SplitChosen(" Piso ;Local;; ático ;"), QStringList({"Piso", "Local", "ático"}));
  EXPECT_TRUE(SplitChosen(" ; ;").isEmpty());
  EXPECT_EQ(JoinChosen({"Piso", "Local"}), "Piso; Local; ");
  EXPECT_EQ(JoinChosen({}), "");
  EXPECT_EQ(FoldForFilter("Población ÁVILA Ñ"), FoldForFilter("poblacion avila n"));
  EXPECT_NE(FoldForFilter("Piso"), FoldForFilter("Pisos"));
  // The pickers' 3000 opens a window wide enough for a title, a filter and two buttons.
  EXPECT_GE(WidthForAnchura(3000), 300);
  EXPECT_LE(WidthForAnchura(3000), 600);
  EXPECT_LT(WidthForAnchura(3000), WidthForAnchura(12000));
}

}  // namespace
}  // namespace cp::testing
