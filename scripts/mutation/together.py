"""Mutants compiled together: a function holds its body once more for each of them, a value outside
functions is chosen among theirs, and a file beside the program tells which one is run. So a mutant
costs the time of its tests and no compilation."""

import concurrent.futures
import json
import os
import pathlib
import re
import shlex
import shutil
import sys

from mutation.blame import blamed
from mutation.functions import (constants, functions, is_initializer_of, raw_texts,
                                statements, without_texts)
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

// Open all the time, where it is in nobody's way, since a test may let no more files be opened.
inline int openReached() {
  const int file = number == -1 ? openAbove("reached", O_WRONLY | O_APPEND) : -1;
  if (file < 0) return -1;
  const long high = syscall(SYS_fcntl, file, F_DUPFD_CLOEXEC, 700);
  syscall(SYS_close, file);
  return static_cast<int>(high);
}
inline const int reachedFile = openReached();

inline void reach(int statement) {
  if (isReached[statement]) return;
  isReached[statement] = true;
  const int before = errno;
  const int file = reachedFile >= 0 ? reachedFile : openAbove("reached", O_WRONLY | O_APPEND);
  if (file >= 0) syscall(SYS_write, file, &statement, sizeof statement);
  if (file >= 0 && file != reachedFile) syscall(SYS_close, file);
  errno = before;
}

}  // namespace mutation

// What is asserted of constants cannot be, where the program finds them.
#define static_assert(...)
#endif
#endif
"""
VALUE = re.compile(r'"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])*\'|(?:0[xX][0-9a-fA-F]+|\d+)[uUlL]*'
                   r"|true|false|BKOQ_LAYOUT_\w+")


class Source:
    """A file with its mutants: those of functions are compiled together."""

    def __init__(self, path, text, mutants):
        self.path, self.text = path, text
        self.functions = functions(text)
        self.constants = {start: (end, new) for start, end, new in constants(text)}
        self.bodies = {}  # of each function: its mutants
        self.values = {}  # of each place of a value: its mutants
        self.apart, self.turned = [], set()
        raw = raw_texts(text)
        for mutant in mutants:
            function = self.function_at(mutant.start)
            if function is not None and mutant.end <= function.end:
                self.bodies.setdefault(function, []).append(mutant)
            elif (function is None and VALUE.fullmatch(mutant.old)
                  and text[mutant.start - 1] != "["  # the bound of an array
                  and not any(start < mutant.start < end for start, end in raw)):
                self.values.setdefault(mutant.start, []).append(mutant)
                function = self.initialized_at(mutant.start)
                if function is not None:
                    self.bodies.setdefault(function, [])  # where its place is noted
            else:
                self.apart.append(mutant)
        self.statements = {function: statements(text, function) for function in self.bodies}
        # What only a build of its own is sure to tell about: constants are others there.
        self.doubtful = {mutant for found in self.values.values() for mutant in found}
        self.doubtful |= {mutant for function, found in self.bodies.items()
                          if function.is_constant for mutant in found}

        self.set_constants_apart()

    def set_constants_apart(self):
        """Functions that the compiler is to run cannot ask which mutant it is."""
        code = without_texts(self.text)
        for function in [function for function in self.bodies if function.is_constant]:
            if not any(start < function.start and not set("{};") & set(code[end:function.start - 1])
                       for start, (end, _) in self.constants.items()):
                self.set_apart(function)

    def function_at(self, place):
        return next((function for function in self.functions
                     if function.start <= place < function.end), None)

    def initialized_at(self, place):
        following = min((function for function in self.functions if function.start > place),
                        key=lambda function: function.start, default=None)
        if following is not None and is_initializer_of(self.text, place, following):
            return following
        return None

    def set_apart(self, function):
        self.apart += self.bodies.pop(function, [])

    def drop(self, kind, subject):
        """Something that does not compile: a mutant, a place to note, the end of a function, a value,
        or a constant that the compiler needs."""
        if kind == "end":
            subject.gives_nothing = not subject.gives_nothing
            if subject in self.turned:  # neither end compiles
                self.set_apart(subject)
            self.turned.add(subject)
            return None
        if kind == "value":
            self.apart += self.values.pop(subject, [])
            return None
        if kind == "constant":
            self.constants.pop(subject, None)
            self.set_constants_apart()
            end = self.text.find(";\n", subject)
            for place in [place for place in self.values if subject < place < end]:
                self.apart += self.values.pop(place)
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

        def outside(start, end):
            for place in sorted(place for place in [*self.constants, *self.values]
                                if start <= place < end):
                pieces.append((self.text[start:place], None))
                if place in self.constants:
                    start, new = self.constants[place]
                    pieces.append((f"\n{new}", ("constant", place)))
                else:
                    found = self.values[place]
                    start = found[0].end
                    choice = "".join(f"mutation::number == {mutant.number} ? {mutant.new} : "
                                     for mutant in found)
                    pieces.append((f"\n({choice}{found[0].old})\n", ("value", place)))
            pieces.append((self.text[start:end], None))

        for function in sorted(self.bodies, key=lambda function: function.start):
            outside(at, function.start)
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
            pieces.append((self.text[function.start:function.end], None))
            at = function.end
        outside(at, len(self.text))
        (tree / self.path).write_text("".join(piece for piece, _ in pieces))
        owners, line = [], 1
        for piece, owner in pieces:
            count = piece.count("\n")
            owners.append((line + piece.startswith("\n"), line + count, owner))
            line += count
        return owners

    def place_of(self, mutant):
        """The last place that is noted before it whenever it is run; None when no place is."""
        function = self.function_at(mutant.start)
        if function is None:
            function = self.initialized_at(mutant.start)
            return None if function not in self.bodies else (self.path, function.start)
        first = self.text.rfind("\n", 0, mutant.start) + 1
        indent = indentation(self.text, first)
        for place in sorted(self.statements[function], reverse=True):
            if place == first or (place < first and indentation(self.text, place) <= indent):
                return (self.path, place)
        return (self.path, function.start)


def indentation(text, start):
    return re.compile(r"[ \t]*").match(text, start).end() - start


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
        self.sources = {path: Source(path, (ROOT / path).read_text(), found)
                        for path, found in by_path.items()}
        self.not_built = []
        self.notes, self.owners = {}, {}
        for source in self.sources.values():
            self.write(source)
        more = ["-DCMAKE_BUILD_RPATH_USE_ORIGIN=ON",
                f"-DCMAKE_CXX_FLAGS=-w -Wno-narrowing -include {folder / 'mutation.h'}"]
        if shutil.which("clang++"):  # which takes half of the time
            more += ["-DCMAKE_CXX_COMPILER=clang++", "-DCMAKE_C_COMPILER=clang"]
            more[1] += " -ferror-limit=0 -ftemplate-backtrace-limit=0"  # all who may be to blame
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

    def is_doubtful(self, mutant):
        return mutant in self.sources[mutant.path].doubtful

    @property
    def apart(self):
        return [mutant for source in self.sources.values() for mutant in source.apart]

    def mutants(self):
        """Those that can be run, each with the number of the statement in which it is."""
        for source in self.sources.values():
            for found in [*source.bodies.values(), *source.values.values()]:
                for mutant in found:
                    place = source.place_of(mutant)
                    yield mutant, None if place is None else self.notes[place]
