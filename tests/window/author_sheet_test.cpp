#include "window/author_sheet.h"

#include <QDialogButtonBox>
#include <fstream>

#include "edit/structure.h"
#include "open_window.h"
#include "support/pressed_action.h"

namespace quorvelant {
namespace {

class Sheet {
 public:
  explicit Sheet(OpenWindow& open) : open_(open) {
    Press(*open.Window.Parts().Commands.Of(ActionId::Author));
    EXPECT_TRUE(OpenWindow::Wait([this] { return Shown() != nullptr; }));
  }
  [[nodiscard]] AuthorSheet* Shown() const { return qobject_cast<AuthorSheet*>(open_.Dialog()); }
  QLineEdit& Folder() { return open_.Named<QLineEdit>("Folder", Shown()); }
  QPushButton& Author() { return *Shown()->findChild<QDialogButtonBox*>()->findChild<QPushButton*>(); }
  // All that its labels say.
  std::string Words() {
    std::string words;
    for (const QLabel* const label : Shown()->findChildren<QLabel*>()) {
      words += label->isVisible() ? label->text().toStdString() + "\n" : std::string();
    }
    return words;
  }
  void Make(const std::string& folder) {
    Folder().setText(quorvelant::Shown(folder));
    Folder().setFocus();
    QTest::keyClick(&Folder(), Qt::Key_Return);
  }

 private:
  OpenWindow& open_;
};

// A folder that takes no disc leaves the sheet as it is, and says in it what to do.
TEST(AuthorSheet, StaysWhereTheFolderIsRefused) {
  const TempFolder folder;
  OpenWindow open(folder);
  open.Window.Open({CopyOfExample(folder)});
  open.Settle();
  std::filesystem::create_directories(folder / "letters");
  std::ofstream(folder / "letters/letter.txt") << "x";
  std::ofstream(folder / "file") << "x";
  std::filesystem::create_directories(folder / "disc");
  std::ofstream(folder / "disc/VIDEO_TS.IFO") << "x";
  Sheet sheet(open);
  struct Case {
    const char* Folder;
    const char* Words;
  };
  for (const Case& one : {Case{"letters", "letter.txt"}, Case{"file", "not a folder"},
                          Case{"file/VIDEO_TS", "cannot be made"}, Case{"disc", "stays"}}) {
    open.Answers.Yes = {false};
    sheet.Make(folder / one.Folder);
    ASSERT_NE(sheet.Shown(), nullptr) << one.Folder;
    EXPECT_EQ(sheet.Folder().text().toStdString(), folder / one.Folder);
    EXPECT_NE(sheet.Words().find(one.Words), std::string::npos) << sheet.Words();
    EXPECT_NE(sheet.Words().find(folder / one.Folder), std::string::npos) << sheet.Words();
    EXPECT_NE(sheet.Words().find("choose another folder, or an empty one"), std::string::npos);
  }
  EXPECT_EQ(open.Answers.Verbs, (std::vector<std::string>{"Replace", "Keep"}));
  EXPECT_EQ(open.Answers.Harms, 1);
  EXPECT_TRUE(sheet.Author().isEnabled());
}

// It is remembered beside the project: what can be undone stays what was edited last.
TEST(AuthorSheet, RemembersTheFolderWithoutAnEdit) {
  const TempFolder folder;
  const std::string project = CopyOfExample(folder);
  {
    OpenWindow open(folder);
    open.Window.Open({project});
    open.Settle();
    Sheet sheet(open);
    sheet.Make("made/VIDEO_TS");  // beside the project
    open.Settle();
    EXPECT_EQ(open.Dialog(), nullptr);
    EXPECT_TRUE(std::filesystem::exists(folder / "examples/made/VIDEO_TS/VIDEO_TS.IFO")) << open.Told;
    EXPECT_FALSE(open.Doc().Session().CanUndo());
    EXPECT_FALSE(open.Doc().Session().IsUnsaved());
  }
  OpenWindow next(folder);
  next.Window.Open({project});
  next.Settle();
  Sheet sheet(next);
  EXPECT_EQ(sheet.Folder().text().toStdString(), folder / "examples/made/VIDEO_TS");
  sheet.Shown()->reject();
}

// Errors that are known hold it back, by the rules that are chosen.
TEST(AuthorSheet, SaysWhatHoldsItBack) {
  const TempFolder folder;
  OpenWindow open(folder);
  {
    Sheet sheet(open);
    EXPECT_FALSE(sheet.Author().isEnabled());
    EXPECT_NE(sheet.Words().find("Nothing is in the project yet"), std::string::npos) << sheet.Words();
    sheet.Shown()->reject();
  }
  const std::string project = CopyOfExample(folder);
  std::filesystem::rename(folder / "examples/media/menu.m2v", folder / "away.m2v");
  open.Window.Open({project});
  open.Settle();
  auto& health = ProjectHealth::Of(open.Doc());
  Sheet sheet(open);
  ASSERT_TRUE(OpenWindow::Wait([&health] { return health.IsWhole(); }));
  EXPECT_FALSE(sheet.Author().isEnabled());
  EXPECT_NE(sheet.Words().find("see Problems"), std::string::npos) << sheet.Words();
  EXPECT_NE(sheet.Author().accessibleDescription(), QString());
  std::filesystem::rename(folder / "away.m2v", folder / "examples/media/menu.m2v");
  health.LookAgain();
  EXPECT_TRUE(OpenWindow::Wait([&] { return sheet.Author().isEnabled(); }));
  sheet.Folder().clear();
  EXPECT_FALSE(sheet.Author().isEnabled());
  sheet.Shown()->reject();
  open.Doc().Do([](EditSession& session, Consent) { return NewTitleSet(session); });
  ASSERT_TRUE(OpenWindow::Wait([&health] { return HasErrors(health.Found()); }));
  Sheet byRules(open);
  EXPECT_TRUE(OpenWindow::Wait([&byRules] { return !byRules.Author().isEnabled(); }));
  open.Named<QComboBox>("Rules", byRules.Shown()).setCurrentIndex(1);  // by which it is a warning
  EXPECT_TRUE(
      OpenWindow::Wait([&byRules] { return byRules.Words().find("no errors") != std::string::npos; }));
  EXPECT_TRUE(byRules.Author().isEnabled());
}

}  // namespace
}  // namespace quorvelant
