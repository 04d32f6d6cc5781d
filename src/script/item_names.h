// Lines and keys that both the reader and the writer name outside the rows of keys.
#pragma once

#include <string_view>

namespace quorvelant::item {

// Parts of a script.
inline constexpr std::string_view Settings = "Data=Settings";
inline constexpr std::string_view Tracks = "Data=Tracks";
inline constexpr std::string_view Structure = "Data=Structure";
inline constexpr std::string_view Palettes = "Data=Palette";

// Source material.
inline constexpr std::string_view Track = "Item=Track";
inline constexpr std::string_view VideoList = "Item=Video Play List";
inline constexpr std::string_view VideoPlay = "Item=Video Play";
inline constexpr std::string_view StillList = "Item=Still Play List";
inline constexpr std::string_view StillPlay = "Item=Still Play";
inline constexpr std::string_view SlideList = "Item=SlideShow Play List";
inline constexpr std::string_view SlidePlay = "Item=SlideShow Play";
inline constexpr std::string_view AudioStream = "Item=Audio Play List";
inline constexpr std::string_view AudioPlay = "Item=Audio Play";
inline constexpr std::string_view Subtitles = "Item=SubPicture";
inline constexpr std::string_view SubPlay = "Item=SubPicture Play";
inline constexpr std::string_view HighlightList = "Item=Highlight List";
inline constexpr std::string_view Highlight = "Item=Highlight Play";
inline constexpr std::string_view Scheme = "Color Scheme *";
inline constexpr std::string_view Button = "Item=Button";
inline constexpr std::string_view SceneList = "Item=Scene List";
inline constexpr std::string_view Scene = "Item=Scene";
inline constexpr std::string_view Uops = "UOPS";

// The disc.
inline constexpr std::string_view Manager = "Item=VMG";
inline constexpr std::string_view TitleSet = "Item=VTS";
inline constexpr std::string_view FirstPlay = "Item=FirstPGC";
inline constexpr std::string_view FirstPlayUops = "Item=FirstPGCUOPS";
inline constexpr std::string_view Language = "Item=Language";
inline constexpr std::string_view Title = "Item=Title";
inline constexpr std::string_view TitleUops = "Item=TitleUOPS";
inline constexpr std::string_view AudioPolicy = "Item=Audio Stream Policy";
inline constexpr std::string_view SubPolicy = "Item=SubPicture Stream Policy";
inline constexpr std::string_view Pgc = "Item=PGC";
inline constexpr std::string_view PgcUops = "Item=PGCUOPS";
inline constexpr std::string_view PreCommands = "Item=PreCommands";
inline constexpr std::string_view PostCommands = "Item=PostCommands";
inline constexpr std::string_view CellCommands = "Item=CellCommands";
inline constexpr std::string_view AudioMap = "Item=Audio Stream Decoding";
inline constexpr std::string_view SubMap = "Item=SubPicture Stream Decoding for Track #";
inline constexpr std::string_view Program = "Item=Program";
inline constexpr std::string_view Cell = "Item=Cell";
inline constexpr std::string_view ButtonCommandList = "Item=Menu List";
inline constexpr std::string_view ButtonCommands = "Item=Menu Play";
inline constexpr std::string_view Palette = "Item=Palette";

// Keys of commands, and what follows the name of a user operation.
inline constexpr std::string_view Command = "Command";
inline constexpr std::string_view ButtonCommand = "Button Command";
inline constexpr std::string_view Prohibited = "Prohibited";

}  // namespace quorvelant::item
