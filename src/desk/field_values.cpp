#include "desk/field_values.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <span>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "edit/new_track.h"
#include "model/cls_dvd.h"
#include "model/keys.h"
#include "model/walk.h"
#include "vm/disc_place.h"

namespace quorvelant {

namespace {

constexpr std::string_view NoLink = "none";
constexpr std::array<std::string_view, 2> Policies{"maximum", "custom"};
constexpr std::array<std::string_view, 3> PlaybackModes{"sequential", "random", "shuffle"};
constexpr std::array<std::string_view, 2> MenusOfManager{"None", "TitleMenu"};
constexpr std::array<std::string_view, 6> MenusOfSets{"None", "Root", "SubPicture", "Audio", "Angle", "PTT"};

std::span<const std::string_view> MenuTypesAt(const FieldPlace& at) {
  return TitleSetEntry(at.Key) == 1 ? std::span<const std::string_view>(MenusOfManager) : MenusOfSets;
}

// The PGCs of the titles or menus among which the one of the key stands.
std::vector<const PGC_P*> LinkTargets(const FieldPlace& at) {
  const auto own = PlaceOfKey(at.Key);
  const VTS_P* entry = FindEntry(at.Work.Disc, at.Key);
  std::vector<const PGC_P*> targets;
  VisitLivePgcs(*entry, own->Entry, [&](const DiscPlace& place, const PGC_P& chain) {
    if (place.InTitles == own->InTitles) {
      targets.push_back(&chain);
    }
  });
  return targets;
}

std::vector<std::string_view> PaletteNames(const Project& project) {
  std::vector<std::string_view> names;
  for (const Palette_P* palette : Live(project.Palettes)) {
    names.push_back(palette->Name());
  }
  return names;
}

}  // namespace

std::size_t StreamMapValue::StreamsOf(const FieldPlace& at, std::size_t count) {
  return InTitleDomain(at.Key) ? count : 1;
}

bool PolicyValue::Read(const FieldPlace& /*at*/, const JsonField& value, bool /*held*/) {
  return value.OneOf(Policies) == 1;
}
void PolicyValue::Show(const FieldPlace& /*at*/, bool held, ElementField& field) {
  ShowChoice(std::string(Policies.at(held ? 1 : 0)), Policies, field);
}

UopMask UopsValue::Read(const FieldPlace& /*at*/, const JsonField& value, const UopMask& /*held*/) {
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
void UopsValue::Show(const FieldPlace& /*at*/, const UopMask& held, ElementField& field) {
  field.Kind = FieldKind::Names;
  field.Value = nlohmann::json::array();
  for (std::size_t bit = 0; bit < UserOperationCount; ++bit) {
    field.Choices.emplace_back(CLsDVD::UserOP(bit));
    if (held.test(bit)) {
      field.Value.push_back(field.Choices.back());
    }
  }
}

PlayBack PlaybackValue::Read(const FieldPlace& /*at*/, const JsonField& value, PlayBack /*held*/) {
  return static_cast<PlayBack>(value.OneOf(PlaybackModes));
}
void PlaybackValue::Show(const FieldPlace& /*at*/, PlayBack held, ElementField& field) {
  ShowChoice(std::string(PlaybackModes.at(static_cast<std::size_t>(held))), PlaybackModes, field);
}

std::int32_t CellCommandValue::Read(const FieldPlace& at, const JsonField& value, std::int32_t /*held*/) {
  const std::size_t most = FindPgc(at.Work.Disc, at.Key)->CellCommands.size();
  return static_cast<std::int32_t>(value.Number(0, static_cast<std::int64_t>(most)));
}
void CellCommandValue::Show(const FieldPlace& at, std::int32_t held, ElementField& field) {
  field.Kind = FieldKind::Number;
  field.Value = held;
  field.Most = static_cast<std::int64_t>(FindPgc(at.Work.Disc, at.Key)->CellCommands.size());
}

std::string LanguageValue::Read(const FieldPlace& /*at*/, const JsonField& value,
                                const std::string& /*held*/) {
  const auto row = CLsDVD::LanguageCalled(Trim(value.Text()));
  if (!row) {
    value.Refuse("a language, by its name or its code of two or three letters (docs/lists.md)");
  }
  return std::string(CLsDVD::LanguageArray()[*row]);
}
void LanguageValue::Show(const FieldPlace& /*at*/, const std::string& held, ElementField& field) {
  ShowChoice(held, CLsDVD::LanguageArray(), field);
}

std::string AudioExtensionValue::Read(const FieldPlace& /*at*/, const JsonField& value,
                                      const std::string& /*held*/) {
  return std::string(CLsDVD::AudioArray()[value.OneOf(CLsDVD::AudioArray())]);
}
void AudioExtensionValue::Show(const FieldPlace& /*at*/, const std::string& held, ElementField& field) {
  ShowChoice(held, CLsDVD::AudioArray(), field);
}

std::string SubExtensionValue::Read(const FieldPlace& /*at*/, const JsonField& value,
                                    const std::string& /*held*/) {
  return std::string(CLsDVD::SubArray()[value.OneOf(CLsDVD::SubArray())]);
}
void SubExtensionValue::Show(const FieldPlace& /*at*/, const std::string& held, ElementField& field) {
  ShowChoice(held, CLsDVD::SubArray(), field);
}

std::string SubDisplayModeValue::Read(const FieldPlace& /*at*/, const JsonField& value,
                                      const std::string& /*held*/) {
  return value.Text();
}
void SubDisplayModeValue::Show(const FieldPlace& at, const std::string& held, ElementField& field) {
  ShowChoice(held, AdmittedSubDisplayModes(at.Work.Tracks[ParseSourceKey(at.Key)->Track]), field);
}

std::string MenuTypeValue::Read(const FieldPlace& at, const JsonField& value, const std::string& /*held*/) {
  const auto types = MenuTypesAt(at);
  return std::string(types[value.OneOf(types)]);
}
void MenuTypeValue::Show(const FieldPlace& at, const std::string& held, ElementField& field) {
  ShowChoice(held, MenuTypesAt(at), field);
}

std::string LinkValue::Read(const FieldPlace& at, const JsonField& value, const std::string& /*held*/) {
  const std::string text = value.IsNull() ? std::string(NoLink) : value.Text();
  if (EqualNoCase(Trim(text), NoLink)) {
    return std::string(NoLink);
  }
  const std::vector<const PGC_P*> targets = LinkTargets(at);
  const auto found = std::ranges::find_if(targets, [&text](const PGC_P* chain) {
    return chain->Key == text || NameKey(chain->PGCName) == NameKey(text);
  });
  if (found == targets.end()) {
    value.Refuse(fmt::format("\"none\", or the name or key of a PGC among the {} here",
                             PlaceOfKey(at.Key)->InTitles ? "titles" : "menus"));
  }
  return (*found)->PGCName;
}
void LinkValue::Show(const FieldPlace& at, const std::string& held, ElementField& field) {
  std::vector<std::string_view> names{NoLink};
  for (const PGC_P* chain : LinkTargets(at)) {
    names.push_back(chain->PGCName);
  }
  ShowChoice(held, names, field);
}

std::string PaletteNameValue::Read(const FieldPlace& at, const JsonField& value,
                                   const std::string& /*held*/) {
  std::string name = value.Text();
  const std::vector<std::string_view> names = PaletteNames(at.Work);
  if (std::ranges::find(names, name) == names.end()) {
    value.Refuse(fmt::format("a palette of the project (\"{}\")", fmt::join(names, "\", \"")));
  }
  return name;
}
void PaletteNameValue::Show(const FieldPlace& at, const std::string& held, ElementField& field) {
  ShowChoice(held, PaletteNames(at.Work), field);
}

}  // namespace quorvelant
