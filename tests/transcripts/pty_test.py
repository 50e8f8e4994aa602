#!/usr/bin/env python3
"""What the command prints on a terminal: lines that fit, colours, a bar while many files take long,
and no image.

    pty_test.py BKOQ EXAMPLES_FOLDER
"""

import fcntl
import os
import pty
import re
import struct
import subprocess
import sys
import tempfile
import termios
import threading
import time

PRINTED = ["show {0}", "show {0} --annotate", "show {0} --at #2+16", "flatten {0}",
           "show {0} --field pSourceNodes[0].ulNodeOptions --why", "diff --layouts {0}",
           "diff --layouts {0} --why", "check {0}", "explain {0}", "explain {0} --field **.ulOptions",
           "attributes", "layout", "layout --compare", "layout BKNODE", "--help", "show --help",
           "help flatten", "check missing.json", "flatten {0} --nod x"]
FOR_PROGRAMS = ["show {0} --json --now 2004-03-01", "layout --json", "layout --c",
                "layout --magic", "layout --kaitai", "schema", "new backup",
                "completion bash", "attributes --width 100"]
ESCAPES = re.compile(r"\x1b\[[0-9;]*m")
# What takes longer than a second on a slow machine shows a bar, and clears it.
BAR = re.compile(r"\r\[#*\.*\] \d+ of \d+|\r\x1b\[K")


def on_terminal(arguments, columns, folder, stream="both", before=None, **variables):
    """What is printed on a terminal; `stream` says what of the command goes there. A variable of
    None is not set."""
    primary, secondary = pty.openpty()
    fcntl.ioctl(secondary, termios.TIOCSWINSZ, struct.pack("HHHH", 24, columns, 0, 0))
    other = subprocess.DEVNULL
    environment = {"PATH": "/usr/bin:/bin", "TERM": "xterm", "TZ": "UTC", **variables}
    environment = {name: value for name, value in environment.items() if value is not None}
    process = subprocess.Popen(arguments, stdin=other, cwd=folder, env=environment,
                               stdout=secondary if stream != "errors" else other,
                               stderr=secondary if stream != "output" else other)
    os.close(secondary)
    if before is not None:
        before()
    output = b""
    while True:
        try:
            piece = os.read(primary, 65536)
        except OSError:
            break
        output += piece
        if not piece:
            break
    os.close(primary)
    return process.wait(), output.decode("utf-8").replace("\r\n", "\n")


