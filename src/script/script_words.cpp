#include "script/script_words.h"

#include <array>
#include <string>
#include <unordered_map>

#include "base/text.h"
#include "model/cls_dvd.h"
#include "script/script_reader.h"
#include "script/script_tables.h"

namespace quorvelant {

namespace {

// What one text of a line does.
struct Action {
  Handler Do;
  std::size_t Number;
  Takes Value;
};

struct TextHash {
  using is_transparent = void;
  std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>{}(text); }
};
using Index = std::unordered_map<std::string, Action, TextHash, std::equal_to<>>;

// Every text of the table, with its numbers filled in. With equal texts the first row stands.
void AddWords(Index& index, std::span<const Word> words) {
  for (const Word& word : words) {
    for (std::size_t number = word.First; number < word.First + word.Count; ++number) {
      index.emplace(Replace(word.Text, "*", std::to_string(number)), Action{word.Do, number, word.Value});
    }
  }
}

struct Vocabulary {
  Vocabulary() {
    AddWords(Lines, SourceItems());
    AddWords(Lines, DiscItems());
    AddWords(Keys, SourceKeys());
    AddWords(Keys, OverlayKeys());
    AddWords(Keys, DiscKeys());
    AddWords(NumberSigns, NumberSignWords());
  }
  Index Lines;
  Index Keys;
  Index NumberSigns;
};

const Action* Find(const Index& index, std::string_view text) {
  const auto found = index.find(text);
  return found == index.end() ? nullptr : &found->second;
}

constexpr std::string_view Prohibited = "=prohibited";

// A user operation of the open target, by its name or as "uop<n> ...".
bool Prohibit(ReaderState& state) {
  const std::string_view name = state.Lower.substr(0, state.Lower.size() - Prohibited.size());
  const bool numbered = name.starts_with("uop");
  const std::size_t operation = CLsDVD::UOPSIndex(name, numbered);
  if (operation >= UserOperationCount) {
    state.SkipReason = UnknownLine;
    return false;
  }
  if (state.Uops != nullptr) {
    state.Uops->set(operation);
    return true;
  }
  // The numbered form speaks of the open title without a word ahead.
  Title_P* title = state.TitleUops == nullptr && numbered ? state.Title : state.TitleUops;
  if (title == nullptr || operation > 1) {
    return false;
  }
  (operation == 0 ? title->UOPTimePlay : title->UOPPTTPlay) = true;
  return true;
}

// Does what a key says. The other dialect has words of its own for values, which are not judged.
bool TakeValue(ReaderState& state, const Action& key, std::string_view value, std::size_t number) {
  if (!key.Do(state, value, number)) {
    return false;
  }
  state.Doubt = state.IsScenarist ? std::string_view() : DoubtOf(key.Value, value);
  return true;
}

bool TakeNumberSign(ReaderState& state, const Vocabulary& vocabulary, std::string_view value) {
  const std::size_t sign = state.Lower.find('#');
  const Action* action = Find(vocabulary.NumberSigns, Trim(state.Lower.substr(0, sign)));
  if (action == nullptr) {
    state.SkipReason = UnknownLine;
    return false;
  }
  const std::int32_t number = LeadingNumber(state.Lower.substr(sign + 1));
  return TakeValue(state, *action, value, number < 0 ? SubStreamCount : static_cast<std::size_t>(number));
}

}  // namespace

bool TakeLine(ReaderState& state) {
  static const Vocabulary vocabulary;
  state.SkipReason = MisplacedLine;
  state.Doubt = {};
  if (const Action* line = Find(vocabulary.Lines, state.Lower)) {
    return line->Do(state, {}, line->Number);
  }
  const std::size_t equal = state.Lower.find('=');
  const std::string_view value = state.Value;
  if (equal != std::string_view::npos) {
    if (const Action* key = Find(vocabulary.Keys, Trim(state.Lower.substr(0, equal)))) {
      return TakeValue(state, *key, value, key->Number);
    }
  }
  if (state.Lower.ends_with(Prohibited)) {
    return Prohibit(state);
  }
  if (Contains(state.Lower, "#")) {
    return TakeNumberSign(state, vocabulary, value);
  }
  state.SkipReason = UnknownLine;
  return false;
}

}  // namespace quorvelant
