#include "platform/dao/dao_errors.h"

#include <filesystem>
#include <string>

#include "platform/core/error.h"

namespace cp::dao {
namespace {

Error Busy(std::string_view path, std::string_view source) {
  return Error(daoerr::kBusy,
               "No se pudo leer: la base de datos '" + std::string(path) +
                   "' está bloqueada por otro proceso. Inténtelo de nuevo más tarde.",
               std::string(source));
}

Error Locked(std::string_view detail, std::string_view source) {
  return Error(daoerr::kLocked,
               "No se pudo actualizar; bloqueado actualmente (" + std::string(detail) + ").",
               std::string(source));
}

Error FileNotFound(std::string_view path) {
  return Error(daoerr::kFileNotFound, "No se encuentra el archivo '" + std::string(path) + "'.",
               std::string(kDatabaseSource));
}

Error InvalidPath(std::string_view path) {
  return Error(daoerr::kInvalidPath,
               "'" + std::string(path) +
                   "' no es una ruta válida. Asegúrese de que la ruta se ha escrito "
                   "correctamente y de que está conectado al servidor en el que reside el "
                   "archivo.",
               std::string(kDatabaseSource));
}

Error UnrecognisedFormat(std::string_view path) {
  return Error(daoerr::kUnrecognisedFormat,
               "Formato de base de datos no reconocido '" + std::string(path) + "'.",
               std::string(kDatabaseSource));
}

Error EngineFailureError(std::string_view message, std::string_view source) {
  return Error(daoerr::kEngineFailure,
               "Error en la llamada al motor de base de datos: " + std::string(message),
               std::string(source));
}

// A file that could not be opened: Jet tells a missing folder (3044) from a missing file.
Error CannotOpen(std::string_view path) {
  std::error_code ec;
  const auto parent =
      std::filesystem::absolute(std::filesystem::path(path), ec).parent_path();
  if (ec || !std::filesystem::is_directory(parent, ec)) return InvalidPath(path);
  return FileNotFound(path);
}

Error Syntax(std::string_view culprit, std::string_view sql, bool criterion,
             std::string_view source) {
  const std::string where = culprit.empty() || culprit == sql
                                ? "'" + std::string(sql) + "'"
                                : "'" + std::string(sql) + "' (cerca de '" +
                                      std::string(culprit) + "')";
  if (criterion)
    return Error(daoerr::kSyntaxInExpression,
                 "Error de sintaxis (falta operador) en la expresión " + where + ".",
                 std::string(source));
  return Error(daoerr::kSyntaxInQuery,
               "Error de sintaxis (falta operador) en la expresión de consulta " + where + ".",
               std::string(source));
}

// The errors whose text needs no detail.
Error Dao(long number, std::string_view source) {
  const std::string src(source);
  switch (number) {
    case daoerr::kNoCurrentRecord: return Error(number, "No hay registro activo.", src);
    case daoerr::kItemNotFound:
      return Error(number, "Elemento no encontrado en esta colección.", src);
    case daoerr::kInvalidOperation: return Error(number, "Operación no válida.", src);
    case daoerr::kNotForThisType:
      return Error(number, "La operación no es válida para este tipo de objeto.", src);
    case daoerr::kObjectInvalid:
      return Error(number, "El objeto no es válido o ya no está establecido.", src);
    case daoerr::kReadOnly:
      return Error(number,
                   "No se puede actualizar. La base de datos o el objeto es de sólo lectura.",
                   src);
    default: return Error(number, "Error de acceso a datos.", src);
  }
}

Error FromFailure(const EngineFailure& f, std::string_view sql, SqlContext context,
                  std::string_view source) {
  const bool criterion = context == SqlContext::Criterion;
  const std::string src(source);
  switch (f.kind) {
    case FailureKind::UnknownTable:
      return Error(daoerr::kTableNotFound,
                   "El motor de base de datos no encuentra la tabla o consulta de entrada '" +
                       f.name +
                       "'. Asegúrese de que existe y de que su nombre está escrito "
                       "correctamente.",
                   src);
    case FailureKind::UnknownColumn:
      if (criterion)
        return Error(daoerr::kUnknownFieldInExpression,
                     "El motor de base de datos no reconoce '" + f.name +
                         "' como un nombre de campo o expresión válido.",
                     src);
      return Error(daoerr::kTooFewParameters,
                   "Pocos parámetros. Se esperaba 1. (columna desconocida '" + f.name + "')",
                   src);
    case FailureKind::AmbiguousColumn:
      return Error(daoerr::kAmbiguousField,
                   "El campo especificado '" + f.name +
                       "' puede referirse a más de una tabla de las enumeradas en la cláusula "
                       "FROM de la instrucción SQL.",
                   src);
    case FailureKind::UnknownFunction:
      if (f.name.empty())
        return Error(daoerr::kUndefinedFunction,
                     "Función no definida en la expresión: " + f.message, src);
      return Error(daoerr::kUndefinedFunction,
                   "Función '" + f.name + "' no definida en la expresión.", src);
    case FailureKind::Syntax: return Syntax(f.name, sql, criterion, source);
    case FailureKind::Busy: return Busy(f.name, source);
    case FailureKind::Locked: return Locked(f.message, source);
    case FailureKind::NotADatabase: return UnrecognisedFormat(f.name);
    case FailureKind::CannotOpen: return CannotOpen(f.name);
    case FailureKind::ReadOnly:
      return Dao(daoerr::kInvalidOperation, source);
    case FailureKind::TooComplex:
      return Error(daoerr::kQueryTooComplex, "Consulta demasiado compleja.", src);
    case FailureKind::Other: break;
  }
  return EngineFailureError(f.message, source);
}

}  // namespace

void RaiseDao(long number, std::string_view source) { throw Dao(number, source); }

void RaiseEngineError(const EngineFailure& failure, std::string_view sql, SqlContext context,
                      std::string_view source) {
  const Error e = FromFailure(failure, sql, context, source);
  throw Error(e.number(), e.description(), e.source(), failure.code);
}

void RaiseInvalidPath(std::string_view path) { throw InvalidPath(path); }

void RethrowWithSource(const Error& error, std::string_view source) {
  throw Error(error.number(), error.description(), std::string(source), error.engine_code());
}

}  // namespace cp::dao
