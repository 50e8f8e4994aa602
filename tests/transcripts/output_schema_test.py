#!/usr/bin/env python3
"""Whatever a command prints with --json is as docs/json-output.schema.json says, and no form of it
is left out here.

    output_schema_test.py BKOQ SCHEMA EXAMPLES_FOLDER
"""

import json
import os
import re
import subprocess
import sys
import tempfile

import jsonschema

# Whatever stands for an image is made before; {jobs} is the folder with the examples.
COMMANDS = """
show {jobs}/nightly-backup.json --json
show {jobs}/nightly-backup.json --json --layout previous --show-secrets
show {jobs}/nightly-backup.json --json --layout both
show {jobs}/nightly-backup.json --json --depth 2
show {jobs}/nightly-backup.json --json --only BKDDISK
show {jobs}/nightly-backup.json --json --field pSourceNodes[0].pszNodeName
show {jobs}/nightly-backup.json --json --field pSourceNodes[0]
show {jobs}/nightly-backup.json --json --field pSourceNodes
show {jobs}/nightly-backup.json --json --field stFax
show {jobs}/nightly-backup.json --json --field pSourceNodes[*].pMedia[*].pszDiskName
show {jobs}/nightly-backup.json --json --field pSourceNodes[*]
show {jobs}/nightly-backup.json --json --field **.pMedia
show {jobs}/nightly-backup.json --json --field st*
show {jobs}/nightly-backup.json --json --at #2+16
show {jobs}/nightly-backup.json --json --at #3+0
show {jobs}/nightly-backup.json --json --layout both --at 4
show {jobs}/nightly-backup.json --json=plain
show {jobs}/nightly-backup.json --json=plain --layout both
show {jobs}/nightly-backup.json --json=plain --only BKDDISK
show {jobs}/nightly-backup.json --json=plain --depth 1
show {jobs}/nightly-backup.json --json=plain --field pSourceNodes[0].pszNodeName
show {jobs}/nightly-backup.json --json=plain --field pSourceNodes
show {jobs}/nightly-backup.json --json=plain --field pSourceNodes[0]
show {jobs}/nightly-backup.json --json=plain --field stFax
show {jobs}/nightly-backup.json --json=plain --field pSourceNodes[*].pMedia
show {jobs}/nightly-backup.json --json=plain --field **.pszNodeName
show nightly.image --json --at file:16
show nightly.image --json --at file:332
show damaged.image --json --salvage
show damaged.image --json=plain --salvage
show foreign.image --json
flatten {jobs}/restore.json --json
flatten {jobs}/restore.json --json=plain
diff --layouts {jobs}/nightly-backup.json --json
diff {jobs}/verify.json {jobs}/compare.json --json
diff nightly.image moved.image --json
layout --json
layout --json --previous
layout --json --compare
check {jobs}/restore.json --json
check bad.json --json
check bad.json {jobs}/restore.json missing.json --json
attributes --json
show {jobs}/nightly-backup.json --json --why --field pSourceNodes[0].ulNodeOptions
show {jobs}/nightly-backup.json --json --why --field pSourceNodes[*].pMedia[*].pszDiskName
show {jobs}/nightly-backup.json --json=plain --why --field pSourceNodes[2] --layout both
show {jobs}/nightly-backup.json --json --why --at #2+16
diff {jobs}/verify.json {jobs}/compare.json --json --why
diff nightly.image moved.json --json --why
explain {jobs}/nightly-backup.json --json
explain {jobs}/nightly-backup.json --field **.ulOptions --layout both --json
explain {jobs}/nightly-backup.json --json --layout previous
explain {jobs}/nightly-backup.json --field pszHost --layout both --json
"""


def forms_of(run):
    """Every (command, form of JSON) that the command's own help has."""
    listed = re.search(r"^Commands:\n(.*?)\n\n", run("--help").stdout, re.M | re.S)
    commands = re.findall(r"^  ([a-z]\S*) ", listed.group(1), re.M)
    assert len(commands) > 8 and "show" in commands, commands
    for command in commands:
        options = run(command, "--help").stdout
        described = re.search(r"^  (?:-\w, )?--json\b.*\n(?: {10,}.*\n)*", options, re.M)
        if described:
            yield from ((command, form) for form in {"--json", *re.findall(r"--json=\w+", described.group())})


def main():
    tool, schema_file, jobs = (os.path.abspath(name) for name in sys.argv[1:])
    with open(schema_file, encoding="utf-8") as file:
        schema = json.load(file)
    jsonschema.Draft202012Validator.check_schema(schema)
    validator = jsonschema.Draft202012Validator(schema)
    seen = set()
    with tempfile.TemporaryDirectory() as folder:
        run = lambda *arguments: subprocess.run([tool, *arguments], cwd=folder, text=True,
                                                capture_output=True, check=False)
        run("flatten", jobs + "/nightly-backup.json", "-o", "nightly.image")
        run("flatten", jobs + "/nightly-backup.json", "--layout", "previous", "-o", "old.image")
        with open(jobs + "/nightly-backup.json", encoding="utf-8") as file:
            text = file.read()
        with open(folder + "/moved.json", "w", encoding="utf-8") as file:
            file.write(text.replace('"sourceNodes": [',
                                    '"sourceNodes": [{"kind": "winNT", "nodeName": "new"},'))
        run("flatten", "moved.json", "-o", "moved.image")
        with open(folder + "/nightly.image", "rb") as file:
            data = file.read()
        with open(folder + "/damaged.image", "wb") as file:
            file.write(data[:len(data) * 2 // 3])
        # A session end time of the previous layout where the current one has reserved bytes.
        sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
        with open(folder + "/old.image", "rb") as file:
            old = bytearray(file.read())
        old[12] = 1
        with open(folder + "/foreign.image", "wb") as file:
            file.write(sealed(old))
        checked = {(line.split()[0], word) for line in COMMANDS.strip().splitlines() for word in line.split()}
        missing = [" ".join(form) for form in forms_of(run) if form not in checked]
        assert not missing, f"not compared with the schema: {missing}"
        with open(folder + "/bad.json", "w", encoding="utf-8") as file:
            file.write('{"kind": "job", "onwer": 7}')
        for line in COMMANDS.strip().splitlines():
            done = run(*line.format(jobs=jobs).split())
            document = json.loads(done.stdout)
            error = jsonschema.exceptions.best_match(validator.iter_errors(document))
            if error is not None:
                sys.exit(f"bkoq {line}: {error.json_path}: {error.message[:400]}")
            seen.add(document["format"])
            if "--json=plain" in line:
                assert "offset" not in done.stdout, line
    expected = {name for name in schema["$defs"] if name.startswith("bkoq-")}
    assert seen == expected, expected ^ seen


def sealed(image):
    import zlib
    image[28:32] = zlib.crc32(bytes(image[:28]) + bytes(4) + bytes(image[32:])).to_bytes(4, "little")
    return bytes(image)


if __name__ == "__main__":
    main()
