#include "desk/edit_fields.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "desk/field_rows.h"
#include "desk/field_values.h"
#include "desk/messages.h"
#include "desk/source_fields.h"
#include "edit/live_elements.h"
#include "edit/structure.h"
#include "model/keys.h"

namespace quorvelant {

namespace {

constexpr std::int64_t MostStill = 255;    // seconds; 255 is for ever
constexpr std::int64_t MostRepeats = 128;  // of random playback: 7 bits, less one

constexpr std::string_view StillLabel = "Still (seconds, 255 for ever)";
constexpr std::string_view UopsLabel = "Prohibited user operations";

constexpr std::array PgcRows{
    FieldRowOf<&PGC_P::PaletteName, PaletteNameValue>("palette", "Palette"),
    FieldRowOf<&PGC_P::NextPGC, LinkValue>("next", "Next"),
    FieldRowOf<&PGC_P::GoUpPGC, LinkValue>("goUp", "Go up"),
    FieldRowOf<&PGC_P::StillTime, NumberWithin<0, MostStill>>("still", StillLabel),
    FieldRowOf<&PGC_P::PlayBackMode, PlaybackValue>("playback", "Playback"),
    FieldRowOf<&PGC_P::Repeat, NumberWithin<0, MostRepeats>>("repeat", "Repeats"),
    FieldRowOf<&PGC_P::Uops, UopsValue>("userOperations", UopsLabel),
    FieldRowOf<&PGC_P::AudioAssignments, StreamMapValue>("audioMap", "Audio map"),
    FieldRowOf<&PGC_P::NormalAssignments, StreamMapValue>("normalMap", "Subtitle map, 4:3"),
    FieldRowOf<&PGC_P::WideAssignments, StreamMapValue>("wideMap", "Subtitle map, wide"),
    FieldRowOf<&PGC_P::LetterAssignments, StreamMapValue>("letterboxMap", "Subtitle map, letterbox"),
    FieldRowOf<&PGC_P::PanAssignments, StreamMapValue>("panMap", "Subtitle map, pan-scan")};
constexpr std::array FirstPlayRows{FieldRowOf<&PGC_P::Uops, UopsValue>("userOperations", UopsLabel)};
constexpr std::array OfTitlesRows{FieldRowOf<&PGC_P::PrevPGC, LinkValue>("previous", "Previous")};
constexpr std::array OfMenusRows{FieldRowOf<&PGC_P::MenuType, MenuTypeValue>("menuType", "Menu type")};

constexpr std::array TitleRows{
    FieldRowOf<&Title_P::Custom, PolicyValue>("audioPolicy", "Audio policy"),
    FieldRowOf<&Title_P::AudioAssignments, StreamFlagsValue>("audioStreams", "Audio streams (custom)"),
    FieldRowOf<&Title_P::SubCustom, PolicyValue>("subtitlePolicy", "Subtitle policy"),
    FieldRowOf<&Title_P::SubAssignments, StreamFlagsValue>("subtitleStreams", "Subtitle streams (custom)"),
    FieldRowOf<&Title_P::UOPPTTPlay, FlagValue>("noChapterPlay", "Chapter search prohibited"),
    FieldRowOf<&Title_P::UOPTimePlay, FlagValue>("noTimePlay", "Time search prohibited")};

constexpr std::array CellRows{
    FieldRowOf<&Cell_P::StillTime, NumberWithin<0, MostStill>>("still", StillLabel),
    FieldRowOf<&Cell_P::CellCommand, CellCommandValue>("command", "Cell command (0 for none)"),
    FieldRowOf<&Cell_P::RestrictedAccess, FlagValue>("restricted", "Restricted access"),
    FieldRowOf<&Cell_P::Seamless, FlagValue>("seamless", "Seamless"),
    FieldRowOf<&Cell_P::Uops, UopsValue>("userOperations", UopsLabel)};

constexpr std::array EntryRows{
    FieldRowOf<&VTS_P::MenuLetterBoxed, FlagValue>("menuLetterboxed", "Menus are letterboxed"),
    FieldRowOf<&VTS_P::TitleLetterBoxed, FlagValue>("titleLetterboxed", "Titles are letterboxed"),
    FieldRowOf<&VTS_P::TitleCameraMode, FlagValue>("filmMode", "Film mode")};

// The tables of a PGC by its place.
std::array<std::span<const FieldRow<PGC_P>>, 2> PgcTables(const std::string& key) {
  if (key == FirstPgcKey) {
    return {FirstPlayRows, {}};
  }
  return {PgcRows, InTitleDomain(key) ? std::span<const FieldRow<PGC_P>>(OfTitlesRows) : OfMenusRows};
}

Outcome SetPgcFields(EditSession& session, const std::string& key, const JsonField& fields) {
  const FieldPlace at{session.Work(), key};
  return SetPgc(session, key, [&](PGC_P& chain) {
    const auto [rows, ofPlace] = PgcTables(key);
    SetEach<PGC_P>(at, chain, fields, {rows, ofPlace});
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

// The links stand together, a menu's type first of all.
std::vector<ElementField> PgcFieldsOf(const FieldPlace& at, const PGC_P& chain) {
  const auto [rows, ofPlace] = PgcTables(at.Key);
  auto fields = ShowEach<PGC_P>(at, chain, {rows, ofPlace});
  const auto next = std::ranges::find(fields, "next", &ElementField::Name);
  if (!ofPlace.empty() && next != fields.end()) {
    const auto place = InTitleDomain(at.Key) ? next + 1 : fields.begin();
    std::rotate(place, fields.end() - 1, fields.end());
  }
  return fields;
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

std::vector<ElementField> FieldsOf(const Project& project, const std::string& key) {
  if (const auto source = ParseSourceKey(key)) {
    return SourceFieldsOf(project, key, *source);
  }
  const FieldPlace at{project, key};
  if (const Cell_P* cell = LiveCell(project, key)) {
    return ShowEach<Cell_P>(at, *cell, {CellRows});
  }
  if (const PGC_P* chain = LivePgc(project, key)) {
    return PgcFieldsOf(at, *chain);
  }
  if (const Title_P* title = LiveTitle(project, key)) {
    return ShowEach<Title_P>(at, *title, {TitleRows});
  }
  const VTS_P* entry = LiveEntry(project, key);
  return entry == nullptr ? std::vector<ElementField>() : ShowEach<VTS_P>(at, *entry, {EntryRows});
}

}  // namespace quorvelant
