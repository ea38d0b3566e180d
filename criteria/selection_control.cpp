#include "criteria/selection_control.h"

#include <algorithm>
#include <cctype>

#include "common/error_handler.h"
#include "platform/core/conversions.h"
#include "platform/core/date.h"
#include "platform/core/error.h"
#include "platform/form/check_box.h"
#include "platform/form/combo_box.h"
#include "platform/form/date_picker.h"
#include "platform/form/ss_tab.h"
#include "platform/form/text_box.h"

namespace cp {

SelectionControl::SelectionControl(std::string className)
    : className_(std::move(className)),
      controls_(std::make_shared<form::ControlContainer>(className_)) {}

SelectionControl::~SelectionControl() = default;

Variant SelectionControl::SelecAnt() {
  DlgSeleccion();
  if (numSelecAnt_ == -1) return Variant();
  const int n = static_cast<int>(entries_.size());
  Array2D saved(0, n - 1, 0, 2);
  for (int i = 0; i < n; ++i) {
    saved.at(i, 0) = Variant(entries_[i].Nombre);
    saved.at(i, 1) = Variant(entries_[i].Indice);
    saved.at(i, 2) = Variant(entries_[i].Valor);
  }
  return Variant(std::move(saved));
}

void SelectionControl::setSelecAnt(const Variant& saved) {
  if (saved.IsEmpty()) return;
  const Array2D& v = saved.AsArray();  // anything else is a type mismatch (13)
  std::vector<ElementoSeleccion> entries;
  for (int i = v.LBound(1); i <= v.UBound(1); ++i) {
    entries.push_back({CStr(v.at(i, 0)), CInt(v.at(i, 1)), CStr(v.at(i, 2))});
  }
  entries_ = std::move(entries);
  numSelecAnt_ = CInt(Variant(v.UBound(1)));
  VerSelAnt();
}

void SelectionControl::setPestania(std::int16_t tab) {
  pestania_ = tab;
  ShowTab(tab);
  propertyChanged_ = true;
}

void SelectionControl::ShowTab(std::int16_t tab) {
  controls_->Get<form::SSTab>("tbsSelec").setTab(tab);
}

std::string SelectionControl::NomTab(int tab) const {
  return controls_->Get<form::SSTab>("tbsSelec").TabCaption(tab);
}

void SelectionControl::setNomTab(int tab, const std::string& caption) {
  controls_->Get<form::SSTab>("tbsSelec").setTabCaption(tab, caption);
  propertyChanged_ = true;
}

std::string SelectionControl::Palabra() const {
  return controls_->Get<form::TextBox>("txtPalabras").Text();
}

void SelectionControl::setPalabra(const std::string& text) {
  controls_->Get<form::TextBox>("txtPalabras").setText(text);
}

std::string SelectionControl::PalabraEn() {
  setPalabra(controls_->Get<form::ComboBox>("cboEn").Text());
  return {};
}

void SelectionControl::ReadProperties(const form::PropertyBag& bag) {
  const auto& tabs = controls_->Get<form::SSTab>("tbsSelec");
  setPestania(CInt(bag.ReadProperty("Pestania", Variant(pestania_))));
  for (int i = 0; i < tabs.Tabs(); ++i) {
    const std::string key = "NomTab" + std::to_string(i);
    if (bag.Contains(key)) setNomTab(i, CStr(bag.ReadProperty(key)));
  }
  propertyChanged_ = false;
}

void SelectionControl::WriteProperties(form::PropertyBag& bag) const {
  const auto& tabs = controls_->Get<form::SSTab>("tbsSelec");
  bag.WriteProperty("Pestania", Variant(pestania_));
  for (int i = 0; i < tabs.Tabs(); ++i)
    bag.WriteProperty("NomTab" + std::to_string(i), Variant(tabs.TabCaption(i)));
  propertyChanged_ = false;
}

void SelectionControl::DlgSeleccion() {
  Atrapar("DlgSeleccion de " + className_, [&] {
    entries_.assign(1, {"tbsSelec",
                        static_cast<std::int16_t>(controls_->Get<form::SSTab>("tbsSelec").Tab()),
                        ""});
    for (form::Control* control : controls_->Controls()) {
      const std::string type = control->TypeName();
      // Combo boxes and check boxes are never array elements here; the others carry their
      // index when their name is a control array.
      const auto arrayIndex = [&] {
        return static_cast<std::int16_t>(
            controls_->IsControlArray(control->Name()) ? control->Index() : -1);
      };
      if (type == "ComboBox") {
        const int index = static_cast<form::ComboBox*>(control)->ListIndex();
        if (index > -1) entries_.push_back({control->Name(), -1, std::to_string(index)});
      } else if (type == "CheckBox") {
        entries_.push_back({control->Name(), -1,
                            std::to_string(static_cast<form::CheckBox*>(control)->Value())});
      } else if (type == "DTPicker") {
        const Variant value = static_cast<form::DTPicker*>(control)->Value();
        if (!value.IsNull()) entries_.push_back({control->Name(), arrayIndex(), IsoDate(CDate(value))});
      } else if (type == "TextBox") {
        const std::string& text = static_cast<form::TextBox*>(control)->Text();
        if (!text.empty()) entries_.push_back({control->Name(), arrayIndex(), text});
      }
    }
    numSelecAnt_ = static_cast<std::int16_t>(entries_.size());
  });
}

void SelectionControl::ApplyEntry(const ElementoSeleccion& entry) {
  std::string prefix = entry.Nombre.substr(0, 3);
  std::transform(prefix.begin(), prefix.end(), prefix.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  if (prefix == "cbo") {
    controls_->Get<form::ComboBox>(entry.Nombre).setListIndex(CInt(Variant(entry.Valor)));
  } else if (prefix == "tbs") {
    pestania_ = entry.Indice;
  } else if (prefix == "chk") {
    controls_->Get<form::CheckBox>(entry.Nombre).setValue(CInt(Variant(entry.Valor)));
  } else if (prefix == "dtp") {
    controls_->Get<form::DTPicker>(entry.Nombre, entry.Indice).setValue(Variant(entry.Valor));
  } else if (prefix == "txt") {
    controls_->Get<form::TextBox>(entry.Nombre, entry.Indice < 0 ? -1 : entry.Indice)
        .setText(entry.Valor);
  }
}

void SelectionControl::ClearInputs() {
  for (form::Control* control : controls_->Controls()) {
    const std::string type = control->TypeName();
    if (type == "DTPicker") {
      static_cast<form::DTPicker*>(control)->setValue(Variant::Null());
    } else if (type == "TextBox") {
      static_cast<form::TextBox*>(control)->setText("");
    } else if (type == "CheckBox") {
      static_cast<form::CheckBox*>(control)->setValue(2);
    }
  }
}

}  // namespace cp
