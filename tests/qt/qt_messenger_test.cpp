// The Qt message boxes and input box behind MostrarMensaje and PedirMensaje, answered by
// clicking their buttons as a user would.
#include <QAbstractButton>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>

#include "common/messages.h"
#include "common/messenger.h"
#include "common/modal.h"
#include "qt/qt_messenger.h"
#include "tests/qt/gui_support.h"

namespace cp::testing {
namespace {

class QtMessengerTest : public ::testing::Test {
 protected:
  void SetUp() override { previous_ = SetMessenger(std::make_shared<QtMessenger>()); }
  void TearDown() override { SetMessenger(previous_); }
  std::shared_ptr<Messenger> previous_;
};

QStringList ButtonTexts(const QMessageBox& box) {
  QStringList texts;
  for (QAbstractButton* b : box.buttons()) texts << b->text();
  texts.sort();
  return texts;
}

TEST(QtMessengerFlags, IconsButtonsAndLineBreaksFollowTheCall) {
  const struct { int flags; QMessageBox::Icon icon; std::vector<int> answers; } cases[] = {
      {0x0, QMessageBox::NoIcon, {msg::kOk}},
      {0x1010, QMessageBox::Critical, {msg::kOk}},  // system-modal changes nothing shown
      {0x1040, QMessageBox::Information, {msg::kOk}},
      {0x24, QMessageBox::Question, {msg::kYes, msg::kNo}},
      {0x1, QMessageBox::NoIcon, {msg::kOk, msg::kCancel}},
      {0x3, QMessageBox::NoIcon, {msg::kYes, msg::kNo, msg::kCancel}},
      {0x5, QMessageBox::NoIcon, {4, msg::kCancel}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(IconForFlags(c.flags), c.icon) << std::hex << c.flags;
    std::vector<int> answers;
    for (const BoxButton& b : ButtonsForFlags(c.flags)) answers.push_back(b.answer);
    EXPECT_EQ(answers, c.answers) << std::hex << c.flags;
  }
  EXPECT_EQ(MessageText("Uno\r\nDos\rTres\nCuatro"), QStringLiteral("Uno\nDos\nTres\nCuatro"));
}

TEST_F(QtMessengerTest, YesNoQuestionReturnsTheButtonPressed) {
  for (const auto& [button, expected] :
       {std::pair{QStringLiteral("Sí"), msg::kYes}, std::pair{QStringLiteral("No"), msg::kNo}}) {
    bool modalFlag = false;
    ModalAnswer user([&, button = button](QWidget& w) {
      auto* box = qobject_cast<QMessageBox*>(&w);
      ASSERT_NE(box, nullptr);
      modalFlag = gModalAbierto();
      EXPECT_EQ(box->windowTitle(), QStringLiteral("Error"));
      EXPECT_EQ(box->text(), QStringLiteral("Primera línea\nSegunda línea"));
      ASSERT_EQ(ButtonTexts(*box), (QStringList{QStringLiteral("No"), QStringLiteral("Sí")}));
      for (QAbstractButton* b : box->buttons())
        if (b->text() == button) QTest::mouseClick(b, Qt::LeftButton);
    });
    EXPECT_EQ(MostrarMensaje("Primera línea\r\nSegunda línea", 0x1034, "Error"), expected);
    EXPECT_TRUE(user.Answered());
    EXPECT_TRUE(modalFlag) << "the component's modal flag is up while the box is";
  }
}

TEST_F(QtMessengerTest, InputBoxReturnsTheTypedTextOrNothingWhenCancelled) {
  ModalAnswer typing([](QWidget& w) {
    auto* box = qobject_cast<QInputDialog*>(&w);
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->labelText(), QStringLiteral("Nombre de la selección"));
    auto* edit = box->findChild<QLineEdit*>();
    ASSERT_NE(edit, nullptr);
    EXPECT_EQ(edit->text(), QStringLiteral("Pisos"));
    edit->selectAll();
    TypeText(edit, QString::fromUtf8("Áticos"));
    QTest::keyClick(edit, Qt::Key_Return);
  });
  EXPECT_EQ(PedirMensaje("Nombre de la selección", "Guardar", "Pisos"), "Áticos");

  ModalAnswer cancelling([](QWidget& w) { QTest::keyClick(&w, Qt::Key_Escape); });
  EXPECT_EQ(PedirMensaje("Nombre", "", "algo"), "");
  EXPECT_TRUE(cancelling.Answered());
}

}  // namespace
}  // namespace cp::testing
