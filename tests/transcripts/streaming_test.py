#!/usr/bin/env python3
"""What the command prints of an image never lies in memory as a whole: the command takes no more
than the image and 32 MB, however long a text is and however many items there are; and what is not
read any more is not printed either.

    streaming_test.py BKOQ [ITEMS [MEGABYTES_OF_TEXT]]
"""

import json
import multiprocessing
import os
import shutil
import signal
import struct
import subprocess
import sys
import tempfile
import time
import zlib

ROOM = 32 * 1024 * 1024
FORMS = [[], ["--annotate"], ["--json"], ["--json=plain"], ["--width", "80"],
         ["--only", "BKDISKITEM"], ["--field", "**.pszPath"], ["--field", "**.pszPath", "--json"],
         ["--html"], ["--salvage"]]


def image(blocks, size):
    """Of blocks in their order; the size is that of all of them."""
    header = b"BKQIMAGE" + struct.pack("<5I", 1, 1, 32 + size, 32, len(blocks))
    body = b"".join(block + bytes(-len(block) % 4) for block in blocks)
    return header + struct.pack("<I", zlib.crc32(header + bytes(4) + body)) + body


def record(size, **words):
    data = bytearray(size)
    for at, value in words.items():
        struct.pack_into("<I", data, int(at[1:]), value)
    return bytes(data)


def many_items(count):
    """A backup of one disk with so many items."""
    job, node, disk = 32, 32 + 292, 32 + 292 + 100
    items = disk + 52
    texts = items + 32 * count
    blocks = [record(292, _4=1, _12=1, _16=node), record(100, _0=9, _36=1, _40=disk),
              record(52, _16=count, _20=items),
              b"".join(struct.pack("<I28x", texts + 12 * i) for i in range(count))]
    blocks += [b"/f%09d" % i + b"\0" for i in range(count)]
    return image(blocks, texts + 12 * count - job)


