// Runs hostile cases through the dialog and checks what comes out.
#include <sqlite3.h>
#include <stdlib.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <optional>
#include <ostream>
#include <set>
#include <sstream>

#include "common/entity_catalogue.h"
#include "common/error_handler.h"
#include "common/error_log.h"
#include "common/messenger.h"
#include "common/scripted_list_picker.h"
#include "common/scripted_messenger.h"
#include "common/shared_state.h"
#include "fuzz/hostile/hostile_text.h"
#include "platform/core/clock.h"
#include "platform/core/conversions.h"
#include "platform/core/error.h"
#include "platform/dao/connect.h"
#include "platform/form/combo_box.h"
#include "platform/form/command_button.h"
#include "platform/jetsql/lexer.h"
#include "platform/jetsql/literals.h"
#include "platform/jetsql/parser.h"
#include "sample/host_query.h"
#include "sample/sample_database.h"
#include "selection/c_seleccion.h"
#include "selection/modal_runner.h"

namespace cp::hostile {
namespace {

using jetsql::Token;

// What the twin puts where the case has a quote or a "|": one mark for each, so that the twin
// finds in its database what the case finds in its own. Never typed, never stored.
constexpr const char* kQuoteMark = "\xc2\xa7";        // § for '
constexpr const char* kDoubleQuoteMark = "\xc2\xa4";  // ¤ for "
constexpr const char* kBarMark = "\xc2\xa6";          // ¦ for |

std::string Twin(const std::string& text) {
  std::string out;
  for (char ch : text) {
    if (ch == '\'')
      out += kQuoteMark;
    else if (ch == '"')
      out += kDoubleQuoteMark;
    else if (ch == '|')
      out += kBarMark;
    else
      out += ch;
  }
  return out;
}
bool HasTwinMark(const std::string& text) {
  for (const char* mark : {kQuoteMark, kDoubleQuoteMark, kBarMark})
    if (text.find(mark) != std::string::npos) return true;
  return false;
}
bool NeedsTwin(const std::string& text) { return text.find_first_of("'\"|") != std::string::npos; }

std::string Upper(std::string text) {
  for (char& ch : text) ch = static_cast<char>(std::toupper(static_cast<unsigned char>(ch)));
  return text;
}

// Words and symbols the component writes around its literals.
const std::set<std::string> kKeywords = {"AND",  "OR",    "NOT",    "LIKE",  "IN",    "BETWEEN",
                                         "IS",   "NULL",  "TRUE",   "FALSE", "SELECT", "FROM",
                                         "WHERE", "ISNULL", "CHR"};
const std::set<std::string> kSymbols = {"=", "<>", "<", ">", "<=", ">=", "(", ")", ",", ".", "+", "-"};

// Error numbers that mean the SQL itself was malformed or named something that is not there:
// what text escaping its literal produces.
const std::set<long> kStructureErrors = {3061, 3070, 3075, 3077, 3078, 3079, 3085, 3142, 3296};

// The shape of a condition: its tokens, with each string literal (and each chain of literals
// joined by "+ chr(n) +", which is how a "|" is written) as one token holding its value.
std::vector<std::pair<Token::Kind, std::string>> Shape(const std::vector<Token>& tokens) {
  std::vector<std::pair<Token::Kind, std::string>> shape;
  const auto is = [&](std::size_t i, Token::Kind kind, const char* text) {
    return i < tokens.size() && tokens[i].kind == kind && (!text || Upper(tokens[i].text) == text);
  };
  for (std::size_t i = 0; i < tokens.size(); ++i) {
    if (tokens[i].kind != Token::Kind::String) {
      shape.emplace_back(tokens[i].kind, tokens[i].text);
      continue;
    }
    std::string value = tokens[i].text;
    // + chr ( n ) + 'text'
    while (is(i + 1, Token::Kind::Symbol, "+") && is(i + 2, Token::Kind::Word, "CHR") &&
           is(i + 3, Token::Kind::Symbol, "(") && is(i + 4, Token::Kind::Number, nullptr) &&
           is(i + 5, Token::Kind::Symbol, ")") && is(i + 6, Token::Kind::Symbol, "+") &&
           is(i + 7, Token::Kind::String, nullptr)) {
      const auto chr = jetsql::ChrText(std::atol(tokens[i + 4].text.c_str()));
      if (!chr) break;
      value += *chr + tokens[i + 7].text;
      i += 7;
    }
    shape.emplace_back(Token::Kind::String, value);
  }
  return shape;
}

// C++-style escaped text for a message.
std::string Shown(const std::string& text) {
  std::string out;
  for (unsigned char ch : text) {
    if (ch == '\\') {
      out += "\\\\";
    } else if (ch < 0x20 || ch == 0x7f) {
      char buffer[8];
      std::snprintf(buffer, sizeof buffer, "\\x%02x", ch);
      out += buffer;
    } else {
      out += static_cast<char>(ch);
    }
  }
  return out;
}

// What one run of a case gave.
struct Outcome {
  std::string condition;
  std::vector<std::string> problems;
  bool hostError = false;
};

// A scratch file closed and removed with the checker.
struct ScratchFolder {
  ScratchFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "cp_hostile_XXXXXX").string();
    if (!mkdtemp(pattern.data())) throw Error(err::kPathNotFound, "mkdtemp");
    path = pattern;
  }
  ~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
  }
  std::string File(const std::string& name) const { return (path / name).string(); }
  std::filesystem::path path;
};

