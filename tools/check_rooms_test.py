#!/usr/bin/env python3
"""Each kind of fault in a small made-up house is found by check_rooms.py, and a sound house passes."""

import json
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

TABLE = "| Floor | Room | Links | What |\n|---|---|---|---|\n"
SOUND = {
    "docs/architecture.md": TABLE + "| 1 | `base` | | x |\n| 2 | `model` | base | x |\n"
                                    "| aside | `platform` | base | x |\n| 3 | `app` | model, platform | x |\n",
    "src/base/CMakeLists.txt": "quorvelant_room(base LIBRARIES fmt::fmt)",
    "src/base/text.h": "#pragma once\ninline int Text = 1;\n",
    "src/base/text.cpp": '#include "base/text.h"\n',
    "src/model/CMakeLists.txt": "quorvelant_room(model ROOMS base)",
    "src/model/track.h": '#pragma once\n#include "base/text.h"\n// #include "app/main.h"\n',
    "src/model/messages.h": '#pragma once\n#include "base/kind.h"\ninline MessageKind Gone{"source-gone"};\n',
    "src/base/kind.h": "#pragma once\nstruct MessageKind { const char* Code; };\n",
    "src/platform/CMakeLists.txt": "quorvelant_room(platform ROOMS base PRIVATE_LIBRARIES Qt6::Gui)",
    "src/platform/font.cpp": '#include "base/text.h"\n',
    "src/app/CMakeLists.txt": "quorvelant_room(app ROOMS model platform)",
    "src/app/main.cpp": '#include "base/text.h"\n#include "model/track.h"\n#include "platform/font.h"\n'
                        "bool Same = a.Title != b.Title && c->Title == nullptr;\n",
    "src/platform/font.h": "#pragma once\n",
}
FAULTS = [  # what is changed, and what is said of it
    ("an include sideways or upwards",
     {"src/base/text.h": '#include "model/track.h"\n'},
     "text.h:1: \"model/track.h\": base does not link model"),
    ("an include of nothing",
     {"src/base/text.h": '\n#include "text.h"\n'},
     'text.h:2: "text.h" is in no room'),
    ("a header that is gone",
     {"src/model/track.h": '#include "base/none.h"\n'},
     "does not exist"),
    ("a link without a use",
     {"src/model/track.h": "#pragma once\n", "src/model/messages.h": "#pragma once\n"},
     "model links base and includes nothing"),
    ("a circle",
     {"src/base/CMakeLists.txt": "quorvelant_room(base ROOMS model)"},
     "base comes back to itself"),
    ("an arrow upwards",
     {"src/base/CMakeLists.txt": "quorvelant_room(base ROOMS app)"},
     "base (floor 1) links app (floor 3)"),
    ("a room aside below the top",
     {"src/model/CMakeLists.txt": "quorvelant_room(model ROOMS base platform)"},
     "model (floor 2) links platform"),
    ("a list unlike the table",
     {"src/app/CMakeLists.txt": "quorvelant_room(app ROOMS model platform base)"},
     "app links model platform base by its"),
    ("a room that the table lacks",
     {"src/menu/CMakeLists.txt": "quorvelant_room(menu)"},
     "the table of rooms lacks menu"),
    ("a room that is not there",
     {"docs/architecture.md": SOUND["docs/architecture.md"] + "| 2 | `iso` | base | x |\n"},
     "names iso"),
    ("a room under another name",
     {"src/base/CMakeLists.txt": "quorvelant_room(bass)"},
     "is not base"),
    ("a code twice",
     {"src/base/messages.h": 'MessageKind Away{"source-gone", Error, "T", "t"};'},
     "stands in src/base/messages.h already"),
    ("a code in capitals",
     {"src/base/messages.h": 'MessageKind Away{"Source_Away", Error};'},
     "not lower-case words"),
    ("a row elsewhere",
     {"src/base/text.h": 'MessageKind Away{"source-away"};'},
     "belongs in messages.h"),
    ("a title compared",
     {"src/app/main.cpp": SOUND["src/app/main.cpp"] + 'if (m.Title == "Error") {}\n'},
     "main.cpp:5: a title is compared"),
    ("a title compared backwards",
     {"src/app/main.cpp": SOUND["src/app/main.cpp"] + "if (ErrorTitle != m.Title) {}\n"},
     "a title is compared"),
    ("a header that needs another",
     {"src/model/track.h": '#include "base/text.h"\nUndeclared X;\n'},
     "model/track.h alone does not compile"),
    ("two headers with one name",
     {"src/model/track.h": SOUND["src/model/track.h"] + "inline int Clash;\n", "src/platform/font.h": "inline long Clash;\n"},
     "all headers in one unit does not compile"),
]


class CheckRooms(unittest.TestCase):
    def run_on(self, changes):
        with tempfile.TemporaryDirectory() as folder:
            root = Path(folder)
            for name, text in {**SOUND, **changes}.items():
                (root / name).parent.mkdir(parents=True, exist_ok=True)
                (root / name).write_text(text)
            (root / "build").mkdir()
            command = f"c++ -std=c++20 -I{root}/src -o x.o"
            (root / "build/compile_commands.json").write_text(json.dumps(
                [{"directory": folder, "command": command, "file": f"{root}/src/app/main.cpp"}]))
            run = subprocess.run([sys.executable, Path(__file__).parent / "check_rooms.py", root, "--compile", root / "build"],
                                 capture_output=True, text=True, check=False)
            return run.returncode, run.stdout + run.stderr

    def test_a_sound_house_passes(self):
        status, said = self.run_on({})
        self.assertEqual((status, "4 rooms stand as drawn" in said), (0, True), said)

    def test_each_fault_is_found(self):
        for what, changes, told in FAULTS:
            with self.subTest(what):
                status, said = self.run_on(changes)
                self.assertEqual(status, 1, said)
                self.assertIn(told, said)


if __name__ == "__main__":
    unittest.main()