def long_text(size):
    """A job with a comment of so many bytes, of every kind."""
    piece = "plain text, \"quotes\", \\, \u00e9\u4e2d, \u202e\u200b\n\t".encode() + b"\xff\x01"
    text = (piece * (size // len(piece) + 1))[:size] + b"\0"
    return image([record(292, _4=1, _36=32 + 292), text], 292 + len(text) + -len(text) % 4)


def change(path):
    """Makes a byte of the last text another, so that what is long differs."""
    with open(path, "rb") as file:
        data = bytearray(file.read())
    at = len(data) - 1
    while data[at - 1] == 0:
        at -= 1
    data[at - 1] ^= 1
    data[28:32] = bytes(4)
    data[28:32] = struct.pack("<I", zlib.crc32(data))
    with open(path, "wb") as file:
        file.write(data)


DAMAGES = {
    "cut": lambda data: data[:-1001],
    "a changed byte": lambda data: data[:len(data) // 2] + bytes([data[len(data) // 2] ^ 1]) + data[len(data) // 2 + 1:],
    "4 bytes put in": lambda data: data[:400] + bytes(4) + data[400:],
    # Of source nodes, more than there can be.
    "a wrong count": lambda data: data[:44] + b"\xf0\xff\xff\xff" + data[48:],
}


def damage(path, good, what):
    with open(good, "rb") as file:
        data = DAMAGES[what](file.read())
    with open(path, "wb") as file:
        file.write(data)


def write(path, make, *arguments):
    with open(path, "wb") as file:
        file.write(make(*arguments))


def peak_of(tool, arguments):
    """The most memory that the command takes, and what it ends with. The system counts what this
    process takes too, as the command begins as a copy of it; so images are made elsewhere."""
    with subprocess.Popen([tool, *arguments], stdout=subprocess.DEVNULL,
                          stderr=subprocess.DEVNULL) as process:
        _, status, usage = os.wait4(process.pid, 0)
        process.returncode = os.waitstatus_to_exitcode(status)
    return usage.ru_maxrss * 1024, process.returncode


def seconds_of(process):
    """The processor's time that a process has taken."""
    with open(f"/proc/{process}/stat", encoding="utf-8") as file:
        fields = file.read().rpartition(")")[2].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


def stop_reading(tool, arguments):
    """As `head` does: once the reader has gone, the command ends at once and in silence."""
    with subprocess.Popen([tool, *arguments], stdout=subprocess.PIPE, stderr=subprocess.PIPE) as process:
        assert len(process.stdout.read(4)) == 4
        before = seconds_of(process.pid)
        process.stdout.close()
        said = process.stderr.read()
        _, status, usage = os.wait4(process.pid, 0)
        process.returncode = os.waitstatus_to_exitcode(status)
        more = usage.ru_utime + usage.ru_stime - before
    assert process.returncode == -signal.SIGPIPE and said == b"", (arguments, process.returncode, said)
    assert more < 0.25, (arguments, more)


def job_file(items, letter="f"):
    """A job file with so many items, and a text of 1 MB in front of them."""
    return json.dumps({"kind": "backup", "jobName": "large", "comments": "c" * 1000000, "sourceNodes": [
        {"kind": "winNT", "nodeName": "n", "disks": [
            {"diskName": "d", "diskItems": [{"path": f"/{letter}{i:09}"} for i in range(items)]}]}]}).encode()


def main():
    tool = os.path.abspath(sys.argv[1])
    items = int(sys.argv[2]) if len(sys.argv) > 2 else 60000
    megabytes = int(sys.argv[3]) if len(sys.argv) > 3 else 20
    with tempfile.TemporaryDirectory() as folder:
        job, changed = (os.path.join(folder, name) for name in ("large.json", "changed.json"))
        for name, letter in ((job, "f"), (changed, "g")):
            maker = multiprocessing.Process(target=write, args=(name, job_file, items, letter))
            maker.start()
            maker.join()
        for form in FORMS:
            if form != ["--salvage"]:
                stop_reading(tool, ["show", job, *form])
        for form in ([], ["--json"]):
            stop_reading(tool, ["flatten", job, *form])
        for form in (["--json"], ["--html"], []):
            stop_reading(tool, ["diff", job, changed, *form])
        path = os.path.join(folder, "large.image")
        for what, make, amount in (("items", many_items, items),
                                   ("text", long_text, megabytes << 20)):
            maker = multiprocessing.Process(target=write, args=(path, make, amount))
            maker.start()
            maker.join()
            assert maker.exitcode == 0
            size = os.path.getsize(path)
            for form in FORMS:
                if what == "text" and "**.pszPath" in form or what == "text" and "--only" in form:
                    continue
                start = time.monotonic()
                peak, status = peak_of(tool, ["show", path, *form])
                print(f"{what} {' '.join(form) or 'text'}: image {size >> 20} MB, "
                      f"peak {peak >> 20} MB, {time.monotonic() - start:.1f} s")
                assert status == 0, (what, form, status)
                assert peak <= size + ROOM, (what, form, peak, size)
                stop_reading(tool, ["show", path, *form])
            # Of a damaged image everything that can be read is made a tree in its own bytes.
            other = os.path.join(folder, "other.image")
            for kind in DAMAGES:
                maker = multiprocessing.Process(target=damage, args=(other, path, kind))
                maker.start()
                maker.join()
                peak, status = peak_of(tool, ["show", other, "--salvage", "--only", "BKQJDATATRANSFER"])
                print(f"{what}, {kind}: image {size >> 20} MB, peak {peak >> 20} MB")
                assert status == 2, (what, kind, status)
                assert peak <= size + ROOM, (what, kind, peak, size)
            with open(path, "rb") as file, open(other, "wb") as copy:
                shutil.copyfileobj(file, copy)
            maker = multiprocessing.Process(target=change, args=(other,))
            maker.start()
            maker.join()
            for form in ([], ["--json"], ["--html"]):
                start = time.monotonic()
                peak, status = peak_of(tool, ["diff", path, other, *form])
                print(f"{what} diff {' '.join(form)}: two images of {size >> 20} MB, "
                      f"peak {peak >> 20} MB, {time.monotonic() - start:.1f} s")
                assert status == 1 and peak <= 2 * size + ROOM, (what, form, status, peak)


if __name__ == "__main__":
    main()
