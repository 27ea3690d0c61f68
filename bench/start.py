#!/usr/bin/env python3
"""Times the desktop application from its start to its first picture, on the software renderer without a display.

Qt's own log of each drawn frame tells; the clock begins before the program is loaded. Each round has homes of its own.
"""
import argparse
import os
import pathlib
import statistics
import subprocess
import tempfile
import time

GOAL_MS = 400


def start(program):
    with tempfile.TemporaryDirectory() as home:
        pathlib.Path(home, "run").mkdir(mode=0o700)
        environment = os.environ | {
            "HOME": home, "XDG_DATA_HOME": home, "XDG_CONFIG_HOME": home, "XDG_STATE_HOME": home, "XDG_CACHE_HOME": home,
            "XDG_RUNTIME_DIR": home + "/run", "PV_API": "http://127.0.0.1:9/api", "QT_QPA_PLATFORM": "offscreen",
            "QT_QUICK_BACKEND": "software", "QT_LOGGING_RULES": "qt.scenegraph.time.renderloop=true"}
        began = time.monotonic()
        process = subprocess.Popen([program], env=environment, stderr=subprocess.PIPE, text=True)
        try:
            for line in process.stderr:
                if "Frame rendered" in line or "frame rendered" in line:
                    took = (time.monotonic() - began) * 1000
                    status = pathlib.Path(f"/proc/{process.pid}/status").read_text()
                    peak = int(next(row for row in status.splitlines() if row.startswith("VmHWM")).split()[1]) / 1024
                    return took, peak
        finally:
            process.kill()
            process.communicate()
    raise SystemExit("the program ended without a picture")


def main():
    options = argparse.ArgumentParser(description=__doc__)
    options.add_argument("--build", type=pathlib.Path, required=True, help="folder of the programs")
    options.add_argument("--rounds", type=int, default=9)
    chosen = options.parse_args()
    runs = [start(chosen.build / "palvera") for _ in range(chosen.rounds)]
    times = [took for took, _ in runs]
    print(f"first picture: median {statistics.median(times):.0f} ms, first round {times[0]:.0f} ms, "
          f"worst {max(times):.0f} ms of {len(times)}; goal {GOAL_MS} ms; memory then {max(peak for _, peak in runs):.0f} MiB")
    raise SystemExit(statistics.median(times) > GOAL_MS)


main()
