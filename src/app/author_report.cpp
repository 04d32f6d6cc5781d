#include "app/author_report.h"

#include <fmt/format.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "app/image_words.h"
#include "app/message_json.h"
#include "author/size_text.h"
#include "base/timecode.h"
#include "desk/version.h"
#include "model/walk.h"

namespace quorvelant {

namespace {

using Json = nlohmann::ordered_json;

std::string StreamText(const DomainPlan& domain) {
  std::string text;
  for (const AudioMapRow& row : domain.Audio) {
    text += fmt::format("  audio {} {} {}", row.StreamNumber, row.Format, row.Language);
  }
  for (const SubMapRow& row : domain.Subs) {
    text += fmt::format("  subtitles {} {}", row.StreamNumber, row.Language);
  }
  return text;
}

std::string DomainText(std::string_view name, const DomainPlan& domain) {
  if (domain.Inputs.empty()) {
    return {};
  }
  std::string text =
      fmt::format("  {:<10} {} track{}:", name, domain.Inputs.size(), domain.Inputs.size() == 1 ? "" : "s");
  for (const MuxInput& input : domain.Inputs) {
    text += fmt::format(" {}", input.Name);
  }
  return text + StreamText(domain) + "\n";
}

std::size_t TitleCount(const DiscPlan& plan) {
  std::size_t titles = 0;
  for (const SetPlan& set : plan.Sets) {
    titles += Live(set.Title.Entry->Title).size();
  }
  return titles;
}

std::string_view OutcomeWord(AuthorOutcome outcome) {
  switch (outcome) {
    case AuthorOutcome::Done:
      return "done";
    case AuthorOutcome::Stopped:
      return "stopped";
    case AuthorOutcome::NoTitles:
      return "no titles";
    case AuthorOutcome::Failed:
      break;
  }
  return "failed";
}

std::string Duration(const TitleFigures& title, const AuthorResult& result) {
  return FramesToTimecode(title.Frames, result.Ntsc ? 30 : 25);
}

Json DomainJson(const DomainPlan& domain) {
  Json json{{"tracks", Json::array()}, {"audio", Json::array()}, {"subtitles", Json::array()}};
  for (const MuxInput& input : domain.Inputs) {
    json["tracks"].push_back(input.Name);
  }
  for (const AudioMapRow& row : domain.Audio) {
    json["audio"].push_back({{"stream", row.StreamNumber},
                             {"format", row.Format},
                             {"channels", row.ChannelCount},
                             {"language", row.Language}});
  }
  for (const SubMapRow& row : domain.Subs) {
    json["subtitles"].push_back({{"stream", row.StreamNumber}, {"language", row.Language}});
  }
  return json;
}

// What stands now, or would.
std::string LastLines(const AuthorResult& result, const ReportedRun& run) {
  const std::string size = fmt::format("({}, {})", SizeText(result.Bytes), FullnessText(result.Bytes));
  const std::string_view verb = run.DryRun ? "Would write" : "Wrote";
  std::string text;
  if (!run.Folder.empty() || run.DryRun) {
    text = fmt::format("{} {} {}\n", verb, run.Folder.empty() ? run.Image : run.Folder, size);
  }
  return run.Image.empty() || run.DryRun ? text : text + ImageText(result.Image, run.Image);
}

}  // namespace

std::string JsonLine(const Json& object) {
  return object.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string BeginJson(const std::string& project) {
  return JsonLine({{"event", "begin"},
                   {"version", JsonVersion},
                   {"program", fmt::format("quorvelant {}", ProgramVersion())},
                   {"project", project}});
}

std::string PlanText(const DiscPlan& plan, std::optional<std::uint64_t> freeBytes) {
  std::string text =
      fmt::format("{} title{} in {} title set{}, {}\n", TitleCount(plan), TitleCount(plan) == 1 ? "" : "s",
                  plan.Sets.size(), plan.Sets.size() == 1 ? "" : "s", plan.Ntsc ? "NTSC" : "PAL");
  text += DomainText("VMG menu", plan.Manager.Menu);
  int number = 0;
  for (const SetPlan& set : plan.Sets) {
    ++number;
    text += DomainText(fmt::format("VTS{} menu", number), set.Menu);
    text += DomainText(fmt::format("VTS{}", number), set.Title);
  }
  text += fmt::format("Sources {}; the disc needs about {}, {}", SizeText(plan.VideoBytes + plan.AudioBytes),
                      SizeText(plan.NeededBytes()), FullnessText(plan.NeededBytes()));
  return text + (freeBytes ? fmt::format(", {} is free\n", SizeText(*freeBytes)) : "\n");
}

std::string PlanJson(const DiscPlan& plan, std::optional<std::uint64_t> freeBytes) {
  Json json{{"event", "plan"},
            {"standard", plan.Ntsc ? "NTSC" : "PAL"},
            {"titles", TitleCount(plan)},
            {"managerMenu", DomainJson(plan.Manager.Menu)},
            {"titleSets", Json::array()},
            {"sourceBytes", plan.VideoBytes + plan.AudioBytes},
            {"neededBytes", plan.NeededBytes()},
            {"medium", MediumJson(plan.NeededBytes())}};
  json["freeBytes"] = freeBytes ? Json(*freeBytes) : Json(nullptr);
  for (const SetPlan& set : plan.Sets) {
    json["titleSets"].push_back({{"menu", DomainJson(set.Menu)}, {"titles", DomainJson(set.Title)}});
  }
  return JsonLine(json);
}

std::string ResultText(const AuthorResult& result, const ReportedRun& run) {
  std::string text;
  for (const TitleFigures& title : result.Titles) {
    text += fmt::format("Title {}.{}  {}  {} chapter{}  {}\n", title.TitleSet, title.Title,
                        Duration(title, result), title.Chapters, title.Chapters == 1 ? "" : "s", title.Name);
  }
  if (result.Underflows > 0) {
    text += fmt::format("{} buffer underflow{}: the disc may not play smoothly\n", result.Underflows,
                        result.Underflows == 1 ? "" : "s");
  }
  if (result.BufferFaults > 0) {
    text +=
        fmt::format("{} serious buffer fault{}\n", result.BufferFaults, result.BufferFaults == 1 ? "" : "s");
  }
  return text + LastLines(result, run);
}

std::string ResultJson(const AuthorResult& result, const ReportedRun& run) {
  Json json{{"event", "done"},
            {"outcome", OutcomeWord(result.Outcome)},
            {"folder", run.Folder.empty() ? Json(nullptr) : Json(run.Folder)},
            {"dryRun", run.DryRun},
            {"bytes", result.Bytes},
            {"medium", MediumJson(result.Bytes)},
            {"underflows", result.Underflows},
            {"bufferFaults", result.BufferFaults},
            {"titles", Json::array()}};
  if (!run.Image.empty()) {
    json["image"] = ImageJson(result.Image, run.Image);
  }
  for (const TitleFigures& title : result.Titles) {
    json["titles"].push_back({{"titleSet", title.TitleSet},
                              {"title", title.Title},
                              {"name", title.Name},
                              {"chapters", title.Chapters},
                              {"frames", title.Frames},
                              {"duration", Duration(title, result)}});
  }
  return JsonLine(json);
}

}  // namespace quorvelant
