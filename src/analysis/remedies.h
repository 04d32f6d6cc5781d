// Lines for a shell that make a file which a disc carries out of one that it does not.
#pragma once

#include <string>
#include <string_view>

namespace quorvelant {

// `text` as one word of a POSIX shell, in single quotes where it needs them.
std::string ShellWord(std::string_view text);

// All write beside `file`, under its name with another extension; "-dvd" is added to a name that would be
// the file's own.
// The video as it stands, from its first sequence header on.
std::string CopyVideoLine(const std::string& file);
// The same with the first sequence header before each I picture.
std::string RepeatSequenceLine(const std::string& file);

// Without an aspect the film's shape is not known: on 16:9, with black bars where they are needed.
struct VideoTarget {
  bool Ntsc = false;
  std::string Aspect = {};
};
std::string EncodeVideoLine(const std::string& file, const VideoTarget& target);

// AC3 of 192 kbit/s, or of the bit rate and number of channels given.
struct AudioTarget {
  bool Pcm = false;  // a WAV file, of 24 bits or else 16
  int Bits = 16;
  int KHz = 48;
  int Kbps = 192;
  int Channels = 0;  // 0: as many as there are
};
std::string EncodeAudioLine(const std::string& file, const AudioTarget& target = {});

}  // namespace quorvelant
