#include "menu/order_check.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/remedies.h"
#include "base/random.h"
#include "base/text.h"
#include "check/source_judge.h"
#include "edit/messages.h"
#include "menu/film_chapters.h"
#include "menu/menu_labels.h"
#include "menu/menu_themes.h"
#include "menu/messages.h"
#include "model/cls_dvd.h"

namespace quorvelant {

namespace {

const std::string& PlaceOf(const OrderedFilm& film) {
  return film.Place.empty() ? film.Video : film.Place;
}

class OrderJudge {
 public:
  OrderJudge(DiscOrder& order, const Rules& rules, PictureService& pictures, UserInterface& ui)
      : order_(order), rules_(rules), habits_(HabitsOf(rules)), pictures_(pictures), judge_({}, rules, ui) {}

  Findings Judge() {
    if (order_.Films.empty()) {
      findings_.push_back(MessageOf(message::OrderWithoutFilms, {}));
    } else if (order_.Films.size() > MostWizardTracks) {
      findings_.push_back(MessageOf(message::WizardTracksExceeded, PlaceOf(order_.Films[MostWizardTracks])));
    } else {
      NameWhatIsNot();
      std::ranges::for_each(order_.Films, [this](OrderedFilm& film) { JudgeFilm(film); });
      JudgeStart();
      JudgeLook();
      JudgeLabels();
    }
    // What a warning is of a source, the check of the whole project tells.
    std::erase_if(findings_, [](const Message& finding) { return finding.Level != Severity::Error; });
    return OnceEach(std::move(findings_));
  }

 private:
  void NameWhatIsNot() {
    for (std::size_t number = 0; number < order_.Films.size(); ++number) {
      OrderedFilm& film = order_.Films[number];
      const std::string own = habits_.NumbersFilms
                                  ? fmt::format("Track_{}", number + 1)
                                  : std::filesystem::path(SystemPath(film.Video)).stem().string();
      film.Name = film.Name.empty() ? own : film.Name;
      if (film.Audio.size() > 1 && film.Audio[1].Language.empty()) {
        film.Audio[1].Language = habits_.SecondLanguage;
      }
    }
  }

  void JudgeFilm(OrderedFilm& film) {
    JudgeCount(film, film.Audio, habits_.MostAudio, "sound");
    JudgeCount(film, film.Subtitles, habits_.MostSubtitles, "subtitles");
    const bool isNtsc = JudgeVideo(film);
    for (const OrderedStream& stream : film.Audio) {
      Append(findings_, judge_.Audio({stream.File, PlaceOf(film), isNtsc}, {}).Findings);
    }
    for (const OrderedStream& stream : film.Subtitles) {
      if (auto missing = judge_.Missing({stream.File, PlaceOf(film), isNtsc})) {
        findings_.push_back(std::move(*missing));
      }
    }
    Append(findings_, ReadChapters(film, isNtsc));
  }

  void JudgeCount(const OrderedFilm& film, const std::vector<OrderedStream>& streams, std::size_t most,
                  std::string_view what) {
    if (streams.size() <= most) {
      return;
    }
    std::vector<std::string> more;
    std::transform(streams.begin() + static_cast<std::ptrdiff_t>(most), streams.end(),
                   std::back_inserter(more), [](const OrderedStream& stream) { return stream.File; });
    findings_.push_back(MessageOf(message::WizardStreamsExceeded, PlaceOf(film), film.Video, streams.size(),
                                  what, most, fmt::format("'{}'", fmt::join(more, "', '"))));
  }

  // Whether the film is NTSC, or the disc where nothing is known of it.
  bool JudgeVideo(const OrderedFilm& film) {
    const SourcePlay play{film.Video, PlaceOf(film), standard_ == "NTSC"};
    Judgement<VideoAttributes> judged = judge_.Video(play);
    if (judged.Seen) {
      Append(judged.Findings, JudgeForTrack(*judged.Seen, "Motion", play, rules_));
      const std::string& standard = judged.Seen->Info.Standard;
      if (standard_.empty()) {
        standard_ = standard;
      } else if (standard != standard_) {
        const std::string line =
            EncodeVideoLine(film.Video, {.Ntsc = standard_ == "NTSC", .Aspect = judged.Seen->Info.Aspect});
        judged.Findings.push_back(
            MessageOf(message::FilmOfOtherStandard, PlaceOf(film), film.Video, standard, standard_, line));
      }
    }
    Append(findings_, std::move(judged.Findings));
    return standard_ == "NTSC";
  }

