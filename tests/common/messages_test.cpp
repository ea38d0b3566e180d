#include "common/messages.h"

#include "common/console_messenger.h"
#include "tests/common/common_fixture.h"

namespace cp::testing {
namespace {

using MessagesTest = CommonTest;

// Boxes and prompts go through the messenger with gModalAbierto up, which is put back after.
TEST_F(MessagesTest, MessagesAndPromptsGoThroughTheMessenger) {
  for (bool before : {false, true}) {
    messenger_->ClearShown();
    setgModalAbierto(before);
    messenger_->QueueAnswer(msg::kYes);
    messenger_->QueueInput("Nueva selección");
    EXPECT_EQ(MostrarMensaje("¿Seguro?\r\nSí", 0x1034, "Pregunta"), msg::kYes);
    EXPECT_EQ(MostrarMensaje("Hecho."), msg::kOk);
    EXPECT_EQ(MostrarMensaje("¿Otra?", msg::kYesNo), msg::kNo);  // queue dry: declined
    EXPECT_EQ(PedirMensaje("Nombre:", "Guardar", "Sin nombre"), "Nueva selección");
    EXPECT_EQ(PedirMensaje("Otro:"), "");
    EXPECT_EQ(gModalAbierto(), before);
    const auto& shown = messenger_->shown();
    ASSERT_EQ(shown.size(), 5u);
    const std::tuple<bool, std::string, int, std::string, std::string> expected[] = {
        {false, "¿Seguro?\r\nSí", 0x1034, "Pregunta", ""}, {false, "Hecho.", 0, "", ""},
        {false, "¿Otra?", msg::kYesNo, "", ""}, {true, "Nombre:", 0, "Guardar", "Sin nombre"},
        {true, "Otro:", 0, "", ""}};
    for (std::size_t i = 0; i < shown.size(); ++i) {
      EXPECT_EQ(std::tie(shown[i].is_prompt, shown[i].text, shown[i].flags, shown[i].title,
                         shown[i].default_text), expected[i]) << i;
      EXPECT_TRUE(shown[i].modal_flag) << i;
    }
  }
  // Resetting the messenger reinstalls the console.
  EXPECT_EQ(SetMessenger(nullptr), messenger_);
  EXPECT_NE(dynamic_cast<ConsoleMessenger*>(CurrentMessenger().get()), nullptr);
}

TEST(DecliningAnswer, IsWhatAUserWhoSaysNoPresses) {
  const std::pair<int, int> rows[] = {
      {0x1040, msg::kOk}, {0x1, msg::kCancel}, {0x2, msg::kAbort}, {0x3, msg::kCancel},
      {0x1034, msg::kNo}, {0x5, msg::kCancel},
  };
  for (const auto& [flags, answer] : rows) EXPECT_EQ(DecliningAnswer(flags), answer) << flags;
}

TEST(ConsoleMessenger, WritesLinesAndDeclines) {
  std::ostringstream out;
  ConsoleMessenger console(out);
  EXPECT_EQ(console.Show("Primera\r\nSegunda", 0x1034, "Error. - Versión: 1"), msg::kNo);
  EXPECT_EQ(console.Show("Aviso\n\nfin\r", 0x10, ""), msg::kOk);  // only CR LF pairs change
  EXPECT_EQ(out.str(), "[Error. - Versión: 1]\nPrimera\nSegunda\n-> No\nAviso\n\nfin\r\n");
  out.str("");
  EXPECT_EQ(console.Ask("Nombre:", "", "algo"), "");
  EXPECT_EQ(out.str().find("Nombre:\n"), 0u);
}

}  // namespace
}  // namespace cp::testing
