// The source files of a plan as they were when it was made.
#pragma once

#include <sys/stat.h>

#include <map>
#include <optional>
#include <string>

#include "author/disc_plan.h"

namespace quorvelant {

class SourceStamps {
 public:
  explicit SourceStamps(const DiscPlan& plan);

  // The first file of another size or time now, or that is another file or none; nothing where all are as
  // they were.
  [[nodiscard]] std::optional<std::string> FirstChanged() const;

  // The first file that the disc in `folder` would replace by a file of its own; nothing where there is none.
  [[nodiscard]] std::optional<std::string> FirstReplacedIn(const std::string& folder) const;

  // Whether the file of this path is one of them.
  [[nodiscard]] bool Holds(const std::string& path) const;

 private:
  void AddInput(const MuxInput& input);
  void Add(const std::string& path);

  std::map<std::string, struct stat> stamps_;
};

// Whether the disc in `folder` would replace the file, by its name or by what a link of its name means.
[[nodiscard]] bool IsReplacedIn(const std::string& folder, const std::string& file);

}  // namespace quorvelant
