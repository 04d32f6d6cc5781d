// Everything that a user can command, in one table.
#pragma once

#include <QAction>
#include <QKeySequence>
#include <QObject>
#include <QPointer>
#include <cstdint>
#include <functional>
#include <map>
#include <span>
#include <string_view>
#include <vector>

namespace quorvelant {

enum class ActionId : std::uint8_t {
  // File
  NewProject,
  NewDiscFromFilms,
  Open,
  OpenExample,
  Save,
  SaveAs,
  Quit,
  // Edit
  Undo,
  Redo,
  Rename,
  Remove,
  // View
  ShowMedia,
  ShowDisc,
  ShowPicture,
  ShowProperties,
  ShowTables,
  ShowProblems,
  NextPane,
  PreviousPane,
  ResetLayout,
  PreviousGop,
  NextGop,
  FirstSubtitle,
  PreviousSubtitle,
  NextSubtitle,
  LastSubtitle,
  NextView,
  SafeArea,
  SaveFrame,
  SaveFrameAsTrack,
  // Track
  NewTrack,
  ImportFile,
  AddVideo,
  AddAudio,
  AddSubtitles,
  NewChapter,
  ImportChapters,
  MoveChapters,
  NewSubtitle,
  SubtitleStart,
  SubtitleEnd,
  SubtitleStartAlong,
  SubtitleEndAlong,
  ReplaceBitmap,
  NewButton,
  RouteButtons,
  // Disc
  NewTitleSet,
  NewTitle,
  NewLanguage,
  NewPgc,
  NewProgram,
  PlaceTrack,
  InsertCommand,
  MoveCommandUp,
  MoveCommandDown,
  NewPalette,
  Check,
  Simulate,
  ShowMap,
  ErrorList,
  Author,
  // Tools
  LocateFiles,
  Settings,
  // Help
  Manual,
  Shortcuts,
  ChangeLog,
  About,
};

enum class MenuId : std::uint8_t { File, Edit, View, Track, Disc, Tools, Help };

// One row of the table.
struct ActionRow {
  ActionId Id;
  MenuId Menu;
  std::string_view Text;     // of the menu, with "…" where more is asked
  std::string_view Tip;      // one sentence; shown in the status bar, and by the shortcut sheet
  std::string_view Icon;     // name of a picture in the program's resources; empty for none
  std::string_view Keys;     // portable text ("Ctrl+Shift+S"); empty for none
  bool StartsGroup = false;  // a line above it in the menu
};

// In the order of the menus.
[[nodiscard]] std::span<const ActionRow> ActionTable();

// The actions of one window. Panes say what each does and when it can be done; one that nobody handles does
// not exist in a finished window, which a test holds.
class Actions : public QObject {
  Q_OBJECT
 public:
  explicit Actions(QWidget* window);

  [[nodiscard]] QAction* Of(ActionId id) const;
  // `isPossible` is asked again by `Refresh`; without one the action can always be done.
  // Of several that handle an action, the first that can does.
  void Handle(ActionId id, std::function<void()> run, std::function<bool()> isPossible = {});
  // While the keys go to the pane, in place of what others say of the action ("Remove" in a table).
  void HandleIn(QWidget* pane, ActionId id, std::function<void()> run, std::function<bool()> isPossible = {});
  [[nodiscard]] bool IsHandled(ActionId id) const;
  // After anything that the answers may hang on: the project, the selection, the clipboard. Cheap: it is put
  // off to the end of the present event.
  void Refresh();

 private:
  struct Handler {
    QPointer<QWidget> Pane;  // null for everywhere
    bool IsOfPane = false;
    std::function<void()> Run;
    std::function<bool()> IsPossible;
  };
  [[nodiscard]] const Handler* HandlerOf(ActionId id) const;
  void Add(ActionId id, Handler handler);

  std::map<ActionId, QAction*> actions_;
  std::map<ActionId, std::vector<Handler>> handlers_;
  QPointer<QWidget> focus_;  // that had the keys last; menus do not count
  bool isDue_ = false;
};

}  // namespace quorvelant
