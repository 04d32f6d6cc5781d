#include "menu/wizard.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <iterator>
#include <map>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

#include "base/message_error.h"
#include "base/random.h"
#include "base/text.h"
#include "base/user_interface.h"
#include "check/check_sources.h"
#include "edit/change.h"
#include "edit/film_files.h"
#include "edit/film_tracks.h"
#include "edit/overlays.h"
#include "edit/source_paths.h"
#include "edit/steps.h"
#include "menu/film_chapters.h"
#include "menu/letterbox.h"
#include "menu/menu_offer.h"
#include "menu/menu_structure.h"
#include "menu/menu_themes.h"
#include "menu/messages.h"
#include "menu/order_check.h"
#include "menu/page_layout.h"
#include "menu/page_text.h"
#include "menu/page_tracks.h"
#include "menu/thumbnails.h"
#include "model/walk.h"

namespace quorvelant {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view Processing = "Processing...";

// Tells all but the last error, which is the refusal.
Outcome RefuseAll(Findings errors, UserInterface& ui) {
  Message last = std::move(errors.back());
  errors.pop_back();
  for (const Message& error : errors) {
    ui.Tell(error);
  }
  return Outcome::Refused(std::move(last));
}

Outcome AsOutcome(std::optional<Message> refusal) {
  return refusal ? Outcome::Refused(std::move(*refusal)) : Outcome::Done();
}

ThumbnailSource ThumbnailsFor(EditSession& session, const WizardServices& services) {
  return ThumbnailsOf(session.Work(), session.Indexes(), services.Pictures, services.Ui,
                      session.RulesInForce());
}

void PaintFiles(const EditSession& session, const MadePage& page, const MenuLook& look,
                const ThumbnailSource& thumbnails, const WizardServices& services) {
  const Project& project = session.Work();
  const bool isNtsc = EqualNoCase(project.Tracks[page.Track].Standard, "NTSC");
  const PaintedPage painted = PaintPage(page.Layout, page.Kind, page.Track, look, isNtsc, thumbnails,
                                        services.Pictures, session.RulesInForce());
  services.Pictures.Save(painted.Normal, page.NormalFile);
  services.Pictures.Save(painted.Sublayer, page.SublayerFile);
}

class DiscMaker {
 public:
  DiscMaker(EditSession& session, DiscOrder& order, PageFolder& folder, const WizardServices& services,
            MadeDisc& made)
      : session_(session), order_(order), folder_(folder), services_(services), made_(made) {}

  Outcome Make() {
    Change change(session_, "Make Disc");
    steps_.Do([this] { return AskForIndexing(); });
    for (std::size_t film = 0; film < order_.Films.size(); ++film) {
      steps_.Do([&] { return AddFilm(film); });
    }
    steps_.Do([this] { return JudgeSources(); });
    if (steps_.GoOn()) {
      ChooseStart();
    }
    if (steps_.GoOn() && order_.HasMenus && OfferChoice(Offers(), RulesUsed())) {
      AddPages();
      steps_.Do([this] { return MakeMenuStructure(session_, plan_); });
    } else {
      steps_.Do([this] { return MakePlainStructure(session_, plan_); });
    }
    steps_.Do([&change] { return change.Commit(); });
    if (steps_.GoOn()) {
      services_.Ui.Status("Ready");
    }
    if (steps_.GoOn() && !made_.Pages.empty()) {
      services_.Ui.Tell(MessageOf(message::MenusProduced, {}));
    }
    return steps_.Refusal();
  }

 private:
  [[nodiscard]] const Rules& RulesUsed() const { return session_.RulesInForce(); }

  // Without an index there is no picture for a thumbnail.
  Outcome AskForIndexing() {
    services_.Ui.Status(Processing);
    const bool hasChapters = std::ranges::any_of(order_.Films, [](const OrderedFilm& film) {
      return !film.Chapters.empty() || film.ChapterSeconds > 0;
    });
    if (order_.HasMenus && order_.Menus.Chapter && hasChapters) {
      const MessageKind& ask = message::AskIndexing;
      order_.Menus.Chapter = services_.Ui.Ask(ask.Title, ask.Text, true);
    }
    return Outcome::Done();
  }

