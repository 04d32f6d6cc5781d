#include "mux/picture_source.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "disc/start_code_search.h"
#include "disc/start_codes.h"
#include "mux/messages.h"
#include "mux/mux_fault.h"

namespace quorvelant {
namespace {

constexpr unsigned FramePicture = 3;     // picture_structure
constexpr std::size_t HeaderBytes = 12;  // as many of a header as anything here looks at

constexpr std::size_t ReadBytes = std::size_t{128} << 10;
constexpr std::size_t WindowBytes = std::size_t{2} << 20;
constexpr std::size_t MostUnitBytes = std::size_t{4} << 20;  // the player's buffer is 232 KiB
constexpr std::size_t MostWindowBytes = std::size_t{24} << 20;

// ISO/IEC 13818-2 tables 6-3 and 6-4.
std::string WordsOfShape(unsigned shape) {
  constexpr std::array<std::string_view, 5> Aspects{"", "square pixels", "4:3", "16:9", "2.21:1"};
  constexpr std::array<std::string_view, 9> Rates{"",   "23.976", "24",    "25", "29.97",
                                                  "30", "50",     "59.94", "60"};
  const unsigned aspect = shape >> 4U;
  const unsigned rate = shape & 0xFU;
  const bool known = aspect > 0 && aspect < Aspects.size() && rate > 0 && rate < Rates.size();
  return known ? fmt::format("{} with {} pictures a second", Aspects.at(aspect), Rates.at(rate))
               : fmt::format("the unknown codes {} and {}", aspect, rate);
}

}  // namespace

PictureSource::PictureSource(Random& files, const std::vector<MuxVideoFile>& list, Options options)
    : list_(&list),
      options_(std::move(options)),
      file_(files, 0),
      window_(WindowBytes),
      damage_(options_.Mpeg2, options_.MostGopFields) {
  if (std::ranges::any_of(list, [](const MuxVideoFile& file) { return file.Path.empty(); })) {
    throw MuxFault(message::MuxVideoUnnamed, {});
  }
}

const PictureUnit* PictureSource::After(std::size_t offset) {
  while (offset >= units_.size()) {
    if (!ReadUnit()) {
      return nullptr;
    }
  }
  return &units_[offset];
}

ByteView PictureSource::BytesOf(const PictureUnit& unit) {
  return window_.Held().subspan(static_cast<std::size_t>(unit.Offset - base_), unit.UnitBytes);
}

void PictureSource::Next() {
  units_.pop_front();
  const std::uint64_t keep = !units_.empty() ? units_.front().Offset : inUnit_ ? coming_.Offset : scan_;
  window_.Drop(static_cast<std::size_t>(keep - base_));
  base_ = keep;
}

std::string PictureSource::PlaceAt(std::size_t file, std::uint64_t offset) const {
  return fmt::format("{}@{}", (*list_)[file].Path, offset - fileStart_[file]);
}

std::string PictureSource::PlaceOf(const PictureUnit& unit) const {
  return PlaceAt(unit.File, unit.Offset);
}

bool PictureSource::OpenNextFile() {
  if (filesOpened_ == list_->size()) {
    return false;
  }
  const MuxVideoFile& file = (*list_)[filesOpened_];
  if (file.ImageSource) {
    file_.OpenMade(file.Path, options_.EncodeStill(file));
  } else {
    file_.Open(file.Path, 0, SourceFile::WholeFile);
  }
  ++filesOpened_;
  fileStart_.push_back(end_);
  scan_ = end_;
  firstUnitOfFile_ = true;
  inUnit_ = false;
  return true;
}

// False at the end of the file.
bool PictureSource::ReadMore() {
  if (file_.Left() == 0) {
    return false;
  }
  if (!inUnit_ && units_.empty()) {
    window_.Drop(static_cast<std::size_t>(scan_ - base_));
    base_ = scan_;
  }
  if ((inUnit_ && end_ - coming_.Offset > MostUnitBytes) || window_.HeldBytes() > MostWindowBytes) {
    throw MuxFault(message::PictureTooLong, PlaceAt(filesOpened_ - 1, inUnit_ ? coming_.Offset : scan_),
                   (*list_)[filesOpened_ - 1].Path, MostUnitBytes);
  }
  const std::size_t got = file_.Read(window_.Room(ReadBytes).first(ReadBytes));
  window_.Added(got);
  end_ += got;
  return true;
}

// The offset of the next start code at or after the scan position, its header in the window.
std::optional<std::uint64_t> PictureSource::NextStartCode() {
  for (;;) {
    const std::size_t at = FindStartCode(window_.Held(), static_cast<std::size_t>(scan_ - base_));
    const bool found = at != NoStartCode;
    if (found && at + HeaderBytes <= window_.HeldBytes()) {
      return base_ + at;
    }
    // A prefix may stand across the end of what is held.
    scan_ = found ? base_ + at : std::max(scan_, end_ - std::min<std::uint64_t>(2, end_ - base_));
    if (!ReadMore()) {
      const bool whole = found && at + StartCodeBytes <= window_.HeldBytes();
      return whole ? std::optional(base_ + at) : std::nullopt;
    }
  }
}

// Bytes past the end of a cut file read as zero.
std::uint8_t PictureSource::ByteAt(std::uint64_t offset) {
  return offset < end_ ? window_.Held()[static_cast<std::size_t>(offset - base_)] : std::uint8_t{0};
}

void PictureSource::SetByte(std::uint64_t offset, unsigned value) {
  window_.Held()[static_cast<std::size_t>(offset - base_)] = static_cast<std::uint8_t>(value);
}

// Reads on to the end of the coming unit; false at the end of the track.
bool PictureSource::ReadUnit() {
  if (atEnd_) {
    return false;
  }
  const std::size_t before = units_.size();
  while (units_.size() == before) {
    if (filesOpened_ == 0 && !OpenNextFile()) {
      atEnd_ = true;
      return false;
    }
    if (const auto at = NextStartCode()) {
      scan_ = TakeStartCode(*at) ? *at : *at + StartCodeBytes;
      continue;
    }
    if (firstUnitOfFile_ && !pictureSeen_) {
      const std::string& path = (*list_)[filesOpened_ - 1].Path;
      throw MuxFault(message::CodedPictureMissing, path, path);
    }
    if (pictureSeen_) {
      EndFile();
      EndUnit(end_);
      units_.back().LastOfFile = true;
    }
    damage_.EndFile();
    atEnd_ = !OpenNextFile();
    if (atEnd_) {
      file_.Close();
      return units_.size() > before;
    }
  }
  return true;
}

// True when the code ends the coming unit and begins another: it is to be taken once more.
bool PictureSource::TakeStartCode(std::uint64_t at) {
  const std::uint8_t code = ByteAt(at + 3);
  if (start_code::IsSlice(code)) {
    lastSlice_ = code;
    damage_.Slice(code);
    return false;
  }
  const bool header =
      code == start_code::Sequence || code == start_code::Group || code == start_code::Picture;
  if (header && pictureSeen_) {
    EndUnit(at);
    return true;
  }
  if (header && !inUnit_ && firstUnitOfFile_ && code != start_code::Sequence) {
    if (code == start_code::Picture) {
      throw MuxFault(message::SequenceHeaderMissing, PlaceAt(filesOpened_ - 1, at),
                     (*list_)[filesOpened_ - 1].Path);
    }
    return false;
  }
  if (header && !inUnit_) {
    inUnit_ = true;
    coming_ = {};
    coming_.Offset = at;
    coming_.File = filesOpened_ - 1;
    coming_.SequenceHeader = code == start_code::Sequence;
  }
  if (code == start_code::Sequence) {
    TakeSequenceHeader(at);
  } else if (code == start_code::Group) {
    damage_.Group(coming_.File, at - fileStart_[coming_.File]);
  } else if (code == start_code::Picture) {
    TakePictureHeader(at);
  } else if (code == start_code::Extension) {
    TakeExtension(at);
  } else if (code == start_code::SequenceEnd) {
    TakeEndCode(at);
  }
  return false;
}

void PictureSource::TakeSequenceHeader(std::uint64_t at) {
  const auto size = static_cast<std::uint32_t>(ByteAt(at + 4) << 16 | ByteAt(at + 5) << 8 | ByteAt(at + 6));
  if (pictureSize_ != 0 && size != pictureSize_) {
    throw MuxFault(message::PictureSizeChanges, PlaceAt(coming_.File, at), pictureSize_ >> 12,
                   pictureSize_ & 0xFFF, size >> 12, size & 0xFFF, (*list_)[coming_.File].Path);
  }
  pictureSize_ = size;
  damage_.Height(static_cast<int>(size & 0xFFFU));
  CheckShape(at);
}

// aspect_ratio_information (4 bits), frame_rate_code (4). Files that differ were judged before.
void PictureSource::CheckShape(std::uint64_t at) {
  const unsigned shape = ByteAt(at + 7);
  if (coming_.File == shapeFile_ && shape != shape_ && options_.Refuse) {
    options_.Refuse(MessageOf(message::SequenceChanges, PlaceAt(coming_.File, at),
                              (*list_)[coming_.File].Path, at - fileStart_[coming_.File],
                              WordsOfShape(shape_), WordsOfShape(shape)));
  }
  shape_ = shape;
  shapeFile_ = coming_.File;
}

// temporal_reference (10 bits), picture_coding_type (3), vbv_delay (16).
void PictureSource::TakePictureHeader(std::uint64_t at) {
  pictureSeen_ = true;
  extensionSeen_ = false;
  lastSlice_ = 0;
  coming_.TemporalReference = ByteAt(at + 4) << 2 | ByteAt(at + 5) >> 6;
  const int type = (ByteAt(at + 5) >> 3) & 7;
  // A type that the format does not know is damage; it is carried as what it least disturbs.
  codingType_ = static_cast<unsigned>(type);
  coming_.Type = type == 1 ? PictureType::I : type == 3 ? PictureType::B : PictureType::P;
  if (scannedFields_ == 0 && coming_.Type != PictureType::I) {
    throw MuxFault(message::FirstPictureNotIntra, PlaceAt(coming_.File, at), (*list_)[coming_.File].Path);
  }
  if (at == coming_.Offset && at + 7 < end_) {
    SetByte(at + 5, ByteAt(at + 5) | 0x07U);
    SetByte(at + 6, 0xFF);
    SetByte(at + 7, ByteAt(at + 7) | 0xF8U);
  }
}

void PictureSource::TakeExtension(std::uint64_t at) {
  const unsigned id = ByteAt(at + 4) >> 4;
  if (!options_.Mpeg2 || !pictureSeen_ || extensionSeen_ || id != extension_id::PictureCoding) {
    return;
  }
  extensionSeen_ = true;
  coming_.LengthFields = (ByteAt(at + 6) & 3U) == FramePicture ? 2 : 1;
  coming_.RepeatFields = (ByteAt(at + 7) >> 1) & 1;
}

void PictureSource::TakeEndCode(std::uint64_t at) {
  RemoveEndCode();
  if (inUnit_ || !units_.empty()) {
    endCode_ = at;
  }
}

// Overwrites the end code met last: it turned out to stand in the middle of the track.
void PictureSource::RemoveEndCode() {
  if (endCode_ && options_.RemoveEndCodes) {
    SetByte(*endCode_ + 2, 0);
    SetByte(*endCode_ + 3, 0);
    endCode_.reset();
  }
}

// Gives the last picture of a file its end code, where it has none of its own.
void PictureSource::EndFile() {
  constexpr std::array<std::uint8_t, StartCodeBytes> EndCode{0, 0, 1, start_code::SequenceEnd};
  if (options_.EndEachFile && !endCode_) {
    endCode_ = end_;
    std::ranges::copy(EndCode, window_.Room(EndCode.size()).begin());
    window_.Added(EndCode.size());
    end_ += EndCode.size();
  }
}

void PictureSource::EndUnit(std::uint64_t at) {
  const bool fileGoesOn = at != end_ || file_.Left() > 0;
  const bool trackGoesOn = fileGoesOn || filesOpened_ < list_->size();
  if (options_.EndEachFile ? fileGoesOn : trackGoesOn) {
    RemoveEndCode();
  }
  coming_.UnitBytes = static_cast<std::size_t>(at - coming_.Offset);
  coming_.EndCode = endCode_.has_value();
  unsigned& lowest = coming_.IsField() ? lowestFieldSlice_ : lowestFrameSlice_;
  coming_.Cut = at == end_ && file_.Left() == 0 && lastSlice_ < lowest;
  lowest = std::max(lowest, lastSlice_);
  damage_.EndPicture(coming_.File, coming_.Offset - fileStart_[coming_.File],
                     {.CodingType = codingType_,
                      .TemporalReference = coming_.TemporalReference,
                      .IsField = coming_.IsField(),
                      .ShownFields = coming_.ShownFields(),
                      .OpensSequence = coming_.SequenceHeader,
                      .Cut = coming_.Cut});
  endCode_.reset();
  scannedFields_ += coming_.ShownFields();
  units_.push_back(coming_);
  inUnit_ = false;
  pictureSeen_ = false;
  firstUnitOfFile_ = false;
}

}  // namespace quorvelant
