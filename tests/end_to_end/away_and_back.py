#!/usr/bin/env python3
"""The platform and its storage go away in the middle of an upload and come back."""
import time

import support
from support import DONE, expect, signed_in, wait_until

ROW = "salt-row-1"
PART, PARTS = 100_000, 60
SLOW = {"operation": "put", "times": 0, "latencyMs": 400}


def stored_parts(platform):
    return sum(len(upload["parts"]) for upload in platform.uploads(ROW))


def away_for_a_moment_the_upload_waits_and_goes_on():
    with signed_in("--part-size", str(PART), rules=[SLOW]) as (workspace, platform, client):
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


support.main(away_for_a_moment_the_upload_waits_and_goes_on)