  Outcome AddFilm(std::size_t number) {
    if (services_.Ui.StopRequested()) {
      return Outcome::Refused({});
    }
    const OrderedFilm& film = order_.Films[number];
    const std::size_t track = session_.Work().Tracks.Count();
    const std::size_t palettes = session_.Work().Palettes.Count();
    Outcome added = AddFilmTrack(session_, FilesOf(film), services_.Ui);
    std::vector<std::string> names;
    if (added.IsDone() && HabitsOf(RulesUsed()).AddsPalettes) {
      added = AddPalettes(film.Subtitles.size(), palettes);
    }
    if (added.IsDone()) {
      added = AddChapters(session_, track, film, services_.Ui, names);
    }
    if (!added.IsDone()) {
      added.Words.Level = Severity::Error;  // a question that nobody answers
      added.Words.Place =
          added.Words.Place.empty() && !added.Words.Text.empty() ? film.Video : added.Words.Place;
      return Outcome::Refused(std::move(added.Words));
    }
    FilmTracks tracks;
    tracks.Offer = OfferOf(session_.Work(), track, order_.Menus, RulesUsed());
    tracks.After = film.After;
    tracks.Offer.Name = film.Name;
    if (const Palette_P* own = session_.Work().Palettes.Item(palettes + 1);
        own != nullptr && !HabitsOf(RulesUsed()).AddsPalettes) {
      tracks.Palette = own->Name();  // of its subtitles
    }
    for (OfferedChapter& chapter : tracks.Offer.Chapters) {
      chapter.Name = chapter.Scene < names.size() ? names[chapter.Scene] : std::string();
    }
    plan_.Films.push_back(std::move(tracks));
    return Outcome::Done();
  }

  // Two for each file of subtitles, in the colours of the one that it brought after `before` others.
  Outcome AddPalettes(std::size_t files, std::size_t before) {
    const std::size_t brought = session_.Work().Palettes.Count() - before;
    Steps steps;
    for (std::size_t file = 1; file <= files; ++file) {
      const Palette_P* imported = session_.Work().Palettes.Item(before + std::min(file, brought));
      const PaletteColors colors = brought > 0 ? imported->PaletteColors : PaletteColors{};
      ++subtitleFiles_;
      for (const std::string_view kind : {"Subtitle Palette", "Subtitle Outline Palette"}) {
        steps.Do([&] { return NewPalette(session_, fmt::format("{} {}", kind, subtitleFiles_), colors); });
      }
    }
    return steps.Refusal();
  }

  [[nodiscard]] FilmFiles FilesOf(const OrderedFilm& film) const {
    return AsScriptHolds(session_.Work().ScriptFile, {.Video = film.Video,
                                                      .Name = film.Name,
                                                      .Audio = film.Audio,
                                                      .Subtitles = film.Subtitles,
                                                      .Chapters = {}});
  }

  // Whatever else keeps a source from the disc, with the bitmaps of subtitles.
  Outcome JudgeSources() {
    Findings findings = LookForSources(session_.Work(), services_.Ui, RulesUsed());
    std::erase_if(findings, [](const Message& finding) { return finding.Level != Severity::Error; });
    return findings.empty() ? Outcome::Done() : RefuseAll(std::move(findings), services_.Ui);
  }

  void ChooseStart() {
    if (order_.StartSubtitles.empty()) {
      return;
    }
    for (const FilmTracks& film : plan_.Films) {
      const auto streams = Live(session_.Work().Tracks[film.Offer.Track].SubStreams);
      const auto shown = std::ranges::find_if(streams, [this](const SubtitleStream* stream) {
        return stream->Language == order_.StartSubtitles;
      });
      if (shown == streams.end()) {
        continue;
      }
      const int number = (*shown)->StreamNumber + 1;
      if (plan_.StartSubtitles.value_or(number) != number) {
        services_.Ui.Tell(
            MessageOf(message::StartSubtitlesDiffer, {}, film.Offer.Name, order_.StartSubtitles));
      }
      plan_.StartSubtitles = plan_.StartSubtitles.value_or(number);
    }
  }

