"""Job objects by address: their class from the run-time type information in memory, their
attributes from where the build found that the setters keep them."""
import re

from . import tables
from .memory import LONGEST_TEXT, Unreadable, readable_name
from .records import Damage

RW = tables.OBJECTS["rw"]
DEEPEST = 16  # classes above a class


class ObjectClass:
    """What run-time type information says of a class."""

    def __init__(self, name, bases):
        self.name = name
        self.bases = bases  # (ObjectClass, offset in the object)

    def find(self, names, offset=0):
        """The classes of these names, this one and its bases, each as (name, where it begins); the
        nearest come first."""
        if self.name in names:
            yield self.name, offset
        for base, begin in self.bases:
            yield from base.find(names, offset + begin)


class Objects:
    def __init__(self, memory, limit):
        self._memory = memory
        self._classes = {}
        self._left = limit
        self._limit = limit

    def spend(self, size):
        """Counts bytes, so that damaged lists come to an end."""
        if size > self._left:
            raise Damage("the object would hold more than %d MiB (`set bkoq limit`)" %
                         (self._limit >> 20))
        self._left -= size

    # ---- classes

    def class_of(self, address):
        """The class of the object at an address, and how far into the object the address is."""
        try:
            table = self._memory.pointer(address)
            inside = -self._memory.number(table - 8, 4)
            info = self._memory.pointer(table - 4)
            return self._class(info, DEEPEST), inside & 0xFFFFFFFF
        except (Unreadable, OverflowError):
            raise Damage("no object of a class is at 0x%x" % address) from None

    def _class(self, info, depth):
        if info in self._classes:
            return self._classes[info]
        name = self._name(info)
        bases = []
        if depth > 0:
            # How the bases are listed says the class of the information itself.
            form = self._name(self._memory.pointer(self._memory.pointer(info) - 4))
            if "__si_class_type_info" in form:
                bases = [(self._memory.pointer(info + 8), 0)]
            elif "__vmi_class_type_info" in form:
                count = min(self._memory.number(info + 12, 4), DEEPEST)
                for i in range(count):
                    base, flags = (self._memory.number(info + 16 + 8 * i + at, 4) for at in (0, 4))
                    if not flags & 1:  # no virtual base
                        bases.append((base, flags >> 8))
        self._classes[info] = ObjectClass(
            name, [(self._class(base, depth - 1), at) for base, at in bases])
        return self._classes[info]

    def _name(self, info):
        name = self._memory.text(self._memory.pointer(info + 4))
        if not re.fullmatch(rb"\*?[0-9A-Za-z_.$]{1,400}", name):
            raise Unreadable("no name of a class")
        name = name.decode("ascii").lstrip("*")
        plain = re.fullmatch(r"([0-9]{1,3})(.*)", name)
        return plain.group(2) if plain and len(plain.group(2)) == int(plain.group(1)) else name

    def known_class(self, address, names):
        """(the nearest class of those names or None, where it begins, the object's own class). What
        begins at the address goes before other bases of the same object."""
        own, inside = self.class_of(address)
        found = list(own.find(names))
        found.sort(key=lambda base: base[1] != inside)
        name, offset = found[0] if found else (None, inside)
        return name, address - inside + offset, readable_name(own.name)

    # ---- values

    def string(self, address):
        """Of an RWCString: as clients see it, up to its NUL."""
        block = self._memory.pointer(address)
        if block == 0:
            return b""
        length = self._memory.number(block + RW["lengthInBlock"], 4)
        if length > LONGEST_TEXT:
            raise Damage("the text at 0x%x would have %d bytes" % (block, length))
        self.spend(length)
        return self._memory.read(block + RW["textInBlock"], length).split(b"\0", 1)[0]

    def list(self, address):
        """The addresses in a list."""
        entries = self._memory.number(address + RW["entriesInList"], 4)
        if entries == 0:
            return []
        self.spend(4 * entries)
        data = self._memory.read(self._memory.pointer(address + RW["elementsInList"]), 4 * entries)
        return [int.from_bytes(data[i:i + 4], "little") for i in range(0, len(data), 4)]

    def number(self, address, attribute):
        data = self._memory.read(address, attribute["width"])
        return int.from_bytes(data, "little", signed=attribute.get("signed", False))

    def value(self, address, attribute):
        """Of the attribute of the object at an address: bytes for a text, seconds since 1901 for a
        time, an address (0 without one) for an object, lists of these."""
        shape = attribute["shape"]
        places = [address + at for at in attribute["at"]]
        if shape == "text":
            return self.string(places[0])
        if shape == "texts":
            if "length" in attribute:
                return [self.string(place) for place in places]
            strings = self.list(places[0])
            return [self.string(string + RW["stringInCollectable"]) for string in strings]
        if shape == "flag":
            return self._memory.number(places[0], 4) != 0
        if shape in ("number", "seconds"):
            return self.number(places[0], attribute)
        if shape == "numbers":
            return [self.number(place, attribute) for place in places]
        if shape == "time":
            return self._memory.number(places[0], 4)
        if shape == "times":
            return [self._memory.number(place, 4) for place in places]
        if shape == "object":
            return places[0] if attribute.get("embedded") else self._memory.pointer(places[0])
        assert shape == "objects"
        return self.list(places[0])

    def other_bytes(self, address, name):
        """Numbers that no attribute names and that are not as a job file would have them:
        (offset, value, expected)."""
        others = []
        for offset, expected in tables.CLASSES[name]["fixed"]:
            value = self._memory.number(address + offset, 4)
            if value != expected:
                others.append((offset, value, expected))
        return others


def word_of(attribute, value):
    for number, word in attribute.get("words", ()):
        if number == value:
            return word
    return None
