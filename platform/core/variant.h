#pragma once
// Variant: the runtime's dynamically typed value. Arrays are two-dimensional with their own
// bounds (the saved selection crosses the component boundary as one); objects are late-bound
// automation objects (see platform/automation).
#include <cstdint>
#include <memory>
#include <string>
#include <type_traits>
#include <variant>
#include <vector>

#include "platform/core/date.h"

namespace cp {

class Dispatch;
class Variant;

// A two-dimensional array with inclusive bounds per dimension, as the runtime's
// ReDim a(l1 To u1, l2 To u2). An upper bound below its lower bound means no elements.
class Array2D {
 public:
  Array2D() = default;
  Array2D(int lower1, int upper1, int lower2, int upper2);

  int LBound(int dimension) const;  // dimension 1 or 2; other values raise error 9
  int UBound(int dimension) const;
  int Count(int dimension) const;
  // Element access; an index outside the bounds raises error 9.
  Variant& at(int i, int j);
  const Variant& at(int i, int j) const;
  bool operator==(const Array2D& other) const;

 private:
  std::size_t Offset(int i, int j) const;
  int lower1_ = 0, upper1_ = -1, lower2_ = 0, upper2_ = -1;
  std::vector<Variant> items_;
};

class Variant {
 public:
  enum class Type { Empty, Null, Boolean, Integer, Long, Double, Date, String, Array, Object };

  Variant() = default;  // Empty
  static Variant Null();
  Variant(bool value) : value_(value) {}
  Variant(std::int16_t value) : value_(value) {}
  Variant(std::int32_t value) : value_(value) {}
  Variant(double value) : value_(value) {}
  Variant(Date value) : value_(value) {}
  Variant(std::string value) : value_(std::move(value)) {}
  Variant(const char* value) : value_(std::string(value)) {}
  Variant(std::string_view value) : value_(std::string(value)) {}
  Variant(Array2D value);
  Variant(std::shared_ptr<Dispatch> object) : value_(std::move(object)) {}
  // Any object that is a Dispatch.
  template <class T>
    requires(!std::is_same_v<T, Dispatch> &&
             std::is_convertible_v<std::shared_ptr<T>, std::shared_ptr<Dispatch>>)
  Variant(std::shared_ptr<T> object) : value_(std::shared_ptr<Dispatch>(std::move(object))) {}

  Type type() const;
  // The runtime's TypeName: "Empty", "Null", "Boolean", "Integer", "Long", "Double", "Date",
  // "String", "Variant()", "Object" (or "Nothing" for a null object).
  std::string TypeName() const;

  bool IsEmpty() const { return type() == Type::Empty; }
  bool IsNull() const { return type() == Type::Null; }
  bool IsString() const { return type() == Type::String; }
  bool IsArray() const { return type() == Type::Array; }
  bool IsObject() const { return type() == Type::Object; }
  // Boolean, Integer, Long or Double.
  bool IsNumberType() const;

  // Exact accessors: the stored type must match, otherwise error 13. Use the conversions of
  // conversions.h to convert.
  bool AsBool() const;
  std::int16_t AsInteger() const;
  std::int32_t AsLong() const;
  double AsDouble() const;
  Date AsDate() const;
  const std::string& AsString() const;
  const Array2D& AsArray() const;
  std::shared_ptr<Dispatch> AsObject() const;

  // Same type and same value (arrays element by element; objects by identity).
  bool operator==(const Variant& other) const;

 private:
  struct NullTag {
    bool operator==(const NullTag&) const = default;
  };
  // Arrays are immutable once inside a Variant, so sharing them between copies is safe.
  using Storage = std::variant<std::monostate, NullTag, bool, std::int16_t, std::int32_t, double,
                               Date, std::string, std::shared_ptr<const Array2D>,
                               std::shared_ptr<Dispatch>>;
  explicit Variant(Storage s) : value_(std::move(s)) {}
  Storage value_;
};

}  // namespace cp
