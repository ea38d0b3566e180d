// The Qt list window behind "NListado.CListado", driven through the bridge VerListadoMult as
// the criteria controls call it, with a user who types, ticks and presses the real buttons.
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <filesystem>

#include "common/list_picker.h"
#include "platform/automation/registry.h"
#include "platform/dao/connect.h"
#include "qt/list_picker_window.h"
#include "qt/qt_list_picker.h"
#include "tests/qt/gui_support.h"
#include "tests/support/errors.h"

namespace cp::testing {
namespace {

using Act = std::function<void(ListPickerWindow&)>;
const QStringList kAllCategories = {"Compra rápida", "Extranjero", "Inversor", "Vip"};

class QtListPickerTest : public CommonTest {
 protected:
  static void SetUpTestSuite() {
    path_ = ScratchDb::Create(
        "cp_qt_picker",
        "INSERT INTO TipoCategoria (IdTipoCategoria, Nombre) VALUES (1, 'Vip'), (2, 'Inversor'),"
        " (3, 'Extranjero'), (4, 'Compra rápida'), (5, NULL), (6, 'Vip');");
  }
  static void TearDownTestSuite() { std::filesystem::remove(path_); }
  void SetUp() override {
    CommonTest::SetUp();
    previous_ = RegisterQtListPicker();
    setBD(dao::OpenDatabase(path_));
    setPathDB(path_);
  }
  void TearDown() override {
    if (previous_) RegisterProgId(kListPickerProgId, *previous_);
    else UnregisterProgId(kListPickerProgId);
    setBD(nullptr);
    setPathDB("");
    CommonTest::TearDown();
  }

