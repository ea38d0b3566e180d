#include "common/sql_text.h"

#include "tests/common/common_fixture.h"

namespace cp::testing {
namespace {

using SqlTextTest = CommonTest;

TEST_F(SqlTextTest, ComillaDoublesQuotesThenTakesBarsOutOfTheLiteral) {
  const std::tuple<std::string, std::string, std::string> rows[] = {  // text, Comilla, ComillaSQL
      {"", "", "''"}, {"O'Brien", "O''Brien", "'O''Brien'"},
      {"|", "' + chr(124) + '", "'' + chr(124) + ''"},
      {"a||b", "a' + chr(124) + '' + chr(124) + 'b", "'a' + chr(124) + '' + chr(124) + 'b'"},
      // Quotes first: the quotes that the bar's replacement brings are not doubled.
      {"|'", "' + chr(124) + '''", "'' + chr(124) + ''''"},
      // Wildcards stay wildcards; other text passes through untouched.
      {"*Ávila?#[a-c][!x]\"%_", "*Ávila?#[a-c][!x]\"%_", "'*Ávila?#[a-c][!x]\"%_'"},
  };
  for (const auto& [in, comilla, sql] : rows) {
    EXPECT_EQ(Comilla(in), comilla) << in;
    EXPECT_EQ(ComillaSQL(in), sql) << in;
  }
  EXPECT_TRUE(messenger_->shown().empty());
}

TEST_F(SqlTextTest, PaddingFillsWithZerosNeverCutsAndReportsOverflow) {
  const std::tuple<std::string, std::int16_t, std::string> rows[] = {
      {"42", 5, "00042"}, {"12345", 3, "12345"}, {"42", -5, "42"}, {"ñ", 3, "00ñ"},
      {"", -32768, ""},   {"7", 32767, std::string(32766, '0') + "7"},
      {std::string(40000, '9'), 32767, std::string(40000, '9')},
  };
  for (const auto& [text, width, out] : rows) EXPECT_EQ(Padding(text, width), out) << text;
  EXPECT_TRUE(messenger_->shown().empty());
  // Beyond sixteen bits: reported through the handler, and nothing comes back.
  for (const auto& [text, width] : {std::pair<std::string, std::int16_t>{"x", -32768},
                                    {std::string(70000, '1'), 0}}) {
    messenger_->ClearShown();
    std::filesystem::remove(LogFile());
    EXPECT_EQ(Padding(text, width), "");
    ASSERT_EQ(messenger_->shown().size(), 1u);
    EXPECT_EQ(messenger_->shown()[0].text,
              "Error en la rutina: Padding() de RutinasErr\r\nTexto del error: Desbordamiento\r\n"
              "Número del error: 6\r\n"
              "¿Desea enviar la información sobre el error al soporte técnico de Norvak?");
    EXPECT_EQ(Log(), "05/03/24 09:07:02 Padding() de RutinasErr [6] Desbordamiento\n"
                     "    Formularios: \n");
  }
}

}  // namespace
}  // namespace cp::testing
