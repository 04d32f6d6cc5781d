#include "window/manual_window.h"

#include <QAction>
#include <QFile>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRegularExpression>
#include <QSplitter>
#include <QTextCursor>
#include <QToolBar>
#include <QVBoxLayout>
#include <algorithm>

#include "window/clear_button.h"
#include "window/icons.h"
#include "window/manual_browser.h"

namespace quorvelant {

namespace {

const QString Root = QStringLiteral("/docs/");

QString Text(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString ReadPage(const QString& file) {
  QFile page(QLatin1Char(':') + Root + file);
  return page.open(QIODevice::ReadOnly) ? QString::fromUtf8(page.readAll()) : QString();
}

QUrl UrlOf(const QString& file) {
  return {QStringLiteral("qrc:") + Root + file};
}

// The words that a reader sees: without pictures and without where links lead.
QString WordsOf(const QString& file) {
  static const QRegularExpression picture(QStringLiteral(R"(!\[[^\]]*\]\([^)]*\))"));
  static const QRegularExpression target(QStringLiteral(R"(\]\([^)]*\))"));
  static const QRegularExpression marks(QStringLiteral("[*`]"));
  return ReadPage(file).remove(picture).remove(target).remove(marks).simplified();
}

}  // namespace

std::vector<ManualPage> ManualPages() {
  LoadResources();
  std::vector<ManualPage> pages{{QObject::tr("Manual"), Text(FirstManualPage)}};
  static const QRegularExpression links(QStringLiteral(R"(\[([^\]]+)\]\(([a-z0-9_]+\.md)\))"));
  for (auto found = links.globalMatch(ReadPage(Text(FirstManualPage))); found.hasNext();) {
    const QRegularExpressionMatch link = found.next();
    const QString file = QStringLiteral("manual/") + link.captured(2);
    if (std::ranges::find(pages, file, &ManualPage::File) == pages.end()) {
      pages.push_back({link.captured(1), file});
    }
  }
  pages.push_back({QObject::tr("Change log"), Text(ChangeLogPage)});
  return pages;
}

std::vector<ManualPage> ManualWindow::PagesWith(const QString& words) {
  const QStringList wanted = words.split(QLatin1Char(' '), Qt::SkipEmptyParts);
  std::vector<ManualPage> pages = ManualPages();
  std::erase_if(pages, [&wanted](const ManualPage& page) {
    const QString text = WordsOf(page.File);
    return !std::ranges::all_of(
        wanted, [&text](const QString& word) { return text.contains(word, Qt::CaseInsensitive); });
  });
  return pages;
}

ManualWindow::ManualWindow(QWidget* parent)
    : QWidget(parent, Qt::Window),
      search_(new QLineEdit),
      pages_(new QListWidget),
      text_(new ManualBrowser),
      found_(new QLabel) {
  setWindowTitle(tr("Manual of Quorvelant"));
  auto* bar = new QToolBar;
  bar->setAccessibleName(tr("Manual tools"));
  bar->addAction(IconNamed("back"), tr("Back"), QKeySequence::Back, text_, &QTextBrowser::backward);
  bar->addAction(IconNamed("forward"), tr("Forward"), QKeySequence::Forward, text_, &QTextBrowser::forward);
  bar->addAction(IconNamed("home"), tr("First page"), this, [this] { Open(FirstManualPage); });
  search_->setPlaceholderText(tr("Search all pages"));
  search_->setAccessibleName(tr("Search all pages"));
  AddClearButton(*search_);
  pages_->setAccessibleName(tr("Pages"));
  text_->setAccessibleName(tr("Page"));
  found_->setTextFormat(Qt::PlainText);
  found_->setAccessibleName(tr("Found"));

  auto* top = new QHBoxLayout;
  top->addWidget(bar);
  top->addWidget(search_, 1);
  top->addWidget(found_);
  auto* both = new QSplitter;
  both->addWidget(pages_);
  both->addWidget(text_);
  both->setStretchFactor(1, 1);
  both->setChildrenCollapsible(false);
  auto* all = new QVBoxLayout(this);
  all->addLayout(top);
  all->addWidget(both, 1);
  const int letter = fontMetrics().averageCharWidth();
  resize(letter * 130, fontMetrics().height() * 42);
  both->setSizes({letter * 30, letter * 100});

  auto* find = new QAction(tr("Find"), this);
  find->setShortcut(QKeySequence::Find);
  connect(find, &QAction::triggered, this, [this] {
    search_->setFocus(Qt::ShortcutFocusReason);
    search_->selectAll();
  });
  addAction(find);
  connect(search_, &QLineEdit::textChanged, this, &ManualWindow::ListPages);
  connect(search_, &QLineEdit::returnPressed, this, [this] { FindNext(false); });
  connect(pages_, &QListWidget::currentRowChanged, this, &ManualWindow::ShowPage);
  connect(text_, &QTextBrowser::sourceChanged, this, &ManualWindow::FollowPage);
  ListPages();
}

void ManualWindow::Open(std::string_view file) {
  search_->clear();
  text_->setSource(UrlOf(Text(file)));
  show();
  raise();
  activateWindow();
  text_->setFocus(Qt::OtherFocusReason);
}

QUrl ManualWindow::Page() const {
  return text_->source();
}

void ManualWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    close();
  } else if (event->matches(QKeySequence::FindNext) || event->matches(QKeySequence::FindPrevious)) {
    FindNext(event->matches(QKeySequence::FindPrevious));
  } else {
    QWidget::keyPressEvent(event);
  }
}