  void JudgeStart() {
    const auto shows = [this](const OrderedStream& stream) {
      return stream.Language == order_.StartSubtitles;
    };
    const bool isThere = std::ranges::any_of(order_.Films, [&shows](const OrderedFilm& film) {
      return std::ranges::any_of(film.Subtitles, shows);
    });
    if (!order_.StartSubtitles.empty() && !isThere) {
      findings_.push_back(MessageOf(message::StartSubtitlesMissing, {}, order_.StartSubtitles));
    }
  }

  // The look is the whole one from then on.
  void JudgeLook() {
    JudgeFonts();
    CompletedLook whole = CompleteLook(order_.Look, rules_);
    Append(findings_, std::move(whole.Errors));
    if (!whole.Look) {
      return;
    }
    const auto names = MenuThemeNames();
    const std::string theme = order_.Look.Theme;
    order_.Look = std::move(*whole.Look);
    for (const std::string& background : order_.Look.Backgrounds) {
      if (!background.empty()) {
        JudgeBackground(background);
      }
    }
    if (!theme.empty() && std::ranges::find(names, theme) == names.end()) {
      JudgeFonts();
    }
  }

  // Those of built-in themes give way to similar ones.
  void JudgeFonts() {
    for (const MenuFont& font : order_.Look.Fonts) {
      const std::string taken = font.Name.empty() ? std::string() : pictures_.FontTaken(font.Name);
      if (!EqualNoCase(taken, font.Name) && font.Name != "sans-serif") {
        findings_.push_back(MessageOf(message::FontMissing, {}, font.Name, taken));
      }
    }
  }

  void JudgeLabels() {
    const MenuLook& look = order_.Look;
    const auto languages = MenuLabelLanguages();
    if (look.OwnLabels.empty() && std::ranges::find(languages, look.LabelLanguage) == languages.end()) {
      findings_.push_back(MessageOf(message::LabelsMissing, {}, look.LabelLanguage,
                                    fmt::format("{}", fmt::join(languages, ", "))));
    }
    const auto keys = MenuLabelKeys();
    for (const auto& [label, own] : look.OwnLabels) {
      const std::string& word = label;
      const auto isOne = [&word](std::span<const std::string_view> words) {
        return std::ranges::find(words, word) != words.end();
      };
      if (!isOne(keys) && !isOne(CLsDVD::LanguageArray()) && !isOne(CLsDVD::AudioArray()) &&
          !isOne(CLsDVD::SubArray())) {
        findings_.push_back(
            MessageOf(message::LabelUnknown, {}, word, fmt::format("{}", fmt::join(keys, ", "))));
      }
      const bool isNumbered = word == "Audio {}" || word == "Subtitle {}" || word == "Movie {}";
      if (isNumbered && own.find("{}") == std::string::npos) {
        findings_.push_back(MessageOf(message::LabelWithoutNumber, {}, own, word));
      }
    }
  }

  void JudgeBackground(const std::string& background) {
    const std::string_view why = judge_.WhyMissing(SystemPath(background));
    if (!why.empty()) {
      findings_.push_back(MessageOf(message::BackgroundUnfit, background, background, why));
      return;
    }
    try {
      pictures_.Load(SystemPath(background));
    } catch (const PictureError& fault) {
      findings_.push_back(fault.What());
    }
  }

  DiscOrder& order_;
  const Rules& rules_;
  WizardHabits habits_;
  PictureService& pictures_;
  SourceJudge judge_;
  Findings findings_;
  std::string standard_;  // of the first video
};

}  // namespace

WizardHabits HabitsOf(const Rules& rules) {
  return rules.WizardTakesAllStreams ? WizardHabits{}
                                     : WizardHabits{.MostAudio = 2,
                                                    .MostSubtitles = 2,
                                                    .NumbersFilms = true,
                                                    .SecondLanguage = "Spanish",
                                                    .AddsPalettes = true};
}

Findings JudgeOrder(DiscOrder& order, const Rules& rules, PictureService& pictures, UserInterface& ui) {
  return OrderJudge(order, rules, pictures, ui).Judge();
}

}  // namespace quorvelant
