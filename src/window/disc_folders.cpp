#include "window/disc_folders.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>
#include <QUrl>

#include "base/random.h"
#include "ui/shown_text.h"

namespace quorvelant {

DiscFolders::DiscFolders(Document& document, const std::string& stateFolder, QObject* parent)
    : QObject(parent), document_(document) {
  if (!stateFolder.empty()) {
    file_ = Shown(stateFolder) + QStringLiteral("/folders.ini");
  }
  connect(&document_, qOverload<const ChangeEvent&>(&Document::Changed), this,
          [this](const ChangeEvent& event) {
            if (event.Replaced) {
              session_.clear();
            }
          });
}

QString DiscFolders::Key() const {
  const std::string& file = document_.Session().File();
  return file.empty()
             ? QString()
             : QString::fromLatin1(QUrl::toPercentEncoding(QFileInfo(Shown(file)).absoluteFilePath()));
}

QString DiscFolders::OwnFolder() const {
  return Shown(SystemPath(document_.Work().DestinationFolder));
}

QString DiscFolders::Proposed() const {
  const QString own = OwnFolder();
  if (!session_.isEmpty() && sessionOwn_ == own) {
    return session_;
  }
  if (const QString key = Key(); !key.isEmpty() && QFileInfo::exists(file_)) {
    const QStringList kept = QSettings(file_, QSettings::IniFormat).value(key).toStringList();
    // A folder that the project has been given since is the newer wish.
    if (kept.size() == 2 && kept.at(1) == own) {
      return kept.at(0);
    }
  }
  if (!own.isEmpty()) {
    return Absolute(own);
  }
  const std::string& file = document_.Session().File();
  const QString name = file.empty() ? QStandardPaths::writableLocation(QStandardPaths::MoviesLocation) +
                                          QStringLiteral("/Disc")
                                    : QFileInfo(Shown(SystemPath(file))).completeBaseName();
  return Absolute(name + QStringLiteral("/VIDEO_TS"));
}

QString DiscFolders::Absolute(const QString& written) const {
  const QString path = written.trimmed();
  if (path.isEmpty()) {
    return {};
  }
  if (path == QStringLiteral("~") || path.startsWith(QStringLiteral("~/"))) {
    return QDir::cleanPath(QDir::homePath() + path.mid(1));
  }
  const std::string& file = document_.Session().File();
  const QString base = file.empty() ? QDir::homePath() : QFileInfo(Shown(SystemPath(file))).absolutePath();
  return QDir::cleanPath(QDir(base).absoluteFilePath(path));
}

void DiscFolders::Remember(const QString& folder) {
  session_ = folder;
  sessionOwn_ = OwnFolder();
  const QString key = Key();
  if (!key.isEmpty() && !file_.isEmpty() && QDir().mkpath(QFileInfo(file_).path())) {
    QSettings(file_, QSettings::IniFormat).setValue(key, QStringList{folder, sessionOwn_});
  }
}

}  // namespace quorvelant
