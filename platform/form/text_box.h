#pragma once
// TextBox: a single-line text box. Text is UTF-8; SelStart and SelLength count characters.
#include <string>

#include "platform/form/control.h"

namespace cp::form {

class TextBox : public Control {
 public:
  TextBox(ControlContainer& container, std::string name, int index);
  std::string TypeName() const override { return "TextBox"; }

  const std::string& Text() const { return text_; }
  // Sets the text; when it differs, the caret goes to the start (SelStart 0, SelLength 0),
  // observers hear "Text" and Change fires. The same text changes nothing and fires nothing.
  // Locked and MaxLength do not restrict code, only typing (the view applies them). The text
  // ends at its first NUL, if any, as an edit control's does.
  void setText(std::string text);

  // Caret and selection in characters. A negative value raises 380; values past the end are
  // cut to the text, as the runtime does.
  int SelStart() const { return selStart_; }
  void setSelStart(int start);
  int SelLength() const { return selLength_; }
  void setSelLength(int length);
  // The selected text.
  std::string SelText() const;

  bool Locked() const { return locked_; }
  void setLocked(bool locked);
  // Most characters the user may type; 0 means no limit. Negative raises 380.
  int MaxLength() const { return maxLength_; }
  void setMaxLength(int maxLength);

  Event<> Change;

 private:
  std::string text_;
  int selStart_ = 0;
  int selLength_ = 0;
  bool locked_ = false;
  int maxLength_ = 0;
};

// Number of characters (code points) of UTF-8 text.
int CharacterCount(std::string_view text);

}  // namespace cp::form
