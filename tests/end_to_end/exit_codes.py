#!/usr/bin/env python3
"""What the program ends with, what it says to people and to programs, and that an interruption loses nothing."""
import contextlib
import os
import resource
import select
import signal
import subprocess

import support
from support import (DISK_FULL, DONE, FAILED, INTERRUPTED, NOT_SIGNED_IN, ORG, PROJECT, UNREACHABLE, USAGE, Client,
                     Platform, Workspace, expect, signed_in, wait_until)

PART, PARTS = 100_000, 100  # ten seconds' work for eight lanes while storage is slow
SLOW = {"operation": "put", "times": 0, "latencyMs": 800}
NOT_STARTED = 127  # by the system's loader
NOWHERE = "http://127.0.0.1:9/api"  # the port of "discard", where nobody listens


def expect_each(code, message, client, *commands):
    for words in commands:
        result = expect(code, client.run(*words, typed=b"open-sesame\n"))
        assert message in result.error and (code != USAGE or not result.out), f"not said: {message}\n{result}"


def wrong_words_nobody_signed_in_and_no_platform_end_with_2_3_and_5():
    with Workspace() as workspace, Platform(workspace) as platform:
        client, far = Client(workspace, platform.address), Client(workspace, NOWHERE, "far")
        file = workspace.make_file("a.mov", 1000)
        upload = "upload", ORG, PROJECT, "salt-row-1", file, "--retry", "off"
        expect_each(USAGE, "Try: palvera-cli", client, [], ["fetch"], ["resume", "k", "--all"])
        assert "upload-bin" in expect(DONE, client.run("--help")).out
        expect_each(NOT_SIGNED_IN, "palvera-cli: Sign in to go on.\nSign in with: palvera-cli sign-in", client,
                    ["whoami"], ["orgs"], upload, ["upload-bin", ORG, file],
                    ["download-bin", ORG, "Reel 001 of 230.mov", "--to", workspace.path])
        expect_each(UNREACHABLE, "palvera-cli: Could not connect to the server.", far,
                    ["whoami"], ["bin", ORG], upload, ["sign-in", "--email", support.EMAIL, "--password-stdin"])
        expect(DONE, far.run("sign-out"))
        client.sign_in()
        expect(DONE, client.run("sign-out"))
        expect(NOT_SIGNED_IN, client.run("whoami"))


def what_cannot_be_sent_or_fetched_ends_with_1():
    with signed_in() as (workspace, platform, client):
        file, folder = workspace.make_file("a.mov", 9), workspace.path / "down"
        folder.mkdir()
        for message, *words in (
                ("That deliverable does not exist.", "upload", ORG, PROJECT, "salt-row-x", file),
                ("no interrupted upload", "resume", "salt-row-1"),
                ("no interrupted upload", "discard", "../../cookies"),
                ("There is no deliverable “salt-row-x”", "download", ORG, PROJECT, "salt-row-x", "--to", folder),
                ("No file has been delivered", "download", ORG, PROJECT, "salt-row-1", "--to", folder),
                ("That file is no longer in Uploads.", "download-bin", ORG, "none.mov", "--to", folder),
                ("There is no folder", "downloads-folder", folder / "none")):
            expect_each(FAILED, message, client, words)
        assert not list(folder.iterdir())


def interrupt_an_upload(client, number, row, file, *options):
    process = client.start("upload", ORG, PROJECT, row, file, "--json", *options)
    wait_until(lambda: len(client.recorded_parts(row)) >= 8, "recorded parts")
    process.send_signal(number)
    return expect(INTERRUPTED, client.finish(process))


def interrupted_stopped_or_discarded_an_upload_ends_with_130_and_leaves_what_it_should():
    with signed_in("--part-size", str(PART), rules=[SLOW]) as (workspace, platform, client):
        row, file = "salt row 2 of many", workspace.make_file("Reel.mov", PARTS * PART)
        result = interrupt_an_upload(client, signal.SIGINT, row, file, "--stop-on-interrupt")
        assert result.records()[-1] == {"event": "stopped", "key": row} and "resume" not in result.error, result
        assert not client.journal(row)
        result = interrupt_an_upload(client, signal.SIGHUP, row, file)
        assert result.records()[-1] == {"event": "interrupted", "key": row}, result
        assert result.error.endswith("palvera-cli resume 'salt row 2 of many'\n"), result
        [listed] = client.run("interrupted", "--json").records()
        assert listed["key"] == row and listed["sent"] == len(client.recorded_parts(row)) * PART, listed
        assert expect(DONE, client.run("discard", row, "--json")).records() == [{"event": "done", "key": row}]
        assert [upload["phase"] for upload in platform.uploads(row)] == ["aborted", "aborted"]


def an_interruption_before_the_platform_answers_leaves_nothing_behind():
    stuck = {"operation": "start", "action": "stall-after-body", "times": 0}
    with signed_in(rules=[stuck]) as (workspace, platform, client):
        process = client.start("upload", ORG, PROJECT, "salt-row-1", workspace.make_file("a.mov", 1000))
        wait_until(lambda: platform.state()["requests"].get("start"), "the start")
        process.send_signal(signal.SIGTERM)
        assert "resume" not in expect(INTERRUPTED, client.finish(process)).error
        assert not client.journal("salt-row-1")
        kept = [path for path in workspace.path.rglob("Waiting*/*")]
        assert not kept, kept


