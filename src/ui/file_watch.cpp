#include "ui/file_watch.h"

#include <QFileInfo>

#include "base/random.h"
#include "edit/project_file.h"
#include "ui/shown_text.h"

namespace quorvelant {

FileWatch::FileWatch(Document& document, QObject* parent) : QObject(parent), document_(document) {
  constexpr int CalmMs = 300;
  calm_.setSingleShot(true);
  calm_.setInterval(CalmMs);
  connect(&calm_, &QTimer::timeout, this, &FileWatch::Look);
  connect(&watcher_, &QFileSystemWatcher::fileChanged, &calm_, qOverload<>(&QTimer::start));
  connect(&watcher_, &QFileSystemWatcher::directoryChanged, &calm_, qOverload<>(&QTimer::start));
  connect(&document_, &Document::StateChanged, this, &FileWatch::Follow);
}

// A file that another one replaces is watched no longer; its folder is.
void FileWatch::Follow() {
  const std::string& file = document_.Session().File();
  const QString path = file.empty() ? QString() : QFileInfo(Shown(SystemPath(file))).absoluteFilePath();
  const QStringList wanted = path.isEmpty() ? QStringList() : QStringList{path, QFileInfo(path).path()};
  const QStringList watched = watcher_.files() + watcher_.directories();
  if (watched == wanted) {
    return;
  }
  if (!watched.isEmpty()) {
    watcher_.removePaths(watched);
  }
  if (!wanted.isEmpty()) {
    watcher_.addPaths(wanted);
  }
  seen_.clear();
}

void FileWatch::Look() {
  Follow();
  const EditSession& session = document_.Session();
  if (session.File().empty() || !QFileInfo::exists(Shown(SystemPath(session.File())))) {
    return;
  }
  std::string now = ScriptTextOf(session.File());
  if (now != session.Script() && now != seen_) {
    seen_ = std::move(now);
    emit ChangedOnDisk();
  }
}

}  // namespace quorvelant
