#include "analysis/video_head.h"

#include "analysis/find_next_header.h"
#include "analysis/header_walk.h"
#include "analysis/messages.h"
#include "base/random.h"

namespace quorvelant {

namespace {

VideoHead Scan(HeaderWalk& walk) {
  constexpr int FramePicture = 3;
  VideoHead head;
  bool first = true;
  while (head.Fields < VideoHead::LongFields) {
    const auto header = walk.Next();
    if (!header) {
      break;
    }
    const bool sequence = header->Word == headers::Sequence;
    const bool group = header->Word == headers::Group;
    const bool picture = header->Word == headers::Picture;
    if (first && (sequence || group || picture)) {
      head.StartsWithSequence = sequence;
      first = false;
    }
    if (sequence && head.Fields > 0) {
      head.SequenceRepeats = true;
      break;
    }
    head.HasGroups = head.HasGroups || group;
    head.Fields += picture ? 2 : 0;
    if (header->Word == headers::PictureCoding && (header->Data[6] & 3) != FramePicture && head.Fields > 0) {
      --head.Fields;
    }
  }
  return head;
}

}  // namespace

std::optional<VideoHead> ScanVideoHead(const std::string& file, UserInterface& ui) {
  Random files(ui);
  files.DimFiles(0);
  try {
    if (!files.OpenSource(file, 0)) {
      return std::nullopt;
    }
    HeaderWalk walk(files, 0, {});
    return Scan(walk);
  } catch (const FileError& error) {
    ui.Tell(MessageOf(message::SourceReadFailed, file, error.OneLine()));
    return std::nullopt;
  }
}

}  // namespace quorvelant
