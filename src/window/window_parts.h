// What every pane of a window works with.
#pragma once

#include <string>

#include "desk/settings.h"
#include "picture/picture_service.h"
#include "ui/answerer.h"
#include "ui/document.h"
#include "ui/jobs.h"
#include "ui/selection.h"
#include "ui/simulation.h"
#include "ui/viewer.h"
#include "window/actions.h"

namespace quorvelant {

// All of them outlive the panes.
struct WindowParts {
  Document& Doc;
  Selection& Chosen;
  Viewer& View;
  Simulation& Player;
  Jobs& Work;
  Actions& Commands;
  Answerer& Answers;
  PictureService& Pictures;
  Settings& Options;         // as the settings file has them
  std::string StateFolder;   // recovery, recent projects, the layout
  std::string CacheFolder;   // indexes of folders that cannot be written to
  std::string SettingsPath;  // empty where there is none
  std::string LogPath;       // of authoring; empty for none
};

}  // namespace quorvelant
