#!/usr/bin/env python3
"""One call to the system fails in each run of the client, an upload or a download: whatever the call, the run ends with
the file whole at the other side, or with a clear message, and the next run finishes it.

PALVERA_FAULTS_EACH says how many calls of each class are tried, spread over all there are; 0 stands for every one.
"""
import collections
import concurrent.futures
import errno
import os
import shutil
import sys

from injection import CLASSES, ROWS, Download, Upload, chosen, read_counts, site
from support import DONE, expect

EACH = int(os.environ.get("PALVERA_FAULTS_EACH", "1"))


def run(there, number, task, fault=""):
    """How often each class was called, and whether the file was there at once."""
    home = there[0].path / f"home {number}"
    counts = there[0].path / f"counts {number}"
    transfer = task(there, home, number)
    result = transfer.go(counts, fault)
    assert result.code >= 0 and result.code != 134, f"it crashed: {result}"
    assert result.code == DONE or "palvera-cli: " in result.error, f"nothing is said: {result}"
    if result.code != DONE:
        transfer.check(expect(DONE, transfer.again()))
    elif fault.startswith("unlink") and transfer.has_record():  # which could not be removed: going on finds all done
        transfer.check(expect(DONE, transfer.go_on()))
    else:
        transfer.check(result)
    shutil.rmtree(home)
    return read_counts(counts), result.code == DONE


def attempt(there, number, task, fault):
    """How the run with that fault went, and what was wrong with it."""
    try:
        counted, was_done = run(there, number, task, fault)
    except AssertionError as failure:
        return "WRONG", f"{task.__name__} {fault}: {failure}"
    name, number, _ = fault.split(":")
    return "not met" if counted[name] < int(number) else "done" if was_done else "said, then done", None


def all_faults():
    with site() as there:
        for row, task in zip(ROWS, (Upload, Download)):
            counted, _ = run(there, row, task)
            for name, ways in CLASSES.items():
                assert counted[name] > 0, f"the {task.__name__} makes no call of the class {name}"
                for number in chosen(counted[name], EACH):
                    yield from ((task, f"{name}:{number}:{getattr(errno, way, way)}") for way in ways)


def main():
    names = sys.argv[1:] or CLASSES
    faults = [(task, fault) for task, fault in all_faults() if fault.split(":")[0] in names]
    tallies, wrong = collections.defaultdict(collections.Counter), 0
    for start in range(0, len(faults), len(ROWS)):
        batch = faults[start:start + len(ROWS)]
        with site() as there, concurrent.futures.ThreadPoolExecutor(max_workers=4) as workers:
            outcomes = workers.map(lambda row, each: attempt(there, row, *each), ROWS, batch)
            for (task, fault), (outcome, complaint) in zip(batch, outcomes):
                tallies[f"{task.__name__:8} {fault.split(':')[0]:8}"][outcome] += 1
                if complaint:
                    wrong += 1
                    print(complaint, flush=True)
    tallies[f"{len(faults)} faults:"] = sum(tallies.values(), collections.Counter())
    for what, tally in tallies.items():
        print(what, ", ".join(f"{count} {outcome}" for outcome, count in tally.items()))
    sys.exit(bool(wrong))


main()
