#!/usr/bin/env python3
"""A password of its own in every attribute that can hold one, in jobs of every kind that give all there is:
nothing that the command prints or leaves behind holds any of them, or a part of one, unless they are asked
for; and all of it is the same however long they are.

    every_secret_test.py BKOQ [few]

With `few`, jobs of some kinds only.
"""

import itertools
import json
import os
import re
import subprocess
import sys
import tempfile

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "page"))
import pages  # noqa: E402

KEY = re.compile(r"\w*(assword|PW2?|encrypt(ion)?Key)")
GIVEN = re.compile(r'^(\s*)// ("\w+": )', re.M)
# Each piece of a password that can be told from the others begins so.
PIECE = re.compile(rb"S[a-e]\d{3}")
COMMANDS = """
check job.json
check job.json --json
check bad.json
explain job.json
explain job.json --json
explain job.json --layout previous
explain job.json --field **
explain job.json --attribute **.password
flatten job.json
flatten job.json --json
show job.json
show job.json --layout previous
show job.json --annotate
show job.json --annotate --layout previous
show job.json --json --layout both
show job.json --json=plain
show job.json --why
show job.json --html
show job.json --html -o page.html
show job.image
show job.image --annotate
show job.image --json
show cut.image --salvage
show cut.image --salvage --annotate
show cut.image --salvage --html
diff job.json other.json
diff job.json other.json --json --why
diff job.json other.json --html
diff --layouts job.json
diff job.image other.json
"""


def passwords(length):
    """Different ones, with all that gives texts apart."""
    for number in itertools.count(1):
        yield 'Sa{0:03}:Sb{0:03}"Sc{0:03}\nSd{0:03}\\Se{0:03}: '.format(number) + "z" * length


def written(file, disk_type, length):
    """The job file with all that is commented out and a password wherever one can be; and which."""
    texts = passwords(length)
    keys = []

    def given(match):
        if not KEY.fullmatch(match[2]):
            return match[0]
        keys.append(match[2])
        return f"{match[1]}{json.dumps(next(texts))}"

    text = GIVEN.sub(r"\1\2", file)
    text = re.sub(r'("(?:diskType|fsType)": )\d+', rf"\g<1>{disk_type}", text)
    # Some are kept behind these.
    text = re.sub(r'("(?:user|dbUser)": )""', r'\1"x"', text)
    return re.sub(r'("(\w+)": )""', given, text), keys


def main():
    tool = os.path.abspath(sys.argv[1])
    reference = json.loads(subprocess.run([tool, "attributes", "--json"], capture_output=True, check=True).stdout)
    wanted = {row["key"] for each in reference["objects"] for row in each["attributes"]
              if KEY.fullmatch(row["key"]) and row["type"] == "text"}
    kinds = [each["kind"] for each in reference["objects"] if each["family"] == "job"]
    assert len(kinds) == 14 and len(wanted) > 8, (kinds, wanted)
    few = sys.argv[2:] == ["few"]
    outputs, seen = 0, set()
    for kind in kinds[::4] if few else kinds:
        file = subprocess.run([tool, "new", kind, "--all"], capture_output=True, check=True, text=True).stdout
        for disk_type in (22,) if few else (0, 22):
            printed = []
            for length in (0, 290):
                with tempfile.TemporaryDirectory() as folder:
                    text, keys = written(file, disk_type, length)
                    seen.update(keys)
                    other = text.replace('"operator"', '"root"').replace("Sa", "Sb")
                    for name, content in (("job.json", text), ("other.json", other), ("bad.json", text[:-3])):
                        with open(os.path.join(folder, name), "w", encoding="utf-8") as job:
                            job.write(content)
                    run = lambda line: subprocess.run([tool, *line.split()], cwd=folder, capture_output=True,
                                                      check=False, env={"SOURCE_DATE_EPOCH": "1078174800"})
                    done = run("flatten job.json --layout current -o job.image")
                    assert done.returncode == 0, (kind, done.stderr, text)
                    image = open(os.path.join(folder, "job.image"), "rb").read()
                    assert PIECE.search(image), kind
                    open(os.path.join(folder, "cut.image"), "wb").write(image[:-1])
                    for line in COMMANDS.strip().splitlines():
                        done = run(line)
                        assert done.returncode in (0, 1, 2), (kind, line, done.stderr)
                        told = pages.decoded(done.stdout) + done.stderr
                        assert not PIECE.search(told), (kind, line, PIECE.findall(told), told[:2000])
                        printed.append((line, done.returncode, done.stdout, done.stderr))
                        outputs += 1
                    left = set(os.listdir(folder)) - {"job.json", "other.json", "bad.json", "job.image", "cut.image"}
                    assert left == {"page.html"}, left
                    page = pages.decoded(open(os.path.join(folder, "page.html"), "rb").read())
                    assert not PIECE.search(page), kind
                    shown = run("show job.json --annotate --show-secrets").stdout
                    assert PIECE.search(shown), kind
            half = len(printed) // 2
            for short, long in zip(printed[:half], printed[half:], strict=True):
                assert short == long, (kind, disk_type, *short, *long[2:])
    assert seen <= wanted if few else seen == wanted, seen ^ wanted
    print(f"{outputs} outputs hold no password and tell no length")


if __name__ == "__main__":
    main()
