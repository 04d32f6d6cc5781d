#include "window/actions.h"

#include <QApplication>
#include <QFile>
#include <QMenu>
#include <QMenuBar>
#include <QMetaObject>
#include <QWidget>
#include <algorithm>
#include <array>
#include <utility>

#include "window/icons.h"

namespace quorvelant {

namespace {

using enum ActionId;
using enum MenuId;

constexpr std::array FileRows{
    ActionRow{NewProject, File, "New", "Begin a project with nothing in it", "new", "Ctrl+N"},
    ActionRow{NewDiscFromFilms, File, "New Disc from Films…", "Make a project with menus of a few films",
              "new-disc", "Ctrl+Shift+N"},
    ActionRow{Open, File, "Open…", "Open a project", "open", "Ctrl+O"},
    ActionRow{OpenExample, File, "Open the Example", "Open the project that comes with the program",
              "example", ""},
    ActionRow{Save, File, "Save", "Save the project", "save", "Ctrl+S", true},
    ActionRow{SaveAs, File, "Save As…", "Save the project to another file", "save-as", "Ctrl+Shift+S"},
    ActionRow{Quit, File, "Quit", "Close the window", "quit", "Ctrl+Q", true},
};

constexpr std::array EditRows{
    ActionRow{Undo, Edit, "Undo", "Take the last step back", "undo", "Ctrl+Z"},
    ActionRow{Redo, Edit, "Redo", "Make the step again that was taken back", "redo", "Ctrl+Shift+Z"},
    ActionRow{Rename, Edit, "Rename", "Give the chosen element another name", "rename", "F2", true},
    ActionRow{Remove, Edit, "Remove", "Remove what is chosen", "remove", "Del"},
};

constexpr std::array ViewRows{
    ActionRow{ShowMedia, View, "Media", "Go to the source material", "", "Ctrl+1"},
    ActionRow{ShowDisc, View, "Disc", "Go to the structure of the disc", "", "Ctrl+2"},
    ActionRow{ShowPicture, View, "Picture", "Go to the picture", "", "Ctrl+3"},
    ActionRow{ShowProperties, View, "Properties", "Go to the fields of the chosen element", "", "Ctrl+4"},
    ActionRow{ShowTables, View, "Tables", "Go to subtitles, buttons, chapters or commands", "", "Ctrl+5"},
    ActionRow{ShowProblems, View, "Problems, Jobs and Log", "Go to what was found and what is being done", "",
              "Ctrl+6"},
    ActionRow{NextPane, View, "Next Pane", "Go to the next pane", "", "F6", true},
    ActionRow{PreviousPane, View, "Previous Pane", "Go to the pane before", "", "Shift+F6"},
    ActionRow{ResetLayout, View, "Reset Layout", "Put all panes where they were at first", "", ""},
    ActionRow{PreviousGop, View, "Previous Picture", "Show the picture before that stands on its own",
              "previous-gop", "Ctrl+PgUp", true},
    ActionRow{NextGop, View, "Next Picture", "Show the next picture that stands on its own", "next-gop",
              "Ctrl+PgDown"},
    ActionRow{FirstSubtitle, View, "First Subtitle", "Go to the first subtitle of the stream", "first",
              "Alt+Home"},
    ActionRow{PreviousSubtitle, View, "Previous Subtitle", "Go to the subtitle before", "previous",
              "Alt+PgUp"},
    ActionRow{NextSubtitle, View, "Next Subtitle", "Go to the next subtitle", "next", "Alt+PgDown"},
    ActionRow{LastSubtitle, View, "Last Subtitle", "Go to the last subtitle of the stream", "last",
              "Alt+End"},
    ActionRow{NextView, View, "Next Viewing Mode", "Show the picture as another kind of screen does", "view",
              "Ctrl+Shift+V", true},
    ActionRow{SafeArea, View, "Safe Area", "Show the lines within which every screen shows the picture",
              "safe-area", "Ctrl+Shift+A"},
    ActionRow{SaveFrame, View, "Save Picture…", "Save the picture as a file", "save-frame", "Ctrl+Shift+F",
              true},
    ActionRow{SaveFrameAsTrack, View, "Save Picture as Track…",
              "Save the picture as a file, and take it in as a still", "", ""},
};

constexpr std::array TrackRows{
    ActionRow{NewTrack, MenuId::Track, "New Track…", "Take a film, a still or pictures in as a new track",
              "new-track", "Ctrl+T"},
    ActionRow{ImportFile, MenuId::Track, "Import File…", "Give the chosen play or stream its file", "",
              "Ctrl+I"},
    ActionRow{AddVideo, MenuId::Track, "Add Video…", "Add a film or slide to the end of the track", "", ""},
    ActionRow{AddAudio, MenuId::Track, "Add Audio Stream…", "Add a stream of sound to the track", "audio",
              ""},
    ActionRow{AddSubtitles, MenuId::Track, "Add Subtitle Stream…", "Add a stream of subtitles to the track",
              "subtitles", ""},
    ActionRow{NewChapter, MenuId::Track, "New Chapter…", "Begin a chapter at the moment that is shown",
              "chapter", "Ctrl+M", true},
    ActionRow{ImportChapters, MenuId::Track, "Import Chapters…", "Take chapters from a list", "", ""},
    ActionRow{MoveChapters, MenuId::Track, "Move Chapters onto Pictures",
              "Move chapters to where a player can jump", "", ""},
    ActionRow{NewSubtitle, MenuId::Track, "New Subtitle…", "Begin a subtitle at the moment that is shown", "",
              "Ctrl+E", true},
    ActionRow{SubtitleStart, MenuId::Track, "Subtitle Starts Here",
              "The subtitle starts at the moment that is shown", "", "["},
    ActionRow{SubtitleEnd, MenuId::Track, "Subtitle Ends Here",
              "The subtitle ends at the moment that is shown", "", "]"},
    ActionRow{SubtitleStartAlong, MenuId::Track, "Subtitle and All After It Start Here",
              "The subtitle starts at the moment that is shown, and the rest moves along", "", "{"},
    ActionRow{SubtitleEndAlong, MenuId::Track, "Subtitle Ends Here and All After It Move",
              "The subtitle ends at the moment that is shown, and the rest moves along", "", "}"},
    ActionRow{ReplaceBitmap, MenuId::Track, "Replace Bitmap…", "Give the subtitle another bitmap", "", ""},
    ActionRow{NewButton, MenuId::Track, "New Button", "Put a button onto the picture", "button",
              "Ctrl+Shift+B", true},
    ActionRow{RouteButtons, MenuId::Track, "Link Buttons", "Link all buttons by where they lie", "route", ""},
};

constexpr std::array DiscRows{
    ActionRow{NewTitleSet, Disc, "New Title Set", "Add a title set", "title-set", ""},
    ActionRow{NewTitle, Disc, "New Title…", "Add a title to the title set", "title", "Ctrl+Shift+T"},
    ActionRow{NewLanguage, Disc, "New Language…", "Add menus in another language", "language", ""},
    ActionRow{NewPgc, Disc, "New PGC…", "Add a PGC to the title or the menus", "pgc", "Ctrl+Shift+P"},
    ActionRow{NewProgram, Disc, "New Program…", "Add a program to the PGC", "program", ""},
    ActionRow{PlaceTrack, Disc, "Place Track", "Place a track in what is chosen of the disc", "place-track",
              "Ctrl+L"},
    ActionRow{InsertCommand, Disc, "Insert Command", "Insert a command before the chosen one", "command",
              "Ctrl+Shift+I", true},
    ActionRow{MoveCommandUp, Disc, "Move Command Up", "Move the command one place up", "", "Ctrl+Shift+Up"},
    ActionRow{MoveCommandDown, Disc, "Move Command Down", "Move the command one place down", "",
              "Ctrl+Shift+Down"},
    ActionRow{NewPalette, Disc, "New Palette…", "Add a palette of sixteen colours", "palette", ""},
    ActionRow{Check, Disc, "Check", "Look for everything that hinders a good disc", "check", "F7", true},
    ActionRow{Simulate, Disc, "Simulate",
              "Play the disc as a player will, before it is made; again to end it", "simulate", "F5"},
    ActionRow{ShowMap, Disc, "Map…", "Show the navigation of the disc as a chart", "", "Ctrl+Shift+M"},
    ActionRow{ErrorList, Disc, "Command Errors…", "List the commands that lead nowhere", "error-list", ""},
    ActionRow{Author, Disc, "Author…", "Make the disc", "author", "Ctrl+B"},
};

constexpr std::array ToolRows{
    ActionRow{LocateFiles, Tools, "Locate Missing Files…", "Say where files are that are not found", "locate",
              ""},
    ActionRow{ActionId::Settings, Tools, "Settings…", "Change what holds for all projects", "settings",
              "Ctrl+,", true},
};

constexpr std::array HelpRows{
    ActionRow{Manual, Help, "Manual", "Read how things are done", "manual", "F1"},
    ActionRow{Shortcuts, Help, "Shortcuts", "List the keys", "shortcuts", "Ctrl+F1"},
    ActionRow{ChangeLog, Help, "Change Log", "Read what is new", "change-log", "", true},
    ActionRow{About, Help, "About Quorvelant", "Which version this is", "", ""},
};

template <std::size_t... Sizes>
constexpr auto Joined(const std::array<ActionRow, Sizes>&... parts) {
  std::array<ActionRow, (Sizes + ...)> whole{};
  std::size_t at = 0;
  const auto append = [&whole, &at](const auto& part) {
    for (const ActionRow& row : part) {
      whole.at(at++) = row;
    }
  };
  (append(parts), ...);
  return whole;
}

constexpr auto Rows = Joined(FileRows, EditRows, ViewRows, TrackRows, DiscRows, ToolRows, HelpRows);

QString ToText(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QAction* MakeAction(const ActionRow& row, QWidget& window) {
  auto* const action = new QAction(Actions::tr(ToText(row.Text).toUtf8().constData()), &window);
  action->setObjectName(ToText(row.Text));
  const QString tip = Actions::tr(ToText(row.Tip).toUtf8().constData());
  action->setStatusTip(tip);
  const QKeySequence keys(ToText(row.Keys), QKeySequence::PortableText);
  action->setShortcut(keys);
  action->setToolTip(
      keys.isEmpty() ? tip : QStringLiteral("%1 (%2)").arg(tip, keys.toString(QKeySequence::NativeText)));
  action->setEnabled(false);
  if (!row.Icon.empty()) {
    action->setIcon(IconNamed(row.Icon));
  }
  return action;
}

}  // namespace

std::span<const ActionRow> ActionTable() {
  return Rows;
}

Actions::Actions(QWidget* window) : QObject(window) {
  for (const ActionRow& row : ActionTable()) {
    QAction* const action = MakeAction(row, *window);
    window->addAction(action);
    actions_.emplace(row.Id, action);
  }
  Of(Quit)->setMenuRole(QAction::QuitRole);
  Of(About)->setMenuRole(QAction::AboutRole);
  Of(ActionId::Settings)->setMenuRole(QAction::PreferencesRole);
  Of(SafeArea)->setCheckable(true);
  Of(Simulate)->setCheckable(true);
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget* /*old*/, QWidget* now) {
    if (now != nullptr && qobject_cast<QMenuBar*>(now) == nullptr && qobject_cast<QMenu*>(now) == nullptr) {
      focus_ = now;
      Refresh();
    }
  });
}

