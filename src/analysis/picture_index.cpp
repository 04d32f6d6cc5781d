#include "analysis/picture_index.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <iterator>
#include <limits>
#include <system_error>
#include <utility>

#include "analysis/find_next_header.h"
#include "analysis/header_walk.h"
#include "analysis/messages.h"
#include "base/file_text.h"
#include "base/text.h"
#include "disc/start_codes.h"

namespace quorvelant {

namespace {

constexpr std::string_view TooManyLine = "'{}' holds more pictures than a disc can: it is no video stream.";

// 25 hours of I pictures alone at 30 frames a second. More is no video, and would fill the memory.
constexpr std::size_t MostPictures = 2'700'000;
// A line has 48 bytes at most and stands for two pictures.
constexpr std::uint64_t MostIndexBytes = std::uint64_t{24} * MostPictures;

constexpr std::string_view FrameKey = "frame=";
constexpr std::string_view OffsetKey = "offset=";
constexpr std::string_view SizeKey = "size=";
constexpr std::string_view TotalKey = "totalframes=";

// The running values of a walk over all pictures.
struct Counter {
  PictureIndex Index;
  std::int64_t Fields = 0;  // displayed so far, a repeated one included
  std::int64_t PicturesSinceSequence = 0;
  std::uint64_t SequenceOffset = 0;
  std::int64_t FieldsAtSequence = 0;

