#include "ui/recent_files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include "ui/shown_text.h"

namespace quorvelant {

RecentFiles::RecentFiles(const std::string& folder, QObject* parent)
    : QObject(parent), folder_(Shown(folder)) {}

QStringList RecentFiles::Read() const {
  QFile in(folder_ + QStringLiteral("/recent.txt"));
  if (folder_.isEmpty() || !in.open(QIODevice::ReadOnly)) {
    return {};
  }
  constexpr qint64 MostBytes = 1 << 20;
  return QString::fromUtf8(in.read(MostBytes)).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

QStringList RecentFiles::Files() const {
  QStringList files;
  for (const QString& file : Read()) {
    if (files.size() < Most && QFileInfo::exists(file)) {
      files << file;
    }
  }
  return files;
}

void RecentFiles::Add(const std::string& file) {
  const QString path = QFileInfo(Shown(file)).absoluteFilePath();
  QStringList files = Read();
  files.removeAll(path);
  files.prepend(path);
  Write(files.mid(0, 2 * Most));  // one whose disk is not there now may come back
}

void RecentFiles::Clear() {
  Write({});
}

void RecentFiles::Write(const QStringList& files) {
  QSaveFile out(folder_ + QStringLiteral("/recent.txt"));
  if (!folder_.isEmpty() && QDir().mkpath(folder_) && out.open(QIODevice::WriteOnly)) {
    out.write(files.join(QLatin1Char('\n')).toUtf8());
    out.commit();
  }
  emit Changed();
}

}  // namespace quorvelant