QAction* Actions::Of(ActionId id) const {
  return actions_.at(id);
}

void Actions::Handle(ActionId id, std::function<void()> run, std::function<bool()> isPossible) {
  Add(id, {.Pane = {}, .IsOfPane = false, .Run = std::move(run), .IsPossible = std::move(isPossible)});
}

void Actions::HandleIn(QWidget* pane, ActionId id, std::function<void()> run,
                       std::function<bool()> isPossible) {
  Add(id, {.Pane = pane, .IsOfPane = true, .Run = std::move(run), .IsPossible = std::move(isPossible)});
}

void Actions::Add(ActionId id, Handler handler) {
  handlers_[id].push_back(std::move(handler));
  QAction* const action = Of(id);
  action->disconnect(this);
  // From the event loop, since a handler may ask: whoever triggered it, a screen reader over its bus too,
  // goes on.
  const auto run = [this, id] {
    if (const Handler* const handling = HandlerOf(id)) {
      handling->Run();
    }
  };
  connect(action, &QAction::triggered, this, run, Qt::QueuedConnection);
  action->setEnabled(HandlerOf(id) != nullptr);
}

// The one that would do it now; null where it cannot be done.
const Actions::Handler* Actions::HandlerOf(ActionId id) const {
  const auto found = handlers_.find(id);
  if (found == handlers_.end()) {
    return nullptr;
  }
  const auto hasKeys = [this](const Handler& handler) {
    return handler.Pane != nullptr && focus_ != nullptr &&
           (handler.Pane == focus_ || handler.Pane->isAncestorOf(focus_));
  };
  const bool isOfPane = std::ranges::any_of(found->second, hasKeys);
  for (const Handler& handler : found->second) {
    const bool isMeant = isOfPane ? hasKeys(handler) : !handler.IsOfPane;
    if (isMeant && (!handler.IsPossible || handler.IsPossible())) {
      return &handler;
    }
  }
  return nullptr;
}

bool Actions::IsHandled(ActionId id) const {
  return handlers_.contains(id);
}

void Actions::Refresh() {
  if (isDue_) {
    return;
  }
  isDue_ = true;
  const auto now = [this] {
    isDue_ = false;
    for (const auto& [id, handlers] : handlers_) {
      Of(id)->setEnabled(HandlerOf(id) != nullptr);
    }
  };
  QMetaObject::invokeMethod(this, now, Qt::QueuedConnection);
}

}  // namespace quorvelant
