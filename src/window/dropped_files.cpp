#include "window/dropped_files.h"

#include <QFile>
#include <QUrl>

#include "ui/messages.h"

namespace quorvelant {

bool HoldsFiles(const QMimeData& data) {
  return data.hasUrls() && !data.urls().isEmpty();
}

std::vector<std::string> PathsIn(const QMimeData& data, std::vector<Message>& told) {
  std::vector<std::string> paths;
  for (const QUrl& url : data.urls()) {
    const std::string path = QFile::encodeName(url.toLocalFile()).toStdString();
    if (path.empty()) {
      const std::string shown = url.toString().toStdString();
      told.push_back(MessageOf(message::FileNotHere, shown, shown));
    } else {
      paths.push_back(path);
    }
  }
  return paths;
}

}  // namespace quorvelant
