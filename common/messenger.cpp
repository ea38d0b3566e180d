#include "common/messenger.h"

#include "common/console_messenger.h"

namespace cp {
ProcessSlot<std::shared_ptr<Messenger>>& MessengerSlot() {
  static ProcessSlot<std::shared_ptr<Messenger>> slot(std::make_shared<ConsoleMessenger>());
  return slot;
}

int DecliningAnswer(int flags) {
  switch (flags & msg::kButtonsMask) {
    case msg::kOkCancel:
    case msg::kYesNoCancel:
    case msg::kRetryCancel:
      return msg::kCancel;
    case msg::kAbortRetryIgnore:
      return msg::kAbort;
    case msg::kYesNo:
      return msg::kNo;
    default:
      return msg::kOk;
  }
}

std::shared_ptr<Messenger> CurrentMessenger() {
  // A scope may have installed null; the console stands in, as after SetMessenger(nullptr).
  static const auto console = std::make_shared<ConsoleMessenger>();
  const auto& current = MessengerSlot().Get();
  return current ? current : console;
}

std::shared_ptr<Messenger> SetMessenger(std::shared_ptr<Messenger> messenger) {
  if (!messenger) messenger = std::make_shared<ConsoleMessenger>();
  return MessengerSlot().Set(std::move(messenger));
}

}  // namespace cp
