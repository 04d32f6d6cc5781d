#include "script/script_writer.h"

#include "model/cls_dvd.h"
#include "script/disc_keys.h"
#include "script/item_names.h"
#include "script/script_tracks.h"
#include "script/write_keys.h"

namespace quorvelant {

namespace {

void WriteCommands(ScriptText& text, std::string_view key, const CommandList& commands) {
  for (const VMICommand_P& command : commands) {
    if (!command.Deleted) {
      text.Value(key, command.FullCommand);
    }
  }
}

void WriteCommandBlock(ScriptText& text, std::string_view item, const CommandList& commands) {
  text.Open(item);
  WriteCommands(text, item::Command, commands);
  text.Close();
}

void WriteCell(ScriptText& text, const Cell_P& cell) {
  text.Open(item::Cell);
  WriteKeys(text, CellKeys, cell);
  if (cell.Uops.any()) {
    text.Open(item::Uops);
    WriteUops(text, cell.Uops);
    text.Close();
  }
  if (!cell.ButtonCommands.empty()) {
    text.Open(item::ButtonCommandList);
    for (const ButtonCommands_P& entry : cell.ButtonCommands) {
      text.Open(item::ButtonCommands);
      WriteCommands(text, item::ButtonCommand, entry.Commands);
      text.Close();
    }
    text.Close();
  }
  text.Close();
}

void WritePrograms(ScriptText& text, const PGC_P& pgc) {
  for (const PG_P& program : pgc.PG) {
    if (program.Removed) {
      continue;
    }
    text.Open(item::Program);
    WriteKeys(text, ProgramKeys, program);
    for (const Cell_P& cell : program.Cell) {
      if (!cell.Removed) {
        WriteCell(text, cell);
      }
    }
    text.Close();
  }
}

// A menu writes the first entry of its maps alone.
void WriteMaps(ScriptText& text, const PGC_P& pgc, Written form) {
  text.Open(item::AudioMap);
  for (std::size_t i = 0; i < (form == Written::OfTitles ? AudioStreamCount : 1); ++i) {
    WriteEntry(text, AudioMapKeys[0], pgc, i);
  }
  text.Close();
  for (std::size_t i = 0; i < (form == Written::OfTitles ? SubStreamCount : 1); ++i) {
    text.OpenNumbered(item::SubMap, i);
    for (const Key<PGC_P>& map : SubMapKeys) {
      WriteEntry(text, map, pgc, i);
    }
    text.Close();
  }
}

// What a menu's PGC writes differs a little from what a title's writes.
void WritePgc(ScriptText& text, const PGC_P& pgc, Written form) {
  text.Open(item::Pgc);
  WriteKeys(text, PgcKeys, pgc, {.Holds = form});
  text.Open(item::PgcUops);
  WriteUops(text, pgc.Uops);
  text.Close();
  WriteCommandBlock(text, item::PreCommands, pgc.PreCommands);
  WriteCommandBlock(text, item::PostCommands, pgc.PostCommands);
  WriteCommandBlock(text, item::CellCommands, pgc.CellCommands);
  WritePrograms(text, pgc);
  WriteMaps(text, pgc, form);
  text.Close();
}

void WritePgcs(ScriptText& text, const Collection<PGC_P>& pgcs, Written form) {
  for (const PGC_P& pgc : pgcs) {
    if (!pgc.Removed) {
      WritePgc(text, pgc, form);
    }
  }
}

void WriteLanguage(ScriptText& text, const Lang_P& language) {
  text.Open(item::Language);
  WriteKeys(text, LanguageKeys, language);
  WritePgcs(text, language.PGC, Written::OfMenus);
  text.Close();
}

void WriteTitle(ScriptText& text, const Title_P& title) {
  text.Open(item::Title);
  WriteKeys(text, TitleKeys, title);
  text.Open(item::TitleUops);
  if (title.UOPTimePlay) {
    text.Value(CLsDVD::UserOP(0), item::Prohibited);
  }
  if (title.UOPPTTPlay) {
    text.Value(CLsDVD::UserOP(1), item::Prohibited);
  }
  text.Close();
  WritePgcs(text, title.PGC, Written::OfTitles);
  text.Open(item::AudioPolicy);
  WriteKeys(text, AudioPolicyKeys, title);
  text.Close();
  text.Open(item::SubPolicy);
  WriteKeys(text, SubPolicyKeys, title);
  text.Close();
  text.Close();
}

void WriteSet(ScriptText& text, std::string_view item, const VTS_P& entry) {
  text.Open(item);
  for (const Lang_P& language : entry.Lang) {
    if (!language.Removed) {
      WriteLanguage(text, language);
    }
  }
  for (const Title_P& title : entry.Title) {
    if (!title.Removed) {
      WriteTitle(text, title);
    }
  }
  text.Close();
  WriteKeys(text, EntryKeys, entry);
}

void WriteStructure(ScriptText& text, const Project& project) {
  text.Open(item::Structure);
  text.Open(item::FirstPlay);
  text.Open(item::FirstPlayUops);
  WriteUops(text, project.FirstPlay.Uops);
  text.Close();
  WriteCommandBlock(text, item::PreCommands, project.FirstPlay.PreCommands);
  WriteCommandBlock(text, item::PostCommands, project.FirstPlay.PostCommands);
  text.Close();
  std::string_view item = item::Manager;
  for (const VTS_P& entry : project.Disc) {
    if (!entry.Removed) {
      WriteSet(text, item, entry);
      item = item::TitleSet;
    }
  }
  text.Close();
}

void WritePalettes(ScriptText& text, const Collection<Palette_P>& palettes) {
  text.Open(item::Palettes);
  for (const Palette_P& palette : palettes) {
    if (palette.Removed) {
      continue;
    }
    text.Open(item::Palette);
    WriteKeys(text, PaletteKeys, palette);
    text.Close();
  }
  text.Close();
}

}  // namespace

std::string WriteScript(const Project& project) {
  ScriptText text;
  text.Open(item::Settings);
  WriteKeys(text, SettingKeys, project);
  text.Close();
  WriteTracks(text, project);
  WriteStructure(text, project);
  WritePalettes(text, project.Palettes);
  return text.Release();
}

}  // namespace quorvelant
