// What the panes look at together.
#pragma once

#include <QObject>
#include <optional>
#include <string>
#include <string_view>

#include "ui/document.h"
#include "vm/command_place.h"

namespace quorvelant {

// A place of a message, taken apart: "Track.0.Sub1.SubPlay7", "VTS1.TITLE1.PGC1 Pre2".
struct GoToPlace {
  std::string Key;  // of the live element that the place is in, or the nearest one above it
  std::optional<CommandPlace> Command;
  std::optional<std::size_t> SubStream;  // indexes from 0
  std::optional<std::size_t> SubEntry;
  std::optional<std::size_t> ButtonSet;
};
// Nothing where the place is not of the project.
[[nodiscard]] std::optional<GoToPlace> ParsePlace(const Project& project, std::string_view place);

// One element of the project is chosen for all panes, by its key, in Media or in Disc. The track that Picture
// shows is that of the last chosen source, or the one that the last chosen cell, program or PGC shows first.
// Where what is chosen goes, what held it is chosen.
class Selection : public QObject {
  Q_OBJECT
 public:
  explicit Selection(Document& document, QObject* parent = nullptr);

  [[nodiscard]] const std::string& Key() const { return key_; }  // empty for none
  // What was chosen last of the source material, and of the structure: a track is placed from the one into
  // the other. Empty for none.
  [[nodiscard]] const std::string& Source() const { return source_; }
  [[nodiscard]] const std::string& Structure() const { return structure_; }
  [[nodiscard]] std::optional<std::size_t> Track() const { return track_; }
  void Choose(std::string key);
  // False, and nothing changes, where the place is not of the project. The element is chosen first.
  bool GoTo(std::string_view place);

 signals:
  void KeyChanged();
  void TrackChanged();
  void WentTo(const quorvelant::GoToPlace& place);  // for panes that show more than elements

 private:
  void Follow(const ChangeEvent& event);  // what is chosen may be gone

  Document& document_;
  std::string key_;
  std::string source_;
  std::string structure_;
  std::optional<std::size_t> track_;
};

}  // namespace quorvelant
