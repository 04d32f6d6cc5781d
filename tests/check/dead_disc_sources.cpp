// Sources that make a dead disc, and those of every row.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "base/text.h"
#include "dead_disc_rows.h"
#include "picture/bmp.h"
#include "support/media.h"
#include "support/stream_builder.h"

namespace quorvelant::dead {
namespace {

using std::string_view_literals::operator""sv;

std::string Text(const std::string& sample) {
  return TempFolder::Read(sample);
}
std::string PalFilm(int frames = 25) {
  return Text(SampleVideo({.Frames = frames}));
}
// With the first of its sequence headers alone.
std::string FilmOfOneSequence(int frames) {
  std::string film = PalFilm(frames);
  const std::string header = film.substr(0, film.find("\0\0\1\xB8"sv));
  for (std::size_t at = film.find(header, 1); at != std::string::npos; at = film.find(header, at)) {
    film.erase(at, header.size());
  }
  return film;
}
// The packets of a transport stream, of a disc's recorder with 192 bytes each.
std::string Packets(std::size_t size) {
  std::string packets(4 * size, '\0');
  for (std::size_t at = size - 188; at < packets.size(); at += size) {
    packets[at] = 'G';
  }
  return packets;
}
// The lowest bit of a frame's size code says nothing at 48 kHz.
std::string OddSizeCodes() {
  std::string sound = Text(SampleAc3({.Seconds = 1}));
  for (std::size_t at = 4; at < sound.size(); at += 768) {
    sound[at] = static_cast<char>(sound[at] ^ 1);
  }
  return sound;
}
std::string Head(std::string_view bytes) {
  return std::string(bytes) + std::string(64, '\0');
}
// A bitmap of two colours in turn.
std::string Bitmap(int width, int height, std::uint32_t even, std::uint32_t odd) {
  Picture picture(width, height);
  for (int i = 0; i < width * height; ++i) {
    picture.Set(i % width, i / width, i % 2 == 0 ? even : odd);
  }
  return TextOf(WriteBmp(picture));
}

struct Source {
  std::string_view Name;
  std::string (*Content)();
};
constexpr std::array Sources{
    Source{"film.m2v", [] { return PalFilm(); }},
    Source{"wide.m2v", [] { return Text(SampleVideo({.Aspect = "16:9", .Frames = 25})); }},
    Source{"narrow.m2v", [] { return Text(SampleVideo({.Width = 704, .Frames = 25})); }},
    Source{"ntsc.m2v", [] { return Text(SampleVideo({.Standard = "NTSC", .Frames = 30})); }},
    Source{"widens.m2v", [] { return PalFilm() + Text(SampleVideo({.Aspect = "16:9", .Frames = 25})); }},
    Source{"narrows.m2v", [] { return PalFilm() + Text(SampleVideo({.Width = 704, .Frames = 25})); }},
    Source{"single.m2v", [] { return PalFilm(1); }},
    Source{"one.m2v", [] { return FilmOfOneSequence(100); }},
    Source{"brief.m2v", [] { return FilmOfOneSequence(25); }},
    Source{"cut.m2v", [] { return PalFilm().substr(4000); }},
    Source{"nogroups.m2v",
           [] {
             return StreamBuilder().Sequence().Picture().Picture({.Type = 'P'}).Sequence().Picture().Text();
           }},
    Source{"fast.m2v", [] { return TextOf(BuildStream({.Sequence = {.BitRate = 10'000'000}})); }},
    Source{"422.m2v", [] { return TextOf(BuildStream({.Sequence = {.ChromaFormat = 2}})); }},
    Source{"mpeg1.m2v", [] { return TextOf(BuildStream({.Sequence = {.Mpeg2 = false}})); }},
    Source{"film.mpg", [] { return std::string("\0\0\1\xBA\x44"sv) + PalFilm(); }},
    Source{"film.ts", [] { return Packets(188); }},
    Source{"disc.m2ts", [] { return Packets(192); }},
    Source{"film.mp4", [] { return Head("\0\0\0\x18\146typisom"sv); }},
    Source{"film.mkv", [] { return Head("\x1A\x45\xDF\xA3"); }},
    Source{"film.avi", [] { return Head("RIFF....AVI LIST"); }},
    Source{"film.h264", [] { return Head("\0\0\0\1\x09\xF0\0\0\0\1\x67\x64"sv); }},
    Source{"mkv.ac3", [] { return Head("\x1A\x45\xDF\xA3"); }},
    Source{"flac.ac3", [] { return Head("fLaC"); }},
    Source{"ogg.ac3", [] { return Head("OggS"); }},
    Source{"mp3.ac3", [] { return Head("\xFF\xFB\x90\x64"); }},
    Source{"id3.ac3", [] { return Head("ID3"); }},
    Source{"mp2.ac3", [] { return Head("\xFF\xFD\xA4"); }},
    Source{"none.m2v", [] { return std::string(500, 'x'); }},
    Source{"none.ac3", [] { return std::string(500, 'x'); }},
    Source{"slow.ac3", [] { return Text(SampleAc3({.Rate = 44100, .Seconds = 1})); }},
    Source{"slow.wav", [] { return Text(SampleWav({.Rate = 44100, .Seconds = 1})); }},
    Source{"odd.ac3", &OddSizeCodes},
    Source{"a.ac3", [] { return Text(SampleAc3({.Seconds = 1})); }},
    Source{"one.ac3", [] { return Text(SampleAc3({.Channels = 1, .Seconds = 1})); }},
    Source{"loud.ac3", [] { return Text(SampleAc3({.Kbps = 448, .Seconds = 1})); }},
    Source{"changes.ac3",
           [] { return Text(SampleAc3({.Seconds = 1})) + Text(SampleAc3({.Kbps = 448, .Seconds = 1})); }},
    Source{"stereo.wav", [] { return Text(SampleWav({.Seconds = 1})); }},
    Source{"mono.wav", [] { return Text(SampleWav({.Channels = 1, .Seconds = 1})); }},
    Source{"fast.wav", [] { return Text(SampleWav({.Rate = 96000, .Seconds = 1})); }},
    Source{"fine.wav", [] { return Text(SampleWav({.Bits = 24, .Seconds = 1})); }},
    Source{"marks.bmp", [] { return Bitmap(8, 8, 0, 0); }},
    Source{"smooth.bmp", [] { return Bitmap(8, 8, 0x203040, 0x405060); }},
    Source{"page.bmp", [] { return Bitmap(360, 288, 0, 0); }},
    Source{"noise.bmp", [] { return Bitmap(720, 20, 0, 0xFFFFFF); }},
};

// Another play after the first one.
Row SecondFilm(std::string name, const std::string& file, std::string found, std::string classic = {},
               std::string says = {}) {
  return {std::move(name),  "film.m2v|",        "film.m2v|Item=Video Play|VideoFile=" + file + "|",
          std::move(found), std::move(classic), {},
          std::move(says)};
}
// Under the film twice, which is as long.
std::string WithSound(const std::string& files) {
  return Replace(Replace(Disc, "a.ac3|", files), "film.m2v|", "film.m2v|Item=Video Play|VideoFile=film.m2v|");
}
Row TwoSounds(std::string name, const std::string& first, const std::string& second,
              const std::string& classic = {}, std::string says = {}) {
  const std::string found = " source-unlike-first Track.0.Audio1.AudioPlay2|";
  return {std::move(name),
          Disc,
          WithSound(first + "|Item=Audio Play|AudioFile=" + second + "|"),
          "E" + found,
          "W" + found + classic,
          {},
          std::move(says)};
}
// Told by `author` alone.
Row ReadWhole(std::string name, std::string from, std::string to, std::string found,
              std::string classic = {}) {
  return {std::move(name), std::move(from), std::move(to), "", std::move(classic), std::move(found)};
}

}  // namespace

std::vector<Row> SourceRows() {
  const std::string unlike = "E source-unlike-first";
  const std::string video2 = " Track.0.Video2|";
  const std::string size = "E picture-size-changes ";
  const std::string standard = "E source-unlike-track Track.0.Video";
  const std::string unknown = "W doubtful-value p.qvp:3|E track-standard-unknown Track.0|";
  const std::string cut = "E video-sequence-not-first Track.0.Video1|";
  const std::string otherKind = "E audio-other-kind Track.0.Audio1.AudioPlay2|";
  const std::string none = "E video-missing Track.0.Video1|E audio-head Track.0.Audio1.AudioPlay1|";
  const std::string rate = "E audio-sample-rate Track.0.Audio1.AudioPlay1|";
  std::vector<Row> rows{
      SecondFilm("PlaysOfTwoSizes", "narrow.m2v", unlike + video2,
                 "W source-unlike-first" + video2 + size + "narrow.m2v|", "704x576"),
      SecondFilm("PlaysOfTwoAspects", "wide.m2v", unlike + video2, "",
                 "'wide.m2v': MPEG2 PAL 720x576 16:9 where 'film.m2v'"),
      SecondFilm("PlaysOfTwoStandards", "ntsc.m2v", standard + "2|" + unlike + video2,
                 Replace(standard, "E ", "W ") + "2|W source-unlike-first" + video2 + size + "ntsc.m2v|"),
      SecondFilm("PlaysOfTwoCodings", "mpeg1.m2v", "E video-mpeg1" + video2 + unlike + video2,
                 "W video-mpeg1" + video2 + "W source-unlike-first" + video2 + "W audio-too-short a.ac3|"),
      ReadWhole("AspectChangesInAFile", "film.m2v", "widens.m2v", "E sequence-changes widens.m2v|"),
      ReadWhole("SizeChangesInAFile", "film.m2v", "narrows.m2v", size + "narrows.m2v|",
                size + "narrows.m2v|"),
      TwoSounds("PlaysOfTwoBitRates", "a.ac3", "loud.ac3", "W audio-late |W audio-changes loud.ac3|",
                "where 'a.ac3', the first of its list, is AC3 48 kHz, 192 kbit/s, 2 channels"),
      TwoSounds("PlaysOfTwoAc3Channels", "a.ac3", "one.ac3", "W audio-changes one.ac3|",
                "-b:a 192k -ar 48000 -ac 2"),
      TwoSounds("StereoThenMono", "stereo.wav", "mono.wav", "", "pcm_s16le -ar 48000 -ac 2"),
      TwoSounds("PlaysOfTwoPcmRates", "stereo.wav", "fast.wav", "W audio-too-long fast.wav|"),
      TwoSounds("PlaysOfTwoPcmBits", "fine.wav", "stereo.wav", "", "pcm_s24le"),
      {"OddSizeCodes", Disc, WithSound("a.ac3|Item=Audio Play|AudioFile=odd.ac3|"), ""},
      {"PlaysOfTwoKinds", "a.ac3|", "a.ac3|Item=Audio Play|AudioFile=stereo.wav|", otherKind, otherKind, "",
       "it holds PCM"},
      ReadWhole("BitRateChangesInAFile", Disc, WithSound("changes.ac3|"), "E audio-changes changes.ac3|",
                "W audio-late |W audio-changes changes.ac3|"),
      {"WavOf44Kilohertz", "a.ac3", "slow.wav", rate, rate, "", "-c:a ac3 -b:a 192k -ar 48000"},
      {"Ac3Of44Kilohertz", "a.ac3", "slow.ac3", rate, rate},

      {"NtscOverPal", "=PAL", "=NTSC", standard + "1|", "", "", "Resolution=PAL"},
      {"Pall", "=PAL", "=PALL", unknown, "", "", "Resolution=PALL"},
      {"SizeAsStandard", "=PAL", "=720x576", unknown},
      {"Secam", "=PAL", "=secam", unknown},
      {"StandardByTheFile", "Resolution=PAL|", "", ""},

      {"ProgramStream", "film.m2v", "film.mpg", "E source-foreign Track.0.Video1|", "", "",
       "-map 0:v:0 -c:v copy FOLDER/film.m2v"},
      {"Garbage", Disc, Replace(Replace(Disc, "film.m2v", "none.m2v"), "a.ac3", "none.ac3"), none, none},
      {"CutBeforeItsSequence", "film.m2v", "cut.m2v", cut, cut, "", "-c:v copy FOLDER/cut-dvd.m2v"},
      {"SinglePicture", "film.m2v", "single.m2v", "E video-single-picture Track.0.Video1|"},
      {"OneSequence", "film.m2v", "one.m2v", "E video-one-sequence Track.0.Video1|",
       "W video-one-sequence Track.0.Video1|W sequences-apart one.m2v|W audio-too-short a.ac3|", "",
       "first 60 frames, and players search and jump by them"},
      {"OneSequenceOfABriefFilm", "film.m2v", "brief.m2v", ""},
      {"NoGroups", "film.m2v", "nogroups.m2v", "W video-no-groups Track.0.Video1|"},
      {"RateBeyondADisc", "film.m2v", "fast.m2v", "W video-declared-rate Track.0.Video1|"},
      {"ColoursAt422", "film.m2v", "422.m2v", "E video-colour-sampling Track.0.Video1|"},
  };
  for (const char* film : {"film.ts", "disc.m2ts", "film.mp4", "film.mkv", "film.avi", "film.h264"}) {
    rows.push_back({fmt::format("As{}", Split(film, ".")[1]), "film.m2v", film,
                    "E source-foreign Track.0.Video1|",
                    "W source-foreign Track.0.Video1|E video-missing Track.0.Video1|", "",
                    fmt::format("ffmpeg -i FOLDER/{} -map 0:v:0 -c:v mpeg2video -vf \"scale=", film)});
  }
  for (const char* sound : {"mkv.ac3", "flac.ac3", "ogg.ac3", "mp3.ac3", "id3.ac3", "mp2.ac3"}) {
    const std::string place = " Track.0.Audio1.AudioPlay1|";
    rows.push_back({fmt::format("SoundAs{}", Split(sound, ".")[0]), "a.ac3", sound,
                    "E source-foreign" + place, "W source-foreign" + place + "E audio-head" + place, "",
                    sound});
  }
  return rows;
}

void Write(const Row& row, const TempFolder& folder) {
  std::string script = Disc;
  const std::size_t at = row.From.empty() ? script.size() : script.find(row.From);
  ASSERT_NE(at, std::string::npos);
  script.replace(at, row.From.size(), row.To);
  std::ranges::replace(script, '|', '\n');
  folder.Write("p.qvp", script);
  for (const Source& source : Sources) {
    if (Contains(script, source.Name)) {
      folder.Write(std::string(source.Name), source.Content());
    }
  }
}

}  // namespace quorvelant::dead
