#include "common/messages.h"

#include "common/console_messenger.h"
#include "tests/common/common_fixture.h"

namespace cp::testing {
namespace {

using MessagesTest = CommonTest;

TEST_F(MessagesTest, MostrarMensajeShowsThroughTheMessengerAndReturnsTheButton) {
  messenger_->QueueAnswer(msg::kYes);
  EXPECT_EQ(MostrarMensaje("¿Seguro?\r\nSí", 0x1034, "Pregunta"), msg::kYes);
  EXPECT_EQ(MostrarMensaje("Hecho."), msg::kOk);
  EXPECT_EQ(MostrarMensaje("¿Otra?", msg::kYesNo), msg::kNo);  // queue dry: declined
  ASSERT_EQ(messenger_->shown().size(), 3u);
  EXPECT_EQ(messenger_->shown()[0].text, "¿Seguro?\r\nSí");
  EXPECT_EQ(messenger_->shown()[0].flags, 0x1034);
  EXPECT_EQ(messenger_->shown()[0].title, "Pregunta");
  EXPECT_EQ(messenger_->shown()[1].flags, 0);
  EXPECT_EQ(messenger_->shown()[1].title, "");
  EXPECT_FALSE(messenger_->shown()[0].is_prompt);
}

TEST_F(MessagesTest, PedirMensajeAsksThroughTheMessengerAndReturnsTheText) {
  messenger_->QueueInput("Nueva selección");
  EXPECT_EQ(PedirMensaje("Nombre:", "Guardar", "Sin nombre"), "Nueva selección");
  EXPECT_EQ(PedirMensaje("Nombre:"), "");
  ASSERT_EQ(messenger_->shown().size(), 2u);
  EXPECT_TRUE(messenger_->shown()[0].is_prompt);
  EXPECT_EQ(messenger_->shown()[0].text, "Nombre:");
  EXPECT_EQ(messenger_->shown()[0].title, "Guardar");
  EXPECT_EQ(messenger_->shown()[0].default_text, "Sin nombre");
  EXPECT_EQ(messenger_->shown()[1].title, "");
}

TEST_F(MessagesTest, ModalFlagIsTrueWhileShownAndRestoredAfter) {
  for (bool before : {false, true}) {
    messenger_->ClearShown();
    setgModalAbierto(before);
    MostrarMensaje("a");
    EXPECT_EQ(gModalAbierto(), before);
    PedirMensaje("b");
    EXPECT_EQ(gModalAbierto(), before);
    ASSERT_EQ(messenger_->shown().size(), 2u);
    EXPECT_TRUE(messenger_->shown()[0].modal_flag);
    EXPECT_TRUE(messenger_->shown()[1].modal_flag);
  }
}

TEST(DecliningAnswer, IsWhatAUserWhoSaysNoPresses) {
  const std::pair<int, int> rows[] = {
      {0x0, msg::kOk},     {0x10, msg::kOk},        {0x1040, msg::kOk},
      {0x1, msg::kCancel}, {0x2, msg::kAbort},      {0x3, msg::kCancel},
      {0x4, msg::kNo},     {0x1034, msg::kNo},      {0x5, msg::kCancel},
  };
  for (const auto& [flags, answer] : rows) EXPECT_EQ(DecliningAnswer(flags), answer) << flags;
}

TEST(ConsoleMessenger, WritesLinesAndDeclines) {
  std::ostringstream out;
  ConsoleMessenger console(out);
  EXPECT_EQ(console.Show("Primera\r\nSegunda", 0x1034, "Error. - Versión: 1"), msg::kNo);
  EXPECT_EQ(out.str(), "[Error. - Versión: 1]\nPrimera\nSegunda\n-> No\n");

  out.str("");
  EXPECT_EQ(console.Show("Aviso", 0x10, ""), msg::kOk);
  EXPECT_EQ(out.str(), "Aviso\n");

  out.str("");
  EXPECT_EQ(console.Ask("Nombre:", "", "algo"), "");
  EXPECT_EQ(out.str().find("Nombre:\n"), 0u);
}

TEST_F(MessagesTest, ResettingTheMessengerReinstallsTheConsole) {
  auto previous = SetMessenger(nullptr);
  EXPECT_EQ(previous, messenger_);
  EXPECT_NE(dynamic_cast<ConsoleMessenger*>(CurrentMessenger().get()), nullptr);
}

}  // namespace
}  // namespace cp::testing
