#include "analysis/video_probe.h"

#include <algorithm>

#include "analysis/find_next_header.h"
#include "analysis/header_walk.h"
#include "analysis/messages.h"

namespace quorvelant {

namespace {

constexpr int FramePictureStructure = 3;

// Bytes over the time they are shown for, in a window of about a second; and those of them that the greatest
// rate of a disc has not brought by then.
class RateMeter {
 public:
  explicit RateMeter(double fieldsPerSecond) : fieldsPerSecond_(fieldsPerSecond) {}

  void Add(std::uint64_t bytes, std::int64_t fields) {
    backlog_ += static_cast<double>(bytes) * 8;
    mostBacklog_ = std::max(mostBacklog_, backlog_);
    backlog_ = std::max(0.0, backlog_ - static_cast<double>(fields) * MostVideoBitRate / fieldsPerSecond_);
    pictures_.push_back({bytes, fields});
    bytes_ += bytes;
    fields_ += fields;
    while (static_cast<double>(fields_ - pictures_.front().Fields) >= fieldsPerSecond_ - 1) {
      bytes_ -= pictures_.front().Bytes;
      fields_ -= pictures_.front().Fields;
      pictures_.pop_front();
    }
    if (static_cast<double>(fields_) >= fieldsPerSecond_ - 1) {
      peak_ =
          std::max(peak_, static_cast<double>(bytes_) * 8 * fieldsPerSecond_ / static_cast<double>(fields_));
    }
  }
  double Peak() const { return peak_; }
  double MostBacklog() const { return mostBacklog_; }

 private:
  struct Picture {
    std::uint64_t Bytes;
    std::int64_t Fields;
  };
  double fieldsPerSecond_;
  std::deque<Picture> pictures_;
  std::uint64_t bytes_ = 0;
  std::int64_t fields_ = 0;
  double peak_ = 0;
  double backlog_ = 0;  // bits
  double mostBacklog_ = 0;
};

// The running values of the walk.
class Walker {
 public:
  Walker(VideoProbe& probe, double fieldsPerSecond) : probe_(&probe), rate_(fieldsPerSecond) {}

  void Take(const FoundHeader& header);
  void Finish(std::uint64_t fileBytes);

 private:
  void TakeSequence(const FoundHeader& header);
  void TakeSequenceExtension(ByteView data);
  void TakePicture(const FoundHeader& header);
  void TakePictureCoding(ByteView data);
  void ClosePicture(std::uint64_t end);
  void CloseGroup();

