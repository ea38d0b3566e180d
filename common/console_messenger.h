#pragma once
// The messenger of a process without windows: every message goes to a text stream
// (standard error by default) and nobody answers, so each box gets the declining answer
// (a Yes/No question is answered No) and each input box the empty text.
#include <iosfwd>

#include "common/messenger.h"

namespace cp {

class ConsoleMessenger : public Messenger {
 public:
  // out must outlive the messenger.
  explicit ConsoleMessenger(std::ostream& out);
  ConsoleMessenger();  // standard error

  int Show(const std::string& text, int flags, const std::string& title) override;
  std::string Ask(const std::string& prompt, const std::string& title,
                  const std::string& default_text) override;

 private:
  std::ostream& out_;
};

}  // namespace cp
