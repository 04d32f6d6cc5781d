#include "model/default_structure.h"

#include <utility>

#include "model/cls_dvd.h"
#include "model/keys.h"

namespace quorvelant {

namespace {

constexpr std::string_view FirstLanguageCode = "en";
constexpr std::int32_t ManagerEntry = 1;
constexpr std::int32_t FirstTitleSetEntry = 2;

// The digits are asked for once the command stands in its place, so that its names can be resolved.
void AddEncoded(Project& project, PGC_P& pgc, std::string_view word, std::string text,
                const CommandEncoder& encode) {
  VMICommand_P& command = AddCommand(pgc.PreCommands, word, std::move(text));
  if (encode) {
    command.CommandHex = encode(project, pgc, command.FullCommand);
  }
}

PGC_P& AddLanguage(VTS_P& set, std::int32_t entry, std::string_view menuType) {
  const std::string_view name = CLsDVD::LangCodeToLangName(FirstLanguageCode);
  Lang_P language;
  language.Key = LanguageKey(set.Key, 1);
  language.Language = FirstLanguageCode;
  Lang_P& added = set.Lang.Add(std::move(language));
  PGC_P pgc = MakePgc(MenuPgcName(entry, name, 1), entry, 1, 0, PgcKey(added.Key, 1));
  pgc.MenuType = menuType;
  return added.PGC.Add(std::move(pgc));
}

VTS_P& AddEntry(Project& project, std::int32_t entry) {
  VTS_P set;
  set.Key = EntryKey(entry);
  set.VTSName = EntryName(entry);
  return project.Disc.Add(std::move(set));
}

void AddVideoManager(Project& project, const CommandEncoder& encode) {
  project.FirstPlay = MakePgc(std::string(FirstPgcName), 0, 0, 0, std::string(FirstPgcKey));
  PGC_P& menu = AddLanguage(AddEntry(project, ManagerEntry), ManagerEntry, "TitleMenu");
  const std::string play = "JumpTT " + TitleName(FirstTitleSetEntry, 1);
  AddEncoded(project, project.FirstPlay, FirstPgcKey, play, encode);
  AddEncoded(project, menu, "Pre", play, encode);
}

void AddTitleSet(Project& project, std::int32_t number, const CommandEncoder& encode) {
  const std::int32_t entry = number + 1;
  VTS_P& set = AddEntry(project, entry);
  Title_P title;
  title.Key = TitleKey(set.Key, 1);
  title.TitleName = TitleName(entry, 1);
  Title_P& added = set.Title.Add(std::move(title));
  added.PGC.Add(MakePgc(TitlePgcName(entry, 1, 1), entry, 0, 1, PgcKey(added.Key, 1)));
  PGC_P& menu = AddLanguage(set, entry, "Root");
  if (number == 1) {
    AddEncoded(project, menu, "Pre", "JumpVTS_TT " + added.TitleName, encode);
  }
}

}  // namespace

PGC_P MakePgc(std::string name, std::int32_t entry, std::int32_t language, std::int32_t title,
              std::string key) {
  PGC_P pgc;
  pgc.Key = std::move(key);
  pgc.PGCName = std::move(name);
  pgc.iVTS = entry;
  pgc.iLang = language;
  pgc.iTitle = title;
  return pgc;
}

VMICommand_P& AddCommand(CommandList& list, std::string_view word, std::string text) {
  VMICommand_P command;
  command.Key = std::string(word) + std::to_string(list.size() + 1);
  command.FullCommand = std::move(text);
  return list.emplace_back(std::move(command));
}

void AddNewVTSSet(Project& project, bool isVTS, std::int32_t number, const CommandEncoder& encode) {
  if (isVTS) {
    AddTitleSet(project, number, encode);
  } else {
    AddVideoManager(project, encode);
  }
}

void MakeDefaultStructure(Project& project, const CommandEncoder& encode) {
  project = Project();
  AddNewVTSSet(project, false, 0, {});
  AddNewVTSSet(project, true, 1, {});
  if (!encode) {
    return;
  }
  // The Video Manager's commands name the title that is made after them.
  PGC_P* managerMenu = FindPgc(project.Disc, "VMG1.LANGUAGE1.PGC1");
  PGC_P* rootMenu = FindPgc(project.Disc, "VTS1.LANGUAGE1.PGC1");
  for (PGC_P* pgc : {&project.FirstPlay, managerMenu, rootMenu}) {
    for (VMICommand_P& command : pgc->PreCommands) {
      command.CommandHex = encode(project, *pgc, command.FullCommand);
    }
  }
}

}  // namespace quorvelant
