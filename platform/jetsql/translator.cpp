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

std::string TranslateStatement(std::string_view jet, Dialect dialect,
                               const TranslateOptions& options) {
  auto select = ParseStatement(jet);
  return Generator(RulesFor(dialect), options).Statement(*select);
}

std::string TranslateCondition(std::string_view jet, Dialect dialect,
                               const TranslateOptions& options) {
  auto condition = ParseCondition(jet);
  return Generator(RulesFor(dialect), options).Condition(*condition);
}

}  // namespace cp::jetsql
