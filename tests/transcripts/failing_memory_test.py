#!/usr/bin/env python3
"""Whatever allocation of the command fails, alone or with all after it: either it makes no
difference, or the command says so, and the file that it writes is the old one.

    failing_memory_test.py BKOQ PRELOADED EXAMPLES_FOLDER [TRIES]

Of the allocations of each command, TRIES are made to fail, from the first on at even distances; all
if it is 0 (default 50).
"""

import os
import subprocess
import sys
import tempfile

FORMS = [
    ["flatten", "{}/nightly-backup.json", "-o", "target"],
    ["show", "{}/nightly-backup.json", "--html", "-o", "target"],
    ["show", "{}/nightly-backup.json", "--json"],
    ["show", "{}/nightly-backup.json", "--annotate"],
    ["check", "{}/nightly-backup.json"],
    ["explain", "{}/restore.json"],
    ["diff", "{}/nightly-backup.json", "{}/backup.json"],
    ["new", "merge", "--all"],
    ["attributes", "disk"],
    ["layout", "BKDTAPE"],
]
OLD = b"old"


def main():
    tool, preloaded = (os.path.abspath(name) for name in sys.argv[1:3])
    examples = os.path.abspath(sys.argv[3])
    tries = int(sys.argv[4]) if len(sys.argv) > 4 else 50
    for form in FORMS:
        command = [tool] + [part.format(examples) for part in form]
        with tempfile.TemporaryDirectory() as folder:
            one_form(command, preloaded, folder, tries)


def one_form(command, preloaded, folder, tries):
    whole, new, count = run(command, preloaded, folder, 0, False)
    assert count > 300, count
    step = 1 if tries == 0 else max(1, count // tries)
    told = 0
    for on in (False, True):
        for at in range(1, count + 1, step):
            done, target, _ = run(command, preloaded, folder, at, on)
            what = (command, at, on, done.returncode, done.stderr)
            if done.returncode == whole.returncode and not done.stderr:
                assert done.stdout == whole.stdout, what
                assert target == new, what
                continue
            told += 1
            assert done.returncode == 2, what
            assert done.stderr.endswith(b"bkoq: memory ran out\n"), what
            assert target == OLD, what
    assert told > count // step, (command, told)


def run(command, preloaded, folder, at, on):
    """What was done, what is in the target, and how many allocations there were."""
    environment = {"LD_PRELOAD": preloaded, "FAIL_AT": str(at), "PATH": "/usr/bin:/bin", "TZ": "UTC",
                   "SOURCE_DATE_EPOCH": "1078174800"}
    counted = os.path.join(folder, "count")
    if at == 0:
        environment["FAIL_COUNT"] = counted
    if on:
        environment["FAIL_ON"] = "1"
    target = os.path.join(folder, "target")
    with open(target, "wb") as file:
        file.write(OLD)
    done = subprocess.run(command, cwd=folder, env=environment, capture_output=True, check=False,
                          timeout=60)
    count = 0
    if at == 0:
        with open(counted, encoding="ascii") as file:
            count = int(file.read())
        os.remove(counted)
    left = os.listdir(folder)
    assert left == ["target"], (command, at, left)
    with open(target, "rb") as file:
        return done, file.read(), count


if __name__ == "__main__":
    main()
