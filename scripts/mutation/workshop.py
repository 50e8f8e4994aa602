"""Mutants one at a time: changed, built and tested in a copy of the tree."""

import collections
import json
import os
import pathlib
import resource
import shlex
import shutil
import signal
import subprocess
import sys
import time

from mutation.mutants import ROOT
from mutation.parts import RANDOM

GTEST = "--gtest_brief=1"  # what tells a program of GoogleTest

def without_builds(folder, names):
    return [name for name in names
            if pathlib.Path(folder) == ROOT and (name == ".git" or name.startswith("build"))]


def run(command, folder, environment=None, cpu=None, seconds=None):
    """Status and output of a command; None when it took too long. With `cpu`, seconds of each of its
    processes, they do not get all there is either."""
    def limits():
        # A shell's background has some of them ignored, nohup another one.
        for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP, signal.SIGQUIT):
            signal.signal(number, signal.SIG_DFL)
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
        if cpu is not None:
            resource.setrlimit(resource.RLIMIT_CPU, (cpu, cpu))
            resource.setrlimit(resource.RLIMIT_FSIZE, (1 << 30, 1 << 30))

    process = subprocess.Popen([str(part) for part in command], cwd=folder, env=environment,
                               stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                               stderr=subprocess.STDOUT, start_new_session=True,
                               preexec_fn=limits)
    try:
        output = process.communicate(timeout=seconds)[0]
        return process.returncode, output.decode(errors="replace")
    except subprocess.TimeoutExpired:
        os.killpg(process.pid, signal.SIGKILL)  # with what it has started
        process.communicate()
        return None, ""


class Test:
    """A test as ctest knows it, how long it takes without a mutant, and what it has killed."""

    def __init__(self, name, command, environment):
        self.name, self.command, self.environment = name, command, environment
        self.cpu, self.seconds = 600, 600
        self.kills = collections.Counter()  # by file

    def price(self, mutant):
        """About how long it takes for each mutant like this one that it kills."""
        return self.spent / (0.2 + sum(self.kills.values()) + 4 * self.kills[mutant.path])

    def judge(self, workshop, mutant):
        """Whether the mutant passes."""
        started = time.monotonic()
        passes = self.passes(workshop)
        self.spent += time.monotonic() - started
        self.kills[mutant.path] += not passes
        return passes

    def passes(self, workshop):
        status, self.output = run(self.command, workshop.build_folder,
                                  {**workshop.environment, **self.environment}, self.cpu,
                                  self.seconds)
        return status == 0

    def measure(self, workshop):
        before = resource.getrusage(resource.RUSAGE_CHILDREN)
        started = time.monotonic()
        if not self.passes(workshop):
            sys.exit(f"{self.name} fails without any mutant:\n{self.output}")
        after = resource.getrusage(resource.RUSAGE_CHILDREN)
        cpu = after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime
        self.took = self.spent = time.monotonic() - started
        # A mutant that never ends takes all of it; one that waits must not keep us long.
        self.cpu = int(5 + 4 * cpu)
        self.seconds = 20 + 10 * self.took


def configure(tree, build_folder, part, more=()):
    options = list(part.options)
    linker = next((name for name in ("mold", "lld") if shutil.which(f"ld.{name}")), None)
    if linker:
        options += [f"-DCMAKE_{kind}_LINKER_FLAGS=-fuse-ld={linker}"
                    for kind in ("EXE", "SHARED", "MODULE")]
    if shutil.which("ccache"):
        options.append("-DCMAKE_CXX_COMPILER_LAUNCHER=ccache")
    if part.headers:
        # Most of the time goes into these.
        headers = " ".join(f"<{header}>" for header in part.headers)
        path = build_folder.parent / "headers.cmake"
        path.write_text(f"cmake_language(DEFER CALL target_precompile_headers {part.target} PRIVATE "
                        f"{headers})\n")
        options.append(f"-DCMAKE_PROJECT_bkoq_INCLUDE={path}")
    status, output = run(["cmake", "-S", tree, "-B", build_folder, "-G", "Ninja",
                          "-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS_DEBUG=-O0",
                          "-DCMAKE_CXX_FLAGS_INIT=-w", "-DBKOQ_TESTS_APART=OFF",
                          "-DCMAKE_LINK_DEPENDS_NO_SHARED=ON", "-DBKOQ_BUILD_EXAMPLES=OFF",
                          *options, *more], tree)
    if status != 0:
        sys.exit(output)


def tests_of(build_folder, part, random_count):
    """Name, command and environment of each test as ctest knows them."""
    status, output = run(["ctest", "--show-only=json-v1"], build_folder)
    if status != 0:
        sys.exit(output)
    for entry in json.loads(output[output.index("{"):])["tests"]:
        command = entry.get("command")
        if not command or not part.tests.fullmatch(entry["name"]):
            continue
        if entry["name"] == RANDOM:
            command = [command[0], "--seed", "1", "--count", str(random_count)]
        variables = {}
        for item in entry.get("properties", []):
            if item["name"] == "ENVIRONMENT":
                variables = dict(text.split("=", 1) for text in item["value"])
        yield entry["name"], command, variables


