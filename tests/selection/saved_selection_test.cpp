// Capture, hand-over and restore of the contact control's inputs. The order of the entries,
// array elements and dates are pinned by the property control's saved-selection tests.
#include "platform/form/ss_tab.h"
#include "tests/selection/selection_fixture.h"

namespace cp::testing {
namespace {

using form::ComboBox;
using form::DTPicker;
using form::TextBox;

std::vector<ElementoSeleccion> Rows(const Variant& saved) {
  std::vector<ElementoSeleccion> rows;
  const Array2D& a = saved.AsArray();
  EXPECT_EQ(a.LBound(1), 0);
  EXPECT_EQ(a.LBound(2), 0);
  EXPECT_EQ(a.UBound(2), 2);
  for (int i = 0; i <= a.UBound(1); ++i)
    rows.push_back({a.at(i, 0).AsString(), a.at(i, 1).AsInteger(), a.at(i, 2).AsString()});
  return rows;
}

TEST_F(SelectionTest, EmptyInputsCaptureOnlyTheTabEntry) {
  SeleccionCli control;
  EXPECT_EQ(control.NumSelecAnt(), -1);
  // cboEn starts on its first item and chkCategorias grey, so both are written; the other
  // list has nothing chosen and is left out.
  EXPECT_EQ(Rows(control.SelecAnt()),
            (std::vector<ElementoSeleccion>{
                {"tbsSelec", 0, ""}, {"chkCategorias", -1, "2"}, {"cboEn", -1, "0"}}));
  EXPECT_EQ(control.NumSelecAnt(), 3);
}

TEST_F(SelectionTest, RestoreClearsThenAppliesByName) {
  SeleccionCli source;
  auto& s = source.Controls();
  s.Get<DTPicker>("dtpActualiza", 1).setValue(Variant(MakeDate(2031, 6, 30)));
  s.Get<TextBox>("txtCategorias").setText("Vip; ");
  s.Get<ComboBox>("cboEn").setListIndex(9);
  const Variant saved = source.SelecAnt();

  SeleccionCli target;
  auto& t = target.Controls();
  t.Get<DTPicker>("dtpAlta", 0).setValue(Variant(MakeDate(2000, 1, 1)));
  t.Get<ComboBox>("cboOpPalabras").setListIndex(2);  // not saved: keeps its index
  t.Get<TextBox>("txtPalabras").setText("antes");
  target.setSelecAnt(saved);
  EXPECT_EQ(target.NumSelecAnt(), 4);  // the last index, one less than the entries
  EXPECT_TRUE(t.Get<DTPicker>("dtpAlta", 0).Value().IsNull());
  EXPECT_EQ(t.Get<DTPicker>("dtpActualiza", 1).Value(), Variant(MakeDate(2031, 6, 30)));
  EXPECT_EQ(t.Get<TextBox>("txtCategorias").Text(), "Vip; ");
  EXPECT_EQ(t.Get<TextBox>("txtPalabras").Text(), "");
  EXPECT_EQ(t.Get<ComboBox>("cboEn").Text(), "Notas");
  EXPECT_EQ(t.Get<ComboBox>("cboOpPalabras").ListIndex(), 2);
  EXPECT_EQ(target.SelecWhere(), source.SelecWhere());
}

TEST_F(SelectionTest, RestoreReadsNamesInAnyCaseAndTheTab) {
  SeleccionCli control;
  control.setSelecAnt(Saved({{"tbsSelec", "1", ""}, {"TXTPALABRAS", "-1", "x"}}));
  EXPECT_EQ(control.Pestania(), 1);
  // The stored tab changes; the tab strip itself is not switched.
  EXPECT_EQ(control.Controls().Get<form::SSTab>("tbsSelec").Tab(), 0);
  EXPECT_EQ(control.Palabra(), "x");
}

TEST_F(SelectionTest, NothingToRestore) {
  SeleccionCli control;
  control.setPalabra("queda");
  control.VerSelAnt();  // a fresh control has nothing saved
  EXPECT_EQ(control.Palabra(), "queda");

  // Only the tab entry: the count becomes 0 and nothing is restored.
  control.setSelecAnt(Saved({{"tbsSelec", "1", ""}}));
  EXPECT_EQ(control.NumSelecAnt(), 0);
  EXPECT_EQ(control.Palabra(), "queda");

  // Empty leaves entries and count as they were.
  control.SelecAnt();
  const auto entries = control.Entries();
  control.setSelecAnt(Variant());
  EXPECT_EQ(control.Entries(), entries);
  EXPECT_EQ(control.NumSelecAnt(), static_cast<std::int16_t>(entries.size()));
}

// The bag of written properties is the property control's business; the contact control
// keeps the base's plain search field.
TEST_F(SelectionTest, TabsAndTheSearchField) {
  SeleccionCli control;
  auto& c = control.Controls();
  EXPECT_TRUE(c.Item("fraSelec", 0).Visible());
  EXPECT_FALSE(c.Item("fraSelec", 1).Visible());
  control.setPestania(1);
  EXPECT_TRUE(control.PropertyChanged());
  EXPECT_FALSE(c.Item("fraSelec", 0).Visible());
  EXPECT_TRUE(c.Item("fraSelec", 1).Visible());
  EXPECT_TRUE(c.Item("dtpAlta", 0).HasFocus());

  c.Get<ComboBox>("cboEn").setText("Calle");
  EXPECT_EQ(control.PalabraEn(), "");
  EXPECT_EQ(control.Palabra(), "Calle");
}

}  // namespace
}  // namespace cp::testing
