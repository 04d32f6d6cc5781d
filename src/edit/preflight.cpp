#include "edit/preflight.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/text.h"
#include "edit/messages.h"
#include "model/cls_dvd.h"
#include "model/walk.h"

namespace quorvelant {

namespace {

// What stands in the way: a fault ends the run, a question can be passed.
using Obstacle = std::optional<Message>;

bool Passes(UserInterface& ui, const Message& question) {
  return ui.Ask(question.Title, question.Text, false);
}

// A language with PGCs but without the menu that the remote's key leads to.
Obstacle MissingMenu(const VTS_P& entry, std::size_t count) {
  for (const Lang_P* language : Live(entry.Lang)) {
    const auto chains = Live(language->PGC);
    const bool isManager = count == 0;
    const auto isThere = [isManager](const PGC_P* chain) {
      const std::string type = Lower(chain->MenuType);
      return isManager ? type == "titlemenu" || type == "title menu" : type == "root" || type == "root menu";
    };
    if (!chains.empty() && std::ranges::none_of(chains, isThere)) {
      const std::string_view name = CLsDVD::LangCodeToLangName(language->Language);
      return isManager ? MessageOf(message::NoTitleMenu, language->Key, name)
                       : MessageOf(message::NoRootMenu, language->Key, count, name);
    }
  }
  return std::nullopt;
}

// The live audio streams of the tracks that the cells show.
std::vector<const AudioStream*> StreamsOf(const std::vector<const Cell_P*>& cells, const Tracks& tracks) {
  std::vector<const AudioStream*> streams;
  for (const Cell_P* cell : cells) {
    if (cell->SegmentUsed >= 0 && std::cmp_less(cell->SegmentUsed, tracks.Count())) {
      for (const AudioStream* stream :
           Live(tracks[static_cast<std::size_t>(cell->SegmentUsed)].AudioStreams)) {
        streams.push_back(stream);
      }
    }
  }
  return streams;
}

bool IsDts(const AudioStream* stream) {
  return stream->Format == "DTS";
}
bool IsPlayedEverywhere(const AudioStream* stream) {
  return stream->Format == "AC3" || stream->Format == "PCM";
}

bool HasCells(const Title_P& title) {
  return std::ranges::any_of(Live(title.PGC), [](const PGC_P* chain) { return !LiveCells(*chain).empty(); });
}

Obstacle EmptyTitle(const VTS_P& entry) {
  for (const Title_P* title : Live(entry.Title)) {
    if (!HasCells(*title)) {
      return MessageOf(message::TitleHasNoCells, title->Key, title->TitleName);
    }
  }
  return std::nullopt;
}

// Tells or asks what is in the way of one entry; whether the run goes on. `dts` becomes true where a title
// has DTS sound.
bool EntryPasses(const VTS_P& entry, std::size_t count, const Tracks& tracks, bool& dts, UserInterface& ui) {
  if (const Obstacle fault = MissingMenu(entry, count)) {
    ui.Tell(*fault);
    return false;
  }
  if (std::ranges::any_of(StreamsOf(LiveCells(entry, Domain::Menu), tracks), IsDts)) {
    ui.Tell(MessageOf(message::DtsInMenus, entry.Key));
    return false;
  }
  if (const Obstacle fault = EmptyTitle(entry)) {
    ui.Tell(*fault);
    return false;
  }
  const auto streams = StreamsOf(LiveCells(entry, Domain::Title), tracks);
  dts = dts || std::ranges::any_of(streams, IsDts);
  return streams.empty() || std::ranges::any_of(streams, IsPlayedEverywhere) ||
         Passes(ui, MessageOf(message::AskOnlyDts, entry.Key, count));
}

}  // namespace

bool MayAuthor(EditSession& session, std::string_view destination, UserInterface& ui) {
  if (session.TakeNewCommandErrors() && !Passes(ui, MessageOf(message::AskCommandErrors, {}))) {
    return false;
  }
  const Project& project = session.Work();
  bool dts = false;
  std::size_t count = 0;
  for (const VTS_P* entry : Live(project.Disc)) {
    if (!EntryPasses(*entry, count++, project.Tracks, dts, ui)) {
      return false;
    }
  }
  if (dts && !Passes(ui, MessageOf(message::AskDtsLeftOut, {}))) {
    return false;
  }
  if (destination.empty() || destination.starts_with('\\')) {
    ui.Tell(MessageOf(message::DestinationMissing, {}));
    return false;
  }
  return true;
}

}  // namespace quorvelant
