#include "ui/media_import.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <utility>

#include "analysis/container_sniff.h"
#include "analysis/picture_index.h"
#include "base/passing_ui.h"
#include "edit/change.h"
#include "ui/messages.h"

namespace quorvelant {

namespace {

// What is wrong with a file is told when it is taken in.
class QuietUi : public PassingUi {
 public:
  using PassingUi::PassingUi;
  void Tell(const Message& /*message*/) override {}
};

std::string NameOf(const std::string& path) {
  return std::filesystem::path(path).filename().string();
}

// Builds the indexes that are missing, each for itself: a file that has none stops no other.
Job::Verdict BuildIndexes(const std::vector<std::string>& videos, IndexStore& store, UserInterface& ui,
                          std::vector<FileIndex>& built) {
  QuietUi quiet(ui);
  for (const std::string& video : videos) {
    if (SniffFile(video) != SourceKind::Video) {
      continue;
    }
    ui.Status(fmt::format("Reading {}", NameOf(video)));
    IndexRun run = BuildPictureIndex({{video, false}}, {}, store, quiet);
    std::ranges::move(run.Files, std::back_inserter(built));
    if (ui.StopRequested()) {
      return {Job::State::Stopped, "Stopped: nothing was imported"};
    }
  }
  return {Job::State::Done, fmt::format("{} files read", videos.size())};
}

// Takes all in that can be; the key of what came first, or nothing of what came not.
Outcome TakeAll(EditSession& session, const std::vector<BroughtStep>& steps, UserInterface& ui) {
  Change whole(session, "Import Files");
  std::vector<std::string> keys;
  for (const BroughtStep& step : steps) {
    const Outcome outcome = Carry(ui, [&](Consent consent) { return step.Take(session, ui, consent); });
    if (outcome.IsDone() && !outcome.Key.empty()) {
      keys.push_back(outcome.Key);
    }
  }
  return keys.empty() ? Outcome::Done() : whole.Commit(keys.front());
}

}  // namespace

void MediaImport::WithIndexes(std::vector<std::string> videos, std::function<void()> then) const {
  const IndexStore& known = document_.Session().Indexes();
  std::erase_if(videos, [&known](const std::string& video) {
    return FindPictureIndex(video, known).has_value() || SniffFile(video) != SourceKind::Video;
  });
  if (videos.empty()) {
    then();
    return;
  }
  const std::string title = videos.size() == 1 ? fmt::format("Read {}", NameOf(videos.front()))
                                               : fmt::format("Read {} videos", videos.size());
  const auto store = std::make_shared<IndexStore>(known);
  const auto built = std::make_shared<std::vector<FileIndex>>();
  Document* const document = &document_;
  jobs_.Start(
      title,
      [videos = std::move(videos), store, built](UserInterface& ui) {
        return BuildIndexes(videos, *store, ui, *built);
      },
      [document, built, then = std::move(then)](const Job& job) {
        for (const FileIndex& file : *built) {
          if (file.State == IndexState::KeptInMemory) {
            document->Session().Indexes().Keep(file.Name, file.Index);
          }
        }
        if (job.Now() != Job::State::Stopped) {
          then();
        }
      });
}

std::vector<std::string> MediaImport::Bring(const std::vector<std::string>& paths,
                                            const BringTarget& target) const {
  Voice& voice = document_.Speaks();
  std::vector<Message> told;
  const std::vector<std::string> files = FilesBelow(paths, told);
  const auto sort = [document = &document_, files, target] {
    return SortBrought(document->Work(), files, target,
                       [document](const std::string& path) { return document->AsScriptHolds(path); });
  };
  BroughtFiles sorted = sort();
  std::ranges::move(sorted.Told, std::back_inserter(told));
  for (const Message& message : told) {
    voice.Tell(message);
  }
  if (!sorted.Steps.empty()) {
    // The project may be another by the time that the indexes are there.
    WithIndexes(std::move(sorted.Videos), [document = &document_, chosen = &chosen_, sort] {
      const std::vector<BroughtStep> steps = sort().Steps;
      const auto key = document->Do(
          [&](EditSession& session, Consent) { return TakeAll(session, steps, document->Speaks()); });
      if (key && !key->empty()) {
        chosen->Choose(*key);
      }
    });
  }
  return std::move(sorted.Projects);
}

}  // namespace quorvelant
