#include "model/cls_dvd.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <string_view>
#include <tuple>

#include "base/text.h"
#include "support/folders.h"

namespace quorvelant {
namespace {

TEST(CLsDVD, EachLookUpHasItsOwnRuleOfCase) {
  EXPECT_EQ(CLsDVD::LangNameToLangCode("ENGLISH"), "en");
  EXPECT_EQ(CLsDVD::LangNameToLangCode("Klingon"), "");
  EXPECT_EQ(CLsDVD::LangCodeToLangName("iw"), "Hebrew");
  EXPECT_EQ(CLsDVD::LangCodeToLangName("FR"), "English") << "what is not known is English";
  EXPECT_EQ(CLsDVD::SpareLanguage(CLsDVD::LanguageIndex("zulu")), "zu");
  EXPECT_EQ(CLsDVD::SpareLanguage(CLsDVD::LanguageArray().size()), "");
  for (const std::string_view text : {"German", "DE", " deu ", "ger"}) {
    EXPECT_EQ(CLsDVD::LanguageCalled(text), CLsDVD::LanguageIndex("German")) << text;
  }
  for (const std::string_view text : {"Klingon", "", " ", "|", "d"}) {
    EXPECT_EQ(CLsDVD::LanguageCalled(text), std::nullopt) << text;
  }
  EXPECT_EQ(CLsDVD::FlagName("Catalan"), "Spain");
  EXPECT_EQ(CLsDVD::FlagName("english"), "None");
  EXPECT_EQ(CLsDVD::ExtensionIndex("directors comments"), 3U);
  EXPECT_EQ(CLsDVD::ExtensionIndex("Large"), 0U) << "a subpicture's extension is none of audio";
  EXPECT_EQ(CLsDVD::SubExtensionIndex("LARGE"), 2U);
  EXPECT_EQ(CLsDVD::ConvertExtensions("Director's Comments 2"), "Alternate Directors Comments");
  EXPECT_EQ(CLsDVD::ConvertExtensions("Directors Comments"), "");
  EXPECT_EQ(CLsDVD::ConvertSubExtensions("forced CAPTION"), "Forced");
}

// Each cell of the page's table of languages, as "| Name | `xx` | `xxx`, `also` |".
TEST(CLsDVD, ThePageOfListsNamesEveryLanguage) {
  std::ifstream page(SourceFile("docs/lists.md"));
  std::size_t rows = 0;
  for (std::string line; std::getline(page, line);) {
    const auto cells = Split(line, " | ");
    if (cells.size() == 3 && cells[1].starts_with('`')) {
      const std::size_t row = CLsDVD::LanguageIndex(cells[0].substr(2));
      EXPECT_EQ(row, ++rows) << line;
      const std::string words =
          Replace(Replace(std::string(cells[1]) + ", " + std::string(cells[2]), "`", ""), " |", "");
      for (const std::string_view word : Split(words, ", ")) {
        EXPECT_EQ(CLsDVD::LanguageCalled(word), row) << line;
      }
    }
  }
  EXPECT_EQ(rows + 1, CLsDVD::LanguageCount) << "all but None Specified";
}

TEST(CLsDVD, UserOperationsByNameAndByNumber) {
  constexpr std::size_t None = CLsDVD::NoUserOperation;
  using Case = std::tuple<std::string_view, bool, std::size_t>;
  for (const auto& [text, numbered, index] :
       {Case{"Stop", false, 3}, Case{"videomodechange", false, 24}, Case{"uop12", false, None},
        Case{"UOP12 Resume()", true, 12}, Case{"uop0", true, 0}, Case{"uop25", true, None},
        Case{"uop123", true, None}, Case{"", true, None}, Case{"uop-1", true, None}}) {
    EXPECT_EQ(CLsDVD::UOPSIndex(text, numbered), index) << text;
  }
  EXPECT_EQ(CLsDVD::UserOP(25), "");
}

}  // namespace
}  // namespace quorvelant
