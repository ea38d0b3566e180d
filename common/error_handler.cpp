#include "common/error_handler.h"

#include <new>
#include <stdexcept>

#include "common/error_log.h"
#include "common/messages.h"
#include "common/messenger.h"
#include "common/modal.h"
#include "common/program_info.h"
#include "common/support_report.h"

namespace cp {
namespace {

constexpr const char* kCrLf = "\r\n";

bool g_report_sent = false;

thread_local QuietErrors* t_quiet = nullptr;  // the innermost quiet scope of this thread

std::function<void()>& ReloadHook() {
  static std::function<void()> hook;
  return hook;
}

std::string Lines(std::initializer_list<std::string> lines) {
  std::string text;
  for (const auto& line : lines) {
    if (!text.empty()) text += kCrLf;
    text += line;
  }
  return text;
}

// Shows the message for e and returns the answer (No when nothing was asked).
int ShowMessage(const std::string& label, const Error& e) {
  switch (e.number()) {
    case err::kPermissionDenied:
      MostrarMensaje(Lines({"El fichero está bloqueado por Windows.",
                            "Compruebe que no está abierto en Word."}),
                     0x1030, "Borrar");
      return msg::kNo;
    case err::kOutOfMemory:
      MostrarMensaje(Lines({"El sistema no dispone de suficiente memoria libre.",
                            "Cierre los programas que no esté utilizando o reinicie el sistema.",
                            "Es conveniente reiniciar " + ProgramTitle() +
                                " para evitar errores."}),
                     0x1010, "Error de sistema");
      return msg::kNo;
    case dao::daoerr::kRecordDeleted:
      MostrarMensaje(Lines({"La ficha acaba de ser borrada por otro usuario y",
                            "no se volverá a visualizar."}),
                     0x1030, "Error");
      if (ReloadHook()) ReloadHook()();
      return msg::kNo;
    case dao::daoerr::kRecordReferenced:
      MostrarMensaje("Imposible eliminar el dato ya que está siendo utilizado por otras fichas.",
                     0x1040, "Eliminar");
      return msg::kNo;
    default:
      break;
  }
  std::string text = Lines({"Error en la rutina: " + label, "Texto del error: " + e.description(),
                            "Número del error: " + std::to_string(e.number())});
  if (g_report_sent) {
    // An OK-only box: whatever comes back, nothing was offered.
    MostrarMensaje(text, 0x1030, "Error. - Versión: " + VersionPrograma());
    return msg::kNo;
  }
  text += kCrLf;
  text += "¿Desea enviar la información sobre el error al soporte técnico de Norvak?";
  return MostrarMensaje(text, 0x1034, "Error. - Versión: " + VersionPrograma());
}

}  // namespace

QuietErrors::QuietErrors() : outer_(t_quiet) { t_quiet = this; }
QuietErrors::~QuietErrors() { t_quiet = outer_; }

void ManejarError(const std::string& label, const Error& e) {
  if (t_quiet) {
    ++t_quiet->trapped_;
    return;
  }
  ModalScope modal;
  int answer = msg::kNo;
  // The handler's own steps are not reported again: a failure there is dropped so that
  // the trapped procedure can still end normally.
  try {
    answer = ShowMessage(label, e);
  } catch (const std::exception&) {
  }
  const std::string log_path = HandlerLogPath();
  try {
    // The engine's own code tells support apart failures that share a DAO number.
    AppendErrorLog(label, e.number(),
                   e.engine_code().empty() ? e.description()
                                           : e.description() + " [" + e.engine_code() + "]",
                   log_path);
  } catch (const std::exception&) {
  }
  if (answer != msg::kYes) return;
  // The flag goes up before the report is built, so that nothing during the report offers
  // another one; the report keeps its own failures to itself.
  g_report_sent = true;
  try {
    EnviarInformeSoporte(label, e, ErrorLogFile(log_path));
  } catch (const std::exception&) {
  }
}

Error ErrorFromException(const std::exception& e) {
  long number = err::kInvalidProcedureCall;
  if (dynamic_cast<const std::bad_alloc*>(&e) || dynamic_cast<const std::length_error*>(&e)) {
    number = err::kOutOfMemory;
  } else if (dynamic_cast<const std::out_of_range*>(&e)) {
    number = err::kSubscriptOutOfRange;
  } else if (dynamic_cast<const std::overflow_error*>(&e)) {
    number = err::kOverflow;
  }
  std::string description = StandardDescription(number);
  if (number == err::kInvalidProcedureCall && e.what() && *e.what()) {
    description += std::string(" (") + e.what() + ")";
  }
  return Error(number, description);
}

void SetReloadHook(std::function<void()> hook) { ReloadHook() = std::move(hook); }

bool ReportSent() { return g_report_sent; }
void setReportSent(bool sent) { g_report_sent = sent; }

}  // namespace cp
