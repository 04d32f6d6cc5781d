// What stands in the place of the picture while nothing is open.
#pragma once

#include <QListWidget>
#include <QWidget>
#include <functional>

#include "window/actions.h"

namespace quorvelant {

class StartPage : public QWidget {
  Q_OBJECT
 public:
  explicit StartPage(Actions& actions, QWidget* parent = nullptr);

  // Paths of this system, the last one first.
  void SetRecent(const QStringList& files);

 signals:
  void Chosen(const QString& file);

 private:
  QWidget* recentPart_;
  QListWidget* recent_;
};

}  // namespace quorvelant
