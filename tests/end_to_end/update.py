#!/usr/bin/python3
"""The program brings itself up to date, in a copy of a user's own: build 1 runs, build 2 is published."""
import json
import os
import pathlib
import runpy
import shutil
import signal
import subprocess
import types

import nobody
import support

PROGRAMS = "PALVERA", "PALVERA_NEXT", "PALVERA_LAUNCHER", "PALVERA_INSTALLER"
nobody.leave_root(*PROGRAMS, "PALVERA_CLI", "PALVERA_LOCAL_PLATFORM", "PALVERA_RELEASE_IMAGE")

from desktop_programs import Desktop, Display, install_portal # noqa: E402: as that user
from support import Client, Platform, Workspace, expect_filed, wait_until # noqa: E402

CURRENT, NEXT, LAUNCHER, INSTALLER = (pathlib.Path(os.environ[name]) for name in PROGRAMS)
NAME = "example.palvera.Palvera.Installer"
PART = 1 << 20
ROWS = {"salt-row-1": "Picture master", "salt-row-5": "5.1 surround mix"}
release = types.SimpleNamespace(**runpy.run_path(os.environ["PALVERA_RELEASE_IMAGE"]))


class Copy:
    """The root of a copy, the publisher's key, and what they publish. What a build does is in a script before its
    program, since a trial has an environment of its own."""

    def __init__(self, workspace):
        self.path, self.root = workspace.path, workspace.path / "copy"
        self.key = self.path / "key.pem"
        subprocess.run(["openssl", "genpkey", "-algorithm", "ed25519", "-out", self.key], check=True)
        self.make_build(self.root / "builds/1", CURRENT)
        (self.root / "builds/1/manifest.json").write_text(json.dumps({"version": "0.1.0", "build": "1"}))
        (self.root / "current").symlink_to("builds/1")
        for program, place in (LAUNCHER, "bin/palvera"), (INSTALLER, "libexec/palvera-installer"):
            (self.root / place).parent.mkdir()
            shutil.copy(program, self.root / place)
        # Offered to the bus of a display that is started later.
        services = self.path / "share/dbus-1/services"
        services.mkdir(parents=True, exist_ok=True)
        (services / f"{NAME}.service").write_text(
            f"[D-BUS Service]\nName={NAME}\nExec={self.root}/libexec/palvera-installer --session --key "
            f"{release.public_key(self.key)}\n")
        others = os.environ.get("XDG_DATA_DIRS", "/usr/local/share:/usr/share")
        os.environ["XDG_DATA_DIRS"] = f"{self.path}/share:{others}"

    def __enter__(self):
        return self

    def __exit__(self, *unused):
        self.end()

    def end(self):
        for program in ("libexec/palvera-installer", *(f"builds/{build}/bin/palvera.real" for build in (1, 2))):
            for process in self.processes(program):
                os.kill(process, signal.SIGKILL)

    @staticmethod
    def make_build(folder, program, before=""):
        (folder / "bin").mkdir(parents=True)
        subprocess.run(["strip", "-o", folder / "bin/palvera.real", program], check=True)
        script = folder / "bin/palvera"
        script.write_text("#!/bin/sh\n"
                          f"export LSAN_OPTIONS='{os.environ.get('LSAN_OPTIONS', '')}'\n"
                          '[ "$1" = --self-test ] && export ASAN_OPTIONS=detect_leaks=0\n'
                          f'{before}\nexec "$0.real" "$@"\n')
        script.chmod(0o755)

    def publish(self, before=""):
        """An image of build 2, which does what `before` says before it starts."""
        folder, image = self.path / "next", self.path / "Palvera-0.2.0.dmg"
        self.make_build(folder, NEXT, before)
        tar = release.archive(release.entries_of(folder))
        payload = release.compressed(tar, level=1)
        image.write_bytes(release.image(release.manifest_of(tar, payload, "0.2.0", "2"), payload, self.key))
        return image

    def current(self):
        return os.readlink(self.root / "current")

    def processes(self, program):
        """Those that run this program of the copy."""
        def runs(process):
            try:
                return os.readlink(process / "exe") == str(self.root / program)
            except OSError:
                return False
        return [int(process.name) for process in pathlib.Path("/proc").iterdir() if process.name.isdigit() and runs(process)]


class Started(Desktop):
    """The program, by its launcher. It may be followed by another process."""

    def __init__(self, workspace, copy, platform, **options):
        super().__init__(workspace, platform.address, program=copy.root / "bin/palvera", **options)


def update(desktop):
    desktop.activate(desktop.BUTTON, "Install")
    desktop.find(desktop.BUTTON, "Restart")