class Optimizer:
    """Tells whether an optimizing compiler makes the same of a source with and without a mutant, or nothing."""

    def __init__(self, folder, part):
        self.tree, self.folder, self.part = folder / "tree", folder, part
        folder.mkdir()
        shutil.copytree(ROOT, self.tree, ignore=without_builds, symlinks=True)
        configure(self.tree, folder / "build", part, ["-DCMAKE_CXX_FLAGS_DEBUG=-O2"])
        entries = json.loads((folder / "build/compile_commands.json").read_text())
        self.commands = {entry["file"]: shlex.split(entry["command"]) for entry in reversed(entries)}
        for command in self.commands.values():
            for i, word in enumerate(command):
                if word.endswith("cmake_pch.hxx") and command[i - 1] == "-include":
                    header = os.path.relpath(f"{word}.gch", folder / "build")
                    run(["ninja", "-C", folder / "build", header], folder)
                    break
        self.codes = {}  # of the sources without mutants

    def code(self, unit, path, text):
        """What is made of a source with a text in the place of a file: a message may hold the file's name."""
        path.write_text(text)
        command, out = list(self.commands[str(unit)]), self.folder / "code.o"
        command[command.index("-o") + 1] = str(out)
        if run([word for word in command if word != "ccache"], self.folder / "build")[0] != 0:
            return None
        return out.read_bytes()

    def unit_of(self, path):
        """The source itself, or one that the header gets to; None when there is none."""
        ways = [path]
        for way in ways:
            if str(self.tree / way) in self.commands:
                return self.tree / way
            by = [other for other in self.including(way) if other not in ways]
            ways += sorted(by, key=lambda other: (str(self.tree / other) not in self.commands, other))
        return None

    def including(self, path):
        line = f'#include "{path}"'
        files = [file for folder in self.part.folders for file in sorted((self.tree / folder).rglob("*.*"))]
        return [file.relative_to(self.tree) for file in files
                if file.suffix in (".h", ".cpp") and line in file.read_text()]

    def alone(self, mutant):
        """"not built" or "same code" when the mutant alone is that; None otherwise. What only the compiler runs
        does nothing in a program of many mutants."""
        path, unit = self.tree / mutant.path, self.unit_of(mutant.path)
        if unit is None:
            return None
        if unit not in self.codes:
            self.codes[unit] = self.code(unit, path, mutant.text)
        made = self.code(unit, path, mutant.applied())
        path.write_text(mutant.text)
        if made is None:
            return "not built"
        # Other sources may make something else of a header.
        return "same code" if unit == path and made == self.codes[unit] else None


class Workshop:
    """A copy of the tree with a build of its own."""

    def __init__(self, folder, part, jobs, random_count, random_first):
        self.part, self.random_first = part, random_first
        self.folder, self.optimizer = folder, None
        self.tree, self.build_folder = folder / "tree", folder / "build"
        self.kept, self.jobs = folder / "kept", jobs
        (folder / "tmp").mkdir(parents=True)
        self.environment = {**os.environ, "TMPDIR": str(folder / "tmp")}
        # The second workshop's first build takes what the first one's has compiled.
        self.with_cache = {**self.environment, "CCACHE_BASEDIR": str(folder),
                           "CCACHE_NOHASHDIR": "1",
                           "CCACHE_SLOPPINESS": "pch_defines,time_macros"}
        shutil.copytree(ROOT, self.tree, ignore=without_builds, symlinks=True)
        configure(self.tree, self.build_folder, part)
        status, output = self.build(self.with_cache, part.once)
        if status != 0:
            sys.exit(output)
        shutil.copytree(self.build_folder, self.kept, symlinks=True)
        self.times = dict(self.outputs())
        self.tests = []
        for name, command, variables in tests_of(self.build_folder, part, random_count):
            first_only = ["--gtest_fail_fast"] if GTEST in command else []
            self.tests.append(Test(name, command + first_only, variables))

    def build(self, environment=None, more=()):
        # A mutant is compiled once only: nothing is to keep it.
        return run(["ninja", "-C", self.build_folder, f"-j{self.jobs}", *self.part.targets,
                    *more], self.tree, environment or {**self.environment, "CCACHE_DISABLE": "1"})

    def outputs(self):
        for folder, _, names in os.walk(self.build_folder):
            for name in names:
                path = pathlib.Path(folder, name)
                # What ninja has learnt stays.
                if not name.startswith(".ninja_") and not path.is_symlink():
                    yield path, path.stat().st_mtime_ns

    def restore(self):
        """Gives the outputs that differ their content without a mutant, but not their times: so
        ninja takes them for up to date, and nothing is compiled again."""
        now = dict(self.outputs())
        for path, time_ns in self.times.items():
            if now.get(path) == time_ns:
                continue
            shutil.copyfile(self.kept / path.relative_to(self.build_folder), path)
            self.times[path] = now.get(path, time_ns)
            os.utime(path, ns=(self.times[path], self.times[path]))

    def outcome(self, mutant):
        """What becomes of a mutant: a word, and the name of the first test that fails."""
        path = self.tree / mutant.path
        before = path.stat()
        path.write_text(mutant.applied())
        try:
            if self.build()[0] != 0:
                return "not built", None
            # For most mutants one test is enough: first those that kill most in a short time.
            order = [RANDOM] if self.random_first else []
            for test in sorted(self.tests, key=lambda test: (test.name not in order,
                                                             test.price(mutant))):
                if not test.judge(self, mutant):
                    return "killed", test.name
            if self.optimizer is None:
                self.optimizer = Optimizer(self.folder / "optimized", self.part)
            return self.optimizer.alone(mutant) or "survived", None
        finally:
            path.write_text(mutant.text)
            os.utime(path, ns=(before.st_atime_ns, before.st_mtime_ns))
            self.restore()
