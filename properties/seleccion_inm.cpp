#include "properties/seleccion_inm.h"

#include "common/error_handler.h"
#include "platform/form/combo_box.h"
#include "platform/form/ss_tab.h"
#include "platform/form/text_box.h"

namespace cp {

SeleccionInm::SeleccionInm() : SelectionControl("SeleccionInm") {
  auto& tabs = Controls().AddSSTab("tbsSelec", 5);
  const char* captions[] = {" General ", " Tipo ", " Características ", " Agencia ", " Fechas "};
  for (int i = 0; i < 5; ++i) tabs.setTabCaption(i, captions[i]);
  Controls().AddTextBox("txtPalabras");
  Controls().AddComboBox("cboEn");
  Controls().AddComboBox("cboOpPalabras");
}

void SeleccionInm::PonerFoco() {}

std::string SeleccionInm::SelecWhere() { return {}; }

void SeleccionInm::VerSelAnt() {
  Atrapar("VerSelAnt de SeleccionInm", [&] {
    if (numSelecAnt_ < 1) return;
    NuevaSeleccion();
    for (const ElementoSeleccion& entry : entries_) ApplyEntry(entry);
  });
}

void SeleccionInm::NuevaSeleccion() { ClearInputs(); }

void SeleccionInm::SelecEn(const std::string& pstrEntidad, const std::string&, std::int32_t) {
  struct Entity {
    const char* name;
    const char* table;
    const char* id;
  };
  static const Entity kEntities[] = {{"Inm. Propios", "IPropio", "IdIPropio"},
                                     {"Inm. Ajenos", "IAjeno", "IdIAjeno"},
                                     {"Inm. Archivados", "IArchivado", "IdIArchivado"},
                                     {"Inm. Vendidos", "IVendido", "IdIVendido"},
                                     {"Demandas", "Demanda", "IdDemanda"}};
  for (const Entity& e : kEntities) {
    if (pstrEntidad == e.name) {
      tabla_ = e.table;
      campoId_ = e.id;
    }
  }
}

}  // namespace cp
