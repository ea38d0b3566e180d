// Capture, hand-over and restore of a criteria control's inputs.
#include "platform/form/ss_tab.h"
#include "tests/selection/selection_fixture.h"

namespace cp::testing {
namespace {

using form::CheckBox;
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

// A control with a text-box array, which the contact control does not have.
class ArrayControl : public SelectionControl {
 public:
  ArrayControl() : SelectionControl("Prueba") {
    Controls().AddSSTab("tbsSelec", 2);
    Controls().AddTextBox("txtPrecio", 0);
    Controls().AddTextBox("txtPrecio", 1);
    Controls().AddTextBox("txtPalabras");
    Controls().AddComboBox("cboEn").AddItem("Notas");
  }
  void PonerFoco() override {}
  std::string SelecWhere() override { return {}; }
  void VerSelAnt() override {
    if (numSelecAnt_ < 1) return;
    NuevaSeleccion();
    for (const auto& e : entries_) ApplyEntry(e);
  }
  void NuevaSeleccion() override { ClearInputs(); }
};

TEST_F(SelectionTest, EmptyInputsCaptureOnlyTheTabEntry) {
  SeleccionCli control;
  EXPECT_EQ(control.NumSelecAnt(), -1);
  // cboEn starts on its first item and chkCategorias grey, so both are written.
  EXPECT_EQ(Rows(control.SelecAnt()),
            (std::vector<ElementoSeleccion>{
                {"tbsSelec", 0, ""}, {"chkCategorias", -1, "2"}, {"cboEn", -1, "0"}}));
  EXPECT_EQ(control.NumSelecAnt(), 3);

  ArrayControl bare;
  bare.Controls().Get<ComboBox>("cboEn").setListIndex(-1);
  EXPECT_EQ(Rows(bare.SelecAnt()), (std::vector<ElementoSeleccion>{{"tbsSelec", 0, ""}}));
  EXPECT_EQ(bare.NumSelecAnt(), 1);
}

TEST_F(SelectionTest, CaptureFollowsCreationOrderWithIndexes) {
  SeleccionCli control;
  auto& c = control.Controls();
  c.Get<form::SSTab>("tbsSelec").setTab(1);
  c.Get<TextBox>("txtPalabras").setText("O'Brien | 50%");
  c.Get<DTPicker>("dtpTransmision", 1).setValue(Variant(MakeDate(2024, 2, 29)));
  c.Get<DTPicker>("dtpAlta", 0).setValue(Variant(MakeDate(1925, 1, 2)));
  c.Get<ComboBox>("cboOpPalabras").setListIndex(0);
  c.Get<CheckBox>("chkCategorias").setValue(0);
  EXPECT_EQ(Rows(control.SelecAnt()),
            (std::vector<ElementoSeleccion>{
                {"tbsSelec", 1, ""}, {"dtpAlta", 0, "1925-01-02"},
                {"dtpTransmision", 1, "2024-02-29"}, {"chkCategorias", -1, "0"},
                {"txtPalabras", -1, "O'Brien | 50%"}, {"cboOpPalabras", -1, "0"},
                {"cboEn", -1, "0"}}));
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

TEST_F(SelectionTest, RestoreReadsOldDatesAndTabs) {
  SeleccionCli control;
  control.setSelecAnt(Saved({{"tbsSelec", "1", ""}, {"dtpAlta", "1", "31/12/2024"},
                             {"TXTPALABRAS", "-1", "x"}}));
  EXPECT_EQ(control.Pestania(), 1);
  // The stored tab changes; the tab strip itself is not switched.
  EXPECT_EQ(control.Controls().Get<form::SSTab>("tbsSelec").Tab(), 0);
  EXPECT_EQ(control.Controls().Get<DTPicker>("dtpAlta", 1).Value(),
            Variant(MakeDate(2024, 12, 31)));
  EXPECT_EQ(control.Palabra(), "x");
}

TEST_F(SelectionTest, ArrayElementsRestoreIntoTheSameElement) {
  ArrayControl source;
  source.Controls().Get<TextBox>("txtPrecio", 1).setText("150.000");
  const Variant saved = source.SelecAnt();
  EXPECT_EQ(Rows(saved)[1], (ElementoSeleccion{"txtPrecio", 1, "150.000"}));
  ArrayControl target;
  target.setSelecAnt(saved);
  EXPECT_EQ(target.Controls().Get<TextBox>("txtPrecio", 0).Text(), "");
  EXPECT_EQ(target.Controls().Get<TextBox>("txtPrecio", 1).Text(), "150.000");
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

TEST_F(SelectionTest, BadEntryStopsTheRestoreThere) {
  SeleccionCli control;
  control.setSelecAnt(Saved({{"tbsSelec", "0", ""}, {"txtPalabras", "-1", "primero"},
                             {"txtNoExiste", "-1", "x"}, {"txtCategorias", "-1", "nunca"}}));
  EXPECT_EQ(control.Palabra(), "primero");
  EXPECT_EQ(control.Controls().Get<TextBox>("txtCategorias").Text(), "");
  ASSERT_EQ(messenger_->shown().size(), 1u);
  EXPECT_NE(messenger_->shown()[0].text.find("VerSelAnt de SeleccionCli"), std::string::npos);
  EXPECT_EQ(control.Entries().size(), 4u);
}

TEST_F(SelectionTest, TabsAndPersistedProperties) {
  SeleccionCli control;
  auto& c = control.Controls();
  EXPECT_TRUE(c.Item("fraSelec", 0).Visible());
  EXPECT_FALSE(c.Item("fraSelec", 1).Visible());
  control.setPestania(1);
  EXPECT_TRUE(control.PropertyChanged());
  EXPECT_FALSE(c.Item("fraSelec", 0).Visible());
  EXPECT_TRUE(c.Item("fraSelec", 1).Visible());
  EXPECT_TRUE(c.Item("dtpAlta", 0).HasFocus());
  control.setNomTab0("Datos");
  form::PropertyBag bag;
  control.WriteProperties(bag);
  SeleccionCli other;
  other.ReadProperties(bag);
  EXPECT_EQ(other.Pestania(), 1);
  EXPECT_EQ(other.NomTab0(), "Datos");
  other.PonerFoco();
  EXPECT_TRUE(other.Controls().Item("dtpAlta", 0).HasFocus());

  control.Controls().Get<ComboBox>("cboEn").setText("Calle");
  EXPECT_EQ(control.PalabraEn(), "");
  EXPECT_EQ(control.Palabra(), "Calle");
}

}  // namespace
}  // namespace cp::testing
