#include "ui/disc_facts.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "base/timecode.h"
#include "model/cls_dvd.h"
#include "model/keys.h"
#include "model/walk.h"
#include "script/script_tracks.h"
#include "ui/fact_words.h"
#include "ui/shown_text.h"

namespace quorvelant {

namespace {

// How long something plays; not known as soon as one of its parts is not.
struct PlayTime {
  std::int64_t Frames = 0;
  int Rate = 0;
  bool IsKnown = true;

  PlayTime& operator+=(const PlayTime& part) {
    Frames += part.Frames;
    Rate = Rate == 0 ? part.Rate : Rate;
    IsKnown = IsKnown && part.IsKnown;
    return *this;
  }
  [[nodiscard]] QString Words() const {
    return IsKnown && Rate > 0 ? Shown(FramesToTimecode(Frames, Rate)) : QString();
  }
};

QString StillWords(std::int32_t seconds) {
  if (seconds == 0) {
    return {};
  }
  return seconds == 255 ? QStringLiteral("still for ever") : QStringLiteral("still %1 s").arg(seconds);
}

QString Named(const char* word, const std::string& name, std::string_view without = {}) {
  return name.empty() || name == without ? QString()
                                         : QStringLiteral("%1 %2").arg(QString::fromUtf8(word), Shown(name));
}

QString If(bool holds, const char* words) {
  return holds ? QString::fromUtf8(words) : QString();
}

std::size_t CountOf(const CommandList& list) {
  return static_cast<std::size_t>(
      std::ranges::count_if(list, [](const VMICommand_P& command) { return !command.Deleted; }));
}

QString CommandWords(const PGC_P& chain) {
  const auto words = [](const CommandList& list, const char* kind) {
    const std::size_t count = CountOf(list);
    return count == 0 ? QString() : QStringLiteral("%1 %2").arg(count).arg(QString::fromUtf8(kind));
  };
  return JoinWords({words(chain.PreCommands, "pre"), words(chain.PostCommands, "post"),
                    words(chain.CellCommands, "cell commands")});
}

RowFacts Row(const char* kind, const std::string& name, const std::string& shown, QStringList columns) {
  return {.Kind = QString::fromUtf8(kind),
          .Name = Shown(name),
          .Shown = Shown(shown),
          .Former = {},
          .Columns = std::move(columns)};
}

RowFacts Renamable(RowFacts facts, const std::string& name) {
  facts.Former = Shown(name);
  return facts;
}

class EntryFacts {
 public:
  EntryFacts(const Project& project, const DiscFactTaker& take) : project_(project), take_(take) {}

  void Tell(const VTS_P& entry) const {
    const auto languages = Live(entry.Lang);
    const auto titles = Live(entry.Title);
    take_(entry.Key, Row("entry", entry.VTSName, entry.VTSName,
                         {{},
                          JoinWords({CountWords(titles.size(), "title", "titles"),
                                     CountWords(languages.size(), "language", "languages")}),
                          JoinWords({Shown(entry.Standard()), Named("menus", entry.VTSMenuInfo.Aspect),
                                     Named("titles", entry.VTSTitleInfo.Aspect),
                                     If(entry.MenuLetterBoxed, "menus letterboxed"),
                                     If(entry.TitleLetterBoxed, "titles letterboxed"),
                                     If(entry.TitleCameraMode, "film mode")})}));
    for (const Lang_P* language : languages) {
      TellLanguage(*language);
    }
    for (const Title_P* title : titles) {
      TellTitle(*title);
    }
  }

 private:
  void TellLanguage(const Lang_P& language) const {
    const auto chains = Live(language.PGC);
    take_(language.Key,
          Row("language", language.Language, std::string(CLsDVD::LangCodeToLangName(language.Language)),
              {{}, CountWords(chains.size(), "menu", "menus"), {}}));
    for (const PGC_P* chain : chains) {
      TellChain(*chain);
    }
  }

  void TellTitle(const Title_P& title) const {
    PlayTime whole;
    std::size_t chapters = 0;
    const auto chains = Live(title.PGC);
    for (const PGC_P* chain : chains) {
      whole += TellChain(*chain);
      chapters += Live(chain->PG).size();
    }
    take_(title.Key,
          Renamable(
              Row("title", title.TitleName, title.TitleName,
                  {whole.Words(),
                   JoinWords({chains.size() == 1 ? QString() : CountWords(chains.size(), "PGC", "PGCs"),
                              CountWords(chapters, "chapter", "chapters")}),
                   JoinWords(
                       {If(title.Custom, "own audio policy"), If(title.SubCustom, "own subtitle policy"),
                        If(title.UOPTimePlay, "no time play"), If(title.UOPPTTPlay, "no chapter play")})}),
              title.TitleName));
  }

