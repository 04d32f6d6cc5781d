// The manual: every link leads somewhere, in the checkout and in the program, and what it tells readers to
// choose is there under that name.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRegularExpression>
#include <QTest>
#include <QTextBlock>
#include <filesystem>
#include <map>
#include <set>

#include "support/folders.h"
#include "support/pressed_action.h"
#include "support/temp_folder.h"
#include "window/about_box.h"
#include "window/actions.h"
#include "window/help_actions.h"
#include "window/manual_browser.h"
#include "window/manual_window.h"
#include "window/shortcut_sheet.h"

namespace quorvelant {
namespace {

namespace fs = std::filesystem;
using testing::Contains;
using testing::IsEmpty;
using testing::Not;

std::map<std::string, QString> PagesOfManual() {
  std::map<std::string, QString> pages;
  for (const auto& entry : fs::directory_iterator(SourceFile("docs/manual"))) {
    pages.emplace(entry.path().filename().string(), QString::fromStdString(TempFolder::Read(entry.path())));
  }
  return pages;
}

std::vector<QRegularExpressionMatch> All(const char* pattern, const QString& text) {
  std::vector<QRegularExpressionMatch> found;
  for (auto each = QRegularExpression(QString::fromUtf8(pattern)).globalMatch(text); each.hasNext();) {
    found.push_back(each.next());
  }
  return found;
}

std::set<QString> HeadingsOf(const fs::path& page) {
  std::set<QString> names;
  for (const auto& heading : All("(?m)^#+ (.+)$", QString::fromStdString(TempFolder::Read(page)))) {
    names.insert(ManualBrowser::HeadingName(heading.captured(1)));
  }
  return names;
}

TEST(Manual, HasNoDeadLinks) {
  for (const auto& [name, text] : PagesOfManual()) {
    for (const auto& link : All(R"(\]\(([^)#]*)(?:#([^)]*))?\))", text)) {
      const fs::path target = fs::path(SourceFile("docs/manual")) /
                              (link.captured(1).isEmpty() ? name : link.captured(1).toStdString());
      EXPECT_TRUE(fs::exists(target)) << name << ": " << link.captured(0).toStdString();
      if (link.hasCaptured(2) && fs::exists(target)) {
        EXPECT_TRUE(HeadingsOf(target).contains(link.captured(2)))
            << name << ": no such heading: " << link.captured(0).toStdString();
      }
    }
  }
}

TEST(Manual, ListsEveryPageByItsHeading) {
  const std::vector<ManualPage> listed = ManualPages();
  for (const auto& [name, text] : PagesOfManual()) {
    const auto page = std::ranges::find(listed, QStringLiteral("manual/") + QString::fromStdString(name),
                                        &ManualPage::File);
    ASSERT_NE(page, listed.end()) << name << " is not on the first page";
    if (name != "index.md") {
      EXPECT_EQ(QStringLiteral("# ") + page->Title, text.section(QLatin1Char('\n'), 0, 0));
    }
  }
}

// "**File > Open…**" is the action of that text in that menu.
TEST(Manual, NamesActionsAsTheMenusDo) {
  static const std::map<QString, MenuId> Menus{
      {"File", MenuId::File}, {"Edit", MenuId::Edit},   {"View", MenuId::View}, {"Track", MenuId::Track},
      {"Disc", MenuId::Disc}, {"Tools", MenuId::Tools}, {"Help", MenuId::Help}};
  std::set<std::pair<MenuId, QString>> actions;
  for (const ActionRow& row : ActionTable()) {
    actions.emplace(row.Menu, QString::fromUtf8(row.Text.data(), static_cast<qsizetype>(row.Text.size())));
  }
  int count = 0;
  for (const auto& [name, text] : PagesOfManual()) {
    for (const auto& named : All(R"(\*\*(\w+)\s>\s([^*]+)\*\*)", text)) {
      ++count;
      ASSERT_TRUE(Menus.contains(named.captured(1))) << name << ": " << named.captured(0).toStdString();
      EXPECT_THAT(actions, Contains(std::pair(Menus.at(named.captured(1)), named.captured(2).simplified())))
          << name;
    }
  }
  EXPECT_GE(count, 20);
}

TEST(Manual, ShowsWhatEachLinkNames) {
  ManualBrowser browser;
  for (const ManualPage& page : ManualPages()) {
    const QUrl here(QStringLiteral("qrc:/docs/") + page.File);
    browser.setSource(here);
    ASSERT_THAT(browser.toPlainText().toStdString(), Not(IsEmpty())) << page.File.toStdString();
    std::set<QString> links;
    std::set<QString> pictures;
    for (QTextBlock block = browser.document()->begin(); block.isValid(); block = block.next()) {
      for (auto part = block.begin(); !part.atEnd(); ++part) {
        const QTextCharFormat format = part.fragment().charFormat();
        if (format.isAnchor()) {
          links.insert(format.anchorHref());
        }
        if (format.isImageFormat()) {
          pictures.insert(format.toImageFormat().name());
        }
      }
    }
    for (const QString& picture : pictures) {
      EXPECT_FALSE(browser.loadResource(QTextDocument::ImageResource, here.resolved(QUrl(picture)))
                       .value<QImage>()
                       .isNull())
          << page.File.toStdString() << ": " << picture.toStdString();
    }
    for (const QString& link : links) {
      const QUrl target = here.resolved(QUrl(link));
      browser.setSource(target);
      EXPECT_EQ(browser.source(), target) << page.File.toStdString();
      EXPECT_THAT(browser.toPlainText().toStdString(), Not(IsEmpty())) << target.toString().toStdString();
      if (target.hasFragment()) {
        EXPECT_EQ(ManualBrowser::HeadingName(browser.textCursor().block().text()), target.fragment());
      }
    }
  }
}

TEST(Manual, FindsWordsOnAllPages) {
  ManualWindow manual;
  manual.Open(FirstManualPage);
  auto* search = manual.findChild<QLineEdit*>();
  auto* pages = manual.findChild<QListWidget*>();
  auto* text = manual.findChild<ManualBrowser*>();
  const int all = pages->count();
  QTest::keyClicks(search, "dropper");
  ASSERT_EQ(pages->count(), 1);
  EXPECT_EQ(pages->item(0)->text(), "Subtitles");
  QTest::keyClick(search, Qt::Key_Return);
  EXPECT_EQ(manual.Page().fileName(), "subtitles.md");
  EXPECT_EQ(text->textCursor().selectedText().toLower(), "dropper");
  search->setText("xyzzy");
  EXPECT_EQ(pages->count(), 0);
  EXPECT_EQ(manual.findChild<QLabel*>(QString(), Qt::FindDirectChildrenOnly)->text(), "On no page");
  QTest::keyClick(search, Qt::Key_Return);  // and nothing happens
  search->clear();
  EXPECT_EQ(pages->count(), all);
  EXPECT_EQ(pages->currentItem()->text(), "Subtitles");
}

// A window with nothing but the menu Help.
class Help : public testing::Test {
 protected:
  Help() : actions_(&window_) { HandleHelp(actions_, &window_); }

