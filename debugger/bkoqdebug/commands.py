"""The commands `bkoq tree`, `bkoq image`, `bkoq job` and the parameters of `set bkoq`."""
import os
import re

import gdb

from . import tables
from .image import ImageWriter, write_private
from .job import JobPrinter, Left
from .memory import Memory, Unreadable
from .objects import Objects
from .records import Damage, Layout, Walk
from .text import printable
from .tree import TreePrinter

LAYOUT_WORDS = tuple(tables.LAYOUTS)
# What precedes the last word, and the word: in quotes, or without a blank.
_WORD = re.compile(r"""^(.*?\S)\s+("(?:[^"\\]|\\.)*"|'[^']*'|\S+)$""", re.DOTALL)


class Prefix(gdb.Command):
    """Job objects and record trees of libbkoq."""

    def __init__(self):
        super().__init__("bkoq", gdb.COMMAND_DATA, prefix=True)


class SetPrefix(gdb.Command):
    """How libbkoq's objects and trees are shown."""

    def __init__(self):
        super().__init__("set bkoq", gdb.COMMAND_DATA, prefix=True)


class ShowPrefix(gdb.Command):
    """How libbkoq's objects and trees are shown."""

    def __init__(self):
        super().__init__("show bkoq", gdb.COMMAND_DATA, prefix=True)


class Secrets(gdb.Parameter):
    """Whether passwords and keys are shown as they are."""

    set_doc = "Set whether passwords and keys are shown as they are."
    show_doc = "Show whether passwords and keys are shown as they are."

    def __init__(self):
        super().__init__("bkoq secrets", gdb.COMMAND_DATA, gdb.PARAM_BOOLEAN)
        self.value = False

    def get_set_string(self):
        return ""

    def get_show_string(self, value):
        return "Passwords and keys are %s." % ("masked" if value == "off" else "shown")


class Limit(gdb.Parameter):
    """How many MiB a tree or an object may hold before it is taken for damaged."""

    set_doc = "Set how many MiB a tree or an object may hold before it is taken for damaged."
    show_doc = "Show how many MiB a tree or an object may hold before it is taken for damaged."

    def __init__(self):
        super().__init__("bkoq limit", gdb.COMMAND_DATA, gdb.PARAM_UINTEGER)
        self.value = 256

    def get_set_string(self):
        return ""

    def get_show_string(self, value):
        return "A tree or an object may hold %s MiB." % value


def show_secrets():
    return bool(gdb.parameter("bkoq secrets"))


def limit():
    return (gdb.parameter("bkoq limit") or 4096) << 20


def split_last(text):
    """The text before its last word, and that word without quotes."""
    match = _WORD.match(text.strip())
    if match is None:
        return text.strip(), ""
    word = match.group(2)
    if word[0] in "\"'" and word[-1] == word[0] and len(word) > 1:
        word = re.sub(r"\\(.)", r"\1", word[1:-1]) if word[0] == '"' else word[1:-1]
    return match.group(1), word


def split_layout(text):
    """The text without the name of a layout at its end, and that name or None."""
    rest, word = split_last(text)
    return (rest, word) if word in LAYOUT_WORDS else (text.strip(), None)


def address_of(expression):
    """Where what the expression means is in memory, and the name of its type."""
    value = gdb.parse_and_eval(expression)
    kind = value.type.strip_typedefs()
    if kind.code in (gdb.TYPE_CODE_REF, gdb.TYPE_CODE_RVALUE_REF):
        value = value.referenced_value()
        kind = value.type.strip_typedefs()
    if kind.code == gdb.TYPE_CODE_PTR:
        name = kind.target().unqualified().strip_typedefs().name
    elif kind.code in (gdb.TYPE_CODE_STRUCT, gdb.TYPE_CODE_UNION):
        if value.address is None:
            raise gdb.GdbError("%s is not in memory" % expression)
        name = kind.name
        value = value.address
    elif kind.code in (gdb.TYPE_CODE_INT, gdb.TYPE_CODE_ENUM):
        name = None
    else:
        raise gdb.GdbError("%s is no address" % expression)
    address = int(value)
    if address < 0:
        address &= 0xFFFFFFFF  # a register is signed
    if address >= 1 << 32:
        raise gdb.GdbError("0x%x is no address of 32 bits; records and jobs have no other" %
                           address)
    if address == 0:
        raise gdb.GdbError("%s is null" % expression)
    return address, name


