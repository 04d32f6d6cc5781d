#include "window/map_window.h"

#include <QElapsedTimer>
#include <QHBoxLayout>
#include <QScreen>
#include <QSplitter>
#include <QStringList>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>
#include <vector>

#include "check/nav_of.h"
#include "ui/shown_text.h"

namespace quorvelant {

namespace {

constexpr double ZoomStep = 1.25;
constexpr qsizetype MostNamed = 12;  // chains, to those who hear them
constexpr int Soon = 300;            // milliseconds after the last of several changes

NavMap MapOf(Document& document) {
  EditSession& session = document.Session();
  session.Commands();  // their digits are those of the disc
  return SurveyOf(NavOf(session.Work(), session.RulesInForce())).Map;
}

QString Listed(const QStringList& names) {
  const QString first = names.mid(0, MostNamed).join(QStringLiteral("; "));
  return names.isEmpty() ? MapWindow::tr("nothing")
         : names.size() <= MostNamed
             ? first
             : MapWindow::tr("%1 and %2 more").arg(first).arg(names.size() - MostNamed);
}

// What the arrows show, for those who do not see them; by box.
std::vector<QString> ArrowWords(const NavChart& chart) {
  std::vector<QStringList> from(chart.Boxes.size());
  std::vector<QStringList> to(chart.Boxes.size());
  for (const NavChartArrow& arrow : chart.Arrows) {
    if (arrow.From != arrow.To) {
      from[arrow.To] << Shown(chart.Boxes[arrow.From].Text);
      to[arrow.From] << Shown(chart.Boxes[arrow.To].Text);
    }
  }
  std::vector<QString> words;
  for (std::size_t i = 0; i < chart.Boxes.size(); ++i) {
    words.push_back(MapWindow::tr("Here lead: %1. It leads to: %2.").arg(Listed(from[i]), Listed(to[i])));
  }
  return words;
}

}  // namespace

MapWindow::MapWindow(WindowParts& parts, QWidget* parent)
    : QDialog(parent), parts_(parts), chart_(new MapChart), chains_(new QListWidget), words_(new QLabel) {
  setWindowTitle(tr("Map of the Disc"));
  setAttribute(Qt::WA_DeleteOnClose);
  chains_->setAccessibleName(tr("Chains"));
  chains_->setUniformItemSizes(true);
  words_->setObjectName(QStringLiteral("Words"));  // read by its text
  words_->setTextFormat(Qt::PlainText);
  auto* const halves = new QSplitter;
  halves->addWidget(chains_);
  halves->addWidget(chart_);
  halves->setStretchFactor(1, 1);
  halves->setChildrenCollapsible(false);
  auto* const column = new QVBoxLayout(this);
  column->addWidget(halves, 1);
  column->addLayout(Keys());
  const int line = fontMetrics().height();
  const QSize room = screen() != nullptr ? screen()->availableSize() * 0.9 : QSize(74 * line, 38 * line);
  resize(QSize(96 * line, 38 * line).boundedTo(room));
  halves->setSizes({18 * line, 78 * line});
  soon_.setSingleShot(true);
  soon_.setInterval(Soon);
  connect(&soon_, &QTimer::timeout, this, &MapWindow::Draw);
  connect(chains_, &QListWidget::itemActivated, this, [this] { GoTo(chains_->currentRow()); });
  connect(chains_, &QListWidget::currentRowChanged, chart_, &MapChart::Choose);
  connect(chart_, &MapChart::BoxClicked, this, [this](int box) {
    chains_->setCurrentRow(box);
    GoTo(box);
  });
  connect(&parts.Doc, qOverload<const ChangeEvent&>(&Document::Changed), this, &MapWindow::Age);
}

QPushButton* MapWindow::Key(const QString& text, const QString& keys) {
  auto* const key = new QPushButton(text);
  key->setAutoDefault(false);
  key->setShortcut(QKeySequence(keys, QKeySequence::PortableText));
  key->setToolTip(key->shortcut().toString(QKeySequence::NativeText));
  return key;
}

QLayout* MapWindow::Keys() {
  auto* const line = new QHBoxLayout;
  anew_ = Key(tr("Draw Anew"), QStringLiteral("F5"));
  QPushButton* const there = Key(tr("Go There"), QStringLiteral("Ctrl+G"));
  QPushButton* const in = Key(tr("Zoom In"), QStringLiteral("Ctrl++"));
  QPushButton* const out = Key(tr("Zoom Out"), QStringLiteral("Ctrl+-"));
  QPushButton* const whole = Key(tr("Whole Map"), QStringLiteral("Ctrl+0"));
  QPushButton* const close = Key(tr("Close"), QStringLiteral("Ctrl+W"));
  line->addWidget(words_, 1);
  for (QPushButton* const key : {anew_, there, out, in, whole, close}) {
    line->addWidget(key);
  }
  connect(anew_, &QPushButton::clicked, this, &MapWindow::Draw);
  connect(there, &QPushButton::clicked, this, [this] { GoTo(chains_->currentRow()); });
  connect(in, &QPushButton::clicked, this, [this] { chart_->Zoom(ZoomStep); });
  connect(out, &QPushButton::clicked, this, [this] { chart_->Zoom(1 / ZoomStep); });
  connect(whole, &QPushButton::clicked, this, [this] { chart_->ShowWhole(); });
  connect(close, &QPushButton::clicked, this, &QDialog::close);
  return line;
}

void MapWindow::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  if (isOld_) {
    Draw();
    chart_->ShowLegibly();
    chains_->setFocus();
  }
}

