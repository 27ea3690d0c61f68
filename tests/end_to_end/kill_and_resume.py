#!/usr/bin/env python3
"""The client is killed at random moments, round after round, until the file is filed.

Whatever the moment, storage ends with exactly the file's bytes, and no part that was confirmed and recorded in the
journal is ever sent again. PALVERA_KILL_ROUNDS says how many kills there are in all, PALVERA_KILL_SEED repeats a run.
"""
import collections
import os
import random
import time

import support
from support import DONE, ORG, signed_in

PART, PARTS = 64 << 10, 40
PROJECT = "long-tide"  # it has rows enough
ROUNDS = int(os.environ.get("PALVERA_KILL_ROUNDS", "8"))
SEED = int(os.environ.get("PALVERA_KILL_SEED", time.time_ns() % 1_000_000))

# Slow enough that kills land in every step: the start, parts on their way, journal writes, the completion, the filing.
DELAYS = {"start": 60, "bin-start": 60, "parts": 30, "put": 60, "complete": 120, "asset": 120}
SLOW = [{"operation": operation, "times": 0, "latencyMs": delay} for operation, delay in DELAYS.items()]


class Upload:
    """One file on its way, onto a row or into the bin, and what must hold about it."""

    def __init__(self, platform, client, file, row):
        self.platform, self.client, self.file, self.row = platform, client, file, row
        self.key = row
        self.recorded = {}  # parts that the journal names, with how often each was stored by then
        self.serial = None  # of the upload that the journal belongs to

    def all(self):
        """What the platform knows of the file: an upload for each start, the latest last."""
        return [upload for upload in self.platform.uploads(self.row) if upload["filename"] == self.file.name]

    def is_done(self):
        return any(upload["filed"] if self.row else upload["phase"] == "complete" for upload in self.all())

    def arguments(self):
        """Resumes by key where there is a journal, as often as it sends the file again: both go on from it."""
        journal = self.key and self.client.journal(self.key)
        if journal and chance.random() < 0.5:
            return ["resume", self.key]
        if self.row:
            return ["upload", ORG, PROJECT, self.row, self.file]
        return ["upload-bin", ORG, self.file]

    def find_key(self):
        for journal in self.client.journals().glob("bin-*.json"):
            self.key = journal.stem

    def check_nothing_is_sent_again(self):
        """What the journal named at the kill before must not have been stored since."""
        if self.serial is None:
            return
        latest = self.all()[-1]
        assert latest["serial"] == self.serial, "another upload was started although there was a journal"
        for part, times in self.recorded.items():
            now = latest["parts"][part]["times"]
            assert now == times, f"part {part} was recorded and is stored again ({times} times, then {now})"

    def moment(self, journal):
        """Where the kill met it."""
        latest = self.all()[-1:]
        if not latest:
            return "before the start"
        if not journal:
            return "after the filing" if self.is_done() else "before the journal"
        if latest[0]["phase"] == "complete":
            return "before the journal went" if self.is_done() else "before the filing"
        return "before the completion" if len(journal["done"]) == PARTS else "among the parts"

    def look(self):
        """Checks what a kill has left, and notes what must stay as it is. Says where the kill met the upload."""
        self.check_nothing_is_sent_again()
        if not self.row and not self.key:
            self.find_key()
        journal = self.key and self.client.journal(self.key)
        moment = self.moment(journal)
        if not journal:
            return moment
        upload = self.all()[-1]
        assert upload["uploadId"] == journal["uploadId"], "the journal belongs to no upload that goes on"
        missing = [part for part in journal["done"] if part not in upload["parts"]]
        assert not missing, f"the journal names parts {missing}, which are not stored"
        self.serial = upload["serial"]
        self.recorded = {part: upload["parts"][part]["times"] for part in journal["done"]}
        return moment

    def run_and_kill(self, after):
        process = self.client.start(*self.arguments())
        time.sleep(after)
        process.kill()
        result = self.client.finish(process)
        assert result.code in (-9, DONE), result
        return result.code == DONE

    def finish(self):
        if not self.is_done():
            support.expect(DONE, self.client.run(*self.arguments()))
        elif self.client.journal(self.key):  # killed after the filing, before the journal was removed
            support.expect(DONE, self.client.run("resume", self.key))
        self.check_nothing_is_sent_again()
        assert self.is_done()
        complete = [upload for upload in self.all() if upload["phase"] == "complete"]
        assert len(complete) == 1 and support.digest(complete[0]["path"]) == support.digest(self.file)
        assert self.platform.violations() == [], self.platform.violations()
        if self.row:
            support.expect_filed(self.platform, self.client, self.row, self.file)


chance = random.Random(SEED)


def whole_run_seconds(platform, client, workspace):
    file = workspace.make_file("measure.mov", PART * PARTS)
    began = time.monotonic()
    support.expect(DONE, client.upload("long-tide-row-400", file, project=PROJECT))
    return time.monotonic() - began


def killed_at_random_moments_it_always_goes_on():
    print(f"{ROUNDS} kills, PALVERA_KILL_SEED={SEED}", flush=True)
    moments = collections.Counter()
    files = 0
    with signed_in("--part-size", str(PART), rules=SLOW) as (workspace, platform, client):
        longest = whole_run_seconds(platform, client, workspace)
        while moments.total() < ROUNDS:
            files += 1
            row = "" if files % 4 == 0 else f"long-tide-row-{files + 3}"
            size = PART * PARTS - chance.randrange(PART)
            file = workspace.make_file(f"Killed {files}.mov", size, seed=files)
            upload = Upload(platform, client, file, row)
            for _ in range(chance.randint(2, 6)):
                if upload.is_done():
                    break
                if upload.run_and_kill(chance.uniform(0, longest)):
                    longest *= 0.95  # too late to kill anything
                    break
                moments[upload.look()] += 1
            upload.finish()
            file.unlink()
    tally = ", ".join(f"{moment} {count}" for moment, count in moments.most_common())
    print(f"{files} files, killed: {tally}", flush=True)


support.main(killed_at_random_moments_it_always_goes_on)
