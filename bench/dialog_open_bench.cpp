// How long the property dialog takes to appear on a large office database: from the host's call
// to the window's first paint, on Qt's offscreen platform. The reference is a plain dialog with
// one label, shown and painted the same way in the same run.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QTimer>
#include <QVBoxLayout>

#include <chrono>
#include <cstdlib>
#include <memory>
#include <string>

#include "bench/demo_file.h"
#include "common/messenger.h"
#include "platform/dao/connect.h"
#include "qt/qt_list_picker.h"
#include "qt/qt_messenger.h"
#include "qt/qt_modal_runner.h"
#include "selection/c_seleccion.h"
#include "selection/modal_runner.h"

namespace {

using Clock = std::chrono::steady_clock;

// The demo database of the size asked for in CP_BENCH_DIALOG_SIZE (100,000 properties unless
// told), made once per run.
const DemoFile& Demo() {
  static const char* size = std::getenv("CP_BENCH_DIALOG_SIZE");
  static const DemoFile demo("cp_bench_dialog", size ? std::atoi(size) : 100000);
  return demo;
}

// Closes the first top-level dialog at its first paint and notes when that was.
class FirstPaint : public QObject {
 public:
  Clock::time_point painted;

 protected:
  bool eventFilter(QObject* object, QEvent* event) override {
    if (event->type() == QEvent::Paint && !seen_) {
      auto* window = qobject_cast<QWidget*>(object);
      if (window && window->isWindow() && qobject_cast<QDialog*>(window)) {
        seen_ = true;
        painted = Clock::now();
        QTimer::singleShot(0, window, [window] { static_cast<QDialog*>(window)->reject(); });
      }
    }
    return false;
  }

 public:
  void Reset() { seen_ = false; }

 private:
  bool seen_ = false;
};

void BM_PropertyDialogFirstPaint(benchmark::State& state) {
  const DemoFile& demo = Demo();
  FirstPaint watch;
  qApp->installEventFilter(&watch);
  auto database = cp::dao::OpenDatabase(demo.path());
  double dialogSeconds = 0, plainSeconds = 0;
  for (auto _ : state) {
    {
      QDialog plain;
      auto* layout = new QVBoxLayout(&plain);
      layout->addWidget(new QLabel(QStringLiteral("Selección"), &plain));
      watch.Reset();
      const auto start = Clock::now();
      plain.exec();
      plainSeconds += std::chrono::duration<double>(watch.painted - start).count();
    }
    cp::CSeleccion selection;
    selection.setBD(database);
    selection.setPathDB(demo.path());
    watch.Reset();
    const auto start = Clock::now();
    selection.setEntidad("Inm. Propios");
    selection.mtdMostrar();
    const double seconds = std::chrono::duration<double>(watch.painted - start).count();
    dialogSeconds += seconds;
    state.SetIterationTime(seconds);
  }
  qApp->removeEventFilter(&watch);
  state.counters["ratio"] = plainSeconds > 0 ? dialogSeconds / plainSeconds : 0;
  state.counters["ms"] = 1000.0 * dialogSeconds / static_cast<double>(state.iterations());
}
BENCHMARK(BM_PropertyDialogFirstPaint)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(20);

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  cp::RegisterCSeleccion();
  cp::RegisterQtListPicker();
  cp::SetMessenger(std::make_shared<cp::QtMessenger>());
  cp::SetModalRunner(std::make_shared<cp::QtModalRunner>());
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
