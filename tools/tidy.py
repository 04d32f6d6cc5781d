#!/usr/bin/env python3
"""clang-tidy over source files, each read anew only where something that it sees has changed.

    tidy.py BUILD FILE...

The texts of a file and of the rooms' headers that it includes name it in the cache, with the checks that hold for it
and the versions of all else; a file that passed under that name passes again without a run. The other files of a
folder are read together: nearly all of the time goes into the headers that they share. Of files that do not pass
together, each half is read again, down to the one whose findings are printed; files that cannot stand in one unit
after all, since both have a helper of the same name, are found in that way too. Ends with 1 if anything was found.
"""

import functools
import hashlib
import itertools
import json
import os
import re
import shlex
import shutil
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from dataclasses import dataclass
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
TOGETHER = 6  # more share their headers better, and more often have two helpers of one name
HELPER = re.compile(r'^(?:struct|class|enum class|enum|using)[ \t]+(\w+)'
                    r'|^(?=\w)(?:[\w:<>,&*\[\] \t]*[ \t&*])?(\w+(?:(?=\{|[ \t]*=)|\([^)\n]*))', re.MULTILINE)
INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*([<"][^>"]*[>"])', re.MULTILINE)


def printed(*command):
    return subprocess.run(command, capture_output=True, check=True).stdout if shutil.which(command[0]) else b""


def versions():
    """Of clang-tidy, and of the headers that are not this repository's."""
    return printed("clang-tidy", "--version") + printed("dpkg-query", "-W", "*-dev")


def cache_folder():
    base = os.environ.get("XDG_CACHE_HOME") or Path.home() / ".cache"
    folder = Path(base) / "quorvelant-tidy"
    folder.mkdir(parents=True, exist_ok=True)
    return folder


@functools.cache
def text_of(path):
    return path.read_text(encoding="utf-8")


@functools.cache
def found(folder, name):
    path = folder / name
    return path.resolve() if path.is_file() else None


@dataclass(frozen=True)
class Source:
    """A file, and how it is compiled: the command without the file and what it is compiled to."""
    path: Path
    command: tuple
    directory: str

    def seen(self):
        """Itself and the rooms' headers, each after the one that includes it."""
        folders = [Path(word[2:]) for word in self.command if word.startswith("-I")]
        paths = [self.path]
        for path in paths:  # which grows on the way
            for name in INCLUDE.findall(text_of(path)):
                near = [path.parent] if name[0] == '"' else []
                header = next(filter(None, (found(folder, name[1:-1]) for folder in near + folders)), None)
                if header and header not in paths:
                    paths.append(header)
        return paths

    def name(self):
        checks = [folder / ".clang-tidy" for folder in self.path.parents if (folder / ".clang-tidy").exists()]
        texts = [" ".join(self.command).replace(str(ROOT), ""), *map(text_of, [*checks, *self.seen()])]
        return hashlib.sha256("\0".join(texts).encode()).hexdigest()


def sources(build, paths):
    database = json.loads((build / "compile_commands.json").read_text(encoding="utf-8"))
    entries = {Path(entry["file"]).resolve(): entry for entry in database}
    for path in paths:
        if path not in entries:
            sys.exit(f"{path} is not compiled by {build}")
        entry = entries[path]
        words = shlex.split(entry["command"])
        while not words[0].endswith(("++", "cc")):  # a compiler cache before the compiler
            words.pop(0)
        command = tuple(word for i, word in enumerate(words)
                        if word not in ("-c", "-o", entry["file"]) and words[i - 1] != "-o")
        yield Source(path, command, entry["directory"])


def text_together(batch):
    """The sources' texts; what one includes is there for those behind it."""
    included = set()
    texts = []
    for source in batch:
        text = text_of(source.path)
        lines = [line for line in text.splitlines()
                 if not (match := INCLUDE.match(line)) or match[1] not in included]
        included.update(INCLUDE.findall(text))
        texts.append("\n".join(lines) + "\n")
    return "\n".join(texts)


class Tidy:
    def __init__(self, build):
        if not build.is_relative_to(ROOT):
            sys.exit(f"{build} does not lie below {ROOT}, whose .clang-tidy holds")
        self.build = build
        self.cache = cache_folder()
        self.versions = versions()
        self.number = itertools.count()

    def mark_of(self, source):
        """A file of the cache, which is there once the source has passed."""
        return self.cache / hashlib.sha256(self.versions + source.name().encode()).hexdigest()

    def passed_before(self, source):
        mark = self.mark_of(source)
        if mark.exists():
            os.utime(mark)
        return mark.exists()

    def unit_of(self, batch):
        """One file of the sources' texts, with the checks of their folder; those of the root hold below it too."""
        folder = batch[0].path.parent
        unit = self.build / "tidy" / folder.relative_to(ROOT) / f"{next(self.number)}.cpp"
        unit.parent.mkdir(parents=True, exist_ok=True)
        if (folder / ".clang-tidy").exists():
            (unit.parent / ".clang-tidy").write_bytes((folder / ".clang-tidy").read_bytes())
        unit.write_text(text_together(batch), encoding="utf-8")
        return unit

    def pass_together(self, batch):
        unit = self.unit_of(batch)
        # A local name may be that of another file's helper.
        command = [*batch[0].command, "-Wno-shadow", "-iquote", batch[0].path.parent]
        compiled = subprocess.run([*command, "-fsyntax-only", unit], cwd=batch[0].directory, capture_output=True,
                                  check=False)
        return compiled.returncode == 0 and subprocess.run(["clang-tidy", "--quiet", unit, "--", *command[1:]],
                                                           capture_output=True, check=False).returncode == 0

    def passes_alone(self, source):
        run = subprocess.run(["clang-tidy", "-p", self.build, "--quiet", source.path], capture_output=True, text=True,
                             check=False)
        if run.returncode != 0:
            print(run.stdout or run.stderr, flush=True)
        return run.returncode == 0

    def passes(self, batch):
        if len(batch) > 1 and not self.pass_together(batch):
            half = len(batch) // 2
            return all([self.passes(batch[:half]), self.passes(batch[half:])])
        if len(batch) == 1 and not self.passes_alone(batch[0]):
            return False
        for source in batch:
            self.mark_of(source).touch()
        return True


def helpers(source):
    """What the file defines at the outermost level, by how such lines begin: names, and functions with their
    parameters, which may clash with another's."""
    return {name for names in HELPER.findall(text_of(source.path)) for name in names if name}


def batches(left):
    """Files of one folder, by the same command, without helpers of one name as far as that is seen."""
    for _, group in itertools.groupby(left, lambda source: (source.path.parent, source.command)):
        group = list(group)
        made = [([], set()) for _ in range(-(-len(group) // TOGETHER))]
        for source in group:
            names = helpers(source)
            fitting = [batch for batch in made if len(batch[0]) < TOGETHER and not names & batch[1]]
            if not fitting:
                made.append(([], set()))
            files, taken = min(fitting or made[-1:], key=lambda batch: len(batch[0]))
            files.append(source)
            taken |= names
        yield from (files for files, _ in made if files)


def main():
    build = Path(sys.argv[1]).resolve()
    shutil.rmtree(build / "tidy", ignore_errors=True)  # units and checks of a former run
    tidy = Tidy(build)
    files = sources(build, sorted(Path(name).resolve() for name in sys.argv[2:]))
    left = [source for source in files if not tidy.passed_before(source)]
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        good = list(pool.map(tidy.passes, batches(left)))
    return 0 if all(good) else 1


if __name__ == "__main__":
    sys.exit(main())
