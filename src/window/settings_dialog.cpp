#include "window/settings_dialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QVBoxLayout>

#include "base/text.h"
#include "base/timecode.h"
#include "desk/edit_options.h"
#include "desk/messages.h"
#include "ui/shown_text.h"

namespace quorvelant {

namespace {

constexpr int PalFrames = 25;
constexpr int NtscFrames = 30;
constexpr int MostMinutes = 600;

// A length of time in frames, shown and typed as "HH:MM:SS:FF".
class FrameBox : public QSpinBox {
 public:
  explicit FrameBox(int framesPerSecond) : framesPerSecond_(framesPerSecond) {
    setRange(1, MostMinutes * 60 * framesPerSecond);
    setSingleStep(framesPerSecond);
    setCorrectionMode(QAbstractSpinBox::CorrectToPreviousValue);
  }

 protected:
  QString textFromValue(int value) const override { return Shown(FramesToTimecode(value, framesPerSecond_)); }
  int valueFromText(const QString& text) const override { return Frames(text).value_or(value()); }
  QValidator::State validate(QString& text, int& /*position*/) const override {
    const auto frames = Frames(text);
    return frames && *frames >= minimum() && *frames <= maximum() ? QValidator::Acceptable
                                                                  : QValidator::Intermediate;
  }

 private:
  [[nodiscard]] std::optional<int> Frames(const QString& text) const {
    const std::string typed = text.trimmed().toStdString();
    const std::int64_t frames = TimecodeToFrames(typed, framesPerSecond_);
    const bool isTime = FramesToTimecode(frames, framesPerSecond_) == typed;
    return isTime ? std::optional(static_cast<int>(frames)) : std::nullopt;
  }

  int framesPerSecond_;
};

}  // namespace

SettingsDialog::SettingsDialog(WindowParts& parts, QWidget* parent) : QDialog(parent), parts_(parts) {
  setWindowTitle(tr("Settings"));
  setAttribute(Qt::WA_DeleteOnClose);
  auto* const pages = new QTabWidget;
  pages->setAccessibleName(tr("Settings"));
  pages->addTab(DiscPage(), tr("Discs"));
  pages->addTab(ImportPage(), tr("Import"));
  pages->addTab(SlidePage(), tr("Slides and cells"));
  auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::accept);
  auto* const rows = new QVBoxLayout(this);
  rows->addWidget(pages);
  rows->addWidget(buttons);
}

void SettingsDialog::done(int result) {
  Settings settings = parts_.Options;
  for (const auto& take : takers_) {
    take(settings);
  }
  if (!(settings == parts_.Options)) {
    parts_.Options = settings;
    parts_.Doc.Session().SetOptions(EditOptionsOf(settings));
    if (parts_.SettingsPath.empty() || !WriteSettings(parts_.SettingsPath, settings)) {
      parts_.Doc.Speaks().Tell(MessageOf(message::SettingsNotWritten, parts_.SettingsPath));
    }
  }
  QDialog::done(result);
}

QWidget* SettingsDialog::DiscPage() {
  auto* const page = new QWidget;
  auto* const form = new QFormLayout(page);
  AddFolder(*form);
  AddRegions(*form);
  AddFlag(*form, tr("Take sequence end codes out within a track"),
          tr("They stop some players for a moment between the files of a film"), &Settings::RemoveSeqEnd);
  return page;
}

QWidget* SettingsDialog::ImportPage() {
  auto* const page = new QWidget;
  auto* const form = new QFormLayout(page);
  AddFlag(*form, tr("A track takes the name of its video file"), {}, &Settings::UseTrackNames);
  AddFlag(*form, tr("Make chapters when a film comes in"),
          tr("One at each interval, on the picture before it"), &Settings::AutoCreateChapters);
  AddFrames(*form, tr("Interval of chapters, PAL"), PalFrames, &Settings::PalChapters);
  AddFrames(*form, tr("Interval of chapters, NTSC"), NtscFrames, &Settings::NtscChapters);
  AddFlag(*form, tr("Subtitle lists were made by SubRip"), tr("Their pictures lie beside the list"),
          &Settings::Subrip);
  return page;
}

