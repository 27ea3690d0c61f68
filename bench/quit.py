#!/usr/bin/env python3
"""Times the end of the desktop application while files move over a slow line: from the user's yes to "Quit while files
are moving?" until its windows are gone, until the process is, and until one that is started in that moment shows its
window. Once with one upload or download, once with twenty. Needs no display: it has one of its own.
"""
import argparse
import os
import pathlib
import signal
import subprocess
import sys
import threading
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests/end_to_end"))
PART = 8 << 20
PROJECT = "org-northlight", "salt"


def has_window(name):
    return subprocess.run(["xdotool", "search", "--onlyvisible", "--name", name], capture_output=True).returncode == 0


def seconds_until(holds, began):
    while not holds():
        time.sleep(0.01)
    return time.monotonic() - began


class Round:
    """One run of the program with `count` transfers that were begun before and go on in it."""

    def __init__(self, modules, down, count):
        self.support, self.programs = modules
        self.down, self.count = down, count

    def run(self):
        support, programs = self.support, self.programs
        with support.Workspace() as workspace, programs.Display(), programs.WindowManager(), support.Platform(
                workspace, "--part-size", str(PART)) as platform:
            client = support.Client(workspace, platform.address).sign_in()
            file = workspace.make_file("film.mov", 12 * PART)
            listed = client.run("deliverables", *PROJECT, "--json").records()
            self.rows = [row["id"] for row in listed if "/" not in row["id"]][:self.count]
            assert len(self.rows) == self.count
            if self.down:
                for row in self.rows:
                    support.expect(support.DONE, client.upload(row, file))
            platform.kill()
            platform.options = "--part-size", str(PART), "--bytes-per-second", "400000"
            platform.start()
            self.begin(workspace, client, file)
            with programs.Desktop(workspace, platform.address) as desktop:
                desktop.activate(desktop.BUTTON, "Resume all")
                time.sleep(5)
                return self.quit(desktop)

    def begin(self, workspace, client, file):
        """Begun by the command line, which is killed: the program lists what it left."""
        running = []
        for row in self.rows:
            folder = workspace.path / row
            folder.mkdir()
            words = ("download", *PROJECT, row, "--to", folder) if self.down else ("upload", *PROJECT, row, file)
            running.append(client.start(*words))
        time.sleep(3)
        for process in running:
            process.kill()
            process.communicate()

    def quit(self, desktop):
        desktop.focus()
        desktop.press("ctrl+q")
        desktop.find("dialog", "Quit while files are moving?")
        next_one = None

        def start_next():
            nonlocal next_one
            next_one = subprocess.Popen([desktop.program], env=desktop.environment)

        began = time.monotonic()
        desktop.activate(desktop.BUTTON, "Quit")
        windows = seconds_until(lambda: not has_window("Palvera$"), began)
        starter = threading.Thread(target=start_next)
        starter.start()
        process = seconds_until(lambda: desktop.process.poll() is not None, began)
        starter.join()
        back = seconds_until(lambda: has_window("Palvera$"), began)
        next_one.send_signal(signal.SIGTERM)
        next_one.wait()
        assert desktop.process.returncode == 0, desktop.process.returncode
        return windows, process, back


def run_apart(chosen, count, down):
    """In a process of its own: one process knows one accessibility bus."""
    words = ["--build", chosen.build, "--one", str(count), *(["--down"] if down else [])]
    said = subprocess.run([sys.executable, "-W", "ignore::DeprecationWarning", __file__, *words], stdout=subprocess.PIPE,
                          text=True, check=True).stdout
    return [float(word) for word in said.splitlines()[-1].split()]


def main():
    options = argparse.ArgumentParser(description=__doc__)
    options.add_argument("--build", type=pathlib.Path, required=True, help="folder of the programs")
    options.add_argument("--rounds", type=int, default=3)
    options.add_argument("--one", type=int, help=argparse.SUPPRESS)
    options.add_argument("--down", action="store_true", help=argparse.SUPPRESS)
    chosen = options.parse_args()
    for name, program in ("PALVERA", "palvera"), ("PALVERA_CLI", "palvera-cli"), (
            "PALVERA_LOCAL_PLATFORM", "palvera-local-platform"):
        os.environ[name] = str((chosen.build / program).resolve())
    if chosen.one:
        import support
        import desktop_programs
        print(*Round((support, desktop_programs), chosen.down, chosen.one).run())
        return
    missed = False
    for count, goal in (1, 1), (20, 2):
        for down in False, True:
            runs = [run_apart(chosen, count, down) for _ in range(chosen.rounds)]
            windows, process, back = (max(each) for each in zip(*runs))
            missed = missed or process > goal
            print(f"{count} {'download' if down else 'upload'}{'s' if count > 1 else ''}, worst of {len(runs)}: windows "
                  f"{windows:.2f} s, process {process:.2f} s (goal {goal} s), the next one's window {back:.2f} s", flush=True)
    raise SystemExit(missed)


if __name__ == "__main__":
    main()
