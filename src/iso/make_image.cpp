#include "iso/make_image.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <vector>

#include "base/message_error.h"
#include "iso/image_writer.h"
#include "iso/messages.h"

namespace quorvelant {
namespace {

namespace fs = std::filesystem;

struct PlannedImage {
  DiscTree Tree;  // its tables are those of the image
  ImageLayout Layout;
  std::vector<Message> Faults;
};

// Whether a file is one of the disc, by whatever name, or would lie among its files.
bool IsOfDisc(const std::string& file, const DiscTree& tree) {
  std::error_code unknown;
  const auto isSame = [&](const fs::path& a, const fs::path& b) { return fs::equivalent(a, b, unknown); };
  const auto isFile = [&](const TreeFile& one) { return isSame(file, one.Path); };
  return isSame(fs::absolute(file).parent_path(), fs::path(tree.Sets.front().Ifo.Path).parent_path()) ||
         std::ranges::any_of(tree.Sets, [&](const TreeSet& set) {
           return isFile(set.Ifo) || isFile(set.Backup) || (set.MenuVob && isFile(*set.MenuVob)) ||
                  std::ranges::any_of(set.TitleVobs, isFile);
         });
}

double Gigabytes(std::uint64_t bytes) {
  return static_cast<double>(bytes) / 1e9;
}

PlannedImage PlanImage(const std::string& folder, UserInterface& ui) {
  PlannedImage plan;
  plan.Tree = ReadDiscTree(VideoFolderOf(folder), ui, plan.Faults);
  plan.Layout = LayOutImage(plan.Tree, plan.Faults);
  if (const auto& at = plan.Layout.Break) {
    for (const TableByte& mark : at->Marks) {
      plan.Tree.Sets[at->Set].Tables[mark.At] = mark.Value;
    }
  }
  return plan;
}

// The tables of the image as a number: FNV-1a.
std::uint64_t SerialOf(const PlannedImage& plan) {
  std::uint64_t hash = 0xcbf29ce484222325U;
  const auto add = [&hash](std::uint8_t byte) { hash = (hash ^ byte) * 0x100000001b3U; };
  for (const TreeSet& set : plan.Tree.Sets) {
    std::ranges::for_each(set.Tables, add);
  }
  return hash;
}

void TellLayout(const PlannedImage& plan, const ImageOrder& order, UserInterface& ui) {
  for (const std::string& name : plan.Tree.LeftOut) {
    ui.Tell(MessageOf(message::IsoLeftOut, order.Folder, name));
  }
  for (const std::size_t set : plan.Layout.Together) {
    ui.Tell(MessageOf(message::IsoBackupNear, plan.Tree.Sets[set].Backup.Path));
  }
  const auto& at = plan.Layout.Break;
  if (at) {
    ui.Tell(MessageOf(message::IsoBreakAt, order.Path, at->Sector, at->Cell, at->Pgc, at->Set));
  } else if (plan.Layout.TwoLayers) {
    ui.Tell(MessageOf(message::IsoBreakNone, order.Path, plan.Layout.Sectors / 2, MostFirstLayerSectors));
  }
}

bool HasSpace(const ImageOrder& order, std::uint64_t size, UserInterface& ui) {
  std::error_code failed;
  const fs::space_info space = fs::space(fs::absolute(order.Path).parent_path(), failed);
  const bool enough = failed || space.available >= size;
  if (!enough) {
    ui.Tell(MessageOf(message::IsoSpace, order.Path, Gigabytes(size), Gigabytes(space.available)));
  }
  return enough;
}

WrittenImage WritePlanned(const PlannedImage& plan, const ImageOrder& order, UserInterface& ui, Disk& disk) {
  WrittenImage written;
  written.Result = {
      .Size = plan.Layout.Size(), .TwoLayers = plan.Layout.TwoLayers, .Break = plan.Layout.Break};
  if (!HasSpace(order, plan.Layout.Size(), ui)) {
    return written;
  }
  auto aside = ImageFile::Begin(order.Path, disk, ui);
  if (!aside) {
    return written;
  }
  ui.Status(ImageStatus);
  const ImageVolume volume{.Label = order.Label, .Time = order.Time, .Serial = SerialOf(plan)};
  if (!WriteImage(plan.Layout, volume, aside->Out(), disk, order.Sync, ui)) {
    written.Result.Outcome = ImageOutcome::Stopped;
    return written;
  }
  written.Result.Outcome = ImageOutcome::Done;
  written.Aside.emplace(*std::move(aside));
  return written;
}

}  // namespace

WrittenImage WriteImageAside(const ImageOrder& order, UserInterface& ui, Disk& disk) {
  const PlannedImage plan = PlanImage(order.Folder, ui);
  if (!plan.Faults.empty()) {
    for (const Message& fault : plan.Faults) {
      ui.Tell(fault);
    }
    return {};
  }
  if (IsOfDisc(order.Path, plan.Tree)) {
    ui.Tell(MessageOf(message::IsoInDisc, order.Path));
    return {};
  }
  TellLayout(plan, order, ui);
  return WritePlanned(plan, order, ui, disk);
}

ImageResult MakeImage(const ImageOrder& order, UserInterface& ui, Disk& disk) {
  try {
    WrittenImage written = WriteImageAside(order, ui, disk);
    if (written.Aside && !written.Aside->Place(order.Replace, order.Sync, ui)) {
      written.Result.Outcome = ImageOutcome::Failed;
    }
    return written.Result;
  } catch (const FileError& error) {
    ui.Tell(MessageOf(message::IsoFileFailed, {}, error.OneLine()));
  } catch (const MessageError& error) {
    ui.Tell(error.What());
  }
  return {};
}

void MarkLayerBreak(const std::string& folder, UserInterface& ui) {
  const PlannedImage plan = PlanImage(folder, ui);
  if (!plan.Layout.Break || plan.Layout.Break->Marks.empty()) {
    return;
  }
  const TreeSet& set = plan.Tree.Sets[plan.Layout.Break->Set];
  for (const TreeFile& file : {set.Ifo, set.Backup}) {
    const auto opened = SystemDisk().Open(file.Path, FileAccess::ReadWrite);
    for (const TableByte& mark : plan.Layout.Break->Marks) {
      opened->Seek(mark.At);
      opened->Write(Bytes{mark.Value});
    }
    opened->Close();
  }
}

}  // namespace quorvelant
