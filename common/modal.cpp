#include "common/modal.h"

namespace cp {
namespace {
bool g_modal_open = false;
}

bool gModalAbierto() { return g_modal_open; }
void setgModalAbierto(bool value) { g_modal_open = value; }

ModalScope::ModalScope() : saved_(g_modal_open) { g_modal_open = true; }
ModalScope::~ModalScope() { g_modal_open = saved_; }

}  // namespace cp
