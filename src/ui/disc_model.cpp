#include "ui/disc_model.h"

#include <QMimeData>
#include <algorithm>
#include <set>
#include <utility>

#include "edit/live_elements.h"
#include "edit/messages.h"
#include "model/keys.h"
#include "model/walk.h"
#include "ui/disc_facts.h"

namespace quorvelant {

namespace {

template <class Unit>
std::string OnlyPgc(const Unit& unit) {
  const auto chains = Live(unit.PGC);
  return chains.size() == 1 ? chains.front()->Key : unit.Key;
}

// What a drag places; nothing where something else is in it.
std::vector<Dropped> PlacedBy(const QMimeData& data) {
  std::vector<Dropped> all;
  for (const std::string& key : KeysIn(data)) {
    const auto what = DroppedOf(key);
    if (!what) {
      return {};
    }
    all.push_back(*what);
  }
  return all;
}

}  // namespace

std::optional<Dropped> DroppedOf(std::string_view key) {
  const auto source = ParseSourceKey(key);
  if (source && source->Kind == SourceKey::Node::Track) {
    return Dropped{.Track = source->Track, .Scene = {}};
  }
  if (source && source->Kind == SourceKey::Node::Scene) {
    return Dropped{.Track = source->Track, .Scene = source->Number - 1};
  }
  return std::nullopt;
}

std::string DropTarget(const Project& project, const std::string& key) {
  if (LiveCell(project, key) != nullptr) {
    return key.substr(0, key.rfind('.'));
  }
  if (const Title_P* title = LiveTitle(project, key)) {
    return OnlyPgc(*title);
  }
  const Lang_P* language = LiveLanguage(project, key);
  return language == nullptr ? key : OnlyPgc(*language);
}

DiscModel::DiscModel(Document& document)
    : TreeModel(document, {tr("Name"), tr("Time"), tr("Contents"), tr("Details")}, {"structure"}) {
  Begin();
}

TreeNode DiscModel::TreeOf(const Project& project) const {
  return StructureTree(project);
}

void DiscModel::TellFacts(const ChangeEvent& event, const FactTaker& take) const {
  const Project& project = Doc().Work();
  std::set<std::size_t> tracks;
  std::set<const VTS_P*> entries;
  bool isFirstPlay = event.Replaced;
  for (const Part& part : event.Parts) {
    isFirstPlay = isFirstPlay || part.Kind == PartKind::FirstPlay;
    if (part.Kind == PartKind::Track) {
      tracks.insert(part.Number);
    } else if (part.Kind == PartKind::Entry) {
      entries.insert(project.Disc.Item(part.Number));
    }
  }
  if (isFirstPlay) {
    TellFirstPlayFacts(project, take);
  }
  const auto shows = [&tracks](const Cell_P* cell) {
    return cell->SegmentUsed >= 0 && tracks.contains(static_cast<std::size_t>(cell->SegmentUsed));
  };
  for (const VTS_P* entry : Live(project.Disc)) {
    if (event.Replaced || entries.contains(entry) ||
        (!tracks.empty() && (std::ranges::any_of(LiveCells(*entry, Domain::Menu), shows) ||
                             std::ranges::any_of(LiveCells(*entry, Domain::Title), shows)))) {
      TellEntryFacts(project, *entry, take);
    }
  }
}

bool DiscModel::CanDrag(const std::string& /*key*/, std::string_view kind) const {
  return kind != "highlight";
}

bool DiscModel::CanDropOn(std::string_view kind) const {
  return kind != "firstplay" && kind != "entry" && kind != "highlight";
}

bool DiscModel::canDropMimeData(const QMimeData* data, Qt::DropAction /*action*/, int row, int /*column*/,
                                const QModelIndex& parent) const {
  const std::vector<Dropped> all = PlacedBy(*data);
  if (all.empty() || row >= 0 || !parent.isValid()) {
    return false;
  }
  const std::string target = DropTarget(Doc().Work(), KeyOf(parent));
  return std::ranges::all_of(all, [this, &target](const Dropped& what) {
    const auto refusal = RefuseDrop(Doc().Work(), what, target);
    if (refusal) {
      const QString why = refusal->Is(message::NoSuchElement)
                              ? tr("Tracks and scenes go onto a PGC or a program")
                              : QString::fromStdString(refusal->Text);
      emit DropRefused(why);
    }
    return !refusal;
  });
}

bool DiscModel::dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                             const QModelIndex& parent) {
  if (!canDropMimeData(data, action, row, column, parent)) {
    return false;
  }
  const std::vector<Dropped> all = PlacedBy(*data);
  const std::string target = DropTarget(Doc().Work(), KeyOf(parent));
  for (const Dropped& what : all) {
    const auto key = Doc().Do([&](EditSession& session, Consent) { return Drop(session, what, target); });
    if (!key) {
      return false;
    }
    emit Placed(QString::fromStdString(*key));
  }
  return true;
}

}  // namespace quorvelant
