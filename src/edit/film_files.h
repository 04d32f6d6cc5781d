#pragma once

// Files sorted to films by their names.

#include <span>
#include <string>
#include <vector>

#include "base/message.h"

namespace quorvelant {

// What a file is for, by the ending of its name; what none tells is a video.
enum class FileRole { Video, Audio, Subtitles, Chapters, Picture, SubtitleText };
[[nodiscard]] FileRole RoleOfFile(const std::string& file);

// The files of one title. Names are as given.
struct FilmFiles {
  struct Stream {
    std::string File;
    std::string Language;        // a name of the vocabulary; empty where the file's name tells none
    std::string Extension = {};  // likewise, "Directors comments"; empty where none is told
    bool operator==(const Stream&) const = default;
  };
  std::string Video;
  std::string Name;  // the video's stem
  std::vector<Stream> Audio;
  std::vector<Stream> Subtitles;
  std::string Chapters;  // a chapter list, or empty
  bool operator==(const FilmFiles&) const = default;
};

struct SortedFiles {
  std::vector<FilmFiles> Films;  // in the order of the videos
  std::vector<Message> Refusals;
};

// Audio, subtitle scripts and chapter lists go by extension, any other file is a video. A file belongs to the
// video with the longest stem that its own begins with; a word of the rest ("film.de.ac3", "film_de.ac3") is
// its language. No file is opened.
[[nodiscard]] SortedFiles SortFilms(std::span<const std::string> files);

// The same by the order in which files are named: those after a video belong to it, whatever their names.
[[nodiscard]] SortedFiles FollowFilms(std::span<const std::string> files);

// Adds what lies beside each video and has its name: its own, or one that goes on with a language
// ("film.de.ac3"). Files that a film has already are passed over.
void FindFilesOf(std::vector<FilmFiles>& films);

// The film with paths that count from here as a script at `script` would hold them.
[[nodiscard]] FilmFiles AsScriptHolds(const std::string& script, FilmFiles film);

// The language that a file's name tells, by its last word or one after the video's stem; empty for none.
[[nodiscard]] std::string LanguageOfFile(const std::string& file, const std::string& video);

}  // namespace quorvelant
