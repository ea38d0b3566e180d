#include "platform/core/variant.h"

#include "platform/automation/dispatch.h"
#include "platform/core/error.h"

namespace cp {

Array2D::Array2D(int lower1, int upper1, int lower2, int upper2)
    : lower1_(lower1), upper1_(upper1), lower2_(lower2), upper2_(upper2) {
  const long n1 = upper1 >= lower1 ? static_cast<long>(upper1) - lower1 + 1 : 0;
  const long n2 = upper2 >= lower2 ? static_cast<long>(upper2) - lower2 + 1 : 0;
  items_.resize(static_cast<std::size_t>(n1 * n2));
}

int Array2D::LBound(int dimension) const {
  if (dimension == 1) return lower1_;
  if (dimension == 2) return lower2_;
  Raise(err::kSubscriptOutOfRange);
}

int Array2D::UBound(int dimension) const {
  if (dimension == 1) return upper1_;
  if (dimension == 2) return upper2_;
  Raise(err::kSubscriptOutOfRange);
}

int Array2D::Count(int dimension) const {
  const int n = UBound(dimension) - LBound(dimension) + 1;
  return n > 0 ? n : 0;
}

std::size_t Array2D::Offset(int i, int j) const {
  if (i < lower1_ || i > upper1_ || j < lower2_ || j > upper2_) Raise(err::kSubscriptOutOfRange);
  return static_cast<std::size_t>(i - lower1_) * static_cast<std::size_t>(Count(2)) +
         static_cast<std::size_t>(j - lower2_);
}

Variant& Array2D::at(int i, int j) { return items_[Offset(i, j)]; }
const Variant& Array2D::at(int i, int j) const { return items_[Offset(i, j)]; }

bool Array2D::operator==(const Array2D& other) const {
  return lower1_ == other.lower1_ && upper1_ == other.upper1_ && lower2_ == other.lower2_ &&
         upper2_ == other.upper2_ && items_ == other.items_;
}

Variant Variant::Null() { return Variant(Storage(NullTag{})); }

Variant::Variant(Array2D value)
    : value_(std::make_shared<const Array2D>(std::move(value))) {}

Variant::Type Variant::type() const { return static_cast<Type>(value_.index()); }

std::string Variant::TypeName() const {
  switch (type()) {
    case Type::Empty: return "Empty";
    case Type::Null: return "Null";
    case Type::Boolean: return "Boolean";
    case Type::Integer: return "Integer";
    case Type::Long: return "Long";
    case Type::Double: return "Double";
    case Type::Date: return "Date";
    case Type::String: return "String";
    case Type::Array: return "Variant()";
    case Type::Object: return std::get<std::shared_ptr<Dispatch>>(value_) ? "Object" : "Nothing";
  }
  return "Empty";
}

bool Variant::IsNumberType() const {
  const Type t = type();
  return t == Type::Boolean || t == Type::Integer || t == Type::Long || t == Type::Double;
}

namespace {
template <typename T, typename S>
const T& Get(const S& storage) {
  if (const T* p = std::get_if<T>(&storage)) return *p;
  Raise(err::kTypeMismatch);
}
}  // namespace

bool Variant::AsBool() const { return Get<bool>(value_); }
std::int16_t Variant::AsInteger() const { return Get<std::int16_t>(value_); }
std::int32_t Variant::AsLong() const { return Get<std::int32_t>(value_); }
double Variant::AsDouble() const { return Get<double>(value_); }
Date Variant::AsDate() const { return Get<Date>(value_); }
const std::string& Variant::AsString() const { return Get<std::string>(value_); }
const Array2D& Variant::AsArray() const { return *Get<std::shared_ptr<const Array2D>>(value_); }
std::shared_ptr<Dispatch> Variant::AsObject() const {
  return Get<std::shared_ptr<Dispatch>>(value_);
}

bool Variant::operator==(const Variant& other) const {
  if (value_.index() != other.value_.index()) return false;
  if (IsArray()) return AsArray() == other.AsArray();
  return value_ == other.value_;
}

}  // namespace cp
