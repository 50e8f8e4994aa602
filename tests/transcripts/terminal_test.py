#!/usr/bin/env python3
"""Nothing that the command prints of a job file, of an image or of the name of either moves the cursor of
a terminal, turns text around or hides it: every command in every form, with hostile ones of each.

    terminal_test.py BKOQ EXAMPLES_FOLDER [GDB_EXTENSION_FOLDER | few]

With the folder of the gdb extension, also that it writes each text as the command does.
"""

import json
import os
import re
import subprocess
import sys
import tempfile
import zlib

# What a terminal obeys or does not show, written down apart from the command's own table.
HARMFUL = ("\0-\x09\x0b-\x1f\x7f-\x9f\xad\u034f\u061c\u115f\u1160\u17b4\u17b5\u180b-\u180f\u200b-\u200f\u2028-\u202e"
           "\u2060-\u206f\u2800\u3164\ud800-\udfff\ue000-\uf8ff\ufdd0-\ufdef\ufe00-\ufe0f\ufeff\uffa0\ufff0-\ufffb"
           "\U00013430-\U0001343f\U0001bca0-\U0001bca3\U0001d173-\U0001d17a\U000e0000-\U0010ffff"
           + "".join(chr(plane << 16 | 0xFFFE) + chr(plane << 16 | 0xFFFF) for plane in range(17)))
HARM = re.compile("[" + HARMFUL + "]")
COLOUR = re.compile(rb"\x1b\[[0-9;]*m")

# Texts that a job file can hold, with one of each kind of character.
TEXTS = ["\x1b[2J\x1b]0;owned\x07", "a\rb\bc\x7fd", "nel\u0085 csi\u009b31m", "safe\u202egnp.exe\u202c",
         "\u2066isolated\u2069\u061c", "zero\u200bwidth\u200d\ufeff\u2060", "line\u2028para\u2029", "\ue000\ufff9\uffff",
         "\U000e0041tag\U0001fffe", "no\u00adhyphen\u3164\u2800", "plain \u00e9\u4e2d\U0001f600 \"quoted\" \\"]
# Bytes that only an image and the name of a file can hold.
BYTES = [b"\x9b31m", b"\xc0\x9b[2J", b"\xe0\x80\x9b", b"\xf0\x80\x80\x9b", b"\xed\xa0\x80", b"\xf4\x90\x80\x80",
         b"\xe2\x80", b"\xff\xfe", b"caf\xe9", b"\xf8\x80\x80\x80\x9b"]
NAMES = ["\x1b[2Jjob".encode(), "a\nb".encode(), "\u202enosj.boj".encode(), b"\xff\xc0\x9b.job", "\u200b\u2028".encode(),
         "\u009b1m'\"".encode()]

OF_JOB = """
flatten F
flatten F --short
flatten F --json
flatten F --json=plain
show F
show F --color always
show F --layout both
show F --width 40
show F --annotate
show F --annotate --color always
show F --json
show F --json=plain
show F --only BKDDISK
show F --field **
show F --field pszOwner
show F --field pszOwner --why
show F --field pszOwner.\x1b\u202e
show F --field pSourceNodes.\x1b\u202e
show F --field \u202e*\x1b
show F --at #2+0
show F --at #1+0 --why
show F --field pszOwner --why --json
show F --at \u202e
show F --only \x1b[2J
show F --node \u202e
show F --disk \x1b
show F --html
show F --html --show-secrets
diff F E
diff E F
diff E F --color always
diff E F --json
diff E F --why
diff E F --html
diff F E --only \u202e
diff --layouts F
diff --layouts F --json
check F
check F --json
check F E
check F E --json
explain F
explain F --json
explain F --field pszOwner
explain F --field pszOwner --json
explain F --field **
explain F --field ** --json
explain F --field \u202e
explain F --attribute \x1b[2J
"""
OF_IMAGE = """
show F
show F --color always
show F --annotate
show F --annotate --show-secrets --color always
show F --json
show F --json=plain
show F --field **
show F --at #2+0
show F --at #5+1
show F --at file:700
show F --html
show F --salvage
show F --salvage --annotate --show-secrets
show F --salvage --json
show F --salvage --html
diff F I
diff F I --json
diff F I --html
diff F E
check F
flatten F
"""
ALONE = ["\x1b[2J", "--\u202e", "new \x1b", "new backup\u202e", "attributes \u202e", "layout \x1b[2J", "layout BK\u202e",
         "show \x1b/nothing", "show \u202e", "check \x1b", "flatten \u200b -o \u202e/x", "completion \x1b", "help \u202e",
         "show --\x1b=1 x", "flatten --now \x1b x", "show --layout \u202e x", "diff \x1b \u202e"]


