#include "cli/commands.h"

#include <charconv>
#include <cstdio>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <optional>
#include <ostream>

#include "platform/core/date.h"
#include "platform/core/error.h"
#include "platform/dao/connect.h"
#include "platform/dao/database.h"
#include "platform/postgres/session.h"
#include "sample/sample_database.h"

namespace cp::cli {
namespace {

std::string FormatDouble(double value) {
  char buf[64];
  const auto result = std::to_chars(buf, buf + sizeof buf, value);
  return std::string(buf, result.ptr);
}

std::string FormatDate(Date value) {
  const DateParts p = SplitDate(value);
  return IsoText(p, p.hour != 0 || p.minute != 0 || p.second != 0);
}

// One value as a tab-separated field.
std::string FieldText(const Variant& v) {
  switch (v.type()) {
    case Variant::Type::Empty:
    case Variant::Type::Null:
      return {};
    case Variant::Type::Boolean:
      return v.AsBool() ? "1" : "0";
    case Variant::Type::Integer:
      return std::to_string(v.AsInteger());
    case Variant::Type::Long:
      return std::to_string(v.AsLong());
    case Variant::Type::Double:
      return FormatDouble(v.AsDouble());
    case Variant::Type::Date:
      return FormatDate(v.AsDate());
    case Variant::Type::String: {
      std::string out;
      for (char c : v.AsString()) {
        switch (c) {
          case '\t':
            out += "\\t";
            break;
          case '\n':
            out += "\\n";
            break;
          case '\r':
            out += "\\r";
            break;
          case '\\':
            out += "\\\\";
            break;
          default:
            out += c;
        }
      }
      return out;
    }
    default:
      return v.TypeName();  // arrays and objects never come out of a recordset
  }
}

nlohmann::ordered_json JsonValue(const Variant& v) {
  switch (v.type()) {
    case Variant::Type::Empty:
    case Variant::Type::Null:
      return nullptr;
    case Variant::Type::Boolean:
      return v.AsBool();
    case Variant::Type::Integer:
      return v.AsInteger();
    case Variant::Type::Long:
      return v.AsLong();
    case Variant::Type::Double:
      return v.AsDouble();
    case Variant::Type::Date:
      return FormatDate(v.AsDate());
    case Variant::Type::String:
      return v.AsString();
    default:
      return v.TypeName();
  }
}

}  // namespace

int InitDb(const InitDbOptions& options, std::ostream& out, std::ostream& err) {
  const bool server = postgres::IsServerConnection(options.db);
  namespace fs = std::filesystem;
  std::error_code ec;
  if (!server && (fs::exists(options.db, ec) || fs::is_symlink(options.db, ec))) {
    err << "El fichero '" << options.db << "' ya existe; init-db no sobrescribe una base de "
        << "datos existente. Bórrelo o elija otro nombre.\n";
    return kExitError;
  }
  if (options.size < 0) {
    err << "El tamaño debe ser un número de inmuebles igual o mayor que 0.\n";
    return kExitError;
  }
  std::optional<sample::DemoOptions> demo;
  if (options.demo) demo = sample::DemoOptions{options.size, sample::kDemoSeed};
  try {
    sample::CreateSampleDatabase(options.db, demo);
  } catch (const Error& e) {
    if (server && e.number() == err::kFileAlreadyExists)
      err << "La base de datos '" << options.db << "' ya tiene las tablas; init-db no "
          << "sobrescribe una base de datos existente.\n";
    else if (server)
      err << "Error " << e.number() << ": " << e.description() << "\n";
    else
      err << e.description() << "\n";
    return kExitError;
  }
  out << "Base de datos creada: " << options.db;
  if (options.demo) {
    const sample::DemoSizes s = sample::SizesFor(options.size);
    out << " (" << s.own_properties << " inmuebles propios, " << s.other_agency_properties
        << " ajenos, " << s.archived_properties << " archivados, " << s.sold_properties
        << " vendidos, " << s.demands << " demandas, " << s.clients << " clientes)";
  }
  out << "\n";
  return kExitOk;
}

int Translate(const TranslateOptions& options, std::ostream& out, std::ostream& err) {
  try {
    out << (options.condition ? jetsql::TranslateCondition(options.sql, options.dialect)
                              : jetsql::TranslateStatement(options.sql, options.dialect))
        << "\n";
  } catch (const Error& e) {
    err << "Error " << e.number() << ": " << e.description() << "\n";
    return kExitError;
  }
  return kExitOk;
}

std::string FormatRows(dao::Recordset& rs, bool json) {
  std::string text;
  nlohmann::ordered_json rows = nlohmann::ordered_json::array();
  const int count = rs.FieldCount();
  std::vector<std::string> names;
  for (int i = 0; i < count; ++i) names.push_back(rs.Fields(i).Name());
  if (!json) {
    for (int i = 0; i < count; ++i) (text += i ? "\t" : "") += names[i];
    text += "\n";
  }
  for (; !rs.Eof(); rs.MoveNext()) {
    if (json) {
      nlohmann::ordered_json row = nlohmann::ordered_json::object();
      for (int i = 0; i < count; ++i) row[names[i]] = JsonValue(rs.Fields(i).Value());
      rows.push_back(std::move(row));
    } else {
      for (int i = 0; i < count; ++i) (text += i ? "\t" : "") += FieldText(rs.Fields(i).Value());
      text += "\n";
    }
  }
  if (json) return rows.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
  return text;
}

int Sql(const SqlOptions& options, std::ostream& out, std::ostream& err) {
  // Rows are printed only once the whole result is read, so an error leaves stdout empty.
  std::string text;
  try {
    auto db = dao::OpenDatabase(options.db);
    dao::Recordset rs = db->OpenRecordset(options.statement, dao::dbOpenForwardOnly);
    text = FormatRows(rs, options.json);
    rs.Close();
    db->Close();
  } catch (const Error& e) {
    err << "Error " << e.number() << ": " << e.description() << "\n";
    return kExitError;
  }
  out << text;
  return kExitOk;
}

}  // namespace cp::cli
