// Damaged streams, made of headers and slices: what is noted of each, where, and how often.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "mux/messages.h"
#include "mux/picture_source.h"
#include "support/recording_ui.h"
#include "support/stream_builder.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct Case {
  const char* Name;
  std::function<void(StreamBuilder&)> Damage;  // follows a whole GOP of three frames
  const MessageKind* Kind;                     // nothing: the stream is whole
  std::size_t Count = 1;
  SequenceFields Sequence = {};
};

StreamBuilder& Gop(StreamBuilder& stream, const SequenceFields& sequence = {}) {
  stream.Sequence(sequence).Group().Picture({.Mpeg2 = sequence.Mpeg2});
  return stream.Picture({.Type = 'P', .TemporalReference = 1, .Mpeg2 = sequence.Mpeg2});
}
// A slice of this row, where no other stands.
void Row(StreamBuilder& stream, std::uint8_t row) {
  stream.Raw(Bytes{0, 0, 1, row, 0x55});
}
void WithoutRows(StreamBuilder& stream, int count) {
  for (int i = 0; i < count; ++i) {
    Gop(stream).Picture({.Type = 'P', .TemporalReference = 2, .TotalBytes = 100});
  }
  Gop(stream);  // a last picture that is cut is told by itself
}
void Field(StreamBuilder& stream, char type, int reference, PictureStructure structure) {
  stream.Picture({.Type = type, .TemporalReference = reference, .Structure = structure});
}

TEST(VideoDamage, IsNotedOnceAKindWithItsFirstPlace) {
  using enum PictureStructure;
  const Case cases[] = {
      {"whole", [](auto& stream) { Gop(stream); }, nullptr},
      {"whole, 15 rows or 16",
       [](auto& stream) { Row(stream, 16); },
       nullptr,
       0,
       {.Width = 352, .Height = 240}},
      {"a slice for all rows in MPEG-1",
       [](auto& stream) {
         stream.Picture({.Type = 'P', .TemporalReference = 2, .TotalBytes = 20, .Mpeg2 = false});
       },
       nullptr,
       0,
       {.Width = 352, .Height = 288, .Mpeg2 = false}},
      {"fields in pairs",
       [](auto& stream) {
         Field(stream, 'P', 2, TopField);
         Field(stream, 'P', 2, BottomField);
       },
       nullptr},
      {"rows missing", [](auto& stream) { WithoutRows(stream, 2); }, &message::PictureIncomplete, 2},
      {"a row too many", [](auto& stream) { Row(stream, 37); }, &message::PictureIncomplete},
      {"a picture lost", [](auto& stream) { stream.Picture({.Type = 'B', .TemporalReference = 3}); },
       &message::PicturesMisnumbered},
      {"a picture twice", [](auto& stream) { stream.Picture({.Type = 'P', .TemporalReference = 1}); },
       &message::PicturesMisnumbered},
      {"a first field alone",
       [](auto& stream) {
         Field(stream, 'P', 2, TopField);
         stream.Picture({.Type = 'P', .TemporalReference = 3});
       },
       &message::FieldUnpaired},
      {"a sequence header within a GOP",
       [](auto& stream) { stream.Sequence().Picture({.TemporalReference = 2}); },
       &message::SequenceHeaderAstray},
      {"no I picture after a sequence header",
       [](auto& stream) { stream.Sequence().Group().Picture({.Type = 'P'}); },
       &message::SequenceHeaderAstray},
      {"sixteen frames in PAL",
       [](auto& stream) {
         for (int i = 2; i < 16; ++i) {
           stream.Picture({.Type = 'P', .TemporalReference = i});
         }
       },
       &message::GopBeyondLimit},
  };
  const TempFolder folder;
  for (const Case& row : cases) {
    SCOPED_TRACE(row.Name);
    StreamBuilder stream;
    Gop(stream, row.Sequence);
    row.Damage(stream);
    const std::string path = folder / "film.m2v";
    folder.Write("film.m2v", stream.Text());
    RecordingUi ui;
    Random files(ui);
    files.DimFiles(1);
    const std::vector<MuxVideoFile> list{{.Path = path}};
    PictureSource source(files, list, {.Mpeg2 = row.Sequence.Mpeg2, .MostGopFields = 30});
    while (source.Front() != nullptr) {
      source.Next();
    }
    if (row.Kind == nullptr) {
      EXPECT_THAT(source.Damage(), IsEmpty());
      continue;
    }
    ASSERT_EQ(source.Damage().size(), 1U);
    EXPECT_EQ(source.Damage()[0].Kind->Code, row.Kind->Code);
    EXPECT_EQ(source.Damage()[0].Count, row.Count);
    EXPECT_LT(source.Damage()[0].Offset, stream.Size());
  }
}

}  // namespace
}  // namespace quorvelant
