#include "cli/import_command.h"

#include <chrono>
#include <cstdio>
#include <memory>
#include <ostream>

#include "cli/commands.h"
#include "cli/progress_bar.h"
#include "platform/core/error.h"
#include "platform/postgres/session.h"

namespace cp::cli {
namespace {

std::string Padded(const std::string& text, std::size_t width) {
  // Width in characters, not bytes: names may hold accents.
  std::size_t chars = 0;
  for (unsigned char c : text) chars += (c & 0xc0) != 0x80;
  return text + std::string(chars < width ? width - chars : 1, ' ');
}

std::string Joined(const std::vector<std::string>& names) {
  std::string out;
  for (const std::string& n : names) out += (out.empty() ? "" : ", ") + n;
  return out;
}

std::string Hex(std::uint64_t value) {
  char buf[24];
  std::snprintf(buf, sizeof buf, "%016llx", static_cast<unsigned long long>(value));
  return buf;
}

void PrintSummary(const sample::ImportSummary& s, std::ostream& out) {
  out << Padded("Tabla", 24) << "Filas\n";
  long total = 0;
  for (const sample::ImportedTable& t : s.tables) {
    out << Padded(t.name, 24) << t.rows;
    if (!t.in_schema) out << "  (tabla que el esquema no conoce, copiada tal cual)";
    out << "\n";
    total += t.rows;
  }
  out << Padded("Total", 24) << total << "\n";
  for (const sample::ImportedTable& t : s.tables) {
    if (!t.added_columns.empty())
      out << "Columnas que el esquema no conoce, copiadas tal cual en " << t.name << ": "
          << Joined(t.added_columns) << "\n";
    if (!t.skipped_columns.empty())
      out << "Columnas OLE o binarias no importadas de " << t.name << ": "
          << Joined(t.skipped_columns) << "\n";
  }
  if (!s.missing_tables.empty())
    out << "Tablas del esquema que el fichero no tiene (quedan vacías): "
        << Joined(s.missing_tables) << "\n";
}

bool PrintCheck(const std::vector<sample::TableCheck>& checks, std::ostream& out) {
  out << "\nComprobación con el fichero de Access:\n"
      << Padded("Tabla", 24) << Padded("Access", 10) << Padded("Copia", 10)
      << Padded("Suma Access", 18) << Padded("Suma copia", 18) << "\n";
  int bad = 0;
  for (const sample::TableCheck& c : checks) {
    out << Padded(c.name, 24) << Padded(std::to_string(c.access_rows), 10)
        << Padded(std::to_string(c.target_rows), 10) << Padded(Hex(c.access_sum), 18)
        << Padded(Hex(c.target_sum), 18) << (c.ok() ? "bien" : "DISTINTA") << "\n";
    bad += !c.ok();
  }
  if (bad == 0)
    out << "Comprobación correcta: las " << checks.size()
        << " tablas tienen las mismas filas y los mismos valores.\n";
  return bad == 0;
}

}  // namespace

int Import(const ImportOptions& options, std::ostream& out, std::ostream& err,
           const sample::ImportProgress& progress) {
  const bool server = postgres::IsServerConnection(options.db);
  sample::ImportSummary summary;
  try {
    summary = sample::ImportAccess(options.mdb, options.db, {options.replace, progress});
  } catch (const Error& e) {
    if (e.number() == err::kFileAlreadyExists)
      err << (server ? "La base de datos '" + options.db + "' ya tiene las tablas"
                     : "El fichero '" + options.db + "' ya existe")
          << "; import no la sustituye sin --replace.\n";
    else if (e.source() == "CriterioPredios.Access" || e.number() == err::kFileNotFound)
      err << e.description() << " No se ha creado nada.\n";
    else
      err << "Error " << e.number() << ": " << e.description()
          << "\nLa importación no se ha hecho; no se ha creado nada.\n";
    return kExitError;
  }
  PrintSummary(summary, out);
  if (!options.check) return kExitOk;
  try {
    if (PrintCheck(sample::CheckImport(options.mdb, options.db), out)) return kExitOk;
    err << "La comprobación encontró diferencias entre la copia y el fichero de Access.\n";
  } catch (const Error& e) {
    err << "Error " << e.number() << " al comprobar: " << e.description() << "\n";
  }
  return kExitError;
}

sample::ImportProgress ImportProgressBar(std::ostream& err) {
  using Clock = std::chrono::steady_clock;
  struct State {
    std::string table;
    Clock::time_point started, drawn;
  };
  auto state = std::make_shared<State>();
  return [&err, state](const std::string& table, long done, long total) {
    const auto now = Clock::now();
    if (table != state->table) *state = {table, now, {}};
    const bool last = done >= total;
    if (!last && now - state->drawn < std::chrono::milliseconds(200)) return;
    state->drawn = now;
    const double seconds = std::chrono::duration<double>(now - state->started).count();
    const long rate = seconds > 0 ? static_cast<long>(done / seconds) : 0;
    DrawProgressBar(err, Padded(table, 20), done, total, 30,
                    "  " + std::to_string(rate) + " filas/s");
  };
}

}  // namespace cp::cli
