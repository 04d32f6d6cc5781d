#include "window/disc_player.h"

#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QStringList>
#include <vector>

namespace quorvelant {

namespace {

struct KnownPlayer {
  QString Program;
  QStringList Arguments;  // "%1": the disc's folder
};

const std::vector<KnownPlayer>& Players() {
  static const std::vector<KnownPlayer> players{
      {QStringLiteral("vlc"), {QStringLiteral("dvd://%1")}},
      {QStringLiteral("mpv"),
       {QStringLiteral("--force-window"), QStringLiteral("--dvd-device=%1"), QStringLiteral("dvd://")}},
      {QStringLiteral("xine"), {QStringLiteral("dvd:/%1")}},
      {QStringLiteral("mplayer"),
       {QStringLiteral("-dvd-device"), QStringLiteral("%1"), QStringLiteral("dvdnav://")}}};
  return players;
}

}  // namespace

bool PlayDisc(const QString& folder) {
  const QFileInfo files(folder);
  const QString disc = files.fileName().toUpper() == QStringLiteral("VIDEO_TS") ? files.path() : folder;
  for (const KnownPlayer& player : Players()) {
    const QString program = QStandardPaths::findExecutable(player.Program);
    if (program.isEmpty()) {
      continue;
    }
    QStringList arguments;
    for (const QString& argument : player.Arguments) {
      arguments << (argument.contains(QStringLiteral("%1")) ? argument.arg(disc) : argument);
    }
    return QProcess::startDetached(program, arguments);
  }
  return false;
}

}  // namespace quorvelant
