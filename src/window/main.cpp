#include <QApplication>
#include <filesystem>

#include "desk/user_folders.h"
#include "desk/version.h"
#include "ui/shown_text.h"
#include "window/icons.h"
#include "window/main_window.h"

int main(int argc, char** argv) {
  using namespace quorvelant;
  QApplication application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("quorvelant"));
  QApplication::setApplicationDisplayName(QStringLiteral("Quorvelant"));
  QApplication::setApplicationVersion(Shown(ProgramVersion()));
  QApplication::setDesktopFileName(Shown(ApplicationId));
  QApplication::setWindowIcon(ApplicationIcon());
  const std::string log = LogFile(ProcessEnvironment);
  WindowSetup setup;
  setup.StateFolder = std::filesystem::path(log).parent_path().string();
  setup.CacheFolder = CacheFolder(ProcessEnvironment);
  setup.SettingsPath = SettingsFile(ProcessEnvironment);
  setup.LogPath = log;
  MainWindow window(std::move(setup));
  window.show();
  window.OfferLeftWork();
  std::vector<std::string> files;
  for (const QString& argument : QApplication::arguments().mid(1)) {
    files.push_back(argument.toStdString());
  }
  window.Open(files);
  return QApplication::exec();
}
