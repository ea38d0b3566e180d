#include "qt/list_picker_window.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSet>
#include <QVBoxLayout>
#include <algorithm>

namespace cp {
namespace {

constexpr int kMinWidth = 320;
constexpr int kMaxWidth = 1000;
constexpr int kMinHeight = 260;
constexpr int kMaxHeight = 480;
constexpr int kRowsShownAtMost = 16;

QString CaseKey(const QString& value) { return value.toCaseFolded(); }

}  // namespace

QStringList SplitChosen(const QString& text) {
  QStringList values;
  for (const QString& piece : text.split(QLatin1Char(';'))) {
    const QString value = piece.trimmed();
    if (!value.isEmpty()) values.push_back(value);
  }
  return values;
}

QString JoinChosen(const QStringList& values) {
  QString text;
  for (const QString& value : values) text += value + QStringLiteral("; ");
  return text;
}

QString FoldForFilter(const QString& text) {
  QString folded;
  const QString decomposed = text.normalized(QString::NormalizationForm_D);
  folded.reserve(decomposed.size());
  for (const QChar c : decomposed) {
    if (c.category() != QChar::Mark_NonSpacing) folded += c;
  }
  return folded.toCaseFolded();
}

int WidthForAnchura(int anchura) {
  return std::clamp(anchura / 15, kMinWidth, kMaxWidth);
}

ListPickerWindow::ListPickerWindow(const QString& title, int widthPixels,
                                   const QStringList& values, const QString& chosen,
                                   QWidget* parent)
    : QDialog(parent) {
  setWindowTitle(title);
  setModal(true);

  filter_ = new QLineEdit(this);
  filter_->setObjectName(QStringLiteral("txtFiltro"));
  filter_->setPlaceholderText(QStringLiteral("Filtrar…"));
  filter_->setClearButtonEnabled(true);

  list_ = new QListWidget(this);
  list_->setObjectName(QStringLiteral("lstValores"));
  list_->setUniformItemSizes(true);
  list_->setAlternatingRowColors(true);
  list_->setSpacing(1);

  count_ = new QLabel(this);
  count_->setObjectName(QStringLiteral("lblMarcados"));

  auto* buttons = new QDialogButtonBox(this);
  accept_ = buttons->addButton(QStringLiteral("&Aceptar"), QDialogButtonBox::AcceptRole);
  accept_->setObjectName(QStringLiteral("cmdAceptar"));
  accept_->setDefault(true);
  cancel_ = buttons->addButton(QStringLiteral("&Cancelar"), QDialogButtonBox::RejectRole);
  cancel_->setObjectName(QStringLiteral("cmdCancelar"));

  auto* bottom = new QHBoxLayout;
  bottom->addWidget(count_, 1);
  bottom->addWidget(buttons);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(filter_);
  layout->addWidget(list_, 1);
  layout->addLayout(bottom);

  // Ticks are matched ignoring case, so "piso" in the box ticks "Piso" of the table.
  QStringList wanted = SplitChosen(chosen);
  QSet<QString> wantedKeys;
  for (const QString& value : wanted) wantedKeys.insert(CaseKey(value));
  QSet<QString> listed;
  for (const QString& value : values) {
    if (listed.contains(CaseKey(value))) continue;  // a statement may repeat a value
    auto* item = new QListWidgetItem(value, list_);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
    item->setCheckState(wantedKeys.contains(CaseKey(value)) ? Qt::Checked : Qt::Unchecked);
    listed.insert(CaseKey(value));
  }
  for (const QString& value : wanted) {
    if (listed.contains(CaseKey(value))) continue;
    auto* item = new QListWidgetItem(value, list_);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
    item->setCheckState(Qt::Checked);
    item->setToolTip(QStringLiteral("No figura en la tabla"));
    listed.insert(CaseKey(value));
  }
  // The first ticked value is brought into view; otherwise the first row is current.
  int current = 0;
  while (current < list_->count() && list_->item(current)->checkState() != Qt::Checked) ++current;
  if (list_->count() > 0) list_->setCurrentRow(current < list_->count() ? current : 0);

  connect(filter_, &QLineEdit::textChanged, this, &ListPickerWindow::ApplyFilter);
  connect(list_, &QListWidget::itemChanged, this, &ListPickerWindow::ShowTickedCount);
  // A double click on a row ticks it, as a click on its box does.
  connect(list_, &QListWidget::itemActivated, this, &ListPickerWindow::Toggle);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

  // Tall enough for the list without scrolling up to a point, and no taller.
  const int rowHeight = list_->count() > 0 ? list_->sizeHintForRow(0) + 2 * list_->spacing() : 0;
  const int chrome = sizeHint().height() - list_->sizeHint().height();
  const int height = chrome + rowHeight * std::min(list_->count(), kRowsShownAtMost) +
                     2 * list_->frameWidth() + 8;
  resize(widthPixels, std::clamp(height, kMinHeight, kMaxHeight));

  filter_->installEventFilter(this);
  list_->installEventFilter(this);
  ShowTickedCount();
  filter_->setFocus();
}

bool ListPickerWindow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (watched == list_ && (key == Qt::Key_Return || key == Qt::Key_Enter)) {
      accept();
      return true;
    }
    if (watched == filter_ && key == Qt::Key_Down && list_->count() > 0) {
      list_->setFocus();
      return true;
    }
  }
  return QDialog::eventFilter(watched, event);
}

QString ListPickerWindow::Chosen() const {
  QStringList ticked;
  for (int row = 0; row < list_->count(); ++row) {
    const QListWidgetItem* item = list_->item(row);
    if (item->checkState() == Qt::Checked) ticked.push_back(item->text());
  }
  return JoinChosen(ticked);
}

void ListPickerWindow::ApplyFilter(const QString& text) {
  const QString wanted = FoldForFilter(text.trimmed());
  QListWidgetItem* firstShown = nullptr;
  for (int row = 0; row < list_->count(); ++row) {
    QListWidgetItem* item = list_->item(row);
    const bool shown = wanted.isEmpty() || FoldForFilter(item->text()).contains(wanted);
    item->setHidden(!shown);
    if (shown && !firstShown) firstShown = item;
  }
  // Keeps Space and Enter acting on a row the user can see.
  if (firstShown && (!list_->currentItem() || list_->currentItem()->isHidden()))
    list_->setCurrentItem(firstShown);
}

void ListPickerWindow::ShowTickedCount() {
  int ticked = 0;
  for (int row = 0; row < list_->count(); ++row)
    if (list_->item(row)->checkState() == Qt::Checked) ++ticked;
  count_->setText(ticked == 1 ? QStringLiteral("1 marcado")
                              : QStringLiteral("%1 marcados").arg(ticked));
}

void ListPickerWindow::Toggle(QListWidgetItem* item) {
  if (!item) return;
  item->setCheckState(item->checkState() == Qt::Checked ? Qt::Unchecked : Qt::Checked);
}

}  // namespace cp
