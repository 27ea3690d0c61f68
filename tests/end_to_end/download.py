#!/usr/bin/env python3
"""Files come down whole, or not at all: under their own names, in the chosen folder, and from where they were."""
import json
import os
import random
import subprocess
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


def add_to_bin(client, *files):
    expect(DONE, client.run("upload-bin", ORG, *files))


def filed_and_bin_files_come_down_whole():
    with signed_in() as (workspace, platform, client):
        folder = folder_in(workspace)
        file = workspace.make_file("Naïve reel 100%.mov", 2 * CHUNK + 7)
        expect(DONE, client.upload("salt-row-1", file))
        done = expect(DONE, client.run("download", ORG, PROJECT, "salt-row-1", "--to", folder, "--json"))
        event = done.events("done")[0]
        assert (event["key"], event["file"], event["bytes"]) == (
            "salt-row-1", str(folder / file.name), file.stat().st_size), event
        assert done.events("progress")[-1]["sent"] == file.stat().st_size, done
        assert digest(folder / file.name) == digest(file)
        # The downloads folder serves where none is named, also for an object of the bin.
        expect(FAILED, client.run("download-bin", ORG, "b.mov"))
        expect(DONE, client.run("downloads-folder", folder))
        assert client.run("downloads-folder").out == f"{folder}\n"
        small = workspace.make_file("b.mov", 1, seed=2)
        add_to_bin(client, small)
        expect(DONE, client.run("download-bin", ORG, "b.mov"))
        assert digest(folder / "b.mov") == digest(small)
        assert names_in(folder) == [file.name, "b.mov"] and platform.violations() == []


def a_second_file_of_a_name_gets_a_number():
    with signed_in() as (workspace, platform, client):
        folder = folder_in(workspace)
        first = workspace.make_file("a.mov", 1000)
        second = folder_in(workspace, "other") / first.name
        second.write_bytes(b"another film")
        expect(DONE, client.run("upload-bin", ORG, first))
        expect(DONE, client.run("upload-bin", ORG, "--folder", "Day 1", second))
        (folder / "a.mov").write_bytes(b"precious")
        expect(DONE, client.run("download-bin", ORG, "a.mov", "Day 1/a.mov", "--to", folder))
        assert (folder / "a.mov").read_bytes() == b"precious"
        assert {digest(folder / f"a {number}.mov") for number in (2, 3)} == {digest(first), digest(second)}
        assert len(names_in(folder)) == 3, names_in(folder)


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
        for signal in ("interrupt", "kill", "kill"):
            process = client.start("download-bin", ORG, "Reel.mov", "--to", folder, "--json")
            wait_until(lambda: recorded_chunks(folder, "Reel.mov") > before, "chunks that are recorded")
            if signal == "kill":
                time.sleep(chance.uniform(0, 0.3))
                process.kill()
                client.finish(process)
            else:
                support.interrupt(process)
                result = expect(INTERRUPTED, client.finish(process))
                assert result.records()[-1] == {"event": "interrupted", "key": "Reel.mov"}, result
                assert "The same command goes on from there." in result.error, result
            before = recorded_chunks(folder, "Reel.mov")
            assert 0 < before < 27, "it was to end in the middle"
        platform.break_with()
        result = expect(DONE, client.run("download-bin", ORG, "Reel.mov", "--to", folder, "--json"))
        assert result.events("progress")[0]["sent"] == before * CHUNK, result
        assert digest(folder / "Reel.mov") == digest(file) and names_in(folder) == ["Reel.mov"], names_in(folder)
        assert platform.violations() == []


def a_full_disk_is_said_at_once_and_costs_nothing():
    with signed_in() as (workspace, platform, client):
        disk = folder_in(workspace, "disk")
        if subprocess.run(["mount", "-t", "tmpfs", "-o", "size=60m", "none", disk], capture_output=True).returncode:
            print("        (not run: this user may not mount a small disk)", flush=True)
            return
        try:
            (disk / "precious.mov").write_bytes(os.urandom(1000))
            kept = digest(disk / "precious.mov")
            large, small = workspace.make_file("large.mov", 2 * CHUNK), workspace.make_file("small.mov", CHUNK)
            add_to_bin(client, large, small)
            result = expect(FAILED, client.run("download-bin", ORG, "large.mov", "--to", disk))
            assert "67.1 MB" in result.error and "free" in result.error, result
            assert names_in(disk) == ["precious.mov"], f"a download that never began leaves {names_in(disk)}"
            expect(DONE, client.run("download-bin", ORG, "small.mov", "--to", disk))
            assert digest(disk / "small.mov") == digest(small) and digest(disk / "precious.mov") == kept
        finally:
            subprocess.run(["umount", disk], check=True)


def what_cannot_come_down_is_said():
    with signed_in() as (workspace, platform, client):
        folder = folder_in(workspace)
        for words, message in (
                (("download", ORG, PROJECT, "salt-row-x", "--to", folder), "There is no deliverable “salt-row-x”"),
                (("download", ORG, PROJECT, "salt-row-1", "--to", folder), "No file has been delivered"),
                (("download-bin", ORG, "none.mov", "--to", folder), "That file is no longer in Uploads."),
                (("download-bin", ORG, "b.mov", "--to", folder / "none"), "There is no folder"),
                (("downloads-folder", folder / "none"), "There is no folder")):
            result = expect(FAILED, client.run(*words))
            assert message in result.error, f"not said: {message}\n{result}"
        assert names_in(folder) == []


def a_whole_delivery_goes_up_and_comes_down():
    """Fifty files, of which some are refused and some are wrong: each is told, and all the others arrive."""
    with signed_in("--part-size", "100000") as (workspace, platform, client):
        source, folder = folder_in(workspace, "delivery"), folder_in(workspace)
        files = [workspace.make_file(f"delivery/Reel {number:02}.mov", number * 7001, seed=number)
                 for number in range(50)]  # the first is empty
        missing = source / "Reel 50.mov"
        result = expect(FAILED, client.run("upload-bin", ORG, *files, missing, "--json"))
        assert len(result.events("done")) == 49, result
        assert [event["message"] for event in result.events("failed")] == [
            "That file is empty.", f"There is no file “{missing}”."], result
        platform.break_with({"operation": "get", "action": "wrong-range", "times": 3})
        keys = [file.name for file in files[1:]] + ["none.mov"]
        result = expect(FAILED, client.run("download-bin", ORG, *keys, "--to", folder, "--json"))
        assert [event["key"] for event in result.events("failed")] == ["none.mov"], result
        assert {event["key"] for event in result.events("done")} == set(keys[:-1]), result
        assert names_in(folder) == sorted(keys[:-1])
        assert all(digest(folder / file.name) == digest(file) for file in files[1:])


support.main(filed_and_bin_files_come_down_whole, a_second_file_of_a_name_gets_a_number,
             killed_or_interrupted_in_the_middle_it_goes_on, a_full_disk_is_said_at_once_and_costs_nothing,
             what_cannot_come_down_is_said, a_whole_delivery_goes_up_and_comes_down)
