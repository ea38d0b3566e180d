#include "qt/live_count_label.h"

#include <string_view>

#include <QMetaObject>

#include "platform/form/control_container.h"
#include "qt/condition_properties.h"
#include "selection/frm_seleccion.h"

namespace cp {

LiveCountLabel::LiveCountLabel(frmSeleccion& dialog, QWidget* parent)
    : QLabel(parent), dialog_(&dialog) {
  setObjectName(QStringLiteral("lblCuenta"));
  setText(QStringLiteral("Contando…"));  // until the first count; later ones keep the last
  pause_.setSingleShot(true);
  pause_.setInterval(kPauseMs);
  connect(&pause_, &QTimer::timeout, this, [this] { Start(); });
  worker_ = std::make_unique<CountWorker>([this](std::uint64_t ticket, CountWorker::Result r) {
    QMetaObject::invokeMethod(this, [this, ticket, r] { Show(ticket, r); }, Qt::QueuedConnection);
  });
  for (form::ControlContainer* inputs : {static_cast<form::ControlContainer*>(&dialog.Controls()),
                                         &dialog.SeleccionCli1().Controls(),
                                         &dialog.SeleccionInm1().Controls()}) {
    const int id = inputs->AddObserver([this](form::Control&, std::string_view property) {
      if (ChangesCondition(property)) Changed();
    });
    observers_.emplace_back(inputs, id);
  }
  Changed();  // the criteria as the window opens
}

LiveCountLabel::~LiveCountLabel() {
  Detach();
  worker_.reset();  // joins the thread before anything it delivers to goes
}

void LiveCountLabel::Detach() {
  for (auto& [inputs, id] : observers_) inputs->RemoveObserver(id);
  observers_.clear();
  pause_.stop();
  dialog_ = nullptr;
  if (worker_) worker_->Cancel();
}

void LiveCountLabel::Changed() {
  // A count of criteria that are no longer those on screen is dropped at once; each change
  // starts the pause again, and the next count starts once the inputs rest.
  if (!dialog_ || building_) return;
  worker_->Cancel();
  latest_ = 0;
  pause_.start();
}

void LiveCountLabel::Start() {
  if (!dialog_ || !dialog_->Loaded()) return;
  building_ = true;
  std::optional<CountQuery> query = LiveCountQuery(*dialog_);
  building_ = false;
  if (!query) {
    worker_->Cancel();
    latest_ = 0;
    setText(QString::fromUtf8(kUnknown));
    emit countShown();
    return;
  }
  entity_ = query->entity;
  latest_ = worker_->Submit(std::move(*query));
}

void LiveCountLabel::Show(std::uint64_t ticket, CountWorker::Result result) {
  if (ticket != latest_ || !dialog_) return;
  setText(QString::fromStdString(result && entity_ ? CountText(*entity_, *result) : kUnknown));
  emit countShown();
}

}  // namespace cp
