#!/usr/bin/env python3
"""Whole runs of the program against a plain copy of the same output bytes.

usage: whole_runs.py PROGRAM [--sizes MB,MB,...] [--subtitled MB] [--rounds N] [--work FOLDER] [--keep]

Makes films of MPEG-2 at 6.5 Mbit/s with AC3 at 448 kbit/s (40 seconds coded once with ffmpeg, then
repeated), authors them and copies the finished folder with cp, in alternation. One more film has two
streams of AC3 and four of subtitles with 1000 captions each, every caption a bitmap file of its own. Last, the wizard makes the menus of three films of an hour.

The image of each finished film (quorvelant iso) is held against the same copy, and its verification
(quorvelant verify) against a plain reading of the same bytes with cat, in alternation, both from the page cache.

A disc is on the disk when it takes its place, so author is held against cp and a sync of the copy, and
author --no-sync against cp alone.

A plain copy moves the bytes: cp is told not to share them (--reflink=never), on a file system that could.
Ahead of each timed run its target is gone, everything unwritten is on the disk, what it reads is in the
page cache, and some seconds have passed: a virtual machine may give the memory of removed files back to its
host, and who fills it sooner or later than that would pay another price. So no run pays for the one before.
The first round is not counted.

Prints medians of wall seconds, their ratio, the processor seconds of a run, and the peak memory. Nothing
here judges: the limits stand beside the figures.
"""
import argparse
import os
import pathlib
import shutil
import statistics
import struct
import subprocess
import sys
import time

RATIO_LIMIT = 1.3
READING_LIMIT = 1.5
MEMORY_LIMIT_MIB = 64
CHUNK_SECONDS = 40
CHUNK_MB = 34.8
SETTLING_SECONDS = 4
SUBTITLE_STREAMS = 4
WIZARD_LIMIT = 3
EXAMPLES = pathlib.Path(__file__).resolve().parent.parent / "examples/media"
CAPTIONS = 1000  # a stream
CAPTION_SIZE = (560, 72)
CAPTION_COLOURS = [(1, 1, 1), (255, 255, 255), (128, 128, 128), (0, 255, 0)]  # ground, pattern, emphasis


def run(*command):
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL)


class Run:
    """Wall seconds, processor seconds and peak memory (MiB) of one finished process."""

    def __init__(self, command, good=(0,)):
        start = time.perf_counter()
        child = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        _, status, usage = os.wait4(child.pid, 0)
        self.wall = time.perf_counter() - start
        self.cpu = usage.ru_utime + usage.ru_stime
        self.memory = usage.ru_maxrss / 1024
        if os.waitstatus_to_exitcode(status) not in good:
            sys.exit(f"failed: {' '.join(map(str, command))}")


def settle(target, sources):
    """Removes `target`, writes back what is unwritten, reads `sources` into the page cache, and waits."""
    shutil.rmtree(target, ignore_errors=True)
    os.sync()
    buffer = bytearray(1 << 20)
    for path in sources:
        with open(path, "rb", buffering=0) as file:
            while file.readinto(buffer):
                pass
    time.sleep(SETTLING_SECONDS)


def make_chunks(work):
    video, sound = work / "chunk.m2v", work / "chunk.ac3"
    if not video.exists():
        quiet = ["ffmpeg", "-hide_banner", "-loglevel", "error", "-y"]
        run(*quiet, "-f", "lavfi", "-i", f"testsrc2=s=720x576:r=25:d={CHUNK_SECONDS}",
            "-vf", "noise=alls=40:allf=t", "-c:v", "mpeg2video", "-g", "12", "-bf", "2", "-flags", "+cgop",
            "-sc_threshold", "1000000000", "-b:v", "6500k", "-minrate", "6500k", "-maxrate", "6500k",
            "-bufsize", "1835k", "-aspect", "4:3", "-f", "mpeg2video", video)
        run(*quiet, "-f", "lavfi", "-i", f"sine=f=440:r=48000:d={CHUNK_SECONDS}", "-ac", "2", "-c:a", "ac3",
            "-b:a", "448k", "-f", "ac3", sound)
        data = video.read_bytes()
        if data.endswith(b"\0\0\1\xb7"):
            video.write_bytes(data[:-4])
    return video, sound


