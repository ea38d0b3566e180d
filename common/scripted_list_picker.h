#pragma once
// A stand-in for the list picker "NListado.CListado" where no window can be shown: in tests,
// which script its answer and read back what it received, and in the command-line tool,
// which registers it answering as a user who cancels.
//
//   ScriptedListPickerRegistration picker(ListPickerAnswer::Accept("Piso; Local; "));
//   std::string text = VerListadoMult(...);            // "Piso; Local; "
//   picker.LastInstance()->steps                       // every property set, in order
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/automation/dispatch_object.h"
#include "platform/automation/registry.h"

namespace cp {

// How the picker answers mtdMostrar.
struct ListPickerAnswer {
  enum class Kind { Accept, Cancel, ReturnNull, Fail };
  Kind kind = Kind::Cancel;
  std::string text;         // Accept: the new Seleccionar. Cancel: values ticked before
                            // cancelling, left in Seleccionar ("" leaves it as it was set).
  long error_number = 0;    // Fail: the error mtdMostrar raises
  std::string error_description;

  // The user accepts; Seleccionar then reads text; mtdMostrar returns True.
  static ListPickerAnswer Accept(std::string text);
  // The user cancels, possibly after ticking values; mtdMostrar returns False.
  static ListPickerAnswer Cancel(std::string ticked = {});
  // mtdMostrar returns Null.
  static ListPickerAnswer ReturnNull();
  // mtdMostrar raises cp::Error(number, description, "NListado.CListado").
  static ListPickerAnswer Fail(long number, std::string description);
};

// One thing an instance received.
struct ListPickerStep {
  enum class Kind { SetProperty, CallMethod };
  Kind kind = Kind::SetProperty;
  std::string name;         // as the caller spelled it
  Variant value;            // the value set; Empty for a method call
  bool modal_flag = false;  // gModalAbierto at that moment
};

// Everything one instance received, in order.
struct ListPickerRecording {
  std::vector<ListPickerStep> steps;
  // The names, in order.
  std::vector<std::string> Names() const;
};

// The picker object. It accepts the thirteen properties of the picker's protocol (any case,
// any value; each can be read back) and mtdMostrar; other names raise 438.
class ScriptedListPicker : public DispatchObject {
 public:
  // answer is shared with the registration, so a change there reaches a live instance.
  ScriptedListPicker(std::shared_ptr<const ListPickerAnswer> answer,
                     std::shared_ptr<ListPickerRecording> recording);

  void SetProperty(const std::string& name, const Variant& value) override;
  Variant CallMethod(const std::string& name, const std::vector<Variant>& args = {}) override;

 private:
  Variant Show();
  std::shared_ptr<const ListPickerAnswer> answer_;
  std::shared_ptr<ListPickerRecording> recording_;
  std::vector<Variant> values_;  // one per protocol property
};

// Registers the scripted picker under "NListado.CListado" for its lifetime, then puts back
// whatever was registered before. Every instance created meanwhile records into a recording
// that this object keeps.
class ScriptedListPickerRegistration {
 public:
  explicit ScriptedListPickerRegistration(ListPickerAnswer answer = ListPickerAnswer::Cancel());
  ScriptedListPickerRegistration(const ScriptedListPickerRegistration&) = delete;
  ScriptedListPickerRegistration& operator=(const ScriptedListPickerRegistration&) = delete;

  // The answer of every instance's next mtdMostrar, from now on.
  void setAnswer(ListPickerAnswer answer);
  // Instances created so far.
  int InstanceCount() const;
  // The recording of the last instance created; null when none was.
  std::shared_ptr<const ListPickerRecording> LastInstance() const;

 private:
  struct State {
    std::shared_ptr<ListPickerAnswer> answer;  // shared with every instance
    std::vector<std::shared_ptr<ListPickerRecording>> recordings;
  };
  std::shared_ptr<State> state_;
  ScopedProgId registration_;
};

}  // namespace cp
