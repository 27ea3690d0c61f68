#!/usr/bin/env python3
"""A file goes up and is filed, whatever it is called; several go into the bin."""
import support
from support import DONE, FAILED, ORG, PROJECT, digest, expect, signed_in

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
            upload = support.expect_filed(platform, client, row, file)
            rows = expect(DONE, client.run("deliverables", ORG, PROJECT, "--json")).records()
            spec = next(record["spec"] for record in rows if record["id"] == row)
            assert spec["assetFilename"] == name and spec["assetBytes"] == str(size), spec
            assert len(upload["parts"]) == -(-size // PART) and all(
                part["times"] == 1 for part in upload["parts"].values()), upload


def files_go_into_the_bin_together():
    with signed_in("--part-size", str(PART)) as (workspace, platform, client):
        first, last = workspace.make_file("Day 1 100%.mov", 3 * PART + 7), workspace.make_file("[x].mov", PART, seed=2)
        result = expect(FAILED, client.run("upload-bin", ORG, "--folder", "New & old", first, workspace.path, last))
        assert f"“{workspace.path}” is a folder. Only files can be sent." in result.error, result
        listed = client.run("bin", ORG, "--folder", "New & old/", "--json").records()
        assert {(entry["key"], entry["size"]) for entry in listed} == {
            ("New & old/Day 1 100%.mov", 3 * PART + 7), ("New & old/[x].mov", PART)}, listed
        stored = {upload["filename"]: digest(upload["path"]) for upload in platform.uploads("")}
        assert stored == {file.name: digest(file) for file in (first, last)}, stored
        assert platform.violations() == [], platform.violations()
        assert not list(client.journals().iterdir())


support.main(files_with_odd_names_are_filed_as_they_are, files_go_into_the_bin_together)
