#!/usr/bin/env python3
"""The structs of `bkoq layout --c` are those of the public headers: every field of every record, in
both layouts, has the same place and width, and the output compiles without a warning as C99.

Usage: c_test.py <bkoq> <include folder> <C compiler>...
"""
import json
import pathlib
import subprocess
import sys
import tempfile

MEMBERS = {"volume, file, directory": ["pattern"], "attribute": ["attribute"],
           "time": ["bound", "between", "within"], "time before, after": ["bound"],
           "time between": ["between"], "time within": ["within"]}
# What only the table names: bytes that are not used, and those of an unknown kind.
UNNAMED = ("abUnused", "ulOpaque", "usOpaque")


def run(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def program(header, fields):
    lines = [f'#include "{header}"', "#include <stddef.h>", "#include <stdio.h>", "int main(void) {"]
    for record, name in fields:
        width = f"sizeof((({record}*)0)->{name})" if name else f"sizeof({record})"
        place = f"offsetof({record}, {name})" if name else "0"
        lines.append(f'  printf("%u %u\\n", (unsigned)({place}), (unsigned){width});')
    return "\n".join(lines + ["  return 0;", "}", ""])


def places(folder, compiler, flags, header, fields):
    source, binary = folder / "fields.c", folder / "fields"
    source.write_text(program(header, fields))
    run(*compiler.split(), *flags, "-Wall", "-Wextra", "-pedantic", "-Werror", str(source), "-o",
        str(binary))
    return [tuple(map(int, line.split())) for line in run(str(binary)).splitlines()]


def main():
    bkoq, include, *compilers = sys.argv[1:]
    folder = pathlib.Path(tempfile.mkdtemp())
    checked = 0
    for layout in ("current", "previous"):
        option = ["--previous"] if layout == "previous" else []
        table = json.loads(run(bkoq, "layout", "--json", *option))
        (folder / "written.h").write_text(run(bkoq, "layout", "--c", *option))
        # What the table says, the struct's own member and the member of the public header.
        expected, written, public = [], [], []
        for record in table["records"]:
            name = record["record"]
            expected.append((0, record["size"]))
            written.append((name, ""))
            public.append((name, ""))
            for field in record["fields"]:
                for member in MEMBERS.get(field.get("filters", ""), [] if "filters" in field else [""]):
                    path = f"as.{member}.{field['name']}" if member else field["name"]
                    expected.append((field["offset"], field["width"]))
                    written.append((name, path))
                    unnamed = field["name"].startswith(UNNAMED)
                    public.append(None if unnamed else (name, field["name"]))
        named = [i for i, each in enumerate(public) if each]
        header = "bkoq/records_old.h" if layout == "previous" else "bkoq/records.h"
        for compiler in compilers:
            assert places(folder, compiler, ["-m32", "-std=c11", "-I", include], header,
                          [public[i] for i in named]) == [expected[i] for i in named]
            for flags in (["-m32", "-std=c99"], ["-std=c99"]):
                found = places(folder, compiler, flags, "written.h", written)
                wrong = [(w, f, e) for w, f, e in zip(written, found, expected) if f != e]
                assert not wrong and len(found) == len(expected), (compiler, flags, wrong)
        checked += len(expected)
        # One alone comes with what it embeds.
        job = table["records"][0]["record"]
        (folder / "job.h").write_text(run(bkoq, "layout", job, "--c", *option))
        places(folder, compilers[0], ["-m32", "-std=c99"], "job.h", [(job, "")])
    assert checked > 350, checked
    print(f"{checked} places compared")


main()
