#!/usr/bin/env python3
"""Files that are read together are found out one by one."""

import contextlib
import io
import json
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path
from unittest import mock

import tidy

CLEAN = "namespace {\nint Helper(int a) { return a; }\n}  // namespace\nint First(int a) { return Helper(a); }\n"
SAME_HELPER = CLEAN.replace("First", "Second")
FAULTY = "int* Third() { return 0; }\n"


class TidyTest(unittest.TestCase):
    def setUp(self):
        (tidy.ROOT / "build").mkdir(exist_ok=True)
        self.folder = Path(tempfile.mkdtemp(dir=tidy.ROOT / "build"))
        self.addCleanup(shutil.rmtree, self.folder)
        self.addCleanup(tidy.text_of.cache_clear)
        self.addCleanup(tidy.found.cache_clear)

    def write(self, texts):
        paths = []
        for name, text in texts.items():
            path = self.folder / name
            path.parent.mkdir(exist_ok=True)
            path.write_text(text)
            paths.append(path)
        return paths

    def run_over(self, texts):
        """Exit status, what it printed, and how often clang-tidy ran."""
        (self.folder / "rooms").mkdir(exist_ok=True)
        (self.folder / ".clang-tidy").write_text("Checks: '-*,modernize-use-nullptr'\nWarningsAsErrors: '*'\n")
        paths = self.write(texts)
        database = [{"directory": str(self.folder), "file": str(path),
                     "command": f"clang++ -std=c++20 -I{self.folder}/rooms -o x.o -c {path}"} for path in paths]
        (self.folder / "compile_commands.json").write_text(json.dumps(database))
        with mock.patch.dict("os.environ", {"XDG_CACHE_HOME": str(self.folder)}), \
                mock.patch.object(sys, "argv", ["tidy.py", str(self.folder), *map(str, paths)]), \
                mock.patch.object(tidy.subprocess, "run", side_effect=subprocess.run) as runs, \
                contextlib.redirect_stdout(io.StringIO()) as printed:
            tidy.text_of.cache_clear()
            status = tidy.main()
        return status, printed.getvalue(), sum("--quiet" in call.args[0] for call in runs.call_args_list)

    def test_finds_the_one_file_among_those_that_clash(self):
        status, printed, _ = self.run_over({"a.cpp": CLEAN, "b.cpp": SAME_HELPER, "c.cpp": FAULTY})
        self.assertEqual(status, 1)
        self.assertIn("c.cpp:1", printed)
        self.assertNotIn("a.cpp", printed)

    def test_reads_again_what_saw_a_change(self):
        texts = {"rooms/head.h": "#pragma once\n", "a.cpp": "#include <head.h>\n" + CLEAN, "b.cpp": "int b = 1;\n"}
        sources = {name: text for name, text in texts.items() if name.endswith(".cpp")}
        self.write(texts)
        self.assertEqual(self.run_over(sources), (0, "", 1))
        self.assertEqual(self.run_over(sources), (0, "", 0))
        self.write({"rooms/head.h": "#pragma once\ninline int* Head() { return 0; }\n"})
        self.assertEqual(self.run_over(sources)[0::2], (0, 1))  # in a header of others, which the filter leaves out

    def test_leaves_out_what_a_file_before_included(self):
        paths = self.write({"a.cpp": "#include <map>\n", "b.cpp": "#include <map>\n#include <set>\n#include <set>\n"})
        text = tidy.text_together([tidy.Source(path, (), "") for path in paths])
        self.assertEqual(text.split(), ["#include", "<map>", "#include", "<set>", "#include", "<set>"])


if __name__ == "__main__":
    unittest.main()
