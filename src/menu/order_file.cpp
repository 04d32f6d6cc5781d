#include "menu/order_file.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "base/file_text.h"
#include "base/text.h"
#include "edit/film_files.h"
#include "menu/look_fields.h"
#include "menu/messages.h"
#include "menu/order_fields.h"
#include "model/cls_dvd.h"

namespace quorvelant {

namespace {

constexpr std::uint64_t MostOrderBytes = std::uint64_t{1} << 20U;
constexpr std::string_view ChapterForms =
    R"(a file, a list of times, or a table with "every" or "file", and "names")";
constexpr std::string_view MenuForms = R"("auto", "none" or a list of "audio", "subtitles" and "chapters")";

constexpr std::array<OrderWord<AfterFilm>, 4> AfterWords{{{"menu", AfterFilm::Menu},
                                                          {"next", AfterFilm::Next},
                                                          {"repeat", AfterFilm::Repeat},
                                                          {"stop", AfterFilm::Stop}}};
constexpr std::array<OrderWord<AtInsertion>, 3> InsertionWords{
    {{"menu", AtInsertion::Menu}, {"first", AtInsertion::FirstFilm}, {"all", AtInsertion::AllFilms}}};
constexpr std::array<OrderWord<bool WantedMenus::*>, 3> MenuWords{{{"audio", &WantedMenus::Audio},
                                                                   {"subtitles", &WantedMenus::Subtitle},
                                                                   {"chapters", &WantedMenus::Chapter}}};

class OrderReader {
 public:
  explicit OrderReader(std::string file) : fields_(std::move(file)) {}

  ReadOrder Read(const toml::table& root) {
    const std::array fields{
        OrderField{"title", [this](const auto& value) { TakeFilms(value); }},
        OrderField{"menus", [this](const auto& value) { TakeMenuList(value); }},
        OrderField{"play",
                   [this](const auto& value) {
                     Take(fields_.Choice<AtInsertion>(value, "play", InsertionWords), order_.Insertion);
                   }},
        OrderField{"start_subtitles", [this](const auto& value) { TakeStart(value); }},
        OrderField{"theme", [this](const auto& value) { TakeTheme(value); }},
        OrderField{"label_language",
                   [this](const auto& value) {
                     Take(fields_.Language(value, "label_language"), order_.Look.LabelLanguage);
                   }},
        OrderField{
            "title_names",
            [this](const auto& value) { Take(fields_.Flag(value, "title_names"), order_.Look.TrackNames); }},
        OrderField{"labels", [this](const auto& value) { TakeLabels(value); }},
        OrderField{"backgrounds",
                   [this](const auto& value) { ReadBackgrounds(fields_, value, order_.Look); }},
        OrderField{"fonts", [this](const auto& value) { ReadFonts(fields_, value, order_.Look); }},
        OrderField{"colors", [this](const auto& value) { ReadColors(fields_, value, order_.Look); }}};
    fields_.ReadTable(root, "the description", fields);
    if (!root.contains("title")) {
      fields_.Lacks(root, "The description", "title");
    }
    ReadOrder result;
    result.Errors = fields_.Errors();
    if (result.Errors.empty()) {
      result.Order = std::move(order_);
    }
    return result;
  }

 private:
  template <class Value>
  static void Take(std::optional<Value> value, Value& into) {
    into = value ? std::move(*value) : std::move(into);
  }
  template <class Value>
  static void Append(std::optional<Value> value, std::vector<Value>& to) {
    if (value) {
      to.push_back(std::move(*value));
    }
  }

  void TakeFilms(const toml::node& value) {
    fields_.List(value, "title", "a table for each title: [[title]]", [this](const toml::node& entry) {
      OrderedFilm film;
      film.Place = fields_.PlaceOf(entry);
      ReadFilm(entry, film);
      order_.Films.push_back(std::move(film));
    });
  }

