// One track of a domain as the multiplexer takes it.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "base/rules.h"
#include "base/user_interface.h"
#include "model/project.h"
#include "model/stream_maps.h"
#include "mux/mux_track.h"

namespace quorvelant {

// The domain that the track is to be written for. `Sources` are the project's tracks with the marks that
// the domain's stream maps gave them; they must outlive the input, which points into them.
struct MuxInputSource {
  const Project& Disc;
  const Tracks& Sources;
  const VTS_P& Entry;
  quorvelant::Domain Domain;
  quorvelant::Rules Rules;
  UserInterface& Ui;
};

// Paths become paths of this system; scenes become marks with what the cells that play them say; button
// commands are dealt. Source files are looked for: one that is missing or of no use becomes an error in
// `findings`, whose place is the key of the play.
MuxInput MakeMuxInput(const MuxInputSource& source, std::size_t trackIndex, std::vector<Message>& findings);

// Whether a source is a picture, to be encoded when it is due, by its name.
bool IsPicture(std::string_view path);

inline constexpr std::string_view SourceErrorTitle = "Source Error";
inline constexpr std::string_view SourceMissing = "The file {} does not exist";
inline constexpr std::string_view SourceIsNoFile = "{} is not a file";
inline constexpr std::string_view SourceUnreadable = "The sound of {} cannot be read";
inline constexpr std::string_view SourceUnusable = "{} cannot be used: {}";
inline constexpr std::string_view NoVideo = "it holds no MPEG video";
inline constexpr std::string_view UnknownSound =
    "The kind of an audio stream is unknown: its name ends in none of .ac3, .wav, .dts";
inline constexpr std::string_view RepeatedStreamNumber = "The stream number {} is used twice in the track";
inline constexpr std::string_view TrackWithoutVideo = R"(Track "{}" is used on the disc and has no video)";

}  // namespace quorvelant
