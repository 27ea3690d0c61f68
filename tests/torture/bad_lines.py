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


class Case:
    def __init__(self, line, part, parts, rules=(), comes_down=True):
        self.line, self.part, self.parts, self.rules, self.comes_down = line, part, parts, rules, comes_down

    def ideal(self):
        rate = float(self.line[self.line.index("--rate") + 1]) * 1e6 / 8
        return self.part * self.parts / rate


CRAWL = {"operation": "put", "part": 5, "bytesPerSecond": 2_000, "action": "none"}
CASES = {
    "loss": Case(["--delay", "25", "--loss", "0.02", "--rate", "40"], 250_000, 20),
    "one lane at one hundredth": Case(["--delay", "5", "--rate", "40"], 250_000, 64 if IS_LONG else 24, [CRAWL]),
    # Over all lanes a part takes longer than a connection lives, alone it takes a fifth of that. A chunk of a download is
    # larger than all of it.
    "breaks": Case(["--rate", "10.7", "--break-every", "4"], 1_000_000, 16, comes_down=False) if IS_LONG else
              Case(["--rate", "20", "--break-every", "2"], 1_000_000, 6, comes_down=False),
}


def inside(name, folder):
    """At the client's end of the line."""
    case = CASES[name]
    workspace = Workspace()
    workspace.path = folder
    platform = Platform(workspace)
    platform.origin = f"http://{ADDRESS}:8080"
    client = Client(workspace, platform.origin + "/api")
    wait_until(lambda: client.enter().code == DONE, "the platform at the other end")
    platform.break_with(*case.rules)
    file = workspace.make_file("Reel.mov", case.part * case.parts)
    (folder / "down").mkdir()
    began = time.monotonic()
    expect(DONE, client.upload("salt-row-1", file))
    sent = time.monotonic() - began
    platform.break_with()
    expect_filed(platform, client, "salt-row-1", file)
    said = f"        {name}: {case.ideal():.1f} s at best, up {sent:.1f} s"
    if case.comes_down:
        began = time.monotonic()
        expect(DONE, client.run("download", ORG, PROJECT, "salt-row-1", "--to", folder / "down"))
        said += f", down {time.monotonic() - began:.1f} s"
        assert digest(folder / "down" / file.name) == digest(file), "other bytes came down"
    print(said, flush=True)


def over(name):
    case = CASES[name]

    def test():
        with Workspace() as workspace:
            platform = Platform(workspace)
            ran = subprocess.run(
                [LINE, *case.line, support.PLATFORM, "--address", ADDRESS, "--data", platform.data, "--part-size",
                 str(case.part), "--violations", platform.violations_file, "--faults", platform.faults_file,
                 "--and", sys.executable, "-B", __file__, name, workspace.path],
                stdout=subprocess.PIPE, text=True)
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
