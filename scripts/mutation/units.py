"""Tests cut in pieces that run alone, each with the statements that it reaches: a mutant is tried with
those pieces only that reach it."""

import copy
import hashlib
import importlib.util
import os
import pathlib
import shlex
import shutil
import struct
import sys
import time

from mutation.mutants import ROOT
from mutation.workshop import GTEST, run


def transcripts_module():
    path = ROOT / "tests/transcripts/run.py"
    spec = importlib.util.spec_from_file_location("transcripts", path)
    module = importlib.util.module_from_spec(spec)
    sys.modules["transcripts"] = module
    spec.loader.exec_module(module)
    return module


TRANSCRIPTS = transcripts_module()


class Bench:
    """A copy of what was built, in which one mutant is run at a time."""

    def __init__(self, folder, built):
        self.folder, self.built = folder, built
        self.temporary = folder.parent / "tmp"
        self.temporary.mkdir(parents=True, exist_ok=True)
        if folder != built:
            shutil.copytree(built, folder, symlinks=True,
                            ignore=shutil.ignore_patterns("*.o", "*.gch", "*.pch", "CMakeFiles"))
        self.states = {}
        self.choose(0)

    def choose(self, number):
        (self.folder / "mutant").write_text(str(number))

    def here(self, text):
        return str(text).replace(str(self.built), str(self.folder))

    def environment(self, more):
        return {**os.environ, "TMPDIR": str(self.temporary),
                **{name: self.here(value) for name, value in more.items()}}

    def reached(self, task):
        """What becomes of a task, and the statements that it reaches."""
        path = self.folder / "reached"
        path.write_bytes(b"")
        self.choose(-1)
        try:
            result = task()
            data = path.read_bytes()
        finally:
            self.choose(0)
            path.unlink()
        return result, set(struct.unpack(f"={len(data) // 4}i", data))


class Unit:
    took, reached = 0.0, frozenset()

    def limit(self):
        return 5 + 10 * self.took

    def measure(self, bench):
        """Whether it passes without a mutant."""
        started = time.monotonic()
        passes, self.reached = bench.reached(lambda: self.passes(bench))
        self.took = time.monotonic() - started
        return passes


class Script(Unit):
    """A test as ctest knows it."""

    took = 60.0

    def __init__(self, name, command, environment):
        self.name, self.command, self.more = name, command, environment

    def passes(self, bench):
        status, self.output = run([bench.here(word) for word in self.command], bench.folder,
                                  bench.environment(self.more), seconds=self.limit())
        return status == 0


class Program(Unit):
    """The tests of one program of GoogleTest, each of which is a piece."""

    took = 60.0

    def __init__(self, name, command, environment):
        self.name, self.command, self.more = name, command, environment

    def measure(self, bench):
        listed = run([bench.here(self.command[0]), "--gtest_list_tests"], bench.folder)[1]
        names, suite = [], ""
        for line in listed.splitlines():
            word = line.split("#")[0].strip()
            if line.startswith(" "):
                names.append(suite + word)
            elif word.endswith("."):
                suite = word
        self.pieces, self.took_each = {}, {}
        for name in names:
            started = time.monotonic()
            passes, self.pieces[name] = bench.reached(lambda: self.passes(bench, [name]))
            self.took_each[name] = time.monotonic() - started
            if not passes:
                return False
            self.reached = self.reached | self.pieces[name]
        self.took = sum(self.took_each.values())
        # Together they start once.
        start = min(self.took_each.values(), default=0)
        self.took_each = {name: took - start for name, took in self.took_each.items()}
        return True

    def passes(self, bench, names=("*",), seconds=None):
        command = [bench.here(word) for word in self.command]
        status, self.output = run(command + ["--gtest_filter=" + ":".join(names)], bench.folder,
                                  bench.environment(self.more), seconds=seconds or self.limit())
        return status == 0

    def leave_out(self, slow):
        for name, took in list(self.took_each.items()):
            if took > slow:
                print(f"left out: {name}, {took:.1f} s", flush=True)
                del self.pieces[name]

    def cut(self, statement):
        """The pieces that reach a statement, all for None: those that take a second together, and the
        others."""
        names = sorted((name for name, reached in self.pieces.items()
                        if statement is None or statement in reached),
                       key=self.took_each.get)
        seconds, count = 0.0, 0
        while count < len(names) and seconds < 1:
            seconds += self.took_each[names[count]]
            count += 1
        return names[:count], names[count:]

    def passes_some(self, bench, names):
        return self.passes(bench, names, 5 + 5 * sum(map(self.took_each.get, names)))


