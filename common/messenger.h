#pragma once
// The messenger shows the component's message boxes and input boxes. The host installs the
// one that fits it (Qt boxes in the GUI, standard error on the command line, a scripted one
// in tests); the console messenger is the default. Flag and answer codes are the host's
// standard message-box codes.
#include <memory>
#include <string>

#include "platform/core/process_slot.h"

namespace cp {

namespace msg {
// Buttons (the low four bits of the flags).
inline constexpr int kOkOnly = 0x0;
inline constexpr int kOkCancel = 0x1;
inline constexpr int kAbortRetryIgnore = 0x2;
inline constexpr int kYesNoCancel = 0x3;
inline constexpr int kYesNo = 0x4;
inline constexpr int kRetryCancel = 0x5;
inline constexpr int kButtonsMask = 0xF;
// Icons and modality.
inline constexpr int kCritical = 0x10;
inline constexpr int kQuestion = 0x20;
inline constexpr int kExclamation = 0x30;
inline constexpr int kInformation = 0x40;
inline constexpr int kSystemModal = 0x1000;
// Answers.
inline constexpr int kOk = 1;
inline constexpr int kCancel = 2;
inline constexpr int kAbort = 3;
inline constexpr int kYes = 6;
inline constexpr int kNo = 7;
}  // namespace msg

class Messenger {
 public:
  virtual ~Messenger() = default;
  // Shows text (lines separated by CR LF) with the given flags; an empty title means none.
  // Returns the button pressed (msg::kOk, msg::kYes, msg::kNo...).
  virtual int Show(const std::string& text, int flags, const std::string& title) = 0;
  // Asks for a line of text; an empty title means none. Returns the typed text
  // (the empty text when the user cancels).
  virtual std::string Ask(const std::string& prompt, const std::string& title,
                          const std::string& default_text) = 0;
};

// What a user who declines answers to a box with these flags: OK for an OK-only box, No for
// a Yes/No question, Cancel or Abort where the buttons offer them.
int DecliningAnswer(int flags);

// The process-wide messenger; never null (the console messenger until the host sets one).
std::shared_ptr<Messenger> CurrentMessenger();
// Installs a messenger and returns the one it replaces; null reinstalls the console one.
std::shared_ptr<Messenger> SetMessenger(std::shared_ptr<Messenger> messenger);

// The slot behind CurrentMessenger.
ProcessSlot<std::shared_ptr<Messenger>>& MessengerSlot();

// Installs a messenger for one scope and puts the previous one back on every exit.
class ScopedMessenger : public ProcessSlot<std::shared_ptr<Messenger>>::Scoped {
 public:
  explicit ScopedMessenger(std::shared_ptr<Messenger> messenger)
      : Scoped(MessengerSlot(), std::move(messenger)) {}
};

}  // namespace cp
