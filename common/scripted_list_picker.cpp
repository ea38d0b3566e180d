#include "common/scripted_list_picker.h"

#include <array>

#include "common/list_picker.h"
#include "common/modal.h"
#include "platform/core/error.h"

namespace cp {
namespace {

constexpr std::array<const char*, 13> kProperties = {
    "TipoLista", "TituloForm",  "tabla",    "BDatos",    "campo",        "IdCampo", "SQLSentencia",
    "Seleccionar", "nuevoId", "Op_Nuevo", "Op_Borrar", "Op_Modificar", "anchura"};
constexpr std::size_t kSeleccionar = 7;

}  // namespace

ListPickerAnswer ListPickerAnswer::Accept(std::string text) {
  ListPickerAnswer a;
  a.kind = Kind::Accept;
  a.text = std::move(text);
  return a;
}

ListPickerAnswer ListPickerAnswer::Cancel(std::string ticked) {
  ListPickerAnswer a;
  a.kind = Kind::Cancel;
  a.text = std::move(ticked);
  return a;
}

ListPickerAnswer ListPickerAnswer::ReturnNull() {
  ListPickerAnswer a;
  a.kind = Kind::ReturnNull;
  return a;
}

ListPickerAnswer ListPickerAnswer::Fail(long number, std::string description) {
  ListPickerAnswer a;
  a.kind = Kind::Fail;
  a.error_number = number;
  a.error_description = std::move(description);
  return a;
}

std::vector<std::string> ListPickerRecording::Names() const {
  std::vector<std::string> names;
  for (const auto& step : steps) names.push_back(step.name);
  return names;
}

ScriptedListPicker::ScriptedListPicker(std::shared_ptr<const ListPickerAnswer> answer,
                                       std::shared_ptr<ListPickerRecording> recording)
    : answer_(std::move(answer)), recording_(std::move(recording)), values_(kProperties.size()) {
  for (std::size_t i = 0; i < kProperties.size(); ++i) {
    Expose(kProperties[i], [this, i] { return values_[i]; },
           [this, i](const Variant& v) { values_[i] = v; });
  }
  ExposeMethod("mtdMostrar", [this](const std::vector<Variant>&) { return Show(); });
}

void ScriptedListPicker::SetProperty(const std::string& name, const Variant& value) {
  recording_->steps.push_back(
      {ListPickerStep::Kind::SetProperty, name, value, gModalAbierto()});
  DispatchObject::SetProperty(name, value);
}

Variant ScriptedListPicker::CallMethod(const std::string& name, const std::vector<Variant>& args) {
  recording_->steps.push_back({ListPickerStep::Kind::CallMethod, name, Variant(), gModalAbierto()});
  return DispatchObject::CallMethod(name, args);
}

Variant ScriptedListPicker::Show() {
  const ListPickerAnswer& answer = *answer_;
  switch (answer.kind) {
    case ListPickerAnswer::Kind::Accept:
      values_[kSeleccionar] = Variant(answer.text);
      return Variant(true);
    case ListPickerAnswer::Kind::Cancel:
      if (!answer.text.empty()) values_[kSeleccionar] = Variant(answer.text);
      return Variant(false);
    case ListPickerAnswer::Kind::ReturnNull:
      return Variant::Null();
    case ListPickerAnswer::Kind::Fail:
      break;
  }
  throw Error(answer.error_number, answer.error_description, kListPickerProgId);
}

ScriptedListPickerRegistration::ScriptedListPickerRegistration(ListPickerAnswer answer)
    : state_(std::make_shared<State>(
          State{std::make_shared<ListPickerAnswer>(std::move(answer)), {}})),
      registration_(kListPickerProgId, [state = state_]() -> std::shared_ptr<Dispatch> {
        auto recording = std::make_shared<ListPickerRecording>();
        state->recordings.push_back(recording);
        return std::make_shared<ScriptedListPicker>(state->answer, recording);
      }) {}

void ScriptedListPickerRegistration::setAnswer(ListPickerAnswer answer) {
  *state_->answer = std::move(answer);
}

int ScriptedListPickerRegistration::InstanceCount() const {
  return static_cast<int>(state_->recordings.size());
}

std::shared_ptr<const ListPickerRecording> ScriptedListPickerRegistration::LastInstance() const {
  return state_->recordings.empty() ? nullptr : state_->recordings.back();
}

}  // namespace cp
