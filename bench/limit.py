#!/usr/bin/env python3
"""Measures how well a limit of the line holds: two files at once each way, with the command line's --limit-rate and with
the desktop application's settings; and, with both, a limit whose hours begin while a file is on its way. Against the local
platform, which takes and gives as fast as it can. Needs no display: it has one of its own.
"""
import argparse
import datetime
import json
import os
import pathlib
import re
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


def hours_from_the_next_minute():
    """That minute, as the time that it begins at, and the hours from then on; a quarter of a minute before it."""
    while not 40 < datetime.datetime.now().second < 45:
        time.sleep(1)
    begins = (datetime.datetime.now() + datetime.timedelta(minutes=1)).replace(second=0, microsecond=0)
    return begins.timestamp(), f"{begins:%H:%M}-{begins + datetime.timedelta(hours=1):%H:%M}"


def by_the_clock(support, limit, size):
    """The rates that the program itself says, before and after the minute in which the limit begins."""
    with support.signed_in("--bytes-per-second", str(10 * MEGABYTE)) as (workspace, _, client):
        file = workspace.make_file("film.mov", size)
        begins, hours = hours_from_the_next_minute()
        support.expect(support.DONE, client.run("limit", "--up", limit, "--hours", hours))
        process = client.start("upload", support.ORG, support.PROJECT, ROWS[0], file, "--json", stdout=subprocess.PIPE)
        marks = []
        for line in process.stdout:
            event = json.loads(line)
            if event["event"] == "progress":
                marks.append((time.time(), event["sent"]))
                if time.time() > begins + 20:
                    break
        process.kill()
        process.communicate()
        for what, start, end in ("before its hours", -10, -1), ("within its hours", 2, 19):
            within = [mark for mark in marks if start <= mark[0] - begins <= end]
            (first, sent_first), (last, sent_last) = within[0], within[-1]
            say(f"command line by the clock, {what}", sent_last - sent_first, last - first, limit)


def cut_off(support, workspace, client, way, file):
    """Two transfers that the command line has begun and is killed in: the desktop lists what it left."""
    for row in ROWS:
        folder = workspace.path / "down" / row
        folder.mkdir(parents=True, exist_ok=True)
        words = (file,) if way == "upload" else ("--to", folder)
        process = client.start(way, support.ORG, support.PROJECT, row, *words)
        time.sleep(2)
        process.kill()
        process.communicate()


def rates_shown(desktop, until):
    """The totals that the panel shows of the two, in MB/s, each with the time of day."""
    desktop.activate("page tab", f"In flight ({len(ROWS)})")
    rates = []
    while not until():
        totals = [re.match(r"([\d.]+) MB/s · ", name) for role, name, _ in desktop.items() if role == "label"]
        rates += [(time.time(), float(total[1])) for total in totals if total]
        time.sleep(0.2)
    return rates


def say_shown(what, rates, start, end, limit):
    within = [rate for at, rate in rates if start <= at <= end]
    say(what, sum(within) * MEGABYTE, len(within), limit)


def with_desktop(modules, limit, size):
    support, programs = modules
    with support.Workspace() as workspace, programs.Display(), programs.WindowManager(), support.Platform(
            workspace, "--part-size", str(PART)) as platform:
        client = support.Client(workspace, platform.address).sign_in()
        file, endless = workspace.make_file("film.mov", size), workspace.make_file("endless.mov", 200 * size)

        def restart(*words):
            platform.kill()
            platform.options = "--part-size", str(PART), *words
            platform.start()

        def go_on(way, of, speed, *words):
            restart("--bytes-per-second", "400000")
            cut_off(support, workspace, client, way, of)
            restart(*speed)
            support.expect(support.DONE, client.run("limit", *words))

        go_on("upload", file, (), "--up", limit)
        with programs.Desktop(workspace, platform.address) as desktop:
            left = sum(size - PART * len(client.recorded_parts(row)) for row in ROWS)
            desktop.activate(desktop.BUTTON, "Resume all")
            began = time.monotonic()
            while not all(platform.is_filed(row, file) for row in ROWS):
                time.sleep(0.05)
            say("desktop, two uploads", left, time.monotonic() - began, limit)
        go_on("download", file, (), "--down", limit)
        with programs.Desktop(workspace, platform.address) as desktop:
            desktop.activate(desktop.BUTTON, "Show")
            desktop.activate(desktop.BUTTON, "Resume all")
            folders = [workspace.path / "down" / row for row in ROWS]
            rates = rates_shown(desktop, lambda: any([each.name for each in folder.iterdir()] == [file.name] for folder in folders))
            say_shown("desktop, two downloads, as it says", rates, rates[0][0] + 5, rates[-1][0] - 1, limit)
        begins, hours = hours_from_the_next_minute()
        go_on("upload", endless, ("--bytes-per-second", str(10 * MEGABYTE)), "--up", limit, "--hours", hours)
        with programs.Desktop(workspace, platform.address) as desktop:
            desktop.activate(desktop.BUTTON, "Show")
            desktop.activate(desktop.BUTTON, "Resume all")
            rates = rates_shown(desktop, lambda: time.time() > begins + 25)
            for what, start, end in ("before its hours", -4, -1), ("within its hours", 6, 25):
                say_shown(f"desktop by the clock, {what}", rates, begins + start, begins + end, limit)


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
