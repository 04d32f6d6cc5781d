#include "vm/command_completion.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "model/default_structure.h"
#include "model/keys.h"
#include "vm/messages.h"

namespace quorvelant {
namespace {

Project Sample() {
  Project project;
  MakeDefaultStructure(project);
  PG_P& program = FindPgc(project.Disc, "VTS1.TITLE1.PGC1")->PG.Add({});
  program.PGName = "Part one";
  program.Cell.Add({}).CellName = "Cell one";
  FindTitle(project.Disc, "VTS1.TITLE1")->PGC.Add(MakePgc("Film 2", 2, 0, 1, "VTS1.TITLE1.PGC2"));
  return project;
}

// What can stand where, by the text before the cursor.
TEST(CommandCompletion, OffersWhatThePlaceTakes) {
  const Project project = Sample();
  const struct {
    const char* Place;
    const char* Before;
    std::size_t Begin;
    const char* Has;
    const char* HasNot;
  } cases[] = {
      {"VTS1.TITLE1.PGC1", "", 0, "LinkPGCN Film 2", "JumpTT VTS1_Title1"},
      {"VTS1.TITLE1.PGC1", "  Link", 2, "LinkPGN Part one, button=0", ")"},
      {"VTS1.TITLE1.PGC1", "", 0, "RSM", "JumpSS FP_DOM"},
      {"VTS1.TITLE1.PGC1", "", 0, "CallSS RSM=0,RootMenu", "GPRM1"},
      {"FirstPGC", "", 0, "JumpTT VTS1_Title1", "LinkPGCN Film 2"},
      {"FirstPGC", "", 0, "If ( ", "=="},
      {"FirstPGC", "", 0, "mov GPRM0, GPRM0", "GPRM0"},
      {"FirstPGC", "If ( ", 5, "GPRM15", "SPRM0"},
      {"FirstPGC", "If ( GP", 5, "GPRM0", "=="},
      {"FirstPGC", "If ( GPRM3 ", 11, ">=", "GPRM0"},
      {"FirstPGC", "if(GPRM3 == ", 12, "SPRM23", "=="},
      {"FirstPGC", "If ( GPRM3 == 2 ", 16, ")", "SPRM1"},
      {"FirstPGC", "If ( GPRM3 == 2 ) Jump", 18, "JumpTT VTS1_Title1", "If ( "},
      {"VTS1.TITLE1.PGC1", "{ SetSTN audio=1 ; ", 19, "LinkPGCN Film 2", "SetSTN audio=1"},
      {"VTS1.TITLE1.PGC1", "mov GPRM0, 1 ; ", 15, "If ( ", "Break"},
      {"VTS1.TITLE1.PGC1", "mov GPRM0, 1 ; If ( GPRM0 == 1 ) Li", 33, "LinkTopC, button=0", "If ( "},
      {"VTS1.TITLE1.PGC1", "LinkPGCN Film (", 0, "LinkPGCN Film 2", "GPRM1"},  // a name, no comparison
  };
  for (const auto& test : cases) {
    const CommandCompletion completion(project, Rules::Players, *StandOf(project, test.Place));
    const CommandOffers found = completion.At(test.Before);
    const auto has = [&found](std::string_view text) {
      return std::ranges::find(found.Offers, text, &CommandOffer::Text) != found.Offers.end();
    };
    EXPECT_EQ(found.Begin, test.Begin) << test.Before;
    EXPECT_TRUE(has(test.Has)) << test.Place << ": " << test.Before << ": " << test.Has;
    EXPECT_FALSE(has(test.HasNot)) << test.Place << ": " << test.Before << ": " << test.HasNot;
  }
}

// What is offered is right as it stands.
TEST(CommandCompletion, EveryOfferIsACommand) {
  const Project project = Sample();
  NameIndex names(project, Rules::Players);
  for (const char* place : {"FirstPGC", "VMG1.LANGUAGE1.PGC1", "VTS1.LANGUAGE1.PGC1", "VTS1.TITLE1.PGC1"}) {
    const CommandCompletion completion(project, Rules::Players, *StandOf(project, place));
    for (const CommandOffer& offer : completion.At("").Offers) {
      if (offer.Note != "condition") {
        EXPECT_FALSE(TroubleIn(offer.Text, names)) << offer.Text;
      }
      EXPECT_FALSE(offer.Note.empty()) << offer.Text;
    }
  }
}

TEST(CommandTrouble, StandsAtItsPlace) {
  const Project project = Sample();
  NameIndex names(project, Rules::Players);
  const struct {
    const char* Text;
    const MessageKind* Kind;  // nullptr: right
    std::size_t Begin = 0;
    std::size_t End = 0;
  } cases[] = {
      {"LinkPGCN Film 2", nullptr},
      {"linkpgcn film2", nullptr},
      {"LinkPGCN Filn 2", &message::CommandLeadsNowhere, 9, 15},
      {"If ( GPRM3 == 2 ) LinkPGCN Filn", &message::CommandLeadsNowhere, 27, 31},
      {"Fly", &message::CommandUnknown, 0, 3},
      {"If ( GPRM3 2 ) Break", &message::CommandWithoutOperator, 0, 20},
      {"SetHL_BTNN HL_BTTN=90", &message::CommandNumberBeyondField, 0, 21},
      {"SetSTN audio=99", &message::CommandStreamBeyondDisc, 0, 15},
      {"mov GPRM99, 1", &message::CommandRegisterBeyondRange, 0, 13},
  };
  for (const auto& test : cases) {
    const auto trouble = TroubleIn(test.Text, names);
    ASSERT_EQ(trouble.has_value(), test.Kind != nullptr) << test.Text;
    if (trouble) {
      EXPECT_EQ(trouble->Words.Code, test.Kind->Code) << test.Text;
      EXPECT_EQ(std::pair(trouble->Begin, trouble->End), std::pair(test.Begin, test.End)) << test.Text;
    }
  }
}

}  // namespace
}  // namespace quorvelant
