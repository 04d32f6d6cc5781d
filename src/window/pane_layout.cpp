#include "window/pane_layout.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>

#include "window/buttons_pane.h"
#include "window/chapters_pane.h"
#include "window/commands_pane.h"
#include "window/disc_pane.h"
#include "window/jobs_pane.h"
#include "window/log_pane.h"
#include "window/media_pane.h"
#include "window/picture_pane.h"
#include "window/player_pane.h"
#include "window/problems_pane.h"
#include "window/properties_pane.h"
#include "window/simulator_pane.h"
#include "window/subtitles_pane.h"

namespace quorvelant {

namespace {

constexpr int StateVersion = 2;
constexpr int NarrowLines = 80;  // of text, in width

const QStringList& Tables() {
  static const QStringList names{QStringLiteral("Subtitles"), QStringLiteral("Buttons"),
                                 QStringLiteral("Chapters"), QStringLiteral("Commands")};
  return names;
}

const QStringList& Bottom() {
  static const QStringList names{QStringLiteral("Problems"), QStringLiteral("Jobs"), QStringLiteral("Log")};
  return names;
}

// Where a tab names the pane its title bar would say the same: it is there while the pane floats.
QWidget* NoBar(QDockWidget& dock) {
  auto* const bar = new QWidget(&dock);
  auto* const nothing = new QHBoxLayout(bar);
  nothing->setContentsMargins(0, 0, 0, 0);
  return bar;
}

void ShowNameOnce(QDockWidget& dock) {
  dock.setTitleBarWidget(NoBar(dock));
  QObject::connect(&dock, &QDockWidget::topLevelChanged, &dock, [&dock](bool isFloating) {
    QWidget* const bar = dock.titleBarWidget();
    dock.setTitleBarWidget(isFloating ? nullptr : NoBar(dock));
    delete bar;
  });
}

// What takes the keys first in a pane.
QWidget* FirstControl(QWidget& pane) {
  if (pane.focusPolicy() != Qt::NoFocus) {
    return &pane;
  }
  if (QWidget* const proxy = pane.focusProxy()) {
    return proxy;
  }
  for (QWidget* next = pane.nextInFocusChain(); next != &pane; next = next->nextInFocusChain()) {
    if (pane.isAncestorOf(next) && (next->focusPolicy() & Qt::TabFocus) != 0 && next->isEnabled() &&
        next->isVisibleTo(&pane)) {
      return next;
    }
  }
  return &pane;
}

}  // namespace

PaneLayout::PaneLayout(QMainWindow& window, WindowParts& parts, QWidget* empty)
    : QObject(&window), window_(window), middle_(new QStackedWidget) {
  window_.setDockNestingEnabled(true);
  window_.setDockOptions(window_.dockOptions() | QMainWindow::AllowNestedDocks |
                         QMainWindow::GroupedDragging);
  window_.setTabPosition(Qt::AllDockWidgetAreas, QTabWidget::North);
  window_.setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
  window_.setCorner(Qt::BottomRightCorner, Qt::BottomDockWidgetArea);
  // Before the pane itself hears of it: it can have the keys only once it is in front.
  connect(&parts.Chosen, &Selection::WentTo, this, [this](const GoToPlace& place) {
    if (place.Command) {
      GoTo(QStringLiteral("Commands"));
    }
  });
  auto* const picture = new PicturePane(parts);
  picture->setAccessibleName(tr("Picture"));
  middle_->addWidget(picture);
  middle_->addWidget(empty);
  window_.setCentralWidget(middle_);

  Add(QStringLiteral("Media"), new MediaPane(parts), Qt::LeftDockWidgetArea);
  Add(QStringLiteral("Disc"), new DiscPane(parts), Qt::LeftDockWidgetArea);
  order_ << QStringLiteral("Picture");
  panes_[QStringLiteral("Picture")] = middle_;
  Add(QStringLiteral("Properties"), new PropertiesPane(parts), Qt::RightDockWidgetArea);
  Add(QStringLiteral("Subtitles"), new SubtitlesPane(parts), Qt::BottomDockWidgetArea);
  Add(QStringLiteral("Buttons"), new ButtonsPane(parts), Qt::BottomDockWidgetArea);
  Add(QStringLiteral("Chapters"), new ChaptersPane(parts), Qt::BottomDockWidgetArea);
  Add(QStringLiteral("Commands"), new CommandsPane(parts), Qt::BottomDockWidgetArea);
  Add(QStringLiteral("Problems"), new ProblemsPane(parts), Qt::BottomDockWidgetArea);
  Add(QStringLiteral("Jobs"), new JobsPane(parts), Qt::BottomDockWidgetArea);
  Add(QStringLiteral("Log"), new LogPane(parts), Qt::BottomDockWidgetArea);
  Add(QStringLiteral("Simulator"), new SimulatorPane(parts), Qt::RightDockWidgetArea);
  HandleActions(parts.Commands);
  HandleSimulation(parts);
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
    for (const auto& [name, pane] : panes_) {
      if (now != nullptr && (now == pane || pane->isAncestorOf(now))) {
        lastFocus_[name] = now;
        connect(now, &QObject::destroyed, this, [this, gone = now] {
          std::erase_if(lastFocus_, [gone](const auto& one) { return one.second == gone; });
        });
      }
    }
  });
}