  void Take(const FoundHeader& header, bool wantLetters);
  bool TooMany() const {
    return Index.Entries.size() > MostPictures || Index.Letters.size() > 2 * MostPictures;
  }
};

void Counter::Take(const FoundHeader& header, bool wantLetters) {
  constexpr unsigned FrameStructure = 3;    // picture_structure, ISO/IEC 13818-2 6.2.3.1; else a field
  constexpr unsigned RepeatFirstField = 2;  // of the flags' byte
  if (header.Word == headers::Sequence) {
    SequenceOffset = header.Offset;
    PicturesSinceSequence = 0;
    FieldsAtSequence = Fields;
  } else if (header.Word == headers::Picture) {
    Fields += 2;
    if (++PicturesSinceSequence == 2) {
      Index.Entries.push_back({FieldsAtSequence / 2, SequenceOffset, header.Offset - SequenceOffset});
    }
    if (wantLetters) {
      Index.Letters += PictureLetter(header.PictureType);
    }
  } else if (header.Word == headers::PictureCoding) {
    Fields -= (header.Data[6] & FrameStructure) != FrameStructure ? 1 : 0;
    if ((header.Data[7] & RepeatFirstField) != 0) {
      Fields += 1;
      Index.Letters += wantLetters ? "R" : "";
    }
  }
}

// The number after `key` in `piece` (lower case); 0 where there is none.
template <class Value>
void TakeNumber(std::string_view piece, std::string_view key, Value& value) {
  const std::size_t at = piece.find(key);
  if (at != std::string_view::npos) {
    const std::string_view digits = Trim(piece.substr(at + key.size()));
    std::from_chars(digits.data(), digits.data() + digits.size(), value);
  }
}

// A frame count that a project can hold, whatever the text says.
std::int64_t HeldFrame(std::int64_t frame) {
  return std::clamp<std::int64_t>(frame, 0, std::numeric_limits<std::int32_t>::max());
}

bool TellFailure(UserInterface& ui, const FileError& error, const std::string& file) {
  ui.Tell(MessageOf(message::IndexReadFailed, file, error.OneLine()));
  return false;
}

// Whether a sequence header stands where the index has one.
bool HasHeaderAt(Random& files, std::uint64_t offset) {
  constexpr std::uint32_t SequenceCode = 0x000001B3;
  files.SeekAbsolute(offset, 0);
  return GetBytes(files.ReadBytes(StartCodeBytes, 0), 0, StartCodeBytes) == SequenceCode;
}

// Why an index is not that of its file; empty where it may be.
std::string_view WhyStale(const std::string& file, const PictureIndex& index, UserInterface& ui) {
  if (IndexIsOlder(file)) {
    return IndexWrittenBefore;
  }
  if (index.Entries.empty()) {
    return index.TotalFrames == 0 ? "it holds nothing" : "";
  }
  Random files(ui);
  files.DimFiles(0);
  try {
    if (!files.OpenSource(file, 0)) {
      return {};
    }
    const PictureIndex::Entry& last = index.Entries.back();
    if (last.Offset + last.Size > files.FileBytes(0)) {
      return "the file is shorter than it says";
    }
    const bool fits = HasHeaderAt(files, index.Entries.front().Offset) && HasHeaderAt(files, last.Offset);
    return fits ? "" : "no sequence header stands where it says";
  } catch (const FileError&) {
    return {};  // told by whoever reads the file
  }
}

std::string LettersText(const PictureIndex& index) {
  return index.Letters + "\r\n";
}

bool WriteCached(const PictureIndex& index, const std::string& name, bool wantLetters) {
  std::error_code failed;
  std::filesystem::path path(name);
  return !name.empty() && (std::filesystem::create_directories(path.parent_path(), failed), !failed) &&
         WriteAside(name, WritePictureIndex(index)) == 0 &&
         (!wantLetters || WriteAside(path.replace_extension(".gpi"), LettersText(index)) == 0);
}

// Whether the index was written after the file; also where there is no index.
bool IsCurrent(const std::string& index, const std::string& file) {
  std::error_code missing;
  const auto source = std::filesystem::last_write_time(file, missing);
  const auto written = std::filesystem::last_write_time(index, missing);
  return missing || written >= source;
}

// Scans `file` and leaves its index on disk or in the store. False when the run ends here.
bool IndexFile(const std::string& file, bool wantLetters, IndexStore& store, UserInterface& ui,
               FileIndex& result) {
  Random files(ui);
  files.DimFiles(0);
  try {
    if (!files.OpenSource(file, 0)) {
      return false;
    }
    auto index = ScanPictures(files, 0, {.WantLetters = wantLetters}, ui);
    if (!index) {
      return false;
    }
    result.Index = *std::move(index);
  } catch (const FileError& error) {
    return TellFailure(ui, error, file);
  }
  if (store.InMemory()) {
    result.State = IndexState::KeptInMemory;
    store.Keep(file, result.Index);
    if (store.WritesCache()) {  // without it the next run looks through the file again
      static_cast<void>(WriteCached(result.Index, store.CachedName(file), wantLetters));
    }
    return true;
  }
  result.Path = IndexName(file);
  int refusal = WriteAside(result.Path, WritePictureIndex(result.Index));
  if (refusal != 0 && WriteCached(result.Index, store.CachedName(file), wantLetters)) {
    result.Path = store.CachedName(file);
    result.State = IndexState::Built;
    return true;
  }
  if (refusal == 0 && wantLetters) {
    refusal = WriteAside(LettersName(file), LettersText(result.Index));
  }
  result.State = refusal == 0 ? IndexState::Built : IndexState::KeptInMemory;
  result.Path = refusal == 0 ? result.Path : std::string();
  if (refusal != 0 && store.Keep(file, result.Index)) {
    ui.Tell(MessageOf(message::IndexKeptInMemory, file, file, std::generic_category().message(refusal)));
  }
  return true;
}

}  // namespace

std::string IndexName(const std::string& file) {
  return file + ".qvi";
}

std::string LettersName(const std::string& file) {
  return file + ".gpi";
}

std::string WritePictureIndex(const PictureIndex& index) {
  std::string text;
  for (const PictureIndex::Entry& entry : index.Entries) {
    fmt::format_to(std::back_inserter(text), "Frame={};Offset={};Size={}\r\n", entry.Frame, entry.Offset,
                   entry.Size);
  }
  fmt::format_to(std::back_inserter(text), "TotalFrames={}\r\n", index.TotalFrames);
  return text;
}

PictureIndex ReadPictureIndex(std::string_view text) {
  PictureIndex index;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    const std::string line = Lower(text.substr(0, end));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (Contains(line, TotalKey)) {
      TakeNumber(line, TotalKey, index.TotalFrames);
      break;
    }
    if (!Contains(line, FrameKey)) {
      continue;
    }
    PictureIndex::Entry entry;
    for (const std::string_view piece : Split(line, ";")) {
      TakeNumber(piece, FrameKey, entry.Frame);
      TakeNumber(piece, OffsetKey, entry.Offset);
      TakeNumber(piece, SizeKey, entry.Size);
    }
    entry.Frame = HeldFrame(entry.Frame);
    index.Entries.push_back(entry);
  }
  index.TotalFrames = HeldFrame(index.TotalFrames);
  return index;
}

