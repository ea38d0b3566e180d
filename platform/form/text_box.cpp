#include "platform/form/text_box.h"

#include <algorithm>

namespace cp::form {
namespace {

// Byte offset of the character at position chars (or the end of the text).
std::size_t ByteOffset(std::string_view text, int chars) {
  std::size_t i = 0;
  for (int n = 0; i < text.size(); ++i) {
    if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80) {
      if (n == chars) return i;
      ++n;
    }
  }
  return text.size();
}

}  // namespace

int CharacterCount(std::string_view text) {
  return static_cast<int>(std::count_if(text.begin(), text.end(), [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  }));
}

TextBox::TextBox(ControlContainer& container, std::string name, int index)
    : Control(container, std::move(name), index) {}

void TextBox::setText(std::string text) {
  // An edit control's text is a C string: it holds nothing from the first NUL on.
  if (const auto nul = text.find('\0'); nul != std::string::npos) text.resize(nul);
  if (text == text_) return;
  text_ = std::move(text);
  selStart_ = 0;
  selLength_ = 0;
  NotifyChanged("Text");
  Change.Fire();
}

void TextBox::setSelStart(int start) {
  if (start < 0) RaiseInvalidValue();
  selStart_ = std::min(start, CharacterCount(text_));
  selLength_ = 0;
  NotifyChanged("SelStart");
}

void TextBox::setSelLength(int length) {
  if (length < 0) RaiseInvalidValue();
  selLength_ = std::min(length, CharacterCount(text_) - selStart_);
  NotifyChanged("SelLength");
}

std::string TextBox::SelText() const {
  const std::size_t from = ByteOffset(text_, selStart_);
  const std::size_t to = ByteOffset(text_, selStart_ + selLength_);
  return text_.substr(from, to - from);
}

void TextBox::setLocked(bool locked) {
  if (locked == locked_) return;
  locked_ = locked;
  NotifyChanged("Locked");
}

void TextBox::setMaxLength(int maxLength) {
  if (maxLength < 0) RaiseInvalidValue();
  if (maxLength == maxLength_) return;
  maxLength_ = maxLength;
  NotifyChanged("MaxLength");
}

}  // namespace cp::form
