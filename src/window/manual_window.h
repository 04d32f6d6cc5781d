// The manual: pages of docs/ in the program's resources, read in a window of their own.
#pragma once

#include <QString>
#include <QStringList>
#include <QUrl>
#include <QWidget>
#include <string_view>
#include <vector>

class QLabel;
class QLineEdit;
class QListWidget;

namespace quorvelant {

class ManualBrowser;

struct ManualPage {
  QString Title;
  QString File;  // below docs/: "manual/subtitles.md"
};

// The pages in the order in which the first one lists them, itself ahead of them.
[[nodiscard]] std::vector<ManualPage> ManualPages();
inline constexpr std::string_view FirstManualPage = "manual/index.md";
inline constexpr std::string_view ChangeLogPage = "changes.md";

// A list of pages, a line to search all of them, and the page. Links between pages are followed, those to
// other places are given to the desktop.
class ManualWindow : public QWidget {
  Q_OBJECT
 public:
  explicit ManualWindow(QWidget* parent = nullptr);

  // `file` is below docs/. The window shows, in front.
  void Open(std::string_view file);
  [[nodiscard]] QUrl Page() const;
  // The pages that hold all of these words; all pages for none.
  [[nodiscard]] static std::vector<ManualPage> PagesWith(const QString& words);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void ListPages();
  void ShowPage(int row);
  void FollowPage(const QUrl& page);
  void FindNext(bool backwards);
  void MarkMatches();

  QLineEdit* search_;
  QListWidget* pages_;
  ManualBrowser* text_;
  QLabel* found_;
  std::vector<ManualPage> listed_;
};

}  // namespace quorvelant
