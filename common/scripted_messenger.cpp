#include "common/scripted_messenger.h"

#include "common/modal.h"

namespace cp {

int ScriptedMessenger::Show(const std::string& text, int flags, const std::string& title) {
  shown_.push_back({false, text, flags, title, {}, gModalAbierto()});
  if (answers_.empty()) return DecliningAnswer(flags);
  const int answer = answers_.front();
  answers_.pop_front();
  return answer;
}

std::string ScriptedMessenger::Ask(const std::string& prompt, const std::string& title,
                                   const std::string& default_text) {
  shown_.push_back({true, prompt, 0, title, default_text, gModalAbierto()});
  if (inputs_.empty()) return {};
  std::string input = std::move(inputs_.front());
  inputs_.pop_front();
  return input;
}

}  // namespace cp