class Runs:
    def __init__(self, tool):
        self.tool = tool
        self.count = 0

    def __call__(self, arguments, folder):
        """Runs the command, and finds fault with whatever it prints."""
        done = subprocess.run([self.tool.encode(), *arguments], cwd=folder, capture_output=True, check=False)
        self.count += 1
        assert done.returncode in (0, 1, 2), (arguments, done)
        for stream in (done.stdout, done.stderr):
            if b"always" in arguments:
                stream = COLOUR.sub(b"", stream)
            try:
                text = stream.decode("utf-8")
            except UnicodeDecodeError as problem:
                raise AssertionError((arguments, stream[max(problem.start - 60, 0):problem.end + 20])) from None
            found = HARM.search(text)
            assert not found, (arguments, text[max(found.start() - 60, 0):found.end() + 20])
        is_silent = arguments[0] in (b"diff", "diff") or "-o" in arguments  # without a difference; into a file
        assert is_silent or done.stdout or done.stderr, arguments
        return done


def arguments_of(line, **files):
    return [files.get(word, word.encode()) for word in line.split(" ")]


def replaced(value, texts):
    """The value with its texts, but not those that must be words or times, replaced."""
    if isinstance(value, dict):
        keys = ("kind", "submitTime", "executeTime")
        return {key: each if key in keys else replaced(each, texts) for key, each in value.items()}
    if isinstance(value, list):
        return [replaced(each, texts) for each in value]
    if isinstance(value, str) and not re.match(r"^[0-9]{4}-|^0x|^now$", value):
        return next(texts)
    return value


def in_turn(texts):
    while True:
        yield from texts


def job_files():
    """(name, bytes) of job files that are right, and of ones with mistakes."""
    job = {"kind": "backup", "jobName": "a\u202eb", "owner": TEXTS[0], "sourceNodes": [
        {"kind": "unix", "nodeName": "node", "userName": "x", "password": "y", "disks": [
            {"diskName": text, "diskItems": [{"path": text, "files": TEXTS}]} for text in TEXTS]}]}
    texts = replaced(job, in_turn(TEXTS))
    yield "escaped", json.dumps(texts).encode()
    # Control characters must be written as escapes; all others can be in the file as they are.
    raw = json.dumps(texts, ensure_ascii=False, indent=1)
    yield "raw", raw.encode()
    for text in TEXTS:
        key = json.dumps(text, ensure_ascii=False)
        yield "mistakes", ('{"kind": "backup", %s: 1, "owner": %s, "sourceNodes": [{"kind": %s, %s: {}}], '
                           '"priority": %s, "submitTime": %s, "port": "0x%s"}' %
                           (key, key, key, key, key, key, json.dumps(text)[1:-1])).encode()
        yield "syntax", ("{\"kind\": \"backup\", " + text).encode()
        yield "number", ('{"kind": "backup", "priority": 5' + text + "}").encode()
        yield "kind", ('{"kind": %s}' % key).encode()
    for text in BYTES:
        yield "bytes", b'{"kind": "backup", "owner": "' + text + b'"}'
        yield "bytes", text


def sealed(image):
    """With the checksum that belongs to it."""
    return image[:28] + zlib.crc32(image[:28] + bytes(4) + image[32:]).to_bytes(4, "little") + image[32:]


def images(good):
    """Images made of one whose texts are rows of X."""
    hostile = [text.encode() for text in TEXTS] + BYTES
    for begin in (0, 1):
        chosen = in_turn(hostile[begin:] + hostile[:begin])
        image = re.sub(rb"X{40}", lambda each: next(chosen).ljust(40, b"x")[:40], good)
        yield sealed(image)
        yield image  # with a wrong checksum
    yield sealed(image[:len(image) - 40])
    yield b"BKQ" + b"".join(hostile)
    yield image[:20] + b"".join(hostile) + image[20:]