// Runs statements on a file with plain SQLite (none of our functions).
class RawFile {
 public:
  explicit RawFile(const std::string& path) {
    if (sqlite3_open(path.c_str(), &db_) != SQLITE_OK) throw Error(err::kFileNotFound, path);
  }
  ~RawFile() { sqlite3_close(db_); }
  std::vector<std::string> Column(const std::string& sql) {
    std::vector<std::string> values;
    sqlite3_stmt* stmt = nullptr;
    if (sqlite3_prepare_v2(db_, sql.c_str(), -1, &stmt, nullptr) != SQLITE_OK)
      throw Error(err::kInvalidProcedureCall, sqlite3_errmsg(db_));
    while (sqlite3_step(stmt) == SQLITE_ROW) {
      const auto* text = sqlite3_column_text(stmt, 0);
      if (text)
        values.emplace_back(reinterpret_cast<const char*>(text),
                            static_cast<std::size_t>(sqlite3_column_bytes(stmt, 0)));
    }
    sqlite3_finalize(stmt);
    return values;
  }
  void Exec(const std::string& sql) {
    if (sqlite3_exec(db_, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
      throw Error(err::kInvalidProcedureCall, sqlite3_errmsg(db_));
  }

 private:
  sqlite3* db_ = nullptr;
};

std::string Quoted(const std::string& name) { return "\"" + name + "\""; }

}  // namespace

struct Checker::Impl {
  ScratchFolder folder;
  std::string path = folder.File("agencia.db");
  std::string twinPath = folder.File("agencia-gemela.db");
  std::shared_ptr<dao::Database> db, twinDb;
  std::set<std::string> names;  // tables and columns of the schema, in capitals
  std::vector<std::string> texts;

  Impl() {
    sample::CreateSampleDatabase(path, sample::DemoOptions{40});
    std::filesystem::copy_file(path, twinPath);
    RawFile raw(path);
    RawFile twin(twinPath);
    for (const std::string& table :
         raw.Column("SELECT name FROM sqlite_master WHERE type = 'table'")) {
      names.insert(Upper(table));
      const auto columns = raw.Column("SELECT name FROM pragma_table_info('" + table + "')");
      const bool small =
          raw.Column("SELECT count(*) < 200 FROM " + Quoted(table)).front() == "1";
      for (const std::string& column : columns) {
        names.insert(Upper(column));
        // The twin stores its marks where the file has a quote or a "|", as its cases type them.
        twin.Exec("UPDATE " + Quoted(table) + " SET " + Quoted(column) + " = replace(replace(replace(" +
                  Quoted(column) + ", '''', '§'), '\"', '¤'), '|', '¦') WHERE " + Quoted(column) +
                  " GLOB '*[''\"|]*'");
        if (!small) continue;
        for (std::string& text : raw.Column("SELECT DISTINCT " + Quoted(column) + " FROM " +
                                            Quoted(table) + " WHERE typeof(" + Quoted(column) +
                                            ") = 'text' LIMIT 20"))
          if (!HasTwinMark(text)) texts.push_back(std::move(text));
      }
    }
    db = dao::OpenDatabase(path);
    twinDb = dao::OpenDatabase(twinPath);
  }

