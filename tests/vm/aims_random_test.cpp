#include <fmt/format.h>
#include <gtest/gtest.h>

#include <map>
#include <random>

#include "model/keys.h"
#include "support/trial.h"
#include "vm/check_commands.h"
#include "vm/command_aims.h"
#include "vm/command_target.h"

namespace quorvelant {
namespace {

using Places = std::vector<DiscPlace>;
constexpr DiscPlace Nowhere;

// The live elements of a disc.
struct Counted {
  explicit Counted(const Project& project) {
    VisitLive(project.Disc, {}, &DiscPlace::Entry, [this](const DiscPlace& set, const VTS_P& entry) {
      (set.Entry == 1 ? Manager : Sets).push_back(set);
      VisitLive(entry.Title, {.Entry = set.Entry, .InTitles = true}, &DiscPlace::Unit,
                [this](const DiscPlace& at, const Title_P&) { Titles.push_back(at); });
      VisitLivePgcs(entry, set.Entry, [this](const DiscPlace& pgc, const PGC_P& chain) {
        Pgcs.push_back(pgc);
        VisitLive(chain.PG, pgc, &DiscPlace::Program, [this](const DiscPlace& at, const PG_P& program) {
          VisitLive(program.Cell, at, &DiscPlace::Cell,
                    [this](const DiscPlace& cell, const Cell_P&) { Cells.push_back(cell); });
          const bool onDisc = !Cells.empty() && at.Holds(Cells.back());
          (onDisc ? Programs : Empty).push_back(at);
        });
      });
    });
  }
  Places Manager, Sets, Titles, Pgcs, Programs, Empty, Cells;
};

Places Below(const Places& places, const DiscPlace& parent) {
  Places below;
  std::ranges::copy_if(places, std::back_inserter(below), [&](const auto& at) { return parent.Holds(at); });
  return below;
}
DiscPlace Nth(const Places& places, std::int32_t number) {
  const bool there = number >= 1 && std::cmp_less_equal(number, places.size());
  return there ? places[static_cast<std::size_t>(number) - 1] : Nowhere;
}
DiscPlace TitlesOf(const DiscPlace& at) {
  return {.Entry = at.Entry, .InTitles = true};
}
// Through what the PGCs that a link may lead to are counted.
DiscPlace TableOf(const DiscPlace& at) {
  return at.InTitles ? TitlesOf(at) : at.UnitOf();
}

// The elements to which eight bytes lead a player.
Places MeantBy(const std::string& hex, const Counted& disc, const DiscPlace& at) {
  const CommandTarget target = TargetOf(ParseCommandHex(hex));
  const auto managerPgc = [&] { return Nth(Below(disc.Pgcs, {.Entry = 1}), target.Pgc); };
  Places meant;
  if (target.TimerPgc > 0) {
    meant.push_back(Nth(Below(disc.Pgcs, TableOf(at)), target.TimerPgc));
  }
  switch (target.What) {
    case Instruction::JumpTt:
      return {Nth(disc.Titles, target.Title)};
    case Instruction::JumpVtsTt:
      return {Nth(Below(disc.Titles, TitlesOf(at)), target.Title)};
    case Instruction::JumpVtsPtt:
      return {Nth(Below(disc.Programs, Nth(Below(disc.Titles, TitlesOf(at)), target.Title)), target.Part)};
    case Instruction::CallSs:
      return {managerPgc(), Nth(Below(disc.Cells, at.PgcOf()), target.ResumeCell)};
    case Instruction::JumpSs: {
      const DiscPlace set = Nth(disc.Sets, target.TitleSet);
      return target.Space == SystemSpace::SetMenu ? Places{set, Nth(Below(disc.Titles, set), target.Title)}
                                                  : Places{managerPgc()};
    }
    default:
      break;
  }
  const auto link = [&](const Places& places, const DiscPlace& parent) {
    meant.push_back(Nth(Below(places, parent), target.Link.Number));
  };
  if (target.IsLink(LinkKind::Pgc)) {
    link(disc.Pgcs, TableOf(at));
  } else if (target.IsLink(LinkKind::Program) || target.IsLink(LinkKind::Part)) {
    link(disc.Programs, target.IsLink(LinkKind::Part) ? at.UnitOf() : at.PgcOf());
  } else if (target.IsLink(LinkKind::Cell)) {
    link(disc.Cells, at.PgcOf());
  }
  return meant;
}

// A project under random work, with the index of its commands.
class Worker {
 public:
  explicit Worker(unsigned seed) : random_(seed) {
    while (project_.Disc.Count() < 4) {
      AddEntry();
    }
    Fill();
    aims_.emplace(project_, Rules::Players);
  }

  void Step() {
    const auto before = Meanings();
    removed_ = Nowhere;
    Draw(2) == 0 ? Remove() : Add();
    Compare(before, Meanings());
    const CommandAims anew(project_, Rules::Players);
    const Counted disc(project_);
    for (const Places* places : {&disc.Titles, &disc.Pgcs, &disc.Programs}) {
      const std::string key = KeyOf(Pick(*places));
      ASSERT_EQ(aims_->To(key), anew.To(key)) << key;
    }
  }

