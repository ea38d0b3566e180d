// criteriopredios: the command-line face of the selection component. Each subcommand is
// declared by one Add* function below and runs a routine of cli/commands.h; a new subcommand
// adds its own function and one line in main.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <map>
#include <thread>

#include <unistd.h>

#include "cli/commands.h"
#include "cli/import_command.h"
#include "cli/match_command.h"
#include "cli/selection_commands.h"

namespace {

using cp::cli::kExitError;

// Where the chosen subcommand leaves its exit status.
int g_status = cp::cli::kExitOk;

void AddInitDb(CLI::App& app) {
  auto options = std::make_shared<cp::cli::InitDbOptions>();
  CLI::App* cmd = app.add_subcommand(
      "init-db",
      "Crea una base de datos SQLite nueva con el esquema de la agencia; con --demo la llena "
      "de datos de ejemplo (siempre los mismos para el mismo tamaño). No sobrescribe un "
      "fichero existente (estado 2).");
  cmd->add_option("--db", options->db, "Fichero SQLite que se crea")->required();
  CLI::Option* demo = cmd->add_flag("--demo", options->demo, "Llenarla con datos de ejemplo");
  cmd->add_option("--size", options->size,
                  "Número de inmuebles propios de los datos de ejemplo (por omisión 2000); "
                  "ajenos, archivados y vendidos son la cuarta parte, demandas la mitad")
      ->check(CLI::NonNegativeNumber)
      ->needs(demo);
  cmd->callback([options] { g_status = cp::cli::InitDb(*options, std::cout, std::cerr); });
}

void AddTranslate(CLI::App& app) {
  auto options = std::make_shared<cp::cli::TranslateOptions>();
  CLI::App* cmd = app.add_subcommand(
      "translate",
      "Muestra la traducción de una instrucción SQL de Jet al SQL del motor indicado. Un "
      "error de traducción sale por la salida de errores como «Error N: mensaje» (estado 2).");
  const std::map<std::string, cp::jetsql::Dialect> dialects = {
      {"sqlite", cp::jetsql::Dialect::Sqlite}, {"postgres", cp::jetsql::Dialect::Postgres}};
  cmd->add_option("--dialect", options->dialect, "Motor de destino: sqlite o postgres")
      ->required()
      ->transform(CLI::CheckedTransformer(dialects, CLI::ignore_case));
  cmd->add_flag("--condition", options->condition,
                "El texto es una condición suelta (sin SELECT ni WHERE)");
  cmd->add_option("SQL", options->sql, "Instrucción SELECT de Jet")->required();
  cmd->callback([options] { g_status = cp::cli::Translate(*options, std::cout, std::cerr); });
}

void AddSql(CLI::App& app) {
  auto options = std::make_shared<cp::cli::SqlOptions>();
  CLI::App* cmd = app.add_subcommand(
      "sql",
      "Ejecuta una instrucción SELECT de Jet a través de la API tipo DAO y muestra las filas: "
      "una línea de cabecera con los nombres de columna y una línea por fila, valores "
      "separados por tabulador. Nulo = campo vacío; enteros tal cual; decimales con punto "
      "(1234.5); fechas ISO (aaaa-mm-dd, o aaaa-mm-dd hh:mm:ss si tienen hora); Sí/No como "
      "1/0; dentro del texto, tabulador, salto de línea, retorno y barra invertida se escriben "
      "\\t, \\n, \\r y \\\\. Con --json, un array de objetos (nulo como null, Sí/No como "
      "true/false). Un error (tabla o columna desconocida...) sale por la salida de errores "
      "como «Error N: mensaje» con el número de DAO (estado 2).");
  cmd->add_option("--db", options->db, "Fichero de la base de datos")->required();
  cmd->add_flag("--json", options->json, "Filas como array JSON de objetos");
  cmd->add_option("STATEMENT", options->statement, "Instrucción SELECT de Jet")->required();
  cmd->callback([options] { g_status = cp::cli::Sql(*options, std::cout, std::cerr); });
}

void AddWhereOptions(CLI::App* cmd, const std::shared_ptr<cp::cli::WhereOptions>& options) {
  cmd->add_option("--db", options->db, "Fichero de la base de datos")->required();
  cmd->add_option("--entity", options->entity,
                  "Entidad (\"Clientes\", \"Inm. Propios\", \"Demandas\"...); vacía: la "
                  "primera de la lista")
      ->required();
  cmd->add_option("--possible", options->possible,
                  "Entidades posibles, en orden (repetible): sustituyen a la lista por omisión");
  cmd->add_option("--user", options->user, "Usuario actual (gVUser)");
  cmd->add_option("--restore", options->restore,
                  "Fichero JSON con una selección guardada: un array de [Nombre, Indice, Valor] "
                  "o la salida de --json");
  cmd->add_option("--set", options->sets,
                  "NOMBRE=VALOR o NOMBRE(I)=VALOR, en orden (repetible): un cuadro de texto "
                  "recibe el texto tecleado y se abandona; una casilla 0, 1 o 2; una lista el "
                  "elemento con ese texto; una fecha aaaa-mm-dd, o vacío para desmarcarla");
  cmd->add_flag("--json", options->json,
                "Salida {\"entidad\", \"sqlw\", \"seleccion\"} en JSON");
}

void AddCrossOptions(CLI::App* cmd, const std::shared_ptr<cp::cli::CrossOptions>& options) {
  cmd->add_option("--db", options->db, "Fichero de la base de datos")->required();
  cmd->add_option("--id", options->id, "Identificador del registro de origen")->required();
  cmd->add_option("--to", options->to, "Entidad en la que se selecciona")->required();
  cmd->add_option("--from", options->from, "Entidad del registro de origen")->required();
  cmd->add_flag("--json", options->json,
                "Salida {\"entidad\", \"sqlw\", \"seleccion\"} en JSON");
}

void AddWhere(CLI::App& app) {
  auto options = std::make_shared<cp::cli::WhereOptions>();
  CLI::App* cmd = app.add_subcommand(
      "where",
      "Abre la selección como lo haría la aplicación, aplica cada --set al control que muestra "
      "el diálogo, pulsa Aceptar e imprime la condición (SQLW) en una línea. Sin control para "
      "la entidad, Aceptar no hace nada (estado 2).");
  AddWhereOptions(cmd, options);
  cmd->callback([options] { g_status = cp::cli::Where(*options, std::cout, std::cerr); });
}

void AddCross(CLI::App& app) {
  auto options = std::make_shared<cp::cli::CrossOptions>();
  CLI::App* cmd = app.add_subcommand(
      "cross", "Cruza un registro (Cruzar) e imprime la condición resultante.");
  AddCrossOptions(cmd, options);
  cmd->callback([options] { g_status = cp::cli::Cross(*options, std::cout, std::cerr); });
}

void AddQuery(CLI::App& app) {
  CLI::App* query = app.add_subcommand(
      "query",
      "Como where o cross, y además ejecuta la consulta de la aplicación e imprime sus filas "
      "(como sql); con --json, un solo objeto con \"filas\".");
  query->require_subcommand(1);
  auto where = std::make_shared<cp::cli::WhereOptions>();
  CLI::App* w = query->add_subcommand("where", "where, y las filas que cumplen la condición");
  AddWhereOptions(w, where);
  w->callback([where] {
    where->query = true;
    g_status = cp::cli::Where(*where, std::cout, std::cerr);
  });
  auto cross = std::make_shared<cp::cli::CrossOptions>();
  CLI::App* c = query->add_subcommand("cross", "cross, y las filas que cumplen la condición");
  AddCrossOptions(c, cross);
  c->callback([cross] {
    cross->query = true;
    g_status = cp::cli::Cross(*cross, std::cout, std::cerr);
  });
}

void AddMatch(CLI::App& app) {
  auto options = std::make_shared<cp::cli::MatchOptions>();
  CLI::App* cmd = app.add_subcommand(
      "match",
      "Cruza cada demanda (o cada inmueble propio o ajeno) de la base de datos, como Cruzar, "
      "e imprime por registro de origen cuántos registros coinciden: una cabecera y una línea "
      "\"id<TAB>coincidencias\" por registro. Con la salida de errores en un terminal muestra "
      "una barra de progreso.");
  cmd->add_option("--db", options->db, "Fichero de la base de datos")->required();
  cmd->add_option("--from", options->from,
                  "Entidad de origen: Demandas (por omisión), \"Inm. Propios\" o \"Inm. Ajenos\"");
  cmd->add_option("--to", options->to,
                  "Entidad de destino (por omisión: \"Inm. Propios\" para demandas, Demandas "
                  "para inmuebles)");
  cmd->add_option("--limit", options->limit, "Cruzar solo los N primeros registros")
      ->check(CLI::NonNegativeNumber);
  cmd->add_flag("--json", options->json, "Array JSON de {\"id\", \"coincidencias\"}");
  // hardware_concurrency may not know (0): then one process.
  options->jobs = std::max(1, static_cast<int>(std::thread::hardware_concurrency()));
  cmd->add_option("--jobs", options->jobs,
                  "Procesos que cruzan a la vez (por omisión, uno por núcleo)")
      ->check(CLI::PositiveNumber);
  cmd->callback([options] {
    const bool terminal = isatty(STDERR_FILENO) != 0;
    g_status = cp::cli::Match(*options, std::cout, std::cerr,
                              terminal ? cp::cli::TerminalProgressBar(std::cerr)
                                       : cp::cli::MatchProgress());
  });
}

void AddImport(CLI::App& app) {
  auto options = std::make_shared<cp::cli::ImportOptions>();
  CLI::App* cmd = app.add_subcommand(
      "import",
      "Importa una base de datos de Access (.mdb) en una base de datos nueva (fichero SQLite o "
      "base de datos de un servidor PostgreSQL), toda o nada: las tablas del esquema y también "
      "las tablas y columnas que el esquema no conoce, tal cual. Con la salida de errores en "
      "un terminal muestra una barra de progreso por tabla; al final, las filas de cada tabla. "
      "Un fichero que no es de Access, incompleto o de una versión que no se puede leer da un "
      "mensaje y estado 2, sin crear nada.");
  cmd->add_option("--mdb", options->mdb, "Fichero de Access (.mdb) que se importa")->required();
  cmd->add_option("--db", options->db,
                  "Base de datos que se crea: fichero SQLite o conexión postgresql://...")
      ->required();
  cmd->add_flag("--replace", options->replace, "Sustituir la base de datos si ya existe");
  cmd->add_flag("--check", options->check,
                "Después, comparar filas y sumas de comprobación de cada tabla con el fichero "
                "de Access (estado 2 si hay diferencias)");
  cmd->callback([options] {
    const bool terminal = isatty(STDERR_FILENO) != 0;
    g_status = cp::cli::Import(*options, std::cout, std::cerr,
                               terminal ? cp::cli::ImportProgressBar(std::cerr)
                                        : cp::sample::ImportProgress());
  });
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App app(
      "criteriopredios: criterios de selección de clientes, inmuebles y demandas sobre una "
      "base de datos de agencia. Estado de salida: 0 si el trabajo se hizo, 2 con argumentos "
      "incorrectos o un error.");
  app.require_subcommand(1);
  AddInitDb(app);
  AddTranslate(app);
  AddSql(app);
  AddWhere(app);
  AddCross(app);
  AddQuery(app);
  AddMatch(app);
  AddImport(app);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& e) {
    // --help is a "successful" parse error: CLI11 prints it and returns 0.
    const int code = app.exit(e);
    return code == 0 ? 0 : kExitError;
  }
  return g_status;
}
