// The video files of a track as a run of coded pictures.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/bytes.h"
#include "base/message.h"
#include "mux/coded_picture.h"
#include "mux/mux_track.h"
#include "mux/source_window.h"
#include "mux/video_damage.h"

namespace quorvelant {

// One coded picture with all the headers before it: sequence header and extensions, GOP header, user
// data, the picture and what follows its slices up to the next such header.
struct PictureUnit : CodedPicture {
  std::uint64_t Offset = 0;  // of its first byte, counted through all files
  std::size_t UnitBytes = 0;
  bool SequenceHeader = false;  // it begins with one
  bool EndCode = false;         // a sequence end code is left in it
  bool LastOfFile = false;
  bool Cut = false;      // the file ends within it: it has fewer rows than others
  std::size_t File = 0;  // index in the track's video list
};

// Reads the files once, in large steps, and cuts them into units as far ahead as is asked for.
//
// On the way it makes what is read fit for the disc: sequence end codes are overwritten with zero bytes,
// but for the one after the last picture (when they are to be removed), and pictures that open no GOP get
// the vbv_delay of a variable bit rate.
class PictureSource {
 public:
  struct Options {
    bool Mpeg2 = true;           // field pictures and repeated fields are told by extensions
    int MostGopFields = 36;      // that players expect
    bool RemoveEndCodes = true;  // in the middle of the track
    bool EndEachFile = false;    // with a sequence end code: stills and slides stand alone
    // Makes a coded picture of a file that is a bitmap.
    std::function<Bytes(const MuxVideoFile&)> EncodeStill = {};
    // Takes what a player would not follow; it returns where the track goes on all the same.
    std::function<void(Message)> Refuse = {};
  };
  PictureSource(Random& files, const std::vector<MuxVideoFile>& list, Options options);

  // The unit `offset` places after the front one; null at the end of the track. May move the bytes.
  const PictureUnit* After(std::size_t offset);
  const PictureUnit* Front() { return After(0); }
  // The bytes of a unit that is not yet passed; they stay until After or Next is called.
  ByteView BytesOf(const PictureUnit& unit);
  // Passes the front unit.
  void Next();

  // All units were read. Then ScannedFields is the length of the track.
  bool AtEnd() const { return atEnd_; }
  std::int64_t ScannedFields() const { return scannedFields_; }
  // Where a unit stands, for messages: "file@byte".
  std::string PlaceOf(const PictureUnit& unit) const;
  // What was damaged in all that was read so far.
  const std::vector<DamageRecord>& Damage() const { return damage_.Records(); }

 private:
  bool ReadUnit();
  bool OpenNextFile();
  bool ReadMore();
  std::optional<std::uint64_t> NextStartCode();
  bool TakeStartCode(std::uint64_t at);
  void TakeSequenceHeader(std::uint64_t at);
  void CheckShape(std::uint64_t at);
  void TakePictureHeader(std::uint64_t at);
  void TakeExtension(std::uint64_t at);
  void TakeEndCode(std::uint64_t at);
  void EndUnit(std::uint64_t at);
  void RemoveEndCode();
  void EndFile();
  std::uint8_t ByteAt(std::uint64_t offset);
  void SetByte(std::uint64_t offset, unsigned value);
  std::string PlaceAt(std::size_t file, std::uint64_t offset) const;

  const std::vector<MuxVideoFile>* list_;
  Options options_;
  SourceFile file_;
  SlidingWindow window_;
  std::deque<PictureUnit> units_;

  std::uint64_t base_ = 0;                // offset of the window's first byte
  std::uint64_t end_ = 0;                 // after its last byte
  std::uint64_t scan_ = 0;                // where the search goes on
  std::size_t filesOpened_ = 0;           // the last of them is the one being read
  std::vector<std::uint64_t> fileStart_;  // offset of each file's first byte
  bool atEnd_ = false;
  std::int64_t scannedFields_ = 0;

  PictureUnit coming_;
  bool inUnit_ = false;         // a header of the coming unit was met
  bool pictureSeen_ = false;    // and its picture header
  bool extensionSeen_ = false;  // and its coding extension
  bool firstUnitOfFile_ = true;
  std::optional<std::uint64_t> endCode_;  // the latest sequence end code, not yet overwritten
  unsigned lastSlice_ = 0;                // macroblock row of the coming picture's latest slice, from 1
  unsigned codingType_ = 0;               // picture_coding_type of the coming picture as it stands
  VideoDamage damage_;
  unsigned lowestFrameSlice_ = 0;            // the greatest row met in frame pictures
  unsigned lowestFieldSlice_ = 0;            // and in field pictures
  unsigned shape_ = 0;                       // aspect and picture rate of the latest one, as coded
  std::size_t shapeFile_ = ~std::size_t{0};  // the file that it stands in
  std::uint32_t pictureSize_ = 0;            // width and height of the first sequence header
};

}  // namespace quorvelant
