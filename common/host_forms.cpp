#include "common/host_forms.h"

namespace cp {
ProcessSlot<std::shared_ptr<HostForms>>& HostFormsSlot() {
  static ProcessSlot<std::shared_ptr<HostForms>> slot;
  return slot;
}

std::shared_ptr<HostForms> CurrentHostForms() { return HostFormsSlot().Get(); }

std::shared_ptr<HostForms> SetHostForms(std::shared_ptr<HostForms> forms) {
  return HostFormsSlot().Set(std::move(forms));
}

}  // namespace cp
