// The module of picture services, by Qt. Nothing here changes what is set for the whole process: the program
// may have a message handler, limits and an application object of its own.
#include <QBuffer>
#include <QColor>
#include <QFont>
#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetrics>
#include <QGlyphRun>
#include <QGuiApplication>
#include <QImage>
#include <QImageReader>
#include <QPainter>
#include <QTextLayout>
#include <algorithm>
#include <cmath>
#include <cstring>

#include "platform/picture_module.h"

namespace quorvelant {

namespace {

// The picture's pixels seen as an image, without a copy; the picture must outlive it.
QImage ViewOf(const Picture& picture) {
  return {picture.Pixels.data(), picture.Width, picture.Height, static_cast<qsizetype>(picture.RowBytes()),
          QImage::Format_RGB888};
}
QImage CanvasOf(Picture& picture) {
  return {picture.Pixels.data(), picture.Width, picture.Height, static_cast<qsizetype>(picture.RowBytes()),
          QImage::Format_RGB888};
}

// The rows of the picture from `top` on.
void PutRows(const QImage& image, Picture& picture, int top) {
  const QImage pixels = image.convertToFormat(QImage::Format_RGB888);
  for (int row = 0; row < pixels.height(); ++row) {
    std::memcpy(picture.Row(top + row), pixels.constScanLine(row), picture.RowBytes());
  }
}

Picture PictureOf(const QImage& image) {
  Picture picture(image.width(), image.height());
  PutRows(image, picture, 0);
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

// An image with see-through parts, as it shows over another.
QImage Over(const QImage& image, std::uint32_t background) {
  if (!image.hasAlphaChannel()) {
    return image;
  }
  constexpr int HalfSeen = 128;
  const QRgb rest = qRgb(static_cast<int>(background & 255U), static_cast<int>(background >> 8U & 255U),
                         static_cast<int>(background >> 16U & 255U));
  QImage flat = image.convertToFormat(QImage::Format_ARGB32);
  for (int row = 0; row < flat.height(); ++row) {
    auto* const pixels = reinterpret_cast<QRgb*>(flat.scanLine(row));
    std::transform(pixels, pixels + flat.width(), pixels,
                   [rest](QRgb pixel) { return qAlpha(pixel) < HalfSeen ? rest : pixel | 0xFF000000U; });
  }
  return flat;
}

// A few rows at a time, so that a large image is never held in all its forms at once.
Picture Flattened(const QImage& image, const std::uint32_t* background) {
  constexpr int BandRows = 64;
  Picture picture(image.width(), image.height());
  for (int top = 0; top < picture.Height; top += BandRows) {
    const QImage band = image.copy(0, top, picture.Width, std::min(BandRows, picture.Height - top));
    PutRows(background == nullptr ? OnWhite(band) : Over(band, *background), picture, top);
  }
  return picture;
}

// Fonts need an application object; one without a window system serves when the program has none.
void NeedFonts() {
  if (QGuiApplication::instance() != nullptr) {
    return;
  }
  static char name[] = "quorvelant";     // NOLINT(modernize-avoid-c-arrays): what the constructor takes
  static char option[] = "-platform";    // NOLINT(modernize-avoid-c-arrays)
  static char platform[] = "offscreen";  // NOLINT(modernize-avoid-c-arrays)
  static char* arguments[] = {name, option, platform, nullptr};  // NOLINT(modernize-avoid-c-arrays)
  static int argumentCount = 3;
  // It has things to say about the session that it starts in, which are of no use here.
  const QtMessageHandler before =
      qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
  static const QGuiApplication application(argumentCount, arguments);
  qInstallMessageHandler(before);
}

DecodedPicture Decode(ByteView file, const SizeJudge& judge, const std::uint32_t* background) {
  QByteArray bytes = QByteArray::fromRawData(reinterpret_cast<const char*>(file.data()),
                                             static_cast<qsizetype>(file.size()));
  QBuffer buffer(&bytes);
  QImageReader reader(&buffer);
  reader.setDecideFormatFromContent(true);
  reader.setAutoTransform(true);
  const QSize size = reader.size();
  if (!reader.canRead()) {
    return {.Known = false, .Reason = {}, .Pixels = {}};
  }
  if (size.isValid()) {  // a format that does not say stays within the reader's own limit, of 256 MiB
    judge(size.width(), size.height());
  }
  QImage image;
  if (!reader.read(&image)) {
    return {.Known = true, .Reason = reader.errorString().toStdString(), .Pixels = {}};
  }
  judge(image.width(), image.height());
  return {.Known = true, .Reason = {}, .Pixels = Flattened(image, background)};
}

Picture Scale(const Picture& picture, int width, int height, bool smooth) {
  return PictureOf(ViewOf(picture).scaled(width, height, Qt::IgnoreAspectRatio,
                                          smooth ? Qt::SmoothTransformation : Qt::FastTransformation));
}

Bytes EncodePng(const Picture& picture) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  if (!ViewOf(picture).save(&buffer, "PNG")) {
    return {};
  }
  return {bytes.begin(), bytes.end()};
}

QFont FontOf(const TextStyle& style) {
  NeedFonts();
  QFont font(QString::fromStdString(style.Font));
  font.setPixelSize(std::max(style.PixelHeight, 1));
  font.setBold(style.Bold);
  font.setItalic(style.Italic);
  font.setUnderline(style.Underline);
  font.setStrikeOut(style.StrikeOut);
  font.setStyleHint(QFont::SansSerif);
  font.setStyleStrategy(style.Smooth ? QFont::PreferAntialias : QFont::NoAntialias);
  font.setHintingPreference(QFont::PreferFullHinting);
  return font;
}

QString Letters(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

constexpr double Whole = 100;  // percent

void DrawText(Picture& picture, int x, int y, std::string_view text, const TextStyle& style) {
  const QFont font = FontOf(style);
  QImage image = CanvasOf(picture);
  QPainter painter(&image);
  painter.setFont(font);
  painter.setPen(QColor(static_cast<int>(style.Color & 255U), static_cast<int>(style.Color >> 8U & 255U),
                        static_cast<int>(style.Color >> 16U & 255U)));
  painter.translate(x, y + QFontMetrics(font).ascent());
  painter.scale(style.Stretch / Whole, 1);
  painter.drawText(0, 0, Letters(text));
}

TextSize MeasureText(std::string_view text, const TextStyle& style) {
  const QFontMetrics metrics(FontOf(style));
  const QString letters = Letters(text);
  const QRect ink = metrics.boundingRect(letters);
  const auto left = [&](int x) { return static_cast<int>(std::floor(x * style.Stretch / Whole)); };
  const auto right = [&](int x) { return static_cast<int>(std::ceil(x * style.Stretch / Whole)); };
  const int soft = style.Smooth ? 1 : 0;  // edges reach into the next pixel
  return {.Width = right(metrics.horizontalAdvance(letters)),
          .Height = metrics.height(),
          .InkLeft = left(ink.left()) - soft,
          .InkTop = ink.top() + metrics.ascent() - soft,
          .InkRight = right(ink.left() + ink.width()) + soft,
          .InkBottom = ink.top() + ink.height() + metrics.ascent() + soft};
}

// Whether no font shows the letter: glyph 0 of every font is what stands for a letter that is missing.
bool IsMissing(const QString& letter, const QFont& font) {
  QTextLayout layout(letter, font);
  layout.beginLayout();
  layout.createLine();
  layout.endLayout();
  const auto runs = layout.glyphRuns();
  return std::any_of(runs.begin(), runs.end(),
                     [](const QGlyphRun& run) { return run.glyphIndexes().contains(0); });
}

std::string MissingLetters(std::string_view text, const TextStyle& style) {
  const QFont font = FontOf(style);
  QString missing;
  for (const uint code : Letters(text).toUcs4()) {
    const char32_t point = code;
    const QString letter = QString::fromUcs4(&point, 1);
    const bool shows = QChar::isPrint(code) && !QChar::isSpace(code) &&
                       QChar::category(code) != QChar::Other_Format && !QChar::isMark(code);
    if (shows && !missing.contains(letter) &&
        (code == QChar::ReplacementCharacter || IsMissing(letter, font))) {
      missing += letter;
    }
  }
  return missing.toStdString();
}

std::string FontTaken(const std::string& family) {
  NeedFonts();
  const QString name = QString::fromStdString(family);
  const QStringList installed = QFontDatabase::families();
  const auto own = std::find_if(installed.begin(), installed.end(), [&](const QString& other) {
    return other.compare(name, Qt::CaseInsensitive) == 0;
  });
  return own != installed.end() || family == "sans-serif"
             ? family
             : QFontInfo(FontOf({.Font = family})).family().toStdString();
}

constexpr PictureModule Module{PictureModuleRevision, &Decode,         &Scale,    &EncodePng, &DrawText,
                               &MeasureText,          &MissingLetters, &FontTaken};

}  // namespace

}  // namespace quorvelant

extern "C" __attribute__((visibility("default"))) const quorvelant::PictureModule* QuorvelantPictureModule() {
  return &quorvelant::Module;
}
