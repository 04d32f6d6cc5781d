#include "script/vocabulary.h"

#include <fmt/format.h>

#include <algorithm>
#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

#include "base/text.h"
#include "model/cls_dvd.h"
#include "script/disc_keys.h"
#include "script/read_key.h"
#include "script/source_keys.h"

namespace quorvelant {

namespace {

struct TextHash {
  using is_transparent = void;
  std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>{}(text); }
};
template <class Meaning>
using Index = std::unordered_map<std::string, Meaning, TextHash, std::equal_to<>>;

template <class Meaning>
const Meaning* Find(const Index<Meaning>& index, std::string_view text) {
  const auto found = index.find(text);
  return found == index.end() ? nullptr : &found->second;
}

// The lower-case text of a word, a number in the place of its "*".
std::string TextOfWord(std::string_view word, std::size_t number) {
  return Lower(Replace(word, "*", std::to_string(number)));
}

// --- items ---

struct ItemMeaning {
  bool (*Open)(ReaderState& state, std::size_t number);
  std::size_t Number;
  const ItemWord* Word;
};

void AddItems(Index<ItemMeaning>& index, std::span<const ItemWord> items) {
  for (const ItemWord& item : items) {
    for (std::size_t number = item.First; number < item.First + item.Count; ++number) {
      index.emplace(TextOfWord(item.Line, number), ItemMeaning{item.Open, number, &item});
    }
  }
}

bool ReadItem(ReaderState& state, const ItemMeaning& item) {
  if (item.Open == nullptr) {
    return true;
  }
  if (++state.Uses[item.Word] > item.Word->Most) {
    state.Outcome.TooMany = fmt::format("{} lines \"{}\"", item.Word->Most, item.Word->Line);
    return false;
  }
  return item.Open(state, item.Number);
}

// --- keys ---

struct KeyMeaning {
  std::function<bool(ReaderState& state, std::string_view value, std::size_t number)> Read;
  std::size_t Number;
  Takes Value;
  Segment Place = Segment::None;  // where the key's item alone is not enough
  const Switch* OnOff = nullptr;  // of a switch
};
// By the item that is open one word means another key: the first that has a place for the line takes it.
using KeyMeanings = std::vector<KeyMeaning>;

struct KeyIndex {
  KeyIndex() {
    for (const SpecialKey& key : SpecialKeys()) {
      Add(key.Words, {key.Reader, key.Number, key.Value}, 1);
    }
    const auto addTable = [this](const auto& table) {
      for (const auto& row : table) {
        const auto read = [&row](ReaderState& state, std::string_view value, std::size_t number) {
          return ReadKey(state, row, value, number);
        };
        Add(row.Words, {read, row.First, row.Value, row.Place, row.OnOff}, row.Entries);
      }
    };
    ForEachSourceTable(addTable);
    ForEachDiscTable(addTable);
  }

  void Add(std::string_view words, const KeyMeaning& meaning, std::size_t count) {
    for (const std::string_view word : Split(words, "|")) {
      if (const std::size_t sign = word.find('#'); sign != std::string_view::npos) {
        NumberSigns[Lower(Trim(word.substr(0, sign)))].push_back(meaning);
        continue;
      }
      for (KeyMeaning entry = meaning; entry.Number < meaning.Number + count; ++entry.Number) {
        Keys[TextOfWord(word, entry.Number)].push_back(entry);
      }
    }
  }

