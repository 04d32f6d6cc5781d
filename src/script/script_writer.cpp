#include "script/script_writer.h"

#include "base/text.h"
#include "model/cls_dvd.h"
#include "script/script_text.h"
#include "script/script_tracks.h"

namespace quorvelant {

namespace {

// What a menu's PGC writes differs a little from what a title's writes.
enum class PgcForm { Menu, Title };

constexpr std::size_t GoUp = 4;  // not prohibited anywhere but in a scene

void WritePgcUops(ScriptText& text, const UopMask& uops) {
  for (std::size_t i = 0; i < UserOperationCount; ++i) {
    if (uops[i] && i != GoUp) {
      text.Value(CLsDVD::UserOP(i), "=Prohibited");
    }
  }
}

void WriteCommands(ScriptText& text, std::string_view key, const CommandList& commands) {
  for (const VMICommand_P& command : commands) {
    if (!command.Deleted) {
      text.Value(key, command.FullCommand);
    }
  }
}

void WriteCommandBlock(ScriptText& text, std::string_view item, const CommandList& commands) {
  text.Open(item);
  WriteCommands(text, "Command=", commands);
  text.Close();
}

std::string_view LinkText(std::string_view link) {
  return EqualNoCase(link, "none") ? std::string_view() : link;
}

std::string_view PlayBackText(PlayBack mode) {
  switch (mode) {
    case PlayBack::Random:
      return "Random Playback";
    case PlayBack::Shuffle:
      return "Shuffle Playback";
    default:
      return "Sequential Playback";
  }
}

void WriteCell(ScriptText& text, const Cell_P& cell) {
  text.Open("Item=Cell");
  text.Value("Name=", cell.CellName);
  text.Value("UsingScene=", cell.SceneUsed);
  text.Value("CellStillTime=", cell.StillTime);
  text.Value("Cell Command=", cell.CellCommand);
  text.Value("Restrict Cell Access=", cell.RestrictedAccess ? "Prohibited" : "Permitted");
  text.Value("Seamless Flag=", cell.Seamless ? "Seamless" : "NotSeamless");
  if (!cell.ButtonCommands.empty()) {
    text.Open("Item=Menu List");
    for (const ButtonCommands_P& entry : cell.ButtonCommands) {
      text.Open("Item=Menu Play");
      WriteCommands(text, "Button Command=", entry.Commands);
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
    text.Open("Item=Program");
    text.Value("Name=", program.PGName);
    for (const Cell_P& cell : program.Cell) {
      if (!cell.Removed) {
        WriteCell(text, cell);
      }
    }
    text.Close();
  }
}

void WriteDecodingMaps(ScriptText& text, const PGC_P& pgc, PgcForm form) {
  text.Open("Item=Audio Stream Decoding");
  const std::size_t audioCount = form == PgcForm::Title ? AudioStreamCount : 1;
  for (std::size_t i = 0; i < audioCount; ++i) {
    text.Numbered("Audio Stream ", i, " Decodes=", pgc.AudioAssignments[i]);
  }
  text.Close();
  const std::size_t subCount = form == PgcForm::Title ? SubStreamCount : 1;
  for (std::size_t i = 0; i < subCount; ++i) {
    text.Numbered("Item=SubPicture Stream Decoding for Track #", i, "");
    text.Open();
    text.Numbered("SubPicture Track for 4:3 Decodes #", i, "=", pgc.NormalAssignments[i]);
    text.Numbered("SubPicture Track for PanScan Decodes #", i, "=", pgc.PanAssignments[i]);
    text.Numbered("SubPicture Track for Wide Decodes #", i, "=", pgc.WideAssignments[i]);
    text.Numbered("SubPicture Track for Letter Decodes #", i, "=", pgc.LetterAssignments[i]);
    text.Close();
  }
}

void WritePgc(ScriptText& text, const PGC_P& pgc, PgcForm form) {
  text.Open("Item=PGC");
  text.Value("Name=", pgc.PGCName);
  text.Value("PaletteUsed=", pgc.PaletteName);
  text.Value("NextPGC=", LinkText(pgc.NextPGC));
  if (form == PgcForm::Title) {
    text.Value("PrevPGC=", LinkText(pgc.PrevPGC));
  }
  text.Value("GoUpPGC=", LinkText(pgc.GoUpPGC));
  if (form == PgcForm::Menu) {
    text.Value("MenuType=", pgc.MenuType);
  }
  text.Value("Playback Mode=", PlayBackText(pgc.PlayBackMode));
  text.Value("Repeat=", pgc.Repeat);
  text.Value("StillTime=", pgc.StillTime);
  text.Open("Item=PGCUOPS");
  WritePgcUops(text, pgc.Uops);
  text.Close();
  WriteCommandBlock(text, "Item=PreCommands", pgc.PreCommands);
  WriteCommandBlock(text, "Item=PostCommands", pgc.PostCommands);
  WriteCommandBlock(text, "Item=CellCommands", pgc.CellCommands);
  WritePrograms(text, pgc);
  WriteDecodingMaps(text, pgc, form);
  text.Close();
}

void WritePgcs(ScriptText& text, const Collection<PGC_P>& pgcs, PgcForm form) {
  for (const PGC_P& pgc : pgcs) {
    if (!pgc.Removed) {
      WritePgc(text, pgc, form);
    }
  }
}

void WriteLanguage(ScriptText& text, const Lang_P& language) {
  text.Open("Item=Language");
  text.Value("LU=", language.Language);
  WritePgcs(text, language.PGC, PgcForm::Menu);
  text.Close();
}

void WriteTitle(ScriptText& text, const Title_P& title) {
  text.Open("Item=Title");
  text.Value("Name=", title.TitleName);
  text.Open("Item=TitleUOPS");
  if (title.UOPTimePlay) {
    text.Value(CLsDVD::UserOP(0), "=Prohibited");
  }
  if (title.UOPPTTPlay) {
    text.Value(CLsDVD::UserOP(1), "=Prohibited");
  }
  text.Close();
  WritePgcs(text, title.PGC, PgcForm::Title);
  text.Open("Item=Audio Stream Policy");
  text.Value("Audio Custom Policy=", title.Custom ? "Custom" : "Maximum");
  for (std::size_t i = 0; i < AudioStreamCount; ++i) {
    text.Numbered("Audio Stream ", i, title.AudioAssignments[i] ? "=Yes" : "=No");
  }
  text.Close();
  text.Open("Item=SubPicture Stream Policy");
  text.Value("SubPicture Custom Policy=", title.SubCustom ? "Custom" : "Maximum");
  for (std::size_t i = 0; i < SubStreamCount; ++i) {
    text.Numbered("SubPicture Stream ", i, title.SubAssignments[i] ? "=Yes" : "=No");
  }
  text.Close();
  text.Close();
}

void WriteEntry(ScriptText& text, std::string_view item, const VTS_P& entry) {
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
  // Behind the braces: they apply to the entry just closed.
  if (entry.MenuLetterBoxed) {
    text.Line("Menu Source Picture LetterBoxed=LetterBoxed");
  }
  if (entry.TitleLetterBoxed) {
    text.Line("Title Source Picture LetterBoxed=LetterBoxed");
  }
  if (entry.TitleCameraMode) {
    text.Line("Film Camera Mode=Film Mode");
  }
}

void WriteStructure(ScriptText& text, const Project& project) {
  text.Open("Data=Structure");
  text.Open("Item=FirstPGC");
  text.Open("Item=FirstPGCUOPS");
  WritePgcUops(text, project.FirstPlay.Uops);
  text.Close();
  WriteCommandBlock(text, "Item=PreCommands", project.FirstPlay.PreCommands);
  WriteCommandBlock(text, "Item=PostCommands", project.FirstPlay.PostCommands);
  text.Close();
  std::string_view item = "Item=VMG";
  for (const VTS_P& entry : project.Disc) {
    if (!entry.Removed) {
      WriteEntry(text, item, entry);
      item = "Item=VTS";
    }
  }
  text.Close();
}

void WritePalettes(ScriptText& text, const Collection<Palette_P>& palettes) {
  text.Open("Data=Palette");
  for (const Palette_P& palette : palettes) {
    if (palette.Removed) {
      continue;
    }
    text.Open("Item=Palette");
    text.Value("Name=", palette.Name());
    for (std::size_t i = 0; i < palette.PaletteColors.size(); ++i) {
      text.Bytes(std::to_string(i) + "=", palette.PaletteColors[i]);
    }
    text.Close();
  }
  text.Close();
}

}  // namespace

std::string WriteScript(const Project& project) {
  ScriptText text;
  text.Open("Data=Settings");
  text.Value("DefaultFolder=", project.DestinationFolder);
  text.Close();
  WriteTracks(text, project);
  WriteStructure(text, project);
  WritePalettes(text, project.Palettes);
  return text.Take();
}

}  // namespace quorvelant