def lines_fit(tool, example, folder):
    for command in PRINTED:
        arguments = [tool] + [part.format(example) for part in command.split()]
        for columns in (60, 100):
            _, output = on_terminal(arguments, columns, folder)
            assert output.count("\n") >= 1, command
            for line in ESCAPES.sub("", BAR.sub("", output)).splitlines():
                # A word is not cut, so that a path can be copied.
                longest = max(map(len, line.split()), default=0)
                assert len(line) <= max(columns, longest + columns // 2), (command, columns, line)
                if len(line) > columns:
                    assert longest > columns // 2, (command, columns, line)
        # Nothing but blanks has been added.
        plain = subprocess.run(arguments, capture_output=True, text=True, check=False, cwd=folder,
                               env={"TERM": "xterm", "TZ": "UTC"})
        if "help" not in command and "show" not in command and "flatten" not in command \
                and "attributes" not in command:
            output = BAR.sub("", on_terminal(arguments, 60, folder, NO_COLOR="1")[1])
            assert "".join(output.split()) == "".join((plain.stdout + plain.stderr).split()), command
    # What programs read is not folded.
    for command in FOR_PROGRAMS:
        arguments = [tool] + [part.format(example) for part in command.split()]
        plain = subprocess.run(arguments, capture_output=True, text=True, check=True, cwd=folder,
                               env={"TERM": "xterm", "TZ": "UTC"}).stdout
        assert any(len(line) > 40 for line in plain.splitlines()), command
        assert on_terminal(arguments, 40, folder, NO_COLOR="1")[1] == plain, command
    # Where next to nothing fits, and where the terminal does not tell, lines stay whole.
    check = [tool, "check", "missing.json"]
    whole = "bkoq: cannot read missing.json: No such file or directory\n"
    assert len(on_terminal(check, 40, folder)[1].splitlines()) == 2
    assert on_terminal(check, 39, folder)[1] == on_terminal(check, 0, folder)[1] == whole


def colours(tool, example, folder):
    show = [tool, "show", example]
    has = lambda arguments, **variables: "\x1b" in on_terminal(arguments, 80, folder, **variables)[1]
    assert has(show)
    assert not has(show, NO_COLOR="1")
    assert has(show, NO_COLOR="")
    assert not has(show, TERM="dumb")
    assert has(show, TERM=None)
    assert has(show + ["--color=always"], TERM="dumb", NO_COLOR="1")
    assert not has(show + ["--color", "never"])
    assert not has(show + ["--color", "auto"], TERM="dumb")
    pipe = lambda *more: subprocess.run(show + list(more), capture_output=True, check=True,
                                       cwd=folder).stdout
    assert b"\x1b" not in pipe() and b"\x1b" in pipe("--color", "always")
    status, output = on_terminal([tool, "flatten", example, "-o", "-"], 80, folder)
    assert status == 2 and "BKQIMAGE" not in output and "terminal" in output


def bar(tool, example, folder):
    """The second of three files comes late, from a pipe."""
    pipe = folder + "/slow.json"
    os.mkfifo(pipe)
    check = [tool, "check", example, pipe, example]

    def feed():
        time.sleep(1.2)
        with open(pipe, "w", encoding="utf-8") as file:
            file.write('{"kind": "job", "jobName": "x"}')

    def shown(columns, **variables):
        feeder = threading.Thread(target=feed)
        feeder.start()
        status, output = on_terminal(check, columns, folder, "errors", **variables)
        feeder.join()
        assert status == 0, output
        return output

    # It is cleared at the end.
    for columns in (80, 0):  # a terminal that does not tell its width counts as 80 columns wide
        assert re.fullmatch(r"\r\[#{26}\.{14}\] 2 of 3(\r\[#{40}\] 3 of 3)?\r\x1b\[K", shown(columns))
    narrow = shown(30).split("\r")[1]
    assert narrow.startswith("[#") and "2 of 3" in narrow and len(narrow) < 30, narrow
    assert shown(80, TERM="dumb") == shown(80, TERM=None) == ""
    feeder = threading.Thread(target=feed)
    feeder.start()
    done = subprocess.run(check, capture_output=True, check=True, cwd=folder)
    feeder.join()
    assert done.stderr == b""
    # What takes less than a second has none.
    assert on_terminal([tool, "check", example, example], 80, folder, "errors")[1] == ""


def steps_of_bars(tool, folder, clock):
    """What takes long shows each step of all, from the first to the last."""
    with open(folder + "/nodes.json", "w", encoding="utf-8") as file:
        nodes = ", ".join(f'{{"kind": "unix", "nodeName": "n{i}"}}' for i in range(6))
        file.write(f'{{"kind": "backup", "jobName": "x", "sourceNodes": [{nodes}]}}')
    # Of the fields asked for, and before these of the 8 attributes that decide them where these are many.
    for arguments, steps in (("explain nodes.json", 8),
                             ("explain nodes.json --attribute sourceNodes[*].nodeName", 6),
                             ("explain nodes.json --field pSourceNodes[0].pszNodeName", 1),
                             ("explain nodes.json --field pSourceNodes[*].pszNodeName", 8 + 6),
                             ("check job.json nodes.json job.json", 3),
                             ("check job.json nodes.json job.json --jobs 2", 3)):
        output = on_terminal([tool, *arguments.split()], 80, folder, "errors", LD_PRELOAD=clock)[1]
        shown = re.findall(r"\r\[#*\.*\] (\d+) of (\d+)", output)
        assert shown == [(str(i + 1), str(steps)) for i in range(steps)], (arguments, output)


def main():
    tool = os.path.abspath(sys.argv[1])
    example = os.path.abspath(sys.argv[2]) + "/nightly-backup.json"
    try:
        for end in pty.openpty():
            os.close(end)
    except OSError:
        print("not run, since this system has no terminals to give")
        return
    with tempfile.TemporaryDirectory() as folder:
        os.symlink(example, folder + "/job.json")
        lines_fit(tool, "job.json", folder)
        colours(tool, "job.json", folder)
        bar(tool, "job.json", folder)
        if len(sys.argv) > 3:
            steps_of_bars(tool, folder, sys.argv[3])


if __name__ == "__main__":
    main()
