#!/usr/bin/env python3
"""The power goes at a call by which the client writes, syncs, renames or removes: the program is killed, and its file
system, an ext4 of its own, has lost all that was not synced. What the journal or the record names must be there, and
the next run finishes the transfer. A download that was called done is there after a loss.

PALVERA_LOSSES_EACH says how many calls of each class are tried, each with the loss before it and after it; 0 stands for
every one. PALVERA_FILE_SYSTEMS names how the file systems are made and mounted. Needs the right to mount.
"""
import collections
import fcntl
import json
import os
import shutil
import struct
import subprocess
import sys

import support
from injection import chosen, injected, read_counts
from support import DONE, ORG, Client, digest, expect, signed_in

CLASSES = "write", "sync", "rename", "truncate", "unlink"
EACH = int(os.environ.get("PALVERA_LOSSES_EACH", "1"))
PART, SIZE = 100_000, 1_650_001
CHUNK, DOWNLOAD = 33_554_432, 70_000_000
KINDS = {"ordered": ([], "data=ordered"), "writeback": ([], "data=writeback"), "plain": (["-O", "^has_journal"], "")}
CHOSEN = os.environ.get("PALVERA_FILE_SYSTEMS", "ordered").split()
CANNOT_RUN = 77
SHUTDOWN, WITHOUT_LOG = 0x8004587D, 2  # EXT4_IOC_SHUTDOWN


class Disk:
    """A file system that can lose its power. It is mounted at `path`."""

    def __init__(self, workspace, kind):
        self.image, self.path = workspace.path / "image", workspace.path / "disk"
        options, self.mounted_with = KINDS[kind]
        self.path.mkdir()
        with open(self.image, "wb") as image:
            image.truncate(400 << 20)
        subprocess.run(["mkfs.ext4", "-q", *options, self.image], check=True)

    def __enter__(self):
        options = ",".join(filter(None, ("loop", self.mounted_with)))
        if subprocess.run(["mount", "-o", options, self.image, self.path], capture_output=True).returncode:
            print("not run: this user may not mount a file system", flush=True)
            sys.exit(CANNOT_RUN)
        return self

    def __exit__(self, *unused):
        subprocess.run(["umount", self.path], check=True)

    def cut(self):
        folder = os.open(self.path, os.O_RDONLY)
        fcntl.ioctl(folder, SHUTDOWN, struct.pack("I", WITHOUT_LOG))
        os.close(folder)

    def come_back(self):
        self.__exit__()
        # What a start does, too; without a journal it has much to mend.
        checked = subprocess.run(["e2fsck", "-f", "-y", self.image], capture_output=True)
        assert checked.returncode < 4, checked
        self.__enter__()


class Upload:
    words = "upload"

    def __init__(self, workspace, platform, client, number):
        self.platform, self.client, self.row = platform, client, f"long-tide-row-{number}"
        self.file = workspace.make_file(f"{self.row}.mov", SIZE, seed=number)
        self.words = "upload", ORG, "long-tide", self.row, self.file, "--retry", "off"

    def look(self):
        """What the journal names is in storage. Gives how often it was stored, by parts."""
        journal = self.client.journal(self.row)
        stored = self.platform.uploads(self.row)[-1]["parts"] if journal else {}
        missing = [part for part in (journal or {"done": []})["done"] if part not in stored]
        assert not missing, f"the journal names parts {missing}, which are not stored"
        return {part: stored[part]["times"] for part in (journal or {"done": []})["done"]}

    def check(self, result, recorded):
        if self.client.journal(self.row):  # its removal was lost, so that it is listed: going on finds all done
            expect(DONE, self.client.run("resume", self.row))
        filed = support.expect_filed(self.platform, self.client, self.row, self.file)
        again = [part for part, times in recorded.items() if filed["parts"][part]["times"] != times]
        assert not again, f"parts {again} were recorded and are stored again"
        self.file.unlink()


