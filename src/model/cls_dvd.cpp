#include "model/cls_dvd.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string>
#include <unordered_map>
#include <vector>

#include "base/text.h"
#include "model/uops.h"

namespace quorvelant {

namespace {

struct Language {
  std::string_view Name;
  std::string_view Code;  // ISO 639; some of the older edition
  std::string_view Flag;  // country
};

constexpr std::array Languages{
    Language{"None Specified", " ", "None"},
    Language{"Abkhazian", "ab", "None"},
    Language{"(Afan) Oromo", "om", "None"},
    Language{"Afar", "aa", "None"},
    Language{"Afrikaans", "af", "None"},
    Language{"Albanian", "sq", "None"},
    Language{"Amharic", "am", "None"},
    Language{"Arabic", "ar", "None"},
    Language{"Armenian", "hy", "None"},
    Language{"Assamese", "as", "None"},
    Language{"Aymara", "ay", "None"},
    Language{"Azerbaijani", "az", "None"},
    Language{"Bashkir", "ba", "None"},
    Language{"Basque", "eu", "None"},
    Language{"Bengali; Bangla", "bn", "None"},
    Language{"Bhutani", "dz", "None"},
    Language{"Bihari", "bh", "None"},
    Language{"Bislama", "bi", "None"},
    Language{"Breton", "br", "None"},
    Language{"Bulgarian", "bg", "Bulgaria"},
    Language{"Burmese", "my", "None"},
    Language{"Byelorussian", "be", "None"},
    Language{"Cambodian", "km", "None"},
    Language{"Catalan", "ca", "Spain"},
    Language{"Chinese", "zh", "China"},
    Language{"Corsican", "co", "None"},
    Language{"Croatian", "hr", "None"},
    Language{"Czech", "cs", "None"},
    Language{"Danish", "da", "Denmark"},
    Language{"Dutch", "nl", "Netherlands"},
    Language{"English", "en", "England"},
    Language{"Esperanto", "eo", "None"},
    Language{"Estonian", "et", "Estonia"},
    Language{"Faroese", "fo", "None"},
    Language{"Fiji", "fj", "None"},
    Language{"Finnish", "fi", "Finland"},
    Language{"French", "fr", "France"},
    Language{"Frisian", "fy", "None"},
    Language{"Galician", "gl", "None"},
    Language{"Georgian", "ka", "None"},
    Language{"German", "de", "Germany"},
    Language{"Greek", "el", "Greece"},
    Language{"Greenlandic", "kl", "None"},
    Language{"Guarani", "gn", "None"},
    Language{"Gujarati", "gu", "None"},
    Language{"Hausa", "ha", "None"},
    Language{"Hebrew", "iw", "None"},
    Language{"Hindi", "hi", "None"},
    Language{"Hungarian", "hu", "Hungary"},
    Language{"Icelandic", "is", "Iceland"},
    Language{"Indonesian", "in", "Indonesia"},
    Language{"Interlingua", "ia", "None"},
    Language{"Interlingue", "ie", "None"},
    Language{"Inupiak", "ik", "None"},
    Language{"Irish", "ga", "Ireland"},
    Language{"Italian", "it", "Italy"},
    Language{"Japanese", "ja", "Japan"},
    Language{"Javanese", "jw", "None"},
    Language{"Kannada", "kn", "None"},
    Language{"Kazakh", "kk", "None"},
    Language{"Korean", "ko", "Korea"},
    Language{"Kashmiri", "ks", "None"},
    Language{"Kinyarwanda", "rw", "None"},
    Language{"Kirghiz", "ky", "None"},
    Language{"Kirundi", "rn", "None"},
    Language{"Kurdish", "ku", "None"},
    Language{"Laothian", "lo", "None"},
    Language{"Latin", "la", "None"},
    Language{"Latvian, Lettish", "lv", "Latvia"},
    Language{"Lingala", "ln", "None"},
    Language{"Lithuanian", "lt", "Lithuania"},
    Language{"Macedonian", "mk", "None"},
    Language{"Malagasy", "mg", "None"},
    Language{"Malay", "ms", "None"},
    Language{"Malayalam", "ml", "None"},
    Language{"Maltese", "mt", "None"},
    Language{"Maori", "mi", "None"},
    Language{"Marathi", "mr", "None"},
    Language{"Moldavian", "mo", "None"},
    Language{"Mongolian", "mn", "None"},
    Language{"Nauru", "na", "None"},
    Language{"Nepali", "ne", "None"},
    Language{"Norwegian", "no", "Norway"},
    Language{"Occitan", "oc", "None"},
    Language{"Oriya", "or", "None"},
    Language{"Pashto, Pushto", "ps", "None"},
    Language{"Persian", "fa", "None"},
    Language{"Polish", "pl", "Poland"},
    Language{"Portuguese", "pt", "Portugal"},
    Language{"Punjabi", "pa", "None"},
    Language{"Quechua", "qu", "None"},
    Language{"Rhaeto-Romance", "rm", "None"},
    Language{"Romanian", "ro", "Romania"},
    Language{"Russian", "ru", "Russia"},
    Language{"Samoan", "sm", "Samoa"},
    Language{"Sangro", "sg", "None"},
    Language{"Sanskrit", "sa", "None"},
    Language{"Scots Gaelic", "gd", "None"},
    Language{"Serbian", "sr", "None"},
    Language{"Serbo-Croatian", "sh", "None"},
    Language{"Sesotho", "st", "None"},
    Language{"Setswana", "tn", "None"},
    Language{"Shona", "sn", "None"},
    Language{"Sindhi", "sd", "None"},
    Language{"Singhalese", "si", "None"},
    Language{"Siswati", "ss", "None"},
    Language{"Slovak", "sk", "None"},
    Language{"Slovenian", "sl", "None"},
    Language{"Somali", "so", "None"},
    Language{"Spanish", "es", "Spain"},
    Language{"Sundanese", "su", "Sudan"},
    Language{"Swahili", "sw", "None"},
    Language{"Swedish", "sv", "Sweden"},
    Language{"Tagalog", "tl", "None"},
    Language{"Tajik", "tg", "None"},
    Language{"Tamil", "ta", "None"},
    Language{"Tatar", "tt", "None"},
    Language{"Tegulu", "te", "None"},
    Language{"Thai", "th", "Thailand"},
    Language{"Tibetan", "bo", "None"},
    Language{"Tigrinya", "ti", "None"},
    Language{"Tonga", "to", "None"},
    Language{"Turkish", "tr", "Turkey"},
    Language{"Turkmen", "tk", "None"},
    Language{"Tsonga", "ts", "None"},
    Language{"Twi", "tw", "None"},
    Language{"Ukrainian", "uk", "Ukraine"},
    Language{"Urdu", "ur", "None"},
    Language{"Uzbek", "uz", "None"},
    Language{"Vietnamese", "vi", "Vietnam"},
    Language{"Volapuk", "vo", "None"},
    Language{"Welsh", "cy", "None"},
    Language{"Wolof", "wo", "None"},
    Language{"Xhosa", "xh", "None"},
    Language{"Yiddish", "ji", "None"},
    Language{"Yoruba", "yo", "None"},
    Language{"Zulu", "zu", "None"},
};
static_assert(Languages.size() == CLsDVD::LanguageCount);

// An extension's name and the word that the other dialect of scripts has for it.
struct Extension {
  std::string_view Name;
  std::string_view ScriptWord;
};

constexpr std::array AudioExtensions{
    Extension{"Unspecified", "Not specified"},
    Extension{"Normal", "Normal captions"},
    Extension{"Visually Impaired", "Audio for visually impaired"},
    Extension{"Directors Comments", "Director's comments 1"},
    Extension{"Alternate Directors Comments", "Director's comments 2"},
};
static_assert(AudioExtensions.size() == CLsDVD::AudioExtensionCount);

constexpr std::array SubExtensions{
    Extension{"Unspecified", "Unspecified"},
    Extension{"Normal", "Caption with normal size character"},
    Extension{"Large", "Caption with bigger size character"},
    Extension{"Children", "Caption for children"},
    Extension{"Normal Captions", "Closed Caption with normal size character"},
    Extension{"Large Captions", "Closed Caption with bigger size character"},
    Extension{"Childrens Captions", "Closed Caption for children"},
    Extension{"Forced", "Forced caption"},
    Extension{"Director Comments", "Director's comments with normal size character"},
    Extension{"Large Director Comments", "Director's comments with bigger size character"},
    Extension{"Director Comments for Children", "Director's comments for children"},
};
static_assert(SubExtensions.size() == CLsDVD::SubExtensionCount);

constexpr std::array<std::string_view, CLsDVD::RoomTypeCount> RoomTypes{
    "Complete Main", "Music and Effects", "Visually Impaired", "Hearing Impaired", "Dialog",
    "Commentary",    "Emergency",         "Voice Over",        "Karaoke"};

constexpr std::array<std::string_view, UserOperationCount> UserOperations{"TimePlay",
                                                                          "PTTPlay",
                                                                          "TitlePlay",
                                                                          "Stop",
                                                                          "GoUp",
                                                                          "TimeOrPTTSearch",
                                                                          "TopPGOrPrevPGSearch",
                                                                          "NextPGSearch",
                                                                          "ForwardScan",
                                                                          "BackwardScan",
                                                                          "MenuCall-Title",
                                                                          "MenuCall-Root",
                                                                          "MenuCall-SubPicture",
                                                                          "MenuCall-Audio",
                                                                          "MenuCall-Angle",
                                                                          "MenuCall-PTT",
                                                                          "Resume",
                                                                          "ButtonSelect",
                                                                          "StillOff",
                                                                          "PauseOn",
                                                                          "AudioStreamChange",
                                                                          "SubPictureStreamChange",
                                                                          "AngleChange",
                                                                          "KaraokeChange",
                                                                          "VideoModeChange"};
static_assert(UserOperations.size() == CLsDVD::NoUserOperation);

// One column of a table.
template <std::size_t Count, class Row>
constexpr std::array<std::string_view, Count> Column(const std::array<Row, Count>& table,
                                                     std::string_view Row::*column) {
  std::array<std::string_view, Count> names{};
  for (std::size_t i = 0; i < Count; ++i) {
    names[i] = table[i].*column;
  }
  return names;
}

constexpr auto LanguageNames = Column(Languages, &Language::Name);
constexpr auto AudioNames = Column(AudioExtensions, &Extension::Name);
constexpr auto SubNames = Column(SubExtensions, &Extension::Name);

// The row whose name equals `name` but for case; the table's size where there is none.
std::size_t RowOf(std::span<const std::string_view> names, std::string_view name) {
  const auto found = std::find_if(names.begin(), names.end(),
                                  [name](std::string_view row) { return EqualNoCase(row, name); });
  return static_cast<std::size_t>(std::distance(names.begin(), found));
}

// The same with an index, for the long tables that scripts of a million lines ask.
std::size_t IndexedRow(const std::unordered_map<std::string, std::size_t>& index, std::string_view name) {
  const auto found = index.find(Lower(name));
  return found == index.end() ? index.size() : found->second;
}

std::unordered_map<std::string, std::size_t> LowerIndex(std::span<const std::string_view> names) {
  std::unordered_map<std::string, std::size_t> index;
  for (std::size_t row = 0; row < names.size(); ++row) {
    index.emplace(Lower(names[row]), row);
  }
  return index;
}

std::size_t LanguageRow(std::string_view name) {
  static const auto index = LowerIndex(LanguageNames);
  return IndexedRow(index, name);
}

template <std::size_t Count>
std::string_view ConvertWord(const std::array<Extension, Count>& table, std::string_view word) {
  const auto row = std::find_if(table.begin(), table.end(), [word](const Extension& extension) {
    return EqualNoCase(extension.ScriptWord, word);
  });
  return row == table.end() ? std::string_view() : row->Name;
}

}  // namespace

std::string_view CLsDVD::LangCodeToLangName(std::string_view code) {
  const auto* row = std::find_if(Languages.begin(), Languages.end(),
                                 [code](const Language& language) { return language.Code == code; });
  return row == Languages.end() ? "English" : row->Name;
}

std::string_view CLsDVD::LangNameToLangCode(std::string_view name) {
  const std::size_t row = LanguageRow(name);
  return row < LanguageCount ? Languages[row].Code : std::string_view();
}

std::size_t CLsDVD::LanguageIndex(std::string_view name) {
  return LanguageRow(name) % LanguageCount;
}

std::size_t CLsDVD::ExtensionIndex(std::string_view name) {
  return RowOf(AudioNames, name) % AudioExtensionCount;
}

std::size_t CLsDVD::SubExtensionIndex(std::string_view name) {
  return RowOf(SubNames, name) % SubExtensionCount;
}

std::size_t CLsDVD::UOPSIndex(std::string_view name, bool numbered) {
  if (!numbered) {
    static const auto index = LowerIndex(UserOperations);
    return IndexedRow(index, name);
  }
  const std::string word = Replace(Lower(Split(name, " ").front()), "uop", "");
  const std::string_view digits = Trim(word);
  if (digits.empty() || digits.size() >= 3) {
    return NoUserOperation;
  }
  const bool number = std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; });
  const auto index = static_cast<std::size_t>(LeadingNumber(digits));
  return number && index < NoUserOperation ? index : NoUserOperation;
}

std::string_view CLsDVD::SpareLanguage(std::size_t row) {
  return row < LanguageCount ? Languages[row].Code : std::string_view();
}

std::span<const std::string_view> CLsDVD::LanguageArray() {
  return LanguageNames;
}
std::span<const std::string_view> CLsDVD::AudioArray() {
  return AudioNames;
}
std::span<const std::string_view> CLsDVD::SubArray() {
  return SubNames;
}
std::span<const std::string_view> CLsDVD::AudioRoomType() {
  return RoomTypes;
}

std::string_view CLsDVD::UserOP(std::size_t index) {
  return index < UserOperations.size() ? UserOperations[index] : std::string_view();
}

std::string_view CLsDVD::FlagName(std::string_view name) {
  const auto* row = std::find_if(Languages.begin(), Languages.end(),
                                 [name](const Language& language) { return language.Name == name; });
  return row == Languages.end() ? "None" : row->Flag;
}

std::string_view CLsDVD::ConvertExtensions(std::string_view scriptWord) {
  return ConvertWord(AudioExtensions, scriptWord);
}

std::string_view CLsDVD::ConvertSubExtensions(std::string_view scriptWord) {
  return ConvertWord(SubExtensions, scriptWord);
}

}  // namespace quorvelant
