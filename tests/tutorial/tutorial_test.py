#!/usr/bin/env python3
"""Does what the tutorial says, with what is installed: writes its files, runs its commands in the order
of the page and compares what they print with what the page says.

    tutorial_test.py PAGE            in a system where all of it is installed
    tutorial_test.py PAGE PREFIX     with an installation below a folder

A block after "<!-- file: NAME -->" is a file; one of kind "console" is a session, in which a line
"$ COMMAND" runs a command in the shell, "(gdb) COMMAND" one in the gdb that the line before started, and
"..." stands for any lines. A block after "<!-- not run: WHY -->" is left out; of one after
"<!-- fails -->" the command must fail.
"""

import os
import re
import subprocess
import sys
import tempfile

BLOCK = re.compile(r"(?:<!-- (.*?) -->\n)?^```(\S*)\n(.*?)^```$", re.M | re.S)


def steps_of(session):
    """Each (command, commands to gdb, what is printed) of a session."""
    found = []
    for line in session.splitlines():
        if line.startswith("$ "):
            found.append((line[2:], [], []))
        else:
            if line.startswith("(gdb) "):
                found[-1][1].append(line[6:])
            found[-1][2].append(line)
    return found


def pattern_of(lines):
    return "".join(r"(?:.*\n)*?" if line == "..." else re.escape(line) + r"\n" for line in lines)


def with_gdb(command, inputs):
    """The command line of a session with gdb that nobody types, and that prints what it is asked."""
    start, rest = re.fullmatch(r"(gdb)( .*)", command).groups()
    for each in inputs:
        start += " -ex 'echo (gdb) %s\\n' -ex '%s'" % (each, each)
    return start + " -batch" + rest


def environment_of(prefix, folder):
    environment = dict(os.environ, HOME=folder, TZ="UTC", LC_ALL="C", NO_COLOR="1", DEBUGINFOD_URLS="")
    environment.pop("LD_LIBRARY_PATH", None)
    if prefix is None:
        environment["PKG_CONFIG_PATH"] = "/usr/lib32/pkgconfig"
        return environment
    description = subprocess.run(["find", prefix, "-name", "bkoq.pc"], capture_output=True, check=True,
                                 text=True).stdout.strip()
    libraries = os.path.dirname(os.path.dirname(description))
    environment.update(PATH=os.path.join(prefix, "bin") + ":" + os.environ["PATH"],
                       PKG_CONFIG_PATH=os.path.dirname(description), LD_LIBRARY_PATH=libraries)
    with open(os.path.join(folder, ".gdbinit"), "w", encoding="utf-8") as file:
        file.write("add-auto-load-scripts-directory %s/share/gdb/auto-load\n"
                   "add-auto-load-safe-path %s\n" % (prefix, prefix))
    return environment


def run(page, folder, environment):
    """The number of commands that were run, or None after a failure has been told."""
    count = 0
    for mark, kind, content in BLOCK.findall(page):
        if mark.startswith("not run: "):
            continue
        if mark.startswith("file: "):
            with open(os.path.join(folder, mark[len("file: "):]), "w", encoding="utf-8") as file:
                file.write(content)
            continue
        if kind != "console" or mark not in ("", "fails"):
            print("neither a file nor a session:", mark, content, sep="\n")
            return None
        for command, inputs, printed in steps_of(content):
            count += 1
            done = subprocess.run(
                ["bash", "-c", with_gdb(command, inputs) if inputs else command], cwd=folder,
                env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                stderr=subprocess.STDOUT, timeout=120, check=False)
            output = done.stdout.decode(errors="replace")
            if inputs:
                output = output.rstrip("\n") + "\n"  # it ends the last line when it leaves
            if not re.fullmatch(pattern_of(printed), output):
                print("$ %s\ndoes not print what the page says, but:\n%s" % (command, output))
                return None
            if (done.returncode != 0) != (mark == "fails"):
                print("$ %s\nends with status %d" % (command, done.returncode))
                return None
    return count


def main():
    path, prefix = (sys.argv[1:] + [None])[:2]
    with open(path, encoding="utf-8") as file:
        page = file.read()
    if page.count("\n```") != 2 * len(BLOCK.findall(page)):
        print("a block of the page is not understood")
        return 1
    with tempfile.TemporaryDirectory() as folder:
        count = run(page, folder, environment_of(prefix and os.path.abspath(prefix), folder))
    if not count:
        return 1
    print("%d commands did what the page says" % count)
    return 0


if __name__ == "__main__":
    sys.exit(main())
