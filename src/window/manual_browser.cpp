#include "window/manual_browser.h"

#include <QDesktopServices>
#include <QImage>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextFrame>
#include <QTextTable>
#include <algorithm>
#include <vector>

namespace quorvelant {

ManualBrowser::ManualBrowser(QWidget* parent) : QTextBrowser(parent) {
  setOpenLinks(true);
  setOpenExternalLinks(true);
}

QVariant ManualBrowser::loadResource(int type, const QUrl& name) {
  QVariant resource = QTextBrowser::loadResource(type, name);
  if (type != QTextDocument::ImageResource || resource.userType() != QMetaType::QByteArray) {
    return resource;
  }
  return QImage::fromData(resource.toByteArray());
}

QString ManualBrowser::HeadingName(const QString& heading) {
  static const QRegularExpression sign(QStringLiteral("[^\\w -]"),
                                       QRegularExpression::UseUnicodePropertiesOption);
  return heading.toLower().remove(sign).replace(QLatin1Char(' '), QLatin1Char('-'));
}

bool ManualBrowser::GoToHeading(const QString& name) {
  for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
    if (block.blockFormat().headingLevel() > 0 && HeadingName(block.text()) == name) {
      // To the end first: the heading then comes to the top and not to the bottom.
      moveCursor(QTextCursor::End);
      setTextCursor(QTextCursor(block));
      return true;
    }
  }
  return false;
}

void ManualBrowser::doSetSource(const QUrl& name, QTextDocument::ResourceType type) {
  if (!name.scheme().isEmpty() && name.scheme() != QLatin1String("qrc")) {
    QDesktopServices::openUrl(name);
    return;
  }
  QTextBrowser::doSetSource(name, type);
  SetMargins();
  FitPictures();
  if (name.hasFragment()) {
    GoToHeading(name.fragment());
  }
}

void ManualBrowser::resizeEvent(QResizeEvent* event) {
  QTextBrowser::resizeEvent(event);
  FitPictures();
}

// Markdown has no word for either.
void ManualBrowser::SetMargins() {
  document()->setDocumentMargin(fontMetrics().height());
  for (QTextFrame* frame : document()->rootFrame()->childFrames()) {
    if (auto* table = qobject_cast<QTextTable*>(frame)) {
      QTextTableFormat format = table->format();
      format.setBorderCollapse(true);
      format.setBorder(1);
      format.setBorderBrush(palette().brush(QPalette::Mid));
      format.setCellPadding(fontMetrics().height() / 4.0);
      format.setCellSpacing(0);
      format.setBottomMargin(fontMetrics().height() / 2.0);
      table->setFormat(format);
    }
  }
}

void ManualBrowser::FitPictures() {
  struct Place {
    int Position;
    QTextImageFormat Format;
  };
  std::vector<Place> places;
  const double room = viewport()->width() - 2 * document()->documentMargin() - 1;
  for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
    for (auto part = block.begin(); !part.atEnd(); ++part) {
      QTextImageFormat format = part.fragment().charFormat().toImageFormat();
      if (!format.isValid()) {
        continue;
      }
      const QUrl file = source().resolved(QUrl(format.name()));
      const auto picture = document()->resource(QTextDocument::ImageResource, file).value<QImage>();
      const double width = std::min<double>(picture.width(), room);
      if (!picture.isNull() && format.width() != width) {
        format.setWidth(width);
        format.setHeight(width * picture.height() / picture.width());
        places.push_back({part.fragment().position(), format});
      }
    }
  }
  for (const Place& place : places) {
    QTextCursor cursor(document());
    cursor.setPosition(place.Position);
    cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::KeepAnchor);
    cursor.setCharFormat(place.Format);
  }
}

}  // namespace quorvelant
