"""What can be changed in the sources: each mutant is one change in one place."""

import functools
import pathlib
import re

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent

# A string, a character, a comment: code is what lies between.
TOKENS = re.compile(r'"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])*\'|//[^\n]*')
SWAPS = [("==", "!="), ("!=", "=="), ("<", "<="), ("<=", "<"), (">", ">="), (">=", ">"),
         ("&&", "||"), ("||", "&&"), ("+", "-"), ("-", "+"), ("*", "+"), ("+=", "-="),
         ("|=", "&="), ("|=", "="), ("|", "&"), ("&", "|")]
NUMBER = re.compile(r"(?<![\w.])(0[xX][0-9a-fA-F]+|\d+)([uUlL]*)(?![\w.])")
WORDS = {"true": "false", "false": "true", "CurrentLayout": "PreviousLayout",
         "PreviousLayout": "CurrentLayout", "BKOQ_LAYOUT_CURRENT": "BKOQ_LAYOUT_PREVIOUS",
         "BKOQ_LAYOUT_PREVIOUS": "BKOQ_LAYOUT_CURRENT", "find": "rfind", "rfind": "find"}
# An expression on a line of its own: an assignment or a call.
STATEMENT = re.compile(r"\s+(?!return\b|delete\b|throw\b|break\b|case\b|using\b|goto\b)"
                       r"(?:(?:\+\+|--)?[\w:.>\[\]()*-]+(?: [|&^+*/-]?= .+)?|\(void\).+);\n")
DECLARATION = re.compile(r"^\s+(?:mutable )?(?:unsigned |const )?([\w:<>*& ]+?) ?([*&]?)(\w+)"
                         r"(?:\[\w+\])?(?: = [^;]+|\{[^;]*\})?;")


class Mutant:
    def __init__(self, path, text, start, end, new):
        self.path, self.text = path, text
        self.start, self.end, self.new = start, end, new
        self.old = text[start:end]
        self.line = text.count("\n", 0, start) + 1
        first = text.rfind("\n", 0, start) + 1
        self.code = text[first:text.find("\n", start)].strip()
        self.column = start - first + 1

    def change(self):
        return f"{self.old} -> {self.new}"

    def applied(self):
        return self.text[:self.start] + self.new + self.text[self.end:]

    def key(self):
        return (str(self.path), self.code, self.change().strip())

    def __str__(self):
        return f"{self.path}:{self.line}:{self.column}: {self.change()}: {self.code}"


def mutants_of_code(text, start, end):
    """Yields (start, end, new) within a stretch of code."""
    code = text[start:end]
    for old, new in SWAPS:
        for match in re.finditer(rf"(?<= ){re.escape(old)}(?= |\n)", code):
            yield start + match.start(), start + match.end(), new
    for match in NUMBER.finditer(code):
        digits, suffix = match.groups()
        if digits.lower().startswith("0x"):
            value = int(digits, 16)
            news = [f"0x{value << 1:X}", f"0x{value >> 1:X}"]
        else:
            value = int(digits)
            news = [str(value + 1), str(value - 1)]
        for new in news:
            yield start + match.start(), start + match.end(), new + suffix
    for old, new in WORDS.items():
        for match in re.finditer(rf"\b{old}\b", code):
            yield start + match.start(), start + match.end(), new
    for match in re.finditer(r"(?<=[( ])!(?=[\w(])", code):
        yield start + match.start(), start + match.end(), ""
    # A whole condition, where it ends on its line.
    for match in re.finditer(r"\b(?:if|while) \((?!!\w+[)])", code):
        depth, at = 1, match.end()
        while at < len(code) and depth > 0:
            depth += {"(": 1, ")": -1}.get(code[at], 0)
            at += 1
        if depth == 0:
            condition = code[match.end():at - 1]
            yield start + match.end(), start + at - 1, f"!({condition})"


@functools.lru_cache(maxsize=None)
def neighbours():
    """Fields and members, each with the next of its class that has the same type."""
    found = {}
    for path in sorted((ROOT / "include").rglob("*.h")):
        groups = {}
        for line in path.read_text().splitlines():
            if re.match(r"(?:typedef )?(?:class|struct) ", line):
                groups = {}
            match = DECLARATION.match(line)
            if match and "(" not in line:
                groups.setdefault(match.group(1) + match.group(2), []).append(match.group(3))
                names = groups[match.group(1) + match.group(2)]
                if len(names) > 1:
                    found.setdefault(names[-2], names[-1])
                    found[names[-1]] = names[0]
    return found


