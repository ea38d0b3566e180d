// The view of a form model: what the user does with the widgets reaches the model through
// its setters and events, and what code does to the model shows in the widgets, once.
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QLineEdit>

#include "platform/form/frame.h"
#include "platform/form/keys.h"
#include "tests/qt/gui_support.h"
#include "tests/support/errors.h"

namespace cp::testing {
namespace {

class FormViewTest : public ::testing::Test {
 protected:
  void TearDown() override {
    view_.reset();
    FormView::TakePendingError();
  }

  void Show() {
    view_ = std::make_unique<FormView>(form_);
    ShowActive(*view_);
  }
  template <class W>
  W* Widget(const char* name, int index = -1) {
    auto* w = qobject_cast<W*>(view_->WidgetOf(name, index));
    EXPECT_NE(w, nullptr) << name;
    return w;
  }
  // Records an event of a control as "name:event".
  auto Log(const std::string& entry) {
    return [this, entry](auto&&...) { log_.push_back(entry); };
  }

  form::ControlContainer form_{"Prueba"};
  std::unique_ptr<FormView> view_;
  std::vector<std::string> log_;
};

TEST_F(FormViewTest, TypingReachesTheModelAndCodeReachesTheBoxOnce) {
  auto& txt = form_.AddTextBox("txtNombre");
  txt.Change.Connect(Log("Change"));
  Show();
  auto* edit = Widget<QLineEdit>("txtNombre");

  TypeText(edit, QString::fromUtf8("Gómez"));
  EXPECT_EQ(txt.Text(), "Gómez");
  EXPECT_EQ(log_.size(), 5u) << "one Change per character typed";
  EXPECT_EQ(txt.SelStart(), 5) << "the model's caret follows the user's";

  log_.clear();
  txt.setText("Ruiz");
  EXPECT_EQ(edit->text(), QStringLiteral("Ruiz"));
  EXPECT_EQ(log_.size(), 1u) << "the view must not feed the change back";
}

TEST_F(FormViewTest, KeyHandlersSeeEveryKeyAndMaySwallowIt) {
  auto& txt = form_.AddTextBox("txtCodigo");
  txt.KeyDown.Connect([](int& key, int& shift) {
    if (key == 'X') key = 0;  // swallowed before it is typed
  });
  txt.KeyPress.Connect([](int& ascii) {
    if (ascii >= '0' && ascii <= '9') ascii = 0;
  });
  std::vector<std::pair<int, int>> seen;
  txt.KeyDown.Connect([&](int& key, int& shift) { seen.emplace_back(key, shift); });
  Show();
  auto* edit = Widget<QLineEdit>("txtCodigo");

  QTest::keyClicks(edit, "aX1b");
  EXPECT_EQ(txt.Text(), "ab");
  // Shift reaches the handlers through the categories' Shift+Enter in the dialog tests.
  QTest::keyClick(edit, Qt::Key_Delete, Qt::ControlModifier);
  EXPECT_EQ(seen.back(), std::make_pair(form::vbKeyDelete, form::vbCtrlMask));
}

// The user's side (keys in the list) is the dialog tests' business; here, what code does.
TEST_F(FormViewTest, DropDownListFollowsTheModel) {
  auto& cbo = form_.AddComboBox("cboOp");
  cbo.AddItem("Al principio");
  cbo.Click.Connect(Log("Click"));
  Show();
  auto* box = Widget<QComboBox>("cboOp");
  cbo.AddItem("Al final");  // added after the view was built
  cbo.setListIndex(1);
  EXPECT_EQ(box->currentText(), QStringLiteral("Al final"));
  EXPECT_EQ(log_.size(), 1u) << "only the model's own Click";
  cbo.Clear();
  EXPECT_EQ(box->count(), 0);
}

TEST_F(FormViewTest, DatePickerShowsSpanishDaysAndItsCheckBoxMeansNull) {
  auto& dtp = form_.AddDTPicker("dtpAlta", 0);
  dtp.setCustomFormat("dddd d/MM/yy");
  dtp.setValue(Variant(MakeDate(2024, 3, 4)));  // a Monday
  Show();
  auto* edit = Widget<QDateEdit>("dtpAlta", 0);
  QCheckBox* check = view_->DateCheck("dtpAlta", 0);
  ASSERT_NE(check, nullptr);
  QTest::mouseClick(check, Qt::LeftButton);
  EXPECT_TRUE(dtp.Value().IsNull());
  EXPECT_FALSE(edit->isEnabled()) << "no date while unchecked";
  QTest::mouseClick(check, Qt::LeftButton);
  edit->setFocus();
  edit->setCurrentSection(QDateTimeEdit::DaySection);
  QTest::keyClick(edit, Qt::Key_Up);  // the user steps the day
  EXPECT_EQ(dtp.Value().AsDate(), MakeDate(2024, 3, 5));
  EXPECT_EQ(edit->text(), QStringLiteral("martes 5/03/24"));

  dtp.setValue(Variant::Null());
  EXPECT_FALSE(check->isChecked());
}

TEST_F(FormViewTest, EnabledAndVisibleFollowTheModelThroughFrames) {
  auto& frame = form_.AddFrame("fraDatos");
  auto& txt = form_.AddTextBox("txtDentro");
  txt.setParent(&frame);
  Show();
  QWidget* edit = view_->WidgetOf("txtDentro");

  for (form::Control* c : std::initializer_list<form::Control*>{&frame, &txt}) {
    c->setEnabled(false);
    EXPECT_FALSE(edit->isEnabled()) << c->Name();
    c->setEnabled(true);
    EXPECT_TRUE(edit->isEnabled()) << c->Name();
  }
  frame.setVisible(false);
  EXPECT_FALSE(edit->isVisible());
  frame.setVisible(true);
  EXPECT_TRUE(edit->isVisible());
}

class FocusViewTest : public FormViewTest {
 protected:
  void SetUp() override {
    FormViewTest::SetUp();
    auto& a = form_.AddTextBox("txtA");
    auto& b = form_.AddTextBox("txtB");
    auto& ok = form_.AddCommandButton("cmdAceptar");
    ok.setCaption("&Aceptar");  // the accelerator below
    ok.Click.Connect(Log("Click cmdAceptar"));
    for (form::TextBox* t : {&a, &b}) {
      const std::string n = t->Name();
      t->Validate.Connect([this, t, n](bool& cancel) {
        log_.push_back("Validate " + n);
        cancel = refuseEmpty_ && t->Text().empty();
      });
      t->LostFocus.Connect(Log("LostFocus " + n));
      t->GotFocus.Connect(Log("GotFocus " + n));
    }
  }
  bool refuseEmpty_ = false;
};

// A refused Validate keeps the focus and the button unpressed; Alt+A presses it after one.
TEST_F(FocusViewTest, CancelledValidateKeepsTheFocusAndTheButtonUnpressed) {
  refuseEmpty_ = true;
  Show();
  form_.Item("txtA").SetFocus();
  QWidget* a = view_->WidgetOf("txtA");

  view_->WidgetOf("txtB")->setFocus(Qt::TabFocusReason);  // as a click in the other box
  EXPECT_TRUE(QTest::qWaitFor([&] { return QApplication::focusWidget() == a; }));

  log_.clear();
  QTest::mouseClick(view_->WidgetOf("cmdAceptar"), Qt::LeftButton);
  EXPECT_TRUE(QTest::qWaitFor([&] { return QApplication::focusWidget() == a; }));
  EXPECT_EQ(log_, std::vector<std::string>{"Validate txtA"}) << "no Click after a refusal";

  QTest::keyClicks(a, "algo");
  log_.clear();
  QTest::mouseClick(view_->WidgetOf("cmdAceptar"), Qt::LeftButton);
  EXPECT_EQ(log_, (std::vector<std::string>{"Validate txtA", "LostFocus txtA",
                                            "Click cmdAceptar"}));

  form_.Item("txtA").SetFocus();
  log_.clear();
  QTest::keyClick(view_.get(), Qt::Key_A, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !log_.empty() && log_.back() == "Click cmdAceptar"; }));
  EXPECT_EQ(log_.front(), "Validate txtA");
}

TEST_F(FormViewTest, AnErrorInAHandlerIsKeptForTheCaller) {
  auto& cmd = form_.AddCommandButton("cmdFalla");
  cmd.Click.Connect([] { Raise(err::kTypeMismatch); });
  int hooked = 0;
  FormView::SetErrorHook([&] { ++hooked; });
  Show();
  QTest::mouseClick(view_->WidgetOf("cmdFalla"), Qt::LeftButton);
  FormView::SetErrorHook(nullptr);
  EXPECT_EQ(hooked, 1);
  const std::exception_ptr error = FormView::TakePendingError();
  EXPECT_EQ(CaughtError([&] { std::rethrow_exception(error); }).number(), err::kTypeMismatch);
  EXPECT_FALSE(FormView::TakePendingError()) << "taken once";
}

}  // namespace
}  // namespace cp::testing
