// Disc size: what the disc needs, against the media it may go on.
#pragma once

#include <QComboBox>
#include <QLabel>
#include <QProgressBar>
#include <QWidget>

#include "disc/disc_media.h"
#include "ui/project_health.h"
#include "window/window_parts.h"

namespace quorvelant {

// A bar for the status line, with the accessible value interface.
class SizeGauge : public QWidget {
  Q_OBJECT
 public:
  explicit SizeGauge(WindowParts& parts, QWidget* parent = nullptr);

  [[nodiscard]] const DiscMedium& Medium() const;

 private:
  void ShowNeeds();

  WindowParts& parts_;
  ProjectHealth& health_;
  QProgressBar* bar_;
  QComboBox* medium_;
  QLabel* peak_;
};

}  // namespace quorvelant
