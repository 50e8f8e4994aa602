#!/usr/bin/env python3
"""Runs transcripts of the command bkoq and compares what it prints with what they hold.

    run.py BKOQ TRANSCRIPT...            fails when something differs
    run.py --update BKOQ TRANSCRIPT...   writes what was printed into the transcripts

A line "$ COMMAND" runs a command in the shell; "T80$ COMMAND" runs it on a terminal of 80 columns.
Behind it stand the lines of its standard output, those of its standard error stream with "! " in
front, and "[N]" for an exit status N that is not 0. Lines that begin with "## " are comments, blank
lines are kept. "\\e" stands for the escape character. What follows "$ cat > FILE" up to a line "."
is the content of a file.
"""

import difflib
import fcntl
import os
import pty
import re
import struct
import subprocess
import sys
import tempfile
import termios

PROMPT = re.compile(r"(?:T(\d+))?\$ (.*)$")
CONTENT = re.compile(r"\$ cat > (\S+)$")


def on_terminal(command, columns, **arguments):
    """Runs a command whose standard output is a terminal."""
    primary, secondary = pty.openpty()
    fcntl.ioctl(secondary, termios.TIOCSWINSZ, struct.pack("HHHH", 24, columns, 0, 0))
    process = subprocess.Popen(["bash", "-c", command], stdout=secondary, stderr=subprocess.PIPE,
                               **arguments)
    os.close(secondary)
    output = b""
    while True:
        try:
            piece = os.read(primary, 65536)
        except OSError:  # the other end is closed
            break
        if not piece:
            break
        output += piece
    os.close(primary)
    errors = process.stderr.read()
    return process.wait(), output.replace(b"\r\n", b"\n"), errors


def has_terminals():
    try:
        for end in pty.openpty():
            os.close(end)
    except OSError:
        return False
    return True


def run(command, columns, folder, environment):
    arguments = {"cwd": folder, "env": environment, "stdin": subprocess.DEVNULL}
    command = "set -o pipefail; " + command
    if columns:
        status, output, errors = on_terminal(command, int(columns), **arguments)
    else:
        done = subprocess.run(["bash", "-c", command], capture_output=True, check=False,
                              **arguments)
        status, output, errors = done.returncode, done.stdout, done.stderr
    text = lambda data: data.decode("utf-8", "backslashreplace").replace("\x1b", "\\e")
    lines = text(output).splitlines()
    lines += ["! " + line for line in text(errors).splitlines()]
    if status != 0:
        lines.append(f"[{status}]")
    return lines


class Step:
    """A comment, the content of a file, or a command with what is printed."""

    def __init__(self, lines, file=None, content=(), columns=None, command=None, answer=(),
                 is_last=False):
        self.lines = lines  # that stay as they are
        self.file, self.content = file, content
        self.columns, self.command, self.answer = columns, command, answer
        self.is_last = is_last

    def write(self, folder):
        with open(os.path.join(folder, self.file), "w", encoding="utf-8") as file:
            file.writelines(line + "\n" for line in self.content)

    def now(self, folder, environment):
        """What is printed now, with the blank line before the next step."""
        return run(self.command, self.columns, folder, environment) + ([] if self.is_last else [""])


def steps(lines):
    position = 0
    while position < len(lines):
        line = lines[position]
        position += 1
        content = CONTENT.match(line)
        prompt = PROMPT.match(line)
        if content:
            end = lines.index(".", position)
            yield Step([line] + lines[position:end + 1], content[1], lines[position:end])
            position = end + 1
        elif prompt:
            first = position
            while position < len(lines) and not PROMPT.match(lines[position]) \
                    and not lines[position].startswith("## "):
                position += 1
            yield Step([line], columns=prompt[1], command=prompt[2], answer=lines[first:position],
                       is_last=position == len(lines))
        else:
            yield Step([line])


def replay(path, folder, environment):
    """The transcript as it is, and as it would be written now."""
    with open(path, encoding="utf-8") as file:
        old = file.read().splitlines()
    new = []
    for step in steps(old):
        new += step.lines
        if step.file:
            step.write(folder)
        elif step.columns and not has_terminals():
            print(f"not run, since this system has no terminals to give: {step.lines[0]}")
            new += step.answer
        elif step.command:
            new += step.now(folder, environment)
    return old, new


def environment_of(tool):
    found = {"FAILING_MALLOC": os.environ.get("FAILING_MALLOC", ""),
             "FAILING_NTH_MALLOC": os.environ.get("FAILING_NTH_MALLOC", ""),
             "PATH": os.path.dirname(tool) + ":/usr/bin:/bin", "TZ": "UTC", "LC_ALL": "C",
             "TERM": "xterm"}
    for name in ("ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS"):
        if name in os.environ:
            found[name] = os.environ[name]
    return found


def main():
    arguments = sys.argv[1:]
    update = arguments[:1] == ["--update"]
    if update:
        arguments.pop(0)
    tool, transcripts = os.path.abspath(arguments[0]), arguments[1:]
    root = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
    environment = environment_of(tool)
    differs = False
    for path in transcripts:
        with tempfile.TemporaryDirectory() as folder:
            os.symlink(os.path.join(root, "examples"), os.path.join(folder, "examples"))
            old, new = replay(path, folder, environment)
        if old == new:
            continue
        differs = True
        if update:
            with open(path, "w", encoding="utf-8") as file:
                file.writelines(line + "\n" for line in new)
        else:
            print("\n".join(difflib.unified_diff(old, new, path, "now", lineterm="")))
    return 1 if differs and not update else 0


if __name__ == "__main__":
    sys.exit(main())
