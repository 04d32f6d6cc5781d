// A viewer with a remote: libdvdnav plays a folder until something waits, and keys are pressed then.
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace quorvelant {

enum class RemoteKey { Title, Menu, Return, Resume };

class MenuPlayer {
 public:
  // The disc goes in. Raises std::runtime_error where the folder cannot be opened.
  explicit MenuPlayer(const std::string& folder);
  MenuPlayer(const MenuPlayer&) = delete;
  MenuPlayer& operator=(const MenuPlayer&) = delete;
  ~MenuPlayer();

  // Each of these plays on until a menu waits for the viewer or a title's next VOBU starts.
  void Press(int button);
  void Press(RemoteKey key);
  void PlayTitle(int title);
  void PlayChapter(int title, int chapter);
  // Plays until the title that plays is left.
  void PlayToEnd();

  // "title 2 chapter 3", "manager page 2", "set 2 menu 3 page 1", "stop", or what is the matter.
  [[nodiscard]] std::string Place() const;
  // Streams as the disc numbers them; subtitles are -1 where they are hidden. Of a title.
  [[nodiscard]] int Audio() const;
  [[nodiscard]] int Subtitles() const;
  // The buttons that show, and the first number key that chooses one.
  [[nodiscard]] int Buttons() const;
  [[nodiscard]] int FirstNumber() const;
  // Where an arrow leads from a button: "udlr".
  [[nodiscard]] int Arrow(int button, char direction) const;

  // Of the libraries, and of calls that failed.
  [[nodiscard]] const std::vector<std::string>& Complaints() const;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace quorvelant
