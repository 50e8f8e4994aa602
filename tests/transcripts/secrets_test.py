#!/usr/bin/env python3
"""Whatever the command prints of a job is the same however long its secrets are, unless they are asked
for: so nothing tells their length.

    secrets_test.py BKOQ EXAMPLES_FOLDER [few]

With "few", of the damaged images only every sixteenth: under the sanitizers all take minutes.
"""

import os
import re
import struct
import subprocess
import sys
import tempfile
import zlib

COMMANDS = """
flatten job.json
flatten job.json --json
show job.json
show job.json --layout both
show job.json --width 60
show job.json --annotate
show job.json --annotate --layout previous
show job.json --json
show job.json --json=plain
show job.json --only BKDDISK
show job.json --field pSourceNodes
show job.json --field **.psz*P*
show job.json --field **.psz*P* --json
show job.json --html
show job.image
show job.image --annotate
show job.image --json
show job.image --json=plain
show job.image --html
show job.image --salvage
show job.image --salvage --annotate
diff job.json examples/verify.json
diff job.json examples/verify.json --json
diff job.json examples/verify.json --html
diff --layouts job.json
diff --layouts job.json --json
diff job.image examples/verify.json
"""
OF_DAMAGED = ["show bad.image", "show bad.image --salvage", "show bad.image --salvage --annotate",
              "show bad.image --salvage --json", "show bad.image --salvage --html",
              "diff bad.image examples/verify.json"]
SECRETS = re.compile(r'("(?:password|sessionPassword|encryptionKey|userPassword|dbPassword|diskPassword2)"\s*:\s*)"[^"]+"')


def seal(data):
    """With the size and the checksum that fit."""
    data = bytearray(data)
    struct.pack_into("<I", data, 16, len(data))
    struct.pack_into("<I", data, 28, 0)
    struct.pack_into("<I", data, 28, zlib.crc32(data))
    return bytes(data)


def damages(image, blocks):
    """Each (what it is, the damaged image), the same whatever the lengths of texts are. `blocks` are
    (place, size, whether it holds records)."""
    yield "end cut off", image[:-37]
    yield "end cut off, sealed", seal(image[:-40])
    yield "something added", image + b"more"
    for number, (place, size, hasRecords) in enumerate(blocks):
        if number % 4 == 0:
            yield f"cut in block {number}", image[:place + 1]
        if not hasRecords:
            # Its end is lost.
            end = place + size - 1
            yield f"no end of block {number}", image[:end] + b"X" * (-size % 4 + 1) + image[place + size + -size % 4:]
            continue
        for at in range(place, place + size, 4):
            word, = struct.unpack_from("<I", image, at)
            if word:
                # Numbers that are changed may make numbers of offsets, which then tell lengths.
                isPointer = 32 <= word < len(image)
                value = (0, 7)[at // 4 % 2] if isPointer else word + 1 & 0xFFFFFFFF
                bad = image[:at] + struct.pack("<I", value) + image[at + 4:]
                what = "offset" if isPointer else "number"
                yield f"{what} at block {number}+{at - place}", bad if at % 8 else seal(bad)


def of_damaged(run, folder, secret, isFew):
    """What is printed of damaged images, by damage and command."""
    with open(os.path.join(folder, "job.image"), "rb") as file:
        image = file.read()
    annotated = run("show job.image --annotate --show-secrets").stdout.decode()
    blocks = [(int(place), int(size), ": " not in what or " text" not in what)
              for what, size, place in re.findall(r"^#\d+  (.*), (\d+) bytes?, file (\d+)$", annotated, re.M)]
    assert len(blocks) > 40 and sum(not has for _, _, has in blocks) > 25, blocks
    printed = {}
    for number, (what, bad) in enumerate(damages(image, blocks)):
        if isFew and number % 16 != 0:
            continue
        with open(os.path.join(folder, "bad.image"), "wb") as file:
            file.write(bad)
        # All of them of some, of the others what shows most.
        for line in OF_DAMAGED if number % 16 == 0 else OF_DAMAGED[what.startswith("number"):2]:
            done = run(line)
            assert done.returncode in (0, 1, 2), (what, line, done.stderr)
            if len(secret) > 1:
                assert secret.encode() not in done.stdout + done.stderr, (what, line, done.stdout)
            if what.startswith("number"):
                continue
            # What is missing is of no known length.
            hide = lambda text: re.sub(rb"cut short by [0-9,]+ bytes", b"cut short", text)
            printed[what, line] = (done.returncode, hide(done.stdout), hide(done.stderr))
    return printed


def main():
    tool, examples = (os.path.abspath(name) for name in sys.argv[1:3])
    printed = []
    with open(os.path.join(examples, "nightly-backup.json"), encoding="utf-8") as file:
        nightly = file.read()
    assert len(SECRETS.findall(nightly)) >= 4, SECRETS.findall(nightly)
    for secret in ("x", "a secret of more than sixty characters, so that any line would be folded"):
        with tempfile.TemporaryDirectory() as folder:
            os.symlink(examples, os.path.join(folder, "examples"))
            with open(os.path.join(folder, "job.json"), "w", encoding="utf-8") as file:
                file.write(SECRETS.sub(rf'\1"{secret}"', nightly))
            run = lambda line: subprocess.run([tool, *line.split()], cwd=folder, capture_output=True, check=False)
            assert run("flatten job.json --layout current -o job.image").returncode == 0
            lines = COMMANDS.strip().splitlines()
            # A byte in each of the first blocks, or after its end.
            lines += [f"show job.image --at file:{place}" for place in range(0, 2500, 61)]
            lines += [f"show job.json --at #{block}+{1 if block % 2 else 70}" for block in range(1, 40)]
            outputs = {}
            for line in lines:
                done = run(line)
                assert line.startswith("show job.json --at") or done.returncode in (0, 1), (line, done.stderr)
                outputs[line] = (done.returncode, done.stdout, done.stderr)
                if len(secret) > 1:
                    assert secret.encode() not in done.stdout + done.stderr, line
            assert secret.encode() in run("show job.json --show-secrets --field **.pszPassword").stdout
            outputs.update(of_damaged(run, folder, secret, sys.argv[3:] == ["few"]))
            printed.append(outputs)
    assert len(printed[0]) == len(printed[1])
    told = [line for line, output in printed[0].items() if output != printed[1][line]]
    for line in told:
        print(line, *(f"  {stream.decode()}" for output in printed for stream in output[line][1:]), sep="\n")
    assert not told, told
    print(f"{len(printed[0])} outputs tell no length")


if __name__ == "__main__":
    main()
