// Whether somebody else has written to the project's file.
#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>

#include "ui/document.h"

namespace quorvelant {

class FileWatch : public QObject {
  Q_OBJECT
 public:
  explicit FileWatch(Document& document, QObject* parent = nullptr);

 signals:
  // The file holds something else than the session knows. Once for each content.
  void ChangedOnDisk();

 private:
  void Follow();
  void Look();

  Document& document_;
  QFileSystemWatcher watcher_;
  QTimer calm_;  // files are often written in several goes
  std::string seen_;
};

}  // namespace quorvelant
