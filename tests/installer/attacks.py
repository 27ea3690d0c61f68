#!/usr/bin/python3
"""The installer on a bus, met by users who may not, who are in a hurry and who mean harm. Whatever they send, what is
answered is a text for them, `current` leads to the build that it led to, and the next one who asks is served.
"""
import contextlib
import json
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import threading
import time

from bus import ALLOWED, AUTHORITY, KINDS, NAME, PATIENCE, REFUSED, SILENT, Bus, wait_until
from installation import (IS_ROOT, KEEPER, ONE, OTHER, TOP, Place, current, digest, enter_own_place, file, make_root,
                          may_mount, names, noise, release, sealed, toy)

DONE = ""
BUSY = "Another update is under way on this computer. Try again in a minute."
DAMAGED = "The update is damaged."
FOREIGN = "This copy of Palvera is not looked after by the installer."
NOT_ANNOUNCED = "The update is not the one that was announced."
NOT_HERE = "The update is for another kind of computer."
OLDER = "The update is older than the copy on this computer."
STRANGE = "The update holds something that does not belong there."
UNANSWERED = "Nobody could be asked whether updates may be installed on this computer."
# How long they hang tells them apart. The one is killed with the worker, the other is not by itself.
HANGING, HANGING_CHILD = "exec sleep {0}", "sleep {0} & wait"


def duration(number):
    """Of a sleep, unlike that of any other."""
    return f"9{os.getpid()}.{number}"


class Skipped(Exception):
    pass


