"""A root with builds in it, images made with the publisher's own program, and the installer under test.

Root is told neither another place nor another key, so the installer runs as a user without privileges here; whoever
runs the tests as root has them in a mount namespace, on a disk in memory that every user may reach.
"""
import errno
import hashlib
import os
import pathlib
import pwd
import runpy
import shutil
import struct
import subprocess
import sys
import tempfile
import types

from call_classes import CLASSES

TOP = pathlib.Path(__file__).resolve().parents[2]
IS_ROOT = os.geteuid() == 0
# Who runs the installer, to whom its root belongs, and two who call it: a bus takes only users whom the system knows, and
# these every Debian has and nothing uses.
KEEPER, ONE, OTHER = [pwd.getpwnam(name).pw_uid if IS_ROOT else os.geteuid() for name in ("games", "news", "uucp")]
IMAGE = 3  # the descriptor on which a worker finds it
PLACE, MAY_MOUNT = "PALVERA_INSTALLER_TEST_PLACE", "PALVERA_INSTALLER_TEST_MAY_MOUNT"


release = types.SimpleNamespace(**runpy.run_path(str(TOP / "scripts/release-image")))


def enter_own_place():
    """Runs the rest of the script in a process with a folder of its own, which may mount there if we may at all."""
    if PLACE in os.environ:
        return
    folder = tempfile.mkdtemp(prefix="palvera-installer-", dir="/var/tmp" if IS_ROOT else None)
    unshare = ["unshare", "--mount", "--propagation", "private"]
    if not IS_ROOT or subprocess.run([*unshare, "true"], capture_output=True).returncode:
        unshare = []
    variables = {PLACE: folder, MAY_MOUNT: "yes" if unshare else ""}
    try:
        sys.exit(subprocess.run([*unshare, sys.executable, "-B", *sys.argv], env=os.environ | variables).returncode)
    finally:
        shutil.rmtree(folder, ignore_errors=True)


def may_mount():
    return bool(os.environ[MAY_MOUNT])


class Place:
    """The folder of this run, with copies of the programs that every user may start."""

    def __init__(self):
        self.path = pathlib.Path(os.environ[PLACE])
        if may_mount():
            subprocess.run(["mount", "-t", "tmpfs", "tmpfs", self.path], check=True)
        self.path.chmod(0o755)
        os.environ.pop("TSAN_OPTIONS", None)  # it names a file that other users may not be able to read
        self.installer = self.copy(os.environ["PALVERA_INSTALLER"])
        self.failing_calls = self.copy(os.environ["PALVERA_FAILING_CALLS"])
        self.key, self.other_key = self.make_key("key.pem"), self.make_key("other.pem")
        self.public_key = release.public_key(self.key)

    def copy(self, path):
        return pathlib.Path(shutil.copy(path, self.path))

    def make_key(self, name):
        path = self.path / name
        subprocess.run(["openssl", "genpkey", "-algorithm", "ed25519", "-out", path], check=True)
        path.chmod(0o644)
        return path

    def hand_over_image(self):
        """Opens an image of build 58 where the workers find it."""
        path = self.path / "image"
        path.write_bytes(self.image(58))
        os.dup2(os.open(path, os.O_RDONLY), IMAGE)

    def run_worker(self, root, job, counts, fault=None, **options):
        """One job of the installer, which meets `fault`; `counts` then says how many calls of each class there were."""
        counts.write_bytes(bytes(8 * len(CLASSES)))
        counts.chmod(0o666)
        faults = {"LD_PRELOAD": str(self.failing_calls), "PALVERA_FAULT_COUNTS": str(counts)}
        faults |= {"PALVERA_FAULT": fault} if fault else {}
        words = self.installer, "--worker", job, root, "1.5", "58", "--root", root, "--key", self.public_key
        return subprocess.run(words, pass_fds=[IMAGE], capture_output=True, text=True, env=os.environ | faults, **options)

    def image(self, build, *extra, script=None, key=None, **change):
        return sealed(toy(build, *extra, script=script), build, key or self.key, **change)


def file(name, data=b"", mode=0o644):
    return release.entry(name, mode, size=len(data)), data


def noise(size, seed):
    return hashlib.shake_128(str(seed).encode()).digest(size)


def toy(build, *extra, script=None):
    """The tar of a small build: a program that passes its trial, libraries and a link."""
    script = script or f"[ \"$1\" = --self-test ] && echo 'Palvera 1.5 ({build})'"
    return release.archive([
        (release.entry("bin", 0o755, release.tarfile.DIRTYPE), b""),
        file("bin/palvera", f"#!/bin/sh\n{script}\n".encode(), 0o755),
        (release.entry("lib", 0o755, release.tarfile.DIRTYPE), b""),
        file("lib/one.so.1", noise(1_500_000, build)),
        file("lib/two.so.1", noise(3000, build + 1)),
        (release.entry("lib/one.so", 0o777, release.tarfile.SYMTYPE, "one.so.1"), b""),
        *extra])


def sealed(tar, build, key, **change):
    payload = release.compressed(tar, 1)
    return release.image(release.manifest_of(tar, payload, "1.5", build) | change, payload, key)


def make_root(root, *builds):
    """What there is before an update: the builds, of which the last is the current one."""
    shutil.rmtree(root, ignore_errors=True)
    for build in builds:
        folder = root / "builds" / str(build)
        folder.mkdir(parents=True)
        with release.tarfile.open(fileobj=release.io.BytesIO(toy(build))) as tar:
            tar.extractall(folder)
        (folder / "manifest.json").write_text(f'{{"build": "{build}"}}')
    (root / "current").symlink_to(f"builds/{builds[-1]}")
    if IS_ROOT and os.geteuid() == 0:
        for path in [root, *root.rglob("*")]:
            os.lchown(path, KEEPER, KEEPER)


def digest(folder):
    """Of every name, kind, mode and byte in a folder."""
    whole = hashlib.sha256()
    for path in sorted(folder.rglob("*")):
        content = os.readlink(path).encode() if path.is_symlink() else path.read_bytes() if path.is_file() else b""
        whole.update(f"{path.relative_to(folder)} {path.lstat().st_mode:o} {len(content)}\n".encode() + content)
    return whole.hexdigest()


def names(folder):
    return sorted(path.name for path in folder.iterdir()) if folder.exists() else []


def read_counts(counts):
    return dict(zip(CLASSES, struct.unpack(f"{len(CLASSES)}Q", counts.read_bytes())))


def faults_at(counts, classes, ways):
    """Each way of failing at each call that `counts` tells of, as the preloaded library takes it."""
    return [f"{name}:{number}:{getattr(errno, way, way)}"
            for name in classes for number in range(1, counts[name] + 1) for way in ways]


def check_whole(root, truth):
    assert digest(root / "current/") == truth[current(root)], "current leads to half a build"
    for name in names(root / "builds"):
        assert digest(root / "builds" / name) == truth[int(name)], f"half a build {name}"


def check_next_try(root, truth, run):
    """Whatever was broken off before, both jobs go through, and nothing is left of it."""
    check_whole(root, truth)
    for again in "prepare", "install":
        assert (second := run(again)).returncode == 0, f"a second {again}: {second}"
    check_whole(root, truth)
    left = current(root), names(root / ".work"), names(root / "builds")
    assert left == (58, ["lock"], ["57", "58"]), left


def current(root):
    return int(os.readlink(root / "current").removeprefix("builds/"))
