// What the data of a project itself gives cause to tell.
#pragma once

#include "base/message.h"

namespace quorvelant::message {

// A domain's stream maps hold more than a disc has numbers for.
inline constexpr MessageKind TooManyAudioStreams{
    "too-many-audio-streams", Severity::Error, "Maximum Audio Streams Error",
    "The quantity of audio streams exceeds 8.\nTry altering the languages / extensions across the tracks to "
    "match"};
inline constexpr MessageKind TooManySubStreams{
    "too-many-subpicture-streams", Severity::Error, "Maximum SubPicture Streams Error",
    "The quantity of subpicture streams exceeds 32.\nTry altering the languages / extensions across the "
    "tracks to match"};
inline constexpr MessageKind TooManyStreams{
    "too-many-streams", Severity::Error, "Maximum SubPicture and Audio Streams Error",
    "The quantity of subpicture streams exceeds 32, and audio streams exceeds 8.\nTry altering the languages "
    "/ extensions across the tracks to match"};

// The track that is to join a PGC against its first; the differences and the stream's number.
inline constexpr MessageKind SubStreamsUnlike{
    "subpicture-streams-unlike", Severity::Error, "SubStream ID Error",
    "New track subtitle information does not match the source PGC [{}] for Stream ID {}"};
inline constexpr MessageKind AudioStreamsUnlike{
    "audio-streams-unlike", Severity::Error, "Audio ID Error",
    "New track audio information does not match the source PGC [{}] for Stream ID {}"};

// By the check of a project and by the multiplexer, since a head may hide what the whole file shows.
inline constexpr MessageKind AudioDelayUnfit{"audio-delay-unfit", Severity::Error, "Audio Delay",
                                             "Audio stream {} of track \"{}\" has a delay of {} ms; a disc "
                                             "keeps {} to {} ms, since no sound can begin "
                                             "before the disc does. Give a delay in between, and cut the "
                                             "sound, or put silence before it, for the rest"};

}  // namespace quorvelant::message
