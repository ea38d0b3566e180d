// Restricting the dialog's entity list from the host.
#include <gtest/gtest.h>

#include "tests/selection/selection_fixture.h"
#include "tests/support/errors.h"

namespace cp::testing {
namespace {

TEST_F(SelectionTest, EntidadesPosiblesClearsTheListBeforeReadingTheValue) {
  Array2D two(0, 1, 0, 0);
  two.at(0, 0) = Variant("Clientes");
  two.at(1, 0) = Variant("Agencias");
  struct Row {
    const char* name;
    Variant value;
    long error;
    int count;
  };
  const Row rows[] = {
      {"Null keeps the list", Variant::Null(), 0, 8},
      {"a text", Variant("Clientes"), err::kTypeMismatch, 0},
      {"Empty", Variant(), err::kTypeMismatch, 0},
      {"an array", Variant(two), 0, 2},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    CSeleccion sel;
    sel.setEntidad("Clientes");
    EXPECT_EQ(ErrorNumberOf([&] { sel.setEntidadesPosibles(row.value); }), row.error);
    EXPECT_EQ(sel.Dialog().cboEntidad().ListCount(), row.count);
  }
}

}  // namespace
}  // namespace cp::testing
