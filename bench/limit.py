#!/usr/bin/env python3
"""Measures how well a limit of the line holds: two files at once each way, with the command line's --limit-rate; two
uploads of the desktop application, by its settings; and a limit whose hours begin while a file is on its way. Against the
local platform, which takes and gives as fast as it can. Needs no display: it has one of its own.
"""
import argparse
import datetime
import json
import os
import pathlib
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests/end_to_end"))
PART = 8 << 20
ROWS = "salt-row-1", "salt-row-4"
MEGABYTE = 1_000_000


def say(what, size, seconds, limit):
    rate = size / seconds / MEGABYTE
    print(f"{what}: {rate:.2f} MB/s of {limit:g}, {100 * (rate / limit - 1):+.1f} %", flush=True)


def with_command_line(support, limit, size):
    with support.signed_in() as (workspace, _, client):
        files = [workspace.make_file(f"{name}.mov", size, seed) for seed, name in enumerate("ab")]
        folder = workspace.path / "down"
        folder.mkdir()
        for what, words in ("two uploads", ("upload-bin", support.ORG, *files)), (
                "two downloads", ("download-bin", support.ORG, "a.mov", "b.mov", "--to", folder)):
            began, used = time.monotonic(), os.times()
            support.expect(support.DONE, client.run(*words, "--limit-rate", limit))
            say(f"command line, {what}", 2 * size, time.monotonic() - began, limit)
            spent = os.times().children_user + os.times().children_system - used.children_user - used.children_system
            print(f"  processor: {spent / (2 * size / 1e9):.2f} s a GB")


def by_the_clock(support, limit, size):
    """The rates that the program itself says, before and after the minute in which the limit begins."""
    with support.signed_in("--bytes-per-second", str(10 * MEGABYTE)) as (workspace, _, client):
        file = workspace.make_file("film.mov", size)
        while not 40 < datetime.datetime.now().second < 45:
            time.sleep(1)
        begins = (datetime.datetime.now() + datetime.timedelta(minutes=1)).replace(second=0, microsecond=0)
        hours = f"{begins:%H:%M}-{begins + datetime.timedelta(hours=1):%H:%M}"
        support.expect(support.DONE, client.run("limit", "--up", limit, "--hours", hours))
        process = client.start("upload", support.ORG, support.PROJECT, ROWS[0], file, "--json", stdout=subprocess.PIPE)
        marks = []
        for line in process.stdout:
            event = json.loads(line)
            if event["event"] == "progress":
                marks.append((time.time(), event["sent"]))
                if time.time() > begins.timestamp() + 20:
                    break
        process.kill()
        process.communicate()
        for what, start, end in ("before its hours", -10, -1), ("within its hours", 2, 19):
            within = [mark for mark in marks if start <= mark[0] - begins.timestamp() <= end]
            (first, sent_first), (last, sent_last) = within[0], within[-1]
            say(f"by the clock, {what}", sent_last - sent_first, last - first, limit)


def with_desktop(modules, limit, size):
    support, programs = modules
    with support.Workspace() as workspace, programs.Display(), programs.WindowManager(), support.Platform(
            workspace, "--part-size", str(PART), "--bytes-per-second", "400000") as platform:
        client = support.Client(workspace, platform.address).sign_in()
        file = workspace.make_file("film.mov", size)
        for row in ROWS:  # begun by the command line, which is killed: the desktop lists what it left
            process = client.start("upload", support.ORG, support.PROJECT, row, file)
            support.wait_until(lambda row=row: client.journal(row), "a journal")
            process.kill()
            process.wait()
        platform.kill()
        platform.options = "--part-size", str(PART)
        platform.start()
        support.expect(support.DONE, client.run("limit", "--up", limit))
        with programs.Desktop(workspace, platform.address) as desktop:
            left = sum(size - PART * len(client.recorded_parts(row)) for row in ROWS)
            desktop.activate(desktop.BUTTON, "Resume all")
            began = time.monotonic()
            while not all(platform.is_filed(row, file) for row in ROWS):
                time.sleep(0.05)
            say("desktop, two uploads", left, time.monotonic() - began, limit)


def main():
    options = argparse.ArgumentParser(description=__doc__)
    options.add_argument("--build", type=pathlib.Path, required=True, help="folder of the programs")
    options.add_argument("--limit", type=float, default=20, help="MB/s")
    options.add_argument("--seconds", type=int, default=30, help="of each measurement")
    chosen = options.parse_args()
    build = chosen.build.resolve()
    os.environ.update({variable: str(build / name) for variable, name in (
        ("PALVERA", "palvera"), ("PALVERA_CLI", "palvera-cli"), ("PALVERA_LOCAL_PLATFORM", "palvera-local-platform"))})
    import desktop_programs
    import support
    size = int(chosen.limit * MEGABYTE * chosen.seconds / 2)
    with_command_line(support, chosen.limit, size)
    with_desktop((support, desktop_programs), chosen.limit, size)
    by_the_clock(support, chosen.limit, 200 * size)


main()
