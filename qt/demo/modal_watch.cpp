#include "qt/demo/modal_watch.h"

#include <QApplication>

namespace cp {

ModalWatch::ModalWatch(std::function<bool(QWidget&)> accepts, std::function<void(QWidget&)> act,
                       int pollMs)
    : accepts_(std::move(accepts)), act_(std::move(act)), timer_(std::make_unique<QTimer>()) {
  timer_->setInterval(pollMs);
  QObject::connect(timer_.get(), &QTimer::timeout, [this] { Check(); });
  timer_->start();
}

ModalWatch::~ModalWatch() { timer_->stop(); }

void ModalWatch::Check() {
  QWidget* modal = QApplication::activeModalWidget();
  // Visible, so that a picture of it shows what a person sees.
  if (!modal || !modal->isVisible() || !accepts_(*modal)) return;
  // Stopped first: act may run a nested loop of its own (a window opened from this one).
  timer_->stop();
  acted_ = true;
  act_(*modal);
}

}  // namespace cp
