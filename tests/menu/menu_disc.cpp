#include "menu_disc.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <utility>

#include "author/author.h"
#include "edit/change.h"
#include "edit/segment_files.h"
#include "edit/segments.h"
#include "edit/steps.h"
#include "menu/menu_themes.h"
#include "menu/page_layout.h"
#include "menu/page_tracks.h"
#include "model/keys.h"
#include "picture/bmp.h"
#include "picture/picture_loader.h"
#include "support/media.h"
#include "vm/check_commands.h"

namespace quorvelant {
namespace {

constexpr int GopLength = 12;

VideoSample VideoOf(const MenuDiscKind& kind) {
  return {.Standard = kind.Standard,
          .Aspect = kind.Aspect,
          .Frames = std::max(2, kind.Chapters) * GopLength,
          .GopLength = GopLength,
          .Closed = true,
          .KbitPerSecond = 600};
}

int HeightOf(const MenuDiscKind& kind) {
  return kind.Standard == std::string_view("PAL") ? 576 : 480;
}

// Any font will do, of letters ten pixels wide.
TextSize Measure(std::string_view text, const TextStyle& /*style*/) {
  const int width = 10 * static_cast<int>(text.size());
  return {.Width = width, .Height = 24, .InkLeft = 0, .InkTop = 0, .InkRight = width, .InkBottom = 24};
}

}  // namespace

MenuDisc::MenuDisc(const MenuDiscKind& kind) : Kind(kind), Session(kind.Rules) {}

Outcome MenuDisc::Make() {
  Steps steps;
  for (int film = 1; film <= Kind.Titles; ++film) {
    steps.Do([&] { return AddFilm(film); });
  }
  if (Kind.HasMenus && steps.GoOn()) {
    LayOut();
  }
  for (std::size_t film = 0; film < Plan.Films.size() && Kind.HasMenus; ++film) {
    for (const PageGroup& group : Plan.Films[film].Menus.Groups) {
      Plan.Films[film].MenuTracks.push_back(Session.Work().Tracks.Count());
      steps.Do([&] { return AddPages(group, film); });
    }
  }
  if (Plan.Choice) {
    Plan.ChoiceTrack = Session.Work().Tracks.Count();
    steps.Do([&] { return AddPages(*Plan.Choice, 0); });
  }
  Plan.Insertion = Kind.Insertion;
  if (Kind.StartSubtitles > 0) {
    Plan.StartSubtitles = Kind.StartSubtitles;
  }
  Plan.Selection = 0x00FFFF;
  Plan.Action = 0x0000FF;
  steps.Do([this] {
    return Kind.HasMenus ? MakeMenuStructure(Session, Plan) : MakePlainStructure(Session, Plan);
  });
  return steps.Refusal();
}

Outcome MenuDisc::AddFilm(int number) {
  const VideoSample video = VideoOf(Kind);
  const std::size_t index = Session.Work().Tracks.Count();
  const double seconds = video.Frames / (HeightOf(Kind) == 576 ? 25.0 : 29.97);
  Steps steps;
  const std::string track =
      steps.Do([&] { return NewTrack(Session, "Motion", fmt::format("Film {}", number)); });
  steps.Do(
      [&] { return ImportFile(Session, VideoPlayKey(index, 1), SampleVideo(video), Ui, Consent::None); });
  for (int i = 0; i < Kind.Audio; ++i) {
    const std::string stream = steps.Do([&] { return AddAudio(Session, track); });
    steps.Do([&] {
      return ImportFile(Session, stream + ".AudioPlay1", SampleAc3({.Seconds = seconds}), Ui, Consent::None);
    });
  }
  for (int i = 0; i < Kind.Subtitles; ++i) {
    steps.Do([&] { return AddSubtitles(Session, track); });
  }
  if (!steps.GoOn()) {
    return steps.Refusal();
  }
  const std::string bitmap = Temp / "text.bmp";
  Temp.Write("text.bmp", WriteBmp(Picture(64, 16)));
  Change change(Session, "Fill");
  Track& film = change.EditTrack(index);
  for (SubtitleStream& stream : film.SubStreams) {
    SubPicturePlay& entry = stream.SubPlays.emplace_back();
    entry.File = bitmap;
    entry.Start = "00:00:00:02";
    entry.End = "00:00:00:12";
    entry.Duration = "00:00:00:10";
    entry.X1 = 100;
    entry.X2 = 163;
    entry.Y1 = 400;
    entry.Y2 = 415;
    entry.ConversionP = 0xFFFFFF;
    entry.ContrastBg = 15;
    film.HasSubs = true;
  }
  for (int i = 1; i < Kind.Chapters; ++i) {
    film.Scenes.push_back({fmt::format("Film {}_Scene{}", number, i + 1), i * GopLength, {}});
  }
  steps.Do([&] { return change.Commit(); });
  FilmTracks tracks;
  tracks.Offer = OfferOf(Session.Work(), index, {}, Kind.Rules);
  tracks.After = Kind.After;
  Plan.Films.push_back(tracks);
  return steps.Refusal();
}

void MenuDisc::LayOut() {
  std::vector<FilmOffer> offers;
  std::ranges::transform(Plan.Films, std::back_inserter(offers), &FilmTracks::Offer);
  const MenuLook look = CompleteLook({}, Kind.Rules).Look.value();
  DiscMenus menus = LayOutMenus(offers, look, Measure, Kind.Rules);
  for (std::size_t film = 0; film < offers.size(); ++film) {
    Plan.Films[film].Menus = std::move(menus.Films[film]);
  }
  Plan.Choice = std::move(menus.Choice);
}

Outcome MenuDisc::AddPages(const PageGroup& group, std::size_t film) {
  std::vector<PageFiles> files;
  for (const MenuPage& page : group.Pages) {
    std::string shape = fmt::format("{}", static_cast<int>(group.Kind));
    for (const MenuButton& button : page.Buttons) {
      shape += fmt::format("_{}", button.X1 + 7 * button.Y1);
    }
    const std::string stem = fmt::format("Page{:x}", std::hash<std::string>()(shape));
    files.push_back({Temp / (stem + ".bmp"), Temp / (stem + ".SubLayer.bmp")});
    if (std::filesystem::exists(files.back().Normal)) {
      continue;
    }
    Picture normal(720, HeightOf(Kind));
    Picture sublayer(720, HeightOf(Kind));
    std::ranges::fill(sublayer.Pixels, std::uint8_t{0xFF});
    for (const MenuButton& button : page.Buttons) {
      for (int y = button.Y1; y <= button.Y2; ++y) {
        for (int x = button.X1; x <= button.X2; ++x) {
          normal.Set(x, y, 0x806040);
          sublayer.Set(x, y - 2, 0);
        }
      }
    }
    Temp.Write(stem + ".bmp", WriteBmp(normal));
    Temp.Write(stem + ".SubLayer.bmp", WriteBmp(sublayer));
  }
  return AddPageTrack(Session, group, files, Plan.Films[film].Offer.Track, Ui);
}

std::string MenuDisc::Author() {
  Project project = Session.Work();
  const CommandCheck commands = CheckCommands(project, Kind.Rules);
  std::string trouble;
  for (const CommandError& error : commands.Errors) {
    trouble += ErrorLine(error) + "\n";
  }
  for (const Message& warning : commands.Warnings) {
    trouble += warning.Text + "\n";
  }
  BmpLoader bitmaps;
  const AuthorOrder order{.Folder = Folder,
                          .Rules = Kind.Rules,
                          .Regions = AllRegions,
                          .RemoveSeqEnd = true,
                          .Pictures = &bitmaps,
                          .DryRun = false,
                          .InPlace = true,
                          .ReadBack = false};
  static_cast<void>(quorvelant::Author(project, order, Ui));
  for (const Message& message : Ui.Messages) {
    trouble += message.Level == Severity::Information ? "" : message.Place + ": " + message.Text + "\n";
  }
  return trouble;
}

}  // namespace quorvelant
