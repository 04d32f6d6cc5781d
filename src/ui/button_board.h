// The buttons of the moment, and what is done to them on the picture.
#pragma once

#include <QObject>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "edit/button_rules.h"
#include "edit/button_sets.h"
#include "ui/document.h"
#include "ui/overlay_image.h"
#include "ui/viewer.h"

namespace quorvelant {

// Each change is one step of the history; what hinders it is told. Areas are columns and lines of the disc in
// the group of the viewer's view. Links that nobody drew follow each change; drawn ones stay.
class ButtonBoard : public QObject {
  Q_OBJECT
 public:
  ButtonBoard(Document& document, Viewer& viewer, QObject* parent = nullptr);

  // Of the moment; null for none.
  [[nodiscard]] const HighlightPlay* Set() const;
  [[nodiscard]] std::size_t Group() const { return GroupOfView(viewer_.State().View); }
  [[nodiscard]] std::optional<HighlightArea> AreaOf(std::size_t button) const;
  // The first whose rectangle holds the pixel.
  [[nodiscard]] std::optional<std::size_t> ButtonAt(int column, int line) const;

  // How buttons are shown: all of them while none is chosen.
  [[nodiscard]] ButtonState State() const { return state_; }
  void Show(ButtonState state);
  [[nodiscard]] std::vector<ButtonLook> Looks() const;
  // Why the chosen one is not to be seen on the disc; empty where all is well.
  [[nodiscard]] std::string WordsOfChosen() const;

  // A new button is chosen. With `aim`, the key of an element, it leads there and bears its name. Drags of 2
  // pixels or less make none.
  bool Add(const HighlightArea& area, std::string_view aim = {});
  bool Put(std::size_t button, const HighlightArea& area);
  bool Link(std::size_t from, std::size_t to, LinkDirection direction);
  bool Remove(std::size_t button);
  bool Rename(std::size_t button, const std::string& name);
  bool Route();

 signals:
  void StateChanged();

 private:
  [[nodiscard]] std::optional<EditedSet> Opened() const;
  [[nodiscard]] ButtonView View() const;
  Outcome MakeButton(EditSession& session, const HighlightArea& area, std::string_view aim);
  struct WantedButton {
    HighlightButton Button;
    std::optional<std::size_t> Origin;  // its place in the saved set
  };
  [[nodiscard]] std::vector<WantedButton> Wanted() const;
  // With `follows` links that nobody drew are made anew. Saves of one gesture are one step of the history.
  bool Save(const std::vector<WantedButton>& wanted, bool follows, std::string_view gesture = {});

  Document& document_;
  Viewer& viewer_;
  ButtonState state_ = ButtonState::Selected;
};

}  // namespace quorvelant
