#!/usr/bin/env python3
"""The manual page names every environment variable that the command or a library under it reads, and
no other.

    environment_test.py BKOQ SOURCES
"""

import glob
import os
import re
import subprocess
import sys


def main():
    tool, sources = sys.argv[1:]
    read = set()
    files = [path for folder in ("tools", "kit", "model", "transfer", "transfer_old", "rw")
             for path in glob.glob(os.path.join(sources, folder, "**", "*.*"), recursive=True)
             if path.endswith((".cpp", ".h", ".c")) and not path.endswith("_test.cpp")]
    assert len(files) > 100, len(files)
    for path in files:
        with open(path, encoding="utf-8") as file:
            text = file.read()
        names = re.findall(r'\bgetenv\(\s*"(\w+)"', text)
        # Nothing is read by a name that is put together.
        assert len(names) == len(re.findall(r"\bgetenv\b", text)), path
        assert not re.search(r"\benviron\b", text), path
        read.update(names)
    page = subprocess.run([tool, "man"], capture_output=True, text=True, check=True).stdout
    section = page.split(".SH ENVIRONMENT\n")[1].split(".SH ")[0]
    named = set(re.findall(r"^\.TP\n\.B (\w+)$", section, re.M))
    assert "TZ" in read and named == read, (sorted(named), sorted(read))


if __name__ == "__main__":
    main()
