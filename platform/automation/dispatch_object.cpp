#include "platform/automation/dispatch_object.h"

#include "platform/core/error.h"

namespace cp {

std::string LowerAscii(std::string_view text) {
  std::string out(text);
  for (char& c : out) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return out;
}

void DispatchObject::Expose(const std::string& name, Getter getter, Setter setter) {
  Member& m = members_[LowerAscii(name)];
  m.get = std::move(getter);
  m.set = std::move(setter);
}

void DispatchObject::ExposeMethod(const std::string& name, Method method) {
  members_[LowerAscii(name)].call = std::move(method);
}

const DispatchObject::Member* DispatchObject::Lookup(const std::string& name) const {
  auto it = members_.find(LowerAscii(name));
  return it == members_.end() ? nullptr : &it->second;
}

bool DispatchObject::HasMember(const std::string& name) const { return Lookup(name) != nullptr; }

Variant DispatchObject::GetProperty(const std::string& name) {
  const Member* m = Lookup(name);
  // The callable is copied so that a member re-registering itself cannot destroy it mid-call.
  if (m && m->get) return Getter(m->get)();
  if (m && m->call) return Method(m->call)({});
  Raise(err::kPropertyNotFound);
}

void DispatchObject::SetProperty(const std::string& name, const Variant& value) {
  const Member* m = Lookup(name);
  if (!m || !m->set) Raise(err::kPropertyNotFound);
  Setter(m->set)(value);
}

Variant DispatchObject::CallMethod(const std::string& name, const std::vector<Variant>& args) {
  const Member* m = Lookup(name);
  if (m && m->call) return Method(m->call)(args);
  if (m && m->get && args.empty()) return Getter(m->get)();
  Raise(err::kPropertyNotFound);
}

}  // namespace cp
