#pragma once
// What the host tells the error log about its windows: which forms are open, which one is
// active and which control has the focus there. A host without windows installs nothing.
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/core/process_slot.h"

namespace cp {

class HostForms {
 public:
  virtual ~HostForms() = default;
  // Identification of every open form, in the host's order.
  virtual std::vector<std::string> OpenForms() const = 0;
  // Identification of the active form; nullopt when there is none.
  virtual std::optional<std::string> ActiveForm() const = 0;
  // Name of the active form's active control; nullopt when there is none.
  virtual std::optional<std::string> ActiveControl() const = 0;
};

// The installed provider, or null (the default).
std::shared_ptr<HostForms> CurrentHostForms();
// Installs a provider (null removes it) and returns the one it replaces.
std::shared_ptr<HostForms> SetHostForms(std::shared_ptr<HostForms> forms);
// The slot behind both, for a scope that installs a provider and puts the previous one back.
ProcessSlot<std::shared_ptr<HostForms>>& HostFormsSlot();

}  // namespace cp
