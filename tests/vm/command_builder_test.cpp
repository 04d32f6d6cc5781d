// Commands from their operands to text, to bytes and back: the whole product of what an editor offers.
#include "vm/command_builder.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "vm/command_types.h"
#include "vm/command_words.h"
#include "vm/decoder.h"
#include "vm/resolver.h"

namespace quorvelant {
namespace {

using List = std::vector<CommandFields>;

// Both ends of what an operand may be.
std::vector<Operand> Edges(const OperandKinds& kinds, const NumberRange& numbers = range::Register) {
  std::vector<Operand> edges;
  for (const auto& [kind, ends] : {std::pair{OperandKind::Gprm, range::Gprm},
                                   {OperandKind::Sprm, range::Sprm},
                                   {OperandKind::Number, numbers}}) {
    if (kinds.Has(kind)) {
      edges.insert(edges.end(), {{kind, ends.Least}, {kind, ends.Most}});
    }
  }
  return edges;
}

// Every field list with every value of one more operand.
template <class Values, class Put>
List Times(const List& list, const Values& values, Put put) {
  List product;
  for (const CommandFields& fields : list) {
    for (const auto& value : values) {
      put(product.emplace_back(fields), value);
    }
  }
  return product;
}

List One(Instruction what, std::string target = {}) {
  CommandFields fields;
  fields.Command.What = what;
  fields.Target = std::move(target);
  return {fields};
}

void Append(List& all, const List& more) {
  all.insert(all.end(), more.begin(), more.end());
}
std::vector<std::int32_t> Ends(const NumberRange& numbers) {
  return {numbers.Least, numbers.Most};
}

List WithSources(const List& list, const NumberRange& numbers = range::Register) {
  return Times(list, Edges(SourceKindsOf(list[0].Command), numbers),
               [](CommandFields& f, const Operand& source) { f.Command.Source = source; });
}
List WithDestinations(const List& list) {
  return Times(list, Ends(range::Gprm),
               [](CommandFields& f, std::int32_t gprm) { f.Command.Destination = gprm; });
}
List WithLines(const List& list) {
  return Times(list, Ends(range::Line), [](CommandFields& f, std::int32_t line) { f.Command.Line = line; });
}

// Links with both ends of the button's numbers; targets as numbers, so that bytes can be told back.
struct Link {
  LinkTarget Target;
  std::string Name;
};
std::vector<Link> SubInstructionLinks() {
  std::vector<Link> links;
  for (const SubInstruction& sub : SubInstructions) {
    for (const std::int32_t button : Ends(range::LinkButton)) {
      links.push_back({{LinkKind::SubInstruction, sub.Code, button}, {}});
    }
  }
  return links;
}
std::vector<Link> AllLinks() {
  std::vector<Link> links = SubInstructionLinks();
  links.push_back({{.Kind = LinkKind::Pgc}, "300"});
  for (const std::int32_t button : Ends(range::LinkButton)) {
    links.push_back({{LinkKind::Part, 0, button}, "700"});
    links.push_back({{LinkKind::Program, 0, button}, "99"});
    links.push_back({{LinkKind::Cell, 0, button}, "255"});
  }
  return links;
}

List SystemSpaceCommands() {
  List all;
  for (const SystemSpaceTarget& target : SystemSpaceTargets) {
    for (const Instruction what : {Instruction::JumpSs, Instruction::CallSs}) {
      List list = One(what, target.Space == SystemSpace::VmgPgc ? "pgc_258" : "");
      list[0].Command.Space = target.Space;
      list[0].Command.MenuId = target.MenuId;
      if (what == Instruction::CallSs) {
        list =
            Times(list, std::vector{"", "255"}, [](CommandFields& f, const char* cell) { f.Resume = cell; });
      } else if (target.Space == SystemSpace::SetMenu) {
        list = Times(list, std::vector{1, 99}, [](CommandFields& f, std::int32_t number) {
          f.Command.TitleSet = number;
          f.Command.Title = 100 - number;
        });
      }
      Append(all, list);
    }
  }
  return all;
}

List StreamCommands() {
  List all;
  for (const bool byRegister : {false, true}) {
    const auto values = [byRegister](const NumberRange& numbers, std::vector<Operand> more) {
      std::vector<Operand> streams = byRegister ? Edges(RegistersOnly) : std::move(more);
      for (const std::int32_t number : Ends(numbers)) {
        streams.push_back(byRegister ? Operand() : Operand{OperandKind::Number, number});
      }
      return streams;
    };
    List list = Times(One(Instruction::SetStn), values(range::Audio, {Operand(), NoAudio}),
                      [](CommandFields& f, const Operand& stream) { f.Command.Audio = stream; });
    list = Times(list, values(range::Angle, {Operand()}),
                 [](CommandFields& f, const Operand& stream) { f.Command.Angle = stream; });
    list = Times(list, values(range::Subpicture, {Operand(), {OperandKind::Number, DummySubpicture}}),
                 [](CommandFields& f, const Operand& stream) { f.Command.Subpicture = stream; });
    for (CommandFields& fields : list) {
      ParsedCommand& c = fields.Command;
      const bool subpicture = !c.Subpicture.Is(OperandKind::None);
      if (!subpicture && c.Audio.Is(OperandKind::None) && c.Angle.Is(OperandKind::None)) {
        continue;
      }
      c.StreamsByRegister = byRegister;
      c.SubpictureOn = subpicture;
      all.push_back(fields);
      if (subpicture && !byRegister) {
        c.SubpictureOn = false;
        all.push_back(fields);
      }
    }
  }
  return all;
}

List PlainCommands() {
  List all;
  using I = Instruction;
  const std::pair<Instruction, const char*> jumps[] = {
      {I::Nop, ""},      {I::Break, ""},       {I::Exit, ""},
      {I::JumpTt, "99"}, {I::JumpVtsTt, "99"}, {I::JumpVtsPtt, "ptt_999 @ vts_ttn_99"}};
  for (const auto& [what, target] : jumps) {
    Append(all, One(what, target));
  }
  Append(all, WithLines(One(Instruction::GoTo)));
  Append(all, Times(WithLines(One(Instruction::SetTmpPml)), Ends(range::Level),
                    [](CommandFields& f, std::int32_t level) { f.Command.ParentalLevel = level; }));
  Append(all, Times(One(Instruction::Link), AllLinks(), [](CommandFields& f, const Link& link) {
           f.Command.Link = link.Target;
           f.Target = link.Name;
         }));
  Append(all, SystemSpaceCommands());
  return all;
}

List Sets() {
  List all = StreamCommands();
  Append(all, WithSources(One(Instruction::SetNvtmr, "999")));
  Append(all, WithSources(One(Instruction::SetHlBtnn), range::SetButton));
  Append(all, Times(WithDestinations(WithSources(One(Instruction::SetGprmMd))), std::vector{false, true},
                    [](CommandFields& f, bool mode) { f.Command.RegisterMode = mode; }));
  Append(all, WithSources(One(Instruction::SetAmxmd)));
  Append(all, Times(One(Instruction::SetAmxmd), std::vector{0, 4, 8, 16, 28},
                    [](CommandFields& f, std::int32_t mix) {
                      f.Command.ChannelMix = {mix, 28 - mix};
                    }));
  for (const ArithmeticRow& row : ArithmeticRows) {
    List list = One(Instruction::Set);
    list[0].Command.Operation = row.Operation;
    Append(all, WithDestinations(WithSources(list)));
  }
  return all;
}

List Compared(const List& list) {
  List all;
  for (const CommandFields& fields : list) {
    List one{fields};
    one = Times(one, CompareOperators, [](CommandFields& f, const CompareOperator& op) {
      f.Command.Compare = {
          .Operation = op.Operation,
          .LeftGprm = f.Command.What == Instruction::SetCompareLink ? f.Command.Destination : 15,
          .Right = {}};
    });
    Append(all, Times(one, Edges(RightKindsOf(fields.Command)),
                      [](CommandFields& f, const Operand& right) { f.Command.Compare->Right = right; }));
  }
  return all;
}

List Linked(const List& list, const std::vector<Link>& links) {
  return Times(list, links, [](CommandFields& f, const Link& link) {
    f.Command.LinkAfterSet = link.Target;
    f.LinkTarget = link.Name;
  });
}

List Compounds() {
  List all;
  for (const CompoundShape& shape : CompoundShapes) {
    for (const ArithmeticRow& row : ArithmeticRows) {
      List list = One(shape.What);
      list[0].Command.Operation = row.Operation;
      Append(all, WithDestinations(WithSources(list)));
    }
  }
  return Linked(Compared(all), SubInstructionLinks());
}

// The dummy stream switched off has the bytes of stream 1 switched off.
bool SharesItsBytes(const CommandFields& fields) {
  const ParsedCommand& c = fields.Command;
  return c.Subpicture == Operand{OperandKind::Number, DummySubpicture} && !c.SubpictureOn;
}

TEST(CommandBuilder, EveryCombinationOfferedLeadsToItsBytesAndBack) {
  List all = PlainCommands();
  const List sets = Sets();
  Append(all, sets);
  Append(all, Compared(all));
  Append(all, Linked(sets, AllLinks()));
  Append(all, Compounds());
  std::set<CommandType> types;
  for (const CommandFields& fields : all) {
    types.insert(TypeOf(fields.Command));
    const std::string text = CommandText(fields);
    const Resolution result = ResolveText(text, {}, nullptr, {.Numbers = NumericTargets::First});
    ASSERT_EQ(result.Faults, TextFault::None) << text;
    ASSERT_FALSE(result.TargetMissing) << text;
    ASSERT_EQ(FieldsOf(text), fields) << text;
    if (!SharesItsBytes(fields)) {
      ASSERT_EQ(DecodeCommand(result.Hex).Text, text) << result.Hex;
    }
  }
  EXPECT_EQ(types.size(), CommandTypes.size());
  EXPECT_GT(all.size(), 100'000U);
}

// Texts of other spellings, and what fields make of them; none where they cannot say it.
TEST(CommandBuilder, OpensOnAnySpelling) {
  constexpr std::pair<std::string_view, std::string_view> Rows[] = {
      // empty: no fields
      {"", "NOP"},
      {"  linkcn My Cell ,BUTTON= 2", "LinkCN My Cell, button=2"},
      {"linkpgcn C", "LinkPGCN C"},
      {"LinkPGCN Menu, button=3", "LinkPGCN Menu"},
      {"if(gprm1<=3)goto 4", "If ( GPRM1 <= 3 ) GoTo 4"},
      {"CallSS FP_DOM", "CallSS RSM=0,FP_DOM"},
      {"CallSS RSM=SS Cell,TitleMenu", "CallSS RSM=SS Cell,TitleMenu"},
      {"CallSS RSM=Abc,, aBc", "CallSS RSM=Abc,, aBc"},
      {"jumpss Main Menu", "JumpSS Main Menu"},
      {"JumpVTS_PTT VTS1_Title1_PGC1_PG3", "JumpVTS_PTT VTS1_Title1_PGC1_PG3"},
      {"{ SetNVTMR NV_TMR=5, TT_PGCN=Ab ; LinkPGCN cAB }",
       "{ SetNVTMR NV_TMR=5, TT_PGCN=Ab ; LinkPGCN cAB }"},
      {"{ SetSTN subpicture=63 Dummy:ON ; LinkPGCN Film button=1 }",
       "{ SetSTN subpicture=63 Dummy:ON ; LinkPGCN Film }"},
      {"SetHL_BTNN HL_BTNN=2", "SetHL_BTNN HL_BTTN=2"},
      {"SetSTN audio=2, subpicture=1", "SetSTN audio=2, subpicture=1:ON"},
      {"SetSTN audio=1, angle=GPRM2", "SetSTN angle=GPRM2, audio=1"},
      {"{ GoTo 3 ; LinkTopC }", "GoTo 3"},
      {"If ( GPRM1 == 5 ) JumpTT Film", "If ( GPRM1 == 5 ) JumpTT Film"},
      {"mov GPRM1, -5", "mov GPRM1, -5"},
      {"LinkPGCN exit_page", "Exit"},
      {"Please play", ""},
      {"If ( GPRM1 ) Break", ""},
      {"If ( GPRM1 == GPRM2 ) { SetSTN audio=1 ; RSM }", ""},
      {"JumpSS vts_1, vts_ttn_1 : MainMenu", ""},
      {"{ mov GPRM1, 2 ; Exit }", ""},
  };
  for (const auto& [text, canonical] : Rows) {
    const auto fields = FieldsOf(text);
    EXPECT_EQ(fields ? CommandText(*fields) : "", canonical) << text;
  }
  CommandFields fields = *FieldsOf("CallSS RSM=Cell,TitleMenu");
  fields.Resume = DefaultChoice;
  EXPECT_EQ(CommandText(fields), "CallSS RSM=0,TitleMenu");
}

}  // namespace
}  // namespace quorvelant
