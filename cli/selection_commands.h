#pragma once
// The subcommands that drive the selection object as a host would: where (the dialog, with
// the user's inputs given as --set), cross (Cruzar), and their query forms that also run
// the host query and print its rows.
#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace cp::cli {

struct WhereOptions {
  std::string db;
  std::string entity;
  std::vector<std::string> possible;  // EntidadesPosibles, in order (none: default list)
  std::optional<std::int32_t> user;   // gVUser
  std::string restore;                // JSON file with a saved selection ("" for none)
  std::vector<std::string> sets;      // NAME=VALUE or NAME(I)=VALUE, applied in order
  bool json = false;
  bool query = false;  // also run the host query and print its rows
};

// Builds CSeleccion (EntidadesPosibles, Entidad, Seleccion), applies each --set to the
// control that the dialog shows as a user would, presses "Aceptar" and prints SQLW on one
// line (or, with json, {"entidad", "sqlw", "seleccion"}). Exit 2 when accepting raises
// nothing (an entity that no control serves) or on any error.
int Where(const WhereOptions& options, std::ostream& out, std::ostream& err);

struct CrossOptions {
  std::string db;
  std::int32_t id = -1;
  std::string to;    // pstrEntidad
  std::string from;  // pstrEntidadOrigen
  bool json = false;
  bool query = false;
};

// Cruzar: prints the condition that crossing record id of `from` into `to` gives.
int Cross(const CrossOptions& options, std::ostream& out, std::ostream& err);

}  // namespace cp::cli
