"""Tries mutants that were compiled together, several at a time."""

import collections
import multiprocessing
import queue
import re
import signal
import time

from mutation.together import Together
from mutation.units import Bench, one_line, units_of
from mutation.workshop import Optimizer, tests_of


def shown_text(mutant):
    """The text that a mutant changes, as a command would print it; empty when it changes no text."""
    if not mutant.old.startswith('"'):
        return ""
    return one_line(mutant.old[1:-1].replace('\\"', '"').replace("\\n", "\n"))


def statement_of(mutant):
    start = max(mutant.text.rfind(end, 0, mutant.start) for end in ";{}") + 1
    return mutant.text[start:mutant.text.find(";", mutant.end)]


def mentioned(mutant):
    """The texts of the statement that a mutant is in, and the words that its names are made of."""
    statement = statement_of(mutant)
    texts = (one_line(text) for text in re.findall(r'"((?:[^"\\\n]|\\.)+)"', statement))
    texts = {part for text in texts for part in re.split(",(?=-)", text) if len(part) > 1}
    words = {word.lower() for word in re.findall("[A-Z]?[a-z]{2,}", statement)}
    return texts, words


class Mentions:
    """Which commands are likely to tell of a change: those that are given an option whose words or texts
    are in the statement, above all when few are."""

    def __init__(self, commands):
        self.options = {command: {word for option in re.findall("--?([a-z][a-z-]*)", command.step.command)
                                  for word in option.split("-")} for command in commands}
        self.having = collections.Counter(word for words in self.options.values() for word in words)

    def likely(self, mutant, reaching):
        texts, words = mentioned(mutant)
        having = {text: max(1, sum(text in command.step.command for command in reaching)) for text in texts}
        weights = {}
        for command in reaching:
            weight = sum(1 / self.having[word] for word in words & self.options[command])
            weight += sum(1 / having[text] for text in texts if text in command.step.command)
            if weight > 0:
                weights[command] = weight
        return sorted(weights, key=lambda command: -weights[command])


class Judge:
    """One of those who try mutants, with a bench of its own."""

    def __init__(self, folder, built, part, units, accepted, most, killed):
        self.folder, self.part, self.accepted, self.optimizer = folder, part, accepted, None
        self.most = most  # commands that a mutant is tried with; None for all
        self.bench = Bench(folder / "build", built)
        self.programs, self.commands, self.transcripts, self.scripts = units
        self.mentions = Mentions(self.commands)
        self.kills = collections.Counter()  # by file and test, and by file and transcript
        for path, name in killed:
            self.note(path, name)
        self.last = {}  # by file: what killed the last one of it

    def note(self, path, name):
        self.kills[path, name] += 1
        if ", command " in name:
            self.kills[path, name.split(",")[0]] += 1

    def outcome(self, mutant, statement):
        """What becomes of a mutant: a word, and the name of the first test that fails."""
        in_hurry = self.most is not None
        killer = None
        if not (in_hurry and mutant.key() in self.accepted):
            killer = self.killer(mutant, statement)
        if killer is not None:
            return "killed", killer
        if mutant.key() not in self.accepted and not in_hurry:
            if self.optimizer is None:
                self.optimizer = Optimizer(self.folder / "optimized", self.part)
            return self.optimizer.alone(mutant) or "survived", None
        return "survived", None

    def killer(self, mutant, statement):
        self.bench.choose(mutant.number)
        try:
            for unit, passes in self.tries(mutant, statement):
                if not passes():
                    self.note(mutant.path, unit.name)
                    self.last[mutant.path] = unit
                    return unit.name
        finally:
            self.bench.choose(0)
        return None

    def tries(self, mutant, statement):
        """What to run, one after the other: first what is quick and reaches little else."""
        last = self.last.get(mutant.path)
        # What takes long kills last, so whatever it killed before survived all else.
        is_likely = last is not None and last not in self.programs and (
            last.took < 1 or self.kills[mutant.path, last.name] > 1)
        if is_likely and (statement is None or statement in last.reached):
            yield last, lambda: last.passes(self.bench)
        else:
            last = None
        reaching = [command for command in self.commands
                    if command is not last and (statement is None or statement in command.reached)]
        reaching.sort(key=lambda command: (-self.kills[mutant.path, command.name],
                                           -self.kills[mutant.path, command.name.split(",")[0]],
                                           len(command.reached)))
        printed = shown_text(mutant)
        printing = [command for command in reaching if printed and printed in command.printed]
        first = printing[:3] + [command for command in self.mentions.likely(mutant, reaching)
                                if command not in printing[:3]][:25]
        for command in first:
            yield command, lambda: command.passes(self.bench)
        slow = []
        for program in self.programs:
            names, others = program.cut(statement)
            if names:
                yield program, lambda: program.passes_some(self.bench, names)
            if others:
                slow.append((program, others))
        doubtful = [transcript for transcript in self.transcripts if not transcript.is_cut]
        for command in [command for command in reaching if command not in first][:self.most]:
            yield command, lambda: command.passes(self.bench)
            if command.left != command.after and command.whole not in doubtful:
                doubtful += [whole for whole in self.transcripts if whole is command.whole]
        for unit in doubtful + self.scripts:
            if unit is not last and (statement is None or statement in unit.reached):
                yield unit, lambda: unit.passes(self.bench)
        for program, names in slow:
            yield program, lambda: program.passes_some(self.bench, names)