def repeat(source, target, times):
    data = source.read_bytes()
    with open(target, "wb") as out:
        for _ in range(times):
            out.write(data)


def write_caption(path, number):
    """A bitmap of 8 bits: one or two lines of letters, each a stem and a bar with shaded edges."""
    width, height = CAPTION_SIZE
    rows = []
    for y in range(height):
        row = bytearray(width)
        if 4 <= y % 36 < 30 and (y >= 36 or number % 2 == 0):
            for letter in range(16, width - 32, 26):
                shape = (number * 7919 + letter * 31 + y // 36) % 11
                if shape == 0:
                    continue  # a gap between words
                row[letter:letter + 5] = b"\2\1\1\1\2"
                if (y % 36 - 4) % (5 + shape) < 3:
                    row[letter + 5:letter + 8 + shape] = bytes([1]) * (2 + shape) + b"\2"
        rows.append(bytes(row))
    palette = b"".join(struct.pack("BBBB", b, g, r, 0) for r, g, b in CAPTION_COLOURS)
    pixels = b"".join(reversed(rows))
    offset = 14 + 40 + len(palette)
    path.write_bytes(struct.pack("<2sIHHI", b"BM", offset + len(pixels), 0, 0, offset) +
                     struct.pack("<IiiHHIIiiII", 40, width, height, 1, 8, 0, len(pixels), 2835, 2835,
                                 len(CAPTION_COLOURS), 0) + palette + pixels)


def timecode(seconds):
    whole = int(seconds)
    return f"{whole // 3600:02}:{whole // 60 % 60:02}:{whole % 60:02}:{int((seconds - whole) * 25):02}"


def subtitle_lines(work, seconds):
    """Four streams of captions, written on the way; each shows for two thirds of its share of the film."""
    folder, lines, paths = work / "captions", [], []
    folder.mkdir(exist_ok=True)
    share = (seconds - 2) / CAPTIONS
    for stream in range(SUBTITLE_STREAMS):
        lines += ["Item=SubPicture", f"Name=Subtitles {stream + 1}", "SubLanguage=English",
                  f"StreamNumber={stream}"]
        for n in range(CAPTIONS):
            path = folder / f"{stream}_{n:04}.bmp"
            if not path.exists():
                write_caption(path, SUBTITLE_STREAMS * n + stream)
            paths.append(path)
            lines += ["Item=SubPicture Play", f"File={path}", "Origin=80,460", "Forced=No",
                      f"Start={timecode(share * n)}", f"Duration={timecode(share * 2 / 3)}"]
            lines += [f"Conversion({name})={r},{g},{b}"
                      for name, (r, g, b) in zip(("Bg", "P", "E1", "E2"), CAPTION_COLOURS)]
            lines += ["Color=4,3,1,2", "Contrast=0,15,15,15"]
    return lines, paths


def write_project(path, video, sounds, seconds, extra=()):
    chapter = max(seconds // 20, 1)
    marks = [timecode(s) for s in range(0, seconds - 2, chapter)][:99]
    lines = ["Data=Tracks", "Item=Track", "Name=Film", "DisplayMode=Not Specified", "Resolution=PAL",
             "Item=Video Play List", "Item=Video Play", f"VideoFile={video}"]
    for n, sound in enumerate(sounds):
        lines += ["Item=Audio Play List", f"Name=Audio Stream {n + 1}", "AudioLanguage=English",
                  f"StreamNumber={n}", "Item=Audio Play", f"AudioFile={sound}"]
    lines += extra
    for n, mark in enumerate(marks, 1):
        lines += ["Item=Scene", f"Name=Film_Scene{n}", f"SceneTime={mark}"]
    lines += ["Data=Structure", "Item=FirstPGC", "Item=PreCommands", "Command=JumpTT VTS1_Title1",
              "Item=VMG", "Item=VTS", "Item=Title", "Name=VTS1_Title1", "Item=PGC", "Name=VTS1_Title1_PGC1"]
    for n in range(1, len(marks) + 1):
        lines += ["Item=Program", f"Name=PG{n}", "Item=Cell", f"Name=PG{n}_CELL1", f"UsingScene=Film_Scene{n}"]
    path.write_text("\r\n".join(lines) + "\r\n")


def make_film(work, megabytes, subtitled):
    """Writes the sources; returns the project and everything that authoring reads."""
    chunk_video, chunk_sound = make_chunks(work)
    times = max(1, round(megabytes / CHUNK_MB))
    seconds = CHUNK_SECONDS * times
    video, project = work / "film.m2v", work / "film.qvp"
    sounds = [work / f"film{n}.ac3" for n in range(2 if subtitled else 1)]
    repeat(chunk_video, video, times)
    for sound in sounds:
        repeat(chunk_sound, sound, times)
    extra, captions = subtitle_lines(work, seconds) if subtitled else ((), [])
    write_project(project, video, sounds, seconds, extra)
    return project, [project, video, *sounds, *captions]


def measure(program, work, megabytes, rounds, subtitled=False):
    """Prints two rows; returns GB of output and the median seconds, not synced."""
    project, sources = make_film(work, megabytes, subtitled)
    disc, copy = work / "disc", work / "copy"
    results = [compare(program, project, sources, disc, copy, rounds, subtitled, synced)
               for synced in (False, True)]
    for synced in (False, True):
        compare_image(program, disc, copy, work / "disc.iso", rounds, synced)
    compare_reading(program, disc, rounds)
    for folder in (disc, copy):
        shutil.rmtree(folder, ignore_errors=True)
    return results[0]


def compare_reading(program, disc, rounds):
    """One row: the verification of a finished disc with reading it; verify ends with 1 where it warns."""
    files = sorted(disc.iterdir())
    verify, reading = [program, "verify", disc, "--quiet"], ["cat", *files]
    verified, read = [], []
    for _ in range(4 * rounds + 1):
        verified.append(Run(verify, (0, 1)))
        read.append(Run(reading))
    median = lambda runs, figure: statistics.median(getattr(one, figure) for one in runs[1:])
    wall, plain = median(verified, "wall"), median(read, "wall")
    megabytes = sum(f.stat().st_size for f in files) / 1e6
    print(f"{megabytes:8.0f} MB {wall:7.2f} s {plain:7.2f} s {wall / plain:6.2f} "
          f"{median(verified, 'cpu'):7.2f} s {median(read, 'cpu'):7.2f} s "
          f"{max(one.memory for one in verified):7.1f} MiB  verify against reading (limit {READING_LIMIT})", flush=True)


def compare_image(program, disc, copy, image, rounds, synced):
    """One row: the image of a finished disc with the copy that is as safe."""
    write = [program, "iso", disc, "-o", image, "--force", *([] if synced else ["--no-sync"])]
    copying = ["cp", "--reflink=never", "-r", disc, copy]
    if synced:
        copying = ["sh", "-c", 'cp --reflink=never -r "$0" "$1" && sync "$1"/* "$1"', disc, copy]
    written, copied = [], []
    for _ in range(rounds + 1):
        image.unlink(missing_ok=True)
        settle(copy, sorted(disc.iterdir()))
        written.append(Run(write))
        image.unlink()
        settle(copy, sorted(disc.iterdir()))
        copied.append(Run(copying))
    median = lambda runs, figure: statistics.median(getattr(one, figure) for one in runs[1:])
    wall, cp = median(written, "wall"), median(copied, "wall")
    megabytes = sum(f.stat().st_size for f in disc.iterdir()) / 1e6
    print(f"{megabytes:8.0f} MB {wall:7.2f} s {cp:7.2f} s {wall / cp:6.2f} "
          f"{median(written, 'cpu'):7.2f} s {median(copied, 'cpu'):7.2f} s "
          f"{max(one.memory for one in written):7.1f} MiB  image, {'synced' if synced else 'not synced'}", flush=True)


def compare(program, project, sources, disc, copy, rounds, subtitled, synced):
    """One row: author with the copy that is as safe as its disc."""
    author = [program, "author", project, "-o", disc, *([] if synced else ["--no-sync"])]
    copying = ["cp", "--reflink=never", "-r", disc, copy]
    if synced:
        copying = ["sh", "-c", 'cp --reflink=never -r "$0" "$1" && sync "$1"/* "$1"', disc, copy]
    authored, copied = [], []
    for _ in range(rounds + 1):
        settle(disc, sources)
        authored.append(Run(author))
        settle(copy, sorted(disc.iterdir()))
        copied.append(Run(copying))
    median = lambda runs, figure: statistics.median(getattr(one, figure) for one in runs[1:])
    wall, cp = median(authored, "wall"), median(copied, "wall")
    peak = max(one.memory for one in authored)
    gigabytes = sum(f.stat().st_size for f in disc.iterdir()) / 1e9
    name = "2 audio, 4 x 1000 captions" if subtitled else "film"
    print(f"{gigabytes * 1000:8.0f} MB {wall:7.2f} s {cp:7.2f} s {wall / cp:6.2f} "
          f"{median(authored, 'cpu'):7.2f} s {median(copied, 'cpu'):7.2f} s {peak:7.1f} MiB  {name}, {'synced' if synced else 'not synced'}", flush=True)
    return gigabytes, wall


def measure_wizard(program, work, rounds):
    """One row: menus of three films of an hour with 90 chapters each, which are indexed before."""
    films = [work / f"hour{n}" for n in range(3)]
    titles = ['menus = "auto"']
    for film in films:
        for extension, source in ((".m2v", "first.m2v"), (".ac3", "first_en.ac3")):
            repeat(EXAMPLES / source, film.with_suffix(extension), 257)  # of 14 seconds
        titles += ["[[title]]", f'video = "{film}.m2v"', f'audio = ["{film}.ac3", "{film}.ac3"]',
                   'chapters = { every = "40s" }']
    order, project = work / "hours.toml", work / "hours.qvp"
    order.write_text("\n".join(titles))
    run(program, "index", *(film.with_suffix(".m2v") for film in films))
    runs = [Run([program, "wizard", order, "-o", project, "--force"]) for _ in range(rounds + 1)]
    wall, cpu = (statistics.median(getattr(one, figure) for one in runs[1:]) for figure in ("wall", "cpu"))
    print(f"wizard, three films of an hour: {wall:.2f} s, cpu {cpu:.2f} s (limit {WIZARD_LIMIT} s), "
          f"{max(one.memory for one in runs):.1f} MiB")


def line_through(points):
    """Least squares: seconds at nothing, seconds a GB."""
    mean_x, mean_y = (statistics.mean(p[i] for p in points) for i in (0, 1))
    spread = sum((x - mean_x) ** 2 for x, _ in points)
    slope = sum((x - mean_x) * (y - mean_y) for x, y in points) / spread
    return mean_y - slope * mean_x, slope


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawTextHelpFormatter)
    parser.add_argument("program", type=pathlib.Path)
    parser.add_argument("--sizes", default="100,400,1000,4000", help="MB of source, a list")
    parser.add_argument("--subtitled", default=1000, type=int, help="MB of the film with subtitles, 0 for none")
    parser.add_argument("--rounds", type=int, default=5)
    parser.add_argument("--work", type=pathlib.Path, help="folder for media and discs")
    parser.add_argument("--keep", action="store_true", help="leave the media")
    args = parser.parse_args()
    program = args.program.resolve()
    work = (args.work or program.parent / "whole_runs").resolve()
    work.mkdir(parents=True, exist_ok=True)
    print(f"limits: ratio {RATIO_LIMIT} at 1000 MB, memory {MEMORY_LIMIT_MIB} MiB; median of {args.rounds}")
    print("     output    author        cp  ratio  cpu, author   cpu, cp     memory", flush=True)
    sizes = [int(size) for size in args.sizes.split(",") if size]
    points = [measure(program, work, size, args.rounds) for size in sizes]
    if len(points) > 1:
        fixed, slope = line_through(points)
        print(f"author takes {fixed:.2f} s and {slope:.3f} s a GB; off that line by at most "
              f"{max(abs(y - fixed - slope * x) / y for x, y in points):.0%}")
    if args.subtitled:
        measure(program, work, args.subtitled, args.rounds, subtitled=True)
    measure_wizard(program, work, args.rounds)
    if not args.keep:
        shutil.rmtree(work)


if __name__ == "__main__":
    main()
