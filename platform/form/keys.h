#pragma once
// The runtime's key codes and shift masks that the criteria controls react to.
namespace cp::form {

inline constexpr int vbKeyReturn = 13;
inline constexpr int vbKeyEscape = 27;
inline constexpr int vbKeyDelete = 46;

inline constexpr int vbShiftMask = 1;
inline constexpr int vbCtrlMask = 2;
inline constexpr int vbAltMask = 4;

}  // namespace cp::form
