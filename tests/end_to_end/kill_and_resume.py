#!/usr/bin/env python3
"""The client is killed at random moments, round after round, until the file is filed.

Whatever the moment, storage ends with exactly the file's bytes, and no part that was confirmed and recorded in the
journal is ever sent again. PALVERA_KILL_ROUNDS says how many kills there are in all, PALVERA_KILL_SEED repeats a run.
"""
import os
import random
import time

import support
from support import DONE, ORG, expect, signed_in, wait_until

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
        self.serial, self.recorded = None, {}  # what the journal named at the last kill: how often each part was stored

    def all(self):
        """What the platform knows of the file: an upload for each start, the latest last."""
        return [upload for upload in self.platform.uploads(self.row) if upload["filename"] == self.file.name]

    def is_done(self):
        return any(upload["filed"] if self.row else upload["phase"] == "complete" for upload in self.all())

    def is_over(self):
        """False also where it was killed before the journal was removed."""
        return self.is_done() and not self.key()

    def requests(self):
        return sum(self.platform.state()["requests"].values())

    def key(self):
        """That of its journal; None where there is none."""
        return next((journal.stem for journal in self.client.journals().glob("*.json")), None)

    def arguments(self):
        """Resumes where there is a journal, as often as it sends the file again: both go on from it."""
        if self.key() and (self.is_done() or chance.random() < 0.5):
            return ["resume", chance.choice((self.key(), "--all"))]
        return ["upload", ORG, PROJECT, self.row, self.file] if self.row else ["upload-bin", ORG, self.file]

    def check_nothing_is_sent_again(self):
        if self.serial is not None:
            latest = self.all()[-1]
            assert latest["serial"] == self.serial, "another upload was started although there was a journal"
            now = {part: latest["parts"][part]["times"] for part in self.recorded}
            assert now == self.recorded, f"recorded parts are stored again: {self.recorded}, then {now}"

    def run_and_kill(self):
        """Kills it after some of its requests, which are 46 in all. Checks what that has left, and notes what must stay
        as it is. False when the kill came too late.
        """
        process = self.client.start(*self.arguments())
        last = self.requests() + chance.randrange(46)
        wait_until(lambda: process.poll() is not None or self.requests() >= last, "a moment for a kill")
        time.sleep(chance.uniform(0, 0.06))
        process.kill()
        result = self.client.finish(process)
        assert result.code in (-9, DONE), result
        self.check_nothing_is_sent_again()
        if result.code == -9 and self.key():
            journal, upload = self.client.journal(self.key()), self.all()[-1]
            assert upload["uploadId"] == journal["uploadId"], "the journal belongs to no upload that goes on"
            assert set(journal["done"]) <= set(upload["parts"]), "the journal names parts that are not stored"
            self.serial = upload["serial"]
            self.recorded = {part: upload["parts"][part]["times"] for part in journal["done"]}
        return result.code == -9

    def finish(self):
        if not self.is_over():
            expect(DONE, self.client.run(*self.arguments()))
        self.check_nothing_is_sent_again()
        complete = [upload for upload in self.all() if upload["phase"] == "complete"]
        assert self.is_over() and len(complete) == 1
        assert support.digest(complete[0]["path"]) == support.digest(self.file)


chance = random.Random(SEED)


def killed_at_random_moments_it_always_goes_on():
    print(f"{ROUNDS} kills, PALVERA_KILL_SEED={SEED}", flush=True)
    kills = files = 0
    with signed_in("--part-size", str(PART), rules=SLOW) as (workspace, platform, client):
        while kills < ROUNDS:
            files += 1
            file = workspace.make_file(f"Killed {files}.mov", PART * PARTS - chance.randrange(PART), seed=files)
            upload = Upload(platform, client, file, "" if files % 4 == 0 else f"long-tide-row-{files + 3}")
            while not upload.is_over() and upload.run_and_kill():
                kills += 1
            upload.finish()
            file.unlink()


support.main()
