#include "platform/core/error.h"

namespace cp {

Error::Error(long number, std::string description, std::string source, std::string engineCode)
    : std::runtime_error(description),
      number_(number),
      description_(std::move(description)),
      source_(std::move(source)),
      engineCode_(std::move(engineCode)) {}

std::string StandardDescription(long number) {
  switch (number) {
    case err::kInvalidProcedureCall: return "Llamada a procedimiento o argumento no válidos";
    case err::kOverflow: return "Desbordamiento";
    case err::kOutOfMemory: return "Memoria insuficiente";
    case err::kSubscriptOutOfRange: return "El subíndice está fuera del intervalo";
    case err::kTypeMismatch: return "No coinciden los tipos";
    case err::kFileNotFound: return "No se ha encontrado el archivo";
    case err::kPermissionDenied: return "Permiso denegado";
    case err::kPathNotFound: return "No se ha encontrado la ruta de acceso";
    case err::kInvalidUseOfNull: return "Uso no válido de Null";
    case err::kInvalidPropertyValue: return "Valor de propiedad no válido";
    case err::kObjectRequired: return "Se requiere un objeto";
    case err::kCannotCreateObject: return "El componente ActiveX no puede crear el objeto";
    case err::kPropertyNotFound: return "El objeto no acepta esta propiedad o método";
    default: return {};
  }
}

void Raise(long number, const std::string& description, const std::string& source) {
  throw Error(number, description.empty() ? StandardDescription(number) : description, source);
}

}  // namespace cp
