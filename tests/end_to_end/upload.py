#!/usr/bin/env python3
"""A file goes up and is filed, whatever it is called and though the platform goes away on the way; a whole delivery
goes into the bin and comes down again.
"""
import os
import time

import support
from support import DONE, FAILED, ORG, PROJECT, digest, expect, expect_filed, signed_in, wait_until

PART = 1 << 20
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
            rows = expect(DONE, client.run("deliverables", ORG, PROJECT, "--json")).records()
            spec = next(record["spec"] for record in rows if record["id"] == row)
            assert spec["assetFilename"] == name and spec["assetBytes"] == str(size), spec
            assert len(upload["parts"]) == -(-size // PART) and all(
                part["times"] == 1 for part in upload["parts"].values()), upload


def a_name_that_is_no_utf8_is_sent_and_found_again():
    row, part = "salt-row-1", 100_000
    slow = {"operation": "put", "times": 0, "latencyMs": 400}
    with signed_in("--part-size", str(part), rules=[slow]) as (workspace, platform, client):
        file = workspace.make_file(os.fsdecode(b"Reel \xff\xe4\xf6.mov"), 60 * part)
        for path in file, workspace.path / os.fsdecode(b"Reel \xff.mov"):  # renamed meanwhile
            if not path.exists():
                file.rename(path)
            process = client.start("resume" if client.journal(row) else "upload", *(
                [row] if client.journal(row) else [ORG, PROJECT, row, path]))
            before = platform.stored_parts(row)
            wait_until(lambda: platform.stored_parts(row) > before + 8, "parts")
            process.kill()
            process.wait()
        platform.break_with()
        result = expect(DONE, client.run("resume", row))
        assert "Reel \ufffd.mov" in result.out, result
        [sent] = platform.uploads(row)
        assert sent["filed"] and sent["filename"] == "Reel \ufffd\ufffd\ufffd.mov", sent
        assert digest(sent["path"]) == digest(path)


def away_for_a_moment_the_upload_waits_and_goes_on():
    row, part, parts = "salt-row-1", 100_000, 60
    slow = {"operation": "put", "times": 0, "latencyMs": 400}
    with signed_in("--part-size", str(part), rules=[slow]) as (workspace, platform, client):
        file = workspace.make_file("Reel 1.mov", part * parts - 1)
        process = client.start("upload", ORG, PROJECT, row, file)
        wait_until(lambda: platform.stored_parts(row) >= 10, "ten parts")
        platform.kill()
        time.sleep(1.5)
        platform.start()
        expect(DONE, client.finish(process))
        upload = expect_filed(platform, client, row, file)
        assert len(platform.uploads(row)) == 1, "the upload was started afresh"
        times = sum(part["times"] for part in upload["parts"].values())
        assert times <= parts + 8, "more than what was in flight is sent twice"


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


support.main()
