#!/usr/bin/env python3
"""Whole runs of the program against a plain copy of the same output bytes.

usage: whole_runs.py PROGRAM [--sizes MB,MB,...] [--rounds N] [--keep]

Makes a film of MPEG-2 at 6.5 Mbit/s with AC3 at 448 kbit/s (one minute coded once with ffmpeg, then
repeated), authors it, copies the finished folder with cp, in alternation, and prints the median times,
their ratio, and the peak memory. Sources and folders lie in the page cache. Nothing here judges: the
limits stand beside the figures.
"""
import argparse
import os
import pathlib
import shutil
import statistics
import subprocess
import sys
import time

RATIO_LIMIT = 1.3
MEMORY_LIMIT_MIB = 64
CHUNK_SECONDS = 40


def run(*command):
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL)


def timed(command):
    """Wall seconds and peak memory (MiB) of one finished process."""
    start = time.perf_counter()
    child = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    _, status, usage = os.wait4(child.pid, 0)
    seconds = time.perf_counter() - start
    if status != 0:
        sys.exit(f"failed: {' '.join(map(str, command))}")
    return seconds, usage.ru_maxrss / 1024


def make_chunks(work):
    video, sound = work / "chunk.m2v", work / "chunk.ac3"
    if not video.exists():
        quiet = ["ffmpeg", "-hide_banner", "-loglevel", "error", "-y"]
        run(*quiet, "-f", "lavfi", "-i", f"testsrc2=s=720x576:r=25:d={CHUNK_SECONDS}",
            "-vf", "noise=alls=40:allf=t", "-c:v", "mpeg2video", "-g", "12", "-bf", "2", "-flags", "+cgop", "-sc_threshold", "1000000000",
            "-b:v", "6500k", "-minrate", "6500k", "-maxrate", "6500k", "-bufsize", "1835k",
            "-f", "mpeg2video", video)
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


def write_project(path, video, sound, seconds):
    chapter = max(seconds // 20, 1)
    marks = [f"{s // 3600:02}:{s // 60 % 60:02}:{s % 60:02}:00" for s in range(0, seconds - 2, chapter)][:99]
    lines = ["Data=Tracks", "Item=Track", "Name=Film", "DisplayMode=Not Specified", "Resolution=PAL",
             "Item=Video Play List", "Item=Video Play", f"VideoFile={video}",
             "Item=Audio Play List", "Name=Audio Stream 1", "AudioLanguage=English", "StreamNumber=0",
             "Item=Audio Play", f"AudioFile={sound}"]
    for n, mark in enumerate(marks, 1):
        lines += ["Item=Scene", f"Name=Film_Scene{n}", f"SceneTime={mark}"]
    lines += ["Data=Structure", "Item=FirstPGC", "Item=PreCommands", "Command=JumpTT VTS1_Title1",
              "Item=VMG", "Item=VTS", "Item=Title", "Name=VTS1_Title1", "Item=PGC", "Name=VTS1_Title1_PGC1"]
    for n in range(1, len(marks) + 1):
        lines += ["Item=Program", f"Name=PG{n}", "Item=Cell", f"Name=PG{n}_CELL1", f"UsingScene=Film_Scene{n}"]
    path.write_text("\r\n".join(lines) + "\r\n")


def measure(program, work, megabytes, rounds):
    chunk_video, chunk_sound = make_chunks(work)
    times = max(1, round(megabytes * 1e6 / (chunk_video.stat().st_size + chunk_sound.stat().st_size)))
    video, sound, project = work / "film.m2v", work / "film.ac3", work / "film.qvp"
    repeat(chunk_video, video, times)
    repeat(chunk_sound, sound, times)
    write_project(project, video, sound, CHUNK_SECONDS * times)
    disc, copy = work / "disc", work / "copy"
    author_times, copy_times, peak = [], [], 0.0
    for _ in range(rounds + 1):
        shutil.rmtree(disc, ignore_errors=True)
        seconds, memory = timed([program, "author", project, "-o", disc])
        author_times.append(seconds)
        peak = max(peak, memory)
        shutil.rmtree(copy, ignore_errors=True)
        copy_times.append(timed(["cp", "-r", disc, copy])[0])
    author, cp = statistics.median(author_times[1:]), statistics.median(copy_times[1:])
    out_bytes = sum(f.stat().st_size for f in disc.iterdir())
    print(f"{out_bytes / 1e6:8.0f} MB {author:8.2f} s {cp:8.2f} s {author / cp:7.2f} {peak:9.1f} MiB", flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawTextHelpFormatter)
    parser.add_argument("program", type=pathlib.Path)
    parser.add_argument("--sizes", default="100,400,1000,4000", help="MB of source, a list")
    parser.add_argument("--rounds", type=int, default=5)
    parser.add_argument("--keep", action="store_true", help="leave the media and folders")
    args = parser.parse_args()
    work = pathlib.Path(args.program).resolve().parent / "whole_runs"
    work.mkdir(exist_ok=True)
    print(f"   output     author       cp   ratio    memory   (limits: ratio {RATIO_LIMIT} at 1000 MB, "
          f"memory {MEMORY_LIMIT_MIB} MiB)")
    for size in map(int, args.sizes.split(",")):
        measure(args.program.resolve(), work, size, args.rounds)
    if not args.keep:
        shutil.rmtree(work)


if __name__ == "__main__":
    main()
