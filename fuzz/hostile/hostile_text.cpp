// The generator of hostile cases and their C++ description.
#include "fuzz/hostile/hostile_text.h"

#include <algorithm>
#include <cstdio>

#include "common/entity_catalogue.h"
#include "contacts/seleccion_cli.h"
#include "platform/form/control.h"
#include "properties/seleccion_inm.h"

namespace cp::hostile {
namespace {

using Rng = std::mt19937_64;

std::size_t Below(Rng& rng, std::size_t n) {
  return std::uniform_int_distribution<std::size_t>(0, n - 1)(rng);
}
bool Chance(Rng& rng, double p) { return std::bernoulli_distribution(p)(rng); }

template <class T>
const T& Pick(Rng& rng, const std::vector<T>& from) {
  return from[Below(rng, from.size())];
}

const std::vector<std::string> kPunctuation = {
    "'", "'", "''", "\"", "|", "|", "[", "]", "*", "?", "#", "%", "_", "--", ";", "; ", "/*",
    "*/", "\\", "(", ")", ",", ".", "=", "<>", "&", "+", "!", "^", ":", "@", "$", "`", "{",
    "}", "~", " ", "   "};
// Wildcard classes over letters and digits only: a range over punctuation would match a
// quote in one database and not its mark in the twin.
const std::vector<std::string> kPatterns = {"[a-z]", "[!0-9]", "[]", "[*]", "[?]", "[#]",
                                            "[[]", "[]]", "[!a-m]", "*a*", "?", "#"};
const std::vector<std::string> kControls = {"\t", "\r", "\n", "\r\n", "\x01", "\x1f", "\x7f",
                                            std::string(1, '\0')};
const std::vector<std::string> kUnicode = {
    "á", "É", "ñ", "Ñ", "ü", "ç", "ß", "İ", "e\xcc\x81" /* e + combining acute */,
    "\xef\xbc\x87" /* fullwidth ' */, "\xef\xbc\x82" /* fullwidth " */, "\xe2\x80\x98", "\xe2\x80\x99",
    "\xe2\x80\x9c", "\xe2\x80\x9d", "\xf0\x9f\x98\x80" /* emoji */, "\xd7\xa9\xd7\x9c\xd7\x95\xd7\x9d",
    "\xd9\x85\xd8\xb1\xd8\xad\xd8\xa8\xd8\xa7", "\xe2\x80\xae" /* right-to-left override */,
    "\xc2\xa0" /* no-break space */, "\xe2\x80\x8d", "\xef\xbb\xbf", "\xe2\x80\xa8", "€"};
const std::vector<std::string> kWords = {
    "garcia", "Madrid", "OR", "AND", "NOT", "LIKE", "NULL", "TRUE", "SELECT", "FROM", "WHERE",
    "DROP TABLE Cliente", "chr(39)", "chr(124)", "IsNull(", "Cliente.Alias", "IdCliente",
    "1=1", "x", "zq", "Piso", "Vip"};
const std::vector<std::string> kPayloads = {
    "' OR '1'='1", "') OR (1=1", "' OR ''='", "\" OR \"\"=\"", "'; DROP TABLE Cliente; --",
    "' + chr(39) + '", "x' OR Cliente.Alias LIKE '*", "'|'", "||", "' & '", "#01/01/2024#",
    "' --", "/* */", "]; DROP", "' OR IdCliente IN (SELECT IdCliente FROM Cliente) OR '",
    "[Cliente]", "\\'", "'' OR 1=1 OR ''", "|' OR 1=1 OR '|"};
const std::vector<std::string> kNumbers = {
    "1.000", "2,5", "-3", "1e3", "1E+308", "&H1F", "&O17", "$5", "5%", " 7 ", "0x10",
    "1.000.000,5", "99999999999999999999", "-0", "+4", "1d2", ".5", "5.", "(5)", "5-",
    "1,2,3", "\xd9\xa1\xd9\xa2" /* Arabic-Indic digits */, "\xef\xbc\x95" /* fullwidth 5 */,
    "Infinity", "NaN", "0", "2147483648", "-2147483649", "1.5e-7", "3 000", "1\xc2\xa0" "000"};
const std::vector<std::string> kDates = {
    "2024-02-30", "31/12/99", "12/31/1999", "#01/02/03#", "2024-13-01", "0000-00-00",
    "29/02/2023", "1/1/1", "2024-03-01 25:00", "hoy", "9999-12-31", "1899-12-30",
    "2024-02-29", "10000-01-01", "-2024-01-01", "2024/01/01", "1 de enero de 2024"};
// Values for the saved rows of inputs that are not text boxes.
const std::vector<std::string> kOddValues = {
    "", "0", "1", "2", "-1", "3", "4", "99999", "1,5", "abc", "2024-02-29", "29/02/2024",
    "9999-12-31", "0000-00-00", "#01/02/03#", "Al principio", "Notas", "Nº Teléfono",
    "Propietario", "Igual", "Mayor o Igual"};

// An input of a criteria control: its name, index and kind.
struct Input {
  std::string name;
  int index;
  std::string type;
};

std::vector<Input> InputsOf(const SelectionControl& control) {
  std::vector<Input> inputs;
  for (const form::Control* c : control.Controls().Controls()) {
    const std::string type = c->TypeName();
    if (type == "TextBox" || type == "ComboBox" || type == "CheckBox" || type == "DTPicker" ||
        type == "SSTab")
      inputs.push_back({c->Name(), c->Index(), type});
  }
  return inputs;
}

const std::vector<Input>& ContactInputs() {
  static const std::vector<Input> inputs = InputsOf(SeleccionCli());
  return inputs;
}
const std::vector<Input>& PropertyInputs() {
  static const std::vector<Input> inputs = InputsOf(SeleccionInm());
  return inputs;
}

// A C++ string literal for text: octal escapes for control and non-ASCII bytes (they end
// after three digits, so a following digit stays plain).
std::string CppString(const std::string& text) {
  std::string out = "\"";
  for (unsigned char ch : text) {
    if (ch == '"' || ch == '\\') {
      out += '\\';
      out += static_cast<char>(ch);
    } else if (ch < 0x20 || ch >= 0x7f) {
      char buffer[8];
      std::snprintf(buffer, sizeof buffer, "\\%03o", ch);
      out += buffer;
    } else {
      out += static_cast<char>(ch);
    }
  }
  return out + "\"";
}

std::string Entries(const std::vector<UserEntry>& entries) {
  std::string out = "{";
  for (std::size_t i = 0; i < entries.size(); ++i) {
    out += (i ? ",\n     {" : "{") + CppString(entries[i].name) + ", " +
           std::to_string(entries[i].index) + ", " + CppString(entries[i].value) + "}";
  }
  return out + "}";
}

}  // namespace

std::string Describe(const HostileCase& c) {
  return "{" + CppString(c.entity) + ", " + (c.restore ? "true" : "false") + ",\n    " +
         Entries(c.saved) + ",\n    " + std::to_string(c.searchField) + ", " +
         std::to_string(c.searchMode) + ", " + Entries(c.checks) + ",\n    " + Entries(c.typed) +
         "}";
}

Generator::Generator(std::vector<std::string> dbTexts) : dbTexts_(std::move(dbTexts)) {
  if (dbTexts_.empty()) dbTexts_.push_back("Madrid");
}

std::string Generator::Text(Rng& rng) {
  const auto fragment = [&]() -> std::string {
    switch (Below(rng, 10)) {
      case 0: case 1: return Pick(rng, kPunctuation);
      case 2: return Pick(rng, kPatterns);
      case 3: return Pick(rng, kControls);
      case 4: return Pick(rng, kUnicode);
      case 5: return Pick(rng, kWords);
      case 6: return Pick(rng, kPayloads);
      case 7: return Pick(rng, kNumbers);
      case 8: return Pick(rng, kDates);
      default: return Pick(rng, dbTexts_);
    }
  };
  // A whole number, date or name alone, as a user mostly types them.
  if (Chance(rng, 0.25)) {
    switch (Below(rng, 3)) {
      case 0: return Pick(rng, kNumbers);
      case 1: return Pick(rng, kDates);
      default: return Pick(rng, dbTexts_);
    }
  }
  std::string text;
  const std::size_t parts = 1 + Below(rng, 6);
  for (std::size_t i = 0; i < parts; ++i) {
    if (i && Chance(rng, 0.3)) text += Chance(rng, 0.5) ? "; " : " ";
    text += fragment();
  }
  if (Chance(rng, 0.03)) {  // a long text: the same again up to a few thousand bytes
    const std::size_t length = 200 + Below(rng, 4000);
    const std::string unit = text.empty() ? "x" : text;
    while (text.size() < length) text += unit;
  }
  return text;
}

HostileCase Generator::Next(Rng& rng) {
  HostileCase c;
  const auto catalogue = EntityCatalogue();
  const EntityInfo& entity = catalogue[Below(rng, catalogue.size())];
  c.entity = entity.name;
  const std::vector<Input>& inputs =
      entity.control == CriteriaControlKind::Contacts ? ContactInputs() : PropertyInputs();

  if (Chance(rng, 0.3)) {
    c.restore = true;
    for (const Input& input : inputs) {
      if (!Chance(rng, input.type == "SSTab" ? 0.5 : 0.25)) continue;
      const bool text = input.type == "TextBox" || Chance(rng, 0.2);
      c.saved.push_back({input.name, input.index, text ? Text(rng) : Pick(rng, kOddValues)});
    }
  }
  if (Chance(rng, 0.8)) c.searchField = static_cast<int>(Below(rng, 16));
  if (Chance(rng, 0.8)) c.searchMode = static_cast<int>(Below(rng, 4));
  for (const Input& input : inputs) {
    if (input.type == "CheckBox" && Chance(rng, 0.3))
      c.checks.push_back({input.name, input.index, std::to_string(Below(rng, 3))});
  }
  std::vector<const Input*> boxes;
  for (const Input& input : inputs)
    if (input.type == "TextBox") boxes.push_back(&input);
  std::shuffle(boxes.begin(), boxes.end(), rng);
  boxes.resize(1 + Below(rng, std::min<std::size_t>(boxes.size(), 6)));
  for (const Input* box : boxes) c.typed.push_back({box->name, box->index, Text(rng)});
  return c;
}

HostileCase CaseOf(std::uint64_t seed, int n, Generator& generator) {
  std::seed_seq seq{static_cast<std::uint32_t>(seed), static_cast<std::uint32_t>(seed >> 32),
                    static_cast<std::uint32_t>(n)};
  Rng rng(seq);
  return generator.Next(rng);
}

}  // namespace cp::hostile
