#pragma once
// LocationCascade: the país/provincia/población/zona boxes of the property control. Each box
// is tied to a field linker; a change locks or unlocks the lower levels, leaving a box
// validates its names against the upper levels and clears the lower boxes when an upper name
// changed, and the four pickers list the names that the upper levels allow.
#include <memory>
#include <string>

namespace cp {

namespace form {
class ControlContainer;
class TextBox;
class CommandButton;
}  // namespace form

class CFieldLinker;

// The país/provincia/población/zona boxes of the property control and their linkers.
class LocationCascade {
 public:
  // Connects to txtPais, txtProvincia, txtPoblacion, txtZona (Change, Validate, KeyDown)
  // and cmdPais, cmdProvincia, cmdPoblacion, cmdZona (Click), which must already exist in
  // controls; creates and initialises the four linkers (UserControl_Initialize's part).
  // A missing control raises the container's lookup error. The cascade must not outlive
  // controls.
  explicit LocationCascade(form::ControlContainer& controls);
  ~LocationCascade();
  LocationCascade(const LocationCascade&) = delete;
  LocationCascade& operator=(const LocationCascade&) = delete;

  // The linkers, owned by the cascade.
  CFieldLinker& Pais();
  CFieldLinker& Provincia();
  CFieldLinker& Poblacion();
  CFieldLinker& Zona();

  // True for "txtPais", "txtProvincia", "txtPoblacion", "txtZona" (any case).
  static bool IsLocationBox(const std::string& controlName);

  // Restores a saved value into a location box through its linker: linker value set,
  // previous value set to it, the box shows the linker's value; so the restored location
  // counts as unchanged and clears nothing below. Raises like the control would.
  // A name that is not a location box raises error 5.
  void Restore(const std::string& controlName, const std::string& value);

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace cp
