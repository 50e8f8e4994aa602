#!/usr/bin/env python3
"""Writes the manual pages of the kit from its header: one of each function, with the types that it
takes, and bkoqkit(3), which leads to them.

Usage: kit_manual.py HEADER VERSION DATE FOLDER
"""

import os
import re
import sys

TITLE = "see, free, compare and carry record trees"


def plain(comment):
    """A comment's text, as paragraphs."""
    lines = [re.sub(r"^\s*\*? ?", "", line) for line in comment.strip().split("\n")]
    paragraphs = re.split(r"\n\s*\n", "\n".join(lines))
    return [" ".join(paragraph.split()) for paragraph in paragraphs]


def declarations(header):
    """Each (comment, declaration) of the header, in its order."""
    found = []
    for match in re.finditer(r"^/\*\*((?:[^*]|\*(?!/))*)\*/\n", header, re.M):
        start = end = match.end()
        if header.startswith("#define", start):
            end = header.index("\n", start)
        else:
            depth = 0
            while depth or header[end] != ";":
                if header.startswith("/*", end):  # may hold anything
                    end = header.index("*/", end)
                depth += {"{": 1, "}": -1}.get(header[end], 0)
                end += 1
            end += 1
        found.append((plain(match[1]), header[start:end]))
    return found


def roff(text):
    text = text.replace("\\", "\\e").replace("-", "\\-").replace("'", "\\(aq").replace('"', "\\(dq")
    return re.sub(r"^\.", r"\\&.", text, flags=re.M)


def prose(paragraphs):
    text = ".PP\n".join(roff(paragraph) + "\n" for paragraph in paragraphs)
    text = re.sub(r"\b(bkoq[A-Z]\w+)\(\)", r"\\fB\1\\fP()", text)
    return re.sub(r"`(\w+)`", r"\\fI\1\\fP", text)


def code(text):
    if text.startswith("BKOQ_API "):
        text = text.replace("BKOQ_API ", "").replace("\n" + " " * len("BKOQ_API "), "\n")
    text = re.sub(r"/\*\*<", "/*", text)
    return ".nf\n" + roff(text) + "\n.fi\n"


class Page:
    def __init__(self, name, about, version, date):
        self.name = name
        self.text = '.TH %s 3 "%s" "libbkoq %s" "Functions of the record kit"\n.nh\n' % (
            name, date, version)
        self.section("NAME", "%s \\- %s\n" % (name, about))

    def section(self, title, text):
        self.text += ".SH %s\n%s" % (title, text)

    def write(self, folder):
        with open(os.path.join(folder, self.name + ".3"), "w", encoding="utf-8") as file:
            file.write(self.text)


def main():
    path, version, date, folder = sys.argv[1:]
    with open(path, encoding="utf-8") as file:
        header = file.read()
    functions, types, macros = {}, {}, []
    for comment, declared in declarations(header):
        function = re.search(r"\b(bkoq[A-Z]\w+)\(", declared)
        if declared.startswith("#define"):
            macros.append((comment, declared))
        elif declared.startswith("typedef"):
            name = re.search(r"\(\*(\w+)\)|(\w+);$", declared)
            types[name[1] or name[2]] = (comment, declared)
        elif function:
            functions[function[1]] = (comment, declared)
        else:
            sys.exit("%s: neither a type nor a function: %s" % (path, declared))
    if sorted(functions) != sorted(set(re.findall(r"BKOQ_API [^;]*?\b(bkoq[A-Z]\w+)\(", header))):
        sys.exit("%s: a function has no comment" % path)
    include = "#include <bkoq/kit.h>"

    def types_in(declared, already):
        """Types that a declaration names, and those that these name, in the order of the header."""
        for name in types:
            if name not in already and re.search(r"\b%s\b" % name, declared):
                already.add(name)
                types_in(types[name][1], already)
        return [name for name in types if name in already]

    def described(names):
        return ".PP\n".join(prose(types[name][0]) + code(types[name][1]) for name in names)

    for name, (comment, declared) in functions.items():
        about = re.split(r"[.;:](?: |$)", comment[0])[0].replace("`", "")
        page = Page(name, roff(about[0].lower() + about[1:]), version, date)
        page.section("LIBRARY", roff("The record kit (libbkoqkit, -lbkoqkit), a 32-bit library: -m32") + "\n")
        page.section("SYNOPSIS", code(include) + ".PP\n" + code(declared))
        page.section("DESCRIPTION", prose(comment))
        used = types_in(declared, set())
        if used:
            page.section("TYPES", described(used))
        page.section("SEE ALSO", ",\n".join(".BR %s (3)" % other for other in ["bkoqkit"] + sorted(
            set(re.findall(r"bkoq[A-Z]\w+(?=\(\))", " ".join(comment))) - {name})
        ).replace("),\n", ") ,\n") + "\n")
        page.write(folder)

    page = Page("bkoqkit", TITLE, version, date)
    page.section("LIBRARY", roff("The record kit (libbkoqkit, -lbkoqkit), a 32-bit library: -m32") + "\n")
    page.section("SYNOPSIS", code(include) + ".PP\n.B " + roff(
        "cc -m32 program.c $(pkg-config --cflags --libs bkoqkit)") + "\n")
    overview = re.search(r"/\* ((?:[^*]|\*(?!/))*)\*/", header)[1]
    page.section("DESCRIPTION", prose(plain(overview)))
    page.section("FUNCTIONS", "".join(
        ".TP\n.BR %s (3)\n%s" % (name, prose(comment[:1])) for name, (comment, _) in functions.items()))
    page.section("TYPES", described(types))
    page.section("MACROS", ".PP\n".join(prose(comment) + code(declared) for comment, declared in macros))
    page.section("FILES", ".TP\n.I /usr/include/bkoq/kit.h\n.TQ\n.I /usr/include/bkoq/records.h\n.TQ\n"
                 ".I /usr/include/bkoq/records_old.h\nthe kit, and the records of the two layouts; "
                 "another prefix than /usr where it is not installed by packages\n")
    page.section("SEE ALSO", ".BR bkoq (1)\n")
    page.write(folder)
    return 0


if __name__ == "__main__":
    sys.exit(main())
