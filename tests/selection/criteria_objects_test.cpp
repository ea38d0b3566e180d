// The criteria controls created by ProgID and driven only by name, as a host form that
// places one on its own does: database, entity, a criterion, a saved selection taken and
// given back, and the persisted properties through a property bag into a second control.
#include "platform/automation/registry.h"
#include "platform/dao/database_object.h"
#include "selection/criteria_objects.h"
#include "tests/selection/selection_fixture.h"
#include "tests/support/errors.h"

namespace cp::testing {
namespace {

std::vector<std::string> BagNames(Dispatch& bag) {
  std::vector<std::string> names;
  const Array2D rows = bag.GetProperty("Contents").AsArray();
  for (int i = 0; i <= rows.UBound(1); ++i) names.push_back(rows.at(i, 0).AsString());
  return names;
}

TEST_F(SelectionTest, EachControlByProgIdIsDrivenByName) {
  const struct {
    const char* progId;
    bool selecEnIsMethod;  // a property let on the contact control, a method on the other
    const char *entity, *words, *condition;
    std::vector<std::string> persisted;  // as a bag holds them, sorted by name
    const char* notPersisted;
  } cases[] = {
      {"CriterioPredios.SeleccionCli", false, "Clientes", "díaz",
       "Cliente.Alias LIKE '*díaz*'", {"NomTab0", "NomTab1", "Pestania"}, "NomTab2"},
      {"CriterioPredios.SeleccionInm", true, "Inm. Propios", "12", "IPropio.IdIPropio=12",
       {"NomTab0", "NomTab1", "NomTab2", "Pestania"}, "NomTab3"},
  };
  RegisterCriteriaControls();
  for (const auto& t : cases) {
    SCOPED_TRACE(t.progId);
    setBD(nullptr);  // the object hands the database on itself
    std::shared_ptr<Dispatch> control = CreateObject(t.progId);
    control->SetProperty("BD", Variant(std::make_shared<dao::DatabaseObject>(
                                   dao::OpenDatabase(path_))));
    if (t.selecEnIsMethod)
      control->CallMethod("SelecEn", {Variant(t.entity)});
    else
      control->SetProperty("SelecEn", Variant(t.entity));
    EXPECT_EQ(control->GetProperty("SelecWhere"), Variant(""));

    control->SetProperty("Palabra", Variant(t.words));
    EXPECT_EQ(CStr(control->GetProperty("SelecWhere")), t.condition);
    const Variant saved = control->GetProperty("SelecAnt");
    control->CallMethod("NuevaSeleccion");
    EXPECT_EQ(control->GetProperty("Palabra"), Variant(""));
    control->SetProperty("SelecAnt", saved);
    EXPECT_EQ(CStr(control->GetProperty("SelecWhere")), t.condition);

    // Design-time values, saved with the host's form and applied to the next control made.
    for (const std::string& name : t.persisted)
      control->SetProperty(name, name == "Pestania" ? Variant(std::int16_t{1}) : Variant(name + "!"));
    EXPECT_EQ(ErrorNumberOf([&] { control->SetProperty(t.notPersisted, Variant("x")); }),
              err::kPropertyNotFound);
    const Variant stored = control->CallMethod("WriteProperties").AsObject()->GetProperty(
        "Contents");

    std::shared_ptr<Dispatch> next = CreateObject(t.progId);
    std::shared_ptr<Dispatch> bag = next->CallMethod("WriteProperties").AsObject();
    EXPECT_EQ(CStr(next->GetProperty("Pestania")), "0");
    bag->SetProperty("Contents", stored);
    EXPECT_EQ(BagNames(*bag), t.persisted);
    next->CallMethod("ReadProperties", {Variant(bag)});
    for (const std::string& name : t.persisted)
      EXPECT_EQ(next->GetProperty(name), control->GetProperty(name)) << name;
    EXPECT_EQ(CStr(next->GetProperty("NomTab1")), "NomTab1!");
  }
}

}  // namespace
}  // namespace cp::testing
