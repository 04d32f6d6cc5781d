#include "window/main_window.h"

#include <QCloseEvent>
#include <QLabel>
#include <QMenuBar>
#include <QStatusBar>
#include <QToolBar>

#include "desk/edit_options.h"
#include "platform/platform_pictures.h"
#include "ui/shown_text.h"
#include "window/boxes.h"
#include "window/notice_bar.h"
#include "window/pane_layout.h"
#include "window/size_gauge.h"
#include "window/start_page.h"

namespace quorvelant {

// In the order in which each needs those before it.
class MainWindow::Private {
 public:
  Private(MainWindow& window, WindowSetup given)
      : Setup(std::move(given)),
        OwnBoxes(window),
        Speaks(Setup.Answers != nullptr ? *Setup.Answers : OwnBoxes),
        Notices(new NoticeBar(Speaks, &window)),
        Options(ReadUserSettings(Setup.SettingsPath, Speaks)),
        Pictures(MakePlatformPictures()),
        Commands(new Actions(&window)),
        Doc(EditOptionsOf(Options), Setup.CacheFolder, Speaks),
        Chosen(Doc),
        Work(Speaks),
        View(Doc, Chosen, Work),
        Parts{Doc,
              Chosen,
              View,
              Work,
              *Commands,
              Speaks.Answers(),
              *Pictures,
              Options,
              Setup.StateFolder,
              Setup.CacheFolder,
              Setup.SettingsPath,
              Setup.LogPath} {}

  WindowSetup Setup;
  Boxes OwnBoxes;
  Voice Speaks;
  NoticeBar* Notices;
  Settings Options;
  std::unique_ptr<PictureService> Pictures;
  Actions* Commands;
  Document Doc;
  Selection Chosen;
  Jobs Work;
  Viewer View;
  WindowParts Parts;
  PaneLayout* Layout = nullptr;
  StartPage* Start = nullptr;
  QLabel* Status = nullptr;
};

namespace {

QMenu* MenuOf(QMenuBar& bar, MenuId id) {
  constexpr std::array<const char*, 7> Titles{"&File", "&Edit",  "&View", "&Track",
                                              "&Disc", "T&ools", "&Help"};
  const auto at = static_cast<std::size_t>(id);
  while (static_cast<std::size_t>(bar.actions().size()) <= at) {
    bar.addMenu(MainWindow::tr(Titles.at(static_cast<std::size_t>(bar.actions().size()))));
  }
  return bar.actions().at(static_cast<qsizetype>(at))->menu();
}

void FillMenus(QMenuBar& bar, const Actions& actions) {
  for (const ActionRow& row : ActionTable()) {
    QMenu* const menu = MenuOf(bar, row.Menu);
    if (row.StartsGroup) {
      menu->addSeparator();
    }
    menu->addAction(actions.Of(row.Id));
  }
}

void FillToolBar(QToolBar& bar, const Actions& actions) {
  using enum ActionId;
  constexpr std::array<std::array<ActionId, 3>, 3> Groups{
      {{NewProject, Open, Save}, {Undo, Redo, NewTrack}, {Check, Author, Author}}};
  for (const auto& group : Groups) {
    for (const ActionId id : group) {
      bar.addAction(actions.Of(id));
    }
    bar.addSeparator();
  }
}

}  // namespace

MainWindow::MainWindow(WindowSetup setup) : private_(std::make_unique<Private>(*this, std::move(setup))) {
  Private& its = *private_;
  FillMenus(*menuBar(), *its.Commands);
  QToolBar* const tools = addToolBar(tr("Tools"));
  tools->setObjectName(QStringLiteral("Tools"));
  FillToolBar(*tools, *its.Commands);
  addToolBarBreak();
  addToolBar(its.Notices);
  its.Start = new StartPage(*its.Commands);
  its.Layout = new PaneLayout(*this, its.Parts, its.Start);
  its.Status = new QLabel(tr("Ready"));
  statusBar()->addWidget(its.Status, 1);
  statusBar()->addPermanentWidget(new SizeGauge(its.Parts));
  its.Layout->Reset();
  resize(its.Layout->Pane(QStringLiteral("Picture"))->fontMetrics().height() * 80,
         fontMetrics().height() * 52);
}

MainWindow::~MainWindow() {
  // What looks at the parts goes before them.
  delete takeCentralWidget();
  qDeleteAll(findChildren<QDockWidget*>(QString(), Qt::FindDirectChildrenOnly));
  delete statusBar();
}

WindowParts& MainWindow::Parts() {
  return private_->Parts;
}

void MainWindow::closeEvent(QCloseEvent* event) {
  event->accept();
}

}  // namespace quorvelant