  [[nodiscard]] std::vector<FilmOffer> Offers() const {
    std::vector<FilmOffer> offers;
    std::ranges::transform(plan_.Films, std::back_inserter(offers), &FilmTracks::Offer);
    return offers;
  }

  void AddPages() {
    LayOut();
    steps_.Do([this] { return FindLetters(); });
    steps_.Do([this] { return NamePages(); });
    steps_.Do([this] { return AsOutcome(folder_.Begin()); });
    steps_.Do([this] { return PaintAll(); });
    steps_.Do([this] { return AsOutcome(folder_.Place()); });
    for (const Group& group : groups_) {
      const std::size_t track = session_.Work().Tracks.Count();
      steps_.Do([&] {
        return AddPageTrack(session_, *group.Pages, group.Files, TrackOf(group.Film), services_.Ui);
      });
      if (group.Pages->Kind == PageKind::TitleChoice) {
        plan_.ChoiceTrack = track;
      } else {
        plan_.Films[group.Film].MenuTracks.push_back(track);
      }
    }
  }

  struct Group {
    const PageGroup* Pages;  // of the plan
    std::size_t Film = 0;    // in the order; the first for the title choice
    std::vector<PageFiles> Files = {};
  };

  [[nodiscard]] std::size_t TrackOf(std::size_t film) const { return plan_.Films[film].Offer.Track; }

  void LayOut() {
    const TextMeasure measure = [this](std::string_view text, const TextStyle& style) {
      return services_.Pictures.MeasureText(text, style);
    };
    DiscMenus menus = LayOutMenus(Offers(), order_.Look, measure, RulesUsed());
    plan_.Choice = std::move(menus.Choice);
    for (std::size_t film = 0; film < plan_.Films.size(); ++film) {
      plan_.Films[film].Menus = std::move(menus.Films.at(film));
      for (const PageGroup& group : plan_.Films[film].Menus.Groups) {
        groups_.push_back({&group, film});
      }
    }
    if (plan_.Choice) {
      groups_.push_back({&*plan_.Choice});
    }
    plan_.Insertion = order_.Insertion;
    plan_.Selection = order_.Look.Selection;
    plan_.Action = order_.Look.Action;
    plan_.Language = order_.Look.LabelLanguage;
  }

  // A box in place of a letter would be on every disc.
  Outcome FindLetters() {
    Findings missing;
    for (const Group& group : groups_) {
      for (const MenuPage& page : group.Pages->Pages) {
        for (const PageText& text : page.Texts) {
          const std::string letters =
              services_.Pictures.MissingLetters(text.Text, StyleOf(text, order_.Look));
          if (!letters.empty()) {
            missing.push_back(MessageOf(message::LettersMissing, {}, text.Text, letters));
          }
        }
      }
    }
    return missing.empty() ? Outcome::Done() : RefuseAll(OnceEach(std::move(missing)), services_.Ui);
  }

  // Files of pages, of which two may be one where films are named alike.
  Outcome NamePages() {
    std::map<std::string, std::size_t> taken;
    const std::string folder = PathFrom(session_.Work().ScriptFile, folder_.Path());
    for (Group& group : groups_) {
      group.Files = PageFilesOf(session_.Work(), *group.Pages, TrackOf(group.Film), folder, RulesUsed());
      for (const PageFiles& files : group.Files) {
        const auto [other, isNew] = taken.emplace(Lower(files.Normal), group.Film);
        if (!isNew) {
          return Outcome::Refused(MessageOf(message::PagesShareFiles, {}, order_.Films[other->second].Video,
                                            order_.Films[group.Film].Video));
        }
      }
    }
    return Outcome::Done();
  }

