#!/usr/bin/env python3
"""Transfers over a line between two network namespaces that is slow, loses packets and breaks: each ends with the file
whole at the other side, without help. Needs the right to make network namespaces.

Prints how long each took beside what the line alone needs. PALVERA_LINES=long gives the lines more time to do harm.
"""
import os
import subprocess
import sys
import time

import support
from support import DONE, ORG, PROJECT, Client, Platform, Workspace, digest, expect, expect_filed, wait_until

LINE = os.environ["PALVERA_LOCAL_LINE"]
IS_LONG = os.environ.get("PALVERA_LINES") == "long"
ADDRESS = "10.77.0.1"
support.PATIENCE = 600  # seconds: chance decides how many attempts a break meets
CANNOT_RUN = 77


CRAWL = {"operation": "put", "part": 5, "bytesPerSecond": 2_000, "action": "none"}
CASES = {  # what the line is like, its megabits a second, the parts of the file and what else is wrong
    "loss": (["--delay", "25", "--loss", "0.02"], 40, 250_000, 20, []),
    "one lane at one hundredth": (["--delay", "5"], 40, 250_000, 64 if IS_LONG else 24, [CRAWL]),
    # Over all lanes a part takes longer than a connection lives, alone it takes a fifth of that. A chunk of a download is
    # larger than all of it.
    "breaks": (["--break-every", "4"], 10.7, 1_000_000, 16, []) if IS_LONG else
              (["--break-every", "2"], 20, 1_000_000, 6, []),
}


def inside(name, folder):
    """At the client's end of the line."""
    _, rate, part, parts, rules = CASES[name]
    workspace = Workspace()
    workspace.path = folder
    platform = Platform(workspace)
    platform.origin = f"http://{ADDRESS}:8080"
    client = Client(workspace, platform.origin + "/api")
    wait_until(lambda: client.enter().code == DONE, "the platform at the other end")
    platform.break_with(*rules)
    file = workspace.make_file("Reel.mov", part * parts)
    (folder / "down").mkdir()
    began = time.monotonic()
    expect(DONE, client.upload("salt-row-1", file))
    sent = time.monotonic() - began
    platform.break_with()
    expect_filed(platform, client, "salt-row-1", file)
    said = f"        {name}: {part * parts / rate / 125e3:.1f} s at best, up {sent:.1f} s"
    if name != "breaks":
        began = time.monotonic()
        expect(DONE, client.run("download", ORG, PROJECT, "salt-row-1", "--to", folder / "down"))
        said += f", down {time.monotonic() - began:.1f} s"
        assert digest(folder / "down" / file.name) == digest(file), "other bytes came down"
    print(said, flush=True)


def over(name):
    options, rate, part, *_ = CASES[name]

    def test():
        with Workspace() as workspace:
            platform = Platform(workspace)
            ran = subprocess.run(
                [LINE, *options, "--rate", str(rate), support.PLATFORM, "--address", ADDRESS, "--data", platform.data,
                 "--part-size", str(part), "--violations", platform.violations_file, "--faults", platform.faults_file,
                 "--and", sys.executable, "-B", __file__, name, workspace.path], stdout=subprocess.PIPE, text=True)
            print("\n".join(line for line in ran.stdout.splitlines() if line.startswith("        ")), flush=True)
            assert ran.returncode == 0, ran.stdout
    return test


def main():
    if len(sys.argv) == 3:
        inside(sys.argv[1], support.pathlib.Path(sys.argv[2]))
        return
    if subprocess.run([LINE, "true", "--and", "true"], capture_output=True).returncode:
        print("not run: this user may not make network namespaces", flush=True)
        sys.exit(CANNOT_RUN)
    support.run_tests({name: over(name) for name in CASES if not sys.argv[1:] or name in sys.argv[1:]})


main()