  void ReadFilm(const toml::node& entry, OrderedFilm& film) {
    // The video comes first: names of the other files go on with its own.
    if (const toml::node* video = entry.is_table() ? entry.as_table()->get("video") : nullptr) {
      Take(fields_.Path(*video, "video"), film.Video);
    } else if (entry.is_table()) {
      fields_.Lacks(entry, "A title", "video");
    }
    const std::array fields{
        OrderField{"name", [&](const auto& value) { Take(fields_.Text(value, "name"), film.Name); }},
        OrderField{"video", [](const auto&) {}},
        OrderField{"audio",
                   [&](const auto& value) {
                     TakeStreams(value, "audio", CLsDVD::AudioArray(), film.Video, film.Audio);
                   }},
        OrderField{"subtitles",
                   [&](const auto& value) {
                     TakeStreams(value, "subtitles", CLsDVD::SubArray(), film.Video, film.Subtitles);
                   }},
        OrderField{"chapters", [&](const auto& value) { TakeChapters(value, film); }},
        OrderField{"after", [&](const auto& value) {
                     Take(fields_.Choice<AfterFilm>(value, "after", AfterWords), film.After);
                   }}};
    fields_.ReadTable(entry, "a title", fields);
  }

  void TakeStreams(const toml::node& value, std::string_view key,
                   std::span<const std::string_view> extensions, const std::string& video,
                   std::vector<OrderedStream>& streams) {
    const auto take = [&](const toml::node& entry) {
      OrderedStream stream;
      if (entry.is_table()) {
        ReadStream(entry, key, extensions, stream);
      } else {
        Take(fields_.Path(entry, key), stream.File);
      }
      if (stream.Language.empty()) {
        stream.Language = LanguageOfFile(stream.File, video);
      }
      streams.push_back(std::move(stream));
    };
    if (value.is_string()) {
      take(value);
    } else {
      fields_.List(value, key, "a file, or a list of files and tables", take);
    }
  }

  void ReadStream(const toml::node& entry, std::string_view key, std::span<const std::string_view> extensions,
                  OrderedStream& stream) {
    const std::array fields{
        OrderField{"file", [&](const auto& value) { Take(fields_.Path(value, "file"), stream.File); }},
        OrderField{"language",
                   [&](const auto& value) { Take(fields_.Language(value, "language"), stream.Language); }},
        OrderField{"extension", [&](const auto& value) {
                     Take(fields_.OneOf(value, "extension", extensions), stream.Extension);
                   }}};
    fields_.ReadTable(entry, key, fields);
    if (!entry.as_table()->contains("file")) {
      fields_.Lacks(entry, std::string("A stream of \"").append(key) + "\"", "file");
    }
  }

  void TakeChapters(const toml::node& value, OrderedFilm& film) {
    if (value.is_string()) {
      Take(fields_.Path(value, "chapters"), film.ChapterFile);
    } else if (value.is_table()) {
      ReadChapterTable(value, film);
    } else {
      fields_.List(value, "chapters", ChapterForms,
                   [&](const toml::node& entry) { TakeChapter(entry, film.Chapters); });
    }
  }

  void ReadChapterTable(const toml::node& table, OrderedFilm& film) {
    const std::array fields{
        OrderField{"every",
                   [&](const auto& value) { Take(fields_.Seconds(value, "every"), film.ChapterSeconds); }},
        OrderField{"file", [&](const auto& value) { Take(fields_.Path(value, "file"), film.ChapterFile); }},
        OrderField{"names", [&](const auto& value) {
                     fields_.List(value, "names", "a list of names", [&](const toml::node& entry) {
                       Append(fields_.Text(entry, "names"), film.ChapterNames);
                     });
                   }}};
    fields_.ReadTable(table, "chapters", fields);
    const bool isOne = table.as_table()->contains("every") != table.as_table()->contains("file");
    if (!isOne) {
      fields_.Unfit(table, "chapters", ChapterForms);
    }
  }

