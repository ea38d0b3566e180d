#include "platform/jetsql/errors.h"

#include "platform/core/error.h"

namespace cp::jetsql {

void RaiseSyntaxError(std::string_view textAtFault) {
  throw Error(dao::daoerr::kSyntaxInQuery,
              "Error de sintaxis en la expresión de consulta '" + std::string(textAtFault) + "'.",
              kErrorSource);
}

void RaiseUnsupported(std::string_view construct) {
  throw Error(dao::daoerr::kUnsupported,
              "La consulta usa '" + std::string(construct) +
                  "', que no se puede traducir al motor de base de datos.",
              kErrorSource);
}

void RaiseSubqueryFields() {
  throw Error(dao::daoerr::kSubqueryFields,
              "Ha escrito una subconsulta que puede devolver más de un campo sin usar la palabra "
              "reservada EXISTS en la cláusula FROM de la consulta principal. Revise la "
              "instrucción SELECT de la subconsulta para solicitar un solo campo.",
              kErrorSource);
}

void RaiseUndefinedFunction(std::string_view name) {
  throw Error(dao::daoerr::kUndefinedFunction,
              "Función '" + std::string(name) + "' no definida en la expresión.", kErrorSource);
}

}  // namespace cp::jetsql
