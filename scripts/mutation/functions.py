"""Where the bodies of functions are, as far as the text of a formatted source tells."""

import re

# A string, a character, a comment, a directive: code is what lies between.
HIDDEN = re.compile(r'R"\((?:.|\n)*?\)"|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])*\'|//[^\n]*'
                    r'|/\*(?:.|\n)*?\*/'
                    r'|^[ \t]*#(?:[^\n]*\\\n)*[^\n]*', re.MULTILINE)
SCOPE = re.compile(r"\b(?:namespace|extern|class|struct|union|enum)\b")
# What stands before the body of a function, and before that of a lambda.
FUNCTION = re.compile(r"\)\s*(?:const|noexcept|override|final|mutable|\s)*(?:->[^(){}=]+)?$"
                      r"|\)\s*:\s[^{}]*\)$")
LAMBDA = re.compile(r"\[[^\[\]]*\]\s*\([^{}]*\)\s*(?:mutable\s*)?(?:->[^(){}=]+)?$")
# It may give a lambda, and two of these are never of one type. What the lambda does can be copied.
GIVES_AUTO = re.compile(r"\bauto\s+[\w:~<>]+\s*\([^{}]*\)[^->{}]*$")
VOID = re.compile(r"\bvoid\s+[\w:~<>]+\s*\(")
CONSTRUCTOR = re.compile(r"^(?:(?:inline|explicit|constexpr|virtual|[A-Z]+_[A-Z]+|public:|private:|protected:"
                         r"|template\s*<[^>]*>)\s+)*"
                         r"(?:\w+::)*~?[A-Z]\w*\s*\(")
# What may stand before the brace of a block of statements, not of a list of values.
BLOCK = re.compile(r"(?:[){};:]|\b(?:else|do|try|const|mutable|noexcept|override"
                   r"|->\s*[\w:<>*&, ]+))\s*$")
# Outside functions: what is a constant for the compiler, and may be one of the program's instead.
CONSTANT = re.compile(r"(?:\b(static|inline) )?\bconstexpr\b( const\b)?(?=([^;={(]*)(.))", re.DOTALL)
STATEMENT = re.compile(r"\s+(?!(?:case|default|else|catch|using|static_assert|struct|class|enum)\b)"
                       r"[A-Za-z_+(*-]")


def raw_texts(text):
    """Where texts of several lines are: what looks like code there is none."""
    return [match.span() for match in HIDDEN.finditer(text) if match[0].startswith("R")]


def without_texts(text):
    """The text with blanks in place of what is no code."""
    return HIDDEN.sub(lambda match: re.sub(r"[^\n]", " ", match[0]), text)


class Function:
    """The body of a function or lambda that is in no other one: from behind its brace to the other."""

    def __init__(self, head, start, end):
        self.start, self.end = start, end
        self.is_constant = re.search(r"\bconstexpr\b", head) is not None
        # A lambda may be either; the compiler tells.
        self.gives_nothing = (VOID.search(head) or CONSTRUCTOR.match(head.lstrip())
                              or LAMBDA.search(head)) is not None


def functions(text):
    code = without_texts(text)
    found, stack, since = [], [], 0
    for at, character in enumerate(code):
        if character == "{":
            head = code[since:at].rstrip()
            parent = stack[-1][0] if stack else "scope"
            if parent in ("function", "inside"):
                kind = "inside"
            elif parent == "scope" and SCOPE.search(head) and not FUNCTION.search(head):
                kind = "scope"
            elif (parent == "scope" and GIVES_AUTO.search(head)
                  and not re.search(r"\bconstexpr\b", head)):
                kind = "values"
            elif (FUNCTION if parent == "scope" else LAMBDA).search(head):
                kind = "function"
            elif parent == "scope" and re.search(r"\bextern\s*$", head):
                kind = "scope"
            else:
                kind = "values"
            stack.append((kind, head, at + 1, since))
        elif character == "}" and stack:
            kind, head, start, head_start = stack.pop()
            if kind == "function":
                found.append(Function(head, start, at))
            if kind == "values" and ";" not in code[start:at]:  # the head goes on behind it
                since = head_start
                continue
        if character in "{};":
            since = at + 1
    return found


def statements(text, function):
    """The places within a function where lines begin that are statements of their own."""
    code = without_texts(text)
    found = []
    brackets = [True]  # whether statements stand in it
    before = "{"
    at = function.start
    for line in code[function.start:function.end].splitlines(keepends=True):
        if brackets[-1] and before[-1] in "{};:" and STATEMENT.match(line) and at > function.start:
            found.append(at)
        for offset, character in enumerate(line):
            if character in "([":
                brackets.append(False)
            elif character == "{":
                brackets.append(BLOCK.search(code[function.start - 1:at + offset]) is not None)
            elif character in ")]}" and len(brackets) > 1:
                brackets.pop()
        before = line.strip() or before
        at += len(line)
    return found


def constants(text):
    """Yields (start, end, new) of each constexpr outside functions, with what makes the program find
    the value."""
    code, inside = without_texts(text), functions(text)
    for match in CONSTANT.finditer(code):
        if any(function.start <= match.start() < function.end for function in inside):
            continue
        before, pointee, _, behind = match.groups()
        if behind == "(":
            new = ("static " if before == "static" else "") + "inline" + (pointee or "")
        else:
            storage = {"static": "static inline", "inline": "inline", None: "static"}[before]
            new = storage + (pointee or " const")
        yield match.start(), match.end(), new


def is_initializer_of(text, start, function):
    """Whether a place is in the initializers of a constructor."""
    between = without_texts(text)[start:function.start]
    return start < function.start and not re.search(r";|\n\s*\n|\n\}|\}\s*\w+[^,{]*\(", between)
