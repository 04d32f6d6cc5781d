#include "project_generator.h"

#include <fmt/format.h>

#include <random>
#include <span>

#include "base/timecode.h"
#include "model/cls_dvd.h"
#include "model/default_structure.h"
#include "model/keys.h"
#include "script/disc_keys.h"
#include "script/source_keys.h"

namespace quorvelant {

namespace {

class Generator {
 public:
  explicit Generator(std::uint32_t seed) : random_(seed) {}
  Project Make();

 private:
  std::int32_t Below(std::size_t limit) { return static_cast<std::int32_t>(random_() % limit); }
  bool Coin() { return Below(2) == 1; }
  template <class List>
  std::string OneOf(const List& list) {
    return std::string(*(std::begin(list) + Below(std::size(list))));
  }
  std::string OneOf(std::initializer_list<std::string_view> list) { return OneOf(std::span(list)); }

  // A text as a key's value must look, or any.
  std::string Text(Takes takes, std::string_view word) {
    switch (takes) {
      case Takes::Timecode:
        return FramesToTimecode(Below(200000), rate_);
      case Takes::Standard:
        return rate_ == 30 ? "NTSC" : "PAL";
      case Takes::Language:
        return OneOf(CLsDVD::LanguageArray());
      case Takes::LanguageCode:
        return std::string(CLsDVD::SpareLanguage(1 + static_cast<std::size_t>(Below(100))));
      case Takes::AudioExtension:
        return OneOf(CLsDVD::AudioArray());
      case Takes::SubExtension:
        return OneOf(CLsDVD::SubArray());
      case Takes::DisplayMode:
        return OneOf({"Wide/Letter", "LetterBox", "Only PanScan", "Both PanScan and LetterBox"});
      case Takes::MenuType:
        return OneOf({"Root", "Audio", "None"});
      case Takes::ButtonMode:
        return OneOf({"wide", "letter", "pan"});
      default:
        return fmt::format("{}{}{}", word, Below(1000),
                           OneOf({"", " = a, b", "#1 \xC3\xA9", "  (two)", "\xE9;{}"}));
    }
  }

  template <class Item>
  struct Drawer {
    Generator& From;
    Item& Target;
    const Key<Item>& Row;
    std::size_t Count;

    void Draw(std::string& text) const { text = From.Text(Row.Value, Row.Name.substr(0, 3)); }
    void Draw(bool& on) const { on = From.Coin(); }
    void Draw(std::int32_t& number) const {
      number = Row.OnOff != nullptr || Row.Value == Takes::YesOrNumber ? From.Below(2) : From.Below(300) - 40;
    }
    void Draw(Color& color) const { color = From.random_() & 0xFFFFFFU; }
    void Draw(PlayBack& mode) const { mode = static_cast<PlayBack>(From.Below(3)); }
    void Draw(HighlightArea& area) const {
      area = {.X1 = From.Below(99), .X2 = From.Below(720), .Y1 = From.Below(99), .Y2 = From.Below(576)};
    }
    template <class Value, std::size_t Entries>
    void Draw(std::array<Value, Entries>& list) const {
      for (std::size_t i = 0; i < std::min(Entries, Count); ++i) {
        Draw(list[i]);
      }
    }
    template <class Value>
    void operator()(Value Item::*field) const {
      Draw(Target.*field);
    }
    void operator()(const Numbers<Item>& fields) const {
      for (std::size_t i = 0; i < fields.Count; ++i) {
        Draw(Target.*fields.Fields[i]);
      }
    }
  };
  // Every field of the table that is written where `holds` is so; of arrays the first `count` entries.
  template <class Table, class Item>
  Item& Fill(const Table& table, Item& item, Written holds = Written::Always, std::size_t count = 32) {
    for (const Key<Item>& row : table) {
      if (Has(holds | Written::IfOn, row.When)) {
        std::visit(Drawer<Item>{*this, item, row, count}, row.Field);
      }
    }
    return item;
  }
  // Up to `limit` elements more.
  template <class List, class Make>
  void Repeat(List& list, std::size_t limit, Make make) {
    for (std::int32_t i = Below(limit + 1); i > 0; --i) {
      make(list.emplace_back());
    }
  }

  UopMask Uops() { return UopMask(random_() & random_()); }
  void FillTrack(Track& track, std::size_t index);
  void AddCommands(CommandList& list, std::string_view word);
  void FillPgc(PGC_P& pgc, Written form);
  void AddEntry(int number);

