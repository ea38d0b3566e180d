#include "platform/dao/dao_errors.h"

#include <string>

#include "platform/core/error.h"

namespace cp::dao {
namespace {

[[noreturn]] void Throw(long number, std::string description, std::string_view source) {
  throw Error(number, std::move(description), std::string(source));
}

// The text after `prefix` up to the end of the message (or the closing quote for quoted
// tokens), without SQLite's schema qualifier "main.".
std::string After(std::string_view message, std::string_view prefix) {
  std::string_view rest = message.substr(message.find(prefix) + prefix.size());
  if (rest.rfind("main.", 0) == 0) rest.remove_prefix(5);
  return std::string(rest);
}

bool Contains(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

// The token a syntax message points at: `near "X": syntax error` or `unrecognized token: "X"`.
std::string NearToken(std::string_view message) {
  const auto open = message.find('"');
  if (open == std::string_view::npos) return {};
  const auto close = message.rfind('"');
  if (close <= open) return {};
  return std::string(message.substr(open + 1, close - open - 1));
}

}  // namespace

void RaiseDao(long number, std::string_view source) {
  switch (number) {
    case daoerr::kNoCurrentRecord: Throw(number, "No hay registro activo.", source);
    case daoerr::kItemNotFound: Throw(number, "Elemento no encontrado en esta colección.", source);
    case daoerr::kInvalidOperation: Throw(number, "Operación no válida.", source);
    case daoerr::kNotForThisType:
      Throw(number, "La operación no es válida para este tipo de objeto.", source);
    case daoerr::kObjectInvalid:
      Throw(number, "El objeto no es válido o ya no está establecido.", source);
    case daoerr::kReadOnly:
      Throw(number, "No se puede actualizar. La base de datos o el objeto es de sólo lectura.",
            source);
    default: Throw(number, "Error de acceso a datos.", source);
  }
}

void RaiseFromEngineMessage(std::string_view message, std::string_view sql, SqlContext context,
                            std::string_view source) {
  const bool criterion = context == SqlContext::Criterion;
  if (Contains(message, "no such table: ")) {
    Throw(daoerr::kTableNotFound,
          "El motor de base de datos no encuentra la tabla o consulta de entrada '" +
              After(message, "no such table: ") +
              "'. Asegúrese de que existe y de que su nombre está escrito correctamente.",
          source);
  }
  if (Contains(message, "no such column: ")) {
    const std::string column = After(message, "no such column: ");
    if (criterion)
      Throw(daoerr::kUnknownFieldInExpression,
            "El motor de base de datos no reconoce '" + column +
                "' como un nombre de campo o expresión válido.",
            source);
    Throw(daoerr::kTooFewParameters,
          "Pocos parámetros. Se esperaba 1. (columna desconocida '" + column + "')", source);
  }
  if (Contains(message, "ambiguous column name: ")) {
    Throw(daoerr::kAmbiguousField,
          "El campo especificado '" + After(message, "ambiguous column name: ") +
              "' puede referirse a más de una tabla de las enumeradas en la cláusula FROM de la "
              "instrucción SQL.",
          source);
  }
  if (Contains(message, "no such function: ")) {
    Throw(daoerr::kUndefinedFunction,
          "Función '" + After(message, "no such function: ") + "' no definida en la expresión.",
          source);
  }
  if (Contains(message, "syntax error") || Contains(message, "unrecognized token") ||
      Contains(message, "incomplete input")) {
    std::string culprit = NearToken(message);
    if (culprit.empty()) culprit = std::string(sql);
    const std::string where = culprit == sql ? "'" + culprit + "'"
                                             : "'" + std::string(sql) + "' (cerca de '" +
                                                   culprit + "')";
    if (criterion)
      Throw(daoerr::kSyntaxInExpression,
            "Error de sintaxis (falta operador) en la expresión " + where + ".", source);
    Throw(daoerr::kSyntaxInQuery,
          "Error de sintaxis (falta operador) en la expresión de consulta " + where + ".", source);
  }
  RaiseEngineFailure(message, source);
}

void RaiseFileNotFound(std::string_view path) {
  Throw(daoerr::kFileNotFound, "No se encuentra el archivo '" + std::string(path) + "'.",
        kDatabaseSource);
}

void RaiseInvalidPath(std::string_view path) {
  Throw(daoerr::kInvalidPath,
        "'" + std::string(path) +
            "' no es una ruta válida. Asegúrese de que la ruta se ha escrito correctamente y de "
            "que está conectado al servidor en el que reside el archivo.",
        kDatabaseSource);
}

void RaiseUnrecognisedFormat(std::string_view path) {
  Throw(daoerr::kUnrecognisedFormat,
        "Formato de base de datos no reconocido '" + std::string(path) + "'.", kDatabaseSource);
}

void RaiseBusy(std::string_view path, std::string_view source) {
  Throw(daoerr::kBusy,
        "No se pudo leer: la base de datos '" + std::string(path) +
            "' está bloqueada por otro proceso. Inténtelo de nuevo más tarde.",
        source);
}

void RaiseLocked(std::string_view detail, std::string_view source) {
  Throw(daoerr::kLocked, "No se pudo actualizar; bloqueado actualmente (" + std::string(detail) + ").",
        source);
}

void RaiseEngineFailure(std::string_view message, std::string_view source) {
  Throw(daoerr::kEngineFailure,
        "Error en la llamada al motor de base de datos: " + std::string(message), source);
}

void RethrowWithSource(const Error& error, std::string_view source) {
  throw Error(error.number(), error.description(), std::string(source));
}

}  // namespace cp::dao
