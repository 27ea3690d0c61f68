#!/usr/bin/env python3
"""The installer is killed before or after a call by which it changes something, or that call fails: whatever the call,
`current` leads to a whole build, old or new, nothing half lies among the builds, and the next try goes through.

Each call by which a build gets or loses its place is tried, and every fifth of the others; with PALVERA_FAULTS_EACH=0
those all, too.
"""
import collections
import os
import shutil
import signal
import sys
from concurrent.futures import ThreadPoolExecutor

from installation import (IS_ROOT, KEEPER, Place, check_next_try, current, digest, enter_own_place, faults_at,
                          make_root, names, read_counts)

DECISIVE, OTHERS = ("sync", "rename", "mkdir"), ("open", "write", "truncate", "unlink", "lock")
WAYS = "cut-before", "cut-after", "ENOSPC", "EIO"
STEP = 1 if os.environ.get("PALVERA_FAULTS_EACH") == "0" else 5
OLDER = 54, 55, 56
WORKERS = 3


class Slot:
    """A root of its own, for one interruption after another."""

    def __init__(self, place, number):
        self.place, self.root, self.counts = place, place.path / f"root {number}", place.path / f"counts {number}"

    def fresh(self, job):
        shutil.rmtree(self.root, ignore_errors=True)
        shutil.copytree(self.place.before[job], self.root, symlinks=True)

    def run(self, job, fault=None):
        return self.place.run_worker(self.root, job, self.counts, fault)

    def interrupt(self, job, fault):
        """How it went, and which build is current."""
        self.fresh(job)
        result, (name, number, way) = self.run(job, fault), fault.split(":")
        assert read_counts(self.counts)[name] >= int(number), "the call was not met"
        reached = current(self.root)
        if way.startswith("cut"):
            assert result.returncode == -signal.SIGKILL, result
        elif result.returncode == 0:
            assert "58" in names(self.root / "builds"), "prepared, it says"
            assert job == "prepare" or reached == 58, "installed, it says"
        else:
            assert result.returncode == 1 and "refused The update" in result.stdout, result
            assert reached == 57, "refused, it says"
        check_next_try(self.root, self.place.truth, self.run)
        return {0: "done", 1: "refused"}.get(result.returncode, "killed"), reached


def prepare_place(place):
    """What there is before each job, how whole builds look, and how many calls of each class each job makes."""
    place.hand_over_image()
    if IS_ROOT:
        os.chown(place.path, KEEPER, KEEPER)
        os.setgroups([])
        os.setresgid(KEEPER, KEEPER, KEEPER)
        os.setresuid(KEEPER, KEEPER, KEEPER)
    place.before = {job: place.path / f"before {job}" for job in ("prepare", "install")}
    make_root(place.before["prepare"], *OLDER, 57)
    slot, counts = Slot(place, "first"), {}
    slot.fresh("prepare")
    place.truth = {build: digest(slot.root / "builds" / str(build)) for build in (*OLDER, 57)}
    for job in "prepare", "install":
        if job == "install":
            shutil.copytree(slot.root, place.before[job], symlinks=True)
        assert (result := slot.run(job)).returncode == 0, f"{job} without a fault: {result}"
        counts[job] = read_counts(slot.counts)
    place.truth[58] = digest(slot.root / "builds/58")
    # Not every file system that keeps a file keeps the folders that it is in.
    parts = [path for path in (slot.root / "builds/58").rglob("*") if not path.is_symlink()]
    assert counts["prepare"]["sync"] >= len(parts) + len(["58", "builds", ".work"]), "a file or folder is not synced"
    return counts


def main():
    enter_own_place()
    place = Place()
    counts = prepare_place(place)
    faults = [(job, fault) for job in counts for fault in
              faults_at(counts[job], DECISIVE, WAYS) + faults_at(counts[job], OTHERS, WAYS)[::STEP]]
    slots = collections.deque(Slot(place, number) for number in range(WORKERS))
    tally = collections.Counter()

    def attempt(fault):
        slot = slots.popleft()
        try:
            return slot.interrupt(*fault)
        except (AssertionError, OSError) as failure:
            print(*fault, failure, flush=True)
            return "WRONG", 0
        finally:
            slots.append(slot)

    with ThreadPoolExecutor(WORKERS) as workers:
        for (job, fault), (outcome, reached) in zip(faults, workers.map(attempt, faults)):
            tally[job, outcome, reached] += 1
    for job in counts:
        print(job, "makes", ", ".join(f"{counts[job][name]} {name}" for name in DECISIVE + OTHERS))
    for (job, outcome, reached), count in sorted(tally.items()):
        print(f"{count:4} {job}: {outcome}, {reached} is current")
    wrong = sum(count for (_, outcome, _), count in tally.items() if outcome == "WRONG")
    print(f"{len(faults)} interruptions, {wrong} wrong")
    sys.exit(bool(wrong or not faults))


main()
