#!/usr/bin/env python3
"""A file goes up and is filed, whatever it is called; a whole delivery goes into the bin and comes down again. Files
come down under their own names, in the chosen folder, beside what is there.
"""
import os
import time

import support
from support import DONE, FAILED, ORG, PROJECT, digest, expect, expect_filed, signed_in

PART, CHUNK = 1 << 20, 33_554_432
NAMES = {
    "salt-row-1": "Mäster 100%20 “v2” #1?&+.mov",
    "salt-row-7": "[a,b].wav",
    "salt row 2 of many": "-ö 映画🎬.mp4",
    "salt-row-4": "Reel v5.wav",  # has a file already, which is replaced
}


def files_with_odd_names_are_filed_as_they_are():
    with signed_in("--part-size", str(PART)) as (workspace, platform, client):
        for size, (row, name) in zip((5 * PART, 5 * PART + 1, 1, 70_001), NAMES.items()):
            file = workspace.make_file(name, size)
            result = expect(DONE, client.upload(row, file))
            assert result.error == "" and "\r" not in result.out and len(result.out.splitlines()) == 2, result
            upload = expect_filed(platform, client, row, file)
            assert len(upload["parts"]) == -(-size // PART) and all(
                part["times"] == 1 for part in upload["parts"].values()), upload


def a_name_that_is_no_utf8_is_sent_as_far_as_it_is():
    with signed_in() as (workspace, platform, client):
        file = workspace.make_file(os.fsdecode(b"Reel \xff\xe4\xf6.mov"), 1000)
        expect(DONE, client.upload("salt-row-1", file))
        [sent] = platform.uploads("salt-row-1")
        assert sent["filename"] == "Reel \ufffd\ufffd\ufffd.mov" and digest(sent["path"]) == digest(file), sent


def a_whole_delivery_goes_into_the_bin_and_comes_down():
    """Fifty files, of which some are refused and some are wrong: each is told, and all the others arrive."""
    with signed_in("--part-size", "100000") as (workspace, platform, client):
        folder = workspace.path / "down"
        folder.mkdir()
        files = [workspace.make_file(f"[{number}] 100%.mov", number * 7001, seed=number) for number in range(50)]
        arriving = {f"New & old/{file.name}": file for file in files[1:]}  # the first is empty
        missing = workspace.path / "missing.mov"
        sent = [*files, folder, missing]
        result = expect(FAILED, client.run("upload-bin", ORG, "--folder", "New & old", *sent, "--json"))
        assert {event["message"] for event in result.events("failed")} == {
            "That file is empty.", f"“{folder}” is a folder. Only files can be sent.", f"There is no file “{missing}”."}
        listed = client.run("bin", ORG, "--folder", "New & old/", "--json").records()
        assert {entry["key"]: entry["size"] for entry in listed} == {
            key: file.stat().st_size for key, file in arriving.items()}, listed
        assert not list(client.journals().iterdir())
        platform.break_with({"operation": "get", "action": "wrong-range", "times": 3})
        result = expect(FAILED, client.run("download-bin", ORG, *arriving, "none.mov", "--to", folder, "--json"))
        assert [event["key"] for event in result.events("failed")] == ["none.mov"], result
        assert {event["key"] for event in result.events("done")} == set(arriving), result
        assert {file.name: digest(file) for file in folder.iterdir()} == {
            file.name: digest(file) for file in arriving.values()}


def filed_files_come_down_beside_what_is_there_and_into_the_downloads_folder():
    with signed_in() as (workspace, platform, client):
        folder = workspace.path / "down"
        folder.mkdir()
        file = workspace.make_file("Naïve reel 100%.mov", 2 * CHUNK + 7)
        (folder / file.name).write_bytes(b"precious")
        expect(DONE, client.upload("salt-row-1", file))
        done = expect(DONE, client.run("download", ORG, PROJECT, "salt-row-1", "--to", folder, "--json"))
        event, numbered = done.events("done")[0], folder / "Naïve reel 100% 2.mov"
        assert (event["key"], event["file"], event["bytes"]) == (
            "salt-row-1", str(numbered), file.stat().st_size), event
        assert done.events("progress")[-1]["sent"] == file.stat().st_size, done
        assert digest(numbered) == digest(file) and (folder / file.name).read_bytes() == b"precious"
        expect(FAILED, client.run("download", ORG, PROJECT, "salt-row-1"))
        expect(DONE, client.run("downloads-folder", folder))
        assert client.run("downloads-folder").out == f"{folder}\n"
        platform.break_with({"operation": "get", "action": "reset-mid-body", "bytes": CHUNK // 6, "times": 100})
        expect(DONE, client.run("download", ORG, PROJECT, "salt-row-1"))
        assert digest(folder / "Naïve reel 100% 3.mov") == digest(file) and len(list(folder.iterdir())) == 3


def a_limit_that_is_chosen_or_given_holds():
    with signed_in() as (workspace, platform, client):
        file = workspace.make_file("reel.mov", 2_000_000)
        down = "download", ORG, PROJECT, "salt-row-1", "--to", workspace.path
        assert client.run("limit", "--down", "1").out == "up no limit, down 1.0 MB/s, always\n"
        for words in ("upload", ORG, PROJECT, "salt-row-1", file, "--limit-rate", "1"), down:
            began = time.monotonic()
            expect(DONE, client.run(*words))
            assert time.monotonic() - began > 1.7, words
        assert expect(DONE, client.run("limit", "--up", "0.5", "--down", "off", "--hours", "22:00-06:00", "--json")
                      ).records() == [{"up": 500_000, "down": None, "hours": "22:00-06:00"}]


support.main()
