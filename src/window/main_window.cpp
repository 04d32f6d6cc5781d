#include "window/main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDialog>
#include <QDir>
#include <QLabel>
#include <QMenuBar>
#include <QMimeData>
#include <QScreen>
#include <QSettings>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>

#include "desk/edit_options.h"
#include "desk/new_project.h"
#include "model/keys.h"
#include "model/walk.h"
#include "platform/platform_pictures.h"
#include "ui/media_import.h"
#include "ui/shown_text.h"
#include "window/author_sheet.h"
#include "window/boxes.h"
#include "window/dropped_files.h"
#include "window/film_wizard.h"
#include "window/help_actions.h"
#include "window/icons.h"
#include "window/messages.h"
#include "window/notice_bar.h"
#include "window/pane_layout.h"
#include "window/problems_pane.h"
#include "window/project_files.h"
#include "window/size_gauge.h"
#include "window/start_page.h"
#include "window/tool_actions.h"

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
        View(Doc, Chosen, Work, *Pictures),
        Player(Doc, Work, *Pictures),
        Parts{Doc,
              Chosen,
              View,
              Player,
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
  Simulation Player;
  WindowParts Parts;
  ProjectFiles* Files = nullptr;
  PaneLayout* Layout = nullptr;
  StartPage* Start = nullptr;
  QLabel* Status = nullptr;
  bool HasBegun = false;  // somebody opened, made or changed a project
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

// What a disc is made by has its words beside it.
void FillToolBar(QToolBar& bar, const Actions& actions) {
  using enum ActionId;
  const std::vector<std::vector<ActionId>> groups{
      {NewProject, Open, Save}, {Undo, Redo}, {NewTrack}, {Check, Simulate, Author}};
  for (const auto& group : groups) {
    if (!bar.actions().isEmpty()) {
      bar.addSeparator();
    }
    for (const ActionId id : group) {
      bar.addAction(actions.Of(id));
      auto* const button = qobject_cast<QToolButton*>(bar.widgetForAction(actions.Of(id)));
      if (button != nullptr && (id == NewTrack || id == Check || id == Simulate || id == Author)) {
        button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
      }
    }
  }
}

}  // namespace

MainWindow::MainWindow(WindowSetup setup) : private_(std::make_unique<Private>(*this, std::move(setup))) {
  Private& its = *private_;
  its.Notices->Follow(its.Work);
  its.Files = new ProjectFiles(its.Parts, *its.Notices, *this);
  FillMenus(*menuBar(), *its.Commands);
  AddRecentMenu();
  QToolBar* const tools = addToolBar(tr("Tools"));
  tools->setObjectName(QStringLiteral("Tools"));
  FillToolBar(*tools, *its.Commands);
  addToolBarBreak();
  addToolBar(its.Notices);
  its.Start = new StartPage(*its.Commands);
  its.Layout = new PaneLayout(*this, its.Parts, its.Start);
  its.Status = new QLabel(tr("Ready"));
  its.Status->setTextFormat(Qt::PlainText);
  statusBar()->addWidget(its.Status, 1);
  auto* const gauge = new SizeGauge(its.Parts);
  statusBar()->addPermanentWidget(gauge);
  auto* const author = new AuthorAction(
      its.Parts, *its.Files, [gauge]() -> const DiscMedium& { return gauge->Medium(); }, *this);
  connect(author, &AuthorAction::Began, this, [this] {
    private_->Notices->Fade();
    private_->Layout->GoTo(QStringLiteral("Jobs"));
  });
  setAcceptDrops(true);
  HandleHistory();
  HandleTools(its.Parts, this);
  HandleHelp(*its.Commands, this);
  its.Commands->Handle(ActionId::NewDiscFromFilms, [this] {
    auto* const wizard = new FilmWizard(private_->Parts, *private_->Files, this);
    wizard->setAttribute(Qt::WA_DeleteOnClose);
    wizard->open();
  });
  Connect();
  RestoreState();
  ShowState();
}

void MainWindow::AddRecentMenu() {
  QMenu* const file = menuBar()->actions().constFirst()->menu();
  auto* const recent = new QMenu(tr("Open Recent"), file);
  file->insertMenu(private_->Commands->Of(ActionId::OpenExample), recent);
  private_->Files->FillRecentMenu(*recent);
}

void MainWindow::HandleHistory() {
  Document& document = private_->Doc;
  private_->Commands->Handle(
      ActionId::Undo, [&document] { document.Undo(); }, [&document] { return document.Session().CanUndo(); });
  private_->Commands->Handle(
      ActionId::Redo, [&document] { document.Redo(); }, [&document] { return document.Session().CanRedo(); });
}

