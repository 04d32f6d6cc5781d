#include "window/film_menus_page.h"

#include <QDir>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLocale>
#include <QStandardPaths>
#include <QVBoxLayout>
#include <algorithm>
#include <initializer_list>
#include <utility>

#include "desk/made_disc.h"
#include "menu/menu_labels.h"
#include "menu/menu_themes.h"
#include "ui/shown_text.h"

namespace quorvelant {

namespace {

constexpr int UsualMinutes = 5;
constexpr int MostMinutes = 120;

std::string LanguageHere() {
  const std::string own = QLocale::languageToString(QLocale().language()).toStdString();
  const auto languages = MenuLabelLanguages();
  return std::ranges::find(languages, own) == languages.end() ? "English" : own;
}

bool IsFree(const QString& project) {
  return !QFileInfo::exists(project) && !QFileInfo::exists(Shown(PagesOf(project.toStdString())));
}

// Beside the first film, where that can be written to.
QString ProposedProject(const std::vector<OrderedFilm>& films) {
  QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  QString stem = QStringLiteral("disc");
  if (!films.empty()) {
    const QFileInfo video(Shown(films.front().Video));
    const bool canWrite = QFileInfo(video.absolutePath()).isWritable();
    folder = canWrite ? video.absolutePath() : folder;
    stem = films.size() == 1 ? video.completeBaseName() : stem;
  }
  QString project = QDir(folder).filePath(stem + QStringLiteral(".qvp"));
  for (int number = 2; !IsFree(project); ++number) {
    project = QDir(folder).filePath(QStringLiteral("%1 %2.qvp").arg(stem).arg(number));
  }
  return project;
}

QWidget* Beside(QWidget* field, QWidget* button) {
  auto* const both = new QWidget;
  auto* const row = new QHBoxLayout(both);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(field, 1);
  row->addWidget(button);
  return both;
}

}  // namespace

FilmMenusPage::FilmMenusPage(WindowParts& parts, FilmListModel& films, QWidget* parent)
    : QWizardPage(parent),
      parts_(parts),
      films_(films),
      menus_(new QCheckBox(tr("&Make menus"))),
      theme_(new QComboBox),
      themeFolder_(new QPushButton(tr("Theme F&older…"))),
      labels_(new QComboBox),
      audio_(new QCheckBox(tr("Audio page"))),
      subtitlePages_(new QCheckBox(tr("Subtitle page"))),
      chapterPages_(new QCheckBox(tr("Chapter pages"))),
      start_(new QComboBox),
      subtitles_(new QComboBox),
      subtitlesSay_(new QLabel),
      chapters_(new QSpinBox),
      project_(new QLineEdit) {
  setTitle(tr("Menus"));
  setSubTitle(tr("How the disc begins, and what there is to choose from"));
  setFinalPage(true);
  Build();
  connect(menus_, &QCheckBox::toggled, this, &FilmMenusPage::ShowState);
  connect(themeFolder_, &QPushButton::clicked, this, &FilmMenusPage::AddThemeFolder);
  connect(subtitles_, &QComboBox::currentIndexChanged, this, &FilmMenusPage::ExplainSubtitles);
}

void FilmMenusPage::Build() {
  menus_->setChecked(true);
  for (const std::string_view name : MenuThemeNames()) {
    theme_->addItem(Shown(name));
  }
  for (const std::string_view language : MenuLabelLanguages()) {
    labels_->addItem(Shown(language));
  }
  labels_->setCurrentText(Shown(LanguageHere()));
  start_->addItems({tr("Menu"), tr("First film"), tr("All films, one after another")});
  chapters_->setRange(0, MostMinutes);
  chapters_->setValue(UsualMinutes);
  chapters_->setSuffix(tr(" minutes"));
  chapters_->setSpecialValueText(tr("No chapters but those of lists"));
  chapters_->setToolTip(tr("A film with a chapter list has the chapters of the list"));
  auto* const browse = new QPushButton(tr("Bro&wse…"));
  browse->setAutoDefault(false);
  themeFolder_->setAutoDefault(false);
  connect(browse, &QPushButton::clicked, this, &FilmMenusPage::AskForProject);
  auto* const form = new QFormLayout;
  auto* const column = new QVBoxLayout(this);
  column->addLayout(form);
  column->addStretch();
  const auto add = [form](const QString& label, QWidget* field, QWidget* row = nullptr) {
    field->setAccessibleName(QString(label).remove(QLatin1Char('&')));
    auto* const words = new QLabel(label);
    words->setBuddy(field);
    form->addRow(words, row != nullptr ? row : field);
  };
  form->addRow(menus_);
  add(tr("&Theme"), theme_, Beside(theme_, themeFolder_));
  add(tr("&Language of labels"), labels_);
  auto* const pages = new QHBoxLayout;
  for (QCheckBox* const box : {audio_, subtitlePages_, chapterPages_}) {
    box->setChecked(true);
    box->setToolTip(tr("Made where there is something to choose"));
    pages->addWidget(box);
  }
  pages->addStretch();
  form->addRow(QString(), pages);
  add(tr("&Start"), start_);
  add(tr("S&ubtitles at start"), subtitles_);
  form->addRow(QString(), subtitlesSay_);
  add(tr("&Chapters every"), chapters_);
  add(tr("&Project file"), project_, Beside(project_, browse));
}

void FilmMenusPage::initializePage() {
  OfferSubtitles();
  if (!project_->isModified()) {
    project_->setText(ProposedProject(films_.Films()));
    project_->setModified(false);
  }
  ShowState();
}

void FilmMenusPage::OfferSubtitles() {
  const QString former = subtitles_->currentText();
  subtitles_->clear();
  subtitles_->addItem(tr("None"));
  for (const std::string& language : films_.SubtitleLanguages()) {
    subtitles_->addItem(Shown(language));
  }
  subtitles_->setCurrentIndex(std::max(0, subtitles_->findText(former)));
  ExplainSubtitles();
}

// Of the first film that has them.
void FilmMenusPage::ExplainSubtitles() {
  const std::string language = subtitles_->currentText().toStdString();
  QString words;
  for (const OrderedFilm& film : films_.Films()) {
    const auto shown = std::ranges::find(film.Subtitles, language, &OrderedStream::Language);
    const auto video = films_.Look().Files.find(film.Video);
    if (words.isEmpty() && subtitles_->currentIndex() > 0 && shown != film.Subtitles.end() &&
        video != films_.Look().Files.end()) {
      const auto number = static_cast<std::size_t>(shown - film.Subtitles.begin()) + 1;
      words = Shown(SubtitleExplanation(number, SubtitleModeOf(video->second)));
    }
  }
  subtitlesSay_->setTextFormat(Qt::PlainText);
  subtitlesSay_->setText(words);
}

void FilmMenusPage::ShowState() {
  const bool hasMenus = menus_->isChecked();
  for (QWidget* const field : std::initializer_list<QWidget*>{theme_, themeFolder_, labels_, audio_,
                                                              subtitlePages_, chapterPages_, start_}) {
    field->setEnabled(hasMenus);
  }
  start_->setToolTip(hasMenus ? QString() : tr("Without menus the films play one after another"));
  subtitles_->setEnabled(subtitles_->count() > 1);
}

void FilmMenusPage::AddThemeFolder() {
  const auto folder = parts_.Answers.FolderToUse("Folder of a theme (with a theme.toml)", {});
  if (folder) {
    theme_->addItem(Shown(*folder));
    theme_->setCurrentIndex(theme_->count() - 1);
  }
}

void FilmMenusPage::AskForProject() {
  const auto file = parts_.Answers.FileToSave("Project File", Project(), {{"Projects", {"qvp"}}});
  if (file && !file->empty()) {
    project_->setText(Shown(*file));
    project_->setModified(true);
  }
}

std::string FilmMenusPage::Project() const {
  const QString text = project_->text().trimmed();
  if (text.isEmpty()) {
    return {};
  }
  const QString whole = QFileInfo(text).absoluteFilePath();
  const bool isNamed = QFileInfo(whole).suffix().toLower() == QStringLiteral("qvp");
  return (isNamed ? whole : whole + QStringLiteral(".qvp")).toStdString();
}

DiscOrder FilmMenusPage::Order() const {
  DiscOrder order;
  order.Films = films_.Films();
  for (OrderedFilm& film : order.Films) {
    film.ChapterSeconds = film.ChapterFile.empty() ? chapters_->value() * 60 : 0;
  }
  order.HasMenus = menus_->isChecked();
  order.Menus = {audio_->isChecked(), subtitlePages_->isChecked(), chapterPages_->isChecked()};
  order.Look.Theme = theme_->currentText().toStdString();
  order.Look.LabelLanguage = labels_->currentText().toStdString();
  order.Insertion = static_cast<AtInsertion>(start_->currentIndex());
  order.StartSubtitles =
      subtitles_->currentIndex() > 0 ? subtitles_->currentText().toStdString() : std::string();
  return order;
}

}  // namespace quorvelant