  Index<KeyMeanings> Keys;         // by the text before "="
  Index<KeyMeanings> NumberSigns;  // by the text before "#"; the number is what stands after it
};

// A language, however it is called, as the model has it; other values, and names of no language, as they are.
std::string_view LanguageValue(const ReaderState& state, Takes takes, std::string_view value) {
  const bool named = takes == Takes::Language || takes == Takes::LanguageCode;
  const auto row = named && state.Rules.NamesLanguagesAnyWay ? CLsDVD::LanguageCalled(value) : std::nullopt;
  if (!row) {
    return value;
  }
  return takes == Takes::Language ? CLsDVD::LanguageArray()[*row] : CLsDVD::SpareLanguage(*row);
}

std::string_view DoubtOf(const KeyMeaning& key, std::string_view value) {
  if (key.Value == Takes::Anything && key.OnOff != nullptr) {
    return IsWordOf(*key.OnOff, value) ? std::string_view() : NoSwitchWord;
  }
  return DoubtOf(key.Value, value);
}

// Does what a key says. The other dialect has words of its own for values, which are not judged.
bool ReadValue(ReaderState& state, const KeyMeaning& key, std::string_view written, std::size_t number) {
  const std::string_view value = LanguageValue(state, key.Value, written);
  if ((key.Place != Segment::None && key.Place != state.Open) || !key.Read(state, value, number)) {
    return false;
  }
  if (state.Traits.IsScenarist) {
    state.Outcome.Doubt = {};
  } else if (state.Outcome.Doubt.empty()) {
    state.Outcome.Doubt = DoubtOf(key, value);
  }
  return true;
}

bool ReadNumberSign(ReaderState& state, const KeyIndex& keys) {
  const std::size_t sign = state.Line.Lower.find('#');
  const KeyMeanings* meanings = Find(keys.NumberSigns, Trim(state.Line.Lower.substr(0, sign)));
  if (meanings == nullptr) {
    state.Outcome.SkipReason = UnknownLine;
    return false;
  }
  const std::int32_t given = LeadingNumber(state.Line.Lower.substr(sign + 1));
  const std::size_t number = given < 0 ? SubStreamCount : static_cast<std::size_t>(given);
  return std::any_of(meanings->begin(), meanings->end(),
                     [&](const KeyMeaning& key) { return ReadValue(state, key, state.Line.Value, number); });
}

constexpr std::string_view Prohibited = "=prohibited";

// A user operation of the open target, by its name or as "uop<n> ...".
bool Prohibit(ReaderState& state) {
  const std::string_view name = state.Line.Lower.substr(0, state.Line.Lower.size() - Prohibited.size());
  const bool numbered = name.starts_with("uop");
  const std::size_t operation = CLsDVD::UOPSIndex(name, numbered);
  if (operation >= UserOperationCount) {
    state.Outcome.SkipReason = UnknownLine;
    return false;
  }
  if (UopMask* uops = state.OpenUops()) {
    uops->set(operation);
    return true;
  }
  // The numbered form speaks of the open title without a word before it.
  Title_P* title = state.Disc.TitleUops || numbered ? state.Disc.Title : nullptr;
  if (title == nullptr || operation > 1) {
    return false;
  }
  (operation == 0 ? title->UOPTimePlay : title->UOPPTTPlay) = true;
  return true;
}

}  // namespace

bool ReadLine(ReaderState& state) {
  static const Index<ItemMeaning> items = [] {
    Index<ItemMeaning> index;
    AddItems(index, SourceItems());
    AddItems(index, DiscItems());
    return index;
  }();
  static const KeyIndex keys;
  state.Outcome.SkipReason = MisplacedLine;
  state.Outcome.Doubt = {};
  const std::string_view line = state.Line.Lower;
  if (const ItemMeaning* item = Find(items, line)) {
    return ReadItem(state, *item);
  }
  const std::size_t equal = line.find('=');
  if (equal != std::string_view::npos) {
    if (const KeyMeanings* meanings = Find(keys.Keys, Trim(line.substr(0, equal)))) {
      return std::any_of(meanings->begin(), meanings->end(), [&](const KeyMeaning& key) {
        return ReadValue(state, key, state.Line.Value, key.Number);
      });
    }
  }
  if (line.ends_with(Prohibited)) {
    return Prohibit(state);
  }
  if (Contains(line, "#")) {
    return ReadNumberSign(state, keys);
  }
  state.Outcome.SkipReason = UnknownLine;
  return false;
}

}  // namespace quorvelant
