#include "window/properties_pane.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QScrollArea>
#include <QStyle>
#include <QVBoxLayout>

#include "base/message_error.h"
#include "desk/edit_fields.h"
#include "edit/element_names.h"
#include "edit/live_elements.h"
#include "edit/live_sources.h"
#include "edit/removal.h"
#include "edit/segments.h"
#include "ui/shown_text.h"
#include "window/palette_editor.h"

namespace quorvelant {

namespace {

constexpr std::string_view NameName = "name";

QString TitleOf(const Project& project, const std::string& key) {
  const auto source = ParseSourceKey(key);
  if (!source) {
    return Shown(NameOfElement(project, key));
  }
  if (!LiveSource(project, key, source->Kind)) {
    return {};
  }
  const Track& track = project.Tracks[source->Track];
  switch (source->Kind) {
    case SourceKey::Node::AudioStream:
      return Shown(track.AudioStreams[source->Number - 1].StreamName);
    case SourceKey::Node::SubStream:
      return Shown(track.SubStreams[source->Number - 1].StreamName);
    case SourceKey::Node::Scene:
      return Shown(track.Scenes[source->Number - 1].Name);
    case SourceKey::Node::VideoPlay:
      return Shown(VideoPlayText(track.VideoPlays[source->Number - 1], source->Number));
    default:
      return Shown(track.TrackName);
  }
}

const std::string* NameOf(const Project& project, const std::string& key) {
  if (const auto source = LiveSource(project, key, SourceKey::Node::Track)) {
    return &project.Tracks[source->Track].TrackName;
  }
  if (const Title_P* title = LiveTitle(project, key)) {
    return &title->TitleName;
  }
  if (const PGC_P* chain = key == FirstPgcKey ? nullptr : LivePgc(project, key)) {
    return &chain->PGCName;
  }
  if (const PG_P* program = LiveProgram(project, key)) {
    return &program->PGName;
  }
  const Cell_P* const cell = LiveCell(project, key);
  return cell == nullptr ? nullptr : &cell->CellName;
}

}  // namespace

PropertiesPane::PropertiesPane(WindowParts& parts, QWidget* parent)
    : QWidget(parent),
      parts_(parts),
      title_(new QLabel),
      area_(new QScrollArea),
      form_(new QWidget),
      palettes_(new PaletteEditor(parts)) {
  setAccessibleName(tr("Properties"));
  title_->setTextFormat(Qt::PlainText);
  title_->setWordWrap(true);
  area_->setWidgetResizable(true);
  area_->setFrameShape(QFrame::NoFrame);
  area_->setFocusPolicy(Qt::NoFocus);
  area_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  auto* const box = new QGroupBox(tr("Palettes"));
  auto* const inBox = new QVBoxLayout(box);
  inBox->addWidget(palettes_);
  auto* const whole = new QVBoxLayout(this);
  whole->addWidget(title_);
  whole->addWidget(area_, 1);
  // One below the other, so that a low window scrolls over both.
  auto* const content = new QWidget;
  inside_ = new QVBoxLayout(content);
  inside_->setContentsMargins(0, 0, 0, 0);
  inside_->addWidget(form_);
  inside_->addStretch(1);
  inside_->addWidget(box);
  area_->setWidget(content);
  connect(&parts_.Chosen, &Selection::KeyChanged, this, &PropertiesPane::FollowKey);
  connect(&parts_.Doc, qOverload<const ChangeEvent&>(&Document::Changed), this, &PropertiesPane::Follow);
  FollowKey();
}

std::optional<ElementField> PropertiesPane::NameField() const {
  const std::string* const name = NameOf(parts_.Doc.Work(), key_);
  if (name == nullptr) {
    return std::nullopt;
  }
  ElementField field;
  field.Name = NameName;
  field.Label = "Name";
  field.Value = *name;
  return field;
}

std::vector<ElementField> PropertiesPane::Fields() const {
  std::vector<ElementField> fields = FieldsOf(parts_.Doc.Work(), key_);
  if (auto name = NameField()) {
    fields.insert(fields.begin(), *std::move(name));
  }
  return fields;
}

void PropertiesPane::FollowKey() {
  key_ = parts_.Chosen.Key();
  const std::vector<ElementField> fields = Fields();
  BuildForm(fields);
  ShowFields(fields);
  if (const PGC_P* const chain = LivePgc(parts_.Doc.Work(), key_)) {
    palettes_->Show(chain->PaletteName);
  }
}

void PropertiesPane::Follow(const ChangeEvent& event) {
  if (event.Replaced) {
    FollowKey();
    return;
  }
  const std::vector<ElementField> fields = Fields();
  const bool isSame = std::ranges::equal(fields, names_, {}, &ElementField::Name);
  if (!isSame) {
    BuildForm(fields);
  }
  ShowFields(fields);
}

void PropertiesPane::BuildForm(const std::vector<ElementField>& fields) {
  auto* const content = new QWidget;
  auto* const form = new QFormLayout(content);
  form->setRowWrapPolicy(QFormLayout::WrapLongRows);
  form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
  names_.clear();
  controls_.clear();
  for (const ElementField& field : fields) {
    names_.emplace_back(field.Name);
    controls_.push_back(MakeFieldControl(
        field, [this, name = std::string(field.Name)](const nlohmann::json& value) { Set(name, value); }));
    auto* const label = new QLabel(Shown(field.Label));
    label->setWordWrap(true);
    label->setBuddy(controls_.back().Widget);
    form->addRow(label, controls_.back().Widget);
  }
  if (fields.empty()) {
    auto* const words = new QLabel(tr("The properties of what is chosen in Media or Disc stand here."));
    words->setWordWrap(true);
    form->addRow(words);
  }
  // A control of the old form may be the one that speaks right now.
  delete inside_->replaceWidget(form_, content);
  form_->hide();
  form_->setParent(nullptr);
  form_->deleteLater();
  form_ = content;
  // As wide as what stands in it: forms scroll one way only.
  area_->setMinimumWidth(inside_->minimumSize().width() +
                         style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, area_));
}

void PropertiesPane::ShowFields(const std::vector<ElementField>& fields) {
  const QString title = TitleOf(parts_.Doc.Work(), key_);
  title_->setText(title);
  title_->setVisible(!title.isEmpty());
  for (std::size_t i = 0; i < controls_.size(); ++i) {
    controls_[i].Show(fields[i]);
  }
}

void PropertiesPane::Set(const std::string& field, const nlohmann::json& value) {
  const std::string key = key_;
  const auto done = parts_.Doc.Do([&](EditSession& session, Consent) {
    try {
      if (field == NameName) {
        const std::string name = value.get<std::string>();
        return ParseSourceKey(key) ? RenameTrack(session, key, name) : Rename(session, key, name);
      }
      const nlohmann::json object{{field, value}};
      return SetFields(session, key, JsonField("fields", object));
    } catch (const MessageError& trouble) {
      return Outcome::Refused(trouble.What());
    }
  });
  if (!done && key == key_) {
    ShowFields(Fields());  // what was refused gives way to what stands
  }
}

}  // namespace quorvelant
