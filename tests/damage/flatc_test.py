#!/usr/bin/env python3
"""Against `flatc --annotate` on the same kinds of damage, `bkoq show --salvage` shows at least as much.

The same job is written by both: as an image, and as a FlatBuffer. Both are cut at the same parts of
their lengths, both get bits flipped, words overwritten and bytes put in or taken out at as many places
over all of them, and both are passed off as something else. What counts is how many of the texts that are still in the bytes are shown, and that the
user is told that something is wrong.

    flatc_test.py BKOQ FLATC SCHEMA [PLACES]
"""

import json
import os
import re
import subprocess
import sys
import tempfile

PLACES = 40


def job_of(nodes=3, disks=2, items=4):
    return [(f"node-{n}", [(f"disk-{n}-{d}", f"password-{n}-{d}", [f"/data/{n}/{d}/item-{i}" for i in range(items)])
                           for d in range(disks)]) for n in range(nodes)]


def texts_of(job):
    yield "operator-of-all"
    for node, disks in job:
        yield node
        for disk, password, items in disks:
            yield disk
            yield password
            yield from items


def as_job_file(job):
    return {"kind": "backup", "jobName": "x", "owner": "operator-of-all", "sourceNodes": [
        {"kind": "winNT", "nodeName": node, "disks": [
            {"diskName": disk, "password": password, "diskItems": [{"path": path} for path in items]}
            for disk, password, items in disks]} for node, disks in job]}


def as_flatbuffer(job):
    return {"job_kind": 1, "owner": "operator-of-all", "nodes": [
        {"node_name": node, "node_type": 9, "disks": [
            {"disk_name": disk, "password": password, "items": [{"path": path} for path in items]}
            for disk, password, items in disks]} for node, disks in job]}


def damages(size, places):
    """Each (kind, what it does to the bytes); for both forms in the same parts of their length."""
    parts = [(2 * i + 1) / (2 * places) for i in range(places)]
    for part in parts:
        at = int(size * part)
        yield "cut", lambda data, at=at: data[:at]
        for bit in (0, 6):
            yield "flipped bit", lambda data, at=at, bit=bit: \
                data[:at] + bytes([data[at] ^ 1 << bit]) + data[at + 1:]
        yield "overwritten word", lambda data, at=at: data[:at & ~3] + b"\xff" * 4 + data[(at & ~3) + 4:]
        yield "zeroed 32 bytes", lambda data, at=at: data[:at & ~31] + bytes(32) + data[(at & ~31) + 32:]
        yield "4 bytes put in", lambda data, at=at: data[:at & ~3] + bytes(4) + data[at & ~3:]
        yield "4 bytes taken out", lambda data, at=at: data[:at & ~3] + data[(at & ~3) + 4:]


# Both show a text in pieces, some bytes a line; and both show bytes that nothing leads to.
PIECES = {"bkoq": [r'^ +\d+  (?:[0-9a-f]{2} )+ .*?"((?:[^"\\\n]|\\.)*)"', r"^ +\d+  (?:[0-9a-f]{2} )+ +(\S{1,16})$"],
          "flatc": [r"^  \+0x\w+ \| [0-9A-F ]+\| [^|\n]*\| ([^|\n]*?) *(?:\||$)"]}


def characters(tool, output):
    """The texts that are shown, put together again."""
    return "\n".join([output] + ["".join(re.findall(pattern, output, re.M)) for pattern in PIECES[tool]])


class Bkoq:
    name = "bkoq"

    @staticmethod
    def mislabelled(data):
        return data[:12] + bytes([3 - data[12]]) + data[13:]

    def __init__(self, tool, folder, job):
        self.tool, self.folder = tool, folder
        with open(os.path.join(folder, "job.json"), "w", encoding="utf-8") as file:
            json.dump(as_job_file(job), file)
        subprocess.run([tool, "flatten", "job.json", "--layout", "current", "-o", "job.image"],
                       cwd=folder, check=True)
        with open(os.path.join(folder, "job.image"), "rb") as file:
            self.data = file.read()

    def shown(self, data):
        with open(os.path.join(self.folder, "bad.image"), "wb") as file:
            file.write(data)
        done = subprocess.run([self.tool, "show", "bad.image", "--salvage", "--annotate", "--show-secrets"],
                              cwd=self.folder, capture_output=True, timeout=20, check=False)
        assert done.returncode in (0, 2), (done.returncode, done.stderr)
        return done.stdout.decode(), done.returncode == 2 and bool(done.stderr)


class Flatc:
    name = "flatc"

    @staticmethod
    def mislabelled(data):
        return data[:4] + b"ELSE" + data[8:]

    def __init__(self, tool, folder, job, schema):
        self.tool, self.folder, self.schema = tool, folder, schema
        with open(os.path.join(folder, "flat.json"), "w", encoding="utf-8") as file:
            json.dump(as_flatbuffer(job), file)
        subprocess.run([tool, "-b", schema, "flat.json"], cwd=folder, check=True)
        with open(os.path.join(folder, "flat.bin"), "rb") as file:
            self.data = file.read()

    def shown(self, data):
        path, printed = (os.path.join(self.folder, "bad." + end) for end in ("bin", "afb"))
        if os.path.exists(printed):
            os.remove(printed)
        with open(path, "wb") as file:
            file.write(data)
        try:
            done = subprocess.run([self.tool, "--annotate", self.schema, "bad.bin"], cwd=self.folder,
                                  capture_output=True, timeout=20, check=False)
        except subprocess.TimeoutExpired:
            return "", False
        if not os.path.exists(printed):
            return "", done.returncode > 0
        with open(printed, encoding="utf-8", errors="replace") as file:
            output = file.read()
        return output, done.returncode != 0 or "ERROR" in output or "WARN" in output


def main():
    bkoq, flatc, schema = (os.path.abspath(name) for name in sys.argv[1:4])
    places = int(sys.argv[4]) if len(sys.argv) > 4 else PLACES
    job = job_of()
    texts = list(texts_of(job))
    results = {}
    with tempfile.TemporaryDirectory() as folder:
        tools = [Bkoq(bkoq, folder, job), Flatc(flatc, folder, job, schema)]
        for number, tool in enumerate(tools):
            output, isWarned = tool.shown(tool.data)
            whole = characters(tool.name, output)
            assert all(text in whole for text in texts), (tool.name, [t for t in texts if t not in whole])
            assert not isWarned, (tool.name, output)
            for kind, damage in [*damages(len(tool.data), places), ("mislabelled", tool.mislabelled)]:
                data = damage(tool.data)
                if data == tool.data:
                    continue
                output, isWarned = tool.shown(data)
                shown = characters(tool.name, output)
                left = [text for text in texts if text.encode() in data]
                counts = results.setdefault(kind, [[0, 0, 0, 0], [0, 0, 0, 0]])[number]
                for place, more in enumerate((1, len(left), sum(text in shown for text in left), isWarned)):
                    counts[place] += more
    print(f"{'of the texts that are left, shown; and how often a user is told':64}"
          + "".join(f"{tool.name:>20}" for tool in tools))
    worse = []
    for kind, both in results.items():
        parts = [(shown / left, told / count) for count, left, shown, told in both]
        columns = [f"{100 * shown:7.1f} % {100 * told:7.1f} %" for shown, told in parts]
        print(f"{kind:64}" + "".join(f"{column:>20}" for column in columns))
        if parts[0][0] < parts[1][0] or parts[0][1] < 1:
            worse.append(kind)
    assert not worse, worse


if __name__ == "__main__":
    main()
