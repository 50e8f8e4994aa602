#!/usr/bin/env python3
"""The gdb extension in the real gdb: live processes and core dumps, with and without symbols.

Usage: debugger_test.py SUITE EXTENSION BKOQ CLIENT SERVER, the suite `client` or `server`.
"""
import json
import os
import re
import shutil
import stat
import subprocess
import sys
import tempfile
import unittest

SUITE, EXTENSION, BKOQ, CLIENT, SERVER = sys.argv[1:6]
HERE = os.path.dirname(os.path.abspath(__file__))
SECRETS = ("tr0ub4dor", "s3ss10n", "r00t", "0ps", "l3tm31n", "p4yr0ll", "0123abcd", "syb4se",
           "t4pe", "f4x", "m4il", "pr1nt")
MASK = "********"


class Gdb:
    """One session: what each command printed."""

    def __init__(self, folder, *arguments):
        self._folder = folder
        self._arguments = arguments

    def run(self, commands, extension=EXTENSION):
        session = os.path.join(self._folder, "session")
        results = os.path.join(self._folder, "results")
        with open(session, "w", encoding="utf-8") as file:
            file.write("\n".join(commands) + "\n")
        environment = dict(os.environ, SESSION=session, RESULTS=results, TZ="UTC",
                           DEBUGINFOD_URLS="")
        load = ["-ex", "source " + extension] if extension else []
        done = subprocess.run(
            ["gdb", "-nx", "-q", "-batch", "-iex", "set auto-load safe-path /nonexistent", *load,
             "-ex", "source " + os.path.join(HERE, "session.py"), *self._arguments],
            env=environment, stdin=subprocess.DEVNULL, capture_output=True, timeout=120,
            check=False)
        if not os.path.exists(results):
            raise AssertionError(done.stdout.decode(errors="replace") +
                                 done.stderr.decode(errors="replace"))
        # What fails inside a pretty-printer is only said.
        for word in (b"Python Exception", b"Traceback"):
            assert word not in done.stdout + done.stderr, done.stderr.decode(errors="replace")
        with open(results, encoding="utf-8") as file:
            answers = json.load(file)
        os.unlink(results)
        return answers


def bkoq(*arguments):
    done = subprocess.run([BKOQ, *arguments], env=dict(os.environ, TZ="UTC", NO_COLOR="1"),
                          capture_output=True, check=False)
    if done.returncode != 0:
        raise AssertionError("bkoq %s: %s" % (arguments, done.stderr.decode()))
    return done.stdout


def read(path):
    with open(path, "rb") as file:
        return file.read()


class Suite(unittest.TestCase):
    maxDiff = None

    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.mkdtemp()
        cls.addClassCleanup(shutil.rmtree, cls.folder)

    def outputs(self, answers):
        for answer in answers:
            self.assertNotIn("error", answer)
        return [answer["output"] for answer in answers]

    def error(self, answer):
        self.assertIn("error", answer)
        return answer["error"]


