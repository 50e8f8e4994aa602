"""`bkoq job`: a job object as a job file. What a file cannot carry is said in comments."""
from . import tables
from .memory import Unreadable
from .objects import word_of
from .records import Damage
from .text import clock_date, is_utf8, json_quoted, printable, quoted

BEFORE_1970 = tables.OBJECTS["secondsBefore1970"]


class Left(Exception):
    """A value that no job file can carry, with the reason."""


class JobPrinter:
    def __init__(self, objects, show_secrets):
        self._objects = objects
        self._show_secrets = show_secrets
        self._has_masked = False

    def job(self, address):
        text = self._object(address, tables.OBJECTS["jobs"], 0)
        note = ""
        if self._has_masked:
            note = ("// Secrets are masked, so its records will differ; `set bkoq secrets on` "
                    "prints them.\n")
        return note + text + "\n"

    def _object(self, address, family, level):
        kinds = tables.FAMILIES[family]
        name, address, own = self._objects.known_class(address, kinds)
        if name is None:
            raise Left("an object of class %s is no %s of a job file" % (printable(own.encode()),
                                                                        family))
        self._objects.spend(tables.CLASSES[name]["size"])
        members = []
        comments = []
        if own != name:
            comments.append("Of class %s: its own part is left out." % printable(own.encode()))
        for offset, value, expected in self._objects.other_bytes(address, name):
            comments.append("The word at byte %d is %d, where a job file makes %d: "
                            "its record may differ." % (offset, value, expected))
        if kinds[name]:
            members.append((comments, '"kind": "%s"' % kinds[name]))
            comments = []
        attributes = tables.CLASSES[name]["attributes"]
        given = {}
        for attribute in attributes:
            key = attribute["key"]
            try:
                value = self._objects.value(address, attribute)
                given[key] = value
                if self._is_left_out(attribute, value):
                    continue
                text, notes = self._value(attribute, value, level + 1)
                comments += notes
                if text is not None:
                    members.append((comments, '"%s": %s' % (key, text)))
                    comments = []
            except Left as reason:
                comments.append('"%s": %s' % (key, reason))
            except Unreadable as reason:
                raise Damage("%s of the %s at 0x%x: %s" % (key, name, address, reason)) from None
        comments += self._changes(attributes, given)
        return self._braced(members, comments, level)

    @staticmethod
    def _changes(attributes, given):
        """What one attribute will do to another when the file is read."""
        notes = []
        for attribute in attributes:
            bits = attribute.get("changedBits", 0)
            key, other = attribute["key"], attribute.get("changedBy")
            if bits and given.get(other) and given[key] & bits != bits:
                notes.append('"%s": reading "%s" will add 0x%x, which the object does not have' %
                             (key, other, bits))
        return notes

    @staticmethod
    def _is_left_out(attribute, value):
        """Whether a file without it says the same."""
        if attribute.get("required"):
            return False
        if attribute["shape"] in ("object", "objects"):
            return not value
        if attribute["shape"] == "texts" and "length" not in attribute:
            return not value
        if attribute["shape"] == "text":
            return value == attribute.get("default", "").encode()
        return "default" in attribute and value == attribute["default"]

    def _value(self, attribute, value, level):
        """(JSON, comments)"""
        shape = attribute["shape"]
        if shape == "text":
            return self._text(attribute, value), []
        if shape == "texts":
            return "[%s]" % ", ".join(self._text(attribute, text) for text in value), []
        if shape == "flag":
            return "true" if value else "false", []
        if shape in ("number", "seconds"):
            word = word_of(attribute, value)
            return '"%s"' % word if word else str(value), []
        if shape == "numbers":
            return "[%s]" % ", ".join(map(str, value)), []
        if shape == "time":
            return self._time(value), []
        if shape == "times":
            return "[%s]" % ", ".join(map(self._time, value)), []
        if shape == "object":
            if value == 0:
                raise Left("required by a job file, but the object has none")
            return self._object(value, attribute["family"], level), []
        return self._list(attribute, value, level)

    def _list(self, attribute, addresses, level):
        elements, comments = [], []
        for i, address in enumerate(addresses):
            try:
                text = self._object(address, attribute["family"], level + 1)
                elements.append((comments, text))
                comments = []
            except Left as reason:
                comments.append("[%d]: %s" % (i, reason))
        if not elements:
            return None, ['"%s"%s' % (attribute["key"], comment) for comment in comments]
        return self._bracketed(elements, comments, level), []

    def _text(self, attribute, value):
        if attribute.get("secret") and value and not self._show_secrets:
            self._has_masked = True
            return '"%s"' % tables.MASK
        if is_utf8(value):
            return json_quoted(value)
        if attribute.get("required"):
            return '"" /* %s, which is no UTF-8 */' % quoted(value).replace("*/", "*\\/")
        raise Left("%s is no UTF-8" % quoted(value))

    @staticmethod
    def _time(value):
        seconds = value - BEFORE_1970
        if seconds < tables.OBJECTS["earliestTime"]:
            raise Left("%s UTC is before the first day that a job file can name" %
                       clock_date(seconds))
        return '"%sZ"' % clock_date(seconds, "T")

    # ---- JSON in lines

    def _braced(self, members, comments, level):
        return self._lines("{", members, comments, "}", level)

    def _bracketed(self, elements, comments, level):
        return self._lines("[", elements, comments, "]", level)

    @staticmethod
    def _lines(opening, members, comments, closing, level):
        if not members and not comments:
            return opening + closing
        indent = "  " * (level + 1)
        text = opening + "\n"
        for i, (notes, member) in enumerate(members):
            text += "".join("%s// %s\n" % (indent, note) for note in notes)
            text += indent + member + (",\n" if i + 1 < len(members) else "\n")
        text += "".join("%s// %s\n" % (indent, note) for note in comments)
        return text + "  " * level + closing
