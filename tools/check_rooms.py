#!/usr/bin/env python3
"""Checks the house: rooms, floors, headers and codes of messages, against docs/architecture.md.

    check_rooms.py [ROOT] [--compile BUILD]

The table of rooms in docs/architecture.md and the link lists in src/*/CMakeLists.txt say the same; every
arrow points to a lower floor; a room includes what its list names or what comes along with it, and something
of each room on the list. With --compile, a unit of all headers is compiled with the flags of BUILD, and each
header that no source file of its own includes first is compiled alone. Prints one line a fault; ends with 1
if there is any.
"""

import argparse
import json
import re
import shlex
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

ASIDE = "aside"  # the floor of rooms that only the top floor may link
ASIDE_LINKS_UP_TO = 2

TABLE_ROW = re.compile(r"^\| *(\d+|aside) *\| *`(\w+)` *\| *([^|]*?) *\| *[^|]*\|$", re.M)
ROOM_CALL = re.compile(r"quorvelant_room\(([^)]*)\)")
INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]+"([^"]+)"', re.M)
MESSAGE_ROW = re.compile(r'\bMessageKind\s+\w+\s*\{\s*"((?:[^"\\]|\\.)*)"')
CODE = re.compile(r"[a-z]+[0-9]*(-[a-z0-9]+)*")
TITLE_COMPARED = re.compile(  # pointers and numbers named Title may be compared with their like
    r"(?:\.|->)Title\s*[=!]=(?!\s*nullptr\b|\s*\d|\s*title\b|\s*\w+(?:\.|->)Title\b)"
    r'|(?:"|(?<![.>])\b\w*Title)\s*[=!]=\s*\w+(?:\.|->)Title\b')


