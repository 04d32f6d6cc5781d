#include "window/icons.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QPixmapCache>
#include <algorithm>
#include <utility>

// The macro names a function outside every namespace.
static void InitialiseResources() {
  Q_INIT_RESOURCE(window);
}

namespace quorvelant {

namespace {

constexpr int PlainSize = 24;  // of a drawing; twice that where the name ends in "@2x"

QColor ColorFor(QIcon::Mode mode) {
  const QPalette palette = QGuiApplication::palette();
  switch (mode) {
    case QIcon::Disabled:
      return palette.color(QPalette::Disabled, QPalette::WindowText);
    case QIcon::Selected:
      return palette.color(QPalette::HighlightedText);
    case QIcon::Normal:
    case QIcon::Active:
      break;
  }
  return palette.color(QPalette::Active, QPalette::WindowText);
}

// Asked for its pixels each time, so a palette that turns dark needs no new icon.
class LineIcon : public QIconEngine {
 public:
  explicit LineIcon(QString name) : name_(std::move(name)) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
    const qreal ratio = painter->device() == nullptr ? 1 : painter->device()->devicePixelRatio();
    painter->drawPixmap(rect, pixmap(rect.size() * ratio, mode, state));
  }

  // `size` counts pixels of the device.
  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State /*state*/) override {
    const QColor color = ColorFor(mode);
    const QString key = QStringLiteral("line/%1/%2/%3/%4")
                            .arg(name_)
                            .arg(size.width())
                            .arg(size.height())
                            .arg(color.name(QColor::HexArgb));
    QPixmap drawn;
    if (!QPixmapCache::find(key, &drawn)) {
      drawn = Draw(size, color);
      QPixmapCache::insert(key, drawn);
    }
    return drawn;
  }

  [[nodiscard]] QIconEngine* clone() const override { return new LineIcon(name_); }
  QString key() const override { return QStringLiteral("line"); }
  QList<QSize> availableSizes(QIcon::Mode /*mode*/, QIcon::State /*state*/) override {
    return {{PlainSize, PlainSize}, {2 * PlainSize, 2 * PlainSize}};
  }
  bool isNull() override { return false; }

 private:
  [[nodiscard]] QPixmap Draw(const QSize& size, const QColor& color) const {
    const int side = std::min(size.width(), size.height());
    const QImage mask(IconFile(name_.toStdString(), side != PlainSize));
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    const QRect target((size.width() - side) / 2, (size.height() - side) / 2, side, side);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(target, mask);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), color);
    painter.end();
    return QPixmap::fromImage(image);
  }

  QString name_;
};

}  // namespace

void LoadResources() {
  static const bool isLoaded = (InitialiseResources(), true);
  (void)isLoaded;
}

QString IconFile(std::string_view name, bool twice) {
  return QStringLiteral(":/icons/%1%2.png")
      .arg(QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())),
           twice ? QStringLiteral("@2x") : QString());
}

QIcon IconNamed(std::string_view name) {
  LoadResources();
  if (name.empty() || !QFile::exists(IconFile(name, false))) {
    return {};
  }
  return QIcon(new LineIcon(QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()))));
}

QIcon ApplicationIcon() {
  LoadResources();
  QIcon icon;
  for (const int size : {16, 24, 32, 48, 64, 128, 256}) {
    icon.addFile(QStringLiteral(":/icons/application-%1.png").arg(size));
  }
  return icon;
}

}  // namespace quorvelant
