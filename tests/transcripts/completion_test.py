#!/usr/bin/env python3
"""The completions of bash and zsh as a user meets them: a shell on a terminal is sent keys, and the
command is a function there that prints its arguments, so that what was completed is seen as the
command would get it.

    completion_test.py BKOQ SHELL   (bash or zsh)
"""

import fcntl
import os
import pty
import re
import select
import struct
import subprocess
import sys
import tempfile
import termios
import time

# Typed with a tab at the end; the arguments then.
CASES = [
    ("fla", ["flatten"]),
    ("hel", ["help"]),
    ("help expl", ["help", "explain"]),
    ("new rotationB", ["new", "rotationBackup"]),
    ("completion z", ["completion", "zsh"]),
    ("layout BKNO", ["layout", "BKNODE"]),
    ("layout --previous BKNO", ["layout", "--previous", "BKNODE_OLD"]),
    ("show a.image --only BKDDI", ["show", "a.image", "--only", "BKDDISK"]),
    ("show a.image --layout previous --only BKDDI",
     ["show", "a.image", "--layout", "previous", "--only", "BKDDISK_OLD"]),
    ("attributes informi", ["attributes", "informix"]),
    ("attributes unix exc", ["attributes", "unix", "exception day"]),
    ("attributes exception\\ d", ["attributes", "exception day"]),
    ("attributes 'tape it", ["attributes", "tape item"]),
    ("check myj", ["check", "myjob.json"]),
    ("check my\\ ", ["check", "my own job.json"]),
    ("check 'my o", ["check", "my own job.json"]),
    ("flatten x.json -o imag", ["flatten", "x.json", "-o", "images/"]),
    ("show x.json --html -o pa", ["show", "x.json", "--html", "-o", "page.html"]),
    ("flatten x.json --layout prev", ["flatten", "x.json", "--layout", "previous"]),
    ("flatten x.json --layout=prev", ["flatten", "x.json", "--layout=previous"]),
    ("check --stri", ["check", "--strict"]),
    ("check dol", ["check", "dollar $(touch made) `touch made`"]),
]

START = {
    "bash": (["bash", "--norc", "--noprofile", "-i"],
             "bind 'set bell-style none'; source ./completion"),
    "zsh": (["zsh", "-f", "-i"],
            "zstyle ':completion:*' use-cache no; unsetopt beep auto_menu auto_remove_slash; "
            "unset zle_bracketed_paste; fpath=($PWD/functions $fpath); autoload -Uz compinit; "
            "compinit -u -D"),
}
DONE = "@done@"


class Shell:
    def __init__(self, command, folder):
        self.primary, secondary = pty.openpty()
        fcntl.ioctl(secondary, termios.TIOCSWINSZ, struct.pack("HHHH", 50, 400, 0, 0))
        environment = {"PATH": "/usr/bin:/bin", "TERM": "dumb", "PS1": "> ", "HOME": folder,
                       "LC_ALL": "C.UTF-8"}
        self.process = subprocess.Popen(command, stdin=secondary, stdout=secondary,
                                        stderr=secondary, cwd=folder, env=environment,
                                        start_new_session=True)
        os.close(secondary)

    def send(self, text):
        os.write(self.primary, text.encode())

    def read_until(self, pattern, seconds=20):
        """All that is printed, up to the pattern."""
        output = ""
        end = time.monotonic() + seconds
        while not re.search(pattern, output):
            ready, _, _ = select.select([self.primary], [], [], max(0, end - time.monotonic()))
            if not ready:
                sys.exit(f"no {pattern} in: {output!r}")
            output += os.read(self.primary, 65536).decode("utf-8", "replace")
        return output

    def close(self):
        os.close(self.primary)
        self.process.wait()


def main():
    tool, shell = os.path.abspath(sys.argv[1]), sys.argv[2]
    command, start = START[shell]
    with tempfile.TemporaryDirectory() as folder:
        os.mkdir(folder + "/images")
        os.mkdir(folder + "/functions")
        for name in ("myjob.json", "my own job.json", "page.html",
                     "dollar $(touch made) `touch made`"):
            open(os.path.join(folder, name), "w", encoding="utf-8").close()
        script = subprocess.run([tool, "completion", shell], capture_output=True, check=True).stdout
        for name in ("completion", "functions/_bkoq"):
            with open(os.path.join(folder, name), "wb") as file:
                file.write(script)
        terminal = Shell(command, folder)
        # In two parts, so that the echo of the keys is not taken for what is printed.
        terminal.send("bkoq() { printf '<%s>' \"$@\"; printf '%s%s\\n' @do ne@; }\n")
        terminal.send(start + "; bkoq ready\n")
        terminal.read_until("<ready>" + DONE)
        failures = 0
        for typed, expected in CASES:
            terminal.send("bkoq " + typed + "\t")
            # A quote that was open is closed by what completes it.
            terminal.send("\n")
            output = terminal.read_until(DONE)
            printed = re.findall(r"<([^>]*)>", output[:output.index(DONE)].splitlines()[-1])
            if printed != expected:
                failures += 1
                print(f"{shell}: bkoq {typed}[tab]: {printed}, not {expected}")
        terminal.close()
        if os.path.exists(folder + "/made"):
            sys.exit("the name of a file was read as shell code")
    sys.exit(1 if failures else 0)


if __name__ == "__main__":
    main()
