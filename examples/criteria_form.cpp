// A host form with the property criteria control placed on it, as a host places any widget:
// the control's condition (SelecWhere) is shown below it, updated as the user types, with the
// number of properties it selects.
//
//   criteria_form DATABASE [--type TEXT]
//
// DATABASE is an SQLite file (or a postgresql:// URI) with the agency schema. With --type the
// program types TEXT into the words box itself, checks that the condition shown changed and
// selects some properties, prints it and exits (0, or 1 when it did not); run it so with
// QT_QPA_PLATFORM=offscreen where there is no display.
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>
#include <QWidget>
#include <iostream>
#include <memory>
#include <string>

#include "common/entity_catalogue.h"
#include "common/shared_state.h"
#include "platform/core/error.h"
#include "platform/dao/connect.h"
#include "qt/criteria_widget.h"

namespace {

const std::string kEntity = "Inm. Propios";

class HostForm : public QWidget {
 public:
  explicit HostForm(std::shared_ptr<cp::dao::Database> db) : db_(std::move(db)) {
    setWindowTitle(QStringLiteral("Inmuebles"));
    auto* layout = new QVBoxLayout(this);
    criteria_ = new cp::SeleccionInmWidget(this);
    criteria_->setNomTab0(QStringLiteral(" Situación "));  // as the form's designer set it
    layout->addWidget(criteria_);
    condition_ = new QLabel(this);
    condition_->setWordWrap(true);
    condition_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout->addWidget(condition_);
    criteria_->Control().SelecEn(kEntity);
    connect(criteria_, &cp::CriteriaControlWidget::criteriaChanged, this, &HostForm::ShowCondition);
    ShowCondition();
  }

  cp::SeleccionInmWidget& Criteria() const { return *criteria_; }
  const std::string& Condition() const { return where_; }
  long Selected() const { return selected_; }

 private:
  void ShowCondition() {
    where_ = criteria_->Control().SelecWhere();
    const std::string table = cp::FindEntity(kEntity)->table;
    selected_ = db_->OpenRecordset("SELECT * FROM " + table +
                                   (where_.empty() ? "" : " WHERE " + where_))
                    .RecordCount();
    condition_->setText(QString::fromStdString(
        "SelecWhere: " + where_ + "\n" + kEntity + ": " + std::to_string(selected_)));
  }

  std::shared_ptr<cp::dao::Database> db_;
  cp::SeleccionInmWidget* criteria_;
  QLabel* condition_;
  std::string where_;
  long selected_ = 0;
};

// Types text into a box key by key, as the user would.
void Type(QWidget& box, const QString& text) {
  box.setFocus();
  for (const QChar c : text) {
    QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(c));
    QCoreApplication::sendEvent(&box, &press);
    QKeyEvent release(QEvent::KeyRelease, 0, Qt::NoModifier, QString(c));
    QCoreApplication::sendEvent(&box, &release);
  }
}

}  // namespace

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  const QStringList args = app.arguments();
  if (args.size() < 2) {
    std::cerr << "usage: criteria_form DATABASE [--type TEXT]\n";
    return 2;
  }
  const int typeAt = args.indexOf(QStringLiteral("--type"));
  try {
    // The control reads the component-wide database, which the host sets once.
    auto db = cp::dao::OpenDatabase(args[1].toStdString());
    cp::setBD(db);
    HostForm form(db);
    form.show();
    if (typeAt < 0 || typeAt + 1 >= args.size()) return app.exec();

    const std::string before = form.Condition();
    auto* words = form.Criteria().findChild<QLineEdit*>(QStringLiteral("txtPalabras"));
    if (!words) {
      std::cerr << "The words box is missing.\n";
      return 1;
    }
    Type(*words, args[typeAt + 1]);
    QCoreApplication::processEvents();  // the change reaches the form from the event loop
    std::cout << "SelecWhere: " << form.Condition() << "\n"
              << kEntity << ": " << form.Selected() << "\n";
    if (form.Condition() == before || form.Selected() == 0) {
      std::cerr << "Typing did not give a condition that selects properties.\n";
      return 1;
    }
    return 0;
  } catch (const cp::Error& e) {
    std::cerr << "Error " << e.number() << ": " << e.description() << "\n";
    return 1;
  }
}
