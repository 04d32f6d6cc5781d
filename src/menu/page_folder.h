// The folder of the pages of a disc.
#pragma once

#include <optional>
#include <string>

#include "base/message.h"

namespace quorvelant {

// Pages are written to a folder aside, in the parent of the one that they belong to, which takes its name
// when all are painted. Unless it is kept then, it goes again with everything in it, and what was there
// before comes back: a disc that could not be made leaves nothing.
class PageFolder {
 public:
  // `path` is of this system; nothing is made yet. With `replace` a folder of that name gives way.
  PageFolder(std::string path, bool replace);
  PageFolder(const PageFolder&) = delete;
  PageFolder& operator=(const PageFolder&) = delete;
  ~PageFolder();

  // Why no pages can go there: the name is taken, or the folder around it is missing. Nothing is tried out.
  [[nodiscard]] std::optional<Message> Refusal() const;

  // Makes the folder aside; what went wrong, otherwise.
  [[nodiscard]] std::optional<Message> Begin();
  // Where files are written after that.
  [[nodiscard]] const std::string& Aside() const { return aside_; }
  // Gives the folder its name; what went wrong, otherwise.
  [[nodiscard]] std::optional<Message> Place();
  // The pages stay; what they replace goes.
  void Keep();

  [[nodiscard]] const std::string& Path() const { return path_; }
  [[nodiscard]] bool IsPlaced() const { return isPlaced_; }

 private:
  std::string path_;
  std::string aside_;   // empty before and after
  std::string former_;  // where the folder that was there went; empty for none
  bool replace_;
  bool isPlaced_ = false;
};

}  // namespace quorvelant
