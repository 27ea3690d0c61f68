#!/usr/bin/env python3
"""The installer is killed before or after a call by which it changes something, or that call fails. Where one may mount
the power goes with it, and an ext4 of its own has lost all that was not synced. Whatever the call, `current` leads to a
whole build, old or new, nothing half lies among the builds, what was said to be done is, and the next try goes through.

Each call by which a build gets or loses its place is tried, and every fifth of the others; with PALVERA_FAULTS_EACH=0
those all, too.
"""
import collections
import contextlib
import os
import signal
import sys

from disk import Disk
from installation import (IS_ROOT, KEEPER, Place, check_next_try, current, digest, enter_own_place, faults_at,
                          make_root, may_mount, names, read_counts)

DECISIVE, OTHERS = ("sync", "rename", "mkdir"), ("open", "write", "truncate", "unlink", "lock")
WAYS = "cut-before", "cut-after", "ENOSPC", "EIO"
STEP = 1 if os.environ.get("PALVERA_FAULTS_EACH") == "0" else 5
OLDER = 54, 55, 56
JOBS = "prepare", "install"


class Site:
    """A root, on a disk if there is one, for one interruption after another."""

    def __init__(self, place, disk):
        self.place, self.disk, self.root = place, disk, (disk or place).path / "root"
        self.counts, self.truth = place.path / "counts", {}

    def run(self, job, fault=None):
        keeper = {"user": KEEPER, "group": KEEPER, "extra_groups": []} if IS_ROOT else {}
        return self.place.run_worker(self.root, job, self.counts, fault, **keeper)

    def fresh(self, job):
        """What there is before it."""
        make_root(self.root, *OLDER, 57)
        os.sync()
        if job == "install":
            assert self.run("prepare").returncode == 0

    def count(self, job):
        """How many calls of each class it makes. How whole builds look is in `truth` then."""
        self.fresh(job)
        assert (result := self.run(job)).returncode == 0, f"{job} without a fault: {result}"
        self.truth |= {int(build): digest(self.root / "builds" / build) for build in names(self.root / "builds")}
        return read_counts(self.counts)

    def interrupt(self, job, fault):
        """How it went, and which build is current. Without a fault the power goes once it is done."""
        self.fresh(job)
        result, (name, number, way) = self.run(job, fault), (fault or "sync:1:cut").split(":")
        assert read_counts(self.counts)[name] >= int(number), "the call was not met"
        assert way not in WAYS[:2] or result.returncode == -signal.SIGKILL, result
        if self.disk and way.startswith("cut"):
            self.disk.cut()
            self.disk.come_back()
        reached = current(self.root)
        if result.returncode == 0:
            assert "58" in names(self.root / "builds"), "prepared, it says"
            assert job == "prepare" or reached == 58, "installed, it says"
        elif result.returncode != -signal.SIGKILL:
            assert result.returncode == 1 and "refused The update" in result.stdout, result
            assert reached == 57, "refused, it says"
        check_next_try(self.root, self.truth, self.run)
        return {0: "done", 1: "refused"}.get(result.returncode, "killed"), reached


def main():
    enter_own_place()
    place = Place()
    place.hand_over_image()
    tally = collections.Counter()
    # Without the writing ahead by which the file system would help one who forgets to sync.
    lossy = Disk(place.path, 100, [], "data=writeback,noauto_da_alloc") if may_mount() else contextlib.nullcontext()
    with lossy as disk:
        site = Site(place, disk)
        counts = {job: site.count(job) for job in JOBS}
        # Not every file system that keeps a file keeps the folders that it is in.
        parts = [path for path in (site.root / "builds/58").rglob("*") if not path.is_symlink()]
        assert counts["prepare"]["sync"] >= len(parts) + len(["58", "builds", ".work"]), "a file or folder is unsynced"
        for job in JOBS:
            for fault in [*faults_at(counts[job], DECISIVE, WAYS), *faults_at(counts[job], OTHERS, WAYS)[::STEP], None]:
                try:
                    tally[job, *site.interrupt(job, fault)] += 1
                except (AssertionError, OSError) as failure:
                    tally[job, "WRONG", 0] += 1
                    print(job, fault, failure, flush=True)
    for (job, outcome, reached), count in sorted(tally.items()):
        print(f"{count:4} {job}: {outcome}, {reached} is current")
    wrong = sum(count for (_, outcome, _), count in tally.items() if outcome == "WRONG")
    print(f"{sum(tally.values())} interruptions, {wrong} wrong")
    sys.exit(bool(wrong))


main()
