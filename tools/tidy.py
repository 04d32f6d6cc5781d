#!/usr/bin/env python3
"""clang-tidy over source files, each read anew only where something that it sees has changed.

    tidy.py BUILD FILE...

What a file and its headers come to after the preprocessor, comments kept, names it in the cache with the checks that
hold for it; a file that passed under that name passes again without a run. Prints what clang-tidy finds; ends with 1
if there is any.
"""

import hashlib
import json
import os
import shlex
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

ROOT = str(Path(__file__).resolve().parent.parent).encode()
VERSION = subprocess.run(["clang-tidy", "--version"], capture_output=True, check=True).stdout


def cache_folder():
    base = os.environ.get("XDG_CACHE_HOME") or Path.home() / ".cache"
    folder = Path(base) / "quorvelant-tidy"
    folder.mkdir(parents=True, exist_ok=True)
    return folder


def checks_for(path):
    """The .clang-tidy files from the source's folder up to the root of the checkout."""
    return b"".join((folder / ".clang-tidy").read_bytes()
                    for folder in path.parents if (folder / ".clang-tidy").exists())


def name_of(path, command):
    words = shlex.split(command["command"])
    while not words[0].endswith(("++", "cc")):  # a compiler cache before the compiler
        words.pop(0)
    words = [word for i, word in enumerate(words) if word not in ("-c", "-o") and words[i - 1] != "-o"]
    run = subprocess.run([*words, "-E", "-P", "-C"], cwd=command["directory"], capture_output=True, check=False)
    if run.returncode != 0:
        return None  # clang-tidy tells why
    seen = run.stdout.replace(ROOT, b"")  # asserts name their file: the same in every checkout
    return hashlib.sha256(VERSION + checks_for(path) + seen).hexdigest()


def passes(build, path, command, cache):
    name = name_of(path, command) if command else None
    if name and (cache / name).exists():
        os.utime(cache / name)
        return True
    run = subprocess.run(["clang-tidy", "-p", str(build), "--quiet", str(path)], capture_output=True, text=True,
                         check=False)
    if run.returncode == 0:
        if name:
            (cache / name).touch()
        return True
    print(run.stdout or run.stderr, flush=True)
    return False


def main():
    build, *names = sys.argv[1:]
    commands = {Path(c["file"]).resolve(): c
                for c in json.loads((Path(build) / "compile_commands.json").read_text(encoding="utf-8"))}
    cache = cache_folder()
    paths = [Path(name).resolve() for name in names]
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        good = list(pool.map(lambda path: passes(build, path, commands.get(path), cache), paths))
    return 0 if all(good) else 1


if __name__ == "__main__":
    sys.exit(main())