  template <typename Kind>
  [[nodiscard]] int CountShown() const {
    const auto all = window_.findChildren<Kind*>();
    return static_cast<int>(std::ranges::count_if(all, [](const Kind* each) { return each->isVisible(); }));
  }

  QWidget window_;
  Actions actions_;
};

TEST_F(Help, OpensOneOfEachHoweverOften) {
  for (int round = 0; round < 2; ++round) {
    for (const ActionId id : {ActionId::Manual, ActionId::Shortcuts, ActionId::About}) {
      Press(*actions_.Of(id));
    }
    EXPECT_EQ(CountShown<ManualWindow>(), 1);
    EXPECT_EQ(CountShown<ShortcutSheet>(), 1);
    EXPECT_EQ(CountShown<AboutBox>(), 1);
  }
}

TEST_F(Help, OpensTheChangeLogFromItsMenuAndFromTheAboutBox) {
  Press(*actions_.Of(ActionId::ChangeLog));
  auto* manual = window_.findChild<ManualWindow*>();
  EXPECT_EQ(manual->Page().fileName(), "changes.md");
  manual->close();
  Press(*actions_.Of(ActionId::About));
  emit window_.findChild<AboutBox*>()->ChangeLogWanted();
  EXPECT_TRUE(manual->isVisible());
  Press(*actions_.Of(ActionId::Manual));
  EXPECT_EQ(manual->Page().fileName(), "index.md");
}

}  // namespace
}  // namespace quorvelant
