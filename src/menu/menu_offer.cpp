#include "menu/menu_offer.h"

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "model/stream_maps.h"
#include "model/walk.h"

namespace quorvelant {

namespace {

// The track with the marks of what a title set of its own carries.
Track Marked(const Track& track, const Rules& rules) {
  Tracks alone;
  alone.Add(track);
  const TrackList list{{.TrackName = track.TrackName, .Index = 0}};
  BuildAudioMap(list, alone, rules);
  BuildSubMap(list, alone, rules);
  return alone[0];
}

bool HasFile(const AudioStream& stream) {
  return std::ranges::any_of(Live(stream.AudioPlays),
                             [](const AudioPlay* play) { return !play->File.empty(); });
}

bool ShowsSomething(const SubtitleStream& stream) {
  return std::ranges::any_of(stream.SubPlays, &SubPicturePlay::Used);
}

// A stream for 4:3 screens alone stands in for another one there, by the maps of the PGC.
bool StandsIn(const SubtitleStream& stream, const Track& track) {
  const auto showsFull = [](const SubtitleStream& one) {
    const std::string mode = Lower(one.DisplayMode);
    return !Contains(mode, "pan") && (!Contains(mode, "letter") || Contains(mode, "wide"));
  };
  return !showsFull(stream) && std::ranges::any_of(Live(track.SubStreams), [&](const SubtitleStream* other) {
    return other->Language == stream.Language && other->Extension == stream.Extension && showsFull(*other);
  });
}

template <class Stream>
OfferedStream Offered(const Stream& stream, std::size_t count, bool byCount) {
  return {.Number = byCount ? static_cast<int>(count) + 1 : stream.StreamNumber + 1,
          .Language = stream.Language,
          .Extension = stream.Extension};
}

template <class Stream, class OnDisc>
std::vector<OfferedStream> StreamsOf(const std::vector<Stream>& streams, bool all, OnDisc onDisc) {
  std::vector<OfferedStream> offered;
  for (const Stream* stream : Live(streams)) {
    if (all || onDisc(*stream)) {
      offered.push_back(Offered(*stream, offered.size(), all));
    }
  }
  return offered;
}

// How many choices a page is worth.
std::size_t FewestChoices(const Rules& rules) {
  return rules.PagesForChoiceOnly ? 2 : 1;
}

std::vector<OfferedChapter> ChaptersOf(const Track& track, const Rules& rules) {
  std::vector<OfferedChapter> chapters;
  const std::size_t first = rules.ChaptersFromFirst ? 0 : 1;
  for (std::size_t scene = first; track.Scenes.size() > 1 && scene < track.Scenes.size(); ++scene) {
    chapters.push_back({.Scene = scene, .Frame = track.Scenes[scene].Frame, .Name = {}});
  }
  return chapters;
}

}  // namespace

FilmOffer OfferOf(const Project& project, std::size_t track, const WantedMenus& wanted, const Rules& rules) {
  const Track film = Marked(project.Tracks[track], rules);
  const std::size_t fewest = FewestChoices(rules);
  const bool all = fewest == 1;
  FilmOffer offer{.Track = track,
                  .Name = film.TrackName,
                  .IsWide = film.Aspect == "16:9",
                  .IsNtsc = film.Standard == "NTSC",
                  .Audio = {},
                  .Subtitles = {},
                  .Chapters = {}};
  if (wanted.Audio) {
    offer.Audio = StreamsOf(film.AudioStreams, all, [](const AudioStream& stream) {
      return stream.MuxThisStream && HasFile(stream);
    });
    offer.Audio.resize(offer.Audio.size() < fewest ? 0 : offer.Audio.size());
  }
  if (wanted.Subtitle) {
    offer.Subtitles = StreamsOf(film.SubStreams, all, [&film](const SubtitleStream& stream) {
      return stream.MuxThisStream && ShowsSomething(stream) && !StandsIn(stream, film);
    });
  }
  if (wanted.Chapter) {
    offer.Chapters = ChaptersOf(film, rules);
  }
  return offer;
}

bool OfferChoice(std::span<const FilmOffer> films, const Rules& rules) {
  const bool one = std::ranges::any_of(films, [](const FilmOffer& film) {
    return !film.Audio.empty() || !film.Subtitles.empty() || !film.Chapters.empty();
  });
  return films.size() > 1 || one || FewestChoices(rules) == 1;
}

}  // namespace quorvelant