  std::mt19937 random_;
  int rate_ = 25;
  Project project_;
};

void Generator::FillTrack(Track& track, std::size_t index) {
  track.Filled = track.HasAudio = track.HasSubs = track.HasHighlights = true;
  track.TrackType = OneOf({"Motion", "Still", "SlideShow"});
  Fill(PlayListKeys, Fill(TrackKeys, track));
  Fill(VideoPlayKeys, track.VideoPlays.emplace_back(),
       track.TrackType == "SlideShow" ? Written::OfSlides : Written::Always);
  Repeat(track.AudioStreams, 3, [&](AudioStream& stream) {
    stream.Format = OneOf({"AC3", "PCM"});
    Fill(AudioKeys, stream, stream.Format == "PCM" ? Written::OfPcm : Written::Always);
    Fill(AudioPlayKeys, stream.AudioPlays.emplace_back()).File += stream.Format == "PCM" ? ".WAV" : ".ac3";
  });
  Repeat(track.SubStreams, 3, [&](SubtitleStream& stream) {
    Fill(SubtitleKeys, stream);
    Repeat(stream.SubPlays, 3, [&](SubPicturePlay& play) { Fill(SubPlayKeys, play); });
  });
  Repeat(track.HighlightPlays, 2, [&](HighlightPlay& play) {
    for (ColorScheme& scheme : Fill(HighlightKeys, play).Schemes) {
      Fill(SchemeKeys, scheme);
    }
    Repeat(play.Buttons, 5, [&](HighlightButton& button) { Fill(ButtonKeys, button); });
  });
  track.Scenes.emplace_back();
  Repeat(track.Scenes, 4, [](Scene& /*scene*/) {});
  for (std::size_t i = 0; i < track.Scenes.size(); ++i) {
    track.Scenes[i] = {fmt::format("Track_{}_Scene{}", index, i), static_cast<std::int32_t>(i) * 1000,
                       Uops()};
  }
}

void Generator::AddCommands(CommandList& list, std::string_view word) {
  for (std::int32_t i = Below(4); i > 0; --i) {
    AddCommand(list, word,
               OneOf({"NOP", "JumpSS TitleMenu", "mov GPRM0, 5", "If ( GPRM1 <= 3 ) LinkTopPGC, button=0",
                      "SetSTN audio=1, subpicture=1:ON", "{ SetSTN audio=1 ; LinkTopC, button=1 }"}));
  }
}

void Generator::FillPgc(PGC_P& pgc, Written form) {
  const std::size_t entries = form == Written::OfTitles ? SubStreamCount : 1;
  Fill(SubMapKeys, Fill(AudioMapKeys, Fill(PgcKeys, pgc, form), form, entries), form, entries);
  pgc.PaletteName = project_.Palettes.Count() > 0 && Coin() ? project_.Palettes.Item(1)->Name() : "Default";
  pgc.Uops = Uops();
  AddCommands(pgc.PreCommands, "Pre");
  AddCommands(pgc.PostCommands, "Post");
  AddCommands(pgc.CellCommands, "Cell");
  for (std::int32_t i = Below(4); i > 0; --i) {
    PG_P& program = pgc.PG.Add({});
    Fill(ProgramKeys, program);
    for (std::int32_t cells = Below(3); cells > 0; --cells) {
      Cell_P& cell = program.Cell.Add({});
      Fill(CellKeys, cell).Uops = Uops();
      if (project_.Tracks.Count() > 0 && Coin()) {
        cell.SceneUsed = project_.Tracks[0].Scenes[0].Name;
      }
      Repeat(cell.ButtonCommands, 2, [&](ButtonCommands_P& entry) { AddCommands(entry.Commands, "Button"); });
    }
  }
}

void Generator::AddEntry(int number) {
  VTS_P& entry = project_.Disc.Add({});
  Fill(EntryKeys, entry);
  for (std::int32_t i = Below(3); i > 0; --i) {
    Lang_P& language = entry.Lang.Add({});
    FillPgc(Fill(LanguageKeys, language).PGC.Add({}), Written::OfMenus);
  }
  for (std::int32_t i = number == 1 ? 0 : 1 + Below(2); i > 0; --i) {
    Title_P& title = entry.Title.Add({});
    Fill(SubPolicyKeys, Fill(AudioPolicyKeys, Fill(TitleKeys, title)));
    title.UOPPTTPlay = Coin();
    title.UOPTimePlay = Coin();
    FillPgc(title.PGC.Add({}), Written::OfTitles);
  }
}

Project Generator::Make() {
  rate_ = Coin() ? 30 : 25;
  project_.DestinationFolder = Coin() ? "C:\\out\\VIDEO_TS" : "";
  for (std::int32_t i = Below(4); i > 0; --i) {
    FillTrack(project_.Tracks.Add({}), static_cast<std::size_t>(i));
  }
  for (std::int32_t i = Below(3); i > 0; --i) {
    Fill(PaletteKeys, project_.Palettes.Add({}));
  }
  project_.FirstPlay.Uops = Uops();
  AddCommands(project_.FirstPlay.PreCommands, FirstPgcKey);
  const int entries = 2 + Below(3);
  for (int i = 1; i <= entries; ++i) {
    AddEntry(i);
  }
  return std::move(project_);
}

}  // namespace

Project GeneratedProject(std::uint32_t seed) {
  return Generator(seed).Make();
}

}  // namespace quorvelant
