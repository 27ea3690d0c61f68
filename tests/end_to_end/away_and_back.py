#!/usr/bin/env python3
"""The platform and its storage go away in the middle of an upload and come back."""
import time

import support
from support import DONE, UNREACHABLE, Client, Platform, Workspace, expect, wait_until

ROW = "salt-row-1"
PART, PARTS = 100_000, 60
SLOW = {"operation": "put", "times": 0, "latencyMs": 400}


def stored_parts(platform):
    return sum(len(upload["parts"]) for upload in platform.uploads(ROW))


def away_for_a_moment_the_upload_waits_and_goes_on():
    with Workspace() as workspace, Platform(workspace, "--part-size", str(PART), rules=[SLOW]) as platform:
        client = Client(workspace, platform.address).sign_in()
        file = workspace.make_file("Reel 1.mov", PART * PARTS - 1)
        process = client.start("upload", support.ORG, support.PROJECT, ROW, file)
        wait_until(lambda: stored_parts(platform) >= 10, "ten parts")
        platform.kill()
        time.sleep(1.5)
        platform.start()
        expect(DONE, client.finish(process))
        upload = support.expect_filed(platform, client, ROW, file)
        assert len(platform.uploads(ROW)) == 1, "the upload was started afresh"
        times = sum(part["times"] for part in upload["parts"].values())
        assert times <= PARTS + 8, "more than what was in flight is sent twice"


def away_at_the_end_the_upload_is_resumed_without_sending_a_part():
    with Workspace() as workspace, Platform(workspace, "--part-size", str(PART)) as platform:
        client = Client(workspace, platform.address).sign_in()
        file = workspace.make_file("Reel 2.mov", PART * PARTS)
        platform.break_with({"operation": "complete", "action": "stall-after-body", "times": 0})
        process = client.start("upload", support.ORG, support.PROJECT, ROW, file, "--retry", "off")
        wait_until(lambda: platform.state()["requests"].get("complete"), "the completion")
        platform.kill()
        result = expect(UNREACHABLE, client.finish(process))
        assert f"palvera-cli resume {ROW}" in result.error, result
        assert client.run("interrupted", "--json").records()[0]["sent"] == PART * PARTS
        expect(UNREACHABLE, client.run("resume", ROW, "--retry", "off"))
        platform.break_with()
        platform.start()
        expect(DONE, client.run("resume", ROW))
        upload = support.expect_filed(platform, client, ROW, file)
        assert all(part["times"] == 1 for part in upload["parts"].values()), upload["parts"]


support.main(away_for_a_moment_the_upload_waits_and_goes_on,
             away_at_the_end_the_upload_is_resumed_without_sending_a_part)
