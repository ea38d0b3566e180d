#pragma once
// DispatchObject: a Dispatch whose members are a table of C++ callables registered by name,
// so that a class exposes its properties and methods to late binding in a few lines:
//
//   Expose("Titulo", [this] { return Variant(title_); },
//          [this](const Variant& v) { title_ = CStr(v); });
//   ExposeMethod("mtdMostrar", [this](const std::vector<Variant>&) { return Variant(Show()); });
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/automation/dispatch.h"

namespace cp {

class DispatchObject : public Dispatch {
 public:
  using Getter = std::function<Variant()>;
  using Setter = std::function<void(const Variant&)>;
  using Method = std::function<Variant(const std::vector<Variant>& args)>;

  // Reads a property through its getter. A name with no getter but with a method taking no
  // arguments calls the method, as late binding lets `x = obj.Method` do. Otherwise 438.
  Variant GetProperty(const std::string& name) override;
  // Writes a property through its setter; 438 when the name has no setter.
  void SetProperty(const std::string& name, const Variant& value) override;
  // Calls a method; with no arguments a readable property also answers (its value). 438
  // for an unknown name. The method's own errors pass through unchanged.
  Variant CallMethod(const std::string& name, const std::vector<Variant>& args = {}) override;

  // True when the name (any case) is a property or a method of this object.
  bool HasMember(const std::string& name) const;

 protected:
  DispatchObject() = default;
  // Registers a property; an empty getter or setter makes it write-only or read-only.
  // Registering a name again replaces the earlier entry.
  void Expose(const std::string& name, Getter getter, Setter setter = {});
  void ExposeMethod(const std::string& name, Method method);

 private:
  struct Member {
    Getter get;
    Setter set;
    Method call;
  };
  const Member* Lookup(const std::string& name) const;
  std::map<std::string, Member> members_;  // keyed by the ASCII lower-case name
};

// ASCII lower-case copy of a member or ProgID name (non-ASCII bytes are kept as they are).
std::string LowerAscii(std::string_view text);

}  // namespace cp
