#!/usr/bin/env python3
"""Each mutant that scripts/mutate_survivors.txt gives a reason for is still made of the sources."""

import pathlib
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "scripts"))

from mutation.mutants import mutants_of_file  # noqa: E402


def main():
    made, wrong = {}, []
    for line in (ROOT / "scripts/mutate_survivors.txt").read_text().splitlines():
        if not line or line.startswith("#"):
            continue
        name, code, change, _ = (part.strip() for part in line.split(" :: ", 3))
        if name not in made:
            made[name] = {mutant.key() for mutant in mutants_of_file(pathlib.Path(name))}
        if (name, code, change) not in made[name]:
            wrong.append(line)
    for line in wrong:
        print(f"no such mutant: {line}")
    return 1 if wrong or not made else 0


if __name__ == "__main__":
    sys.exit(main())
