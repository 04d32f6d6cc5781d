#include "desk/edit_fields.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <span>
#include <string_view>
#include <type_traits>
#include <vector>

#include "base/message_error.h"
#include "base/text.h"
#include "desk/edit_button_fields.h"
#include "desk/messages.h"
#include "edit/change.h"
#include "edit/live_elements.h"
#include "edit/segments.h"
#include "edit/structure.h"
#include "model/cls_dvd.h"
#include "model/keys.h"
#include "model/walk.h"
#include "script/script_tracks.h"
#include "vm/disc_place.h"

namespace quorvelant {

namespace {

constexpr std::int64_t MostStill = 255;        // seconds; 255 is for ever
constexpr std::int64_t MostRepeats = 128;      // of random playback: 7 bits, less one
constexpr std::int64_t MostDelay = 3'600'000;  // milliseconds either way
constexpr std::string_view NoLink = "none";

// Where the element stands.
struct FieldPlace {
  const Project& Work;
  const std::string& Key;
};

template <class Element>
struct FieldRow {
  std::string_view Name;
  void (*Set)(const FieldPlace& at, Element& element, const JsonField& value);
};

// --- values ---

UopMask Uops(const JsonField& value) {
  UopMask mask;
  for (const JsonField& one : value.List(UserOperationCount)) {
    const std::size_t bit = CLsDVD::UOPSIndex(one.Text(), false);
    if (bit == CLsDVD::NoUserOperation) {
      one.Refuse("a list of user operations (docs/lists.md)");
    }
    mask.set(bit);
  }
  return mask;
}

// The streams that are not named keep what they have. A menu has one stream of each kind.
template <std::size_t Count>
std::array<std::int32_t, Count> StreamMap(const FieldPlace& at, const JsonField& value,
                                          std::array<std::int32_t, Count> map) {
  const auto list = value.List(InTitleDomain(at.Key) ? Count : 1);
  for (std::size_t i = 0; i < list.size(); ++i) {
    map.at(i) = static_cast<std::int32_t>(list[i].Number(0, Count - 1));
  }
  return map;
}

template <std::size_t Count>
std::array<bool, Count> StreamFlags(const FieldPlace& /*at*/, const JsonField& value,
                                    std::array<bool, Count> flags) {
  const auto list = value.List(Count);
  for (std::size_t i = 0; i < list.size(); ++i) {
    flags.at(i) = list[i].Flag();
  }
  return flags;
}

bool IsCustom(const JsonField& value) {
  constexpr std::array<std::string_view, 2> Policies{"maximum", "custom"};
  return value.OneOf(Policies) == 1;
}

std::string Language(const JsonField& value) {
  const auto row = CLsDVD::LanguageCalled(Trim(value.Text()));
  if (!row) {
    value.Refuse("a language, by its name or its code of two or three letters (docs/lists.md)");
  }
  return std::string(CLsDVD::LanguageArray()[*row]);
}

std::string AudioExtension(const JsonField& value) {
  return std::string(CLsDVD::AudioArray()[value.OneOf(CLsDVD::AudioArray())]);
}
std::string SubExtension(const JsonField& value) {
  return std::string(CLsDVD::SubArray()[value.OneOf(CLsDVD::SubArray())]);
}

template <std::int64_t Least, std::int64_t Most>
std::int32_t Within(const JsonField& value) {
  return static_cast<std::int32_t>(value.Number(Least, Most));
}
bool Flag(const JsonField& value) {
  return value.Flag();
}
std::int32_t FlagNumber(const JsonField& value) {
  return value.Flag() ? 1 : 0;
}
std::string Text(const JsonField& value) {
  return value.Text();
}

PlayBack Playback(const JsonField& value) {
  constexpr std::array<std::string_view, 3> Modes{"sequential", "random", "shuffle"};
  return static_cast<PlayBack>(value.OneOf(Modes));
}

std::string MenuType(const FieldPlace& at, const JsonField& value) {
  constexpr std::array<std::string_view, 2> OfManager{"None", "TitleMenu"};
  constexpr std::array<std::string_view, 6> OfSets{"None", "Root", "SubPicture", "Audio", "Angle", "PTT"};
  return std::string(TitleSetEntry(at.Key) == 1 ? OfManager.at(value.OneOf(OfManager))
                                                : OfSets.at(value.OneOf(OfSets)));
}

// The name of a PGC to which players can link from the one of the key: a title's links stay among the titles
// of its set, a menu's among the menus.
std::string Link(const FieldPlace& at, const JsonField& value) {
  const std::string text = value.IsNull() ? std::string(NoLink) : value.Text();
  if (EqualNoCase(Trim(text), NoLink)) {
    return std::string(NoLink);
  }
  const auto own = PlaceOfKey(at.Key);
  const VTS_P* entry = FindEntry(at.Work.Disc, at.Key);
  const PGC_P* found = nullptr;
  VisitLivePgcs(*entry, own->Entry, [&](const DiscPlace& place, const PGC_P& chain) {
    const bool isNamed = chain.Key == text || NameKey(chain.PGCName) == NameKey(text);
    if (found == nullptr && place.InTitles == own->InTitles && isNamed) {
      found = &chain;
    }
  });
  if (found == nullptr) {
    value.Refuse(fmt::format("\"none\", or the name or key of a PGC among the {} here",
                             own->InTitles ? "titles" : "menus"));
  }
  return found->PGCName;
}

std::string PaletteName(const FieldPlace& at, const JsonField& value) {
  std::string name = value.Text();
  std::vector<std::string_view> names;
  for (const Palette_P* palette : Live(at.Work.Palettes)) {
    if (palette->Name() == name) {
      return name;
    }
    names.push_back(palette->Name());
  }
  value.Refuse(fmt::format("a palette of the project (\"{}\")", fmt::join(names, "\", \"")));
}

std::int32_t CellCommand(const FieldPlace& at, const JsonField& value) {
  const std::size_t most = FindPgc(at.Work.Disc, at.Key)->CellCommands.size();
  return static_cast<std::int32_t>(value.Number(0, static_cast<std::int64_t>(most)));
}

// --- the fields of each element ---

template <class>
struct MemberOf;
template <class Value, class Owner>
struct MemberOf<Value Owner::*> {
  using Element = Owner;
};

// Stores what `Read` makes of the value; it takes the value, the place before it where that matters, and what
// the member holds where some of it stays.
template <auto Member, auto Read>
void Put(const FieldPlace& at, typename MemberOf<decltype(Member)>::Element& element,
         const JsonField& value) {
  if constexpr (std::is_invocable_v<decltype(Read), const JsonField&>) {
    element.*Member = Read(value);
  } else if constexpr (std::is_invocable_v<decltype(Read), const FieldPlace&, const JsonField&>) {
    element.*Member = Read(at, value);
  } else {
    element.*Member = Read(at, value, element.*Member);
  }
}

constexpr std::array PgcRows{
    FieldRow<PGC_P>{"palette", Put<&PGC_P::PaletteName, PaletteName>},
    FieldRow<PGC_P>{"next", Put<&PGC_P::NextPGC, Link>},
    FieldRow<PGC_P>{"goUp", Put<&PGC_P::GoUpPGC, Link>},
    FieldRow<PGC_P>{"still", Put<&PGC_P::StillTime, Within<0, MostStill>>},
    FieldRow<PGC_P>{"playback", Put<&PGC_P::PlayBackMode, Playback>},
    FieldRow<PGC_P>{"repeat", Put<&PGC_P::Repeat, Within<0, MostRepeats>>},
    FieldRow<PGC_P>{"userOperations", Put<&PGC_P::Uops, Uops>},
    FieldRow<PGC_P>{"audioMap", Put<&PGC_P::AudioAssignments, StreamMap<AudioStreamCount>>},
    FieldRow<PGC_P>{"normalMap", Put<&PGC_P::NormalAssignments, StreamMap<SubStreamCount>>},
    FieldRow<PGC_P>{"wideMap", Put<&PGC_P::WideAssignments, StreamMap<SubStreamCount>>},
    FieldRow<PGC_P>{"letterboxMap", Put<&PGC_P::LetterAssignments, StreamMap<SubStreamCount>>},
    FieldRow<PGC_P>{"panMap", Put<&PGC_P::PanAssignments, StreamMap<SubStreamCount>>}};
constexpr std::array FirstPlayRows{FieldRow<PGC_P>{"userOperations", Put<&PGC_P::Uops, Uops>}};
constexpr std::array OfTitlesRows{FieldRow<PGC_P>{"previous", Put<&PGC_P::PrevPGC, Link>}};
constexpr std::array OfMenusRows{FieldRow<PGC_P>{"menuType", Put<&PGC_P::MenuType, MenuType>}};

constexpr std::array TitleRows{
    FieldRow<Title_P>{"audioPolicy", Put<&Title_P::Custom, IsCustom>},
    FieldRow<Title_P>{"audioStreams", Put<&Title_P::AudioAssignments, StreamFlags<AudioStreamCount>>},
    FieldRow<Title_P>{"subtitlePolicy", Put<&Title_P::SubCustom, IsCustom>},
    FieldRow<Title_P>{"subtitleStreams", Put<&Title_P::SubAssignments, StreamFlags<SubStreamCount>>},
    FieldRow<Title_P>{"noChapterPlay", Put<&Title_P::UOPPTTPlay, Flag>},
    FieldRow<Title_P>{"noTimePlay", Put<&Title_P::UOPTimePlay, Flag>}};

constexpr std::array CellRows{FieldRow<Cell_P>{"still", Put<&Cell_P::StillTime, Within<0, MostStill>>},
                              FieldRow<Cell_P>{"command", Put<&Cell_P::CellCommand, CellCommand>},
                              FieldRow<Cell_P>{"restricted", Put<&Cell_P::RestrictedAccess, Flag>},
                              FieldRow<Cell_P>{"seamless", Put<&Cell_P::Seamless, Flag>},
                              FieldRow<Cell_P>{"userOperations", Put<&Cell_P::Uops, Uops>}};

constexpr std::array EntryRows{FieldRow<VTS_P>{"menuLetterboxed", Put<&VTS_P::MenuLetterBoxed, Flag>},
                               FieldRow<VTS_P>{"titleLetterboxed", Put<&VTS_P::TitleLetterBoxed, Flag>},
                               FieldRow<VTS_P>{"filmMode", Put<&VTS_P::TitleCameraMode, Flag>}};

constexpr std::array AudioRows{
    FieldRow<AudioStream>{"language", Put<&AudioStream::Language, Language>},
    FieldRow<AudioStream>{"extension", Put<&AudioStream::Extension, AudioExtension>},
    FieldRow<AudioStream>{"number", Put<&AudioStream::StreamNumber, Within<0, AudioStreamCount - 1>>},
    FieldRow<AudioStream>{"delay", Put<&AudioStream::Delay, Within<-MostDelay, MostDelay>>},
    FieldRow<AudioStream>{"emphasis", Put<&AudioStream::Emphasis, FlagNumber>},
    FieldRow<AudioStream>{"mute", Put<&AudioStream::Mute, FlagNumber>}};

constexpr std::array SubtitleRows{
    FieldRow<SubtitleStream>{"language", Put<&SubtitleStream::Language, Language>},
    FieldRow<SubtitleStream>{"extension", Put<&SubtitleStream::Extension, SubExtension>},
    FieldRow<SubtitleStream>{"number", Put<&SubtitleStream::StreamNumber, Within<0, SubStreamCount - 1>>},
    FieldRow<SubtitleStream>{"displayMode", Put<&SubtitleStream::DisplayMode, Text>},
    FieldRow<SubtitleStream>{"dropFrame", Put<&SubtitleStream::DropFrame, FlagNumber>}};

// --- setting them ---

template <class Element>
const FieldRow<Element>* RowIn(std::span<const FieldRow<Element>> rows, std::string_view name) {
  const auto row = std::ranges::find(rows, name, &FieldRow<Element>::Name);
  return row == rows.end() ? nullptr : &*row;
}

[[noreturn]] void RefuseField(const std::string& key, const std::string& name,
                              const std::vector<std::string_view>& names) {
  throw MessageError(MessageOf(message::EditFieldUnknown, key, key, name, fmt::join(names, ", ")));
}

// Sets each field by the row of its name in one of the tables.
template <class Element>
void SetEach(const FieldPlace& at, Element& element, const JsonField& fields,
             std::initializer_list<std::span<const FieldRow<Element>>> tables) {
  for (const JsonField& field : fields.Fields()) {
    const FieldRow<Element>* row = nullptr;
    std::vector<std::string_view> names;
    for (const auto table : tables) {
      row = row == nullptr ? RowIn(table, field.Name()) : row;
      std::ranges::transform(table, std::back_inserter(names), &FieldRow<Element>::Name);
    }
    if (row == nullptr) {
      RefuseField(at.Key, field.Name(), names);
    }
    row->Set(at, element, field);
  }
}

Outcome SetPgcFields(EditSession& session, const std::string& key, const JsonField& fields) {
  const FieldPlace at{session.Work(), key};
  return SetPgc(session, key, [&](PGC_P& chain) {
    if (key == FirstPgcKey) {
      SetEach<PGC_P>(at, chain, fields, {FirstPlayRows});
    } else if (InTitleDomain(key)) {
      SetEach<PGC_P>(at, chain, fields, {PgcRows, OfTitlesRows});
    } else {
      SetEach<PGC_P>(at, chain, fields, {PgcRows, OfMenusRows});
    }
    return Outcome::Done();
  });
}

// Of elements whose setter answers.
template <class Element, class Set, class Rows>
Outcome SetElement(EditSession& session, const std::string& key, const JsonField& fields, const Rows& rows,
                   Set set) {
  const FieldPlace at{session.Work(), key};
  return set(session, key, FieldSetter<Element>([&](Element& element) {
               SetEach<Element>(at, element, fields, {rows});
               return Outcome::Done();
             }));
}

Outcome SetTrackFields(EditSession& session, const std::string& key, std::size_t index,
                       const JsonField& fields) {
  if (index >= session.Work().Tracks.Count()) {
    return SetEnds(session, key, false, false);  // which refuses the key
  }
  Change change(session, "Change Track");
  for (const JsonField& field : fields.Fields()) {
    const Track& track = session.Work().Tracks[index];
    Outcome outcome;
    if (field.Name() == "displayMode") {
      outcome = SetDisplayMode(session, key, field.Text());
    } else if (field.Name() == "extendSlide") {
      outcome = SetEnds(session, key, field.Flag(), track.ExtendFinalSubtitle);
    } else if (field.Name() == "extendSubtitle") {
      outcome = SetEnds(session, key, track.ExtendSlideForAudio, field.Flag());
    } else {
      RefuseField(key, field.Name(), {"displayMode", "extendSlide", "extendSubtitle"});
    }
    if (!outcome.IsDone()) {
      return outcome;
    }
  }
  return change.Commit(key);
}

// The one field of an element that has no more.
JsonField OnlyField(const std::string& key, const JsonField& fields, std::string_view name) {
  const auto list = fields.Fields();
  const auto other = std::ranges::find_if(list, [name](const JsonField& one) { return one.Name() != name; });
  if (other != list.end()) {
    RefuseField(key, other->Name(), {name});
  }
  return list.front();
}

Outcome SetSourceFields(EditSession& session, const std::string& key, const SourceKey& source,
                        const JsonField& fields) {
  const FieldPlace at{session.Work(), key};
  switch (source.Kind) {
    case SourceKey::Node::Track:
      return SetTrackFields(session, key, source.Track, fields);
    case SourceKey::Node::AudioStream:
      return SetAudio(session, key,
                      [&](AudioStream& stream) { SetEach<AudioStream>(at, stream, fields, {AudioRows}); });
    case SourceKey::Node::SubStream:
      return SetSubtitles(session, key, [&](SubtitleStream& stream) {
        SetEach<SubtitleStream>(at, stream, fields, {SubtitleRows});
      });
    case SourceKey::Node::VideoPlay: {
      const JsonField duration = OnlyField(key, fields, "duration");
      if (!duration.IsNull() && source.Track < session.Work().Tracks.Count()) {
        const Track& track = session.Work().Tracks[source.Track];
        static_cast<void>(FrameOf(duration, TrackFramesPerSecond(session.Work(), track)));  // a time
      }
      return SetSlide(session, key, duration.IsNull() ? std::string() : duration.Text());
    }
    case SourceKey::Node::Scene:
      return SetSceneUops(session, key, Uops(OnlyField(key, fields, "userOperations")));
    default:
      return Outcome::Refused(MessageOf(message::EditNoFields, key, key));
  }
}

}  // namespace

Outcome SetFields(EditSession& session, const std::string& key, const JsonField& fields) {
  if (const auto source = ParseSourceKey(key)) {
    return SetSourceFields(session, key, *source, fields);
  }
  const Project& project = session.Work();
  if (LiveCell(project, key) != nullptr) {
    return SetElement<Cell_P>(session, key, fields, CellRows, SetCell);
  }
  if (LiveProgram(project, key) != nullptr || LiveLanguage(project, key) != nullptr) {
    return Outcome::Refused(MessageOf(message::EditNoFields, key, key));
  }
  if (LiveTitle(project, key) != nullptr) {
    return SetElement<Title_P>(session, key, fields, TitleRows, SetTitle);
  }
  if (LiveEntry(project, key) != nullptr) {
    return SetElement<VTS_P>(session, key, fields, EntryRows, SetEntry);
  }
  return SetPgcFields(session, key, fields);  // which refuses what is none
}

}  // namespace quorvelant