std::optional<PictureIndex> ScanPictures(Random& files, int slot, const IndexOptions& options,
                                         UserInterface& ui) {
  HeaderWalk walk(files, slot,
                  {.BlockBytes = options.BlockBytes != 0 ? options.BlockBytes : FastBlockBytes,
                   .SkipNonPictureHeaders = true,
                   .WantPictureType = options.WantLetters,
                   .Ui = &ui});
  Counter counter;
  while (const auto header = walk.Next()) {
    counter.Take(*header, options.WantLetters);
    if (counter.TooMany()) {
      throw FileError(FileError::UnknownNumber, fmt::format(TooManyLine, files.FileName(slot)));
    }
  }
  if (walk.Stopped()) {
    return std::nullopt;
  }
  PictureIndex& index = counter.Index;
  index.TotalFrames = counter.Fields / 2;
  if (index.TotalFrames == 1) {  // a single picture never reaches a second picture header
    index.Entries.push_back({0, 0, walk.FileBytes()});
  }
  return std::move(index);
}

// A hash of the whole path (FNV-1a) keeps files of one name apart.
std::string IndexStore::CachedName(const std::string& file) const {
  if (cacheFolder_.empty()) {
    return {};
  }
  std::error_code failed;
  const std::filesystem::path path = std::filesystem::absolute(file, failed).lexically_normal();
  std::uint64_t hash = 0xCBF29CE484222325;
  for (const char letter : path.string()) {
    hash = (hash ^ static_cast<std::uint8_t>(letter)) * 0x100000001B3;
  }
  return fmt::format("{}/{:016x}-{}.qvi", cacheFolder_, hash, path.filename().string());
}

const PictureIndex* IndexStore::Find(const std::string& file) const {
  const auto found = kept_.find(file);
  return found == kept_.end() ? nullptr : &found->second;
}

bool IndexStore::Keep(const std::string& file, PictureIndex index) {
  const bool first = kept_.empty();
  kept_.insert_or_assign(file, std::move(index));
  return first;
}

std::optional<PictureIndex> FindPictureIndex(const std::string& file, const IndexStore& store) {
  if (const PictureIndex* kept = store.Find(file)) {
    return *kept;
  }
  auto text = ReadWhole(IndexName(file), MostIndexBytes);
  if (const std::string cached = store.CachedName(file);
      !text && !cached.empty() && IsCurrent(cached, file)) {
    text = ReadWhole(cached, MostIndexBytes);
  }
  return text ? std::optional(ReadPictureIndex(*text)) : std::nullopt;
}

bool IndexIsOlder(const std::string& file) {
  return !IsCurrent(IndexName(file), file);
}

IndexRun BuildPictureIndex(const std::vector<IndexSource>& files, const std::string& groupFile,
                           IndexStore& store, UserInterface& ui, bool force) {
  IndexRun run;
  const auto found = [&](const std::string& file) {
    return force ? std::nullopt : FindPictureIndex(file, store);
  };
  for (const IndexSource& source : files) {
    FileIndex result{source.Name, IndexState::NotIndexed, {}};
    const bool hasOne = !source.Name.empty() && !source.IsImage;
    auto reused = hasOne ? found(source.Name) : std::nullopt;  // read once: a second look may not find it
    const bool own = hasOne && !reused;
    const bool group = !groupFile.empty() && !found(groupFile);
    if (own || group) {
      result.Name = groupFile.empty() ? source.Name : groupFile;
      if (!IndexFile(result.Name, !groupFile.empty(), store, ui, result)) {
        return run;
      }
    } else if (reused) {
      result.State = IndexState::Reused;
      result.Index = *std::move(reused);
      const std::string_view stale = WhyStale(source.Name, result.Index, ui);
      if (!stale.empty()) {
        ui.Tell(MessageOf(message::IndexNotCurrent, source.Name, IndexName(source.Name), stale));
      }
    }
    run.Files.push_back(std::move(result));
    if ((own || group) && !groupFile.empty()) {
      break;  // one call indexes one group file
    }
  }
  run.Complete = true;
  return run;
}

}  // namespace quorvelant
