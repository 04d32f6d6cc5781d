#include "window/film_page.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QShortcut>
#include <QStackedLayout>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "ui/shown_text.h"
#include "window/list_choice_delegate.h"

namespace quorvelant {

namespace {

const std::vector<FileFilter>& FilmKinds() {
  static const std::vector<FileFilter> kinds{{"Films with their sound, subtitles and chapters",
                                              {"m2v", "mpv", "m1v", "ac3", "wav", "dts", "sst", "txt"}},
                                             {"All files", {}}};
  return kinds;
}

int LinesHigh(const QWidget& widget, int lines) {
  return widget.fontMetrics().lineSpacing() * lines;
}

}  // namespace

FilmListPage::FilmListPage(WindowParts& parts, QWidget* parent)
    : QWizardPage(parent),
      parts_(parts),
      films_(new QTreeView),
      empty_(new QLabel(tr("Drop films here, or press Add Files….\n\nSound, subtitles and chapter lists "
                           "whose names begin as a film's does come along:\nholiday.m2v, holiday.de.ac3, "
                           "holiday.de.sst, holiday.txt"))),
      faults_(new QPlainTextEdit) {
  setTitle(tr("Films"));
  setSubTitle(tr("Which films go on the disc, in the order in which menus name them"));
  Build();
  connect(&list_, &FilmListModel::ListChanged, this, &FilmListPage::Follow);
  connect(films_->selectionModel(), &QItemSelectionModel::currentChanged, this, &FilmListPage::ShowState);
  ShowState();
  ShowFaults();
}

void FilmListPage::Build() {
  films_->setModel(&list_);
  films_->setItemDelegate(new ListChoiceDelegate(FilmListModel::ChoicesRole, films_));
  films_->setAccessibleName(tr("Films"));
  films_->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::SelectedClicked |
                          QAbstractItemView::EditKeyPressed);
  films_->setUniformRowHeights(true);
  films_->setAlternatingRowColors(true);
  films_->header()->setStretchLastSection(false);
  films_->setMinimumHeight(LinesHigh(*films_, 8));
  empty_->setAlignment(Qt::AlignCenter);
  empty_->setWordWrap(true);
  empty_->setAttribute(Qt::WA_TransparentForMouseEvents);
  auto* const over = new QVBoxLayout(films_->viewport());
  over->addWidget(empty_);
  faults_->setReadOnly(true);
  faults_->setAccessibleName(tr("What keeps the disc from being made"));
  faults_->setMaximumHeight(LinesHigh(*faults_, 7));
  faults_->setTabChangesFocus(true);
  auto* const row = new QHBoxLayout;
  row->addWidget(films_, 1);
  row->addWidget(BuildButtons());
  auto* const column = new QVBoxLayout(this);
  column->addLayout(row, 1);
  column->addWidget(faults_);
}

QWidget* FilmListPage::BuildButtons() {
  auto* const buttons = new QWidget;
  auto* const column = new QVBoxLayout(buttons);
  column->setContentsMargins(0, 0, 0, 0);
  const auto add = [&](const QString& text, auto run) {
    auto* const button = new QPushButton(text);
    button->setAutoDefault(column->isEmpty());
    column->addWidget(button);
    connect(button, &QPushButton::clicked, this, run);
    return button;
  };
  setFocusProxy(add(tr("&Add Files…"), [this] { AskForFiles(); }));
  remove_ = add(tr("&Remove"), [this] { list_.Remove(films_->currentIndex()); });
  up_ = add(tr("Move &Up"), [this] { MoveCurrent(-1); });
  down_ = add(tr("Move &Down"), [this] { MoveCurrent(1); });
  column->addStretch();
  auto* const keys = new QShortcut(QKeySequence::Delete, films_);
  keys->setContext(Qt::WidgetShortcut);
  connect(keys, &QShortcut::activated, remove_, &QPushButton::click);
  return buttons;
}

void FilmListPage::AskForFiles() {
  const auto files = parts_.Answers.FilesToOpen("Add Files", FilmKinds(), true);
  if (!files.empty()) {
    AddFiles(files);
  }
}

void FilmListPage::AddFiles(const std::vector<std::string>& paths) {
  const bool isFirst = list_.IsEmpty();
  refused_ = list_.Add(paths);
  films_->expandAll();
  for (int column = 0; column < list_.columnCount(); ++column) {
    films_->resizeColumnToContents(column);
  }
  if (isFirst && !list_.IsEmpty()) {
    films_->setCurrentIndex(list_.index(0, 0));
  }
  ShowState();
  ShowFaults();
}

void FilmListPage::MoveCurrent(int by) {
  list_.Move(films_->currentIndex(), by);
  ShowState();
}

void FilmListPage::Follow() {
  ShowState();
  emit completeChanged();
  DiscOrder order;
  order.Films = list_.Films();
  looking_.Start([order = std::move(order), &pictures = parts_.Pictures](
                     UserInterface& ui) { return LookAtFilms(order, pictures, Rules::Players, ui); },
                 [this](FilmsLook look) {
                   list_.TakeLook(std::move(look));
                   films_->resizeColumnToContents(static_cast<int>(FilmColumn::Facts));
                   films_->resizeColumnToContents(static_cast<int>(FilmColumn::Name));
                   ShowFaults();
                 });
}

void FilmListPage::ShowState() {
  const QModelIndex current = films_->currentIndex();
  empty_->setVisible(list_.IsEmpty());
  remove_->setEnabled(current.isValid());
  up_->setEnabled(list_.CanMove(current, -1));
  down_->setEnabled(list_.CanMove(current, 1));
}

void FilmListPage::ShowFaults() {
  QStringList lines;
  const auto add = [&lines](const Message& message) { lines << Shown(message.Text); };
  std::ranges::for_each(refused_, add);
  std::ranges::for_each(list_.Look().Errors, add);
  const QString text = lines.join(QStringLiteral("\n\n"));
  if (text != faults_->toPlainText()) {
    faults_->setPlainText(text);
  }
  faults_->setVisible(!lines.isEmpty());
}

void FilmListPage::initializePage() {
  setFocus();
}

bool FilmListPage::validatePage() {
  const bool isFit = list_.Look().Errors.empty() || looking_.IsRunning();
  if (!isFit) {
    faults_->setFocus();
  }
  return isFit;
}

}  // namespace quorvelant
