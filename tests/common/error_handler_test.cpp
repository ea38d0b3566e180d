#include <new>
#include <stdexcept>

#include "common/messages.h"
#include "tests/common/common_fixture.h"

namespace cp::testing {
namespace {

using ErrorHandlerTest = CommonTest;

TEST_F(ErrorHandlerTest, EachKnownNumberAndAnyOtherShowsItsBoxAndIsLogged) {
  setProgramTitle("Gestión Inmobiliaria");
  setVersionPrograma("4.2.17");
  const std::string label = "SQL_NumA de MSeleccion";
  const struct {
    long number;
    std::string description, title;
    int flags;
    std::string text;
  } rows[] = {
      {70, "Permiso denegado", "Borrar", 0x1030,
       "El fichero está bloqueado por Windows.\r\nCompruebe que no está abierto en Word."},
      {7, "Memoria insuficiente", "Error de sistema", 0x1010,
       "El sistema no dispone de suficiente memoria libre.\r\n"
       "Cierre los programas que no esté utilizando o reinicie el sistema.\r\n"
       "Es conveniente reiniciar Gestión Inmobiliaria para evitar errores."},
      {3167, "Registro eliminado.", "Error", 0x1030,
       "La ficha acaba de ser borrada por otro usuario y\r\nno se volverá a visualizar."},
      {3200, "No se puede eliminar.", "Eliminar", 0x1040,
       "Imposible eliminar el dato ya que está siendo utilizado por otras fichas."},
      {13, "No coinciden los tipos", "Error. - Versión: 4.2.17", 0x1034,
       "Error en la rutina: SQL_NumA de MSeleccion\r\n"
       "Texto del error: No coinciden los tipos\r\n"
       "Número del error: 13\r\n"
       "¿Desea enviar la información sobre el error al soporte técnico de Norvak?"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.number);
    auto messenger = std::make_shared<ScriptedMessenger>();
    SetMessenger(messenger);
    std::filesystem::remove(LogFile());
    int reloads = 0;
    SetReloadHook([&] { reloads += messenger->shown().size() == 1; });  // after the message
    ManejarError(label, Error(row.number, row.description));

    ASSERT_EQ(messenger->shown().size(), 1u);
    const auto& box = messenger->shown()[0];
    EXPECT_EQ(box.title, row.title);
    EXPECT_EQ(box.flags, row.flags);
    EXPECT_EQ(box.text, row.text);
    EXPECT_TRUE(box.modal_flag);
    EXPECT_EQ(reloads, row.number == 3167 ? 1 : 0);
    EXPECT_EQ(Log(), "05/03/24 09:07:02 SQL_NumA de MSeleccion [" + std::to_string(row.number) +
                         "] " + row.description + "\n    Formularios: \n");
  }
}

TEST_F(ErrorHandlerTest, AcceptedReportTurnsLaterGenericBoxesIntoPlainOnes) {
  setVersionPrograma("1.0.0");
  messenger_->QueueAnswer(msg::kYes);
  ManejarError("cboEntidad_Click en frmSeleccion", Error(91, "Variable de objeto no establecida"));

  EXPECT_TRUE(ReportSent());
  ASSERT_EQ(messenger_->shown().size(), 2u);
  // Without a support address the user learns where the report's archive is.
  const auto& info = messenger_->shown()[1];
  EXPECT_EQ(info.flags, 0x1040);
  EXPECT_NE(info.text.find(dir_ + "/Incidencia-"), std::string::npos);

  messenger_->ClearShown();
  messenger_->QueueAnswer(msg::kYes);
  ManejarError("VerSelAnt de SeleccionCli", Error(5, "Llamada no válida"));
  ASSERT_EQ(messenger_->shown().size(), 1u);
  EXPECT_EQ(messenger_->shown()[0].flags, 0x1030);
  EXPECT_EQ(messenger_->shown()[0].text,
            "Error en la rutina: VerSelAnt de SeleccionCli\r\n"
            "Texto del error: Llamada no válida\r\n"
            "Número del error: 5");
}

TEST_F(ErrorHandlerTest, DecliningTheReportKeepsOfferingAndTheModalFlagIsPutBack) {
  for (bool before : {false, true}) {
    setgModalAbierto(before);
    messenger_->QueueAnswer(msg::kNo);
    ManejarError("a", Error(5, "d"));
    EXPECT_EQ(gModalAbierto(), before);
  }
  ASSERT_EQ(messenger_->shown().size(), 2u);
  EXPECT_EQ(messenger_->shown()[1].flags, 0x1034);
  EXPECT_FALSE(ReportSent());
}

class ThrowingMessenger : public Messenger {
 public:
  int Show(const std::string&, int, const std::string&) override { throw std::runtime_error("x"); }
  std::string Ask(const std::string&, const std::string&, const std::string&) override {
    throw std::runtime_error("x");
  }
};

TEST_F(ErrorHandlerTest, FailuresOfItsOwnStepsStayInside) {
  SetMessenger(std::make_shared<ThrowingMessenger>());
  setgModalAbierto(false);
  EXPECT_NO_THROW(ManejarError("a", Error(5, "d")));
  EXPECT_FALSE(gModalAbierto());
  EXPECT_NE(Log().find("a [5] d"), std::string::npos);
}

TEST_F(ErrorHandlerTest, TrapHandsEveryStandardFailureToTheHandler) {
  const struct {
    std::string name;
    std::function<void()> body;
    long number;
    std::string description;
  } rows[] = {
      {"cp::Error", [] { Raise(94); }, 94, "Uso no válido de Null"},
      {"bad_alloc", [] { throw std::bad_alloc(); }, 7, "Memoria insuficiente"},
      {"out_of_range", [] { (void)std::string("ab").at(5); }, 9,
       "El subíndice está fuera del intervalo"},
      {"overflow_error", [] { throw std::overflow_error("big"); }, 6, "Desbordamiento"},
      {"other", [] { throw std::runtime_error("disco lleno"); }, 5,
       "Llamada a procedimiento o argumento no válidos (disco lleno)"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    std::filesystem::remove(LogFile());
    EXPECT_FALSE(Atrapar("Prueba de RutinasErr", row.body));
    EXPECT_EQ(Log(), "05/03/24 09:07:02 Prueba de RutinasErr [" + std::to_string(row.number) +
                         "] " + row.description + "\n    Formularios: \n");
  }
}

TEST_F(ErrorHandlerTest, TrapIsSilentWhenNothingFailsAndLetsNonStandardExceptionsThrough) {
  int runs = 0;
  EXPECT_TRUE(Atrapar("a", [&] { ++runs; }));
  EXPECT_EQ(runs, 1);
  EXPECT_THROW(Atrapar("a", [] { throw 42; }), int);
  EXPECT_TRUE(messenger_->shown().empty());
  EXPECT_FALSE(std::filesystem::exists(LogFile()));
}

}  // namespace
}  // namespace cp::testing