  void TakeChapter(const toml::node& entry, std::vector<OrderedChapter>& chapters) {
    OrderedChapter chapter{.Time = {}, .Name = {}, .Place = fields_.PlaceOf(entry)};
    if (entry.is_table()) {
      const std::array fields{
          OrderField{"time", [&](const auto& value) { Take(fields_.Text(value, "time"), chapter.Time); }},
          OrderField{"name", [&](const auto& value) { Take(fields_.Text(value, "name"), chapter.Name); }}};
      fields_.ReadTable(entry, "a chapter", fields);
      if (!entry.as_table()->contains("time")) {
        fields_.Lacks(entry, "A chapter", "time");
      }
    } else {
      Take(fields_.Text(entry, "chapters"), chapter.Time);
    }
    chapters.push_back(std::move(chapter));
  }

  void TakeMenuList(const toml::node& value) {
    std::string words = value.value_exact<std::string>().value_or("");
    if (const toml::array* list = value.as_array()) {
      for (const toml::node& entry : *list) {
        words.append(words.empty() ? "" : ",").append(entry.value_exact<std::string>().value_or("?"));
      }
    }
    if (!TakeMenus(words, order_)) {
      fields_.Unfit(value, "menus", MenuForms);
    }
  }

  void TakeStart(const toml::node& value) {
    if (value.value_exact<std::string>() != "off") {
      Take(fields_.Language(value, "start_subtitles"), order_.StartSubtitles);
    }
  }

  // The name of a theme, or a folder: that has a separator.
  void TakeTheme(const toml::node& value) {
    const auto name = fields_.Text(value, "theme");
    if (name && name->find_first_of(R"(/\)") != std::string::npos) {
      Take(fields_.Path(value, "theme"), order_.Look.Theme);
    } else if (name) {
      order_.Look.Theme = *name;
    }
  }

  void TakeLabels(const toml::node& value) {
    if (!value.is_table()) {
      fields_.Unfit(value, "labels", "a table of texts by the English label");
      return;
    }
    for (const auto& [key, text] : *value.as_table()) {
      if (auto own = fields_.Text(text, key.str())) {
        order_.Look.OwnLabels.emplace(key.str(), std::move(*own));
      }
    }
  }

  OrderFields fields_;
  DiscOrder order_;
};

}  // namespace

bool TakeMenus(std::string_view words, DiscOrder& order) {
  order.HasMenus = words != "none";
  order.Menus = {};
  if (words == "auto" || words == "none") {
    return true;
  }
  order.Menus = {.Audio = false, .Subtitle = false, .Chapter = false};
  for (const std::string_view word : Split(words, ",")) {
    const auto* const row = std::ranges::find(MenuWords, Trim(word), &OrderWord<bool WantedMenus::*>::Word);
    if (row == MenuWords.end()) {
      return false;
    }
    order.Menus.*row->Means = true;
  }
  return true;
}

std::optional<AtInsertion> InsertionCalled(std::string_view word) {
  const auto* const row = std::ranges::find(InsertionWords, word, &OrderWord<AtInsertion>::Word);
  return row == InsertionWords.end() ? std::nullopt : std::optional(row->Means);
}

ReadOrder ReadOrderText(std::string_view text, const std::string& file) {
  try {
    const toml::table root = toml::parse(text, file);
    return OrderReader(file).Read(root);
  } catch (const toml::parse_error& fault) {
    ReadOrder failed;
    failed.Errors.push_back(MessageOf(
        message::OrderNoToml, fmt::format("{}:{}", file, fault.source().begin.line), fault.description()));
    return failed;
  }
}

ReadOrder ReadOrderFile(const std::string& file) {
  const auto text = ReadWhole(file, MostOrderBytes);
  if (text) {
    return ReadOrderText(*text, file);
  }
  ReadOrder failed;
  failed.Errors.push_back(MessageOf(message::OrderUnreadable, file, file));
  return failed;
}

}  // namespace quorvelant
