#!/usr/bin/env python3
"""Whatever the platform, storage or the network get wrong, an upload ends with the file filed, or with a clear message
and a journal from which the next try goes on.

What answers may hold is tried at length in virtual time. Connections and the waits between attempts are real here, so
the faults heal within a few attempts and the cases run side by side.
"""
import concurrent.futures
import dataclasses
import sys

import support
from support import DONE, FAILED, UNREACHABLE, expect, expect_filed, signed_in

PART, SIZE = 100_000, 450_001
TROUBLE = "The platform is having trouble."


@dataclasses.dataclass
class Case:
    name: str
    rules: list
    code: int = DONE
    message: str = ""  # said when the upload fails; then the faults are healed and the next try must file the file
    part_size: int = PART
    size: int = SIZE
    starts: int = 1  # uploads that the platform opens in all
    options: tuple = ()


def fault(operation, action, times=1, **members):
    return {"operation": operation, "action": action, "times": times} | members


def fails(name, rule, message, code=FAILED, starts=1):
    return Case(name, [rule], code, message, starts=starts)


def broken(name, rule, starts=1):
    return fails(name, rule, "The connection was lost.", UNREACHABLE, starts)


CASES = [
    # Storage and addresses: each part is tried again.
    Case("503 for parts", [fault("put", "status", 3)]),
    Case("half an answer for addresses", [fault("parts", "truncated")]),
    Case("connection cut before a part is read", [fault("put", "reset-before-reading", 2)]),
    Case("connection cut within a part", [fault("put", "reset-mid-body", 2, bytes=50_000)]),
    Case("connection that stops moving", [fault("put", "stall-mid-body", bytes=1_000_000)],
         part_size=16_000_000, size=16_000_000),
    Case("lost answers to parts", [fault("put", "lose-answer", 3)]),
    Case("addresses that expire before their turn", [fault("put", "none", 0, latencyMs=1200)],
         part_size=20_000, options=("--expire-seconds", "2")),
    Case("tag in lower case", [fault("put", "lower-case-tag", 0)]),
    Case("trouble with progress reports", [fault("progress", "status", 0), fault("put", "none", 0, latencyMs=1500)],
         part_size=20_000),
    # Calls that are made once: the run fails, and the next one goes on.
    fails("503 for the start", fault("start", "status"), TROUBLE),
    fails("503 as a web page", fault("start", "status", answer="html"), "The platform answered 503."),
    fails("503 for the completion", fault("complete", "status"), TROUBLE),
    broken("lost answer to the start", fault("start", "lose-answer"), starts=2),
    broken("start cut off", fault("start", "reset-before-reading")),
    broken("lost answers to the filing", fault("asset", "lose-answer", 0)),
    # What the platform may have done all the same is asked about before the run ends.
    Case("lost answers to the completion", [fault("complete", "lose-answer", 0)]),
    Case("answer to the filing lost once", [fault("asset", "lose-answer")]),
    fails("web page for the start", fault("start", "html"), "That was not an answer of the platform."),
    fails("web page for the completion", fault("complete", "html"), "That was not an answer of the platform."),
    fails("half an answer to the start", fault("start", "truncated"), "That was not an answer of the platform.", starts=2),
]


def run(case):
    row = "salt-row-1"
    with signed_in("--part-size", str(case.part_size), *case.options, rules=case.rules) as (workspace, platform, client):
        file = workspace.make_file(f"{case.name} 100%.mov", case.size)
        result = expect(case.code, client.upload(row, file, "--retry", "off"))
        platform.break_with()
        if case.code != DONE:
            assert f"palvera-cli: {case.message}" in result.error, f"not said: {case.message}\n{result}"
            expect(DONE, client.upload(row, file, "--retry", "off"))
        uploads = platform.uploads(row)
        assert len(uploads) == case.starts, f"{len(uploads)} uploads were started"
        expect_filed(platform, client, row, file)
        assert all(not upload["parts"] for upload in uploads[:-1]), "parts were sent to an upload that was given up"


def main():
    chosen = [case for case in CASES if not sys.argv[1:] or case.name in sys.argv[1:]]
    with concurrent.futures.ThreadPoolExecutor(max_workers=6) as workers:
        longest_first = sorted(chosen, key=lambda case: case.part_size == PART)
        running = {case.name: workers.submit(run, case) for case in longest_first}
        support.run_tests({case.name: running[case.name].result for case in chosen})


main()
