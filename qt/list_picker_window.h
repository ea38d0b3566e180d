#pragma once
// ListPickerWindow: the modal multi-selection list that the list picker shows. A filter box
// narrows the list as the user types (ignoring case and accents), each value has a check
// box, and Aceptar/Cancelar close it. Values that the chosen text names but the list lacks
// are kept, ticked, at the end, so that accepting never drops what the box already held.
//
// Child widgets carry object names so that tests and screenshots find them: "txtFiltro",
// "lstValores", "lblMarcados", "cmdAceptar", "cmdCancelar".
#include <QDialog>
#include <QString>
#include <QStringList>

class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QPushButton;

namespace cp {

class ListPickerWindow : public QDialog {
  Q_OBJECT

 public:
  // values: the list, in display order. chosen: a criterion's text ("X; Y; "); its values
  // start ticked. widthPixels: the window's width (see WidthForAnchura).
  ListPickerWindow(const QString& title, int widthPixels, const QStringList& values,
                   const QString& chosen, QWidget* parent = nullptr);

  // The ticked values in list order, each followed by "; "; "" when none is ticked.
  QString Chosen() const;

  QLineEdit& filterBox() const { return *filter_; }
  QListWidget& list() const { return *list_; }
  QPushButton& acceptButton() const { return *accept_; }
  QPushButton& cancelButton() const { return *cancel_; }

 protected:
  // Enter in the list accepts (without ticking the current row); Down in the filter box
  // moves into the list.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void ApplyFilter(const QString& text);
  void ShowTickedCount();
  void Toggle(QListWidgetItem* item);

  QLineEdit* filter_ = nullptr;
  QListWidget* list_ = nullptr;
  QLabel* count_ = nullptr;
  QPushButton* accept_ = nullptr;
  QPushButton* cancel_ = nullptr;
};

// The values of a criterion's text: split at ";", trimmed, empty pieces dropped.
QStringList SplitChosen(const QString& text);

// The criterion's text for values: each followed by "; ".
QString JoinChosen(const QStringList& values);

// A text folded for matching as a person types: lower case, accents removed ("Población"
// and "POBLACION" both give "poblacion").
QString FoldForFilter(const QString& text);

// The window width in pixels for the picker's anchura (twips of the original platform,
// 15 to a pixel), widened to what today's fonts need and kept below a screen's width.
int WidthForAnchura(int anchura);

}  // namespace cp
