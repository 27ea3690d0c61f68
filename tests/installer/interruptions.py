#!/usr/bin/env python3
"""The installer is killed before or after a call by which it changes something, or that call fails: whatever the call,
`current` leads to a whole build, old or new, nothing half lies among the builds, and the next try goes through.

Every fifth call is tried; with PALVERA_FAULTS_EACH=0 each one.
"""
import collections
import concurrent.futures
import errno
import os
import shutil
import signal
import struct
import subprocess
import sys

from call_classes import CLASSES
from installation import IS_ROOT, KEEPER, Place, current, digest, enter_own_place, make_root, names

CHANGING = "open", "write", "sync", "rename", "truncate", "unlink", "mkdir", "lock"
WAYS = "cut-before", "cut-after", "ENOSPC", "EIO"
STEP = 1 if os.environ.get("PALVERA_FAULTS_EACH") == "0" else 5
OLDER = 54, 55, 56
IMAGE = 3  # the descriptor on which a worker finds it
WORKERS = 3


class Slot:
    """A root of its own, for one interruption after another."""

    def __init__(self, place, number):
        self.path = place.path / f"slot {number}"
        self.path.mkdir()
        self.root, self.counts, self.place = self.path / "root", self.path / "counts", place

    def fresh(self, job):
        shutil.rmtree(self.root, ignore_errors=True)
        shutil.copytree(self.place.before[job], self.root, symlinks=True)

    def run(self, job, fault=None):
        faults = {}
        if fault is not None:
            self.counts.write_bytes(bytes(8 * len(CLASSES)))
            faults = {"LD_PRELOAD": str(self.place.failing_calls), "PALVERA_FAULT_COUNTS": str(self.counts)}
            faults |= {"PALVERA_FAULT": fault} if fault else {}
        return subprocess.run(
            [self.place.installer, "--worker", job, self.root, "1.5", "58", "--root", self.root, "--key",
             self.place.public_key], pass_fds=[IMAGE], capture_output=True, text=True, env=os.environ | faults)

    def read_counts(self):
        return dict(zip(CLASSES, struct.unpack(f"{len(CLASSES)}Q", self.counts.read_bytes())))

    def check_whole(self):
        truth = self.place.truth
        assert digest(self.root / "current/") == truth[current(self.root)], "current leads to half a build"
        for name in names(self.root / "builds"):
            assert digest(self.root / "builds" / name) == truth[int(name)], f"half a build {name}"

    def interrupt(self, job, name, number, way):
        self.fresh(job)
        result = self.run(job, f"{name}:{number}:{getattr(errno, way, way)}")
        assert self.read_counts()[name] >= number, "the call was not met"
        self.check_whole()
        if way.startswith("cut"):
            assert result.returncode == -signal.SIGKILL, result
        else:
            assert result.returncode in (0, 1), result
            assert result.returncode == 0 or "refused The update" in result.stdout, result
        if result.returncode == 0:
            assert "58" in names(self.root / "builds"), "prepared, it says"
            assert job == "prepare" or current(self.root) == 58, "installed, it says"
        outcome = {0: "done", 1: "refused"}.get(result.returncode, "killed"), current(self.root)
        for again in "prepare", "install":
            assert (result := self.run(again)).returncode == 0, f"a second {again}: {result}"
        self.check_whole()
        assert current(self.root) == 58
        assert names(self.root / ".work") == ["lock"], names(self.root / ".work")
        assert names(self.root / "builds") == ["57", "58"], names(self.root / "builds")
        return outcome


def prepare_place(place):
    """What there is before each job, how whole builds look, and how many calls of each class each job makes."""
    place.failing_calls = place.copy(os.environ["PALVERA_FAILING_CALLS"])
    image = place.path / "image"
    image.write_bytes(place.image(58, "1.5"))
    if IS_ROOT:
        os.chown(place.path, KEEPER, KEEPER)
        os.setgroups([])
        os.setresgid(KEEPER, KEEPER, KEEPER)
        os.setresuid(KEEPER, KEEPER, KEEPER)
    os.umask(0o022)
    os.dup2(os.open(image, os.O_RDONLY), IMAGE)
    place.before = {job: place.path / f"before {job}" for job in ("prepare", "install")}
    make_root(place.before["prepare"], *OLDER, 57)
    slot, counts = Slot(place, "first"), {}
    slot.fresh("prepare")
    place.truth = {build: digest(slot.root / "builds" / str(build)) for build in (*OLDER, 57)}
    for job in "prepare", "install":
        if job == "install":
            shutil.copytree(slot.root, place.before[job], symlinks=True)
        result = slot.run(job, "")
        assert result.returncode == 0, f"{job} without a fault: {result}"
        counts[job] = slot.read_counts()
    place.truth[58] = digest(slot.root / "builds/58")
    assert current(slot.root) == 58
    return counts


def main():
    enter_own_place()
    place = Place()
    with concurrent.futures.ThreadPoolExecutor(WORKERS) as workers:
        counts = prepare_place(place)
        faults = [(job, name, number, way) for job in counts for name in CHANGING
                  for number in range(1, counts[job][name] + 1) for way in WAYS][::STEP]
        slots = collections.deque(Slot(place, number) for number in range(WORKERS))
        tally, wrong = collections.Counter(), 0

        def attempt(fault):
            slot = slots.popleft()
            try:
                return slot.interrupt(*fault), None
            except AssertionError as failure:
                return ("WRONG", 0), f"{fault}: {failure}"
            finally:
                slots.append(slot)

        for fault, (outcome, complaint) in zip(faults, workers.map(attempt, faults)):
            tally[fault[0], "killed" if fault[3].startswith("cut") else fault[3], *outcome] += 1
            if complaint:
                wrong += 1
                print(complaint, flush=True)
        for job in counts:
            print(job, "makes", ", ".join(f"{counts[job][name]} {name}" for name in CHANGING))
        for what, count in sorted(tally.items(), key=str):
            print(f"{count:4}", *what)
        print(f"{len(faults)} interruptions, {wrong} wrong")
    sys.exit(bool(wrong or not faults))


main()
