#!/usr/bin/env python3
"""Whatever the command prints of a job is the same however long its secrets are, unless they are asked
for: so nothing tells their length.

    secrets_test.py BKOQ EXAMPLES_FOLDER
"""

import os
import re
import subprocess
import sys
import tempfile

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
SECRETS = re.compile(r'("(?:password|sessionPassword|encryptionKey|userPassword|dbPassword|diskPassword2)"\s*:\s*)"[^"]+"')


def main():
    tool, examples = (os.path.abspath(name) for name in sys.argv[1:])
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
            lines += [f"show job.json --at #{block}+{1 if block % 2 else 70}" for block in range(1, 40)]
            outputs = {}
            for line in lines:
                done = run(line)
                assert line.startswith("show job.json --at") or done.returncode in (0, 1), (line, done.stderr)
                outputs[line] = (done.returncode, done.stdout, done.stderr)
                if len(secret) > 1:
                    assert secret.encode() not in done.stdout + done.stderr, line
            assert secret.encode() in run("show job.json --show-secrets --field **.pszPassword").stdout
            printed.append(outputs)
    told = [line for line, output in printed[0].items() if output != printed[1][line]]
    assert not told, told
    print(f"{len(printed[0])} outputs tell no length")


if __name__ == "__main__":
    main()
