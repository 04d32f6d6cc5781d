#include "menu/menu_labels.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "base/text.h"
#include "menu/label_tables.h"
#include "model/cls_dvd.h"

namespace quorvelant {
namespace {

// A label without its value would leave a film unnamed, and an empty one a button that cannot be seen.
TEST(MenuLabels, AreCompleteInEveryLanguage) {
  const auto whole = [](const auto& table) {
    for (const LabelRow& row : table) {
      for (std::size_t i = 0; i < row.size(); ++i) {
        EXPECT_FALSE(row[i].empty()) << row[0] << ", " << LabelLanguages[i];
        EXPECT_EQ(Contains(row[i], "{}"), Contains(row[0], "{}")) << row[0] << ", " << LabelLanguages[i];
      }
    }
  };
  whole(LabelTexts);
  whole(ExtensionTexts);
  whole(LanguageTexts);
  for (const LabelRow& row : LanguageTexts) {
    EXPECT_TRUE(row[0] == "None Specified" || CLsDVD::LanguageIndex(row[0]) != 0) << row[0];
  }
  for (const std::string_view language : LabelLanguages) {
    EXPECT_NE(CLsDVD::LanguageIndex(language), 0U) << language;
  }
  for (const auto& names : {CLsDVD::AudioArray(), CLsDVD::SubArray()}) {
    for (const std::string_view name : names) {
      EXPECT_TRUE(name == "Unspecified" || name == "Normal" ||
                  std::any_of(ExtensionTexts.begin(), ExtensionTexts.end(),
                              [name](const LabelRow& row) { return row[0] == name; }))
          << name;
    }
  }
}

TEST(MenuLabels, SpeakTheViewersLanguageAndTheUsersOwn) {
  const std::map<std::string, std::string> own{
      {"Main Menu", "Zurück"}, {"Play {}", "Los"}, {"French", "Welsch"}};
  const MenuLabels labels("German", own);
  EXPECT_EQ(labels.Of("Main Menu"), "Zurück");
  EXPECT_EQ(labels.Of("Play {}", "Ein Film"), "Los");
  EXPECT_EQ(labels.Of("{} Options", "{} 2"), "{} 2: Optionen");
  EXPECT_EQ(labels.StreamName({1, "English", "Directors Comments"}), "Englisch (Kommentar der Regie)");
  EXPECT_EQ(labels.StreamName({1, "French", "Normal"}), "Welsch");
  EXPECT_EQ(labels.StreamName({1, "Zulu", ""}), "Zulu");
  EXPECT_EQ(MenuLabels("Klingon", {}).Of("Next Page"), "Next Page");
}

}  // namespace
}  // namespace quorvelant
