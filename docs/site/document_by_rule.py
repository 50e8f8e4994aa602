#!/usr/bin/env python3
"""Prints a public header for Doxygen, with a comment for each operation whose meaning follows from a
rule that holds for all classes, so that the headers need not repeat it. What follows no rule and has
no comment in the header stays undocumented, and the check of the pages fails."""

import re
import sys

# Name of an operation, and what is said of it; {0} is the name, {1} what the pattern captured, {2} what
# the header says of the getter. A rule whose third entry is given holds only where the header also has
# an operation of that name.
RULES = [
    (r"set(\w+)On", "Makes {1}On() tell 1.", "{1}On"),
    (r"set(\w+)Off", "Makes {1}On() tell 0.", "{1}On"),
    (r"set(\w+)", "Sets what get{1}() tells{2}.", "get{1}"),
    (r"(\w+)On", "Whether the option is set: 1 or 0.", None),
    (r"(\w+)Exists", "Whether there is one to get: 1 or 0.", None),
    (r"(\w+?)Entries", "How many the list holds.", None),
    (r"convertToBK2", "Flattens the object as a part of its record in the current layout: 1, or 0 "
     "after it has said on the standard error stream why it could not.", None),
    (r"convertToBK2_old", "As convertToBK2(), in the previous layout.", None),
    (r"mycopy", "Copies what this class adds from the source, after what its base copies.", None),
    (r"enum(\w+)", "Gives up to `n` elements from where the last page ended, with 0 as many as there "
     "are in all, in a new collection that is the caller's; returns how many.", None),
    (r"reset(\w+)", "Makes enum{1}() start at the front again.", "enum{1}"),
]


def name_of(line):
    """The operation that a line of a class starts to declare, or None."""
    if not re.match(r"  [A-Za-z~]", line) or "(" not in line or line.startswith("  return"):
        return None
    found = re.match(r"[^(]*?([~\w]+|operator ?[^\s(]+|operator const char\*)\(", line)
    return found.group(1) if found else None


def comments_of(text):
    """What the header says of each operation: {(class, operation): text}."""
    found, scope, above = {}, None, []
    for line in text.split("\n"):
        opened = re.match(r"(?:class|struct)(?: \w+_API)? (\w+)[^;]*$", line)
        if opened:
            scope = opened.group(1)
        stripped = line.strip()
        if stripped.startswith("/// "):
            above.append(stripped[4:])
            continue
        said = " ".join(above)
        if "///<" in line:
            said = line.split("///<")[1].strip()
        name = name_of(line)
        if name and said:
            found.setdefault((scope, name), said)
        above = []
    return found


def rule_for(name, scope, line, text, said_of=None, base=None):
    if "= delete" in line:
        if "&&" in line:
            return "A temporary does not compile: the object must live on."
        return "Not copyable: clone() and mycopy() copy."
    if name == "operator=" and "default" in line:
        return "Copies every value."
    if name == scope:
        if re.search(r"\(const %s&( \w+)?\)" % scope, line):
            return "Copies every value."
        if base and base != "RWCollectable":
            if "(const char* name)" in line:
                return "Starts as a %s does, with `name`; a null is the empty text." % base
            if "()" in line:
                return "Starts as a %s does." % base
        return None
    if name == "~" + str(scope):
        return "Frees what the object owns; what it holds by address stays."
    for pattern, said, other in RULES:
        found = re.fullmatch(pattern, name)
        if found:
            captured = found.group(1) if found.groups() else ""
            lower = captured[:1].lower() + captured[1:]
            getter = (said_of or {}).get((scope, "get" + captured), "").rstrip(".")
            getter = ": " + getter if getter else ""
            if other:
                partner = other.format(name, captured)
                if re.search(r"\b%s\(" % partner, text):
                    return said.format(name, captured, getter)
                if re.search(r"\b%s\(" % (lower + "On"), text) and other == "{1}On":
                    return said.format(name, lower, getter)
                continue
            return said.format(name, captured, getter)
    return None


def rule_outside(line):
    """What is said of a declaration outside classes, or None."""
    found = re.match(r"(?:extern|typedef) .*?(\w+)_OLD;", line)
    if found:
        return "As %s, of the previous layout." % found.group(1)
    if re.match(r"\S.*operator(==|!=|<|>|<=|>=) ?\(", line):
        return "Compares what the two hold."
    if re.match(r"\S.*operator\+ ?\(", line):
        return "The two texts joined."
    return None


def main():
    path = sys.argv[1]
    with open(path, encoding="utf-8") as file:
        text = file.read()
    # Doxygen leaves out the functions and variables of a file that is not said to be documented.
    print(r"/** \file */")
    said_of = comments_of(text)
    scope, base, before, documented = None, None, "", ""
    for line in text.split("\n"):
        opened = re.match(r"(?:class|struct)(?: \w+_API)? (\w+)[^;]*$", line)
        if opened:
            scope, documented = opened.group(1), ""
            derived = re.search(r": public (\w+)", line)
            base = derived.group(1) if derived else None
        name = name_of(line) if scope else None
        outside = rule_outside(line)
        if outside and "///<" not in line and not before.startswith("///"):
            print("/// " + outside)
        commented = before.strip().startswith("///") or "///<" in line
        if name and not commented:
            said = rule_for(name, scope, line, text, said_of, base)
            if said is None and name == documented:
                said = r"\overload"
            if said:
                print("  /// " + said)
                commented = True
        if name and commented:
            documented = name
        print(line)
        before = line
    return 0


if __name__ == "__main__":
    sys.exit(main())
