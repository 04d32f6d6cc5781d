#include "ui/color_pick.h"

#include <array>
#include <exception>

#include "base/text.h"
#include "edit/change.h"

namespace quorvelant {

namespace {

void Put(SubPicturePlay& entry, std::size_t which, Color color) {
  const std::array<Color*, 4> places{&entry.ConversionE2, &entry.ConversionE1, &entry.ConversionP,
                                     &entry.ConversionBg};
  *places.at(which) = color;
}

}  // namespace

ColorFound PickedColor(const Project& project, const SubtitlePlace& place, int column, int line,
                       PictureLoader& pictures) {
  const SubPicturePlay& entry = project.Tracks[place.Track].SubStreams[place.Stream].SubPlays[place.Entry];
  try {
    const Picture bitmap = pictures.Load(SystemPath(entry.File, project.SourceFolder()));
    const int x = column - entry.X1;
    const int y = line - entry.Y1;
    if (x < 0 || y < 0 || x >= bitmap.Width || y >= bitmap.Height) {
      return {{}, "The subtitle's bitmap does not reach there"};
    }
    return {bitmap.At(x, y), {}};
  } catch (const std::exception& fault) {
    return {{}, fault.what()};
  }
}

Outcome PutConversionColor(EditSession& session, const SubtitlePlace& place, std::size_t which, Color color,
                           ColorScope scope) {
  Change change(session, "Conversion Colours");
  Track& track = change.EditTrack(place.Track);
  for (std::size_t stream = 0; stream < track.SubStreams.size(); ++stream) {
    if (track.SubStreams[stream].Removed || (scope != ColorScope::Track && stream != place.Stream)) {
      continue;
    }
    auto& entries = track.SubStreams[stream].SubPlays;
    for (std::size_t i = 0; i < entries.size(); ++i) {
      if (scope != ColorScope::Entry || i == place.Entry) {
        Put(entries[i], which, color);
      }
    }
  }
  return change.Commit(SubPlayKey(place));
}

}  // namespace quorvelant
