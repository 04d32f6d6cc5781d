#include "window/films_page.h"

#include <QDragEnterEvent>
#include <QHeaderView>
#include <QMimeData>
#include <QUrl>
#include <QVBoxLayout>

#include "analysis/video_info.h"
#include "base/silent_ui.h"
#include "model/cls_dvd.h"
#include "ui/shown_text.h"

namespace quorvelant {

namespace {

enum Column : int { NameColumn, KindColumn, LanguageColumn };
constexpr int FilmFileRole = Qt::UserRole;

QString FileName(const std::string& path) {
  return Shown(path.substr(path.rfind('/') + 1));
}

// "Format=MPEG2; Bitrate=6000; Aspect=16:9; PanScan Data=Yes"
QString VideoWords(const VideoInfo& info) {
  return QStringLiteral("Format=%1; Bitrate=%2; Aspect=%3; PanScan Data=%4")
      .arg(Shown(info.Coding))
      .arg(info.Kbps)
      .arg(Shown(info.Aspect), info.PanScan ? QStringLiteral("Yes") : QStringLiteral("No"));
}

QComboBox* LanguageBox(const std::string& language) {
  auto* const box = new QComboBox;
  for (const auto& name : CLsDVD::LanguageArray()) {
    box->addItem(Shown(name));
  }
  box->setAccessibleName(QObject::tr("Language"));
  box->setCurrentIndex(std::max(box->findText(Shown(language)), 0));
  box->setFocusPolicy(Qt::StrongFocus);
  return box;
}

}  // namespace

FilmsPage::FilmsPage(WindowParts& parts, FilmOrder& order)
    : parts_(parts),
      order_(order),
      tree_(new QTreeWidget),
      refusals_(new QLabel),
      remove_(new QPushButton(tr("Remove"))),
      up_(new QPushButton(tr("Up"))),
      down_(new QPushButton(tr("Down"))) {
  setTitle(tr("Films"));
  setSubTitle(
      tr("Drop films here. Sound, subtitles and chapter lists of the same name join by themselves; "
         "\"film.de.ac3\" is German."));
  setAcceptDrops(true);
  tree_->setHeaderLabels({tr("Name"), tr("What it is"), tr("Language")});
  tree_->setAccessibleName(tr("Films"));
  tree_->header()->setSectionResizeMode(NameColumn, QHeaderView::Stretch);
  tree_->header()->setSectionResizeMode(KindColumn, QHeaderView::ResizeToContents);
  tree_->setEditTriggers(QAbstractItemView::EditKeyPressed | QAbstractItemView::DoubleClicked);
  refusals_->setWordWrap(true);
  refusals_->setTextFormat(Qt::PlainText);
  auto* const add = new QPushButton(tr("&Add Files…"));
  auto* const buttons = new QVBoxLayout;
  for (QPushButton* button : {add, remove_, up_, down_}) {
    button->setAutoDefault(false);
    buttons->addWidget(button);
  }
  buttons->addStretch();
  auto* const row = new QHBoxLayout;
  row->addWidget(tree_, 1);
  row->addLayout(buttons);
  auto* const column = new QVBoxLayout(this);
  column->addLayout(row, 1);
  column->addWidget(refusals_);
  connect(add, &QPushButton::clicked, this, &FilmsPage::Browse);
  connect(remove_, &QPushButton::clicked, this, &FilmsPage::RemoveChosen);
  connect(up_, &QPushButton::clicked, this, [this] { Move(-1); });
  connect(down_, &QPushButton::clicked, this, [this] { Move(1); });
  connect(tree_, &QTreeWidget::itemChanged, this, [this](QTreeWidgetItem* item) {
    const int film = tree_->indexOfTopLevelItem(item);
    if (!isFilling_ && film >= 0) {
      order_.SetName(static_cast<std::size_t>(film), item->text(NameColumn).trimmed().toStdString());
    }
  });
  Fill();
}

bool FilmsPage::isComplete() const {
  return !order_.Films().empty();
}

void FilmsPage::Take(const std::vector<std::string>& files) {
  order_.Add(files);
  Fill();
}

void FilmsPage::Fill() {
  isFilling_ = true;
  tree_->clear();
  for (std::size_t number = 0; number < order_.Films().size(); ++number) {
    AddFilm(number);
  }
  tree_->expandAll();
  isFilling_ = false;
  QStringList refusals;
  for (const Message& refusal : order_.Refusals()) {
    refusals << Shown(refusal.Text);
  }
  refusals_->setText(refusals.join(QLatin1Char('\n')));
  refusals_->setVisible(!refusals.isEmpty());
  for (QPushButton* button : {remove_, up_, down_}) {
    button->setEnabled(!order_.Films().empty());
  }
  emit completeChanged();
}

void FilmsPage::AddFilm(std::size_t number) {
  const OrderedFilm& film = order_.Films().at(number);
  SilentUi nobody;
  const auto info = GetVideoInfo(film.Video, true, nobody);
  auto* const item = new QTreeWidgetItem(tree_, {Shown(film.Name), info ? VideoWords(*info) : tr("Film")});
  item->setFlags(item->flags() | Qt::ItemIsEditable);
  item->setToolTip(NameColumn, Shown(film.Video));
  const bool isWide = info && info->Aspect == "16:9";
  const bool hasPanScan = info && info->PanScan;
  AddStreams(*item, film.Audio, true, isWide, hasPanScan);
  AddStreams(*item, film.Subtitles, false, isWide, hasPanScan);
  if (!film.ChapterFile.empty()) {
    auto* const chapters = new QTreeWidgetItem(item, {FileName(film.ChapterFile), tr("Chapters")});
    chapters->setData(NameColumn, FilmFileRole, Shown(film.ChapterFile));
  }
}

void FilmsPage::AddStreams(QTreeWidgetItem& film, const std::vector<OrderedStream>& streams, bool isSound,
                           bool isWide, bool hasPanScan) {
  std::size_t number = 0;
  for (const OrderedStream& stream : streams) {
    const SubtitleLabel label = SubtitleLabelOf(++number, isWide, hasPanScan);
    auto* const item =
        new QTreeWidgetItem(&film, {FileName(stream.File), isSound ? tr("Sound") : Shown(label.Short)});
    item->setToolTip(KindColumn, isSound ? QString() : Shown(label.Long));
    item->setData(NameColumn, FilmFileRole, Shown(stream.File));
    QComboBox* const language = LanguageBox(stream.Language);
    tree_->setItemWidget(item, LanguageColumn, language);
    connect(language, &QComboBox::textActivated, this, [this, file = stream.File](const QString& chosen) {
      order_.SetLanguage(file, chosen.toStdString());
    });
  }
}

void FilmsPage::Browse() {
  const std::vector<FileFilter> kinds{
      {"Films and what belongs to them", {"m2v", "mpv", "mpg", "ac3", "wav", "dts", "sst", "txt"}},
      {"All files", {}}};
  const auto files = parts_.Answers.FilesToOpen("Add Files", kinds, true);
  if (!files.empty()) {
    Take(files);
  }
}

int FilmsPage::ChosenFilm() const {
  QTreeWidgetItem* item = tree_->currentItem();
  while (item != nullptr && item->parent() != nullptr) {
    item = item->parent();
  }
  return item == nullptr ? -1 : tree_->indexOfTopLevelItem(item);
}

void FilmsPage::RemoveChosen() {
  const QTreeWidgetItem* const item = tree_->currentItem();
  if (item != nullptr && item->parent() != nullptr) {
    order_.RemoveFile(item->data(NameColumn, FilmFileRole).toString().toStdString());
  } else if (ChosenFilm() >= 0) {
    order_.RemoveFilm(static_cast<std::size_t>(ChosenFilm()));
  }
  Fill();
}

void FilmsPage::Move(int by) {
  const int film = ChosenFilm();
  if (film >= 0) {
    order_.MoveFilm(static_cast<std::size_t>(film), by);
    Fill();
    tree_->setCurrentItem(tree_->topLevelItem(std::clamp(film + by, 0, tree_->topLevelItemCount() - 1)));
  }
}

void FilmsPage::dragEnterEvent(QDragEnterEvent* event) {
  if (event->mimeData()->hasUrls()) {
    event->acceptProposedAction();
  }
}

void FilmsPage::dropEvent(QDropEvent* event) {
  std::vector<std::string> files;
  for (const QUrl& url : event->mimeData()->urls()) {
    files.push_back(url.toLocalFile().toStdString());
  }
  Take(files);
  event->acceptProposedAction();
}

}  // namespace quorvelant
