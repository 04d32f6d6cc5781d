#include "model/cls_dvd.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace quorvelant {
namespace {

TEST(CLsDVD, LanguagesGoBothWaysByTheirOwnRulesOfCase) {
  EXPECT_EQ(CLsDVD::LangNameToLangCode("ENGLISH"), "en");
  EXPECT_EQ(CLsDVD::LangNameToLangCode("Klingon"), "");
  EXPECT_EQ(CLsDVD::LangCodeToLangName("xx"), "English");
  EXPECT_EQ(CLsDVD::LangCodeToLangName("FR"), "English");
  EXPECT_EQ(CLsDVD::LangCodeToLangName("iw"), "Hebrew");
  EXPECT_EQ(CLsDVD::LanguageIndex("none specified"), 0U);
  EXPECT_EQ(CLsDVD::SpareLanguage(CLsDVD::LanguageIndex("zulu")), "zu");
  EXPECT_EQ(CLsDVD::SpareLanguage(137), "");
}

TEST(CLsDVD, EveryLanguageHasItsOwnNameAndCode) {
  std::set<std::string_view> names;
  std::set<std::string_view> codes;
  for (const std::string_view name : CLsDVD::LanguageArray()) {
    names.insert(name);
    codes.insert(CLsDVD::LangNameToLangCode(name));
  }
  EXPECT_EQ(names.size(), 137U);
  EXPECT_EQ(codes.size(), 137U);
  EXPECT_EQ(CLsDVD::LanguageArray()[136], "Zulu");
}

TEST(CLsDVD, FlagsAreFoundByTheExactName) {
  EXPECT_EQ(CLsDVD::FlagName("Catalan"), "Spain");
  EXPECT_EQ(CLsDVD::FlagName("Spanish"), "Spain");
  EXPECT_EQ(CLsDVD::FlagName("english"), "None");
  EXPECT_EQ(CLsDVD::FlagName("Zulu"), "None");
}

TEST(CLsDVD, ExtensionsAndTheirWordsOfTheOtherDialect) {
  EXPECT_EQ(CLsDVD::ExtensionIndex("directors comments"), 3U);
  EXPECT_EQ(CLsDVD::ExtensionIndex("Large"), 0U) << "a subpicture's extension is none of audio";
  EXPECT_EQ(CLsDVD::SubExtensionIndex("LARGE"), 2U);
  EXPECT_EQ(CLsDVD::ConvertExtensions("Director's Comments 2"), "Alternate Directors Comments");
  EXPECT_EQ(CLsDVD::ConvertExtensions("Directors Comments"), "");
  EXPECT_EQ(CLsDVD::ConvertSubExtensions("forced CAPTION"), "Forced");
  EXPECT_EQ(CLsDVD::AudioRoomType()[8], "Karaoke");
}

TEST(CLsDVD, UserOperationsByNameAndByNumber) {
  struct Case {
    std::string Text;
    bool Numbered;
    std::size_t Index;
  };
  for (const Case& c :
       {Case{"Stop", false, 3}, Case{"videomodechange", false, 24},
        Case{"uop12", false, CLsDVD::NoUserOperation}, Case{"UOP12 Resume()", true, 12},
        Case{"uop0", true, 0}, Case{"uop25", true, CLsDVD::NoUserOperation},
        Case{"uop123", true, CLsDVD::NoUserOperation}, Case{"", true, CLsDVD::NoUserOperation},
        Case{"uop-1", true, CLsDVD::NoUserOperation}}) {
    EXPECT_EQ(CLsDVD::UOPSIndex(c.Text, c.Numbered), c.Index) << c.Text;
  }
  EXPECT_EQ(CLsDVD::UserOP(10), "MenuCall-Title");
  EXPECT_EQ(CLsDVD::UserOP(25), "");
}

}  // namespace
}  // namespace quorvelant
