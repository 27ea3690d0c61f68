#!/usr/bin/env python3
"""The power goes at a call by which the client writes, syncs, renames or removes: the program is killed, and its file
system, an ext4 of its own, has lost all that was not synced. What the journal or the record names must be there, and
the next run finishes the transfer. A download that was called done is there after a loss.

PALVERA_LOSSES_EACH says how many calls of each class are tried, each with the loss before it and after it; 0 stands for
every one. PALVERA_FILE_SYSTEMS names how the file systems are made and mounted. Needs the right to mount.
"""
import collections
import json
import os
import shutil
import sys

import injection
from disk import Disk
from injection import DOWNLOAD, ROWS, chosen, read_counts, site
from support import DONE, digest, expect

CLASSES = "write", "sync", "rename", "truncate", "unlink"
EACH = int(os.environ.get("PALVERA_LOSSES_EACH", "1"))
CHUNK = 33_554_432
KINDS = {"ordered": ([], "data=ordered"), "writeback": ([], "data=writeback"), "plain": (["-O", "^has_journal"], "")}
CHOSEN = os.environ.get("PALVERA_FILE_SYSTEMS", "ordered").split()


class Upload(injection.Upload):
    size = 1_650_001

    def is_over(self):
        return not self.has_record() and any(upload["filed"] for upload in self.platform.uploads(self.row))

    def look(self):
        """What the journal names is in storage. Gives how often it was stored, by parts."""
        recorded = self.client.recorded_parts(self.row)
        stored = self.platform.uploads(self.row)[-1]["parts"] if recorded else {}
        missing = [part for part in recorded if part not in stored]
        assert not missing, f"the journal names parts {missing}, which are not stored"
        return {part: stored[part]["times"] for part in recorded}

    def check_what_was_kept(self, filed, recorded):
        again = [part for part, times in recorded.items() if filed["parts"][part]["times"] != times]
        assert not again, f"parts {again} were recorded and are stored again"


class Download(injection.Download):
    def is_over(self):
        return not self.has_record() and self.file.exists() and digest(self.file) == digest(self.film)

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

    def check_what_was_kept(self, *unused):
        pass


def lose(there, disk, task, number, fault=""):
    """A transfer whose power goes there, and the next run. How often each class was called, and what there was."""
    for old in disk.path.iterdir():
        if old.name != "lost+found":
            shutil.rmtree(old)
    transfer = task(there, disk.path / f"home {number}", number)
    os.sync()
    counts = there[0].path / "counts"
    result = transfer.go(counts, fault, disk.path)
    was_lost = result.code == -9
    assert was_lost or result.code == DONE, result
    if was_lost:
        disk.come_back()
    recorded = transfer.look()
    if was_lost and not transfer.is_over():
        result = expect(DONE, transfer.again())
    disk.cut()
    disk.come_back()
    if transfer.has_record():  # its removal was lost: going on from it finds all done
        result = expect(DONE, transfer.go_on())
    transfer.check_what_was_kept(transfer.check(result), recorded)
    return read_counts(counts), "lost with a record" if recorded else "lost" if was_lost else "not met"


def losses(kind, task, wrong):
    """How often each end came, and into `wrong` what was."""
    tally = collections.Counter()
    with site() as there, Disk(there[0].path, 400, *KINDS[kind]) as disk:
        rows = iter(ROWS)
        counted, _ = lose(there, disk, task, next(rows))
        for name in CLASSES:
            for number in chosen(counted[name], EACH):
                for fault in (f"{name}:{number}:cut-before", f"{name}:{number}:cut-after"):
                    try:
                        tally[lose(there, disk, task, next(rows), fault)[1]] += 1
                    except (AssertionError, ValueError) as failure:
                        wrong.append(f"{kind} {task.__name__} {fault}: {failure}")
    return tally


def main():
    wrong = []
    for kind in CHOSEN:
        for task in (Upload, Download):
            tally = losses(kind, task, wrong)
            print(f"{kind:9} {task.__name__:8} " + ", ".join(f"{count} {how}" for how, count in tally.items()))
    sys.exit("\n".join(wrong) or None)


main()
