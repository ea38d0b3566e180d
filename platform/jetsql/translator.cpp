#include "platform/jetsql/translator.h"

#include "platform/jetsql/generator.h"
#include "platform/jetsql/parser.h"
#include "platform/jetsql/postgres_rules.h"
#include "platform/jetsql/sqlite_rules.h"

namespace cp::jetsql {
namespace {

const DialectRules& RulesFor(Dialect dialect) {
  return dialect == Dialect::Postgres ? PostgresRules() : SqliteRules();
}

}  // namespace

std::string TranslateStatement(std::string_view jet, Dialect dialect) {
  auto select = ParseStatement(jet);
  return Generator(RulesFor(dialect)).Statement(*select);
}

std::string TranslateCondition(std::string_view jet, Dialect dialect) {
  auto condition = ParseCondition(jet);
  return Generator(RulesFor(dialect)).Condition(*condition);
}

}  // namespace cp::jetsql
