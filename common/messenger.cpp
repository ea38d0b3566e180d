#include "common/messenger.h"

#include "common/console_messenger.h"

namespace cp {
namespace {
std::shared_ptr<Messenger>& Current() {
  static std::shared_ptr<Messenger> current = std::make_shared<ConsoleMessenger>();
  return current;
}
}  // namespace

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

std::shared_ptr<Messenger> CurrentMessenger() { return Current(); }

std::shared_ptr<Messenger> SetMessenger(std::shared_ptr<Messenger> messenger) {
  if (!messenger) messenger = std::make_shared<ConsoleMessenger>();
  Current().swap(messenger);
  return messenger;
}

}  // namespace cp
