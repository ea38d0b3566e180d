#include "qt/criteria_widget.h"

#include <string_view>

#include <QMetaObject>
#include <QShowEvent>
#include <QVBoxLayout>

#include "platform/form/ss_tab.h"
#include "qt/condition_properties.h"
#include "qt/form_view.h"

namespace cp {

CriteriaControlWidget::CriteriaControlWidget(std::shared_ptr<CriteriaControlObject> object,
                                             QWidget* parent)
    : QWidget(parent), object_(std::move(object)) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  view_ = new FormView(Control().Controls(), this);
  layout->addWidget(view_);
  setObjectName(QString::fromStdString(Control().ClassName()));
  observerId_ = Control().Controls().AddObserver(
      [this](form::Control&, std::string_view property) {
        if (ChangesCondition(property)) ScheduleChanged();
      });
}

CriteriaControlWidget::~CriteriaControlWidget() {
  Control().Controls().RemoveObserver(observerId_);
  view_->Detach();
}

void CriteriaControlWidget::ScheduleChanged() {
  if (changePending_) return;
  changePending_ = true;
  QMetaObject::invokeMethod(
      this,
      [this] {
        changePending_ = false;
        emit criteriaChanged();
      },
      Qt::QueuedConnection);
}

int CriteriaControlWidget::Pestania() const { return Control().Pestania(); }

void CriteriaControlWidget::setPestania(int tab) {
  // A Qt setter cannot raise, and the control would keep a tab it then refuses: a tab the
  // strip does not have is not passed on.
  if (tab < 0 || tab >= Control().Controls().Get<form::SSTab>("tbsSelec").Tabs()) return;
  Control().setPestania(static_cast<std::int16_t>(tab));
}

QString CriteriaControlWidget::NomTab(int tab) const {
  return QString::fromStdString(Control().NomTab(tab));
}

void CriteriaControlWidget::setNomTab(int tab, const QString& caption) {
  Control().setNomTab(tab, caption.toStdString());
}

void CriteriaControlWidget::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (!event->spontaneous()) UserControl_Show();
}

SeleccionCliWidget::SeleccionCliWidget(QWidget* parent)
    : CriteriaControlWidget(std::make_shared<SeleccionCliObject>(), parent),
      cli_(static_cast<SeleccionCliObject&>(*Object())) {}

SeleccionInmWidget::SeleccionInmWidget(QWidget* parent)
    : CriteriaControlWidget(std::make_shared<SeleccionInmObject>(), parent),
      inm_(static_cast<SeleccionInmObject&>(*Object())) {}

}  // namespace cp
