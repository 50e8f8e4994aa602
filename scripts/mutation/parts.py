"""What is changed, and with what it is tested."""

import pathlib
import re

from mutation.mutants import ROOT


class Part:
    """Folders whose mutants are built and tested in the same way."""

    def __init__(self, folders, targets, tests, target=None, headers=(), templates=(),
                 optimized=()):
        self.folders, self.targets, self.tests = folders, targets, re.compile(tests)
        # Headers of others that `target` compiles before anything else.
        self.target, self.headers = target, headers
        # Used in so many places that errors in them name mutants of others: compiled by themselves.
        self.templates = {pathlib.Path(path) for path in templates}
        # What no compiler uses that does not optimize.
        self.optimized = {pathlib.Path(path) for path in optimized}
        has_tools = "bkoq_tool" in targets
        self.options = ["-DBKOQ_BUILD_TOOLS=" + ("ON" if has_tools else "OFF")]
        # What a test needs that is made by running what a mutant may have changed.
        self.once = ["bkoq_debugger"] if has_tools else []


RANDOM = "random_jobs"  # its number of jobs is an option
# What the command is tested with, but for tests of the size of its memory, of many files, and of what
# stands in the program, where mutants stand as well.
COMMAND = ["bkoq_tool", "preloaded"]
COMMAND_TESTS = r"bkoq_tool\.(?!streaming|damage|completion|environment).*"
TOOL_HEADERS = ["nlohmann/json.hpp", "CLI/App.hpp", "CLI/Config.hpp", "CLI/Formatter.hpp"]
PARTS = {
    "library": Part(["transfer", "transfer_old", "model", "rw", "include"],
                    ["bkoq_test", "bkoq_internal_test", "rw_test", "random_jobs"],
                    "rw_test|bkoq_test|bkoq_internal_test|random_jobs",
                    optimized=["rw/inline.h"]),
    "kit": Part(["kit"], ["kit_test", "kit_c_test", "kit_memory_test", "image_check", *COMMAND],
                r"kit_test|bkoqkit\.c|kit_memory_test|bkoqkit\.(read_image|hostile_images|documents)|"
                + COMMAND_TESTS, "bkoq_tool_objects", TOOL_HEADERS),
    "tools": Part(["tools"], ["tools_test", *COMMAND], "tools_test|" + COMMAND_TESTS,
                  "bkoq_tool_objects", TOOL_HEADERS, ["tools/attributes.h", "tools/credentials.h"]),
}


def sources(part):
    for folder in part.folders:
        for path in sorted((ROOT / folder).rglob("*")):
            name = path.name
            if path.suffix not in (".h", ".cpp") or name.endswith("_test.cpp"):
                continue
            if name.startswith("test_") or name == "attribute_cases.h":
                continue
            yield path.relative_to(ROOT)