  PlayTime TellChain(const PGC_P& chain) const {
    PlayTime whole;
    const auto programs = LiveWithIndex(chain.PG);
    for (const auto& [place, program] : programs) {
      whole += TellProgram(program, ProgramKey(chain.Key, static_cast<int>(place + 1)));
    }
    const QString menu =
        chain.MenuType.empty() || chain.MenuType == "None" ? QString() : Named("menu", chain.MenuType);
    take_(chain.Key,
          Renamable(
              Row("pgc", chain.PGCName, chain.PGCName,
                  {whole.Words(), CountWords(programs.size(), "program", "programs"),
                   JoinWords({menu, Named("palette", chain.PaletteName, "Default"),
                              Named("next", chain.NextPGC, "none"), Named("previous", chain.PrevPGC, "none"),
                              Named("up", chain.GoUpPGC, "none"), StillWords(chain.StillTime),
                              If(chain.PlayBackMode == PlayBack::Random, "random"),
                              If(chain.PlayBackMode == PlayBack::Shuffle, "shuffle"), CommandWords(chain)})}),
              chain.PGCName));
    return whole;
  }

  PlayTime TellProgram(const PG_P& program, const std::string& key) const {
    PlayTime whole;
    const auto cells = LiveWithIndex(program.Cell);
    for (const auto& [place, cell] : cells) {
      whole += TellCell(cell, CellKey(key, static_cast<int>(place + 1)), place + 1);
    }
    take_(key, Renamable(Row("program", program.PGName, program.PGName,
                             {whole.Words(), CountWords(cells.size(), "cell", "cells"), {}}),
                         program.PGName));
    return whole;
  }

  PlayTime TellCell(const Cell_P& cell, const std::string& key, std::size_t number) const {
    const Track* track = cell.SegmentUsed >= 0 && std::cmp_less(cell.SegmentUsed, project_.Tracks.Count())
                             ? &project_.Tracks[static_cast<std::size_t>(cell.SegmentUsed)]
                             : nullptr;
    const PlayTime time = track == nullptr ? PlayTime{.IsKnown = false} : TimeOf(cell, *track);
    std::size_t buttons = 0;
    for (const ButtonCommands_P& set : cell.ButtonCommands) {
      buttons += CountOf(set.Commands);
    }
    const std::string told = fmt::format("Cell{} -> {}; Scene_{}", number, cell.TrackName, cell.pScene + 1);
    const QString command =
        cell.CellCommand > 0 ? QStringLiteral("command %1").arg(cell.CellCommand) : QString();
    take_(key, Renamable(
                   Row("cell", told, told,
                       {time.Words(), Shown(cell.SceneUsed),
                        JoinWords({StillWords(cell.StillTime), command,
                                   CountWords(buttons, "button command", "button commands"),
                                   If(cell.Seamless, "seamless"), If(cell.RestrictedAccess, "restricted")})}),
                   cell.CellName));
    TellButtons(track, key);
    return time;
  }

  [[nodiscard]] PlayTime TimeOf(const Cell_P& cell, const Track& track) const {
    const auto length = SceneLength(track, static_cast<std::size_t>(std::max(cell.pScene, 0)));
    const int rate = TrackFramesPerSecond(project_, track);
    return {.Frames = length.value_or(0), .Rate = rate, .IsKnown = length.has_value()};
  }

  void TellButtons(const Track* track, const std::string& cell) const {
    if (track == nullptr || !track->HasHighlights) {
      return;
    }
    for (std::size_t i = 0; i < track->HighlightPlays.size(); ++i) {
      take_(HighlightKey(cell, static_cast<int>(i + 1)),
            Row("highlight", std::string(HighStreamText), std::string(HighStreamText),
                {{}, CountWords(track->HighlightPlays[i].Buttons.size(), "button", "buttons"), {}}));
    }
  }

  const Project& project_;
  const DiscFactTaker& take_;
};

}  // namespace

void TellFirstPlayFacts(const Project& project, const DiscFactTaker& take) {
  const PGC_P& chain = project.FirstPlay;
  take(std::string(FirstPgcKey),
       Row("pgc", std::string(FirstPgcName), std::string(FirstPgcName),
           {{}, CountWords(CountOf(chain.PreCommands), "command", "commands"), {}}));
}

void TellEntryFacts(const Project& project, const VTS_P& entry, const DiscFactTaker& take) {
  EntryFacts(project, take).Tell(entry);
}

}  // namespace quorvelant
