// What the selection window's running count costs the typing: a keystroke in the words box
// of the property dialog with the count on, taken while a count runs on its worker thread,
// against the same keystroke in a window without the count, taken in the same iteration with
// no count running anywhere. Qt's offscreen platform; a demo database of
// CP_BENCH_COUNT_SIZE properties (100,000 unless told).
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTest>
#include <QTimer>

#include <chrono>
#include <cstdlib>
#include <memory>

#include "bench/demo_file.h"
#include "common/messenger.h"
#include "common/shared_state.h"
#include "platform/form/combo_box.h"
#include "platform/dao/connect.h"
#include "qt/form_view.h"
#include "qt/live_count_label.h"
#include "qt/qt_messenger.h"
#include "qt/qt_modal_runner.h"
#include "selection/c_seleccion.h"

namespace {

using Clock = std::chrono::steady_clock;

const DemoFile& Demo() {
  static const char* size = std::getenv("CP_BENCH_COUNT_SIZE");
  static const DemoFile demo("cp_bench_count", size ? std::atoi(size) : 100000);
  return demo;
}

void RunEvents(int milliseconds) {
  QElapsedTimer clock;
  clock.start();
  while (clock.elapsed() < milliseconds) QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
}

// A property dialog's window, shown without its modal loop, with the words box holding "e"
// to be looked for in the owner's name: every row must be read to count them.
struct Window {
  cp::CSeleccion selection;
  std::unique_ptr<cp::SelectionWindow> window;
  QWidget* words = nullptr;

  explicit Window(bool count) {
    selection.setLiveCount(count);
    selection.setEntidad("Inm. Propios");
    window = std::make_unique<cp::SelectionWindow>(selection.Dialog());
    window->show();
    selection.Dialog().SeleccionInm1().Controls().Get<cp::form::ComboBox>("cboEn").setText(
        "Propietario");
    words = window->View().NestedView("SeleccionInm1")->WidgetOf("txtPalabras");
    QTest::keyClick(words, 'e');
  }
  // One keystroke and the events it brings, in seconds. Odd keystrokes add a letter, even
  // ones take it away, so the criteria stay as slow to count.
  double Keystroke(int n) {
    const auto start = Clock::now();
    QTest::keyClick(words, n % 2 ? Qt::Key_A : Qt::Key_Backspace);
    QCoreApplication::processEvents();
    return std::chrono::duration<double>(Clock::now() - start).count();
  }
};

void BM_KeystrokeWhileCounting(benchmark::State& state) {
  auto database = cp::dao::OpenDatabase(Demo().path());
  cp::setBD(database);
  cp::setPathDB(Demo().path());
  Window on(true), off(false);
  cp::LiveCountLabel& count = *on.window->Count();
  double onSeconds = 0, offSeconds = 0, countSeconds = 0;
  int n = 0, counts = 0;
  for (auto _ : state) {
    ++n;
    // The reference: no count runs anywhere (the last one has ended).
    RunEvents(20);
    offSeconds += off.Keystroke(n);
    // The pause after the window's last keystroke passes: it starts its count.
    RunEvents(cp::LiveCountLabel::kPauseMs + 20);
    const double onTime = on.Keystroke(n);
    onSeconds += onTime;
    state.SetIterationTime(onTime);
    // That keystroke's own count runs to its end before the next reference is taken.
    QEventLoop shown;
    QObject::connect(&count, &cp::LiveCountLabel::countShown, &shown, &QEventLoop::quit);
    QTimer::singleShot(30000, &shown, &QEventLoop::quit);
    const auto started = Clock::now();
    shown.exec();
    countSeconds += std::chrono::duration<double>(Clock::now() - started).count();
    ++counts;
  }
  state.counters["ratio"] = offSeconds > 0 ? onSeconds / offSeconds : 0;
  state.counters["on_ms"] = 1000.0 * onSeconds / n;
  state.counters["off_ms"] = 1000.0 * offSeconds / n;
  // From the keystroke to its count on screen, the pause included.
  state.counters["count_ms"] = 1000.0 * countSeconds / counts;
  cp::setBD(nullptr);
}
BENCHMARK(BM_KeystrokeWhileCounting)->UseManualTime()->Unit(benchmark::kMicrosecond)->Iterations(20);

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  cp::SetMessenger(std::make_shared<cp::QtMessenger>());
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
