#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>

#include "menu/menu_labels.h"
#include "menu/menu_themes.h"
#include "ui/shown_text.h"
#include "window/films_page.h"

namespace quorvelant {

MenusPage::MenusPage(WindowParts& parts, FilmOrder& order)
    : parts_(parts),
      order_(order),
      menus_(new QCheckBox(tr("Make menus"))),
      theme_(new QComboBox),
      labels_(new QComboBox),
      audio_(new QCheckBox(tr("Audio page"))),
      subtitles_(new QCheckBox(tr("Subtitle page"))),
      chapters_(new QCheckBox(tr("Chapter pages"))),
      insertion_(new QComboBox),
      start_(new QComboBox),
      project_(new QLineEdit) {
  setTitle(tr("Menus"));
  setSubTitle(tr("A page is made only where it leaves something to choose."));
  setFinalPage(true);
  for (const std::string_view name : MenuThemeNames()) {
    theme_->addItem(Shown(name));
  }
  for (const std::string_view language : MenuLabelLanguages()) {
    labels_->addItem(Shown(language));
  }
  labels_->setCurrentText(QStringLiteral("English"));
  insertion_->addItems({tr("Menu"), tr("First film"), tr("All films")});
  for (QCheckBox* box : {menus_, audio_, subtitles_, chapters_}) {
    box->setChecked(true);
  }
  auto* const browse = new QPushButton(tr("Browse…"));
  browse->setAutoDefault(false);
  auto* const where = new QHBoxLayout;
  where->addWidget(project_, 1);
  where->addWidget(browse);
  project_->setAccessibleName(tr("Project"));
  auto* const form = new QFormLayout(this);
  form->addRow(menus_);
  form->addRow(tr("Theme"), theme_);
  form->addRow(tr("Labels"), labels_);
  form->addRow(audio_);
  form->addRow(subtitles_);
  form->addRow(chapters_);
  form->addRow(tr("Plays first"), insertion_);
  form->addRow(tr("Subtitles at the start"), start_);
  form->addRow(tr("Project"), where);
  connect(browse, &QPushButton::clicked, this, &MenusPage::Browse);
  connect(project_, &QLineEdit::textChanged, this, &QWizardPage::completeChanged);
  connect(menus_, &QCheckBox::toggled, this, [this](bool wanted) {
    for (QWidget* part : std::initializer_list<QWidget*>{theme_, labels_, audio_, subtitles_, chapters_}) {
      part->setEnabled(wanted);
    }
  });
}

void MenusPage::initializePage() {
  const QString chosen = start_->currentText();
  start_->clear();
  start_->addItem(tr("None"));
  for (const std::string& language : order_.SubtitleLanguages()) {
    start_->addItem(Shown(language));
  }
  start_->setCurrentText(chosen);
  if (project_->text().isEmpty() || ProjectFile() == proposed_) {
    proposed_ = ProposedProjectFile(order_.Films());
    project_->setText(Shown(proposed_));
  }
}

bool MenusPage::isComplete() const {
  return !project_->text().trimmed().isEmpty();
}

DiscOrder MenusPage::Order() const {
  DiscOrder order;
  order.Films = order_.Films();
  order.HasMenus = menus_->isChecked();
  order.Menus = {audio_->isChecked(), subtitles_->isChecked(), chapters_->isChecked()};
  order.Look.Theme = theme_->currentText().toStdString();
  order.Look.LabelLanguage = labels_->currentText().toStdString();
  order.Insertion = static_cast<AtInsertion>(insertion_->currentIndex());
  order.StartSubtitles = start_->currentIndex() > 0 ? start_->currentText().toStdString() : std::string();
  return order;
}

void MenusPage::Browse() {
  const auto path = parts_.Answers.FileToSave("Project", ProjectFile(), {{"Projects", {"qvp"}}});
  if (path) {
    QString file = Shown(*path);
    project_->setText(QFileInfo(file).suffix().isEmpty() ? file + QStringLiteral(".qvp") : file);
  }
}

}  // namespace quorvelant