def content(folder):
    """What tells whether anything in a folder is different."""
    found = []
    for path in sorted(pathlib.Path(folder).rglob("*")):
        state = path.lstat()
        if path.is_symlink():
            data = os.readlink(path)
        elif path.is_file() and os.access(path, os.R_OK):
            data = hashlib.sha256(path.read_bytes()).hexdigest()
        else:
            data = ""
        found.append((str(path.relative_to(folder)), state.st_mode, data))
    return found


def times(folder):
    return sorted((str(path), path.lstat().st_mtime_ns, path.lstat().st_size)
                  for path in pathlib.Path(folder).rglob("*"))


def one_line(text):
    """A text without its line breaks, which the width of a terminal decides."""
    return " ".join(text.split())


class Command(Unit):
    """One command of a transcript, in the folder as those before it have left it."""

    took = 10.0

    def __init__(self, whole, file, number, step, before, environment):
        self.name = f"{file}, command {number}"
        self.whole, self.step, self.before, self.more = whole, step, before, environment
        self.after = None
        self.printed = one_line("\n".join(step.answer))

    def limited(self):
        """The step, ended with all that it has started when it takes too long."""
        step = copy.copy(self.step)
        shell = shlex.quote("set -o pipefail; " + step.command)
        step.command = f"timeout -s KILL {self.limit():.0f} bash -c {shell}"
        return step

    def passes(self, bench):
        kept = bench.states.get(self.before)
        if kept is None or times(kept[0]) != kept[1]:
            if kept is not None:
                shutil.rmtree(kept[0], ignore_errors=True)
            folder = bench.temporary / hashlib.sha256(str(self.before).encode()).hexdigest()[:16]
            shutil.copytree(self.before, folder, symlinks=True, dirs_exist_ok=True)
            bench.states[self.before] = (folder, times(folder))
        folder, before = bench.states[self.before]
        found = self.limited().now(str(folder), {name: bench.here(value)
                                                 for name, value in self.more.items()})
        self.left = self.after
        if times(folder) != before:
            self.left = content(folder)
        return found == self.step.answer


class Transcript(Script):
    """A transcript as a whole, for what its commands leave behind for those after them."""

    is_cut = True  # whether each of its commands can be run alone

    def commands(self, bench, states):
        """Its commands, with what they find; none of those that do something else when alone. A file's
        time or owner may matter to one, which a copy does not keep."""
        module = TRANSCRIPTS
        path = pathlib.Path(self.command[-1])
        environment = {**module.environment_of(bench.here(self.command[-2])), **self.more}
        folder = states / path.stem / "now"
        folder.mkdir(parents=True)
        os.symlink(ROOT / "examples", folder / "examples")
        lines = path.read_text(encoding="utf-8").splitlines()
        before, old = None, None
        for number, step in enumerate(module.steps(lines)):
            if step.file:
                step.write(str(folder))
            elif step.command:
                now = content(folder)
                if now != old:
                    before, old = states / path.stem / str(number), now
                    shutil.copytree(folder, before, symlinks=True)
                command = Command(self, path.name, number, step, before, environment)
                reached = bench.reached(lambda: step.now(str(folder), environment))[1]
                command.after = content(folder)
                if command.measure(bench) and command.left == command.after:
                    command.reached = reached
                    yield command
                else:
                    self.is_cut = False


def units_of(entries, bench, states, slow):
    """The pieces of the tests that ctest lists, without those that take longer than `slow` seconds."""
    programs, commands, transcripts, scripts = [], [], [], []
    for name, command, environment in entries:
        if GTEST in command:
            programs.append(Program(name, command + ["--gtest_fail_fast"], environment))
        elif command[-1].endswith(".txt") and command[-3].endswith("transcripts/run.py"):
            transcripts.append(Transcript(name, command, environment))
        else:
            scripts.append(Script(name, command, environment))
    for unit in programs + scripts + transcripts:
        if not unit.measure(bench):
            sys.exit(f"{unit.name} fails without any mutant:\n{unit.output}")
    for transcript in transcripts:
        commands += transcript.commands(bench, states)
    for program in programs:
        program.leave_out(slow)

    def without_slow(units):
        for unit in units:
            if unit.took > slow:
                print(f"left out: {unit.name}, {unit.took:.1f} s", flush=True)
        return sorted((unit for unit in units if unit.took <= slow), key=lambda unit: unit.took)

    commands = [command for command in commands if command.took <= slow]
    return programs, commands, without_slow(transcripts), without_slow(scripts)
