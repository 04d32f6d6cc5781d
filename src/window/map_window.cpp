#include "window/map_window.h"

#include <QCursor>
#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QPainterPath>
#include <QSplitter>
#include <QVBoxLayout>
#include <functional>
#include <utility>

#include "check/nav_of.h"
#include "player/nav_chart.h"
#include "ui/shown_text.h"

namespace quorvelant {

namespace {

QColor Lost() {
  return {0xC0, 0x20, 0x20};
}

QRectF RectOf(const NavChartBox& box) {
  return QRectF(box.X, box.Y, NavChart::BoxWidth, NavChart::BoxHeight);
}

// From the side of one box to the side of another, with a bend and a tip.
QPainterPath ArrowOf(const QRectF& from, const QRectF& to) {
  constexpr double Bend = 50;
  constexpr double Tip = 5;
  const bool goesRight = from.left() < to.left();
  const bool isLevel = from.left() == to.left();
  const QPointF start(goesRight || isLevel ? from.right() : from.left(), from.center().y());
  const QPointF end(goesRight ? to.left() : to.right(), to.center().y());
  const double out = goesRight || isLevel ? Bend : -Bend;
  const double in = goesRight ? -Bend : Bend;
  QPainterPath path(start);
  path.cubicTo(start + QPointF(out, 0), end + QPointF(in, 0), end);
  const double back = in > 0 ? Tip : -Tip;
  path.moveTo(end + QPointF(back, -Tip));
  path.lineTo(end);
  path.lineTo(end + QPointF(back, Tip));
  return path;
}

// Tells its key when it is clicked.
class ChainBox : public QGraphicsRectItem {
 public:
  ChainBox(const QRectF& rect, QString key, std::function<void(const QString&)> chosen)
      : QGraphicsRectItem(rect), key_(std::move(key)), chosen_(std::move(chosen)) {
    setCursor(Qt::PointingHandCursor);
  }

 protected:
  void mousePressEvent(QGraphicsSceneMouseEvent* /*event*/) override { chosen_(key_); }

 private:
  QString key_;
  std::function<void(const QString&)> chosen_;
};

NavMap MapOf(Document& document) {
  EditSession& session = document.Session();
  session.Commands();  // their digits are those of the disc
  return SurveyOf(NavOf(session.Work(), session.RulesInForce())).Map;
}

}  // namespace

MapWindow::MapWindow(WindowParts& parts, QWidget* parent)
    : QDialog(parent), parts_(parts), chart_(new QGraphicsView), chains_(new QListWidget) {
  setWindowTitle(tr("Map of the Disc"));
  setAttribute(Qt::WA_DeleteOnClose);
  chart_->setAccessibleName(tr("Chart"));
  chart_->setRenderHint(QPainter::Antialiasing);
  chart_->setDragMode(QGraphicsView::ScrollHandDrag);
  chains_->setAccessibleName(tr("Chains"));
  auto* const halves = new QSplitter;
  halves->addWidget(chains_);
  halves->addWidget(chart_);
  halves->setStretchFactor(1, 1);
  auto* const column = new QVBoxLayout(this);
  column->addWidget(halves);
  const int line = fontMetrics().height();
  resize(60 * line, 36 * line);
  connect(chains_, &QListWidget::itemActivated, this,
          [this](const QListWidgetItem* item) { GoTo(item->data(Qt::UserRole).toString()); });
  const NavMap map = MapOf(parts.Doc);
  Draw(map);
  List(map);
}

void MapWindow::Draw(const NavMap& map) {
  auto* const scene = new QGraphicsScene(this);
  const NavChart chart = ChartOf(map);
  const QPen ink(palette().color(QPalette::Text));
  for (const NavMapArrow& arrow : map.Arrows) {
    scene->addPath(ArrowOf(RectOf(chart.Boxes[arrow.From]), RectOf(chart.Boxes[arrow.To])),
                   QPen(palette().color(QPalette::Highlight)));
  }
  const QFontMetrics letters(scene->font());
  for (const NavChartBox& box : chart.Boxes) {
    const NavMapChain& chain = map.Chains[box.Chain];
    auto* const item =
        new ChainBox(RectOf(box), Shown(chain.Name), [this](const QString& key) { GoTo(key); });
    item->setPen(chain.IsReached ? ink : QPen(Lost(), 2));
    item->setBrush(palette().color(QPalette::Base));
    item->setToolTip(Shown(box.Text));
    scene->addItem(item);
    auto* const words = new QGraphicsSimpleTextItem(
        letters.elidedText(Shown(box.Text), Qt::ElideRight, NavChart::BoxWidth - 12), item);
    words->setBrush(chain.IsReached ? palette().color(QPalette::Text) : Lost());
    words->setPos(box.X + 6, box.Y + (NavChart::BoxHeight - letters.height()) / 2.0);
    words->setAcceptedMouseButtons(Qt::NoButton);
  }
  scene->setSceneRect(0, 0, chart.Width, chart.Height);
  chart_->setScene(scene);
}

void MapWindow::List(const NavMap& map) {
  for (const NavMapChain& chain : map.Chains) {
    const QString words = Shown(chain.Words);
    auto* const item =
        new QListWidgetItem(chain.IsReached ? words : tr("%1: nobody comes here").arg(words), chains_);
    item->setData(Qt::UserRole, Shown(chain.Name));
    if (!chain.IsReached) {
      item->setForeground(Lost());
    }
  }
  if (chains_->count() > 0) {
    chains_->setCurrentRow(0);
  }
}

void MapWindow::GoTo(const QString& key) {
  parts_.Chosen.GoTo(key.toStdString());
}

}  // namespace quorvelant
