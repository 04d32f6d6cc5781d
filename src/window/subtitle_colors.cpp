#include "window/subtitle_colors.h"

#include <QColor>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>

#include "base/timecode.h"
#include "subpicture/bitmap_window.h"
#include "ui/color_text.h"
#include "ui/messages.h"
#include "window/color_line.h"

namespace quorvelant {

namespace {

constexpr int MostIndex = 15;

// The rows in the order in which the disc counts pixel codes, the last the highest.
struct CodeRow {
  const char* Label;
  std::size_t At;  // in `FourColors`
};
constexpr std::array<CodeRow, 4> Codes{{{QT_TRANSLATE_NOOP("SubtitleColors", "Background"), 3},
                                        {QT_TRANSLATE_NOOP("SubtitleColors", "Pattern"), 2},
                                        {QT_TRANSLATE_NOOP("SubtitleColors", "Emphasis 1"), 1},
                                        {QT_TRANSLATE_NOOP("SubtitleColors", "Emphasis 2"), 0}}};

}  // namespace

SubtitleColors::SubtitleColors(WindowParts& parts, QWidget* parent) : QWidget(parent), parts_(parts) {
  setAccessibleName(tr("Colours"));
  auto* const grid = new QGridLayout(this);
  grid->setContentsMargins(0, 0, 0, 0);
  const std::array columns{tr("Colour of the bitmap"), tr("Palette"), tr("Contrast")};
  for (int column = 0; column < 3; ++column) {
    grid->addWidget(new QLabel(columns.at(static_cast<std::size_t>(column))), 0, column + 1);
  }
  for (int row = 0; row < 4; ++row) {
    const CodeRow& code = Codes.at(static_cast<std::size_t>(row));
    const QString label = tr(code.Label);
    grid->addWidget(new QLabel(label), row + 1, 0);
    auto* const line = new ColorLine;
    line->setAccessibleName(tr("%1: colour of the bitmap").arg(label));
    conversion_.at(code.At) = line;
    grid->addWidget(line, row + 1, 1);
    for (const auto& [boxes, column] : {std::pair(&index_, 2), std::pair(&contrast_, 3)}) {
      auto* const box = new QSpinBox;
      box->setRange(0, MostIndex);
      box->setAccessibleName(
          QStringLiteral("%1: %2").arg(label, columns.at(static_cast<std::size_t>(column) - 1)));
      boxes->at(code.At) = box;
      grid->addWidget(box, row + 1, column);
    }
  }
  int row = 5;
  for (const auto& [which, columnOf] :
       {std::pair(SpreadColor::Conversion, 0), std::pair(SpreadColor::Display, 2)}) {
    for (const bool all : {false, true}) {
      const QString what = which == SpreadColor::Conversion ? tr("Bitmap colours") : tr("Palette colours");
      auto* const button =
          new QPushButton(all ? tr("%1 to all streams").arg(what) : tr("%1 to the stream").arg(what));
      connect(button, &QPushButton::clicked, this, [this, which = which, all] { Spread(which, all); });
      grid->addWidget(button, row + (all ? 1 : 0), columnOf, 1, 2);
    }
  }
  grid->setRowStretch(row + 2, 1);
  Show(std::nullopt);
}

void SubtitleColors::Show(std::optional<SubtitlePlace> place) {
  place_ = place;
  setEnabled(place_.has_value());
  if (!place_) {
    return;
  }
  const auto& entries = parts_.Doc.Work().Tracks[place_->Track].SubStreams[place_->Stream].SubPlays;
  if (place_->Entry >= entries.size()) {
    entry_ = {};
    entry_.X2 = ScreenWidth - 1;
    entry_.Y2 = ScreenHeight(FramesPerSecond(parts_.Doc.Work().Tracks[place_->Track].Standard) == 30) - 1;
    entry_.ContrastP = entry_.ContrastE1 = entry_.ContrastE2 = MostIndex;
    entry_.ColorP = 1;
    entry_.ConversionP = 0xFFFFFF;
  } else {
    entry_ = entries[place_->Entry];
  }
  const FourColors colors = ColorsOf(entry_);
  for (std::size_t i = 0; i < conversion_.size(); ++i) {
    conversion_.at(i)->setText(ColorText(colors.Conversion.at(i)));
    index_.at(i)->setValue(colors.Index.at(i));
    contrast_.at(i)->setValue(colors.Contrast.at(i));
  }
}

SubPicturePlay SubtitleColors::Settings() const {
  SubPicturePlay settings = entry_;
  settings.Used = true;
  settings.Forced = false;
  settings.SPNumber.clear();
  return settings;
}

std::optional<FourColors> SubtitleColors::Written() {
  FourColors colors;
  for (std::size_t i = 0; i < conversion_.size(); ++i) {
    const auto color = ColorIn(conversion_.at(i)->text());
    if (!color) {
      conversion_.at(i)->setFocus();
      conversion_.at(i)->selectAll();
      parts_.Doc.Speaks().Tell(MessageOf(message::ColorUnfit, {}, conversion_.at(i)->text().toStdString()));
      return std::nullopt;
    }
    colors.Conversion.at(i) = *color;
    colors.Index.at(i) = index_.at(i)->value();
    colors.Contrast.at(i) = contrast_.at(i)->value();
  }
  return colors;
}

void SubtitleColors::Spread(SpreadColor which, bool allStreams) {
  const auto colors = place_ ? Written() : std::nullopt;
  if (colors) {
    parts_.Doc.Do([&](EditSession& session, Consent) {
      return SpreadColors(session, place_->Track, place_->Stream, *colors, which, allStreams);
    });
  }
}

}  // namespace quorvelant
