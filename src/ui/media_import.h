// Files come into the project, from a file dialog, from another program or a folder.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "ui/brought_files.h"
#include "ui/document.h"
#include "ui/jobs.h"
#include "ui/selection.h"

namespace quorvelant {

// Takes files in; one may be in the middle of it while another begins. Must not outlive the four parts, all
// of which live as long as the window.
class MediaImport {
 public:
  MediaImport(Document& document, Jobs& jobs, Selection& chosen)
      : document_(document), jobs_(jobs), chosen_(chosen) {}

  // What `SortBrought` says, in one step of the history, and chooses what came first. Videos are indexed
  // before, in a job; the project changes when that has ended. Files that are not taken are told, each with
  // what could be done about it. Folders are opened. Project scripts among the files are left: their paths
  // are the answer.
  std::vector<std::string> Bring(const std::vector<std::string>& paths, const BringTarget& target = {}) const;

  // Does an operation that needs the indexes of these videos, after they have been built; at once where they
  // are there.
  void WithIndexes(std::vector<std::string> videos, std::function<void()> then) const;

 private:
  Document& document_;
  Jobs& jobs_;
  Selection& chosen_;
};

}  // namespace quorvelant
