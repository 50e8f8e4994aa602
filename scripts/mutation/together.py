"""Mutants compiled together: a function holds its body once more for each of them, and a file beside
the program tells which one is run. So a mutant costs the time of its tests and no compilation."""

import concurrent.futures
import json
import os
import pathlib
import re
import shlex
import shutil
import sys

from mutation.functions import functions, statements
from mutation.mutants import ROOT
from mutation.workshop import configure, run, without_builds

# The header that each source includes first. The number is read without the C library's open() and
# read(), which tests replace. Number -1 writes down which statements were reached.
HEADER = r"""#ifndef MUTATION_TOGETHER_H
#define MUTATION_TOGETHER_H
#ifdef __cplusplus
#include <errno.h>
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace mutation {

// Opens a file of the nearest folder above the program that has it.
inline int openAbove(const char* name, int flags) {
  char path[4096];
  long length = syscall(SYS_readlinkat, AT_FDCWD, "/proc/self/exe", path, sizeof path - 32);
  for (; length > 0; --length) {
    if (path[length - 1] != '/') continue;
    long end = length;
    for (const char* from = name; (path[end++] = *from) != 0; ++from) {
    }
    const long file = syscall(SYS_openat, AT_FDCWD, path, flags, 0);
    if (file >= 0) return static_cast<int>(file);
  }
  return -1;
}

inline int readNumber() {
  char digits[16] = {};
  const int file = openAbove("mutant", O_RDONLY);
  if (file < 0) return 0;
  const long count = syscall(SYS_read, file, digits, sizeof digits);
  syscall(SYS_close, file);
  int number = 0;
  const bool isNegative = digits[0] == '-';
  for (long at = isNegative; at < count && digits[at] >= '0' && digits[at] <= '9'; ++at) {
    number = 10 * number + digits[at] - '0';
  }
  return isNegative ? -number : number;
}

inline const int number = readNumber();
inline bool isReached[100000];

inline void reach(int statement) {
  if (isReached[statement]) return;
  isReached[statement] = true;
  const int before = errno;
  const int file = openAbove("reached", O_WRONLY | O_APPEND);
  if (file >= 0) {
    syscall(SYS_write, file, &statement, sizeof statement);
    syscall(SYS_close, file);
  }
  errno = before;
}

}  // namespace mutation
#endif
#endif
"""
ERROR = re.compile(r"^(\S[^:\n]*):(\d+):\d+: (fatal error|error|warning|note): (.*)$", re.MULTILINE)


class Source:
    """A file with its mutants: those of functions are compiled together."""

    def __init__(self, path, text, mutants, is_apart):
        self.path, self.text = path, text
        self.bodies = {}  # of each function: its mutants
        self.apart, self.turned = [], set()
        found = [] if is_apart else functions(text)
        for mutant in mutants:
            function = next((function for function in found
                             if function.start <= mutant.start and mutant.end <= function.end
                             and not function.is_constant), None)
            if function is None:
                self.apart.append(mutant)
            else:
                self.bodies.setdefault(function, []).append(mutant)
        self.statements = {function: statements(text, function) for function in self.bodies}

    def drop(self, kind, subject):
        """Something that does not compile: a mutant, a place to note, or the end of a function."""
        if kind == "end":
            subject.gives_nothing = not subject.gives_nothing
            if subject in self.turned:  # neither end compiles
                self.apart += self.bodies.pop(subject, [])
            self.turned.add(subject)
            return None
        if kind == "note":
            for places in self.statements.values():
                if subject in places:
                    places.remove(subject)
            return None
        for found in self.bodies.values():
            if subject in found:
                found.remove(subject)
        return subject

    def write(self, tree, notes):
        """Writes the file, and returns what each of its lines belongs to. `notes` numbers the places
        that are written down."""
        pieces, at = [], 0

        def note(place):
            number = notes.setdefault((self.path, place), len(notes))
            pieces.append((f"\nmutation::reach({number});\n", ("note", place)))

        for function in sorted(self.bodies, key=lambda function: function.start):
            pieces.append((self.text[at:function.start], None))
            pieces.append(("\nswitch (mutation::number) {\ndefault: break;\ncase -1: {", None))
            where = function.start
            note(where)
            for place in self.statements[function]:
                pieces.append((self.text[where:place], None))
                note(place)
                where = place
            pieces.append((self.text[where:function.end], None))
            end = "return;" if function.gives_nothing else "__builtin_trap();"
            pieces.append((f"\n}}\n{end}", ("end", function)))
            for mutant in self.bodies[function]:
                body = (self.text[function.start:mutant.start] + mutant.new +
                        self.text[mutant.end:function.end])
                pieces.append((f"\ncase {mutant.number}: {{{body}\n", ("mutant", mutant)))
                pieces.append((f"\n}}\n{end}", ("end", function)))
            pieces.append(("\n}\n", None))
            at = function.start
        pieces.append((self.text[at:], None))
        (tree / self.path).write_text("".join(piece for piece, _ in pieces))
        owners, line = [], 1
        for piece, owner in pieces:
            count = piece.count("\n")
            owners.append((line + piece.startswith("\n"), line + count, owner))
            line += count
        return owners

    def place_of(self, mutant):
        """The last place that is noted before it whenever it is run."""
        function = next(function for function in self.bodies if function.start <= mutant.start
                        and mutant.end <= function.end)
        first = self.text.rfind("\n", 0, mutant.start) + 1
        indent = indentation(self.text, first)
        for place in sorted(self.statements[function], reverse=True):
            if place == first or (place < first and indentation(self.text, place) <= indent):
                return (self.path, place)
        return (self.path, function.start)