def restarted_in_the_middle_of_two_uploads_which_are_resumed():
    with Workspace() as workspace, Copy(workspace) as copy:
        file = workspace.make_file("film.mov", 60 * PART + 123)
        install_portal(workspace, file)
        options = ["--part-size", str(PART), "--update", str(copy.publish()), "--update-build", "2"]
        with (Display(), Platform(workspace, *options, "--bytes-per-second", "700000") as platform,
              Started(workspace, copy, platform) as desktop):
            client = Client(workspace, platform.address)
            desktop.sign_in(support.EMAIL, support.PASSWORD)
            desktop.open("Northlight Pictures", "Salt")
            platform.break_with({"operation": "image", "times": 0, "action": "none", "bytesPerSecond": 200_000_000})
            update(desktop)
            for row in ROWS.values():
                desktop.open(row)
                desktop.activate(desktop.BUTTON, "Choose a file")
                desktop.find("heading|label|static|text", "Uploading")
                desktop.activate(desktop.BUTTON, "Deliverables")
            wait_until(lambda: all(platform.stored_parts(row) > 5 for row in ROWS), "parts in storage")
            desktop.focus()
            desktop.activate(desktop.BUTTON, "Restart")
            desktop.find(".*", "2 transfers are still moving. Uploads stop and wait under Interrupted, and pick up from the "
                               "part they reached.")
            desktop.press("Tab", "Return")  # past "Not yet"
            assert desktop.process.wait(support.PATIENCE) == 0
            platform.kill()
            platform.options = options
            platform.start()
            desktop.find("heading", "Choose a client")
            assert copy.current() == "builds/2" and not (workspace.path / "home/cache/Palvera/Update").exists()
            assert (workspace.path / "home/state/Palvera/start").read_text().startswith("2 ")
            desktop.activate(desktop.BUTTON, "Resume all")
            for row in ROWS:
                wait_until(lambda: platform.is_filed(row, file) and not client.journal(row), "the file is filed")
                assert len(platform.uploads(row)) == 1, "it was not resumed but sent again"
                expect_filed(platform, client, row, file)
            process, = copy.processes("builds/2/bin/palvera.real")
            desktop.focus()
            desktop.press("ctrl+q")
            wait_until(lambda: not pathlib.Path(f"/proc/{process}").exists(), "it ends")
            assert (workspace.path / "home/state/Palvera/start").read_text() == "2 works\n"
            assert desktop.complaints() == "", desktop.complaints()


def a_build_that_dies_is_left_for_the_one_before():
    with Workspace() as workspace, Copy(workspace) as copy:
        image = copy.publish('[ "$1" = --self-test ] || exit 1')
        with Display(), Platform(workspace, "--update", str(image), "--update-build", "2") as platform:
            with Started(workspace, copy, platform) as desktop:
                update(desktop)
                desktop.activate(desktop.BUTTON, "Restart")
                failed = desktop.find(desktop.BUTTON, "Retry update")
                said = failed.get_description()
                assert said == "The new build did not start.", said
                assert desktop.process.poll() is None and copy.current() == "builds/2"
                desktop.quit()
            assert desktop.start_again() == 1, "the next start, which dies too"
            with Started(workspace, copy, platform) as desktop:
                desktop.sign_in(support.EMAIL, support.PASSWORD)
                desktop.find("heading", "Choose a client")
                desktop.find(".*", "Palvera 0.2.0 did not start on this computer, so 0.1.0 runs instead.")
                reads = platform.state()["requests"]["feed"]
                assert reads > 0 and not desktop.says("Install"), "it is offered again"
                assert desktop.start_again() == 0, "a second start, which hands over"
                desktop.quit()
            assert (workspace.path / "home/state/Palvera/start").read_text() == "2 2\n"


def two_programs_of_one_copy_are_updated_one_after_the_other():
    with Workspace() as workspace, Copy(workspace) as copy:
        with (Display(), Platform(workspace, "--update", str(copy.publish()), "--update-build", "2") as platform,
              Started(workspace, copy, platform) as one, Started(workspace, copy, platform, home="other") as other):
            for left in 1, 0:  # of which it does not matter which is found first
                wait_until(lambda: len([name for _, name, _ in one.items() if name == "Install"]) == left + 1, "pills")
                update(one)
                one.activate(one.BUTTON, "Restart")
                wait_until(lambda: len(copy.processes("builds/1/bin/palvera.real")) == left
                           and len(copy.processes("builds/2/bin/palvera.real")) == 2 - left, "the next build runs")
                assert copy.current() == "builds/2" and (copy.root / "builds/1/bin/palvera").exists()
            assert one.process.wait() == other.process.wait() == 0
            copy.end()


support.main()
