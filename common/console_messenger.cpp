#include "common/console_messenger.h"

#include <iostream>

namespace cp {
namespace {
// Messages use CR LF between lines; a terminal wants LF.
std::string ToTerminalLines(const std::string& text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') continue;
    out += text[i];
  }
  return out;
}
}  // namespace

ConsoleMessenger::ConsoleMessenger(std::ostream& out) : out_(out) {}
ConsoleMessenger::ConsoleMessenger() : out_(std::cerr) {}

int ConsoleMessenger::Show(const std::string& text, int flags, const std::string& title) {
  if (!title.empty()) out_ << "[" << title << "]\n";
  out_ << ToTerminalLines(text) << "\n";
  const int answer = DecliningAnswer(flags);
  if (answer == msg::kNo) out_ << "-> No\n";
  out_.flush();
  return answer;
}

std::string ConsoleMessenger::Ask(const std::string& prompt, const std::string& title,
                                  const std::string& default_text) {
  if (!title.empty()) out_ << "[" << title << "]\n";
  out_ << ToTerminalLines(prompt) << "\n-> (sin respuesta)\n";
  out_.flush();
  return {};
}

}  // namespace cp