def without_comments(text):
    """C++ text with its comments blanked; line breaks stay, so that line numbers hold."""
    pattern = re.compile(r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"', re.S)
    return pattern.sub(
        lambda m: m[0] if m[0].startswith('"') else re.sub(r"[^\n]", " ", m[0]), text)


class House:
    def __init__(self, root):
        self.root = Path(root)
        self.faults = []
        self.sources = {path: without_comments(path.read_text(encoding="utf-8"))
                        for path in sorted(self.root.glob("src/*/*")) if path.suffix in (".h", ".cpp")}
        self.links = {}
        for path in sorted(self.root.glob("src/*/CMakeLists.txt")):
            call = ROOM_CALL.search(re.sub(r"#.*", "", path.read_text(encoding="utf-8")))
            words = call[1].split() if call else [""]
            self.links[path.parent.name] = self.rooms_of(words)
            if words[0] != path.parent.name:
                self.fault(path, 0, f"the room of this folder is not {path.parent.name}")

    @staticmethod
    def rooms_of(words):
        rooms, taken = [], False
        for word in words[1:]:
            if word.isupper():
                taken = word == "ROOMS"
            elif taken:
                rooms.append(word)
        return rooms

    def fault(self, path, offset, text):
        place = path.relative_to(self.root) if path.is_absolute() or self.root in path.parents else path
        line = f":{self.sources[path].count(chr(10), 0, offset) + 1}" if path in self.sources else ""
        self.faults.append(f"{place}{line}: {text}")

    def closure(self, room):
        """The rooms that come along with a room, itself among them."""
        seen, open_rooms = set(), [room]
        while open_rooms:
            at = open_rooms.pop()
            if at not in seen:
                seen.add(at)
                open_rooms += self.links.get(at, [])
        return seen

    def check_plan(self):
        page = self.root / "docs/architecture.md"
        rows = {room: (floor, re.findall(r"\w+", links))
                for floor, room, links in TABLE_ROW.findall(page.read_text(encoding="utf-8"))}
        for room in sorted(self.links.keys() - rows.keys()):
            self.fault(page, 0, f"the table of rooms lacks {room}")
        for room in sorted(rows.keys() - self.links.keys()):
            self.fault(page, 0, f"the table names {room}, which is no room of src/")
        top = max((int(floor) for floor, _ in rows.values() if floor != ASIDE), default=0)
        for room, links in self.links.items():
            cmake = self.root / "src" / room / "CMakeLists.txt"
            if any(room in self.closure(link) for link in links):
                self.fault(cmake, 0, f"{room} comes back to itself through its links")
            if room not in rows:
                continue
            floor, told = rows[room]
            if sorted(told) != sorted(links):
                self.fault(page, 0, f"{room} links {' '.join(links)} by its CMakeLists.txt, {' '.join(told)} here")
            for link in links:
                if link not in rows:
                    self.fault(cmake, 0, f"{room} links {link}, which is no room of the table")
                elif not self.goes_down(floor, rows[link][0], top):
                    self.fault(cmake, 0, f"{room} (floor {floor}) links {link} (floor {rows[link][0]}): "
                                         "links lead to lower floors alone")

    @staticmethod
    def goes_down(floor, link, top):
        if link == ASIDE:
            return floor == str(top)
        return int(link) <= ASIDE_LINKS_UP_TO if floor == ASIDE else int(link) < int(floor)

    def check_includes(self):
        used = {room: set() for room in self.links}
        for path, text in self.sources.items():
            room = path.parent.name
            may = self.closure(room)
            for found in INCLUDE.finditer(text):
                header = found[1]
                other = header.split("/")[0]
                used.setdefault(room, set()).add(other)
                if other not in self.links:
                    self.fault(path, found.start(), f'"{header}" is in no room of src/')
                elif other not in may:
                    self.fault(path, found.start(), f'"{header}": {room} does not link {other}')
                elif not (self.root / "src" / header).exists():
                    self.fault(path, found.start(), f'"{header}" does not exist')
        for room, links in self.links.items():
            for link in links:
                if link not in used.get(room, ()):
                    self.fault(self.root / "src" / room / "CMakeLists.txt", 0,
                               f"{room} links {link} and includes nothing of it")

    def check_messages(self):
        seen = {}
        for path, text in self.sources.items():
            for found in MESSAGE_ROW.finditer(text):
                code = found[1]
                if path.name != "messages.h":
                    self.fault(path, found.start(), f'the row "{code}" belongs in messages.h of its room')
                if not CODE.fullmatch(code):
                    self.fault(path, found.start(), f'the code "{code}" is not lower-case words with hyphens')
                if code in seen:
                    self.fault(path, found.start(), f'the code "{code}" stands in {seen[code]} already')
                seen.setdefault(code, path.relative_to(self.root))
            for found in TITLE_COMPARED.finditer(text):
                self.fault(path, found.start(), "a title is compared: ask message.Is(kind)")

    def check_headers(self, build):
        commands = json.loads((build / "compile_commands.json").read_text(encoding="utf-8"))
        commands = [c for c in commands if "/src/" in c["file"]]
        widest = max(commands, key=lambda c: c["command"].count("/rooms/"))
        flags = shlex.split(widest["command"])
        flags = flags[:flags.index("-o")]  # what follows names the one file
        # No room of the top floor sees another one there, and the one unit sees all.
        rooms = {flag for c in commands for flag in c["command"].split() if flag.startswith("-I") and "/rooms/" in flag}
        flags += sorted(rooms - set(flags))
        while not flags[0].endswith(("++", "cc")):  # a compiler cache before the compiler
            flags.pop(0)
        headers = [path for path in self.sources if path.suffix == ".h"]
        names = [f"{path.parent.name}/{path.name}" for path in headers]
        covered = {found[1] for path, text in self.sources.items()
                   if path.suffix == ".cpp" and (found := INCLUDE.search(text))
                   and found[1] == f"{path.parent.name}/{path.stem}.h"}
        units = {"all headers in one unit": "".join(f'#include "{name}"\n' for name in names)}
        units |= {f"{name} alone": f'#include "{name}"\n#include "{name}"\n' for name in names
                  if name not in covered}

        def compile_unit(unit):
            run = subprocess.run([*flags, "-fsyntax-only", "-x", "c++", "-"], input=unit[1], cwd=widest["directory"],
                                 capture_output=True, text=True, check=False)
            return None if run.returncode == 0 else f"src: {unit[0]} does not compile:\n{run.stderr[:2000]}"

        with ThreadPoolExecutor(2) as pool:
            self.faults += [fault for fault in pool.map(compile_unit, units.items()) if fault]

    def lines(self, folder):
        paths = [path for path in (self.root / folder).rglob("*") if path.suffix in (".h", ".cpp")]
        return sum(bool(line.strip()) for path in paths
                   for line in path.read_text(encoding="utf-8").splitlines())


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("root", nargs="?", default=".")
    parser.add_argument("--compile", metavar="BUILD")
    arguments = parser.parse_args()
    house = House(Path(arguments.root).resolve())
    house.check_plan()
    house.check_includes()
    house.check_messages()
    if arguments.compile:
        house.check_headers(Path(arguments.compile).resolve())
    print("\n".join(house.faults) if house.faults else f"{len(house.links)} rooms stand as drawn")
    tests, source = house.lines("tests"), house.lines("src")
    if source:
        print(f"tests: {tests} lines, {100 * tests / source:.1f} % of the {source} of src/ (blank ones aside)")
    return 1 if house.faults else 0


if __name__ == "__main__":
    sys.exit(main())
