// Everything that can end a track, or nearly: each is one clear message, and nothing looks complete.
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "model/messages.h"
#include "mux/messages.h"
#include "mux_run.h"
#include "subtitled_track.h"
#include "support/media.h"
#include "support/stream_builder.h"

namespace quorvelant {
namespace {

using testing::ContainsRegex;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class MuxFailures : public testing::Test {
 protected:
  // A track of what was built, in a file of this name.
  MuxInput Film(const std::string& name, const Bytes& stream, bool ntsc = false) const {
    return MotionTrack({Saved(Folder, stream, name)}, ntsc);
  }
  // A GOP whose last picture has this temporal reference.
  MuxInput Gop(const std::string& name, int reference, bool ntsc) const {
    StreamBuilder stream;
    stream.Sequence().Group().Picture().Picture({.Type = 'P', .TemporalReference = reference});
    return Film(name, stream.Data(), ntsc);
  }
  TempFolder Folder;
};

struct Fault {
  const MessageKind& Kind;
  MuxInput Track;
  std::string Text;   // within the message's
  std::string Place;  // within it, a regular expression
  const char* Log = "";
  bool Asks = false;
};

TEST_F(MuxFailures, AFaultIsOneMessageThatNamesFileAndPlace) {
  const Bytes good = BuildStream({.Gops = 2});
  const Bytes narrow = BuildStream({.Sequence = {.Width = 352}});
  const std::string video = SampleVideo({.Frames = 75});
  const std::string whole = TempFolder::Read(video);
  const std::string cut = Folder.Write("cut", whole.substr(0, whole.size() - 3000));
  const MuxAudioStream sound = Ac3Stream(SampleAc3({.Seconds = 3}));
  Bytes damaged = FileBytes(sound.Paths[0]);
  damaged[768 * 10] = 0;
  const Bytes changed =
      StreamBuilder().Raw(damaged).Raw(FileBytes(SampleAc3({.Rate = 44100, .Seconds = 1}))).Data();
  MuxAudioStream early = sound;
  early.DelayMs = -2000;
  MuxAudioStream gone = sound;
  gone.DataBytes[0] += 1;
  SubtitleStream subtitles =
      StreamOf(Folder, "a", {{64, 32, 600, 300, 5, 20}, {64, 32, 600, 300, 25, 60}}, false);
  subtitles.SubPlays[1].File = Folder / "gone.bmp";
  MuxInput subtitled = MotionTrack({video});
  subtitled.Subpictures = {{2, &subtitles, {}}};
  const GopPlan heavy{.Gops = 20, .BytesI = 60000, .BytesP = 60000, .BytesB = 60000};
  const auto with = [](const std::string& film, const MuxAudioStream& stream) {
    MuxInput input = MotionTrack({film});
    input.Audio = {stream};
    return input;
  };
  const auto lasting = [](double seconds) { return Ac3Stream(SampleAc3({.Seconds = seconds})); };
  const Fault faults[] = {
      {message::PictureSizeChanges, Film("sizes", StreamBuilder().Raw(good).Raw(narrow).Data()),
       "from 720x576 to 352x576", fmt::format("sizes@{}$", good.size())},
      {message::SequenceHeaderMissing, Film("head", StreamBuilder().Group().Picture().Data()), "head", "@8$"},
      {message::FirstPictureNotIntra,
       Film("predicted", StreamBuilder().Sequence().Group().Picture({.Type = 'P'}).Data()), "predicted",
       "@30$"},
      {message::CodedPictureMissing, Film("empty", {}), "empty", "empty$"},
      {message::CodedPictureMissing, Film("noise", Bytes(5000, 0x55)), "noise", "noise$"},
      {message::PictureTooLong,
       Film("huge", StreamBuilder().Sequence().Group().Picture({.TotalBytes = 6 << 20}).Data()), "huge",
       "@0$"},
      {message::MuxSourceNotOpened, MotionTrack({Folder / "nowhere"}), "nowhere", "", "", true},
      {message::MuxVideoUnnamed, MotionTrack({""}), "oops", ""},
      {message::GopTooLong, Gop("pal", 16, false), "", "", "GOP ERROR AT LBA2"},
      {message::GopTooLong, Gop("ntsc", 19, true), "", "", "GOP ERROR AT LBA2"},
      {message::BitRateTooHigh, Film("heavy", BuildStream(heavy)), "", "",
       "Excessive bitrate error at sector ", true},
      {message::LastPictureCut, with(cut, sound), "cut", "@"},
      {message::AudioTooShort, with(video, lasting(1.5)), "stream 0 of track \"Film\" ends 1.5 s", "@"},
      {message::AudioTooLong, with(video, lasting(5)), "stream 0 of track \"Film\" is 2.0 s", "@"},
      {message::AudioFrameMissing, with(video, Ac3Stream(Folder / "noise")), "noise", ""},
      {message::AudioChanges, with(video, Ac3Stream(Saved(Folder, changed, "rate"))),
       "from 192 kbit/s, 48 kHz, 2 channels to 192 kbit/s, 44.1 kHz, 2 channels",
       fmt::format("rate@{}$", damaged.size())},
      {message::AudioDamaged, with(video, Ac3Stream(Saved(Folder, damaged, "torn"))),
       "768 bytes of no sound were left out; for 1 lost frame (0.03 seconds)", "torn@7680$"},
      {message::AudioDelayUnfit, with(video, early), "-2000 ms", ""},
      {message::MuxSourceShrunk, with(video, gone), "ends at byte", ""},
      {message::PcmUnfit, with(video, PcmStream(video, 18, 2)), "18 bits, 48 kHz and 2 channels", ""},
      {message::SubtitleNotMade, subtitled, "Track \"Film\", subtitle stream 2, entry 2: ", "/gone.bmp$"},
  };
  for (const Fault& fault : faults) {
    SCOPED_TRACE(testing::Message() << fault.Kind.Code << " " << fault.Text);
    const bool fails = fault.Kind.Level == Severity::Error;
    MuxRun run;
    run.Ui.Unattended = fault.Asks;
    EXPECT_EQ(run.Mux(fault.Track), fails ? MuxOutcome::Failed : MuxOutcome::Done);
    EXPECT_THAT(run.Records.Vobs, SizeIs(fails ? 0 : 1));
    ASSERT_THAT(run.Ui.Messages, SizeIs(1));
    EXPECT_EQ(run.Ui.Messages[0].Code, fault.Kind.Code);
    EXPECT_THAT(run.Ui.Messages[0].Text, HasSubstr(fault.Text));
    EXPECT_THAT(run.Ui.Messages[0].Place, ContainsRegex(fault.Place));
    EXPECT_THAT(run.LogText(), HasSubstr(fault.Log));
  }
  for (const bool ntsc : {false, true}) {
    EXPECT_EQ(MuxRun().Mux(Gop("longest", ntsc ? 18 : 15, ntsc)), MuxOutcome::Done);
  }
}

// One GOP of 13 Mbit/s in a light stream is late; all of them can't be carried.
TEST_F(MuxFailures, UnderflowsAreAskedOnceAndCountedThroughTheBuild) {
  const Bytes light = BuildStream({.Gops = 3, .EndCode = false});
  const Bytes heavy =
      BuildStream({.Gops = 1, .BytesI = 68000, .BytesP = 68000, .BytesB = 68000, .EndCode = false});
  StreamBuilder stream;
  stream.Raw(light).Raw(heavy).Raw(light).Raw(heavy).Raw(light);
  const MuxInput track = Film("film", stream.Data());
  MuxRun run;
  run.Ui.Answers = {true};
  ASSERT_EQ(run.Mux({track, track}), MuxOutcome::Done);
  ASSERT_THAT(run.Ui.Questions, SizeIs(1));
  EXPECT_THAT(run.Ui.Questions[0].Text, HasSubstr("A Buffer Underflow has been noted"));
  EXPECT_GT(run.Build.UnderflowCount, 4);
  EXPECT_EQ(run.Ui.StatusWords.back(), fmt::format("Total Buffer Underflows: {}", run.Build.UnderflowCount));
  EXPECT_THAT(run.LogText(), HasSubstr("Buffer Underflow by "));
  EXPECT_EQ(run.Stream(VideoPack).size(), 2 * stream.Size());
  MuxRun refused;
  refused.Ui.Answers = {false};
  EXPECT_EQ(refused.Mux(track), MuxOutcome::Failed);
  EXPECT_TRUE(refused.Ui.Messages.at(0).Is(message::BufferUnderflowRefused));
}

TEST_F(MuxFailures, APictureLargerThanTheBufferIsASeriousFault) {
  StreamBuilder stream;
  stream.Sequence().Group().Picture({.TotalBytes = 300000});
  const MuxInput track = Film("film", stream.Data());
  MuxRun stopped;
  stopped.Ui.Answers = {false};
  EXPECT_EQ(stopped.Mux(track), MuxOutcome::Stopped);
  EXPECT_TRUE(stopped.Build.StopRequested);
  EXPECT_EQ(stopped.Build.BufferFaultCount, 1);
  EXPECT_EQ(stopped.Ui.Questions.at(0).Title, message::BufferFull.Title);
  EXPECT_THAT(stopped.LogText(), HasSubstr("SERIOUS ERROR - BUFFER FULL - NO MORE PICTURES"));
  MuxRun cleared;
  cleared.Ui.Answers = {true, true};
  EXPECT_EQ(cleared.Mux(track), MuxOutcome::Done);
  EXPECT_EQ(cleared.Stream(VideoPack), stream.Data());
}

// In a film with two kinds of sound and subtitles, in slides with sound, and in a still.
TEST_F(MuxFailures, StopIsObeyedAtEverySector) {
  const SubtitleStream subtitles = StreamOf(Folder, "a", {{64, 32, 600, 300, 5, 20}}, false);
  MuxInput film = Film("film", BuildStream({.Gops = 3, .BytesI = 9000, .BytesP = 4000, .BytesB = 1500}));
  film.Audio = {Ac3Stream(SampleAc3({.Seconds = 1.5}), 1), PcmStream(SampleWav({.Seconds = 1.5}), 16, 2)};
  film.Subpictures = {{0, &subtitles, {}}};
  const std::string picture = SampleVideo({.Frames = 1, .KbitPerSecond = 500});
  MuxInput slides = MotionTrack({picture, picture});
  slides.Kind = TrackKind::SlideShow;
  slides.Audio = {film.Audio[0]};
  MuxInput still = MotionTrack({picture});
  still.Kind = TrackKind::Still;
  still.Infinite = true;
  const std::vector tracks{film, slides, still};
  MuxRun whole;
  int polls = 0;
  whole.Ui.StopWhen = [&] { return ++polls < 0; };
  ASSERT_EQ(whole.Mux(tracks), MuxOutcome::Done);
  ASSERT_GE(polls, static_cast<int>(whole.Records.TotalSectors)) << "those of navigation too";
  for (int last = 0; last < polls; ++last) {
    MuxRun run;
    int asked = 0;
    run.Ui.StopWhen = [&] { return asked++ == last; };
    ASSERT_EQ(run.Mux(tracks), MuxOutcome::Stopped) << last;
    ASSERT_EQ(asked, last + 1) << "nothing more is done";
    ASSERT_TRUE(run.Build.StopRequested);
    ASSERT_THAT(run.Ui.Messages, IsEmpty());
    ASSERT_LT(run.Records.Vobs.size(), tracks.size());
    for (int slot = 0; slot <= 9; ++slot) {
      ASSERT_FALSE(run.Files.IsOpen(slot)) << slot;
    }
  }
}

}  // namespace
}  // namespace quorvelant