def checked(operation):
    """Whatever memory holds, a command ends with a word."""
    try:
        return operation()
    except (Damage, Left, Unreadable) as problem:
        raise gdb.GdbError(str(problem)) from None
    except (OSError, RecursionError) as problem:
        raise gdb.GdbError(printable(str(problem).encode("utf-8", "replace"))) from None


def choose_layout(word, type_name):
    return Layout(word or tables.layout_of_record(type_name) or LAYOUT_WORDS[0])


class Tree(gdb.Command):
    """Print the record tree at an address.

Usage: bkoq tree EXPR [previous]

EXPR is an address or a pointer to the job record, of any type. The tree is read in the current
layout unless its type or the word `previous` says otherwise. Passwords and keys are masked unless
`set bkoq secrets on`."""

    def __init__(self):
        super().__init__("bkoq tree", gdb.COMMAND_DATA, gdb.COMPLETE_EXPRESSION)

    def invoke(self, argument, from_tty):
        expression, word = split_layout(argument)
        if not expression:
            raise gdb.GdbError("usage: bkoq tree EXPR [previous]")
        address, type_name = address_of(expression)
        lines = []

        def out(line):
            lines.append(line)
            if len(lines) >= 200:
                gdb.write("".join(lines))
                lines.clear()

        printer = TreePrinter(out, show_secrets())
        try:
            checked(lambda: Walk(Memory(), choose_layout(word, type_name), printer,
                                 limit()).job(address))
        finally:
            gdb.write("".join(lines))
        if printer.broken_fields:
            raise gdb.GdbError("the tree is damaged, or of the other layout: %s; first %s" %
                               (_fields(len(printer.broken_fields)), printer.broken_fields[0]))


def _fields(count):
    return "1 field cannot be followed" if count == 1 else "%d fields cannot be followed" % count


class Image(gdb.Command):
    """Write the record tree at an address as an image, which `bkoq show` reads.

Usage: bkoq image EXPR FILE [previous]

EXPR and `previous` are those of `bkoq tree`. The image holds passwords and keys as they are and is
readable by its owner alone."""

    def __init__(self):
        super().__init__("bkoq image", gdb.COMMAND_DATA)

    def invoke(self, argument, from_tty):
        rest, word = split_layout(argument)
        expression, path = split_last(rest)
        if not path:
            raise gdb.GdbError("usage: bkoq image EXPR FILE [previous]")
        address, type_name = address_of(expression)
        layout = choose_layout(word, type_name)
        path = os.path.expanduser(path)

        def write():
            writer = ImageWriter(layout)
            Walk(Memory(), layout, writer, limit()).job(address)
            image = writer.finish()
            write_private(path, image)
            return len(image)

        size = checked(write)
        gdb.write("%s: %d bytes, %s layout\n" % (printable(path.encode()), size, layout.name))


class Job(gdb.Command):
    """Print a job object as a job file, which `bkoq flatten` reads.

Usage: bkoq job EXPR

EXPR is an address of the object, a pointer or a reference to it; its class is found in memory. What
a job file cannot carry is said in comments. Passwords and keys are masked unless
`set bkoq secrets on`."""

    def __init__(self):
        super().__init__("bkoq job", gdb.COMMAND_DATA, gdb.COMPLETE_EXPRESSION)

    def invoke(self, argument, from_tty):
        if not argument.strip():
            raise gdb.GdbError("usage: bkoq job EXPR")
        address, type_name = address_of(argument)
        if tables.layout_of_record(type_name):
            raise gdb.GdbError("a %s is no job object; `bkoq tree` prints records" % type_name)
        printer = JobPrinter(Objects(Memory(), limit()), show_secrets())
        gdb.write(checked(lambda: printer.job(address)))


_is_registered = False


def register():
    global _is_registered
    if _is_registered:
        return
    _is_registered = True
    Prefix()
    SetPrefix()
    ShowPrefix()
    Secrets()
    Limit()
    Tree()
    Image()
    Job()
