#include "analysis/video_info.h"

#include <fmt/format.h>

#include "analysis/find_next_header.h"
#include "analysis/header_walk.h"
#include "analysis/messages.h"
#include "disc/video_standard.h"

namespace quorvelant {

namespace {

constexpr double FilmRate = 23.976;
constexpr int PanScanDisplayWidth = 540;

// Offsets below count from the first 00 of the start code.

void TakeSequence(ByteView data, VideoInfo& info) {
  if (data.size() < 8) {
    return;
  }
  info.Coding = "MPEG1";
  info.Width = (data[4] << 4) | (data[5] >> 4);
  info.Height = ((data[5] & 0xF) << 8) | data[6];
  info.AspectCode = data[7] >> 4;
  info.FrameRateCode = data[7] & 0xF;
  if (data.size() >= 11) {
    info.Kbps = (data[8] << 10 | data[9] << 2 | data[10] >> 6) * 2 / 5;  // of 400 bit/s
  }
  info.Aspect = info.AspectCode == 2 ? "4:3" : "16:9";
  switch (info.FrameRateCode) {
    case 1:
      info.Standard = "NTSC";
      info.FrameRate = FilmRate;
      break;
    case 3:
      info.Standard = "PAL";
      info.FrameRate = 25.0;
      break;
    case 4:
      info.Standard = "NTSC";
      info.FrameRate = 30.0;
      break;
    default:
      break;
  }
}

void TakeSequenceDisplay(ByteView data, VideoInfo& info) {
  const bool colourDescription = (data[4] & 1) != 0;
  const std::size_t at = colourDescription ? 8 : 5;
  if (info.Aspect == "4:3" && at + 1 < data.size()) {
    const int displayWidth = (data[at] << 6) | (data[at + 1] >> 2);
    info.PanScan = info.PanScan || displayWidth == PanScanDisplayWidth;
  }
}

void TakeGroup(ByteView data, VideoInfo& info) {
  if (data.size() < 8) {
    return;
  }
  // time_code: drop flag 1, hours 5, minutes 6, marker 1, seconds 6, pictures 6 (ISO/IEC 13818-2 6.2.2.6)
  const int hours = (data[4] >> 2) & 0x1F;
  const int minutes = ((data[4] & 3) << 4) | (data[5] >> 4);
  const int seconds = ((data[5] & 7) << 3) | (data[6] >> 5);
  const int pictures = ((data[6] & 0x1F) << 1) | (data[7] >> 7);
  const int rate = info.Standard == "PAL" ? 25 : 30;
  info.GroupTimeCode = fmt::format("{}", (hours * 3600 + minutes * 60 + seconds) * rate + pictures);
}

void TakePicture(ByteView data, VideoInfo& info) {
  ++info.PicturesSeen;
  // temporal_reference 10 bits, picture_coding_type 3, vbv_delay 16
  constexpr int Variable = 0xFFFF;
  const int delay = data.size() < 8 ? Variable : (data[5] & 7) << 13 | data[6] << 5 | data[7] >> 3;
  info.VariableRate = info.VariableRate || delay == Variable;
}

// The byte looked at holds f_code[1][1], intra_dc_precision and picture_structure, all of which are in use
// in every stream: in practice each stream at 23.976 raises the mark unless `pulldownHandled`.
void TakePictureCoding(ByteView data, bool pulldownHandled, VideoInfo& info) {
  if (info.FrameRate == FilmRate && !pulldownHandled && (data[6] >> 1) != 0) {
    info.NeedsPulldown = true;
  }
}

void Take(const FoundHeader& header, bool pulldownHandled, VideoInfo& info) {
  if (header.Word == headers::Sequence) {
    TakeSequence(header.Data, info);
  } else if (header.Word == headers::SequenceExtension && info.Coding != "NO") {
    info.Coding = "MPEG2";
    info.ChromaFormat = header.Data.size() > 5 ? (header.Data[5] >> 1) & 3 : info.ChromaFormat;
  } else if (header.Word == headers::SequenceDisplay) {
    TakeSequenceDisplay(header.Data, info);
  } else if (header.Word == headers::PictureDisplay) {
    info.PanScan = info.PanScan || info.Aspect == "4:3";
  } else if (header.Word == headers::PictureCoding) {
    TakePictureCoding(header.Data, pulldownHandled, info);
  } else if (header.Word == headers::Group) {
    TakeGroup(header.Data, info);
  } else if (header.Word == headers::Picture) {
    TakePicture(header.Data, info);
  }
}

// A still is classed by its height, not by its frame rate code.
void ClassStill(VideoInfo& info) {
  if (info.Standard == "PAL" && info.Height == FullHeight(true)) {
    info.Standard = "NTSC";
    info.FrameRate = 30.0;
  } else if (info.Standard == "NTSC" && info.Height == FullHeight(false)) {
    info.Standard = "PAL";
    info.FrameRate = 25.0;
  }
}

}  // namespace

VideoInfo ReadVideoInfo(Random& files, int slot, bool pulldownHandled, std::size_t blockBytes,
                        UserInterface* ui) {
  VideoInfo info;
  HeaderWalk walk(files, slot, {.BlockBytes = blockBytes, .Ui = ui});
  while (info.PicturesSeen < 2) {
    const auto header = walk.Next();
    if (!header) {
      break;
    }
    Take(*header, pulldownHandled, info);
  }
  if (info.PicturesSeen == 1) {
    ClassStill(info);
  }
  return info;
}

std::optional<VideoInfo> GetVideoInfo(const std::string& fileName, bool pulldownHandled, UserInterface& ui) {
  Random files(ui);
  files.DimFiles(0);
  try {
    if (!files.OpenSource(fileName, 0)) {
      return std::nullopt;
    }
    return ReadVideoInfo(files, 0, pulldownHandled, PlainBlockBytes, nullptr);
  } catch (const FileError& error) {
    ui.Tell(MessageOf(message::SourceReadFailed, fileName, error.OneLine()));
    return std::nullopt;
  }
}

}  // namespace quorvelant
