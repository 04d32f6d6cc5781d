#include <QApplication>
#include <filesystem>
#include <iostream>

#include "desk/user_folders.h"
#include "desk/version.h"
#include "ui/shown_text.h"
#include "window/icons.h"
#include "window/main_window.h"
#include "window/window_arguments.h"

int main(int argc, char** argv) {
  using namespace quorvelant;
  // Without a display, too.
  const std::string printed = ReadWindowArguments({argv + (argc > 0 ? 1 : 0), argv + argc}).Printed;
  if (!printed.empty()) {
    std::cout << printed << std::flush;
    return std::cout ? 0 : 1;
  }
  QApplication application(argc, argv);
  std::vector<std::string> words;
  for (const QString& argument : QApplication::arguments().mid(1)) {
    words.push_back(argument.toStdString());
  }
  const WindowArguments arguments = ReadWindowArguments(words);
  if (!arguments.Fault.empty()) {
    std::cerr << arguments.Fault;
    return 2;
  }
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
  window.Open(arguments.Files);
  return QApplication::exec();
}