  // The contact control's category picker on text, with act as the user in its window.
  static std::string Categories(const std::string& text, const Act& act, const char* sql = "") {
    ModalAnswer user([&](QWidget& w) { act(dynamic_cast<ListPickerWindow&>(w)); });
    const std::string result = VerListadoMult(text, "TipoCategoria", "Nombre", false, false,
                                              false, 3000, "Categorías", sql);
    EXPECT_TRUE(user.Answered());
    return result;
  }
  // The rows shown (or all of them), or those ticked.
  static QStringList Rows(const ListPickerWindow& w, bool ticked, bool onlyShown = false) {
    QStringList values;
    for (int row = 0; row < w.list().count(); ++row) {
      const QListWidgetItem* item = w.list().item(row);
      if (ticked ? item->checkState() == Qt::Checked : !onlyShown || !item->isHidden())
        values.push_back(item->text());
    }
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

TEST_F(QtListPickerTest, OpensWithTheBridgeTitleAndWidthListingTheFieldOfTheTable) {
  EXPECT_EQ(Categories("", [](ListPickerWindow& w) {
    EXPECT_EQ(w.windowTitle(), "Categorías");
    EXPECT_EQ(Rows(w, false), kAllCategories) << "distinct, ordered, Null left out";
    EXPECT_TRUE(Rows(w, true).isEmpty());
    Click(w.cancelButton());
  }), "");
  EXPECT_TRUE(messenger_->shown().empty());
  // A value the statement repeats is listed once.
  EXPECT_EQ(Categories("vip", [](ListPickerWindow& w) {
    EXPECT_EQ(Rows(w, false), QStringList({"Vip", "Inversor"}));
    Click(w.acceptButton());
  }, "SELECT Nombre FROM TipoCategoria WHERE IdTipoCategoria IN (1, 6, 2) "
     "ORDER BY IdTipoCategoria DESC"), "Vip; ");
}

TEST_F(QtListPickerTest, PreTicksTheValuesOfTheCriterionAndAcceptingUntouchedNormalisesThem) {
  // text, ticked in list order, what Aceptar at once returns
  const std::tuple<std::string, QStringList, std::string> cases[] = {
      {"  COMPRA RÁPIDA ; ;", {"Compra rápida"}, "Compra rápida; "},
      // A value the table lacks stays ticked at the end instead of being dropped.
      {"Otra; Extranjero; ", {"Extranjero", "Otra"}, "Extranjero; Otra; "},
  };
  for (const auto& [text, ticked, accepted] : cases) {
    SCOPED_TRACE(text);
    EXPECT_EQ(Categories(text, [&](ListPickerWindow& w) {
      EXPECT_EQ(Rows(w, true), ticked);
      Click(w.acceptButton());
    }), accepted);
  }
}

TEST_F(QtListPickerTest, FiltersAsTheUserTypesIgnoringCaseAndAccentsAndKeepsTicksHidden) {
  EXPECT_EQ(Categories("Vip; ", [](ListPickerWindow& w) {
    QLineEdit& filter = w.filterBox();
    QTest::keyClicks(&filter, "rs");
    EXPECT_EQ(Rows(w, false, true), QStringList({"Inversor"}));
    // Down moves into the list, onto the one row left; Space ticks it.
    QTest::keyClick(&filter, Qt::Key_Down);
    QTest::keyClick(&w.list(), Qt::Key_Space);
    filter.clear();
    EXPECT_EQ(Rows(w, false, true), kAllCategories);
    QTest::keyClicks(&filter, "RAPIDA");
    EXPECT_EQ(Rows(w, false, true), QStringList({"Compra rápida"}));
    EXPECT_EQ(Rows(w, true), QStringList({"Inversor", "Vip"})) << "hidden values stay ticked";
    QTest::keyClick(&filter, Qt::Key_Return);  // Enter presses Aceptar, the default button
  }), "Inversor; Vip; ");
}

// Aceptar is the default by itself, not by the platform's button order (offscreen hides it).
TEST_F(QtListPickerTest, AceptarIsTheDefaultButtonBeforeTheWindowShows) {
  ListPickerWindow w("Categorías", 300, kAllCategories, "");
  EXPECT_TRUE(w.acceptButton().isDefault() && !w.cancelButton().isDefault());
}

// Aceptar returns the ticked values in list order (none: the criterion is cleared); Cancel
// and Escape return the original text exactly, whatever was ticked.
TEST_F(QtListPickerTest, AcceptReturnsTheTickedValuesCancelTheOriginalText) {
  const Act accept = [](ListPickerWindow& w) { Click(w.acceptButton()); };
  const Act cancel = [](ListPickerWindow& w) { Click(w.cancelButton()); };
  const Act escape = [](ListPickerWindow& w) { QTest::keyClick(&w.list(), Qt::Key_Escape); };
  // Enter in the list accepts without ticking its current row, the last one pressed.
  const Act enter = [](ListPickerWindow& w) { QTest::keyClick(&w.list(), Qt::Key_Return); };
  const struct { std::string text; QStringList presses; Act close; std::string result; }
  cases[] = {
      {"", {"Vip", "Compra rápida", "Extranjero", "Extranjero"}, accept, "Compra rápida; Vip; "},
      {"Vip; ", {"Vip"}, accept, ""},
      {"", {"Vip", "Inversor"}, enter, "Inversor; Vip; "},
      {"vip ;Otra", {"Inversor", "Vip"}, cancel, "vip ;Otra"},
      {"vip ;Otra", {"Inversor", "Vip"}, escape, "vip ;Otra"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Categories(c.text, [&](ListPickerWindow& w) {
      for (const QString& value : c.presses) PressSpaceOn(w, value);
      if (c.result == c.text) {
        EXPECT_EQ(w.Chosen(), "Inversor; Otra; ");
      }
      c.close(w);
    }), c.result);
  }
}

// Without the host's database the picker reads the file BDatos names.
TEST_F(QtListPickerTest, ReadsTheFileNamedByBDatos) {
  setBD(nullptr);
  QtListPicker picker;
  picker.SetProperty("BDatos", Variant(path_));
  picker.SetProperty("tabla", Variant("TipoCategoria"));
  picker.SetProperty("campo", Variant("Nombre"));
  EXPECT_EQ(picker.GetProperty("bdatos"), Variant(path_));
  EXPECT_EQ(CaughtError([&] { picker.SetProperty("Multiple", Variant(true)); }).number(),
            err::kPropertyNotFound);
  EXPECT_EQ(picker.Values().size(), 4u);
}

}  // namespace
}  // namespace cp::testing
