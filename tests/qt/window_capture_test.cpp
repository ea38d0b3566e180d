// The picture of the windows in the support report, taken from real widgets offscreen.
#include <QImage>
#include <cstdlib>
#include <filesystem>
#include <QWidget>

#include "common/error_handler.h"
#include "common/error_log.h"
#include "common/messages.h"
#include "common/scripted_messenger.h"
#include "common/window_capture.h"
#include "qt/qt_window_capture.h"
#include "tests/qt/gui_support.h"
#include "tests/support/zip_entries.h"

namespace cp::testing {
namespace {

TEST(QtWindowCaptureTest, TheReportArchiveHoldsAPictureOfTheOpenWindows) {
  ProcessSlot<std::shared_ptr<WindowCapture>>::Scoped capture(
      WindowCaptureSlot(), std::make_shared<QtWindowCapture>());
  EXPECT_EQ(CurrentWindowCapture()->CapturePng(), std::nullopt);  // no window open

  QWidget window;
  window.setFixedSize(220, 140);
  window.setAutoFillBackground(true);
  QPalette palette = window.palette();
  palette.setColor(QPalette::Window, QColor(200, 30, 40));
  window.setPalette(palette);
  window.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));

  char pattern[] = "/tmp/cp-capture-test-XXXXXX";
  ASSERT_NE(mkdtemp(pattern), nullptr);
  const std::string folder = pattern;
  const std::string saved_path = getenv("PATH") ? getenv("PATH") : "";
  setenv("PATH", folder.c_str(), 1);  // no mail client: the user is told where the archive is
  setErrLogPath(folder);
  setReportSent(false);
  auto messenger = std::make_shared<ScriptedMessenger>();
  messenger->QueueAnswer(msg::kYes);
  ScopedMessenger scoped(messenger);
  ManejarError("cmdAceptar_Click en frmSeleccion", Error(5, "Llamada no válida"));
  setenv("PATH", saved_path.c_str(), 1);
  setErrLogPath("");
  setReportSent(false);

  ASSERT_EQ(messenger->shown().size(), 2u);
  const std::string archive = messenger->shown()[1].text.substr(
      messenger->shown()[1].text.find(folder + "/Incidencia-"));
  const auto entries = ZipEntries(archive);
  std::filesystem::remove_all(folder);
  ASSERT_EQ(entries.count("Captura.png"), 1u) << archive;
  const std::string& png = entries.at("Captura.png");
  const QImage picture = QImage::fromData(reinterpret_cast<const uchar*>(png.data()),
                                          static_cast<int>(png.size()), "PNG");
  ASSERT_FALSE(picture.isNull());
  EXPECT_GE(picture.width(), 220);
  EXPECT_GE(picture.height(), 140);
  EXPECT_EQ(picture.pixelColor(10, 10), QColor(200, 30, 40));  // the window, not a blank page
}

}  // namespace
}  // namespace cp::testing
