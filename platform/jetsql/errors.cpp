#include "platform/jetsql/errors.h"

#include "platform/core/error.h"

namespace cp::jetsql {

void RaiseSyntaxError(std::string_view textAtFault) {
  throw Error(kSyntaxErrorNumber,
              "Error de sintaxis en la expresión de consulta '" + std::string(textAtFault) + "'.",
              kErrorSource);
}

void RaiseUnsupported(std::string_view construct) {
  throw Error(kUnsupportedNumber,
              "La consulta usa '" + std::string(construct) +
                  "', que no se puede traducir al motor de base de datos.",
              kErrorSource);
}

void RaiseUndefinedFunction(std::string_view name) {
  throw Error(kUndefinedFunctionNumber,
              "Función '" + std::string(name) + "' no definida en la expresión.", kErrorSource);
}

}  // namespace cp::jetsql
