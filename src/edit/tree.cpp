#include "edit/tree.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <optional>
#include <set>
#include <unordered_set>
#include <utility>

#include "model/cls_dvd.h"
#include "model/keys.h"
#include "model/walk.h"

namespace quorvelant {

namespace {

constexpr std::array<std::string_view, 3> Folders{"Motion", "Still", "SlideShow"};

TreeNode Node(std::string_view kind, std::string key, std::string text) {
  return {.Key = std::move(key), .Text = std::move(text), .Kind = kind, .Children = {}};
}

// --- sources ---

TreeNode VideoList(const Track& track, std::size_t index) {
  TreeNode list = Node("videolist", VideoListKey(index), std::string(VideoListText));
  for (const auto& [place, play] : LiveWithIndex(track.VideoPlays)) {
    list.Children.push_back(Node("video", VideoPlayKey(index, place + 1), VideoPlayText(play, place + 1)));
  }
  return list;
}

TreeNode AudioList(const Track& track, std::size_t index) {
  TreeNode list = Node("audiolist", AudioListKey(index), std::string(AudioListText));
  for (const auto& [place, stream] : LiveWithIndex(track.AudioStreams)) {
    TreeNode& node = list.Children.emplace_back(
        Node("audio", AudioStreamKey(index, place + 1), AudioStreamText(stream, place + 1)));
    for (const auto& [number, play] : LiveWithIndex(stream.AudioPlays)) {
      node.Children.push_back(
          Node("audioplay", AudioPlayKey(index, place + 1, number + 1), AudioPlayText(play, number + 1)));
    }
  }
  return list;
}

TreeNode SubList(const Track& track, std::size_t index) {
  TreeNode list = Node("sublist", SubListKey(index), std::string(SubListText));
  for (const auto& [place, stream] : LiveWithIndex(track.SubStreams)) {
    list.Children.push_back(Node("sub", SubStreamKey(index, place + 1), SubStreamText(stream, place + 1)));
  }
  return list;
}

TreeNode TrackNode(const Track& track, std::size_t index) {
  TreeNode node = Node("track", TrackKey(index), track.TrackName);
  node.Children.push_back(VideoList(track, index));
  node.Children.push_back(AudioList(track, index));
  node.Children.push_back(SubList(track, index));
  if (track.HasHighlights) {
    node.Children.push_back(Node("highlight", HighStreamKey(index), std::string(HighStreamText)));
  }
  for (std::size_t i = 0; i < track.Scenes.size(); ++i) {
    node.Children.push_back(Node("scene", SceneKey(index, i + 1), track.Scenes[i].Name));
  }
  return node;
}

// --- disc ---

// A project as it stands, or as it stood with other contents in some parts.
class ProjectView {
 public:
  explicit ProjectView(const Project& project, const PartImages* images = nullptr)
      : project_(&project), images_(images) {}

  [[nodiscard]] const Track* TrackAt(std::size_t index) const {
    if (const PartContent* image = ImageOf(Part::OfTrack(index))) {
      return std::get_if<Track>(image);
    }
    return index < project_->Tracks.Count() ? &project_->Tracks[index] : nullptr;
  }
  [[nodiscard]] const VTS_P* EntryAt(std::size_t number) const {
    if (const PartContent* image = ImageOf(Part::OfEntry(number))) {
      return std::get_if<VTS_P>(image);
    }
    return project_->Disc.Item(number);
  }
  [[nodiscard]] std::size_t HighlightCount(std::size_t track) const {
    const Track* source = TrackAt(track);
    return source != nullptr && source->HasHighlights ? source->HighlightPlays.size() : 0;
  }

 private:
  [[nodiscard]] const PartContent* ImageOf(const Part& part) const {
    if (images_ == nullptr) {
      return nullptr;
    }
    const auto found = images_->find(part);
    return found == images_->end() ? nullptr : &found->second;
  }

