#include "mux/vob_output.h"

#include <fmt/format.h>

#include <algorithm>
#include <system_error>
#include <utility>

#include "disc/disc_files.h"
#include "mux/messages.h"
#include "mux/mux_fault.h"

namespace quorvelant {
namespace {

constexpr std::string_view OpenLine = "Error opening '{}'.";
constexpr std::string_view ThreadLine = "No thread could be started to write '{}'.";

}  // namespace

VobOutput::VobOutput(Random& files, VobFiles names, bool dryRun, std::uint32_t splitSectors)
    : files_(&files), names_(std::move(names)), dryRun_(dryRun), splitSectors_(splitSectors) {
  buffers_[0].resize(SectorBytes * (dryRun ? 1 : BufferSectors));
}

VobOutput::~VobOutput() {
  StopWriter();
  if (openNumber_ != 0) {
    files_->AbandonFile(slot::Output);
  }
}

std::string VobOutput::NameOf(int fileNumber) const {
  return names_.OneFile ? names_.Name : fmt::format("{}_{}.VOB", names_.Name, fileNumber);
}

ByteSpan VobOutput::NextSector() {
  if (fileSectors_ == splitSectors_) {
    StartNextFile();
  }
  if (dryRun_) {
    filled_ = 0;
  } else if (filled_ == BufferSectors) {
    Submit();
  }
  if (filled_ == 0) {
    fillingFrom_ = fileSectors_;
    fillingFromTotal_ = totalSectors_;
  }
  ++totalSectors_;
  ++fileSectors_;
  return ByteSpan(Filling()).subspan(SectorBytes * filled_++, SectorBytes);
}

void VobOutput::StartNextFile() {
  if (names_.OneFile) {
    throw MuxFault(message::MenuFull, NameOf(1));
  }
  if (fileNumber_ == MostTitleVobs) {
    throw MuxFault(message::TitleSetFull, NameOf(fileNumber_), MostTitleVobs);
  }
  Submit();
  CloseOpen();
  ++fileNumber_;
  fileSectors_ = 0;
}

// Hands the filled buffer to the writing thread and takes the next one, once that is written.
void VobOutput::Submit() {
  if (dryRun_ || filled_ == 0) {
    return;
  }
  if (openNumber_ != fileNumber_) {
    OpenForWriting(fileNumber_, fillingFrom_ == 0);
  }
  if (!writer_.joinable()) {
    StartWriter();
  }
  {
    const std::scoped_lock lock(mutex_);
    jobs_[submitted_ % BufferCount] = {ByteView(Filling()).first(SectorBytes * filled_), fillingFrom_};
    ++given_;
  }
  changed_.notify_all();
  ++submitted_;
  filled_ = 0;
  WaitForWriter(BufferCount - 1);
  Filling().resize(SectorBytes * BufferSectors);
}

void VobOutput::StartWriter() {
  try {
    writer_ = std::thread([this] { WriterLoop(); });
  } catch (const std::system_error& refused) {
    throw FileError(FileError::UnknownNumber, fmt::format(ThreadLine, NameOf(fileNumber_)),
                    refused.code().value());
  }
}

void VobOutput::WaitForWriter(std::size_t open) {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [&] { return given_ - written_ <= open; });
  if (fault_) {
    std::rethrow_exception(std::exchange(fault_, nullptr));
  }
}

void VobOutput::WriterLoop() {
  std::unique_lock lock(mutex_);
  for (;;) {
    changed_.wait(lock, [this] { return given_ > written_ || quit_; });
    if (given_ == written_) {
      return;
    }
    const Job job = jobs_[written_ % BufferCount];
    const bool spoilt = fault_ != nullptr;  // told by the next call; nothing more is written until then
    lock.unlock();
    std::exception_ptr fault;
    try {
      if (!spoilt) {
        WriteAt(job.FileSector, job.Sectors);
      }
    } catch (...) {
      fault = std::current_exception();
    }
    lock.lock();
    fault_ = fault ? fault : fault_;
    ++written_;
    changed_.notify_all();
  }
}

void VobOutput::StopWriter() {
  if (!writer_.joinable()) {
    return;
  }
  {
    const std::scoped_lock lock(mutex_);
    quit_ = true;
  }
  changed_.notify_all();
  writer_.join();
  quit_ = false;
}

void VobOutput::WriteAt(std::uint32_t fileSector, ByteView bytes) {
  if (fileSector == 0) {
    files_->SeekAbsolute(0, slot::Output);
  }
  files_->WriteBytes(bytes, std::uint64_t{fileSector} * SectorBytes);
}

void VobOutput::OpenForWriting(int fileNumber, bool fresh) {
  CloseOpen();
  const std::string name = NameOf(fileNumber);
  const bool open = fresh ? files_->CreateFile(name, slot::Output) : files_->OpenFile(name, slot::Output);
  if (!open) {
    throw FileError(FileError::OpenNumber, fmt::format(OpenLine, name));
  }
  openNumber_ = fileNumber;
}

void VobOutput::CloseOpen() {
  if (openNumber_ == 0) {
    return;
  }
  WaitForWriter();
  files_->CloseFile(slot::Output);
  openNumber_ = 0;
}

void VobOutput::Rewrite(std::uint32_t sector, ByteView bytes) {
  if (dryRun_) {
    return;
  }
  if (filled_ > 0 && sector >= fillingFromTotal_) {
    const std::size_t at = SectorBytes * (sector - fillingFromTotal_);
    std::ranges::copy(bytes, Filling().begin() + static_cast<std::ptrdiff_t>(at));
    return;
  }
  WaitForWriter();
  const int number = names_.OneFile ? 1 : static_cast<int>(sector / splitSectors_) + 1;
  if (openNumber_ != number) {
    OpenForWriting(number, false);
  }
  WriteAt(names_.OneFile ? sector : sector % splitSectors_, bytes);
}

void VobOutput::Finish() {
  Submit();
  WaitForWriter();
  CloseOpen();
  StopWriter();
}

}  // namespace quorvelant