void MainWindow::Connect() {
  Private& its = *private_;
  connect(&its.Speaks, &Voice::StatusTold, its.Status, &QLabel::setText);
  connect(&its.Speaks, &Voice::Told, this, [this](const Message& message) {
    if (message.Level == Severity::Information) {
      private_->Status->setText(Shown(message.Text));
    }
  });
  connect(&its.Player, &Simulation::Inserted, its.Notices, &NoticeBar::Fade);
  connect(&its.Doc, &Document::StateChanged, this, &MainWindow::ShowState);
  connect(&its.Doc, qOverload<const ChangeEvent&>(&Document::Changed), this,
          [this](const ChangeEvent& event) {
            private_->Notices->Fade();
            const std::string words = event.Replaced ? std::string() : private_->Doc.Session().UndoWords();
            private_->Status->setText(words.empty() ? tr("Ready") : Shown(words));
            ShowState();
          });
  auto* const problems = qobject_cast<ProblemsPane*>(its.Layout->Pane(QStringLiteral("Problems")));
  connect(problems, &ProblemsPane::TabWords, this,
          [this](const QString& words) { private_->Layout->SetTab(QStringLiteral("Problems"), words); });
  connect(problems, &ProblemsPane::Asked, this,
          [this] { private_->Layout->GoTo(QStringLiteral("Problems")); });
  connect(its.Files, &ProjectFiles::Opened, this, [this] {
    private_->HasBegun = true;
    ShowState();
    ChooseFirst();
  });
  connect(qApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
    if (state == Qt::ApplicationActive) {  // files may have come or gone meanwhile
      ProjectHealth::Of(private_->Doc).LookAgain();
    }
  });
  connect(&its.Chosen, &Selection::KeyChanged, its.Commands, &Actions::Refresh);
  connect(&its.View, &Viewer::StateMoved, its.Commands, &Actions::Refresh);
  connect(its.Start, &StartPage::Chosen, this, [this](const QString& file) { Open({file.toStdString()}); });
  connect(&its.Files->Recent(), &RecentFiles::Changed, this,
          [this] { private_->Start->SetRecent(private_->Files->Recent().Files()); });
  its.Start->SetRecent(its.Files->Recent().Files());
}

// So that there is something to look at.
void MainWindow::ChooseFirst() {
  const Tracks& tracks = private_->Doc.Work().Tracks;
  for (std::size_t i = 0; i < tracks.Count() && private_->Chosen.Key().empty(); ++i) {
    if (!tracks[i].Removed) {
      private_->Chosen.Choose(TrackKey(i));
    }
  }
}

void MainWindow::ShowState() {
  Private& its = *private_;
  setWindowTitle(its.Files->Caption() + QStringLiteral("[*] - Quorvelant"));
  setWindowModified(its.Doc.Session().IsUnsaved());
  const std::string undo = its.Doc.Session().UndoWords();
  const std::string redo = its.Doc.Session().RedoWords();
  its.Commands->Of(ActionId::Undo)
      ->setStatusTip(undo.empty() ? QString() : tr("Take back: %1").arg(Shown(undo)));
  its.Commands->Of(ActionId::Redo)
      ->setStatusTip(redo.empty() ? QString() : tr("Make again: %1").arg(Shown(redo)));
  const EditSession& session = its.Doc.Session();
  its.HasBegun |= session.CanUndo() || !session.File().empty();
  its.Layout->SetEmpty(!its.HasBegun);
  its.Commands->Refresh();
}

// Other files are source material, which comes into the project.
void MainWindow::Open(const std::vector<std::string>& files) {
  const MediaImport import(private_->Doc, private_->Work, private_->Chosen);
  const std::vector<std::string> projects = import.Bring(files);
  if (!projects.empty()) {
    private_->Files->Open(projects.front());
  }
}

void MainWindow::OfferLeftWork() {
  private_->Files->OfferLeftWork();
}

namespace {

QString LayoutFile(const WindowParts& parts) {
  return parts.StateFolder.empty() ? QString() : Shown(parts.StateFolder) + QStringLiteral("/window.ini");
}

}  // namespace

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
  if (HoldsFiles(*event->mimeData())) {
    event->acceptProposedAction();
  }
}

void MainWindow::dropEvent(QDropEvent* event) {
  std::vector<Message> told;
  Open(PathsIn(*event->mimeData(), told));
  for (const Message& message : told) {
    private_->Speaks.Tell(message);
  }
  event->acceptProposedAction();
}

void MainWindow::resizeEvent(QResizeEvent* event) {
  QMainWindow::resizeEvent(event);
  private_->Layout->Adapt();
}

void MainWindow::RestoreState() {
  const int line = fontMetrics().height();
  const QSize frame(line / 2, 5 * line / 2);  // what a window manager puts around it
  const QSize room = (screen() != nullptr ? screen()->availableSize() : QSize(100 * line, 60 * line)) - frame;
  resize(QSize(100 * line, 58 * line).boundedTo(room));
  const QString file = LayoutFile(private_->Parts);
  QByteArray panes;
  if (!file.isEmpty() && QFile::exists(file)) {
    const QSettings state(file, QSettings::IniFormat);
    restoreGeometry(state.value(QStringLiteral("geometry")).toByteArray());
    panes = state.value(QStringLiteral("panes")).toByteArray();
  }
  private_->Layout->Restore(panes);
  private_->Notices->hide();
}

void MainWindow::KeepState() const {
  const QString file = LayoutFile(private_->Parts);
  if (!file.isEmpty() && QDir().mkpath(Shown(private_->Parts.StateFolder))) {
    QSettings state(file, QSettings::IniFormat);
    state.setValue(QStringLiteral("geometry"), saveGeometry());
    state.setValue(QStringLiteral("panes"), private_->Layout->State());
  }
}

MainWindow::~MainWindow() {
  // What looks at the parts goes before them.
  qDeleteAll(findChildren<QDialog*>(QString(), Qt::FindDirectChildrenOnly));
  delete takeCentralWidget();
  qDeleteAll(findChildren<QDockWidget*>(QString(), Qt::FindDirectChildrenOnly));
  delete statusBar();
}

WindowParts& MainWindow::Parts() {
  return private_->Parts;
}

void MainWindow::closeEvent(QCloseEvent* event) {
  const bool mayStop = !private_->Work.AnyRunning() || MayStopJobs();
  if (!mayStop || !private_->Files->MayLeave()) {
    event->ignore();
    return;
  }
  private_->Player.Eject();
  KeepState();
  event->accept();
}

bool MainWindow::MayStopJobs() {
  const Message question = MessageOf(message::AskStopJobs, {});
  return private_->Parts.Answers.AskToDestroy(question.Title, question.Text, "Stop", "Go On");
}

}  // namespace quorvelant