  VideoProbe* probe_;
  RateMeter rate_;
  bool inPicture_ = false;
  std::uint64_t pictureStart_ = 0;  // with the headers before the picture
  bool headersAhead_ = false;       // a sequence or group header was seen since the last picture
  std::uint64_t headersStart_ = 0;
  std::int64_t pictureFields_ = 0;
  std::int64_t framesAtGroup_ = 0;
  std::int64_t fieldsAtGroup_ = 0;
  bool inGroup_ = false;
  bool groupIsNew_ = false;  // its first picture is to come
};

void Walker::Take(const FoundHeader& header) {
  if (header.Word == headers::Sequence || header.Word == headers::Group) {
    ClosePicture(header.Offset);
    if (!headersAhead_) {
      headersStart_ = header.Offset;
      headersAhead_ = true;
    }
  }
  if (header.Word == headers::Sequence) {
    TakeSequence(header);
  } else if (header.Word == headers::SequenceExtension) {
    TakeSequenceExtension(header.Data);
  } else if (header.Word == headers::Group && header.Data.size() > 7) {
    CloseGroup();
    inGroup_ = true;
    groupIsNew_ = true;
    ++probe_->Groups;
    probe_->ClosedGroups += (header.Data[7] >> 6) & 1;
  } else if (header.Word == headers::Picture) {
    TakePicture(header);
  } else if (header.Word == headers::PictureCoding) {
    TakePictureCoding(header.Data);
  }
}

void Walker::TakeSequence(const FoundHeader& header) {
  ++probe_->Sequences;
  if (probe_->Sequences == 1 && header.Data.size() > 10) {
    constexpr std::int64_t Open = 0x3FFFF;
    const auto units = static_cast<std::int64_t>(GetBytes(header.Data, 8, 3) >> 6);
    probe_->DeclaredBitRate = units == Open ? 0 : units * 400;
  }
}

void Walker::TakeSequenceExtension(ByteView data) {
  probe_->Profile = ((data[4] & 0xF) << 4) | (data[5] >> 4);
  probe_->ProgressiveSequence = (data[5] & 8) != 0;
}

void Walker::TakePicture(const FoundHeader& header) {
  ClosePicture(header.Offset);
  inPicture_ = true;
  pictureStart_ = headersAhead_ ? headersStart_ : header.Offset;
  headersAhead_ = false;
  pictureFields_ = 2;
  if (groupIsNew_ && header.Data.size() > 5) {
    const int temporalReference = (header.Data[4] << 2) | (header.Data[5] >> 6);
    probe_->GroupsLedByB += temporalReference > 0 ? 1 : 0;
    groupIsNew_ = false;
  }
  ++probe_->PictureHeaders;
  switch (GetPictureType(header.Data, 1)) {
    case 1:
      ++probe_->IPictures;
      break;
    case 2:
      ++probe_->PPictures;
      break;
    case 3:
      ++probe_->BPictures;
      break;
    default:
      break;
  }
}

void Walker::TakePictureCoding(ByteView data) {
  if (!inPicture_) {
    return;
  }
  if ((data[6] & 3) != FramePictureStructure) {
    ++probe_->FieldPictures;
    pictureFields_ = 1;
  }
  if ((data[7] & 2) != 0) {
    ++probe_->RepeatFlags;
    ++pictureFields_;
  }
  probe_->ProgressiveFrames += data[8] >> 7;
}

void Walker::ClosePicture(std::uint64_t end) {
  if (inPicture_) {
    probe_->DisplayedFields += pictureFields_;
    rate_.Add(end - pictureStart_, pictureFields_);
    inPicture_ = false;
  }
}

void Walker::CloseGroup() {
  if (inGroup_) {
    ++probe_->GroupLengths[probe_->Frames() - framesAtGroup_];
    probe_->LongestGroupFields =
        std::max(probe_->LongestGroupFields, probe_->DisplayedFields - fieldsAtGroup_);
  }
  framesAtGroup_ = probe_->Frames();
  fieldsAtGroup_ = probe_->DisplayedFields;
}

void Walker::Finish(std::uint64_t fileBytes) {
  ClosePicture(fileBytes);
  CloseGroup();
  const double seconds = probe_->Seconds();
  probe_->MeanBitRate = seconds > 0 ? static_cast<double>(fileBytes) * 8 / seconds : 0;
  probe_->PeakBacklogBits = rate_.MostBacklog();
  probe_->PeakBitRate = std::max(rate_.Peak(), probe_->MeanBitRate);
}

}  // namespace

double VideoProbe::ExactFrameRate() const {
  if (Info.FrameRate == 30) {
    return 30000.0 / 1001;
  }
  return Info.FrameRate == 23.976 ? 24000.0 / 1001 : Info.FrameRate;
}

double VideoProbe::Seconds() const {
  return Info.FrameRate > 0 ? static_cast<double>(DisplayedFields) / 2 / ExactFrameRate() : 0;
}

std::optional<VideoProbe> ProbeVideo(const std::string& file, UserInterface& ui) {
  Random files(ui);
  files.DimFiles(0);
  try {
    if (!files.OpenSource(file, 0)) {
      return std::nullopt;
    }
    VideoProbe probe;
    probe.Info = ReadVideoInfo(files, 0, false, FastBlockBytes, &ui);
    probe.FileBytes = files.FileBytes(0);
    Walker walker(probe, 2 * std::max(probe.ExactFrameRate(), 1.0));
    HeaderWalk walk(files, 0, {.Ui = &ui});
    bool first = true;
    while (const auto header = walk.Next()) {
      probe.StartsWithSequence = first ? header->Word == headers::Sequence : probe.StartsWithSequence;
      first = false;
      walker.Take(*header);
    }
    if (walk.Stopped()) {
      return std::nullopt;
    }
    walker.Finish(probe.FileBytes);
    return probe;
  } catch (const FileError& error) {
    ui.Tell(MessageOf(message::SourceReadFailed, file, error.OneLine()));
    return std::nullopt;
  }
}

}  // namespace quorvelant
