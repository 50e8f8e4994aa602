"""Runs inside gdb: `python print_all(JOB)` prints an object and all that it holds, each as `print` does."""
import gdb

from bkoqdebug import tables
from bkoqdebug.commands import limit
from bkoqdebug.memory import Memory
from bkoqdebug.objects import Objects


def print_all(value):
    _print_from(int(gdb.parse_and_eval(value)), Objects(Memory(), limit()))


def _print_from(address, objects):
    name, begin, _ = objects.known_class(address, tables.CLASSES)
    gdb.execute("print *(%s *)0x%x" % (name, begin))
    for attribute in tables.CLASSES[name]["attributes"]:
        held = objects.value(begin, attribute)
        if attribute["shape"] == "object" and held != 0:
            _print_from(held, objects)
        elif attribute["shape"] == "objects":
            for each in held:
                _print_from(each, objects)