def work(judge, tasks, results, stop):
    signal.signal(signal.SIGINT, signal.SIG_IGN)
    while not stop.is_set():
        try:
            mutant, statement = tasks.get(timeout=1)
        except queue.Empty:
            break
        results.put((mutant.number, *judge.outcome(mutant, statement)))
    results.put(None)
    results.close()


def try_together(folder, part, mutants, options, accepted, killed, add):
    """Calls add(mutant, outcome, killer) for each mutant of a function; returns the others, None when
    it was stopped. `killed` are files and tests that killed a mutant of them before."""
    started = time.monotonic()
    folder.mkdir()
    together = Together(folder, part, mutants, options.jobs)
    for mutant in together.not_built:
        add(mutant, "not built", None)
    again = []  # what a build of its own may tell better about
    print(f"built after {time.monotonic() - started:.0f} s, without {len(together.apart)} that the "
          "compiler needs to know", flush=True)
    bench = Bench(together.build_folder, together.build_folder)
    units = units_of(list(tests_of(together.build_folder, part, options.random_count)), bench,
                     folder / "states", options.slow)
    print(f"ready after {time.monotonic() - started:.0f} s; pieces: {len(units[1])} commands, " +
          ", ".join(f"{unit.name} {unit.took:.1f} s" for unit in units[0] + units[3]), flush=True)
    context = multiprocessing.get_context("fork")
    tasks, results, stop = context.Queue(), context.Queue(), context.Event()
    by_number = {}
    for mutant, statement in together.mutants():
        by_number[mutant.number] = mutant
        tasks.put((mutant, statement))
    judges = []
    for number in range(options.workers):
        judge = Judge(folder / f"judge{number}", together.build_folder, part, units, accepted,
                      options.most, killed)
        judges.append(context.Process(target=work, args=(judge, tasks, results, stop)))
    handlers = {number: signal.signal(number, lambda *_: stop.set())
                for number in (signal.SIGINT, signal.SIGTERM)}
    for process in judges:
        process.start()
    left = len(judges)
    while left > 0:
        result = results.get()
        if result is None:
            left -= 1
        else:
            number, outcome, killer = result
            mutant = by_number[number]
            if outcome == "survived" and mutant.key() not in accepted and together.is_doubtful(mutant):
                again.append(mutant)
            else:
                add(mutant, outcome, killer)
    tasks.cancel_join_thread()
    for process in judges:
        process.join()
    for number, handler in handlers.items():
        signal.signal(number, handler)
    return None if stop.is_set() else together.apart + again
