#pragma once
// A messenger for tests and scripted runs: records every box it is asked to show and
// answers from queues; when a queue runs dry it declines (see DecliningAnswer) or returns
// the empty text.
#include <deque>
#include <string>
#include <vector>

#include "common/messenger.h"

namespace cp {

class ScriptedMessenger : public Messenger {
 public:
  struct Shown {
    bool is_prompt = false;  // an input box rather than a message box
    std::string text;        // the message or the prompt
    int flags = 0;           // message boxes only
    std::string title;
    std::string default_text;  // input boxes only
    bool modal_flag = false;   // gModalAbierto at the moment the box was shown
  };

  // The next message box is answered with this button.
  void QueueAnswer(int button) { answers_.push_back(button); }
  // The next input box is answered with this text.
  void QueueInput(std::string text) { inputs_.push_back(std::move(text)); }

  const std::vector<Shown>& shown() const { return shown_; }
  void ClearShown() { shown_.clear(); }

  int Show(const std::string& text, int flags, const std::string& title) override;
  std::string Ask(const std::string& prompt, const std::string& title,
                  const std::string& default_text) override;

 private:
  std::deque<int> answers_;
  std::deque<std::string> inputs_;
  std::vector<Shown> shown_;
};

}  // namespace cp
