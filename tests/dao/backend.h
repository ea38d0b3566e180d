#pragma once
// The engines the DAO suite runs over. A backend makes fresh empty databases and writes the
// suite's tables in its own native SQL, so the same DAO tests can run on every engine.
#include <charconv>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "platform/core/date.h"
#include "platform/core/string_functions.h"
#include "platform/core/variant.h"

namespace cp::dao::testing {

class TestBackend {
 public:
  virtual ~TestBackend() = default;
  // A new, empty database; returns its connection text (for OpenDatabase).
  virtual std::string CreateDatabase() = 0;
  // Runs native SQL on a database made by CreateDatabase.
  virtual void Execute(const std::string& connection, const std::string& sql) = 0;
  // The native declaration of a column of a DAO type (and size, for text).
  virtual std::string Declare(int daoType, long size = 0) const = 0;
  // The declaration of a key that the engine numbers itself.
  virtual std::string AutoIncrementKey() const = 0;
  // The declaration of an integer key that the engine does not number itself.
  virtual std::string PlainKey() const = 0;
  // A native literal for a value (text quoted, dates as stored, Yes/No as the engine keeps it).
  virtual std::string Literal(const Variant& value) const = 0;
};

// The literal both engines share but for dates, which open with datePrefix ("'" or
// "TIMESTAMP '") and hold the ISO text.
inline std::string NativeLiteral(const Variant& value, const std::string& datePrefix) {
  switch (value.type()) {
    case Variant::Type::Null:
    case Variant::Type::Empty: return "NULL";
    case Variant::Type::Boolean: return value.AsBool() ? "1" : "0";
    case Variant::Type::Integer: return std::to_string(value.AsInteger());
    case Variant::Type::Long: return std::to_string(value.AsLong());
    case Variant::Type::Double: {
      char buffer[40];  // to_chars: SQL wants "." whatever the locale
      const auto end = std::to_chars(buffer, buffer + sizeof buffer, value.AsDouble()).ptr;
      return std::string(buffer, end);
    }
    case Variant::Type::Date: return datePrefix + IsoDate(value.AsDate()) + "'";
    default: return "'" + Replace(value.AsString(), "'", "''") + "'";
  }
}

struct BackendParam {
  std::string name;
  std::function<std::unique_ptr<TestBackend>()> make;
};

inline void PrintTo(const BackendParam& param, std::ostream* out) { *out << param.name; }

// Every engine this build can test: SQLite, then the server backends.
std::vector<BackendParam> AllBackends();
// The PostgreSQL backends, empty when no test server runs.
std::vector<BackendParam> ServerBackends();

}  // namespace cp::dao::testing
