#include "desk/source_fields.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "desk/edit_button_fields.h"
#include "desk/field_rows.h"
#include "desk/field_values.h"
#include "desk/messages.h"
#include "edit/change.h"
#include "edit/live_sources.h"
#include "edit/new_track.h"
#include "edit/segments.h"
#include "script/script_tracks.h"

namespace quorvelant {

namespace {

constexpr std::int64_t MostDelay = 3'600'000;  // milliseconds either way

constexpr std::array AudioRows{
    FieldRowOf<&AudioStream::Language, LanguageValue>("language", "Language"),
    FieldRowOf<&AudioStream::Extension, AudioExtensionValue>("extension", "Extension"),
    FieldRowOf<&AudioStream::StreamNumber, NumberWithin<0, AudioStreamCount - 1>>("number", "Stream number"),
    FieldRowOf<&AudioStream::Delay, NumberWithin<-MostDelay, MostDelay>>("delay", "Delay (ms)"),
    FieldRowOf<&AudioStream::Emphasis, FlagValue>("emphasis", "Emphasis (PCM)"),
    FieldRowOf<&AudioStream::Mute, FlagValue>("mute", "Mute (PCM)")};

constexpr std::array SubtitleRows{
    FieldRowOf<&SubtitleStream::Language, LanguageValue>("language", "Language"),
    FieldRowOf<&SubtitleStream::Extension, SubExtensionValue>("extension", "Extension"),
    FieldRowOf<&SubtitleStream::StreamNumber, NumberWithin<0, SubStreamCount - 1>>("number", "Stream number"),
    FieldRowOf<&SubtitleStream::DisplayMode, SubDisplayModeValue>("displayMode", "Display mode"),
    FieldRowOf<&SubtitleStream::DropFrame, FlagValue>("dropFrame", "Drop-frame times")};

// A field of a track, which operations of their own change.
struct TrackRow {
  std::string_view Name;
  std::string_view Label;
  Outcome (*Set)(EditSession& session, const std::string& key, const Track& track, const JsonField& value);
  void (*Show)(const Track& track, ElementField& field);
};

void ShowFlag(bool held, ElementField& field) {
  field.Kind = FieldKind::Flag;
  field.Value = held;
}

constexpr std::array TrackRows{
    TrackRow{"displayMode", "Display on 4:3 screens",
             [](EditSession& session, const std::string& key, const Track& /*track*/,
                const JsonField& value) { return SetDisplayMode(session, key, value.Text()); },
             [](const Track& track, ElementField& field) {
               ShowChoice(track.DisplayMode, OfferedDisplayModes(track), field);
             }},
    TrackRow{"extendSlide", "Slideshow lasts as long as its sound",
             [](EditSession& session, const std::string& key, const Track& track, const JsonField& value) {
               return SetEnds(session, key, value.Flag(), track.ExtendFinalSubtitle);
             },
             [](const Track& track, ElementField& field) { ShowFlag(track.ExtendSlideForAudio, field); }},
    TrackRow{"extendSubtitle", "Last subtitle lasts as long as the slideshow",
             [](EditSession& session, const std::string& key, const Track& track, const JsonField& value) {
               return SetEnds(session, key, track.ExtendSlideForAudio, value.Flag());
             },
             [](const Track& track, ElementField& field) { ShowFlag(track.ExtendFinalSubtitle, field); }}};

constexpr std::string_view DurationName = "duration";
constexpr std::string_view UopsName = "userOperations";

Outcome SetTrackFields(EditSession& session, const std::string& key, std::size_t index,
                       const JsonField& fields) {
  if (index >= session.Work().Tracks.Count()) {
    return SetEnds(session, key, false, false);  // which refuses the key
  }
  Change change(session, "Change Track");
  for (const JsonField& field : fields.Fields()) {
    const auto* const row = std::ranges::find(TrackRows, field.Name(), &TrackRow::Name);
    if (row == TrackRows.end()) {
      std::vector<std::string_view> names;
      std::ranges::transform(TrackRows, std::back_inserter(names), &TrackRow::Name);
      RefuseField(key, field.Name(), names);
    }
    if (Outcome outcome = row->Set(session, key, session.Work().Tracks[index], field); !outcome.IsDone()) {
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

Outcome SetPlayFields(EditSession& session, const std::string& key, std::size_t index,
                      const JsonField& fields) {
  const JsonField duration = OnlyField(key, fields, DurationName);
  if (!duration.IsNull() && index < session.Work().Tracks.Count()) {
    const Track& track = session.Work().Tracks[index];
    static_cast<void>(FrameOf(duration, TrackFramesPerSecond(session.Work(), track)));  // a time
  }
  return SetSlide(session, key, duration.IsNull() ? std::string() : duration.Text());
}

std::vector<ElementField> TrackFieldsOf(const Track& track) {
  std::vector<ElementField> fields;
  for (const TrackRow& row : TrackRows) {
    ElementField field;
    field.Name = row.Name;
    field.Label = row.Label;
    row.Show(track, field);
    fields.push_back(std::move(field));
  }
  return fields;
}

std::vector<ElementField> PlayFieldsOf(const Track& track, const VideoPlay& play) {
  if (track.TrackType == "Motion") {
    return {};
  }
  ElementField field;
  field.Name = DurationName;
  field.Label = "Duration";
  field.Kind = FieldKind::Time;
  field.Value = play.SlideDuration;
  return {field};
}

std::vector<ElementField> SceneFieldsOf(const FieldPlace& at, const Scene& scene) {
  ElementField field;
  field.Name = UopsName;
  field.Label = "Prohibited user operations";
  UopsValue::Show(at, scene.Uops, field);
  return {field};
}

}  // namespace

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
    case SourceKey::Node::VideoPlay:
      return SetPlayFields(session, key, source.Track, fields);
    case SourceKey::Node::Scene:
      return SetSceneUops(session, key, UopsValue::Read(at, OnlyField(key, fields, UopsName), {}));
    default:
      return Outcome::Refused(MessageOf(message::EditNoFields, key, key));
  }
}

std::vector<ElementField> SourceFieldsOf(const Project& project, const std::string& key,
                                         const SourceKey& source) {
  if (!LiveSource(project, key, source.Kind)) {
    return {};
  }
  const FieldPlace at{project, key};
  const Track& track = project.Tracks[source.Track];
  switch (source.Kind) {
    case SourceKey::Node::Track:
      return TrackFieldsOf(track);
    case SourceKey::Node::AudioStream:
      return ShowEach<AudioStream>(at, track.AudioStreams[source.Number - 1], {AudioRows});
    case SourceKey::Node::SubStream:
      return ShowEach<SubtitleStream>(at, track.SubStreams[source.Number - 1], {SubtitleRows});
    case SourceKey::Node::VideoPlay:
      return PlayFieldsOf(track, track.VideoPlays[source.Number - 1]);
    case SourceKey::Node::Scene:
      return SceneFieldsOf(at, track.Scenes[source.Number - 1]);
    default:
      return {};
  }
}

}  // namespace quorvelant