void PaneLayout::Add(const QString& name, QWidget* pane, Qt::DockWidgetArea area) {
  auto* const dock = new QDockWidget(tr(name.toUtf8().constData()), &window_);
  dock->setObjectName(name);
  dock->setAccessibleName(dock->windowTitle());
  pane->setAccessibleName(dock->windowTitle());
  auto* const holder = new QWidget;
  auto* const rows = new QVBoxLayout(holder);
  rows->setContentsMargins({});
  rows->addWidget(pane);
  rows->addItem(new QSpacerItem(1, 1));  // a size also while the pane is hidden
  dock->setWidget(holder);
  // Behind another tab a dock lies outside the window and still counts as shown: readers of the screen would
  // find what nobody sees.
  connect(dock, &QDockWidget::visibilityChanged, pane, &QWidget::setVisible);
  if (area == Qt::BottomDockWidgetArea) {
    ShowNameOnce(*dock);
  }
  window_.addDockWidget(area, dock);
  order_ << name;
  panes_[name] = pane;
  docks_[name] = dock;
}

void PaneLayout::HandleActions(Actions& actions) {
  const auto goes = [&](ActionId id, const QStringList& group) {
    actions.Handle(id, [this, group] { GoTo(Shown(group)); });
  };
  goes(ActionId::ShowMedia, {QStringLiteral("Media")});
  goes(ActionId::ShowDisc, {QStringLiteral("Disc")});
  goes(ActionId::ShowPicture, {QStringLiteral("Picture")});
  goes(ActionId::ShowProperties, {QStringLiteral("Properties")});
  goes(ActionId::ShowTables, Tables());
  goes(ActionId::ShowProblems, Bottom());
  actions.Handle(ActionId::NextPane, [this] { Step(1); });
  actions.Handle(ActionId::PreviousPane, [this] { Step(-1); });
  actions.Handle(ActionId::ResetLayout, [this] { Reset(); });
}

// The player takes the place of the picture. It is not in the window while no disc plays: its remote would
// keep the window wide.
void PaneLayout::HandleSimulation(WindowParts& parts) {
  Simulation& player = parts.Player;
  player_ = new PlayerPane(parts, middle_);
  player_->hide();
  QAction* const simulate = parts.Commands.Of(ActionId::Simulate);
  parts.Commands.Handle(ActionId::Simulate, [&player, simulate] {
    player.IsOn() ? player.Eject() : player.Insert();
    simulate->setChecked(player.IsOn());  // also where there is nothing to play
  });
  connect(&player, &Simulation::StateChanged, this, [this, &player, simulate] {
    simulate->setChecked(player.IsOn());
    ShowPlayer(player.IsOn());
  });
}

void PaneLayout::ShowPlayer(bool isOn) {
  if (isOn == (middle_->indexOf(player_) >= 0)) {
    return;
  }
  QDockWidget* const beside = docks_[QStringLiteral("Simulator")];
  if (isOn) {
    middle_->addWidget(player_);
    ShowMiddle();
    beside->show();
    beside->raise();
    GoTo(QStringLiteral("Picture"));
    return;
  }
  const bool hadKeys =
      Focused() == QStringLiteral("Simulator") || player_->isAncestorOf(window_.focusWidget());
  middle_->removeWidget(player_);
  player_->hide();
  ShowMiddle();
  beside->hide();
  if (hadKeys) {
    GoTo(QStringLiteral("Picture"));
  }
}

// Of tabs over each other: the one in front; its neighbour where that has the keys already.
QString PaneLayout::Shown(const QStringList& group) const {
  const QString focused = Focused();
  if (group.contains(focused) && group.size() > 1) {
    return group.at((group.indexOf(focused) + 1) % group.size());
  }
  for (const QString& name : group) {
    const auto dock = docks_.find(name);
    if (dock != docks_.end() && dock->second->isVisible() && !dock->second->visibleRegion().isEmpty()) {
      return name;
    }
  }
  return group.constFirst();
}

QString PaneLayout::Focused() const {
  const QWidget* const now = QApplication::focusWidget();
  for (const auto& [name, pane] : panes_) {
    if (now != nullptr && (now == pane || pane->isAncestorOf(now))) {
      return name;
    }
  }
  return {};
}

