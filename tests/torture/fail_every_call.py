#!/usr/bin/env python3
"""One call to the system fails in each run of the client, an upload or a download: whatever the call, the run ends with
the file whole at the other side, or with a clear message, and the next run finishes it.

PALVERA_FAULTS_EACH says how many calls of each class are tried, spread over all there are; 0 stands for every one.
"""
import collections
import concurrent.futures
import errno
import os
import shutil
import sys
import threading

import support
from injection import CLASSES, chosen, injected, read_counts
from support import DONE, ORG, Client, Platform, Workspace

EACH = int(os.environ.get("PALVERA_FAULTS_EACH", "1"))
PART, SIZE = 100_000, 450_001
DOWNLOAD = 70_000_000  # three chunks


class Site:
    """A platform with somebody signed in, whose home each run has a copy of. Good for as many runs as it has rows."""

    def __init__(self):
        self.workspace = Workspace().__enter__()
        self.platform = Platform(self.workspace, "--part-size", str(PART))
        self.platform.start()
        self.signed_in = Client(self.workspace, self.platform.address, "signed in").sign_in()
        self.film = self.workspace.make_file("Film.mov", DOWNLOAD)
        support.expect(DONE, self.signed_in.run("upload-bin", ORG, self.film))
        self.rows = iter(range(4, 400))

    def close(self):
        self.platform.kill()
        self.workspace.__exit__()


class Sites:
    """Makes another site when the rows of the last one are used up."""

    def __init__(self):
        self.all = [Site()]
        self.lock = threading.Lock()

    def next(self):
        with self.lock:
            number = next(self.all[-1].rows, None)
            if number is None:
                self.all.append(Site())
                number = next(self.all[-1].rows)
            return self.all[-1], number


class Run:
    """One file on its way up or down, by a client with a home of its own."""

    def __init__(self, site, number, task):
        self.site, self.is_upload, self.row = site, task == "upload", f"long-tide-row-{number}"
        self.client = Client(site.workspace, site.platform.address, f"home {number}")
        shutil.copytree(site.signed_in.home, self.client.home, dirs_exist_ok=True)
        self.counts = self.client.home / "counts"
        self.folder = self.client.home / "Films"
        self.folder.mkdir()
        if self.is_upload:
            self.file = site.workspace.make_file(f"{self.row}.mov", SIZE, seed=number)
            self.words = "upload", ORG, "long-tide", self.row, self.file, "--retry", "off"
        else:
            (self.folder / "Film.mov").write_bytes(b"precious")
            self.words = "download-bin", ORG, "Film.mov", "--to", self.folder

    def go(self, fault=""):
        """How often each class was called, and whether the file was there at once."""
        with injected(self.client, self.counts, fault):
            result = self.client.run(*self.words)
        assert result.code >= 0 and result.code != 134, f"it crashed: {result}"
        assert result.code == DONE or "palvera-cli: " in result.error, f"nothing is said: {result}"
        if result.code != DONE:
            self.check(support.expect(DONE, self.client.run(*self.words)))
        elif fault.startswith("unlink") and self.has_record():  # which could not be removed: going on from it finds all done
            self.check(support.expect(DONE, self.client.run(*("resume", self.row) if self.is_upload else self.words)))
        else:
            self.check(result)
        counted = read_counts(self.counts)
        shutil.rmtree(self.client.home)
        return counted, result

    def has_record(self):
        return self.client.journal(self.row) if self.is_upload else (self.folder / "Film 2.mov.pvpart").exists()

    def check(self, result):
        if self.is_upload:
            support.expect_filed(self.site.platform, self.client, self.row, self.file)
            self.file.unlink()
        else:
            names = sorted(path.name for path in self.folder.iterdir())
            assert names == ["Film 2.mov", "Film.mov"], f"there is {names}\n{result}"
            assert (self.folder / "Film.mov").read_bytes() == b"precious", result
            assert support.digest(self.folder / "Film 2.mov") == support.digest(self.site.film), result


def attempt(sites, task, fault):
    """How the run with that fault went, and what was wrong with it."""
    name, number, _ = fault.split(":")
    try:
        counted, result = Run(*sites.next(), task).go(fault)
    except AssertionError as failure:
        return "WRONG", f"{task} {fault}: {failure}"
    return "not met" if counted[name] < int(number) else "done" if result.code == DONE else "said, then done", None


def main():
    sites = Sites()
    try:
        faults = []
        for task in ("upload", "download"):
            counted, _ = Run(*sites.next(), task).go()
            for name, ways in CLASSES.items():
                assert counted[name] > 0, f"the {task} makes no call of the class {name}"
                faults += [(task, name, f"{name}:{number}:{getattr(errno, way, way)}")
                           for number in chosen(counted[name], EACH) for way in ways]
        chosen_names = sys.argv[1:]
        faults = [fault for fault in faults if not chosen_names or fault[1] in chosen_names]
        tallies, wrong = collections.defaultdict(collections.Counter), []
        with concurrent.futures.ThreadPoolExecutor(max_workers=4) as workers:
            outcomes = workers.map(lambda fault: attempt(sites, fault[0], fault[2]), faults)
            for (task, name, _), (outcome, complaint) in zip(faults, outcomes):
                tallies[task, name][outcome] += 1
                if complaint:
                    wrong.append(complaint)
                    print(complaint, flush=True)
        for (task, name), tally in tallies.items():
            print(f"{task:8} {name:8} " + ", ".join(f"{count} {outcome}" for outcome, count in tally.items()))
        total = sum(tallies.values(), collections.Counter())
        print(f"{total.total()} faults: " + ", ".join(f"{count} {outcome}" for outcome, count in total.items()))
        sys.exit(bool(wrong))
    finally:
        for site in sites.all:
            site.close()


main()
