#include "model/cls_dvd.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
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
  std::string_view Also;  // further codes and names between "|": the three letters of ISO 639-2 first
};

constexpr std::array Languages{
    Language{"None Specified", " ", "None", ""},
    Language{"Abkhazian", "ab", "None", "abk"},
    Language{"(Afan) Oromo", "om", "None", "orm|oromo"},
    Language{"Afar", "aa", "None", "aar"},
    Language{"Afrikaans", "af", "None", "afr"},
    Language{"Albanian", "sq", "None", "alb|sqi"},
    Language{"Amharic", "am", "None", "amh"},
    Language{"Arabic", "ar", "None", "ara"},
    Language{"Armenian", "hy", "None", "arm|hye"},
    Language{"Assamese", "as", "None", "asm"},
    Language{"Aymara", "ay", "None", "aym"},
    Language{"Azerbaijani", "az", "None", "aze"},
    Language{"Bashkir", "ba", "None", "bak"},
    Language{"Basque", "eu", "None", "baq|eus"},
    Language{"Bengali; Bangla", "bn", "None", "ben|bengali|bangla"},
    Language{"Bhutani", "dz", "None", "dzo|dzongkha"},
    Language{"Bihari", "bh", "None", "bih"},
    Language{"Bislama", "bi", "None", "bis"},
    Language{"Breton", "br", "None", "bre"},
    Language{"Bulgarian", "bg", "Bulgaria", "bul"},
    Language{"Burmese", "my", "None", "bur|mya"},
    Language{"Byelorussian", "be", "None", "bel|belarusian"},
    Language{"Cambodian", "km", "None", "khm|khmer"},
    Language{"Catalan", "ca", "Spain", "cat"},
    Language{"Chinese", "zh", "China", "chi|zho"},
    Language{"Corsican", "co", "None", "cos"},
    Language{"Croatian", "hr", "None", "hrv|scr"},
    Language{"Czech", "cs", "None", "cze|ces"},
    Language{"Danish", "da", "Denmark", "dan"},
    Language{"Dutch", "nl", "Netherlands", "dut|nld"},
    Language{"English", "en", "England", "eng"},
    Language{"Esperanto", "eo", "None", "epo"},
    Language{"Estonian", "et", "Estonia", "est"},
    Language{"Faroese", "fo", "None", "fao"},
    Language{"Fiji", "fj", "None", "fij"},
    Language{"Finnish", "fi", "Finland", "fin"},
    Language{"French", "fr", "France", "fre|fra"},
    Language{"Frisian", "fy", "None", "fry"},
    Language{"Galician", "gl", "None", "glg"},
    Language{"Georgian", "ka", "None", "geo|kat"},
    Language{"German", "de", "Germany", "ger|deu"},
    Language{"Greek", "el", "Greece", "gre|ell"},
    Language{"Greenlandic", "kl", "None", "kal"},
    Language{"Guarani", "gn", "None", "grn"},
    Language{"Gujarati", "gu", "None", "guj"},
    Language{"Hausa", "ha", "None", "hau"},
    Language{"Hebrew", "iw", "None", "heb|he"},
    Language{"Hindi", "hi", "None", "hin"},
    Language{"Hungarian", "hu", "Hungary", "hun"},
    Language{"Icelandic", "is", "Iceland", "ice|isl"},
    Language{"Indonesian", "in", "Indonesia", "ind|id"},
    Language{"Interlingua", "ia", "None", "ina"},
    Language{"Interlingue", "ie", "None", "ile"},
    Language{"Inupiak", "ik", "None", "ipk"},
    Language{"Irish", "ga", "Ireland", "gle"},
    Language{"Italian", "it", "Italy", "ita"},
    Language{"Japanese", "ja", "Japan", "jpn"},
    Language{"Javanese", "jw", "None", "jav|jv"},
    Language{"Kannada", "kn", "None", "kan"},
    Language{"Kazakh", "kk", "None", "kaz"},
    Language{"Korean", "ko", "Korea", "kor"},
    Language{"Kashmiri", "ks", "None", "kas"},
    Language{"Kinyarwanda", "rw", "None", "kin"},
    Language{"Kirghiz", "ky", "None", "kir|kyrgyz"},
    Language{"Kirundi", "rn", "None", "run"},
    Language{"Kurdish", "ku", "None", "kur"},
    Language{"Laothian", "lo", "None", "lao"},
    Language{"Latin", "la", "None", "lat"},
    Language{"Latvian, Lettish", "lv", "Latvia", "lav|latvian|lettish"},
    Language{"Lingala", "ln", "None", "lin"},
    Language{"Lithuanian", "lt", "Lithuania", "lit"},
    Language{"Macedonian", "mk", "None", "mac|mkd"},
    Language{"Malagasy", "mg", "None", "mlg"},
    Language{"Malay", "ms", "None", "may|msa"},
    Language{"Malayalam", "ml", "None", "mal"},
    Language{"Maltese", "mt", "None", "mlt"},
    Language{"Maori", "mi", "None", "mao|mri"},
    Language{"Marathi", "mr", "None", "mar"},
    Language{"Moldavian", "mo", "None", "mol"},
    Language{"Mongolian", "mn", "None", "mon"},
    Language{"Nauru", "na", "None", "nau"},
    Language{"Nepali", "ne", "None", "nep"},
    Language{"Norwegian", "no", "Norway", "nor|nob|nno|nb|nn"},
    Language{"Occitan", "oc", "None", "oci"},
    Language{"Oriya", "or", "None", "ori"},
    Language{"Pashto, Pushto", "ps", "None", "pus|pashto|pushto"},
    Language{"Persian", "fa", "None", "per|fas"},
    Language{"Polish", "pl", "Poland", "pol"},
    Language{"Portuguese", "pt", "Portugal", "por"},
    Language{"Punjabi", "pa", "None", "pan"},
    Language{"Quechua", "qu", "None", "que"},
    Language{"Rhaeto-Romance", "rm", "None", "roh"},
    Language{"Romanian", "ro", "Romania", "rum|ron"},
    Language{"Russian", "ru", "Russia", "rus"},
    Language{"Samoan", "sm", "Samoa", "smo"},
    Language{"Sangro", "sg", "None", "sag"},
    Language{"Sanskrit", "sa", "None", "san"},
    Language{"Scots Gaelic", "gd", "None", "gla"},
    Language{"Serbian", "sr", "None", "srp|scc"},
    Language{"Serbo-Croatian", "sh", "None", "hbs"},
    Language{"Sesotho", "st", "None", "sot"},
    Language{"Setswana", "tn", "None", "tsn"},
    Language{"Shona", "sn", "None", "sna"},
    Language{"Sindhi", "sd", "None", "snd"},
    Language{"Singhalese", "si", "None", "sin|sinhala"},
    Language{"Siswati", "ss", "None", "ssw"},
    Language{"Slovak", "sk", "None", "slo|slk"},
    Language{"Slovenian", "sl", "None", "slv"},
    Language{"Somali", "so", "None", "som"},
    Language{"Spanish", "es", "Spain", "spa"},
    Language{"Sundanese", "su", "Sudan", "sun"},
    Language{"Swahili", "sw", "None", "swa"},
    Language{"Swedish", "sv", "Sweden", "swe"},
    Language{"Tagalog", "tl", "None", "tgl|fil"},
    Language{"Tajik", "tg", "None", "tgk"},
    Language{"Tamil", "ta", "None", "tam"},
    Language{"Tatar", "tt", "None", "tat"},
    Language{"Tegulu", "te", "None", "tel|telugu"},
    Language{"Thai", "th", "Thailand", "tha"},
    Language{"Tibetan", "bo", "None", "tib|bod"},
    Language{"Tigrinya", "ti", "None", "tir"},
    Language{"Tonga", "to", "None", "ton"},
    Language{"Turkish", "tr", "Turkey", "tur"},
    Language{"Turkmen", "tk", "None", "tuk"},
    Language{"Tsonga", "ts", "None", "tso"},
    Language{"Twi", "tw", "None", "twi"},
    Language{"Ukrainian", "uk", "Ukraine", "ukr"},
    Language{"Urdu", "ur", "None", "urd"},
    Language{"Uzbek", "uz", "None", "uzb"},
    Language{"Vietnamese", "vi", "Vietnam", "vie"},
    Language{"Volapuk", "vo", "None", "vol"},
    Language{"Welsh", "cy", "None", "wel|cym"},
    Language{"Wolof", "wo", "None", "wol"},
    Language{"Xhosa", "xh", "None", "xho"},
    Language{"Yiddish", "ji", "None", "yid|yi"},
    Language{"Yoruba", "yo", "None", "yor"},
    Language{"Zulu", "zu", "None", "zul"},
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

std::optional<std::size_t> CLsDVD::LanguageCalled(std::string_view text) {
  static const std::unordered_map<std::string, std::size_t> rows = [] {
    std::unordered_map<std::string, std::size_t> index = LowerIndex(LanguageNames);
    for (std::size_t row = 0; row < LanguageCount; ++row) {
      index.emplace(Languages[row].Code, row);
      for (const std::string_view word : Split(Languages[row].Also, "|")) {
        index.emplace(word, row);
      }
    }
    index.erase(" ");
    index.erase("");
    return index;
  }();
  const auto found = rows.find(Lower(Trim(text)));
  return found == rows.end() ? std::nullopt : std::optional(found->second);
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
