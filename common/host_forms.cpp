#include "common/host_forms.h"

namespace cp {
namespace {
std::shared_ptr<HostForms>& Current() {
  static std::shared_ptr<HostForms> current;
  return current;
}
}  // namespace

std::shared_ptr<HostForms> CurrentHostForms() { return Current(); }

std::shared_ptr<HostForms> SetHostForms(std::shared_ptr<HostForms> forms) {
  Current().swap(forms);
  return forms;
}

}  // namespace cp