QWidget* SettingsDialog::SlidePage() {
  auto* const page = new QWidget;
  auto* const form = new QFormLayout(page);
  AddFlag(*form, tr("A chapter for each slide"), {}, &Settings::AutoSlideChapters);
  AddFrames(*form, tr("Time of a slide, PAL"), PalFrames, &Settings::PalSlideDuration);
  AddFrames(*form, tr("Time of a slide, NTSC"), NtscFrames, &Settings::NtscSlideDuration);
  AddFlag(*form, tr("The last slide lasts as long as the sound"), {}, &Settings::ExtendFinalSlide);
  AddFlag(*form, tr("The last subtitle lasts to the end of its scene"), {}, &Settings::ExtendFinalSubtitle);
  AddFlag(*form, tr("Scenes of one track are not seamless"), tr("Players may pause between them"),
          &Settings::ScenesNotSeamless);
  AddFlag(*form, tr("All cells of a PGC are seamless where possible"), tr("Until the window is closed"),
          &Settings::SeamlessPGC);
  return page;
}

void SettingsDialog::AddFlag(QFormLayout& form, const QString& text, const QString& tip,
                             bool Settings::*flag) {
  auto* const box = new QCheckBox(text);
  box->setChecked(parts_.Options.*flag);
  box->setToolTip(tip);
  form.addRow(box);
  takers_.emplace_back([box, flag](Settings& settings) { settings.*flag = box->isChecked(); });
}

void SettingsDialog::AddFrames(QFormLayout& form, const QString& label, int framesPerSecond,
                               std::int32_t Settings::*frames) {
  auto* const box = new FrameBox(framesPerSecond);
  box->setValue(parts_.Options.*frames);
  box->setAccessibleName(label);
  box->setToolTip(tr("Hours, minutes, seconds and frames: HH:MM:SS:FF"));
  form.addRow(label, box);
  takers_.emplace_back([box, frames](Settings& settings) { settings.*frames = box->value(); });
}

void SettingsDialog::AddRegions(QFormLayout& form) {
  auto* const row = new QHBoxLayout;
  for (std::size_t i = 0; i < Regions.size(); ++i) {
    auto* const box = new QCheckBox(QString::number(Regions.at(i)));
    box->setAccessibleName(tr("Region %1").arg(Regions.at(i)));
    box->setChecked(parts_.Options.RegionAllowed.at(i));
    row->addWidget(box);
    takers_.emplace_back([box, i](Settings& settings) { settings.RegionAllowed.at(i) = box->isChecked(); });
  }
  form.addRow(tr("Discs play in regions"), row);
}

void SettingsDialog::AddFolder(QFormLayout& form) {
  auto* const folder = new QLineEdit(Shown(parts_.Options.DestinationFolder));
  folder->setAccessibleName(tr("Folder for discs"));
  folder->setMinimumWidth(30 * folder->fontMetrics().averageCharWidth());
  auto* const choose = new QPushButton(tr("Choose…"));
  choose->setAccessibleName(tr("Choose the folder for discs"));
  connect(choose, &QPushButton::clicked, this, [this, folder] {
    if (const auto chosen = parts_.Answers.FolderToUse("Folder for Discs", folder->text().toStdString())) {
      folder->setText(Shown(*chosen));
    }
  });
  auto* const row = new QHBoxLayout;
  row->addWidget(folder);
  row->addWidget(choose);
  form.addRow(tr("Folder for discs"), row);
  takers_.emplace_back([folder](Settings& settings) {
    settings.DestinationFolder = std::string(Trim(folder->text().toStdString()));
  });
}

}  // namespace quorvelant
