#include "qt/qt_messenger.h"

#include <QAbstractButton>
#include <QApplication>
#include <QInputDialog>
#include <QPushButton>

namespace cp {
namespace {

QWidget* BoxParent() {
  if (QWidget* modal = QApplication::activeModalWidget()) return modal;
  return QApplication::activeWindow();
}

}  // namespace

QMessageBox::Icon IconForFlags(int flags) {
  switch (flags & 0x70) {
    case msg::kCritical: return QMessageBox::Critical;
    case msg::kQuestion: return QMessageBox::Question;
    case msg::kExclamation: return QMessageBox::Warning;
    case msg::kInformation: return QMessageBox::Information;
    default: return QMessageBox::NoIcon;
  }
}

std::vector<BoxButton> ButtonsForFlags(int flags) {
  const BoxButton ok{QMessageBox::Ok, QStringLiteral("Aceptar"), msg::kOk};
  const BoxButton cancel{QMessageBox::Cancel, QStringLiteral("Cancelar"), msg::kCancel};
  const BoxButton abort{QMessageBox::Abort, QStringLiteral("Anular"), msg::kAbort};
  const BoxButton retry{QMessageBox::Retry, QStringLiteral("Reintentar"), 4};
  const BoxButton ignore{QMessageBox::Ignore, QStringLiteral("Omitir"), 5};
  const BoxButton yes{QMessageBox::Yes, QStringLiteral("Sí"), msg::kYes};
  const BoxButton no{QMessageBox::No, QStringLiteral("No"), msg::kNo};
  switch (flags & msg::kButtonsMask) {
    case msg::kOkCancel: return {ok, cancel};
    case msg::kAbortRetryIgnore: return {abort, retry, ignore};
    case msg::kYesNoCancel: return {yes, no, cancel};
    case msg::kYesNo: return {yes, no};
    case msg::kRetryCancel: return {retry, cancel};
    default: return {ok};
  }
}

QString MessageText(const std::string& text) {
  QString shown = QString::fromStdString(text);
  shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
  shown.replace(QLatin1Char('\r'), QLatin1Char('\n'));
  return shown;
}

int QtMessenger::Show(const std::string& text, int flags, const std::string& title) {
  QMessageBox box(BoxParent());
  box.setIcon(IconForFlags(flags));
  box.setText(MessageText(text));
  box.setTextFormat(Qt::PlainText);
  if (!title.empty()) box.setWindowTitle(QString::fromStdString(title));
  const std::vector<BoxButton> buttons = ButtonsForFlags(flags);
  std::vector<std::pair<QAbstractButton*, int>> answers;
  for (const BoxButton& b : buttons) {
    QPushButton* pushed = box.addButton(b.button);
    pushed->setText(b.text);
    answers.emplace_back(pushed, b.answer);
  }
  const std::size_t preferred = (flags & 0x200) ? 2 : (flags & 0x100) ? 1 : 0;
  box.setDefaultButton(
      static_cast<QPushButton*>(answers[std::min(preferred, answers.size() - 1)].first));
  box.exec();
  QAbstractButton* clicked = box.clickedButton();
  for (const auto& [button, answer] : answers)
    if (button == clicked) return answer;
  // Closed without a button (Escape on a box that offers Cancel or only OK).
  return buttons.size() == 1 ? msg::kOk : msg::kCancel;
}

std::string QtMessenger::Ask(const std::string& prompt, const std::string& title,
                             const std::string& default_text) {
  QInputDialog box(BoxParent());
  box.setInputMode(QInputDialog::TextInput);
  box.setLabelText(MessageText(prompt));
  box.setTextValue(QString::fromStdString(default_text));
  box.setOkButtonText(QStringLiteral("Aceptar"));
  box.setCancelButtonText(QStringLiteral("Cancelar"));
  if (!title.empty()) box.setWindowTitle(QString::fromStdString(title));
  if (box.exec() != QDialog::Accepted) return {};
  return box.textValue().toStdString();
}

}  // namespace cp