class Client(Suite):
    """Jobs and their records in a process that uses the library."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.images = os.path.join(cls.folder, "images")
        os.mkdir(cls.images)
        cls.core = os.path.join(cls.folder, "core")
        cls.names = []
        names = "python print([c['name']['_M_dataplus']['_M_p'].string() for c in %s])" % (
            "[gdb.parse_and_eval('cases._M_impl._M_start[%d]' % i) for i in range("
            "int(gdb.parse_and_eval('cases._M_impl._M_finish - cases._M_impl._M_start')))]")
        answers = Gdb(cls.folder, CLIENT).run([
            "break ready", "run %s >/dev/null" % cls.images, "generate-core-file " + cls.core, names,
            ])
        for answer in answers:
            assert "error" not in answer, answer
        cls.names = eval(answers[3]["output"])  # a list that the line above printed
        assert len(cls.names) == 14 * 2 + 2 + 4, cls.names
        cls.core_gdb = Gdb(cls.folder, CLIENT, cls.core)

    def case(self, name):
        return "cases._M_impl._M_start[%d]" % self.names.index(name)

    def image(self, name, layout):
        return os.path.join(self.images, "%s.%s.image" % (name, layout))

    def test_images_are_those_of_the_kit(self):
        mine = os.path.join(self.folder, "my image")
        commands = []
        for i, name in enumerate(self.names):
            commands.append('bkoq image %s.current "%s%d.current"' % (self.case(name), mine, i))
            # As an address without a type, the layout has to be said.
            commands.append('bkoq image (void *)%s.previous "%s%d.previous" previous' %
                            (self.case(name), mine, i))
        self.outputs(self.core_gdb.run(commands))
        for i, name in enumerate(self.names):
            for layout in ("current", "previous"):
                path = "%s%d.%s" % (mine, i, layout)
                self.assertEqual(read(path), read(self.image(name, layout)), name)
                self.assertEqual(stat.S_IMODE(os.stat(path).st_mode), 0o600)

    def test_trees_are_those_of_the_command(self):
        plain = [(name, []) for name in self.names if not name.endswith("-1")]
        open_ones = [(name, ["--show-secrets"]) for name in ("nightly", "every-restore-0")]
        commands = []
        for name, options in plain + open_ones:
            commands.append("set bkoq secrets " + ("on" if options else "off"))
            # The type of the pointer says the layout.
            commands.append("bkoq tree %s.current" % self.case(name))
            commands.append("bkoq tree *%s.previous" % self.case(name))
        outputs = iter(self.outputs(self.core_gdb.run(commands)))
        for name, options in plain + open_ones:
            next(outputs)
            for layout in ("current", "previous"):
                shown = bkoq("show", self.image(name, layout), *options).decode()
                self.assertEqual(next(outputs), shown, name)

    def test_jobs_become_job_files_with_the_same_records(self):
        names = [name for name in self.names if name != "foreign"]
        commands = ["set bkoq secrets on"] + ["bkoq job %s.job" % self.case(name) for name in names]
        for name, text in zip(names, self.outputs(self.core_gdb.run(commands))[1:]):
            path = os.path.join(self.folder, "job.json")
            with open(path, "w", encoding="utf-8") as file:
                file.write(text)
            self.assertNotIn("//", re.sub(r'"(\\.|[^"\\])*"', "", text), name)
            for layout in ("current", "previous"):
                image = os.path.join(self.folder, "job.image")
                bkoq("flatten", path, "--layout", layout, "-o", image)
                if read(image) != read(self.image(name, layout)):
                    self.fail(name + ":\n" +
                              subprocess.run([BKOQ, "diff", image, self.image(name, layout)],
                                             capture_output=True, check=False).stdout.decode())

    def test_every_attribute_of_every_kind_is_in_some_job_file(self):
        """So that the test before this one leaves none out."""
        with open(os.path.join(os.path.dirname(EXTENSION), "bkoqdebug", "tables.json"),
                  encoding="utf-8") as file:
            classes = json.load(file)["objects"]["classes"]
        names = [name for name in self.names if name.startswith("every-")]
        commands = ["set bkoq secrets on"] + ["bkoq job %s.job" % self.case(name) for name in names]
        text = "".join(self.outputs(self.core_gdb.run(commands))[1:])
        for name, table in classes.items():
            for attribute in table["attributes"]:
                self.assertIn('"%s": ' % attribute["key"], text, name)

    def test_what_a_job_file_cannot_carry_is_said(self):
        text, = self.outputs(self.core_gdb.run(["bkoq job %s.job" % self.case("foreign")]))
        self.assertIn('// "owner": "\\xff\\xfe" is no UTF-8', text)
        self.assertIn("LabelledNode", text)
        self.assertIn("NoFilter", text)
        self.assertIn("The word at byte 8 is 0, where a job file makes 3", text)
        self.assertIn('"jobName": "foreign \\"classes\\" \\u001b[31m\\u202e"', text)
        path = os.path.join(self.folder, "foreign.json")
        with open(path, "w", encoding="utf-8") as file:
            file.write(text)
        bkoq("check", path)

    def test_objects_are_found_behind_any_pointer(self):
        by_base, by_name, by_address = self.outputs(self.core_gdb.run(
            ["bkoq job namedJob", "bkoq job *(BKQBackupJob *)namedJob",
             "eval \"bkoq job 0x%x\", (unsigned)(BKQJob *)namedJob"]))
        self.assertIn('"jobName": "named"', by_name)
        self.assertIn("NamedJob", by_name)
        self.assertEqual(by_name, by_address)
        self.assertEqual(by_name, by_base)

    def test_secrets_are_masked_unless_asked_for(self):
        things = ["bkoq job %s.job", "bkoq tree %s.current", "print *%s.current",
                  "print *%s.current.pSourceNodes@1", "print *%s.job", "print *%s.previous"]
        commands = [thing % self.case("nightly") for thing in things]
        commands += ["print *(BKQUnixNode *)((BKQRotationBackupJob *)%s.job)->sourceNodes_."
                     "elements_[0]" % self.case("nightly")]
        answers = self.core_gdb.run(commands + ["set bkoq secrets on"] + commands)
        outputs = self.outputs(answers)
        for output in outputs[:len(commands)]:
            for secret in SECRETS:
                self.assertNotIn(secret, output)
            self.assertIn(MASK, output)
            self.assertNotIn(MASK + "*", output)
        for output in outputs[len(commands) + 1:]:
            self.assertNotIn(MASK, output)
            self.assertTrue(any(secret in output for secret in SECRETS))

    def test_no_attribute_tells_a_secret_or_its_length(self):
        """Each that can hold one has one of its own in the jobs that set all."""
        names = [name for name in self.names if name.startswith("every-")]
        things = ["bkoq job %s.job", "bkoq tree %s.current", "bkoq tree %s.previous",
                  "python print_all('%s.job')",
                  "print *%s.current", "print *%s.previous"]
        commands = ["source " + os.path.join(HERE, "print_all.py")]
        commands += [thing % self.case(name) for name in names for thing in things]
        images = os.path.join(self.folder, "longer")
        os.mkdir(images)
        longer_core = os.path.join(self.folder, "longer.core")
        self.outputs(Gdb(self.folder, CLIENT).run(
            ["break ready", "run %s 290 >/dev/null" % images, "generate-core-file " + longer_core]))
        longer = self.outputs(Gdb(self.folder, CLIENT, longer_core).run(commands))
        places = lambda text: re.sub("0x[0-9a-f]+", "0x", text)
        shorter = self.outputs(self.core_gdb.run(commands))
        for command, short, long in list(zip(commands, shorter, longer))[1:]:
            self.assertNotRegex(short, r"S[a-e]\d", command)
            if "print *" not in command:  # a job's record holds no secret itself
                self.assertIn(MASK, short, command)
            self.assertEqual(places(short), places(long), command)

    def test_printers(self):
        job = "((BKQRotationBackupJob *)%s.job)" % self.case("nightly")
        outputs = self.outputs(self.core_gdb.run([
            "print %s->owner_" % job, "print (RWCString)%s->owner_" % job,
            "print %s->schedule_->execTime_" % job,
            "print (RWTime)%s->schedule_->execTime_" % job,
            "print %s->sourceNodes_" % job, "print (RWSlistCollectables)%s->filters_" % job,
            "print *%s.job" % self.case("nightly"), "print *%s.current" % self.case("nightly"),
            "print *%s.previous" % self.case("nightly"), "print *labelledNode",
            "print *(BKQNode *)labelledNode", "print cases"]))
        self.assertEqual(outputs[0], '$1 = "operator"\n')
        self.assertEqual(outputs[1], '$2 = "operator"\n')
        self.assertEqual(outputs[2], "$3 = 2004-03-01 22:00:00 UTC\n")
        self.assertEqual(outputs[3], "$4 = 2004-03-01 22:00:00 UTC\n")
        self.assertRegex(outputs[4], r'^\$5 = BKQNodeCol of 4 = \{\(BKQUnixNode \*\) 0x[0-9a-f]{8} '
                                     r'"ledger", \(BKQWinNTNode \*\)')
        self.assertIn('RWSlistCollectables of 4 = {(BKQDirFilter *)', outputs[5])
        # Of the object's own class, not that of the pointer.
        self.assertIn("BKQRotationBackupJob = {jobName = \"nightly\"", outputs[6])
        self.assertIn("newTapeTimeout = 10,", outputs[6])
        self.assertIn("usJobType = 20 (rotation backup)", outputs[7])
        self.assertIn("pSourceNodes = 4 BKNODE at 0x", outputs[7])
        self.assertIn('pszNodeName = "ledger", ""', outputs[7])
        self.assertIn('pFileList = {"2003.db", "2004.db"}', outputs[7])
        self.assertIn("ulOptions = 0x00100008 (1048584: no estimate, 0x00000008)", outputs[7])
        self.assertIn("pMedia[0] = BKDTAPE = {pszDeviceGroup = \"DAILY\"", outputs[7])
        self.assertIn("*pTapeX = BKDTAPEX = {", outputs[7])
        self.assertIn("abJobTypes = 1 2 3 4 5 6 7 8", outputs[8])
        self.assertIn("<BKQUnixNode> = BKQUnixNode = {nodeName = \"labelled\"", outputs[9])
        self.assertIn("BKQUnixNode = {nodeName = \"labelled\"", outputs[10])

    def test_without_symbols_or_files(self):
        """The core alone: addresses are all that there is."""
        address = "python print(hex(int(gdb.parse_and_eval('%s.%s'))))"
        job, record = (int(output, 16) for output in self.outputs(self.core_gdb.run(
            [address % (self.case("nightly"), part) for part in ("job", "current")])))
        self.assertEqual(
            self.outputs(self.core_gdb.run(["bkoq job %d" % job, "bkoq tree %d" % record])),
            self.outputs(Gdb(self.folder, "-c", self.core).run(
                ["bkoq job %d" % job, "bkoq tree %d" % record])))

    def test_random_damage(self):
        """The same for the words of objects."""
        answers = Gdb(self.folder, CLIENT).run([
            "break ready", "run %s >/dev/null" % self.images,
            "source " + os.path.join(HERE, "damage.py"),
            "damage-objects %d" % self.names.index("nightly")])
        self.assertRegex(self.outputs(answers)[-1], r"^(\d+ whole, \d+ refused\n){2}$")


class Server(Suite):
    """Trees in a process that has nothing of ours, alive and as a core dump without its file."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.core = os.path.join(cls.folder, "core")
        server = os.path.join(cls.folder, "server")
        shutil.copy(SERVER, server)
        addresses = os.path.join(cls.folder, "addresses")
        live = Gdb(cls.folder, server)
        answers = live.run(["run >" + addresses, "generate-core-file " + cls.core,
                            "bkoq tree $esp"])
        assert "error" not in answers[1], answers
        with open(addresses, encoding="ascii") as file:
            cls.trees = dict(line.split() for line in file)
        # The addresses of a live one are its own, so it says them once more.
        cls.live_start = ["run >" + addresses, "python trees = dict(line.split() for line in "
                          "open('%s'))" % addresses]
        cls.live = Gdb(cls.folder, SERVER)
        os.unlink(server)
        cls.gdb = Gdb(cls.folder, "-c", cls.core)

    def tree(self, name, *options):
        return "bkoq tree %s %s" % (self.trees[name], " ".join(options))

    def test_there_are_no_symbols(self):
        symbols = subprocess.run(["nm", SERVER], capture_output=True, check=False)
        self.assertIn(b"no symbols", symbols.stderr)
        libraries, = self.outputs(self.gdb.run(["info sharedlibrary"]))
        self.assertNotIn("bkoq", libraries)

    def test_alive_and_dead_are_the_same(self):
        image = os.path.join(self.folder, "live.image")
        self.outputs(self.live.run(self.live_start + [
            "python gdb.execute('bkoq image %%s %s' %% trees['good'])" % image]))
        dead = os.path.join(self.folder, "dead.image")
        tree, _ = self.outputs(self.gdb.run([self.tree("good"), "bkoq image %s %s" % (
            self.trees["good"], dead)]))
        self.assertEqual(read(image), read(dead))
        self.assertEqual(bkoq("show", dead).decode(), tree)
        self.assertIn('"ledger", "extra"', tree)

    def test_hostile_texts_are_escaped_and_secrets_masked(self):
        tree, = self.outputs(self.gdb.run([self.tree("good")]))
        self.assertIn('"op \\"q\\" \\\\ \\x1b[31m \\xe2\\x80\\xae \\xff \u00e9\\n"', tree)
        self.assertNotIn("secret", tree)
        self.assertIn("pszPassword       #5  " + MASK + "\n", tree)
        self.assertIn('"sa:' + MASK + '", ""', tree)

    def test_a_failed_conversion(self):
        image = os.path.join(self.folder, "failed.image")
        tree, _ = self.outputs(self.gdb.run([self.tree("failed"), "bkoq image %s %s" % (
            self.trees["failed"], image)]))
        self.assertIn("pSourceNodes      null          unfinished: the count is 2\n", tree)
        self.assertEqual(bkoq("show", image).decode(), tree)

    def damaged(self, name, expected):
        """The tree is printed as far as it goes and the command fails; no image is written."""
        image = os.path.join(self.folder, name + ".image")
        tree, written = self.gdb.run([self.tree(name), "bkoq image %s %s" % (self.trees[name],
                                                                              image)])
        self.assertRegex(self.error(tree), "the tree is damaged, or of the other layout: .*" +
                         expected)
        self.assertRegex(self.error(written), expected)
        self.assertEqual([file for file in os.listdir(self.folder) if file.startswith(name + ".")],
                         [])

    def test_lost_pointers(self):
        self.damaged("lost", r"pSourceNodes\[0\]\.pMedia\[0\]\.pDiskItems: 3 BKDISKITEM at "
                     r"0xfffffff0: .* is outside 32 bits")
        tree, = self.gdb.run([self.tree("lost")])
        self.assertIn("2 fields cannot be followed", self.error(tree))

    def test_a_damaged_count(self):
        self.damaged("count", r"pDiskItems: 4294967295 BKDISKITEM at 0x[0-9a-f]{8}: the tree would "
                     r"hold more than 256 MiB")

    def test_a_count_beyond_the_memory(self):
        self.damaged("many", r"pSourceNodes: 2000000 BKNODE at 0x[0-9a-f]{8}: there is no memory")

    def test_records_that_hold_themselves(self):
        self.damaged("round", r"pSourceNodes\[1\]\.pMedia: 100 BKDDISK at 0x[0-9a-f]{8}: ")

    def test_a_text_without_an_end(self):
        self.damaged("endless", r"pszOwner: 1 text at 0x[0-9a-f]{5}ffd: there is no memory")

    def test_a_text_at_the_end_of_memory(self):
        tree, = self.outputs(self.gdb.run([self.tree("edge")]))
        self.assertIn('"ok"\n', tree)

    def test_a_job_of_unknown_kind(self):
        image = os.path.join(self.folder, "unknown.image")
        tree, written = self.gdb.run([self.tree("unknown"), "bkoq image %s %s" % (
            self.trees["unknown"], image)])
        self.assertIn("pMedia            not followed", tree["output"])
        self.assertIn("pSourceNodes[0].pMedia: a pointer in a job of unknown kind",
                      self.error(written))

    def test_random_damage(self):
        """Words of the records and texts become others, at random: every command ends with a tree or
        with a word."""
        answers = self.live.run(self.live_start + ["source " + os.path.join(HERE, "damage.py"),
                                                   "damage-records"])
        self.assertRegex(self.outputs(answers)[-1], r"^\d+ whole, \d+ refused\n$")

    def test_the_other_layout(self):
        """Read wrongly, a tree may be anything; the command ends."""
        answer, = self.gdb.run([self.tree("good", "previous")])
        self.assertTrue("output" in answer or "the other layout" in answer["error"])

    def test_wrong_arguments(self):
        good = self.trees["good"]
        answers = self.gdb.run([
            "bkoq tree", "bkoq image", "bkoq image " + good, "bkoq job", "bkoq tree 0",
            "bkoq tree 0x13", "bkoq tree 0x100000000", "bkoq job " + good, "bkoq job 0x13",
            "bkoq tree nothing", "bkoq image %s /nonexistent/x" % good, "bkoq nothing",
            "bkoq tree 1.5"])
        for answer, expected in zip(answers, (
                "usage: bkoq tree", "usage: bkoq image", "usage: bkoq image", "usage: bkoq job",
                "0 is null", "no BKQJDATATRANSFER at 0x13: there is no memory",
                "no address of 32 bits", "no object of a class is at", "no object of a class is at",
                "No symbol", "No such file or directory", "Undefined bkoq command",
                "is no address")):
            self.assertIn(expected, self.error(answer))

    def test_limit(self):
        answers = self.gdb.run(["set bkoq limit 1", "show bkoq limit", "show bkoq secrets",
                                self.tree("good")])
        self.assertEqual([answer["output"] for answer in answers[1:3]],
                         ["A tree or an object may hold 1 MiB.\n",
                          "Passwords and keys are masked.\n"])
        self.assertIn("output", answers[3])


if __name__ == "__main__":
    suite = {"client": Client, "server": Server}[SUITE]
    tests = unittest.defaultTestLoader.loadTestsFromTestCase(suite)
    result = unittest.TextTestRunner(verbosity=2).run(tests)
    sys.exit(0 if result.wasSuccessful() else 1)