  Outcome Run(const HostileCase& c, bool twin);
  void CheckTokens(const std::string& condition, std::vector<std::string>& problems) const;
};

Outcome Checker::Impl::Run(const HostileCase& c, bool twin) {
  Outcome out;
  const auto value = [&](const std::string& text) { return twin ? Twin(text) : text; };
  auto messenger = std::make_shared<ScriptedMessenger>();
  ScopedMessenger messages(messenger);
  ProcessSlot<std::shared_ptr<dao::Database>>::Scoped database(DatabaseSlot(), twin ? twinDb : db);
  ProcessSlot<std::string>::Scoped pathDb(PathDBSlot(), twin ? twinPath : path);
  ScriptedListPickerRegistration picker{ListPickerAnswer::Cancel()};
  const std::string logFolder = ErrLogPath();
  setErrLogPath(folder.path.string());
  SetFixedNow(MakeDate(2026, 11, 15, 10, 30, 0));

  // The dialog offers some of the contact entities; the others are served by the same
  // control pointed at their table.
  const EntityInfo* entity = FindEntity(c.entity);
  const bool inDialog = c.entity != "Abogados" && c.entity != "Clientes Contrarios" &&
                        c.entity != "Procuradores" && c.entity != "Clientes Contrarios Archivados";
  try {
    CSeleccion sel;
    sel.setEntidad(inDialog ? c.entity : "Clientes");
    if (c.restore) {
      Array2D saved(0, static_cast<int>(c.saved.size()) - 1, 0, 2);
      for (std::size_t i = 0; i < c.saved.size(); ++i) {
        saved.at(static_cast<int>(i), 0) = Variant(c.saved[i].name);
        saved.at(static_cast<int>(i), 1) = Variant(static_cast<std::int16_t>(c.saved[i].index));
        saved.at(static_cast<int>(i), 2) = Variant(value(c.saved[i].value));
      }
      sel.setSeleccion(c.saved.empty() ? Variant() : Variant(std::move(saved)));
    }
    std::ostringstream warnings;
    ScopedModalRunner runner(std::make_shared<ScriptedModalRunner>([&](frmSeleccion& dlg) {
      SelectionControl& control =
          entity->control == CriteriaControlKind::Contacts
              ? static_cast<SelectionControl&>(dlg.SeleccionCli1())
              : static_cast<SelectionControl&>(dlg.SeleccionInm1());
      if (!inDialog) dlg.SeleccionCli1().setSelecEn(c.entity);
      form::ControlContainer& controls = control.Controls();
      for (auto [name, row] : {std::pair{"cboEn", c.searchField}, {"cboOpPalabras", c.searchMode}}) {
        auto& combo = controls.Get<form::ComboBox>(name);
        if (row >= 0 && combo.ListCount() > 0) combo.setListIndex(row % combo.ListCount());
      }
      for (const UserEntry& entry : c.checks) EnterUserEntry(controls, entry, warnings);
      for (const UserEntry& entry : c.typed) {
        try {
          EnterUserEntry(controls, {entry.name, entry.index, value(entry.value)}, warnings);
        } catch (const Error&) {
          // A hidden or disabled box cannot take the focus, so no user types into it.
          const form::Control& box = controls.Item(entry.name, entry.index);
          if (box.EffectivelyVisible() && box.EffectivelyEnabled()) throw;
        }
      }
      if (inDialog) {
        dlg.Controls().Get<form::CommandButton>("cmdAceptar").Press();
      } else {
        // Under the trap that Aceptar gives it in the dialog.
        Atrapar("cmdAceptar_Click en frmSeleccion", [&] { out.condition = control.SelecWhere(); });
        dlg.Controls().Get<form::CommandButton>("cmdCancelar").Press();
      }
    }));
    sel.mtdMostrar();
    if (inDialog) out.condition = sel.SQLW();
  } catch (const Error& e) {
    out.problems.push_back("the dialog raised " + std::to_string(e.number()) + ": " + e.description());
  } catch (const std::exception& e) {
    out.problems.push_back(std::string("an exception reached the host: ") + e.what());
  }
  SetFixedNow(std::nullopt);
  setErrLogPath(logFolder);
  std::filesystem::remove(ErrorLogFile(folder.File(kErrorLogName)));

  for (const auto& box : messenger->shown()) {
    const auto at = box.text.find("Número del error: ");
    if (at == std::string::npos) continue;
    const long number = std::atol(box.text.c_str() + at + 19);
    if (kStructureErrors.count(number))
      out.problems.push_back("a message box reported error " + std::to_string(number) + ": " +
                             Shown(box.text));
  }

  const std::string query = sample::HostQuery(c.entity, out.condition);
  try {
    if (!out.condition.empty()) jetsql::ParseCondition(out.condition);
    jetsql::ParseStatement(query);
  } catch (const Error& e) {
    out.problems.push_back("our Jet parser refused it: " + std::to_string(e.number()) + " " +
                           e.description());
  }
  try {
    dao::Recordset rs = (twin ? twinDb : db)->OpenRecordset(query, dao::dbOpenForwardOnly);
    while (!rs.Eof()) rs.MoveNext();
  } catch (const Error& e) {
    if (kStructureErrors.count(e.number()))
      out.problems.push_back("the host query raised " + std::to_string(e.number()) + ": " +
                             e.description());
    else
      out.hostError = true;
  }
  CheckTokens(out.condition, out.problems);
  return out;
}

void Checker::Impl::CheckTokens(const std::string& condition,
                                std::vector<std::string>& problems) const {
  for (const Token& t : jetsql::Tokenize(condition)) {
    switch (t.kind) {
      case Token::Kind::String:
      case Token::Kind::Number:
      case Token::Kind::Date:
      case Token::Kind::End:
        break;
      case Token::Kind::Word:
        if (!kKeywords.count(Upper(t.text)) && !names.count(Upper(t.text)))
          problems.push_back("word outside a literal: " + Shown(t.text));
        break;
      case Token::Kind::Bracketed:
        if (!names.count(Upper(t.text)))
          problems.push_back("bracketed name outside the schema: [" + Shown(t.text) + "]");
        break;
      case Token::Kind::Symbol:
        if (!kSymbols.count(t.text)) problems.push_back("symbol outside a literal: " + Shown(t.text));
        break;
      case Token::Kind::Invalid:
        problems.push_back("invalid token: " + Shown(t.text.substr(0, 80)));
        break;
    }
    if (problems.size() > 3) return;
  }
}

Checker::Checker() : impl_(std::make_unique<Impl>()) {}
Checker::~Checker() = default;

const std::vector<std::string>& Checker::DatabaseTexts() const { return impl_->texts; }

Verdict Checker::Check(const HostileCase& c) {
  Verdict v;
  Outcome out = impl_->Run(c, false);
  v.condition = out.condition;
  v.hostError = out.hostError;
  if (out.problems.empty()) {
    bool twin = false;
    for (const auto* entries : {&c.saved, &c.typed})
      for (const UserEntry& e : *entries) twin = twin || NeedsTwin(e.value);
    if (twin) {
      v.twinCompared = true;
      Outcome twinOut = impl_->Run(c, true);
      if (!twinOut.problems.empty()) {
        out.problems.push_back("its twin: " + twinOut.problems.front() + "\n  twin condition: " +
                               Shown(twinOut.condition));
      } else {
        auto shape = Shape(jetsql::Tokenize(out.condition));
        for (auto& [kind, text] : shape)
          if (kind == Token::Kind::String) text = Twin(text);
        const auto twinShape = Shape(jetsql::Tokenize(twinOut.condition));
        if (shape != twinShape) {
          std::size_t i = 0;
          while (i < shape.size() && i < twinShape.size() && shape[i] == twinShape[i]) ++i;
          out.problems.push_back(
              "not the shape of its twin (with § ¤ ¦ for ' \" |) from token " + std::to_string(i) +
              ": " + (i < shape.size() ? Shown(shape[i].second) : "<end>") + " against " +
              (i < twinShape.size() ? Shown(twinShape[i].second) : "<end>") +
              "\n  twin condition: " + Shown(twinOut.condition));
        }
      }
    }
  }
  if (!out.problems.empty()) {
    v.ok = false;
    v.problem = out.problems.front();
  }
  return v;
}

RunSummary RunCases(std::uint64_t seed, int first, int count, std::ostream& out, int maxFailures) {
  RunSummary summary;
  Checker checker;
  Generator generator(checker.DatabaseTexts());
  for (int n = first; n < first + count; ++n) {
    const HostileCase c = CaseOf(seed, n, generator);
    const Verdict v = checker.Check(c);
    ++summary.cases;
    if (!v.condition.empty()) ++summary.conditions;
    if (v.twinCompared) ++summary.twins;
    if (v.hostError) ++summary.hostErrors;
    if (v.ok) continue;
    ++summary.failures;
    out << "Hostile text: case " << n << " of seed " << seed << " failed: " << v.problem << "\n"
        << "  again: CP_HOSTILE_SEED=" << seed << " CP_HOSTILE_FIRST=" << n
        << " CP_HOSTILE_CASES=1\n"
        << "  case: " << Describe(c) << "\n"
        << "  condition: " << Shown(v.condition) << "\n";
    if (summary.failures >= maxFailures) break;
  }
  return summary;
}

}  // namespace cp::hostile
