"""What the client calls the system for, counted and made to fail, by a library that is preloaded into it; and files on
their way up and down that meet this.
"""
import contextlib
import os
import shutil
import struct
import unittest.mock

from call_classes import CLASSES
from support import DONE, ORG, Client, digest, expect, expect_filed, signed_in

LIBRARY = os.environ["PALVERA_FAILING_CALLS"]
PART, DOWNLOAD = 100_000, 70_000_000  # which is three chunks


def chosen(count, most):
    """Of `count` calls, `most` by their numbers, spread evenly; all of them where `most` is 0."""
    if most == 0 or count <= most:
        return range(1, count + 1)
    return [1 + (2 * step + 1) * count // (2 * most) for step in range(most)]


def read_counts(counts):
    return dict(zip(CLASSES, struct.unpack(f"{len(CLASSES)}Q", counts.read_bytes())))


@contextlib.contextmanager
def site():
    """A platform with a film in its bin, and somebody who is signed in there. Good for as many runs as it has ROWS."""
    with signed_in("--part-size", str(PART)) as (workspace, platform, client):
        expect(DONE, client.run("upload-bin", ORG, workspace.make_file("Film.mov", DOWNLOAD)))
        yield workspace, platform, client


ROWS = range(4, 400)


class Run:
    """One file on its way, by a client whose home is a copy of that of whoever is signed in."""

    def __init__(self, site, home, number):
        self.workspace, self.platform, signed_in_client = site
        shutil.copytree(signed_in_client.home, home)
        self.client = Client(self.workspace, self.platform.address, home)
        self.prepare(number)

    def go(self, counts, fault="", disk=""):
        """Meets `fault` on its way. `counts` then says how many calls of each class there were."""
        counts.write_bytes(bytes(8 * len(CLASSES)))
        variables = {"LD_PRELOAD": LIBRARY, "PALVERA_FAULT_COUNTS": counts, "PALVERA_FAULT": fault,
                     "PALVERA_FAULT_DISK": disk}
        given = {name: str(value) for name, value in variables.items() if value}
        with unittest.mock.patch.dict(self.client.environment, given):
            return self.again()

    def again(self):
        return self.client.run(*self.words)


class Upload(Run):
    size = 450_001

    def prepare(self, number):
        self.row = f"long-tide-row-{number}"
        self.file = self.workspace.make_file(f"{self.row}.mov", self.size, seed=number)
        self.words = "upload", ORG, "long-tide", self.row, self.file, "--retry", "off"

    def has_record(self):
        return self.client.journal(self.row)

    def go_on(self):
        return self.client.run("resume", self.row)

    def check(self, result):
        """What the platform knows of the upload, which is filed."""
        filed = expect_filed(self.platform, self.client, self.row, self.file)
        self.file.unlink()
        return filed


class Download(Run):
    def prepare(self, number):
        self.film, self.folder = self.workspace.path / "Film.mov", self.client.home / "Films"
        self.folder.mkdir()
        (self.folder / "Film.mov").write_bytes(b"precious")
        self.file, self.record = self.folder / "Film 2.mov", self.folder / "Film 2.mov.pvpart"
        self.words = "download-bin", ORG, "Film.mov", "--to", self.folder

    def has_record(self):
        return self.record.exists()

    go_on = Run.again

    def check(self, result):
        # What a loss of power leaves of a record's next version goes a day later.
        names = sorted(path.name for path in self.folder.iterdir() if not path.name.startswith(".palvera-"))
        assert names == ["Film 2.mov", "Film.mov"], f"there is {names}\n{result}"
        assert (self.folder / "Film.mov").read_bytes() == b"precious", result
        assert digest(self.file) == digest(self.film), f"it is not whole\n{result}"