  const Project* project_;
  const PartImages* images_;
};

TreeNode CellNode(const Cell_P& cell, const std::string& programKey, std::size_t number,
                  const ProjectView& view) {
  TreeNode node = Node("cell", CellKey(programKey, static_cast<int>(number)),
                       fmt::format("Cell{} -> {}; Scene_{}", number, cell.TrackName, cell.pScene + 1));
  const std::size_t highlights =
      cell.SegmentUsed >= 0 ? view.HighlightCount(static_cast<std::size_t>(cell.SegmentUsed)) : 0;
  for (std::size_t i = 0; i < highlights; ++i) {
    node.Children.push_back(
        Node("highlight", HighlightKey(node.Key, static_cast<int>(i + 1)), std::string(HighStreamText)));
  }
  return node;
}

TreeNode PgcNode(const PGC_P& chain, const ProjectView& view) {
  TreeNode node = Node("pgc", chain.Key, chain.PGCName);
  for (const auto& [place, program] : LiveWithIndex(chain.PG)) {
    const std::string key = ProgramKey(chain.Key, static_cast<int>(place + 1));
    TreeNode& child = node.Children.emplace_back(Node("program", key, program.PGName));
    for (const auto& [number, cell] : LiveWithIndex(program.Cell)) {
      child.Children.push_back(CellNode(cell, key, number + 1, view));
    }
  }
  return node;
}

template <class Unit>
TreeNode UnitNode(const Unit& unit, std::string_view kind, std::string text, const ProjectView& view) {
  TreeNode node = Node(kind, unit.Key, std::move(text));
  for (const PGC_P* chain : Live(unit.PGC)) {
    node.Children.push_back(PgcNode(*chain, view));
  }
  return node;
}

TreeNode EntryNode(const VTS_P& entry, const ProjectView& view) {
  TreeNode node = Node("entry", entry.Key, entry.VTSName);
  for (const Lang_P* language : Live(entry.Lang)) {
    std::string text =
        LanguageUnitName(TitleSetEntry(entry.Key), CLsDVD::LangCodeToLangName(language->Language));
    node.Children.push_back(UnitNode(*language, "language", std::move(text), view));
  }
  for (const Title_P* title : Live(entry.Title)) {
    node.Children.push_back(UnitNode(*title, "title", title->TitleName, view));
  }
  return node;
}

// --- differences ---

TreeChange TextChange(const TreeNode& after) {
  return {.Kind = TreeChange::What::Text,
          .Parent = {},
          .Row = 0,
          .Node = Node(after.Kind, after.Key, after.Text)};
}

TreeChange Removal(const std::string& parent, std::size_t row, const TreeNode& node) {
  return {
      .Kind = TreeChange::What::Remove, .Parent = parent, .Row = row, .Node = Node(node.Kind, node.Key, {})};
}

TreeChange Insertion(const std::string& parent, std::size_t row, TreeNode node) {
  return {.Kind = TreeChange::What::Insert, .Parent = parent, .Row = row, .Node = std::move(node)};
}

void Differ(const TreeNode& before, const TreeNode& after, std::vector<TreeChange>& changes) {
  if (before.Text != after.Text) {
    changes.push_back(TextChange(after));
  }
  std::unordered_set<std::string_view> stays;
  for (const TreeNode& child : after.Children) {
    stays.insert(child.Key);
  }
  auto old = before.Children.begin();
  const auto dropGone = [&](std::size_t row) {
    while (old != before.Children.end() && !stays.contains(old->Key)) {
      changes.push_back(Removal(after.Key, row, *old));
      ++old;
    }
  };
  for (std::size_t row = 0; row < after.Children.size(); ++row) {
    dropGone(row);
    const TreeNode& child = after.Children[row];
    if (old != before.Children.end() && old->Key == child.Key) {
      Differ(*old, child, changes);
      ++old;
    } else {
      changes.push_back(Insertion(after.Key, row, child));
    }
  }
  dropGone(after.Children.size());
}

// A part of a tree as it stands in its parent.
struct PlacedNode {
  std::string Parent;
  std::size_t Row = 0;
  TreeNode Node;
};

// The node of a part in `view`; the parts of lower numbers stand in the mirror as they do in `after` by then:
// those that a step added are gone from there when it is taken back.
std::optional<PlacedNode> Placed(const Part& part, const ProjectView& view, const ProjectView& after) {
  if (part.Kind == PartKind::Track) {
    const Track* track = view.TrackAt(part.Number);
    if (track == nullptr || track->Removed) {
      return std::nullopt;
    }
    std::size_t row = 0;
    for (std::size_t i = 0; i < part.Number; ++i) {
      const Track* other = after.TrackAt(i);
      if (other != nullptr && IsLive(*other) && other->TrackType == track->TrackType) {
        ++row;
      }
    }
    return PlacedNode{track->TrackType, row, TrackNode(*track, part.Number)};
  }
  const VTS_P* entry = part.Kind == PartKind::Entry ? view.EntryAt(part.Number) : nullptr;
  if (entry == nullptr || entry->Removed) {
    return std::nullopt;
  }
  std::size_t row = 1;  // after First Play
  for (std::size_t i = 1; i < part.Number; ++i) {
    const VTS_P* other = after.EntryAt(i);
    if (other != nullptr && IsLive(*other)) {
      ++row;
    }
  }
  return PlacedNode{std::string(StructureKey), row, EntryNode(*entry, view)};
}

// Entries whose own content stayed, but that show a track whose button sets became more or fewer.
void AddShowing(std::size_t track, const Project& project, std::set<Part>& parts) {
  const auto shows = [track](const Cell_P* cell) { return std::cmp_equal(cell->SegmentUsed, track); };
  for (std::size_t number = 1; number <= project.Disc.Count(); ++number) {
    const VTS_P& entry = *project.Disc.Item(number);
    if (std::ranges::any_of(LiveCells(entry, Domain::Menu), shows) ||
        std::ranges::any_of(LiveCells(entry, Domain::Title), shows)) {
      parts.insert(Part::OfEntry(number));
    }
  }
}

void AddChanges(const std::optional<PlacedNode>& before, const std::optional<PlacedNode>& after,
                std::vector<TreeChange>& changes) {
  if (before && after && before->Parent == after->Parent) {
    Differ(before->Node, after->Node, changes);
    return;
  }
  if (before) {
    changes.push_back(Removal(before->Parent, before->Row, before->Node));
  }
  if (after) {
    changes.push_back(Insertion(after->Parent, after->Row, after->Node));
  }
}

}  // namespace

TreeNode SegmentTree(const Project& project) {
  TreeNode root = Node("segments", std::string(SegmentsKey), std::string(SegmentsText));
  for (const std::string_view type : Folders) {
    TreeNode& folder =
        root.Children.emplace_back(Node("folder", std::string(type), std::string(FolderText(type))));
    for (const auto& [index, track] : LiveWithIndex(project.Tracks)) {
      if (track.TrackType == type) {
        folder.Children.push_back(TrackNode(track, index));
      }
    }
  }
  return root;
}

TreeNode StructureTree(const Project& project) {
  const ProjectView view(project);
  TreeNode root = Node("structure", std::string(StructureKey), {});
  root.Children.push_back(Node("firstplay", std::string(FirstPgcKey), std::string(FirstPgcName)));
  for (const VTS_P* entry : Live(project.Disc)) {
    root.Children.push_back(EntryNode(*entry, view));
  }
  return root;
}

std::vector<TreeChange> Differences(const TreeNode& before, const TreeNode& after) {
  std::vector<TreeChange> changes;
  Differ(before, after, changes);
  return changes;
}

std::vector<TreeChange> ChangesOf(const PartImages& before, const Project& after) {
  const ProjectView former(after, &before);
  const ProjectView now(after);
  std::set<Part> parts;
  for (const auto& [part, content] : before) {
    parts.insert(part);
    if (part.Kind == PartKind::Track &&
        former.HighlightCount(part.Number) != now.HighlightCount(part.Number)) {
      AddShowing(part.Number, after, parts);
    }
  }
  std::vector<TreeChange> changes;
  for (const Part& part : parts) {
    AddChanges(Placed(part, former, now), Placed(part, now, now), changes);
  }
  return changes;
}

}  // namespace quorvelant