void PaneLayout::GoTo(const QString& name) {
  QWidget* const pane = panes_.at(name);
  if (const auto dock = docks_.find(name); dock != docks_.end()) {
    dock->second->show();
    dock->second->raise();
  }
  QWidget* const target = pane == middle_ ? middle_->currentWidget() : pane;
  const auto last = lastFocus_.find(name);
  QWidget* const control = last != lastFocus_.end() && target->isAncestorOf(last->second) &&
                                   last->second->isEnabled() && last->second->isVisible()
                               ? last->second
                               : FirstControl(*target);
  control->setFocus(Qt::ShortcutFocusReason);
}

void PaneLayout::Step(int by) {
  const qsizetype count = order_.size();
  qsizetype at = order_.indexOf(Focused());
  for (qsizetype tried = 0; tried < count; ++tried) {
    at = (at + by + count) % count;
    const auto dock = docks_.find(order_.at(at));
    if (dock == docks_.end() || !dock->second->isHidden()) {
      break;
    }
  }
  GoTo(order_.at(at));
}

void PaneLayout::SetTab(const QString& name, const QString& words) {
  docks_.at(name)->setWindowTitle(words);
}

void PaneLayout::SetEmpty(bool isEmpty) {
  isEmpty_ = isEmpty;
  ShowMiddle();
}

void PaneLayout::ShowMiddle() {
  const int player = middle_->indexOf(player_);
  middle_->setCurrentIndex(player >= 0 ? player : isEmpty_ ? 1 : 0);
}

void PaneLayout::Reset() {
  isRestored_ = false;
  isNarrow_ = window_.width() < NarrowLines * window_.fontMetrics().height();
  const auto place = [this](const QString& name, Qt::DockWidgetArea area) {
    QDockWidget* const dock = docks_.at(name);
    dock->setFloating(false);
    window_.addDockWidget(area, dock);
    dock->show();
  };
  for (const auto& [name, dock] : docks_) {
    window_.removeDockWidget(dock);
  }
  place(QStringLiteral("Media"), Qt::LeftDockWidgetArea);
  window_.splitDockWidget(docks_[QStringLiteral("Media")], docks_[QStringLiteral("Disc")], Qt::Vertical);
  docks_[QStringLiteral("Disc")]->show();
  QDockWidget* const tables = docks_[Tables().constFirst()];
  QDockWidget* const bottom = docks_[Bottom().constFirst()];
  place(Tables().constFirst(), Qt::BottomDockWidgetArea);
  window_.splitDockWidget(tables, bottom, Qt::Vertical);
  bottom->show();
  const auto stack = [this](QDockWidget* first, const QStringList& names) {
    for (const QString& name : names) {
      if (docks_[name] != first) {
        window_.tabifyDockWidget(first, docks_[name]);
        docks_[name]->show();
      }
    }
    first->raise();
  };
  stack(bottom, Bottom());
  if (isNarrow_) {
    stack(tables, Tables() + QStringList{QStringLiteral("Properties"), QStringLiteral("Simulator")});
  } else {
    place(QStringLiteral("Properties"), Qt::RightDockWidgetArea);
    stack(docks_[QStringLiteral("Properties")], {QStringLiteral("Simulator")});
    stack(tables, Tables());
  }
  docks_[QStringLiteral("Simulator")]->setVisible(middle_->indexOf(player_) >= 0);
  // They come before the docks that they name.
  for (QTabBar* bar : window_.findChildren<QTabBar*>(QString(), Qt::FindDirectChildrenOnly)) {
    bar->lower();
  }
  Proportion();
  // Once more after the window has its size: while it is being resized the docks share the former one.
  QMetaObject::invokeMethod(
      this, [this] { Proportion(); }, Qt::QueuedConnection);
}

void PaneLayout::Proportion() {
  if (isRestored_) {
    return;
  }
  const int line = window_.fontMetrics().height();
  window_.resizeDocks({docks_[QStringLiteral("Media")]}, {(isNarrow_ ? 17 : 22) * line}, Qt::Horizontal);
  window_.resizeDocks({docks_[Tables().constFirst()], docks_[Bottom().constFirst()]}, {11 * line, 7 * line},
                      Qt::Vertical);
  if (!isNarrow_) {
    window_.resizeDocks({docks_[QStringLiteral("Properties")]}, {19 * line}, Qt::Horizontal);
  }
}

void PaneLayout::Adapt() {
  const bool isNarrow = window_.width() < NarrowLines * window_.fontMetrics().height();
  if (isNarrow != isNarrow_ && !isRestored_) {
    Reset();
  }
}

QByteArray PaneLayout::State() const {
  return window_.saveState(StateVersion);
}

void PaneLayout::Restore(const QByteArray& state) {
  Reset();
  isRestored_ = !state.isEmpty() && window_.restoreState(state, StateVersion);
  docks_[QStringLiteral("Simulator")]->hide();  // it may have been up when the window closed
}

}  // namespace quorvelant
