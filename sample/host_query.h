#pragma once
// The query a host runs with the condition the component returns.
#include <string>

namespace cp::sample {

// The host query for an entity and a condition: SELECT <table>.* FROM <table> [LEFT JOIN
// Cliente ...] [WHERE <condition>]; raises error 5 for an entity outside the catalogue.
std::string HostQuery(const std::string& entity, const std::string& condition);

}  // namespace cp::sample
