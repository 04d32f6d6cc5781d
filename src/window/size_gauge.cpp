#include "window/size_gauge.h"

#include <fmt/format.h>

#include <QHBoxLayout>
#include <algorithm>

#include "ui/plain_tool_tip.h"
#include "ui/shown_text.h"

namespace quorvelant {

namespace {

constexpr double MostMbits = 10.08;  // that a disc carries

double Gigabytes(std::uint64_t bytes) {
  return static_cast<double>(bytes) / 1e9;
}

// A disc of little is not told as one of nothing.
std::string Needed(const DiscNeeds& needs, const DiscMedium& medium) {
  constexpr std::uint64_t Little = 100'000'000;
  if (needs.Bytes < Little) {
    return fmt::format("{:.1f} MB of {:.2f} GB", static_cast<double>(needs.Bytes) / 1e6,
                       Gigabytes(medium.Bytes));
  }
  return fmt::format("{:.2f} of {:.2f} GB", Gigabytes(needs.Bytes), Gigabytes(medium.Bytes));
}

}  // namespace

SizeGauge::SizeGauge(WindowParts& parts, QWidget* parent)
    : QWidget(parent),
      parts_(parts),
      health_(ProjectHealth::Of(parts.Doc)),
      bar_(new QProgressBar),
      medium_(new QComboBox),
      peak_(new QLabel) {
  bar_->setAccessibleName(tr("Disc size"));
  bar_->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("0.00 of 0.00 GB, 0000 MB too much")));
  for (const DiscMedium& medium : DiscMedia) {
    medium_->addItem(Shown(medium.Name));
  }
  medium_->setAccessibleName(tr("Medium"));
  medium_->setToolTip(tr("What the disc is to go onto"));
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(bar_);
  row->addWidget(medium_);
  row->addWidget(peak_);
  connect(medium_, &QComboBox::currentIndexChanged, this, &SizeGauge::ShowNeeds);
  connect(&health_, &ProjectHealth::NeedsChanged, this, &SizeGauge::ShowNeeds);
  ShowNeeds();
}

const DiscMedium& SizeGauge::Medium() const {
  return DiscMedia.at(static_cast<std::size_t>(std::max(medium_->currentIndex(), 0)));
}

void SizeGauge::ShowNeeds() {
  const DiscNeeds& needs = health_.Needs();
  const DiscMedium& medium = Medium();
  const auto most = static_cast<int>(medium.Bytes / SectorBytes);
  const bool isTooLarge = needs.Bytes > medium.Bytes;
  bar_->setRange(0, most);
  bar_->setValue(static_cast<int>(std::min<std::uint64_t>(needs.Sectors(), medium.Bytes / SectorBytes)));
  bar_->setFormat(Shown(Needed(needs, medium)));
  QPalette colors = palette();
  if (isTooLarge) {
    colors.setColor(QPalette::Highlight, QColor(0xC0, 0x20, 0x20));
    colors.setColor(QPalette::HighlightedText, Qt::white);
  }
  bar_->setPalette(colors);
  const std::string drop = WhatToDrop(needs, medium.Bytes);
  const QString words =
      Shown(fmt::format("The disc needs {} sectors, and {} holds {}", needs.Sectors(), medium.Name, most));
  const QString all = drop.empty() ? words : words + QLatin1Char('\n') + Shown(drop);
  bar_->setToolTip(PlainToolTip(all));
  bar_->setAccessibleDescription(all);
  if (isTooLarge) {
    bar_->setFormat(Shown(drop));
  }
  peak_->setVisible(needs.PeakMbits > 0);
  peak_->setText(Shown(fmt::format("peak {:.1f} Mbit/s", needs.PeakMbits)));
  QPalette peakColors = palette();
  if (needs.PeakMbits > MostMbits) {
    peakColors.setColor(QPalette::WindowText, QColor(0xC0, 0x20, 0x20));
  }
  peak_->setPalette(peakColors);
  peak_->setToolTip(needs.PeakTrack.empty()
                        ? QString()
                        : PlainToolTip(tr("Picture and sound of %1 by their heads; a disc carries %2 Mbit/s")
                                           .arg(Shown(needs.PeakTrack))
                                           .arg(MostMbits)));
}

}  // namespace quorvelant