  Outcome PaintAll() {
    services_.Ui.Status(Processing);
    const ThumbnailSource thumbnails = ThumbnailsFor(session_, services_);
    const auto total = static_cast<double>(PageCount());
    for (const Group& group : groups_) {
      for (std::size_t number = 0; number < group.Pages->Pages.size(); ++number) {
        if (services_.Ui.StopRequested()) {
          return Outcome::Refused({});
        }
        services_.Ui.Progress(static_cast<double>(made_.Pages.size()), total);
        Paint(group, number, thumbnails);
      }
    }
    return Outcome::Done();
  }

  [[nodiscard]] std::size_t PageCount() const {
    std::size_t count = 0;
    for (const Group& group : groups_) {
      count += group.Pages->Pages.size();
    }
    return count;
  }

  void Paint(const Group& group, std::size_t number, const ThumbnailSource& thumbnails) {
    const auto name = [](const std::string& file) { return fs::path(SystemPath(file)).filename(); };
    const PageFiles& files = group.Files.at(number);
    MadePage page{.Kind = group.Pages->Kind,
                  .Film = group.Film,
                  .Track = TrackOf(group.Film),
                  .Number = number,
                  .Layout = group.Pages->Pages[number],
                  .NormalFile = (fs::path(folder_.Aside()) / name(files.Normal)).string(),
                  .SublayerFile = (fs::path(folder_.Aside()) / name(files.Sublayer)).string()};
    PaintFiles(session_, page, order_.Look, thumbnails, services_);
    page.NormalFile = (fs::path(folder_.Path()) / name(files.Normal)).string();
    page.SublayerFile = (fs::path(folder_.Path()) / name(files.Sublayer)).string();
    made_.Pages.push_back(std::move(page));
  }

  EditSession& session_;
  DiscOrder& order_;
  PageFolder& folder_;
  const WizardServices& services_;
  MadeDisc& made_;
  Steps steps_;
  MenuPlan plan_;
  std::vector<Group> groups_;
  std::size_t subtitleFiles_ = 0;  // so far
};

// What goes wrong with pictures and files is a refusal.
Outcome Guarded(const std::function<Outcome()>& make) {
  try {
    return make();
  } catch (const MessageError& fault) {
    return Outcome::Refused(fault.What());
  } catch (const FileError& fault) {
    return Outcome::Refused(MessageOf(message::MenusNotMade, {}, fault.OneLine()));
  }
}

}  // namespace

Outcome MakeDisc(EditSession& session, DiscOrder& order, PageFolder& folder, const WizardServices& services,
                 MadeDisc& made) {
  return Guarded([&] {
    Findings errors = JudgeOrder(order, session.RulesInForce(), services.Pictures, services.Ui);
    if (auto inTheWay = order.HasMenus ? folder.Refusal() : std::nullopt) {
      errors.push_back(std::move(*inTheWay));
    }
    return errors.empty() ? DiscMaker(session, order, folder, services, made).Make()
                          : RefuseAll(std::move(errors), services.Ui);
  });
}

Outcome RemakePage(EditSession& session, const MadePage& page, const MenuLook& look,
                   const WizardServices& services) {
  return Guarded([&] {
    CompletedLook whole = CompleteLook(look, session.RulesInForce());
    if (!whole.Look) {
      return RefuseAll(std::move(whole.Errors), services.Ui);
    }
    MadePage sized = page;
    // Texts that were made to fit keep the size that did.
    if (!PagesFit(session.RulesInForce())) {
      TakeFontSizes(sized.Layout, *whole.Look);
    }
    PaintFiles(session, sized, *whole.Look, ThumbnailsFor(session, services), services);
    if (fs::exists(LetterboxFileOf(page.SublayerFile))) {
      WriteLetterboxSublayer(page.SublayerFile, session.RulesInForce());
    }
    return Outcome::Done();
  });
}

}  // namespace quorvelant
