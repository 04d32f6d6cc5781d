#include "platform/picture_service.h"

#include <fmt/format.h>

#include <QBuffer>
#include <QColor>
#include <QFont>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QImage>
#include <QImageReader>
#include <QPainter>
#include <QSaveFile>
#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "base/text.h"
#include "picture/bmp.h"

namespace quorvelant {

namespace {

constexpr int MiB = 1 << 20;

[[noreturn]] void Refuse(std::string_view name, std::string_view reason) {
  throw PictureError(fmt::format("{}: {}", name, reason));
}

QString PathOf(const std::string& path) {
  return QString::fromLocal8Bit(path.data(), static_cast<qsizetype>(path.size()));
}

// What Qt and its decoders would print is told by this service's own errors.
class Quiet {
 public:
  Quiet() : former_(qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {})) {}
  Quiet(const Quiet&) = delete;
  Quiet& operator=(const Quiet&) = delete;
  ~Quiet() { qInstallMessageHandler(former_); }

 private:
  QtMessageHandler former_;
};

// The picture's pixels seen as an image, without a copy; the picture must outlive it.
QImage ViewOf(Picture& picture) {
  return {picture.Pixels.data(), picture.Width, picture.Height, static_cast<qsizetype>(picture.RowBytes()),
          QImage::Format_RGB888};
}

Picture PictureOf(const QImage& image) {
  const QImage pixels = image.convertToFormat(QImage::Format_RGB888);
  Picture picture(pixels.width(), pixels.height());
  for (int row = 0; row < picture.Height; ++row) {
    std::memcpy(picture.Row(row), pixels.constScanLine(row), picture.RowBytes());
  }
  return picture;
}

// An image with see-through parts, laid on white.
QImage OnWhite(const QImage& image) {
  if (!image.hasAlphaChannel()) {
    return image;
  }
  QImage flat(image.size(), QImage::Format_RGB32);
  flat.fill(Qt::white);
  QPainter(&flat).drawImage(0, 0, image);
  return flat;
}

// Fonts need an application object; one without a window system serves when the program has none.
void NeedFonts() {
  if (QGuiApplication::instance() != nullptr) {
    return;
  }
  static int argumentCount = 1;
  static char name[] = "quorvelant";           // NOLINT(modernize-avoid-c-arrays): what the constructor takes
  static char* arguments[] = {name, nullptr};  // NOLINT(modernize-avoid-c-arrays)
  qputenv("QT_QPA_PLATFORM", "offscreen");
  static const QGuiApplication application(argumentCount, arguments);
}

void SaveFile(const std::string& path, const QByteArray& bytes) {
  QSaveFile file(PathOf(path));
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
    Refuse(path, fmt::format("the picture cannot be written: {}", file.errorString().toStdString()));
  }
}

class QtPictureService : public PictureService {
 public:
  explicit QtPictureService(const PictureLimits& limits) : limits_(limits) {}

  Picture Load(const std::string& path) override {
    const Quiet quiet;
    const Bytes file = ReadPictureFile(path);
    if (file.empty() || IsBmp(file)) {
      return ReadBmp(file, path, limits_);
    }
    QByteArray bytes = QByteArray::fromRawData(reinterpret_cast<const char*>(file.data()),
                                               static_cast<qsizetype>(file.size()));
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    // The size is tested ahead of the decoder; its own limit holds for what it takes besides.
    QImageReader::setAllocationLimit(static_cast<int>(limits_.MostPixels * 8 / MiB));
    const QSize size = reader.size();
    if (!reader.canRead()) {
      Refuse(path, "this is no picture that can be read");
    }
    if (size.isValid()) {
      CheckPictureSize(size.width(), size.height(), limits_, path);
    }
    QImage image;
    if (!reader.read(&image)) {
      Refuse(path, fmt::format("the picture cannot be read: {}", reader.errorString().toStdString()));
    }
    CheckPictureSize(image.width(), image.height(), limits_, path);
    return PictureOf(OnWhite(image));
  }

  Picture Scale(const Picture& picture, int width, int height, bool smooth) override {
    CheckPictureSize(width, height, limits_, "scaled picture");
    Picture source = picture;
    return PictureOf(ViewOf(source).scaled(width, height, Qt::IgnoreAspectRatio,
                                           smooth ? Qt::SmoothTransformation : Qt::FastTransformation));
  }

  void Save(const Picture& picture, const std::string& path) override {
    const Quiet quiet;
    if (Lower(path).ends_with(".bmp")) {
      const Bytes file = WriteBmp(picture);
      SaveFile(path,
               QByteArray(reinterpret_cast<const char*>(file.data()), static_cast<qsizetype>(file.size())));
      return;
    }
    if (!Lower(path).ends_with(".png")) {
      Refuse(path, "pictures are written as .bmp or .png");
    }
    Picture source = picture;
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!ViewOf(source).save(&buffer, "PNG")) {
      Refuse(path, "the picture cannot be written");
    }
    SaveFile(path, bytes);
  }

  void DrawText(Picture& picture, int x, int y, std::string_view text, const TextStyle& style) override {
    const Quiet quiet;
    NeedFonts();
    QFont font(QString::fromStdString(style.Font));
    font.setPixelSize(std::max(style.PixelHeight, 1));
    font.setBold(style.Bold);
    font.setItalic(style.Italic);
    font.setUnderline(style.Underline);
    font.setStyleStrategy(style.Smooth ? QFont::PreferAntialias : QFont::NoAntialias);
    font.setHintingPreference(QFont::PreferFullHinting);
    QImage image = ViewOf(picture);
    QPainter painter(&image);
    painter.setFont(font);
    painter.setPen(QColor(static_cast<int>(style.Color & 255U), static_cast<int>(style.Color >> 8U & 255U),
                          static_cast<int>(style.Color >> 16U & 255U)));
    painter.drawText(x, y + QFontMetrics(font).ascent(),
                     QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
  }

 private:
  PictureLimits limits_;
};

}  // namespace

std::unique_ptr<PictureService> MakePictureService(const PictureLimits& limits) {
  return std::make_unique<QtPictureService>(limits);
}

}  // namespace quorvelant
