#!/usr/bin/python3
"""What Orca says on the everyday path, taken by keyboard alone. Its speech dispatcher writes to a file."""
import argparse
import os
import pathlib
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests/end_to_end"))
PART, ROW = 1 << 20, "salt-row-1"
KEYS = {"return", "tab", "down", "dot", "at", "left shift", "space"}  # that are pressed: it says each
SPEECHD = """AudioOutputMethod "libao"
CommunicationMethod "unix_socket"
AddModule "file" "sd_generic" "file.conf"
DefaultModule file
LogDir "{folder}"
"""
MODULE = """GenericExecuteSynth "echo '$DATA' >> {said}"
GenericCmdDependency "echo"
GenericLanguage "en" "en" "utf-8"
AddVoice "en" "MALE1" "x"
DefaultVoice "x"
"""


class Orca:
    """The screen reader and its voice, which `said` listens to. Within a Display."""

    def __init__(self, folder, wait_until):
        self.said = folder / "said"
        self.said.write_text("")
        self.heard = 0
        modules, orca, sockets = folder / "speechd" / "modules", folder / "orca", folder / "speechd.socket"
        modules.mkdir(parents=True)
        orca.mkdir()
        (modules.parent / "speechd.conf").write_text(SPEECHD.format(folder=modules.parent))
        (modules / "file.conf").write_text(MODULE.format(said=self.said))
        (folder / ".libao").write_text("default_driver=null\n")
        environment = os.environ | {"HOME": str(folder), "SPEECHD_ADDRESS": f"unix_socket:{sockets}"}
        self.processes = []
        for words, begun in ((["speech-dispatcher", "-s", "-t", "0", "-C", modules.parent, "-S", sockets,
                               "-P", folder / "speechd.pid"], sockets.exists),
                             (["orca", "--replace", "-u", orca], lambda: self.said.stat().st_size > 0)):
            with open(folder / "noise", "ab") as noise:
                self.processes.append(subprocess.Popen(words, env=environment, stdout=noise, stderr=noise))
            wait_until(begun, f"{words[0]} has begun")
        self.sentences()

    def sentences(self):
        """What it has said since this was last asked, once it is silent."""
        last, since = -1, time.monotonic()
        while time.monotonic() - since < 2.5:
            if (now := self.said.stat().st_size) != last:
                last, since = now, time.monotonic()
            time.sleep(0.1)
        text = self.said.read_text()
        new, self.heard = text[self.heard:], len(text)
        sentences = (line.strip().replace(" middle dot ", " · ").replace("  ", " ") for line in new.splitlines())
        return [each for each in sentences if len(each) > 1 and each not in KEYS]

    def end(self):
        for process in reversed(self.processes):
            process.terminate()
            process.wait()


def walk(support, programs, note):
    with support.Workspace() as workspace:
        file = workspace.make_file("Salt_reel3.mov", 20 * PART)
        programs.install_portal(workspace, file)
        with programs.Display(), programs.WindowManager(), support.Platform(
                workspace, "--part-size", str(PART), "--bytes-per-second", "300000") as platform:
            client = support.Client(workspace, platform.address)
            folder = workspace.path / "Downloads"
            folder.mkdir()
            support.expect(support.DONE, client.run("downloads-folder", folder))
            orca = Orca(workspace.path, support.wait_until)
            try:
                with programs.Desktop(workspace, platform.address) as desktop:
                    desktop.find("entry|text", "Work email")

                    def step(what, *keys, text=None, until=None):
                        if text:
                            subprocess.run(["xdotool", "type", "--delay", "20", text], check=True)
                        for key in keys:
                            desktop.press(key)
                        if until:
                            support.wait_until(until, what)
                        note(what, orca.sentences())

                    step("The program starts")
                    step("An e-mail address, and Return", "Return", text=support.EMAIL)
                    step("The password, and Return", "Return", text=support.PASSWORD)
                    step("Return opens the first client", "Return")
                    step("The name of a project is typed, and Down", "Down", text="salt")
                    step("Return opens it", "Return")
                    step("A word of a row is typed, and Down", "Down", text="picture")
                    step("Return opens the row", "Return")
                    step("Return asks for a file, which the desktop's dialog gives; it is filed", "Return",
                         until=lambda: platform.is_filed(ROW, file))
                    step("Return downloads it again", "Return", until=lambda: (folder / file.name).exists() and len(list(folder.iterdir())) == 1)
            finally:
                orca.end()


def main():
    options = argparse.ArgumentParser(description=__doc__)
    options.add_argument("--build", type=pathlib.Path, required=True, help="folder of the programs")
    options.add_argument("--into", type=pathlib.Path, required=True, help="file for what it says")
    chosen = options.parse_args()
    build = chosen.build.resolve()
    os.environ.update({variable: str(build / name) for variable, name in (
        ("PALVERA", "palvera"), ("PALVERA_CLI", "palvera-cli"), ("PALVERA_LOCAL_PLATFORM", "palvera-local-platform"))})
    import desktop_programs
    import support
    lines = ["What Orca says on the everyday path, by keyboard alone (scripts/orca)."]

    def note(what, sentences):
        lines.extend(["", f"{what}:", *(f"    {sentence}" for sentence in sentences)])
        print(*lines[-len(sentences) - 1:], sep="\n", flush=True)

    walk(support, desktop_programs, note)
    chosen.into.write_text("\n".join(lines) + "\n")


main()