 private:
  struct Meaning {
    std::string Text;
    Places Elements;  // none where the command leads nowhere
  };
  using Meanings_ = std::map<CommandPlace, Meaning>;

  std::size_t Draw(std::size_t count) { return random_() % count; }
  DiscPlace Pick(const Places& places) { return places.empty() ? Nowhere : places[Draw(places.size())]; }
  std::string NewName() { return fmt::format("Name {}", ++names_); }

  void AddEntry() {
    VTS_P& entry = project_.Disc.Add({});
    AddPgc(entry.Lang.Add({}).PGC);
    if (project_.Disc.Count() > 1) {
      AddTitle(entry);
    }
  }
  void AddTitle(VTS_P& entry) {
    Title_P& title = entry.Title.Add({});
    title.TitleName = NewName();
    AddPgc(title.PGC);
    AddPgc(title.PGC);
  }
  void AddPgc(Collection<PGC_P>& pgcs) {
    PGC_P& pgc = pgcs.Add({});
    pgc.PGCName = NewName();
    while (pgc.PG.Count() < 3) {
      AddProgram(pgc);
    }
  }
  void AddProgram(PGC_P& pgc) {
    PG_P& program = pgc.PG.Add({});
    program.PGName = NewName();
    for (std::size_t cells = Draw(3); cells > 0; --cells) {
      program.Cell.Add({}).CellName = NewName();
    }
  }

  void Add() {
    const Counted disc(project_);
    const DiscPlace at = Pick(disc.Pgcs);
    const std::string key = KeyOf(at);
    const DiscPlace program = Pick(Draw(2) == 0 ? disc.Empty : disc.Programs);
    switch (Draw(5)) {
      case 0:
        AddEntry();
        return Settle(project_.Disc.Count());
      case 1:
        at.InTitles ? AddTitle(*FindEntry(project_.Disc, key))
                    : AddPgc(FindLanguage(project_.Disc, key)->PGC);
        return Settle(at.Entry);
      case 2:
      case 3:
        AddProgram(*FindPgc(project_.Disc, key));
        return Settle(at.Entry);
      default:
        FindProgram(project_.Disc, KeyOf(program))->Cell.Add({}).CellName = NewName();
        return Settle(program.Entry);
    }
  }

  void Remove() {
    const Counted disc(project_);
    const std::array lists{&disc.Sets, &disc.Titles, &disc.Pgcs, &disc.Programs, &disc.Empty, &disc.Cells};
    const Places& places = *lists.at(std::min<std::size_t>(Draw(12), 5));
    if (places.size() < 3) {
      return;
    }
    removed_ = Pick(places);
    for (const CommandPlace& place : aims_->To(KeyOf(removed_))) {
      ResetToNop(*FindCommand(project_, place));
    }
    *At(removed_).Removed = true;
    Settle(removed_.Entry);
  }

  struct Element {
    std::string* Name;
    bool* Removed;
  };
  Element At(const DiscPlace& at) {
    const std::string key = KeyOf(at);
    const auto of = [](auto* element, auto name) { return Element{&(element->*name), &element->Removed}; };
    return at.Cell > 0      ? of(FindCell(project_.Disc, key), &Cell_P::CellName)
           : at.Program > 0 ? of(FindProgram(project_.Disc, key), &PG_P::PGName)
           : at.Pgc > 0     ? of(FindPgc(project_.Disc, key), &PGC_P::PGCName)
           : at.Unit > 0    ? of(FindTitle(project_.Disc, key), &Title_P::TitleName)
                            : of(FindEntry(project_.Disc, key), &VTS_P::Key);
  }

  // What follows every change of the structure; any entry may hold commands that became NOP.
  void Settle(std::size_t entry) {
    std::vector<std::size_t> entries{entry};
    for (const CommandEdit& edit : aims_->Renumbered(project_, std::array{entry})) {
      FindCommand(project_, edit.Place)->FullCommand = edit.Text;
      entries.push_back(PlaceOfKey(edit.Place.Key)->Entry);
    }
    for (std::size_t other = 1; other <= project_.Disc.Count() && removed_ != Nowhere; ++other) {
      entries.push_back(other);
    }
    aims_->Update(project_, entries);
  }

  // Commands to what is in reach, by name or by number.
  void Fill() {
    const Counted disc(project_);
    for (const DiscPlace& at : disc.Pgcs) {
      PGC_P& pgc = *FindPgc(project_.Disc, KeyOf(at));
      for (int i = 0; i < 8; ++i) {
        pgc.PreCommands.emplace_back().FullCommand = RandomText(disc, at);
      }
      for (Cell_P* cell : LiveCells(pgc)) {
        cell->ButtonCommands.emplace_back().Commands.emplace_back().FullCommand = RandomText(disc, at);
      }
    }
  }