def an_interruption_while_the_password_is_awaited_ends_with_130():
    with Workspace() as workspace:
        reading, writing = os.pipe()
        process = Client(workspace, NOWHERE).start("sign-in", "--email", "e", "--password-stdin", stdin=reading)
        os.write(writing, b"half a pass")
        wait_until(lambda: not select.select([reading], [], [], 0)[0], "the first half being read")
        process.send_signal(signal.SIGINT)
        assert process.wait(support.PATIENCE) == INTERRUPTED
        assert os.get_blocking(reading), "standard input is left non-blocking"


def a_file_that_another_program_sends_is_waited_for_and_no_other_takes_its_place():
    with signed_in("--part-size", str(PART), rules=[SLOW]) as (workspace, platform, client):
        row, file = "salt-row-1", workspace.make_file("Reel.mov", 16 * PART)
        first = client.start("upload", ORG, PROJECT, row, file)
        wait_until(lambda: client.recorded_parts(row), "a recorded part")
        first.send_signal(signal.SIGSTOP)  # so that it is not done too soon
        second = client.start("upload", ORG, PROJECT, row, file)
        said = second.stderr.readline().decode()
        assert said == "This file is being sent already. Waiting for that.\n", said
        other = expect(FAILED, client.upload(row, workspace.make_file("other.mov", 9)))
        assert "“Reel.mov” is on its way there already." in other.error and "resume" not in other.error, other
        assert "That upload is running." in expect(FAILED, client.run("discard", row)).error
        assert client.run("interrupted").out == "No interrupted uploads.\n"
        first.kill()
        client.finish(first)
        expect(DONE, client.finish(second))
        assert len(platform.uploads(row)) == 1, "the file was sent twice"


def everything_said_to_programs_is_a_record_a_line():
    with signed_in("--part-size", str(PART), rules=[SLOW]) as (workspace, platform, client):
        listings = ["orgs"], ["projects", ORG], ["deliverables", ORG, PROJECT], ["assets", ORG], ["bin", ORG], ["site"]
        counts = [len(expect(DONE, client.run(*words, "--json")).records()) for words in listings]
        assert counts == [4, 4, 21, 158, 232, 1], counts
        file = workspace.make_file("Reel.mov", 24 * PART)
        result = expect(DONE, client.upload("salt-row-1", file, "--json"))
        progress, done = result.events("progress"), result.events("done")
        assert [event["sent"] for event in progress] == sorted(event["sent"] for event in progress), result
        assert progress[0]["sent"] == 0 and progress[-1]["sent"] == 24 * PART, result
        assert any(event.get("rate", 0) > 0 for event in progress), result
        assert len(done) == 1 and done[0]["bytes"] == 24 * PART and done[0]["deliverableId"] == "salt-row-1", done
        assert {record["event"] for record in result.records()} == {"progress", "done"} and result.error == "", result
        client.environment["PV_API"] = "http://0.0.0.0:1/api"  # this machine, though it does not look it
        exposed = client.run("site", "--json")
        assert len(exposed.records()) == 1 and "is not encrypted" in exposed.error, exposed


def a_reader_that_leaves_or_a_full_disk_is_no_crash():
    with signed_in() as (workspace, platform, client):
        reading, writing = os.pipe()
        process = client.start("assets", ORG, stdout=writing)
        os.close(reading)
        os.close(writing)
        assert expect(DONE, client.finish(process)).error == ""
        with open("/dev/full", "w") as full:
            result = expect(DISK_FULL, client.finish(client.start("assets", ORG, stdout=full)))
            assert "No space left on device" in result.error, result


def limited(which, limit):
    return {"preexec_fn": lambda: resource.setrlimit(which, (limit, limit))}


def what_the_system_denies_ends_with_a_sentence():
    with signed_in("--part-size", str(PART)) as (workspace, platform, client):
        upload = "upload-bin", ORG, workspace.make_file("Large.mov", 30 * PART), "--retry", "off"
        limits = [(upload, resource.RLIMIT_AS, each << 20) for each in range(75, 500, 25)]
        limits += [(["orgs"], resource.RLIMIT_NOFILE, each) for each in range(4, 40, 3)]
        for words, which, limit in [] if support.is_sanitized() else limits:  # sanitizers need far more of both
            process = client.start(*words, **limited(which, limit))
            with contextlib.suppress(subprocess.TimeoutExpired):
                process.wait(5)
            process.send_signal(signal.SIGINT)  # to one that tries a part again and again
            result = client.finish(process)
            assert result.code in (DONE, FAILED, UNREACHABLE, NOT_STARTED, INTERRUPTED), f"{limit}: {result}"
            assert result.code == DONE or result.error.strip(), f"{limit}: {result}"
        file = workspace.make_file("Reel.mov", 1000)
        result = client.finish(client.start("upload", ORG, PROJECT, "salt-row-1", file,
                                            **limited(resource.RLIMIT_FSIZE, 0)))
        assert "File too large" in expect(DONE, result).error, "that no journal can be kept"


def who_was_told_to_ignore_the_end_of_the_terminal_does():
    with signed_in("--part-size", str(PART), rules=[SLOW]) as (workspace, platform, client):
        def set_up():
            signal.signal(signal.SIGHUP, signal.SIG_IGN)
            resource.setrlimit(resource.RLIMIT_NOFILE, (256, resource.getrlimit(resource.RLIMIT_NOFILE)[1]))

        file = workspace.make_file("Reel.mov", 10 * PART)
        process = client.start("upload", ORG, PROJECT, "salt-row-1", file, preexec_fn=set_up)
        wait_until(lambda: client.recorded_parts("salt-row-1"), "recorded parts")
        soft, hard = resource.prlimit(process.pid, resource.RLIMIT_NOFILE)
        assert soft == min(hard, 65_536), (soft, hard)
        process.send_signal(signal.SIGHUP)
        expect(DONE, client.finish(process))


support.main()
