#include "window/problem_steps.h"

#include <QCoreApplication>
#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <utility>

#include "base/timecode.h"
#include "check/messages.h"
#include "desk/edit_fields.h"
#include "edit/overlays.h"
#include "edit/removal.h"
#include "edit/segments.h"
#include "edit/source_removal.h"
#include "edit/subtitle_ticks.h"
#include "model/keys.h"
#include "model/walk.h"
#include "script/script_tracks.h"
#include "ui/shown_text.h"

namespace quorvelant {

namespace {

using Step = void (*)(const Message& finding, WindowParts& parts);

// One field of the element that the finding names.
void SetField(WindowParts& parts, const std::string& key, const char* field, const nlohmann::json& value) {
  const nlohmann::json fields{{field, value}};
  parts.Doc.Do(
      [&](EditSession& session, Consent) { return SetFields(session, key, JsonField("fields", fields)); });
}

// The action, on the element that the finding names.
template <ActionId Id>
void GoAndDo(const Message& finding, WindowParts& parts) {
  if (finding.Place.empty() || parts.Chosen.GoTo(finding.Place)) {
    QMetaObject::invokeMethod(parts.Commands.Of(Id), &QAction::trigger, Qt::QueuedConnection);
  }
}

std::optional<SubtitlePlace> SubtitleOf(const Message& finding, const WindowParts& parts) {
  const auto place = ParsePlace(parts.Doc.Work(), finding.Place);
  const auto source = place ? ParseSourceKey(place->Key) : std::nullopt;
  if (!source || !place->SubStream || !place->SubEntry) {
    return std::nullopt;
  }
  return SubtitlePlace{source->Track, *place->SubStream, *place->SubEntry};
}

const std::vector<SubPicturePlay>& EntriesOf(const SubtitlePlace& place, const WindowParts& parts) {
  return parts.Doc.Work().Tracks[place.Track].SubStreams.at(place.Stream).SubPlays;
}

// The subtitle before ends where this one starts.
void ShortenBefore(const Message& finding, WindowParts& parts) {
  auto place = SubtitleOf(finding, parts);
  if (!place || place->Entry == 0) {
    return;
  }
  const auto& entries = EntriesOf(*place, parts);
  const Track& track = parts.Doc.Work().Tracks[place->Track];
  const int rate = TrackFramesPerSecond(parts.Doc.Work(), track);
  const std::int64_t end = TimecodeToFrames(entries.at(place->Entry).Start, rate);
  --place->Entry;
  const std::int64_t start = TimecodeToFrames(entries.at(place->Entry).Start, rate);
  parts.Doc.Do([&](EditSession& session, Consent) {
    return SetTimes(session, *place, {start, std::max<std::int64_t>(end - start - 1, 1)});
  });
}

void LeaveOut(const Message& finding, WindowParts& parts) {
  if (const auto place = SubtitleOf(finding, parts)) {
    parts.Doc.Do([&](EditSession& session, Consent) { return SetUsed(session, *place, false); });
  }
}

void Hold(const Message& finding, WindowParts& parts) {
  SetField(parts, finding.Place, "still", 255);
}

void TakeFirstPalette(const Message& finding, WindowParts& parts) {
  const auto palettes = Live(parts.Doc.Work().Palettes);
  if (!palettes.empty()) {
    SetField(parts, finding.Place, "palette", palettes.front()->Name());
  }
}

void GiveDisplayMode(const Message& finding, WindowParts& parts, std::string_view mode) {
  parts.Doc.Do([&](EditSession& session, Consent) { return SetDisplayMode(session, finding.Place, mode); });
}

void Letterbox(const Message& finding, WindowParts& parts) {
  GiveDisplayMode(finding, parts, "Only LetterBox");
}

void NoDisplayMode(const Message& finding, WindowParts& parts) {
  GiveDisplayMode(finding, parts, "Not Specified");
}

void RemoveSourceOf(const Message& finding, WindowParts& parts) {
  parts.Doc.Do(
      [&](EditSession& session, Consent consent) { return RemoveSource(session, finding.Place, consent); });
}

void RemoveElement(const Message& finding, WindowParts& parts) {
  parts.Doc.Do(
      [&](EditSession& session, Consent consent) { return Remove(session, finding.Place, consent); });
}

struct StepRow {
  std::string_view Code;
  const char* Verb;
  Step Run;
};

constexpr std::array Rows{
    StepRow{message::SourceMissing.Code, QT_TRANSLATE_NOOP("ProblemStep", "Locate…"),
            GoAndDo<ActionId::LocateFiles>},
    StepRow{message::SourceUnnamed.Code, QT_TRANSLATE_NOOP("ProblemStep", "Import File…"),
            GoAndDo<ActionId::ImportFile>},
    StepRow{message::AudioUnnamed.Code, QT_TRANSLATE_NOOP("ProblemStep", "Import File…"),
            GoAndDo<ActionId::ImportFile>},
    StepRow{message::SubtitlesOverlap.Code, QT_TRANSLATE_NOOP("ProblemStep", "Shorten the One Before"),
            ShortenBefore},
    StepRow{message::SubtitleStartsPastEnd.Code, QT_TRANSLATE_NOOP("ProblemStep", "Leave Out"), LeaveOut},
    StepRow{message::SubStreamEmpty.Code, QT_TRANSLATE_NOOP("ProblemStep", "Remove Stream"), RemoveSourceOf},
    StepRow{message::MenuLeadsNowhere.Code, QT_TRANSLATE_NOOP("ProblemStep", "Hold for Ever"), Hold},
    StepRow{message::PaletteOfChainMissing.Code, QT_TRANSLATE_NOOP("ProblemStep", "Take the First Palette"),
            TakeFirstPalette},
    StepRow{message::PaletteOfChainDark.Code, QT_TRANSLATE_NOOP("ProblemStep", "New Palette…"),
            GoAndDo<ActionId::NewPalette>},
    StepRow{message::WideLetterboxed.Code, QT_TRANSLATE_NOOP("ProblemStep", "Letterbox"), Letterbox},
    StepRow{message::WideWithoutDisplay.Code, QT_TRANSLATE_NOOP("ProblemStep", "Letterbox"), Letterbox},
    StepRow{message::AspectUnlikeDomain.Code, QT_TRANSLATE_NOOP("ProblemStep", "Clear Display Mode"),
            NoDisplayMode},
    StepRow{message::SetWithoutTitles.Code, QT_TRANSLATE_NOOP("ProblemStep", "New Title…"),
            GoAndDo<ActionId::NewTitle>},
    StepRow{message::TitleWithoutCells.Code, QT_TRANSLATE_NOOP("ProblemStep", "Remove Title"), RemoveElement},
    StepRow{message::LanguageWithoutPgcs.Code, QT_TRANSLATE_NOOP("ProblemStep", "New PGC…"),
            GoAndDo<ActionId::NewPgc>},
};

}  // namespace

std::optional<ProblemStep> StepFor(const Message& finding, WindowParts& parts) {
  const auto* const row = std::ranges::find(Rows, finding.Code, &StepRow::Code);
  if (row == Rows.end()) {
    return std::nullopt;
  }
  return ProblemStep{QCoreApplication::translate("ProblemStep", row->Verb),
                     [finding, run = row->Run, &parts] { run(finding, parts); }};
}

}  // namespace quorvelant