def forms_of_the_extension(folder, run, image):
    """The gdb extension writes a text as the command does."""
    sys.path.insert(0, folder)
    sys.dont_write_bytecode = True
    from bkoqdebug import text as extension

    texts = [bytes([first]) for first in range(1, 256)] + BYTES
    texts += [("".join(map(chr, range(first, first + 9)))).encode("utf-8", "surrogatepass")
              for first in [*range(1, 0x3000, 9), *range(0xD7F0, 0xE010, 9), *range(0xFD00, 0x10000, 9), 0x1FFF8, 0x1D170,
                            0xE0000, 0xE00FF, 0xFFFFA, 0x10FFF6]]
    with tempfile.TemporaryDirectory() as work:
        path = os.path.join(work, "text.image")
        holes = [each.start() for each in re.finditer(rb"X{40}", image)]
        for begin in range(0, len(texts), len(holes)):
            part = texts[begin:begin + len(holes)]
            changed = image
            for hole, text in zip(holes, part):
                changed = changed[:hole] + text.ljust(40, b"x") + changed[hole + 40:]
            with open(path, "wb") as file:
                file.write(sealed(changed))
            lines = run(["show", path], work).stdout.decode()
            for text in part:
                assert extension.quoted(text.ljust(40, b"x")) in lines, (text, extension.quoted(text), lines)
            values = run(["show", path, "--json"], work).stdout.decode()
            for text in part:
                filled = text.ljust(40, b"x")
                if extension.is_utf8(filled):
                    assert extension.json_quoted(filled) in values, text
    return len(texts)


def main():
    tool, examples = (os.path.abspath(name) for name in sys.argv[1:3])
    # With the sanitizers a start takes as long as twenty otherwise: of the commands for a file with
    # mistakes, one each.
    few = "few" in sys.argv[3:]
    run = Runs(tool)
    example = os.path.join(examples, "nightly-backup.json").encode()
    with tempfile.TemporaryDirectory() as folder:
        # Names in turn, since every line is run for each file.
        names = in_turn(NAMES)
        mistaken = ["check F", "check F --json", "check F E --json", "show F", "show F --json", "explain F", "diff F E"]
        one_each = in_turn(mistaken)
        held = 0
        for name, content in job_files():
            file = next(names)
            with open(os.path.join(folder.encode(), file), "wb") as out:
                out.write(content)
            lines = OF_JOB.strip("\n").splitlines()
            if name not in ("escaped", "raw"):
                lines = [next(one_each)] if few else mistaken
            for line in lines:
                run(arguments_of(line, F=file, E=example), folder.encode())
            if name in ("escaped", "raw"):
                found = run(["show", file, "--field", "pszOwner"], folder.encode())
                assert found.returncode == 0, found
                held += 1
        assert held == 2, held

        rows = {"kind": "backup", "jobName": "X" * 40, "owner": "X" * 40, "sourceNodes": [{"kind": "winNT", "nodeName": "X" * 40, "disks": [
            {"diskName": "X" * 40, "diskItems": [{"path": "X" * 40, "files": ["X" * 40] * 12}] * 12}]}]}
        with open(os.path.join(folder, "rows.json"), "w", encoding="utf-8") as out:
            json.dump(rows, out)
        assert run(["flatten", "rows.json", "--layout", "current", "-o", "rows.image"], folder).returncode == 0
        with open(os.path.join(folder, "rows.image"), "rb") as file:
            good = file.read()
        assert good.count(b"X" * 40) > 100
        taken = 0
        for image in images(good):
            file = next(names)
            with open(os.path.join(folder.encode(), file), "wb") as out:
                out.write(image)
            for line in OF_IMAGE.strip("\n").splitlines():
                done = run(arguments_of(line, F=file, E=example, I=b"rows.image"), folder.encode())
                taken += 1 if line == "show F" and done.returncode == 0 else 0
        assert taken == 2, taken

        for line in ALONE:
            assert run(arguments_of(line), folder).returncode == 2, line
        for moment in ("\x1b[2J", "\u202e"):
            os.environ["SOURCE_DATE_EPOCH"] = moment
            run(["show", example], folder)
        del os.environ["SOURCE_DATE_EPOCH"]
        if len(sys.argv) > 3 and not few:
            texts = forms_of_the_extension(os.path.abspath(sys.argv[3]), run, good)
            print(f"{texts} texts as the gdb extension writes them")
    print(f"{run.count} runs print nothing that a terminal obeys or hides")


if __name__ == "__main__":
    main()