class Download:
    def __init__(self, workspace, platform, client, number):
        self.film, self.client = workspace.path / "Film.mov", client
        self.folder = client.home / "Films"
        self.folder.mkdir()
        (self.folder / "Film.mov").write_bytes(b"precious")
        self.file, self.record = self.folder / "Film 2.mov", self.folder / "Film 2.mov.pvpart"
        self.words = "download-bin", ORG, "Film.mov", "--to", self.folder

    def look(self):
        """What the record names is on the disk. Gives the bytes that are."""
        try:
            done = json.loads(self.record.read_text())["done"]
        except FileNotFoundError:
            return 0
        assert not done or self.file.exists(), f"chunks {done} are recorded of a file that is not there"
        if not done:
            return 0
        with open(self.film, "rb") as film, open(self.file, "rb") as file:
            for chunk in done:
                film.seek(chunk * CHUNK)
                file.seek(chunk * CHUNK)
                assert film.read(CHUNK) == file.read(CHUNK), f"chunk {chunk} is recorded and not there"
        return sum(min(CHUNK, DOWNLOAD - chunk * CHUNK) for chunk in done)

    def check(self, result, recorded):
        if self.record.exists():  # its removal was lost: going on finds all done
            result = expect(DONE, self.client.run(*self.words))
        # What a loss leaves of a record's next version goes a day later.
        names = sorted(path.name for path in self.folder.iterdir() if not path.name.startswith(".palvera-"))
        assert names == ["Film 2.mov", "Film.mov"], f"there is {names}\n{result}"
        assert (self.folder / "Film.mov").read_bytes() == b"precious", result
        assert digest(self.file) == digest(self.film), f"it is not whole\n{result}"


class Losses:
    def __init__(self, kind, task):
        self.kind, self.task, self.tally, self.wrong = kind, task, collections.Counter(), []

    def run(self):
        with signed_in("--part-size", str(PART)) as (workspace, platform, client):
            if self.task is Download:
                film = workspace.make_file("Film.mov", DOWNLOAD)
                expect(DONE, client.run("upload-bin", ORG, film))
            with Disk(workspace, self.kind) as disk:
                rows = iter(range(4, 400))
                self.site = workspace, platform, client, disk
                counted, _ = self.lose(next(rows), "")
                for name in CLASSES:
                    for number in chosen(counted[name], EACH):
                        for when in ("before", "after"):
                            fault = f"{name}:{number}:cut-{when}"
                            try:
                                _, outcome = self.lose(next(rows), fault)
                                self.tally[outcome] += 1
                            except (AssertionError, ValueError) as failure:
                                self.wrong.append(f"{self.kind} {self.task.__name__} {fault}: {failure}")

    def lose(self, number, fault):
        """A transfer whose power goes there, and the next run. How often each class was called, and what there was."""
        workspace, platform, signed_in_client, disk = self.site
        for old in disk.path.iterdir():
            if old.name != "lost+found":
                shutil.rmtree(old)
        home = disk.path / f"home {number}"
        shutil.copytree(signed_in_client.home, home)
        client = Client(workspace, platform.address, home)
        transfer = self.task(workspace, platform, client, number)
        os.sync()
        counts = workspace.path / "counts"
        with injected(client, counts, fault, disk.path):
            result = client.run(*transfer.words)
        was_lost = result.code == -9
        assert was_lost or result.code == DONE, result
        if was_lost:
            disk.come_back()
        recorded = transfer.look()
        if was_lost:
            result = expect(DONE, client.run(*transfer.words))
        disk.cut()
        disk.come_back()
        transfer.check(result, recorded)
        return read_counts(counts), "lost with a record" if recorded else "lost" if was_lost else "not met"


def main():
    tally, wrong = collections.Counter(), []
    for kind in CHOSEN:
        for task in (Upload, Download):
            losses = Losses(kind, task)
            losses.run()
            print(f"{kind:9} {task.__name__:8} " + ", ".join(f"{count} {how}" for how, count in losses.tally.items()))
            tally += losses.tally
            wrong += losses.wrong
    print("\n".join(wrong + [", ".join(f"{count} {how}" for how, count in tally.items())]), flush=True)
    sys.exit(bool(wrong))


main()