void ManualWindow::ListPages() {
  listed_ = PagesWith(search_->text());
  const QSignalBlocker quiet(pages_);
  pages_->clear();
  for (const ManualPage& page : listed_) {
    pages_->addItem(page.Title);
  }
  const bool isSearch = !search_->text().trimmed().isEmpty();
  const QString count = listed_.empty()       ? tr("On no page")
                        : listed_.size() == 1 ? tr("On 1 page")
                                              : tr("On %1 pages").arg(listed_.size());
  found_->setText(isSearch ? count : QString());
  FollowPage(text_->source());
}

void ManualWindow::ShowPage(int row) {
  if (row >= 0 && row < static_cast<int>(listed_.size())) {
    text_->setSource(UrlOf(listed_[static_cast<std::size_t>(row)].File));
  }
}

// The list shows which page is read, however the reader came there.
void ManualWindow::FollowPage(const QUrl& page) {
  const auto listed = std::ranges::find_if(
      listed_, [&page](const ManualPage& each) { return UrlOf(each.File).path() == page.path(); });
  const QSignalBlocker quiet(pages_);
  pages_->setCurrentRow(listed == listed_.end() ? -1 : static_cast<int>(listed - listed_.begin()));
  MarkMatches();
}

// The next place on this page, else the first one of the next page that has any.
void ManualWindow::FindNext(bool backwards) {
  const QString words = search_->text().trimmed();
  const QTextDocument::FindFlags way = backwards ? QTextDocument::FindBackward : QTextDocument::FindFlags();
  if (words.isEmpty() || listed_.empty() || (pages_->currentRow() >= 0 && text_->find(words, way))) {
    return;
  }
  const int count = pages_->count();
  pages_->setCurrentRow((std::max(pages_->currentRow(), backwards ? 0 : -1) + (backwards ? count - 1 : 1)) %
                        count);
  text_->moveCursor(backwards ? QTextCursor::End : QTextCursor::Start);
  text_->find(words, way);
}

void ManualWindow::MarkMatches() {
  QList<QTextEdit::ExtraSelection> marks;
  const QString words = search_->text().trimmed();
  QTextEdit::ExtraSelection mark;
  mark.format.setBackground(palette().brush(QPalette::Highlight));
  mark.format.setForeground(palette().brush(QPalette::HighlightedText));
  for (const QString& word : words.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
    for (QTextCursor at(text_->document()); !(at = text_->document()->find(word, at)).isNull();) {
      mark.cursor = at;
      marks.push_back(mark);
    }
  }
  text_->setExtraSelections(marks);
}

}  // namespace quorvelant
