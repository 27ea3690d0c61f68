#!/usr/bin/env python3
"""The power goes while the installer prepares or installs, or just after it has said that it is done: its file system,
an ext4 of its own, has lost all that was not synced. `current` leads to a whole build then, nothing half lies among the
builds, and what was said to be done is.

Every fourth call by which something changes is tried; with PALVERA_FAULTS_EACH=0 each one. Needs the right to mount.
"""
import fcntl
import os
import shutil
import struct
import subprocess
import sys

from installation import (KEEPER, Place, check_next_try, current, digest, enter_own_place, faults_at, make_root,
                          may_mount, names, read_counts)

CHANGING = "sync", "rename", "unlink", "mkdir"
STEP = 1 if os.environ.get("PALVERA_FAULTS_EACH") == "0" else 4
OLDER, CANNOT_RUN = 56, 77
SHUTDOWN, WITHOUT_LOG = 0x8004587D, 2  # EXT4_IOC_SHUTDOWN


class Disk:
    """A file system that can lose its power, with a root on it, which is as it was at first each time it is entered."""

    def __init__(self, place):
        self.place, self.image, self.blank = place, place.path / "disk.image", place.path / "blank.image"
        self.path, self.root, self.counts = place.path / "disk", place.path / "disk/root", place.path / "counts"
        self.path.mkdir()
        with open(self.blank, "wb") as blank:
            blank.truncate(100 << 20)
        subprocess.run(["mkfs.ext4", "-q", self.blank], check=True)
        with self:
            self.root.mkdir()
            make_root(self.root, OLDER, 57)
        shutil.copyfile(self.image, self.blank)

    def __enter__(self):
        shutil.copyfile(self.blank, self.image)
        self.mount()

    def __exit__(self, *unused):
        subprocess.run(["umount", self.path], check=True)

    def mount(self):
        # Without the writing ahead by which the file system would help one who forgets to sync.
        options = "loop,data=writeback,noauto_da_alloc"
        if subprocess.run(["mount", "-o", options, self.image, self.path], capture_output=True).returncode:
            print("not run: no file system can be mounted from a file")
            sys.exit(CANNOT_RUN)

    def lose_power(self):
        folder = os.open(self.path, os.O_RDONLY)
        fcntl.ioctl(folder, SHUTDOWN, struct.pack("I", WITHOUT_LOG))
        os.close(folder)
        self.__exit__()
        self.mount()

    def run(self, job, fault=None):
        result = self.place.run_worker(self.root, job, self.counts, fault, user=KEEPER, group=KEEPER, extra_groups=[])
        assert result.returncode == (-9 if fault else 0), f"{job}: {result}"
        return result


def lose(disk, truth, job, fault):
    """The power goes at that call of the job, or where there is none after the job."""
    with disk:
        if job == "install":
            disk.run("prepare")
        disk.run(job, fault)
        disk.lose_power()
        if not fault:
            assert "58" in names(disk.root / "builds"), "prepared, it said"
            assert job == "prepare" or current(disk.root) == 58, "installed, it said"
        check_next_try(disk.root, truth, disk.run)


def main():
    enter_own_place()
    if not may_mount():
        print("not run: this user may not mount a file system")
        sys.exit(CANNOT_RUN)
    place, counts, wrong = Place(), {}, 0
    place.hand_over_image()
    disk = Disk(place)
    with disk:
        for job in "prepare", "install":
            disk.run(job)
            counts[job] = read_counts(disk.counts)
            if job == "prepare":
                truth = {build: digest(disk.root / "builds" / str(build)) for build in (OLDER, 57, 58)}
    faults = [(job, fault) for job in counts
              for fault in faults_at(counts[job], CHANGING, ("cut-before", "cut-after"))[::STEP] + [None]]
    for job, fault in faults:
        try:
            lose(disk, truth, job, fault)
        except (AssertionError, OSError) as failure:
            wrong += 1
            print(f"{job} {fault or 'done'}: {failure}", flush=True)
    print(f"{len(faults)} losses, {wrong} wrong")
    sys.exit(bool(wrong))


main()
