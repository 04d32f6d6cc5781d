#include "window/map_chart.h"

#include <QFontInfo>
#include <QFontMetrics>
#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QMouseEvent>
#include <QPainterPath>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "ui/plain_tool_tip.h"
#include "ui/shown_text.h"

namespace quorvelant {

namespace {

constexpr int NumberKey = 0;  // of a box, kept with its item

// Legible on a light ground and on a dark one.
QColor Lost(const QPalette& palette) {
  return palette.color(QPalette::Base).lightness() > 128 ? QColor(0xC0, 0x20, 0x20)
                                                         : QColor(0xFF, 0x70, 0x70);
}

QPointF PointOf(const NavChartPoint& point) {
  return {point.X, point.Y};
}

QPainterPath PathOf(const NavChartArrow& arrow) {
  QPainterPath path(PointOf(arrow.Start));
  path.cubicTo(PointOf(arrow.StartHandle), PointOf(arrow.EndHandle), PointOf(arrow.End));
  path.moveTo(PointOf(arrow.Upper));
  path.lineTo(PointOf(arrow.End));
  path.lineTo(PointOf(arrow.Lower));
  return path;
}

}  // namespace

MapChart::MapChart(QWidget* parent) : QGraphicsView(parent) {
  setAccessibleName(tr("Chart"));
  setRenderHint(QPainter::Antialiasing);
  setDragMode(ScrollHandDrag);
  setTransformationAnchor(AnchorUnderMouse);
  setAlignment(Qt::AlignLeft | Qt::AlignTop);
  setScene(new QGraphicsScene(this));
}

void MapChart::Draw(const NavChart& chart) {
  scene()->clear();
  boxes_.clear();
  reached_.clear();
  arrows_.clear();
  chosen_ = -1;
  for (const NavChartHead& head : chart.Heads) {
    QGraphicsSimpleTextItem* const words =
        scene()->addSimpleText(QString::fromUtf8(head.Text.data(), static_cast<qsizetype>(head.Text.size())));
    QFont bold = words->font();
    bold.setBold(true);
    words->setFont(bold);
    words->setBrush(palette().color(QPalette::Text));
    words->setPos(head.X, head.Y - words->boundingRect().height());
  }
  for (const NavChartArrow& arrow : chart.Arrows) {
    arrows_.push_back(
        {static_cast<int>(arrow.From), static_cast<int>(arrow.To), scene()->addPath(PathOf(arrow))});
  }
  for (const NavChartBox& box : chart.Boxes) {
    DrawBox(box, static_cast<int>(boxes_.size()));
  }
  scene()->setSceneRect(0, 0, chart.Width, chart.Height);
  Choose(-1);
}

void MapChart::DrawBox(const NavChartBox& box, int number) {
  constexpr int Rim = 6;
  auto* const item = scene()->addRect(box.X, box.Y, NavChart::BoxWidth, NavChart::BoxHeight);
  item->setData(NumberKey, number);
  item->setToolTip(PlainToolTip(Shown(box.Text)));
  item->setCursor(Qt::PointingHandCursor);
  auto* const words = new QGraphicsSimpleTextItem(item);
  const QFontMetricsF letters(words->font());
  words->setText(letters.elidedText(Shown(box.Text), Qt::ElideRight, NavChart::BoxWidth - 2 * Rim));
  words->setPos(box.X + Rim, box.Y + (NavChart::BoxHeight - letters.height()) / 2);
  boxes_.push_back(item);
  reached_.push_back(box.IsReached);
}

void MapChart::PaintBox(int box, bool isChosen) {
  QGraphicsRectItem& item = *boxes_[static_cast<std::size_t>(box)];
  const bool isReached = reached_[static_cast<std::size_t>(box)];
  const QColor ink = isReached ? palette().color(QPalette::Text) : Lost(palette());
  item.setPen(QPen(ink, isReached ? 1 : 2, isReached ? Qt::SolidLine : Qt::DashLine));
  item.setBrush(palette().color(isChosen ? QPalette::Highlight : QPalette::Base));
  for (QGraphicsItem* const child : item.childItems()) {
    static_cast<QGraphicsSimpleTextItem*>(child)->setBrush(
        isChosen ? palette().color(QPalette::HighlightedText) : ink);
  }
}

// Arrows of the chosen box stand out, all of them where none is chosen.
void MapChart::Choose(int box) {
  chosen_ = box < static_cast<int>(boxes_.size()) ? box : -1;
  for (int i = 0; i < static_cast<int>(boxes_.size()); ++i) {
    PaintBox(i, i == chosen_);
  }
  QColor faint = palette().color(QPalette::Text);
  faint.setAlphaF(0.35F);
  for (const DrawnArrow& arrow : arrows_) {
    const bool isOwn = chosen_ >= 0 && (arrow.From == chosen_ || arrow.To == chosen_);
    arrow.Item->setPen(isOwn ? QPen(palette().color(QPalette::Highlight), 2) : QPen(faint, 1));
    arrow.Item->setZValue(isOwn ? -1 : -2);
  }
  if (chosen_ >= 0) {
    ensureVisible(boxes_[static_cast<std::size_t>(chosen_)]);
  }
}

void MapChart::Zoom(double times) {
  const double to = std::clamp(transform().m11() * times, Least, Most);
  setTransform(QTransform::fromScale(to, to));
}

void MapChart::ShowWhole() {
  fitInView(sceneRect(), Qt::KeepAspectRatio);
  const double to = std::clamp(transform().m11(), Least, 1.0);
  setTransform(QTransform::fromScale(to, to));
  centerOn(0, 0);
}

void MapChart::ShowLegibly() {
  constexpr double Legible = 8;  // pixels
  ShowWhole();
  if (transform().m11() * QFontInfo(scene()->font()).pixelSize() < Legible) {
    resetTransform();
    centerOn(0, 0);
  }
}

void MapChart::wheelEvent(QWheelEvent* event) {
  if ((event->modifiers() & Qt::ControlModifier) == 0) {
    QGraphicsView::wheelEvent(event);
    return;
  }
  constexpr double Notch = 120;
  Zoom(std::pow(1.2, event->angleDelta().y() / Notch));
  event->accept();
}

void MapChart::mousePressEvent(QMouseEvent* event) {
  const auto under = items(event->pos());  // an arrow has a shape as wide as its bend
  const auto box =
      std::ranges::find_if(under, [](const QGraphicsItem* item) { return item->data(NumberKey).isValid(); });
  if (box != under.end() && event->button() == Qt::LeftButton) {
    emit BoxClicked((*box)->data(NumberKey).toInt());
    return;
  }
  QGraphicsView::mousePressEvent(event);
}

}  // namespace quorvelant
