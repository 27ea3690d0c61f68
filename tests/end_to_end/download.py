#!/usr/bin/env python3
"""Files come down whole, or not at all: under their own names, in the chosen folder, and from where they were."""
import json
import random
import signal
import time

import support
from support import DONE, FAILED, INTERRUPTED, ORG, PROJECT, digest, expect, signed_in, wait_until

CHUNK = 33_554_432
SLOW = {"operation": "get", "times": 0, "latencyMs": 300}


def folder_in(workspace, name="down"):
    folder = workspace.path / name
    folder.mkdir(exist_ok=True)
    return folder


def names_in(folder):
    return sorted(path.name for path in folder.iterdir())


def add_to_bin(client, *words):
    expect(DONE, client.run("upload-bin", ORG, *words))


def filed_and_bin_files_come_down_whole_beside_what_is_there():
    with signed_in() as (workspace, platform, client):
        folder = folder_in(workspace)
        file = workspace.make_file("Naïve reel 100%.mov", 2 * CHUNK + 7)
        (folder / file.name).write_bytes(b"precious")
        expect(DONE, client.upload("salt-row-1", file))
        done = expect(DONE, client.run("download", ORG, PROJECT, "salt-row-1", "--to", folder, "--json"))
        event, numbered = done.events("done")[0], folder / "Naïve reel 100% 2.mov"
        assert (event["key"], event["file"], event["bytes"]) == (
            "salt-row-1", str(numbered), file.stat().st_size), event
        assert done.events("progress")[-1]["sent"] == file.stat().st_size, done
        assert digest(numbered) == digest(file) and (folder / file.name).read_bytes() == b"precious"
        # The downloads folder serves where none is named, also for objects of the bin.
        expect(FAILED, client.run("download-bin", ORG, "b.mov"))
        expect(DONE, client.run("downloads-folder", folder))
        assert client.run("downloads-folder").out == f"{folder}\n"
        first, second = workspace.make_file("b.mov", 1, seed=2), folder_in(workspace, "other") / "b.mov"
        second.write_bytes(b"another film")
        add_to_bin(client, first)
        add_to_bin(client, "--folder", "Day 1", second)
        expect(DONE, client.run("download-bin", ORG, "b.mov", "Day 1/b.mov"))
        assert {digest(folder / name) for name in ("b.mov", "b 2.mov")} == {digest(first), digest(second)}
        assert len(names_in(folder)) == 4, names_in(folder)


def recorded_chunks(folder, name):
    """How many chunks the record beside a download lists as being on the disk; none when there is no record."""
    try:
        return len(json.loads((folder / f"{name}.pvpart").read_text())["done"])
    except FileNotFoundError:
        return 0


def killed_or_interrupted_in_the_middle_it_goes_on():
    chance = random.Random(7)
    with signed_in() as (workspace, platform, client):
        folder = folder_in(workspace)
        file = workspace.make_file("Reel.mov", 26 * CHUNK + 1)
        add_to_bin(client, file)
        platform.break_with(SLOW)
        before = 0
        for number in (signal.SIGINT, signal.SIGKILL, signal.SIGKILL):
            process = client.start("download-bin", ORG, "Reel.mov", "--to", folder, "--json")
            wait_until(lambda: recorded_chunks(folder, "Reel.mov") > before, "chunks that are recorded")
            time.sleep(chance.uniform(0, 0.3))
            process.send_signal(number)
            result = client.finish(process)
            if number == signal.SIGINT:
                expect(INTERRUPTED, result)
                assert result.records()[-1] == {"event": "interrupted", "key": "Reel.mov"}, result
                assert "The same command goes on from there." in result.error, result
            before = recorded_chunks(folder, "Reel.mov")
            assert 0 < before < 27, "it was to end in the middle"
        platform.break_with()
        result = expect(DONE, client.run("download-bin", ORG, "Reel.mov", "--to", folder, "--json"))
        assert result.events("progress")[0]["sent"] == before * CHUNK, result
        # A record that was being written when the program was killed is swept a day later.
        left = [name for name in names_in(folder) if not name.endswith(".staging")]
        assert digest(folder / "Reel.mov") == digest(file) and left == ["Reel.mov"], names_in(folder)


support.main()
