#!/usr/bin/env python3
"""However a write of an image or a page ends, by a signal or an error at any of its steps, the old
file or the new one is there as a whole, and nothing else is. Only what nobody can catch may leave the
file behind that was to replace the other, which nobody else can read.

    interrupt_test.py BKOQ PRELOADED EXAMPLES_FOLDER
"""

import errno
import os
import signal
import subprocess
import sys
import tempfile

SECRET = b"s3ss10n"
SIGNALS = (signal.SIGINT, signal.SIGTERM, signal.SIGHUP, signal.SIGQUIT, signal.SIGKILL)
FORMS = [["flatten", "{}/nightly-backup.json", "--now", "2004-03-01", "-o"],
         ["show", "{}/nightly-backup.json", "--now", "2004-03-01", "--show-secrets", "--html", "-o"]]


def main():
    tool, preloaded = (os.path.abspath(name) for name in sys.argv[1:3])
    examples = os.path.abspath(sys.argv[3])
    tried = {}
    for form in FORMS:
        command = [tool] + [part.format(examples) for part in form]
        for named in (False, True):
            with tempfile.TemporaryDirectory() as folder:
                run = lambda at, by, target: interrupted(command, preloaded, folder, named, at, by,
                                                         target)
                steps, new = whole(run, folder)
                assert steps >= 5, steps
                for by in (*SIGNALS, -errno.EIO):
                    for at in range(1, steps + 1):
                        for old in (None, b"old"):
                            tried[by] = tried.get(by, 0) + one(run, folder, at, by, old, new)
                replaced = [redirected(run, folder, at, new) for at in range(1, steps + 1)]
                # What is opened is what is replaced: the link is looked at once.
                assert replaced == sorted(replaced, reverse=True), replaced
                assert replaced.count("second") <= 3 < replaced.count("first"), replaced
    for by in SIGNALS:
        assert tried[by] > 0, f"no run was ended by {by}"
    assert tried[-errno.EIO] > 0


def interrupted(command, preloaded, folder, named, at, by, target):
    environment = {"LD_PRELOAD": preloaded, "INTERRUPT_AT": str(at), "INTERRUPT_BY": str(int(by)),
                   "INTERRUPT_COUNT": folder + ".count", "PATH": "/usr/bin:/bin", "TZ": "UTC"}
    if named:
        environment["INTERRUPT_NAMED"] = "1"
    return subprocess.run(command + [target], cwd=folder, env=environment, capture_output=True,
                          check=False)


def read(path):
    with open(path, "rb") as file:
        return file.read()


def whole(run, folder):
    """How many steps there are, and what is written."""
    done = run(0, 1, "target")
    assert done.returncode == 0, done.stderr
    new = read(folder + "/target")
    assert SECRET in new or b"<html" in new
    os.remove(folder + "/target")
    steps = int(read(folder + ".count"))
    os.remove(folder + ".count")
    return steps, new


def one(run, folder, at, by, old, new):
    """1 if that ended the command."""
    target = folder + "/target"
    if old is not None:
        with open(target, "wb") as file:
            file.write(old)
    done = run(at, by, "target")
    left = set(os.listdir(folder))
    if by == signal.SIGKILL:
        rest = left - {"target"}
        assert len(rest) <= 1, rest
        for name in rest:
            assert name.startswith(".bkoq-"), name
            assert os.stat(os.path.join(folder, name)).st_mode & 0o777 == 0o600, name
    else:
        assert left <= {"target"}, (at, by, left)
    held = read(target) if "target" in left else None
    what = (at, by, done.returncode, done.stderr)
    assert held in (old, new), what
    if done.returncode == 0:
        assert held == new, what
    elif by < 0:
        # Whatever fails is said; a file that cannot be closed has been replaced by then.
        assert b"cannot write target" in done.stderr, what
    for name in left:
        os.remove(os.path.join(folder, name))
    if os.path.exists(folder + ".count"):
        os.remove(folder + ".count")
    return 1 if done.returncode != 0 else 0


def redirected(run, folder, at, new):
    """The link is led elsewhere while the command runs: which of both files is replaced."""
    for name in ("first", "second"):
        with open(os.path.join(folder, name), "wb") as file:
            file.write(b"old")
    os.symlink("first", folder + "/link")
    os.symlink("second", folder + "/other-link")
    done = run(at, 0, "link")
    assert done.returncode == 0, done.stderr
    held = {name: read(os.path.join(folder, name)) for name in ("first", "second")}
    assert sorted(held.values()) == sorted([b"old", new]), at
    for name in os.listdir(folder):
        assert name in ("first", "second", "link"), name
        os.remove(os.path.join(folder, name))
    if os.path.exists(folder + ".count"):
        os.remove(folder + ".count")
    return "first" if held["first"] == new else "second"


if __name__ == "__main__":
    main()
