#include "qt/demo/screenshot.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QMessageBox>
#include <QPixmap>
#include <QThread>
#include <QWidget>
#include <QEventLoop>
#include <QTimer>
#include <ostream>
#include <sstream>
#include <unordered_set>

#include "platform/core/error.h"
#include "platform/form/command_button.h"
#include "platform/form/ss_tab.h"
#include "qt/demo/modal_watch.h"
#include "qt/list_picker_window.h"
#include "qt/live_count_label.h"
#include "selection/c_seleccion.h"

namespace cp {
namespace {

constexpr int kCleanExit = 0;
constexpr int kFailure = 2;
constexpr int kMinimumColours = 8;

// Lets pending layout and paint events run, so the picture shows the settled window.
void Settle() {
  QElapsedTimer clock;
  clock.start();
  while (clock.elapsed() < 150) {
    QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    QThread::msleep(5);
  }
}

}  // namespace

int DistinctColours(const QImage& image, int limit) {
  std::unordered_set<QRgb> colours;
  const QImage rgb = image.convertToFormat(QImage::Format_RGB32);
  for (int y = 0; y < rgb.height(); ++y) {
    const auto* line = reinterpret_cast<const QRgb*>(rgb.constScanLine(y));
    for (int x = 0; x < rgb.width(); ++x) {
      colours.insert(line[x]);
      if (static_cast<int>(colours.size()) >= limit) return limit;
    }
  }
  return static_cast<int>(colours.size());
}

bool LooksBlank(const std::string& file) {
  const QImage image(QString::fromStdString(file));
  return image.isNull() || DistinctColours(image, kMinimumColours) < kMinimumColours;
}

int TakeScreenshot(CSeleccion& selection, const ScreenshotRequest& request, std::ostream& err) {
  std::string failure;
  try {
    selection.setEntidad(request.entity);
  } catch (const Error& e) {
    err << "Entidad '" << request.entity << "': " << e.description() << "\n";
    return kFailure;
  }
  frmSeleccion& dialog = selection.Dialog();
  SelectionControl* shown = nullptr;
  if (dialog.SeleccionCli1Control().Visible()) shown = &dialog.SeleccionCli1();
  if (dialog.SeleccionInm1Control().Visible()) shown = &dialog.SeleccionInm1();
  if (!shown) {
    err << "La entidad '" << request.entity << "' no muestra ningún control de criterios.\n";
    return kFailure;
  }

  selection.setLiveCount(request.liveCount);
  bool saved = false;
  const auto picture = [&](QWidget& window) {
    Settle();
    const QString file = QString::fromStdString(request.file);
    if (window.grab().save(file, "PNG")) {
      saved = true;
    } else {
      failure = "No se puede escribir '" + request.file + "'.";
    }
  };
  // A message box (an error the component reports) would wait for a person: it is read,
  // closed and counted as the failure.
  ModalWatch messageWatch([](QWidget& w) { return qobject_cast<QMessageBox*>(&w) != nullptr; },
                          [&](QWidget& w) {
                            auto& box = static_cast<QMessageBox&>(w);
                            failure = "Mensaje inesperado: " + box.text().toStdString();
                            box.done(QMessageBox::Cancel);
                          });
  ModalWatch dialogWatch([](QWidget& w) { return qobject_cast<QMessageBox*>(&w) == nullptr; },
                         [&](QWidget& window) {
    try {
      // The window is activated first (the focus goes to the first criterion), as for a
      // person, before another tab is chosen.
      Settle();
      if (request.tab >= 0) shown->Controls().Get<form::SSTab>("tbsSelec").setTab(request.tab);
      std::ostringstream warnings;
      auto* count = window.findChild<LiveCountLabel*>();
      QEventLoop counted;
      if (count) QObject::connect(count, &LiveCountLabel::countShown, &counted, &QEventLoop::quit);
      for (const UserEntry& entry : request.entries)
        EnterUserEntry(shown->Controls(), entry, warnings);
      if (count) {
        QTimer::singleShot(10000, &counted, &QEventLoop::quit);
        counted.exec();
      }
      if (request.picker.empty()) {
        picture(window);
      } else {
        auto listWatch = WatchFor<ListPickerWindow>([&](ListPickerWindow& list) {
          picture(list);
          list.reject();
        });
        shown->Controls().Get<form::CommandButton>(request.picker).Press();
        if (!listWatch->Acted()) failure = request.picker + " no ha abierto la lista.";
      }
    } catch (const Error& e) {
      failure = e.description();
    }
    dialog.cmdCancelar_Click();
  });
  selection.mtdMostrar();
  if (!dialogWatch.Acted()) failure = "No se ha mostrado ninguna ventana.";
  if (!failure.empty() || !saved) {
    err << (failure.empty() ? "No se ha guardado ninguna imagen." : failure) << "\n";
    return kFailure;
  }
  return kCleanExit;
}

}  // namespace cp
