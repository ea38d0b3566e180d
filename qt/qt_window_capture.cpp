#include "qt/qt_window_capture.h"

#include <QApplication>
#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QWidget>
#include <algorithm>
#include <vector>

namespace cp {

std::optional<std::string> QtWindowCapture::CapturePng() {
  if (!qobject_cast<QApplication*>(QCoreApplication::instance())) return std::nullopt;
  QCoreApplication::processEvents();

  std::vector<QWidget*> windows;
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    if (widget->isVisible() && widget->width() > 0 && widget->height() > 0)
      windows.push_back(widget);
  }
  std::stable_partition(windows.begin(), windows.end(),
                        [](QWidget* w) { return w == QApplication::activeWindow(); });
  if (windows.empty()) return std::nullopt;

  constexpr int kGap = 8;
  std::vector<QPixmap> pictures;
  int width = 0, height = 0;
  for (QWidget* window : windows) {
    pictures.push_back(window->grab());
    // The page is in device pixels: each picture keeps its own resolution.
    width = std::max(width, pictures.back().width());
    height += pictures.back().height() + (pictures.size() > 1 ? kGap : 0);
  }
  QImage page(width, height, QImage::Format_RGB32);
  page.fill(Qt::white);
  {
    QPainter painter(&page);
    int y = 0;
    for (const QPixmap& picture : pictures) {
      QImage image = picture.toImage();
      image.setDevicePixelRatio(1.0);
      painter.drawImage(0, y, image);
      y += picture.height() + kGap;
    }
  }
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  if (!page.save(&buffer, "PNG")) return std::nullopt;
  return std::string(bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

}  // namespace cp