def indentation(text, start):
    return re.compile(r"[ \t]*").match(text, start).end() - start


def blamed(output, tree, owners):
    """What the compiler's errors are about, as far as it is ours."""
    found, group = [], []

    def close():
        about = []
        for path, line in group:
            relative = pathlib.Path(path)
            if relative.is_absolute() and relative.is_relative_to(tree):
                relative = relative.relative_to(tree)
            for first, last, owner in owners.get(relative, []):
                if owner is not None and first <= line <= last and (*owner, relative) not in about:
                    about.append((*owner, relative))
            if about:
                break
        # An end is blamed only where nothing else is.
        best = [owner for owner in about if owner[0] != "end"] or about
        found.extend(owner for owner in best if owner not in found)

    for path, line, kind, _ in ERROR.findall(output):
        if kind != "note":
            close()
            group = []
        if kind != "warning" and (group or kind != "note"):
            group.append((path, int(line)))
    close()
    return found


class Together:
    """The tree with all mutants of its functions in it, and its build."""

    def __init__(self, folder, part, mutants, jobs):
        self.part, self.jobs = part, jobs
        self.tree, self.build_folder = folder / "tree", folder / "build"
        shutil.copytree(ROOT, self.tree, ignore=without_builds, symlinks=True)
        (folder / "mutation.h").write_text(HEADER)
        for number, mutant in enumerate(mutants):
            mutant.number = number + 1
        by_path = {}
        for mutant in mutants:
            by_path.setdefault(mutant.path, []).append(mutant)
        self.sources = {path: Source(path, (ROOT / path).read_text(), found, path in part.apart)
                        for path, found in by_path.items()}
        self.not_built = []
        self.notes, self.owners = {}, {}
        for source in self.sources.values():
            self.write(source)
        more = ["-DCMAKE_BUILD_RPATH_USE_ORIGIN=ON",
                f"-DCMAKE_CXX_FLAGS=-w -include {folder / 'mutation.h'}"]
        if shutil.which("clang++"):  # which takes half of the time
            more += ["-DCMAKE_CXX_COMPILER=clang++", "-DCMAKE_C_COMPILER=clang"]
            more[1] += " -ferror-limit=0"
        configure(self.tree, self.build_folder, part, more)
        self.check()
        self.build()

    def write(self, source):
        self.owners[source.path] = source.write(self.tree, self.notes)

    def check(self):
        """Leaves out, round by round, what does not compile: that is known long before code is made."""
        entries = json.loads((self.build_folder / "compile_commands.json").read_text())
        commands = {}
        for entry in entries:
            path = pathlib.Path(os.path.relpath(entry["file"], self.tree))
            if path.parts[0] in self.part.folders and not path.name.endswith("_test.cpp"):
                commands.setdefault(path, shlex.split(entry["command"]))
        headers = {word for command in commands.values() for word in command
                   if word.endswith((".hxx.pch", ".hxx.gch"))}
        headers |= {f"{word}.gch" for command in commands.values()
                    for before, word in zip(command, command[1:])
                    if before == "-include" and word.endswith("cmake_pch.hxx")}
        for header in headers:
            run(["ninja", "-C", self.build_folder, os.path.relpath(header, self.build_folder)],
                self.tree)
        left = set(commands)
        while left:
            def errors(path):
                command = [word for word in commands[path] if word not in ("ccache", "-c")]
                at = command.index("-o")
                del command[at:at + 2]
                return path, *run(command + ["-fsyntax-only"], self.build_folder)

            with concurrent.futures.ThreadPoolExecutor(self.jobs) as pool:
                failed = {path: output for path, status, output in pool.map(errors, sorted(left))
                          if status != 0}
            changed = set()
            for path, output in failed.items():
                if not self.drop(output, changed):
                    sys.exit(f"{output}\n{path} does not compile, and no mutant is to blame")
            for path in changed:
                self.write(self.sources[path])
            print(f"{len(failed)} files do not compile, {len(self.not_built)} mutants left out",
                  flush=True)
            left = set(commands) if any(path.suffix == ".h" for path in changed) else set(failed)

    def drop(self, output, changed):
        """Leaves out what the errors are about; whether there is any such thing."""
        found = blamed(output, self.tree, self.owners)
        for kind, subject, path in found:
            changed.add(path)
            mutant = self.sources[path].drop(kind, subject)
            if mutant is not None and mutant not in self.not_built:
                self.not_built.append(mutant)
        return bool(found)

    def build(self):
        while True:
            status, output = run(["ninja", "-k0", "-C", self.build_folder, f"-j{self.jobs}",
                                  *self.part.targets, *self.part.once], self.tree)
            if status == 0:
                return
            changed = set()
            if not self.drop(output, changed):
                sys.exit(f"{output}\nnot built, and no mutant is to blame")
            for path in changed:
                self.write(self.sources[path])

    @property
    def apart(self):
        return [mutant for source in self.sources.values() for mutant in source.apart]

    def mutants(self):
        """Those that can be run, each with the number of the statement in which it is."""
        for source in self.sources.values():
            for found in source.bodies.values():
                for mutant in found:
                    yield mutant, self.notes[source.place_of(mutant)]
