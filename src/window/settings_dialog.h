// Settings: every line of the settings file.
#pragma once

#include <QDialog>
#include <QFormLayout>
#include <QLineEdit>
#include <functional>
#include <vector>

#include "window/window_parts.h"

namespace quorvelant {

// Shows the settings as they are. When it closes, however that happens, they are written and hold for what is
// done from then on; where the file cannot be written that is told, and they hold until the window closes.
class SettingsDialog : public QDialog {
  Q_OBJECT
 public:
  explicit SettingsDialog(WindowParts& parts, QWidget* parent = nullptr);

  void done(int result) override;

 private:
  QWidget* DiscPage();
  QWidget* ImportPage();
  QWidget* SlidePage();
  void AddFlag(QFormLayout& form, const QString& text, const QString& tip, bool Settings::*flag);
  void AddFrames(QFormLayout& form, const QString& label, int framesPerSecond,
                 std::int32_t Settings::*frames);
  void AddRegions(QFormLayout& form);
  void AddFolder(QFormLayout& form);

  WindowParts& parts_;
  std::vector<std::function<void(Settings&)>> takers_;  // each reads its control
};

}  // namespace quorvelant