  std::string RandomText(const Counted& disc, const DiscPlace& at) {
    const auto cell = Target(Below(disc.Cells, at.PgcOf()));
    const auto program = Target(Below(disc.Programs, at.PgcOf()));
    const auto part = Target(Below(disc.Programs, at.UnitOf()));
    const auto pgc = Target(Below(disc.Pgcs, TableOf(at)));
    const auto menu = Target(Below(disc.Pgcs, {.Entry = 1}), "pgc_");
    const std::array texts{
        "LinkPGCN " + pgc,
        "If ( GPRM1 == 3 ) LinkPGN " + program + ", button=1",
        "{ SetSTN audio=1 ; LinkCN " + cell + ", button=0 }",
        "JumpTT " + Target(disc.Titles),
        "JumpSS " + menu,
        fmt::format("JumpSS vts_{}, vts_ttn_1 : RootMenu", Draw(disc.Sets.size()) + 1),
        "JumpVTS_TT " + Target(Below(disc.Titles, TitlesOf(at))),
        "CallSS RSM=" + cell + ",, " + menu,
        "{ SetNVTMR NV_TMR=9, TT_PGCN=" + pgc + " ; LinkPTT " + part + " }",
        "LinkPTT " + part + ", button=1",
        std::string("JumpVTS_PTT ptt_2 @ vts_ttn_1"),
    };
    constexpr std::size_t InMenus = 6;
    return texts.at(Draw(at.InTitles ? texts.size() : InMenus));
  }
  std::string Target(const Places& places, std::string_view word = "") {
    const std::size_t index = Draw(std::max<std::size_t>(places.size(), 1));
    if (places.empty() || Draw(2) == 0) {
      return fmt::format("{}{}", word, index + 1);
    }
    return *At(places[index]).Name;
  }

  // What all live commands mean by their bytes, and that the index says the same.
  Meanings_ Meanings() {
    Meanings_ meanings;
    const Counted disc(project_);
    NameIndex names(project_, Rules::Players);
    const auto add = [&](const DiscPlace& at, ListKind kind, const CommandList& list) {
      for (std::size_t i = 0; i < list.size(); ++i) {
        const std::string& text = list[i].FullCommand;
        const Resolution resolved = ResolveText(text, {}, &names, {.Numbers = NumericTargets::BehindNames});
        Places meant = MeantBy(resolved.Hex, disc, at);
        if (resolved.TargetMissing || std::ranges::count(meant, Nowhere) > 0) {
          meant.clear();
        }
        std::vector<std::string> keys;
        for (const CommandReferenceAim& aim : aims_->Of(text, KeyOf(at))) {
          if (aim.Text.Kind != ReferenceKind::Menu) {
            keys.push_back(aim.Key);
          }
        }
        const bool agrees = meant.empty() || std::ranges::equal(meant, keys, {}, KeyOf);
        EXPECT_TRUE(agrees) << text << " in " << KeyOf(at);
        meanings[{KeyOf(at), kind, 0, i}] = {text, meant};
      }
    };
    for (const DiscPlace& at : disc.Pgcs) {
      add(at, ListKind::Pre, FindPgc(project_.Disc, KeyOf(at))->PreCommands);
    }
    for (const DiscPlace& at : disc.Cells) {
      for (const ButtonCommands_P& play : FindCell(project_.Disc, KeyOf(at))->ButtonCommands) {
        add(at, ListKind::Button, play.Commands);
      }
    }
    return meanings;
  }

  // Every command leads where it led; NOP where that was removed, nowhere where it is no more on the disc.
  void Compare(const Meanings_& before, const Meanings_& after) {
    const Places empty = Counted(project_).Empty;
    for (const auto& [place, now] : after) {
      const auto former = before.find(place);
      if (former == before.end() || former->second.Elements.empty() ||
          former->second.Elements == now.Elements) {
        continue;
      }
      const auto any = [&](auto is) { return std::ranges::any_of(former->second.Elements, is); };
      const bool lost = any([this](const auto& at) { return removed_ != Nowhere && removed_.Holds(at); });
      const bool emptied = any([&](const auto& at) { return std::ranges::count(empty, at) > 0; });
      EXPECT_TRUE(lost ? now.Text == "NOP" : emptied && now.Elements.empty())
          << place.Key << ": " << former->second.Text << " became " << now.Text << " after "
          << KeyOf(removed_);
    }
  }

  std::mt19937 random_;
  Project project_;
  std::optional<CommandAims> aims_;
  DiscPlace removed_;
  int names_ = 0;
};

TEST(CommandAims, EveryCommandKeepsItsTargetThroughRandomWork) {
  const auto seeds = static_cast<unsigned>(TrialCount(10, 200));
  for (unsigned seed = 1; seed <= seeds; ++seed) {
    Worker worker(seed);
    for (int step = 0; step < 60 && !HasFailure(); ++step) {
      worker.Step();
    }
    ASSERT_FALSE(HasFailure()) << "seed " << seed;
  }
}

}  // namespace
}  // namespace quorvelant