def arguments_of_calls(code):
    """Where the arguments of each call that ends in this stretch are. Of the smaller or larger of two
    the order makes no difference."""
    for match in re.finditer(r"(?<=\w)[({]", code):
        depth, at, first, found = 1, match.end(), match.end(), []
        while at < len(code) and depth > 0:
            depth += {"(": 1, "{": 1, "[": 1, ")": -1, "}": -1, "]": -1}.get(code[at], 0)
            if depth == 0 or (depth == 1 and code[at] == ","):
                found.append((first, at))
                first = at + 1
            at += 1
        is_either = re.search(r"\bstd::(?:min|max)$", code[:match.start()]) and len(found) == 2
        if depth == 0 and len(found) > 1 and not is_either:
            yield found


# A parameter: its type, its name, its default.
PARAMETER = re.compile(r"\s*((?:const )?[\w:<>, ]*[\w>](?: const)?(?: |[*&]+ ?))"
                       r"(?:\w+|/\*\w+\*/)?(?: = .*)?")


def are_parameters_of_two_types(left, right):
    """No call is ever compiled with two parameters of different types swapped."""
    left, right = PARAMETER.fullmatch(left), PARAMETER.fullmatch(right)
    return left is not None and right is not None and left.group(1) != right.group(1)


def swaps_of_line(line, names):
    """Yields (start, end, new) of a line, its texts included."""
    for found in arguments_of_calls(line):
        for (a, b), (c, d) in zip(found, found[1:]):
            left, right = line[a:b], line[c:d]
            if left.strip() != right.strip() and not are_parameters_of_two_types(left, right):
                space = right[:len(right) - len(right.lstrip())]
                yield a, d, right.lstrip() + "," + space + left.strip()
    for match in re.finditer(r"(?:(?<=->)|(?<=\.)|\b)(\w+_|(?<=[>.])\w+)\b(?!\()", line):
        if match.group(1) in names and names[match.group(1)] != match.group(1):
            yield match.start(1), match.end(1), names[match.group(1)]
    if STATEMENT.fullmatch(line) and line.count("(") == line.count(")"):
        start = len(line) - len(line.lstrip())
        yield start, len(line) - 2, ""


def bodies(text):
    """Whether each character is inside a function."""
    stack, since, inside = [], 0, bytearray(len(text))
    for at, character in enumerate(text):
        if character == "{":
            head = text[since:at]
            is_scope = re.search(r"\b(?:class|struct|enum|namespace|extern|union)\b", head)
            stack.append(bool(stack and stack[-1]) or (")" in head and not is_scope))
        elif character == "}" and stack:
            stack.pop()
        if character in "{};":
            since = at + 1
        inside[at] = bool(stack and stack[-1])
    return inside


def mutants_of_file(path):
    """Those of a public header are of its inline code."""
    text = (ROOT / path).read_text()
    inside = bodies(text) if path.parts[0] == "include" else None
    found = set()
    for mutant in all_mutants_of(path, text):
        change = (mutant.start, mutant.end, mutant.new)
        if change not in found and (inside is None or inside[mutant.start]):
            found.add(change)
            yield mutant


def all_mutants_of(path, text):
    names = neighbours()
    position, before = 0, ";"
    for line in text.splitlines(keepends=True):
        code = line.split("//")[0].strip()
        if code and not code.startswith(("#", "using ", "template", "static_assert", "*", "/*")):
            comment = next((token.start() for token in TOKENS.finditer(line)
                            if token.group().startswith("//")), len(line))
            for a, b, new in swaps_of_line(line, names):
                is_whole = new or before[-1:] in ";{}:" or before == ""
                if is_whole and a < comment:
                    yield Mutant(path, text, position + a, position + b, new)
        position += len(line)
        before = code or before
    stretches = []
    at = 0
    for token in TOKENS.finditer(text):
        stretches.append((at, token.start()))
        at = token.end()
        line = text[text.rfind("\n", 0, token.start()) + 1:token.start()]
        is_directive = line.lstrip().startswith(("#", "static_assert")) or "extern" in line
        if token.group().startswith('"') and not is_directive:
            inner = token.group()[1:-1]
            yield Mutant(path, text, token.start(), token.end(), f'"{inner}x"')
        elif token.group().startswith("'") and token.group() != "'x'":
            yield Mutant(path, text, token.start(), token.end(), "'x'")
    stretches.append((at, len(text)))
    for start, end in stretches:
        # Directives are not code, nor are lines that only name a type or a file.
        position = start
        for line in text[start:end].splitlines(keepends=True):
            whole = text[text.rfind("\n", 0, position) + 1:position] + line
            if not whole.lstrip().startswith(("#", "using ", "template", "static_assert")):
                for a, b, new in mutants_of_code(text, position, position + len(line)):
                    yield Mutant(path, text, a, b, new)
            position += len(line)