void MapWindow::Age() {
  isOld_ = true;
  if (took_ <= patience_) {
    soon_.start();
    return;
  }
  words_->setText(tr("The project has changed since this was drawn"));
  anew_->setVisible(true);
}

void MapWindow::Draw() {
  soon_.stop();
  QElapsedTimer clock;
  clock.start();
  const NavMap map = MapOf(parts_.Doc);
  const NavChart chart = ChartOf(map);
  chart_->Draw(chart);
  List(map, chart);
  took_ = clock.elapsed();
  isOld_ = false;
  anew_->setVisible(false);
  const auto lost = std::ranges::count(map.Chains, false, &NavMapChain::IsReached);
  words_->setText(lost == 0 ? tr("%1 chains, all of them are reached").arg(map.Chains.size())
                            : tr("%1 chains, nobody comes to %2 of them").arg(map.Chains.size()).arg(lost));
}

// The same row stays chosen where it is still there.
void MapWindow::List(const NavMap& map, const NavChart& chart) {
  const QListWidgetItem* const former = chains_->currentItem();
  const QString key = former == nullptr ? QString() : former->data(Qt::UserRole).toString();
  chains_->clear();
  int current = 0;
  const std::vector<QString> arrows = ArrowWords(chart);
  for (const NavChartBox& box : chart.Boxes) {
    auto* const item = new QListWidgetItem(Shown(box.Text), chains_);
    const QString name = Shown(map.Chains[box.Chain].Name);
    item->setData(Qt::UserRole, name);
    item->setData(Qt::AccessibleDescriptionRole, arrows[static_cast<std::size_t>(chains_->count()) - 1]);
    if (!box.IsReached) {
      item->setIcon(style()->standardIcon(QStyle::SP_MessageBoxWarning));
    }
    current = !key.isEmpty() && name == key ? chains_->count() - 1 : current;
  }
  chains_->setCurrentRow(chains_->count() > 0 ? current : -1);
}

void MapWindow::GoTo(int row) {
  if (const QListWidgetItem* const item = chains_->item(row)) {
    parts_.Chosen.GoTo(item->data(Qt::UserRole).toString().toStdString());
  }
}

}  // namespace quorvelant