class Attacks:
    def __init__(self, place):
        self.place, self.root, self.cases = place, place.path / "root", 0
        self.bus = Bus(place, "bus", "--patience", str(1000 * PATIENCE))
        self.hasty = Bus(place, "hasty", "--patience", "1500")
        self.good = self.put("good", place.image(58))

    def put(self, name, data):
        path = self.place.path / name
        path.write_bytes(data)
        return path

    def expect(self, answer, error, what):
        self.cases += 1
        assert answer.error == error, f"{what}: {answer}, not {error!r}"

    def expect_untouched(self, what):
        assert current(self.root) == 57 and names(self.root / "builds") == ["57"], f"{what}: changed the builds"
        assert names(self.root / ".work") in ([], ["lock"]), f"{what}: left {names(self.root / '.work')}"

    def refuse(self, answer, error, what):
        self.expect(answer, error, what)
        self.expect_untouched(what)

    def processes(self, *words):
        """Those whose command line holds all the words."""
        found = []
        for path in pathlib.Path("/proc").glob("[0-9]*/cmdline"):
            with contextlib.suppress(OSError):
                if {word.encode() for word in words} <= set(path.read_bytes().split(b"\0")):
                    found.append(int(path.parent.name))
        return found

    def workers(self):
        return self.processes("--worker", str(self.root))

    def hang(self, bus, number, script=HANGING_CHILD):
        """A job whose build hangs on trial, and its worker."""
        image = self.put(f"hangs {number}", self.place.image(58, script=script.format(duration(number))))
        answer = bus.caller(ONE).start_prepare(image)
        wait_until(lambda: answer.arrived.is_set() or self.processes("sleep", duration(number)), "the build is on trial")
        workers = self.workers()
        assert workers or bus is self.hasty, f"never on trial: {answer}"
        return answer, next(iter(workers), None)

    def expect_ended(self, number):
        wait_until(lambda: not self.processes("sleep", duration(number)) and not self.workers(), "all of it has ended")

    # What is tried.

    def prepares_and_installs_once_and_again(self):
        caller = self.bus.caller(ONE)
        for _ in range(2):
            self.expect(caller.prepare(self.good), DONE, "prepare")
            assert names(self.root / "builds") == ["57", "58"] and current(self.root) == 57
        for _ in range(2):
            self.expect(caller.install(), DONE, "install")
            assert current(self.root) == 58
        self.expect(caller.prepare(self.good), DONE, "prepare what is installed")

    def takes_what_the_publisher_makes(self):
        folder, made = self.place.path / "folder", []
        with release.tarfile.open(fileobj=release.io.BytesIO(toy(58, script="echo 'Palvera 1.5 (58)'"))) as tar:
            tar.extractall(folder)
        for time_of_change in 1, 2:
            os.utime(folder / "bin/palvera", (time_of_change, time_of_change))
            output = self.place.path / f"output {time_of_change}"
            subprocess.run([TOP / "scripts/release-image", self.place.key, folder, output, "--url",
                            "https://downloads.example/palvera/"], check=True, stdout=subprocess.DEVNULL)
            made.append((output / "Palvera-1.5.dmg").read_bytes())
        assert made[0] == made[1], "the same build gives other bytes"
        assert json.loads((output / "latest.json").read_text()) == {
            "version": "1.5", "build": "58", "url": "https://downloads.example/palvera/Palvera-1.5.dmg"}
        self.expect(self.bus.caller(ONE).prepare(output / "Palvera-1.5.dmg"), DONE, "prepare")
        (self.root / "builds/58/manifest.json").unlink()
        assert digest(self.root / "builds/58") == digest(folder), "another build than was published"

    def judges_the_image(self):
        """What an image or an archive may hold is tried where each is read; here one of what a worker refuses there."""
        image, good = self.place.image, self.good.read_bytes()
        caller, announced = self.bus.caller(ONE), {"build": "58", "version": "1.5"}
        for what, data, error, options in [
                ("other key", image(58, key=self.place.other_key), "The update is not signed by Palvera.", {}),
                ("downgrade", image(56), OLDER, {"build": "56"}),
                ("current build, other content", image(57), OLDER, {"build": "57"}),
                ("other system", image(58, system="linux-other"), NOT_HERE, {}),
                ("other product", image(58, product="other"), NOT_HERE, {}),
                ("other build announced", good, NOT_ANNOUNCED, {"build": "60"}),
                ("other version announced", good, NOT_ANNOUNCED, {"version": "1.6"}),
                ("a number announced, no text", good, NOT_ANNOUNCED, {"build": 58}),
                ("file of the manifest's name", image(58, file("manifest.json", b"{}")), STRANGE, {}),
                ("hard link with bytes", image(58, (release.entry(  # which no writer of archives makes
                    "lib/hard", 0o644, release.tarfile.LNKTYPE, "bin/palvera", 5), b"bytes")), STRANGE, {}),
                ("says another number", image(58, script="echo 'Palvera 1.5 (59)'"),
                 "The update does not run on this computer.", {})]:
            self.refuse(caller.prepare(self.put("image", data), announced=announced | options), error, what)
        for kind in KINDS:
            self.refuse(caller.prepare(kind), DAMAGED, kind)
        self.expect(caller.prepare(self.good), DONE, "and the good one after all that")

    def serves_its_own_root_alone(self):
        caller, link = self.bus.caller(ONE), self.place.path / "link"
        link.symlink_to(self.root)
        for target in "/etc", f"{self.root}/../root", f"{self.root}/", str(link), "", "--root":
            self.refuse(caller.prepare(self.good, target=target), FOREIGN, target)
        self.refuse(caller.install(target=str(link)), FOREIGN, "install")

    def installs_nothing_where_nothing_is_or_anybody_may_write(self):
        (self.root / "current").unlink()
        shutil.rmtree(self.root / "builds")
        self.expect(self.bus.caller(ONE).install(), "There is no prepared update.", "install")
        self.root.chmod(0o777)
        missing = "The installer is missing from this copy of the app."
        self.expect(self.bus.caller(ONE).install(), missing, "a root that anybody may write")

    def asks_who_may(self):
        if not IS_ROOT:
            raise Skipped("needs other users")
        bus, hasty = self.bus, self.hasty
        caller = bus.caller(ONE)
        bus.questions.clear()
        bus.says = REFUSED
        refused = "You may not install updates on this computer. Ask whoever looks after it."
        self.refuse(caller.prepare(self.good), refused, "prepare")
        self.refuse(caller.install(), refused, "install")
        bus.ask("ReleaseName", "(s)", AUTHORITY)
        self.refuse(caller.prepare(self.good), UNANSWERED, "without an authority")
        bus.ask("RequestName", "(su)", AUTHORITY, 0)
        bus.says = ALLOWED
        self.expect(caller.prepare(self.good), DONE, "allowed")
        name = caller.connection.get_unique_name()
        assert bus.questions == 3 * [(("system-bus-name", {"name": name}), f"{NAME}.update", {}, 1, "")], bus.questions
        self.expect(bus.caller(KEEPER).install(), DONE, "the keeper's own")
        assert len(bus.questions) == 3, "who has the installer's own rights is not asked about"
        make_root(self.root, 57)
        hasty.says = SILENT
        first, second = [hasty.caller(ONE).start_prepare(self.good) for _ in range(2)]
        self.refuse(second.wait(), BUSY, "while that user is asked about")
        self.refuse(first.wait(), UNANSWERED, "the authority says nothing")
        assert len(hasty.questions) == 1
        hasty.says = ALLOWED

    def proves_what_it_unpacks(self):
        """The image is written over while it is read, by another build's payload of the same length."""
        builds = [toy(58, file("lib/big", noise(8 << 20, seed))) for seed in range(2)]
        payload, other = (release.compressed(build, 1) for build in builds)
        good = sealed(builds[0], 58, self.place.key)
        assert len(payload) == len(other) and good.endswith(payload)
        evil, is_over = good[:-len(payload)] + other, threading.Event()
        flips = self.put("flips", evil)
        self.refuse(self.bus.caller(ONE).prepare(flips), DAMAGED, "another's payload")

        def flip():
            with open(flips, "r+b", buffering=0) as image:
                while not is_over.is_set():
                    os.pwrite(image.fileno(), evil, 0)
                    os.pwrite(image.fileno(), good, 0)

        thread = threading.Thread(target=flip)
        thread.start()
        try:
            for _ in range(8):
                make_root(self.root, 57)
                answer = self.bus.caller(ONE).prepare(flips)
                self.cases += 1
                if answer.error == DONE:
                    assert (self.root / "builds/58/lib/big").read_bytes() == noise(8 << 20, 0), "evil bytes"
                else:
                    assert answer.error == DAMAGED, answer
                    self.expect_untouched("flipped")
        finally:
            is_over.set()
            thread.join()

    def ends_a_build_that_hangs(self):
        answer, _ = self.hang(self.hasty, 1)
        self.expect(answer.wait(), "The update could not be read in time.", "hangs")
        self.expect_ended(1)
        self.expect(self.bus.caller(ONE).prepare(self.good), DONE, "and the next")

    def leaves_no_worker_behind(self):
        answer, _ = self.hang(self.bus, 2, HANGING)
        os.kill(self.bus.service(), signal.SIGKILL)
        self.cases += 1
        assert answer.wait().failure, f"a refusal, where nobody answered: {answer}"
        self.expect_ended(2)
        wait_until(lambda: not self.bus.has_service(), "the bus knows")
        self.expect(self.bus.caller(ONE).prepare(self.good), DONE, "and the next, by another service")

    def lets_no_user_keep_out_another(self):
        """While one user's build is on trial, whose worker is then killed."""
        first, worker = self.hang(self.bus, 3)
        variables = {line.split(b"=")[0] for line in pathlib.Path(f"/proc/{worker}/environ").read_bytes().split(b"\0")}
        assert variables <= {b"PATH", b"LANG", b""}, f"the worker is steered by {variables}"
        flood = [self.bus.caller(ONE).start_prepare(self.good) for _ in range(200)]
        other = self.bus.caller(OTHER).start_prepare(self.good) if IS_ROOT else None
        for answer in flood:
            assert answer.wait().error == BUSY, answer
        assert not other or not other.arrived.is_set(), f"before its turn: {other}"
        os.kill(worker, signal.SIGKILL)
        self.expect(first.wait(), "The update could not be unpacked.", "the one that hung")
        self.expect_ended(3)
        if other:
            self.expect(other.wait(), DONE, "the other user")
            for job in [self.bus.caller(user).start("InstallWithTarget") for user in (ONE, OTHER)]:
                self.expect(job.wait(), DONE, "install")

    def says_what_is_wrong_with_the_disk(self):
        if not may_mount():
            raise Skipped("needs the right to mount")
        # Less than what an update leaves to others, and none at all.
        for options, error in [
                ("size=40m", f"There is not enough room for the update on the disk of {self.root}."),
                ("ro", "The update could not be stored: Read-only file system.")]:
            owner = f"uid={KEEPER},gid={KEEPER},mode=755"
            shutil.rmtree(self.root)
            self.root.mkdir()
            subprocess.run(["mount", "-t", "tmpfs", "-o", f"{options},{owner}", "tmpfs", self.root], check=True)
            try:
                self.expect(self.bus.caller(ONE).prepare(self.good), error, options)
            finally:
                subprocess.run(["umount", self.root], check=True)

    def leaves_when_there_is_nothing_to_do(self):
        brief = Bus(self.place, "brief", "--idle", "1")
        process = subprocess.Popen([*brief.command, "--idle", "1"])
        assert process.wait(PATIENCE) == 0, "idle"
        for _ in range(20):  # also when a call comes just then: what is not served by one is by the next
            self.expect(brief.caller(KEEPER).install(), DONE, "just then")
        brief.end()
        lasting = Bus(self.place, "lasting")
        process = subprocess.Popen(lasting.command)
        wait_until(lasting.has_service, "it serves")
        lasting.end()
        assert process.wait(PATIENCE) == 0, "its bus has gone"
        assert subprocess.run(lasting.command, stderr=subprocess.PIPE).returncode == 3, "there is no bus"
        self.cases += 3

    def run(self, chosen):
        wrong = 0
        tests = [name for name, value in vars(Attacks).items() if not name.startswith("_") and name.count("_") > 1
                 and value.__code__.co_argcount == 1]
        for name in tests if not chosen else chosen:
            make_root(self.root, 57)
            began, before = time.monotonic(), self.cases
            try:
                getattr(self, name)()
                print(f"ok      {name}: {self.cases - before} cases ({time.monotonic() - began:.1f} s)", flush=True)
            except Skipped as skipped:
                print(f"skipped {name}: {skipped}", flush=True)
            except AssertionError as failure:
                wrong += 1
                for worker in self.workers():  # which would make the next ones fail
                    os.kill(worker, signal.SIGKILL)
                print(f"FAILED  {name}: {failure}", flush=True)
        self.bus.end()
        self.hasty.end()
        print(f"{self.cases} cases, {wrong} wrong")
        return wrong


def main():
    if b"__tsan_init" in pathlib.Path(os.environ["PALVERA_INSTALLER"]).read_bytes():
        print("not run: the thread sanitizer's run time ends a program in which Qt starts a process")
        sys.exit(77)
    enter_own_place()
    sys.exit(bool(Attacks(Place()).run(sys.argv[1:])))


main()
