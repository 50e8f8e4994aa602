"""Pretty-printers for the classes of rw/, the typed collections, the model classes and the records.
They need the types, and no other debug information."""
import gdb
import gdb.printing

from . import tables
from .commands import limit, show_secrets
from .memory import Memory, Unreadable
from .objects import RW, Objects, word_of
from .records import NO_ROLE, Damage, Layout, Record, describe, shown_texts
from .text import clock_date, printable, quoted

# What the nodes at an address are: told by the job record that was printed last.
_roles = {}
# Children of the records printed since the last job record or prompt. Arrays that a damaged count
# has made overlap would otherwise be printed over and over.
_printed = 0
MOST_PRINTED = 100000


def _forget(*_):
    global _printed
    _roles.clear()
    _printed = 0


def _most_elements():
    return gdb.parameter("print elements") or 1 << 32


def _cut(text):
    """A quoted text of bytes, no longer than `set print elements`."""
    most = _most_elements()
    return quoted(text) if len(text) <= most else quoted(text[:most]) + "..."


def _type(name):
    try:
        return gdb.lookup_type(name)
    except gdb.error:
        return None


def _at(address, name):
    """The object of a type at an address, or what can be said without the type."""
    found = _type(name)
    if found is None:
        return "%s at 0x%08x" % (name, address)
    return gdb.Value(address).cast(found.pointer()).dereference()


def _pointer(address, objects):
    """An address with the class of what is there, and its name when it has one."""
    try:
        names = tables.CLASSES
        name, begin, own = objects.known_class(address, names)
        text = "(%s *) 0x%08x" % (printable(own.encode()), address)
        for attribute in tables.CLASSES[name]["attributes"] if name else ():
            is_name = attribute["shape"] == "text" and not attribute.get("secret")
            if is_name and attribute["key"].endswith(("Name", "path", "String", "OrDir")):
                return text + " " + _cut(objects.value(begin, attribute))
        return text
    except (Damage, Unreadable) as problem:
        return "0x%08x <%s>" % (address, problem)


def _guarded(operation):
    try:
        return operation()
    except (Damage, Unreadable) as problem:
        return "<%s>" % problem


class StringPrinter:
    """RWCString and RWCollectableString."""

    def __init__(self, value, inside):
        self._address = int(value.address) + inside

    def to_string(self):
        return _guarded(lambda: _cut(Objects(Memory(), limit()).string(self._address)))


class TimePrinter:
    """RWTime and RWCollectableTime."""

    def __init__(self, value, inside):
        self._address = int(value.address) + inside

    def to_string(self):
        return _guarded(lambda: _moment(Memory().number(self._address, 4)))


def _moment(seconds):
    return clock_date(seconds - tables.OBJECTS["secondsBefore1970"]) + " UTC"


class ListPrinter:
    """RWSlistCollectables and the typed collections."""

    def __init__(self, value):
        self._name = value.type.strip_typedefs().unqualified().name
        self._objects = Objects(Memory(), limit())
        self._address = int(value.address)

    def to_string(self):
        def words():
            count = len(self._objects.list(self._address))
            return "%s of %d" % (self._name, count)
        return _guarded(words)

    def children(self):
        try:
            addresses = self._objects.list(self._address)
        except (Damage, Unreadable):
            return
        for i, address in enumerate(addresses):
            yield "[%d]" % i, _element(address, self._objects)

    def display_hint(self):
        return "array"


def _element(address, objects):
    """Of a list: a text as it is, any other object as its address."""
    def words():
        own, _ = objects.class_of(address)
        if own.name == "RWCollectableString":
            return _cut(objects.string(address + RW["stringInCollectable"]))
        return _pointer(address, objects)
    return _guarded(words)


class ObjectPrinter:
    """The attributes of a model class, by the names that job files have for them."""

    def __init__(self, value, name):
        self._address = int(value.address)
        self._objects = Objects(Memory(), limit())
        self._name = name

    def to_string(self):
        return self._name

    def children(self):
        for attribute in tables.CLASSES[self._name]["attributes"]:
            yield attribute["key"], _guarded(lambda: self._shown(attribute))

    def _shown(self, attribute):
        value = self._objects.value(self._address, attribute)
        shape = attribute["shape"]
        if shape == "text":
            return self._text(attribute, value)
        if shape == "texts":
            return "{%s}" % ", ".join(self._text(attribute, text) for text in value)
        if shape == "flag":
            return "true" if value else "false"
        if shape in ("number", "seconds"):
            word = word_of(attribute, value)
            return "%d (%s)" % (value, word) if word else str(value)
        if shape == "numbers":
            return "{%s}" % ", ".join(map(str, value))
        if shape == "time":
            return _moment(value)
        if shape == "times":
            return "{%s}" % ", ".join(map(_moment, value))
        if shape == "object":
            return "null" if value == 0 else _pointer(value, self._objects)
        most = _most_elements()
        elements = [_pointer(address, self._objects) for address in value[:most]]
        return "{%s%s}" % (", ".join(elements), "..." if len(value) > most else "")

    @staticmethod
    def _text(attribute, value):
        if attribute.get("secret") and value and not show_secrets():
            return tables.MASK
        return _cut(value)


class RecordPrinter:
    """A transfer record: texts, arrays with their counts, codes in words."""

    def __init__(self, value, name):
        self._address = int(value.address)
        self._memory = Memory()
        self._layout = Layout(tables.layout_of_record(name))
        self._name = name
        if name == self._layout.table["job"]:
            _forget()

    def to_string(self):
        return self._name

    def children(self):
        global _printed
        size = self._layout.records[self._name]["size"]
        try:
            data = self._memory.read(self._address, size)
        except Unreadable as problem:
            yield "unreadable", "<%s>" % problem
            return
        record = Record(self._layout, self._name, data, self._address,
                        _roles.get(self._address, NO_ROLE))
        for field in record.fields():
            if field.kind == "reserved" and field.is_zero:
                continue
            _printed += 1
            if _printed > MOST_PRINTED:
                yield field.name, "<too much to print; `bkoq tree` prints all>"
                return
            if field.kind == "embedded":
                yield field.name, _at(self._address + field.offset, field.target)
                continue
            yield field.name, _guarded(lambda: self._shown(field))
            if field.is_followed and field.target and field.number:
                yield from self._elements(field)

    def _shown(self, field):
        if field.is_followed and field.number:
            if field.target:
                return "%s at 0x%08x" % (field.content_name(field.count), field.number)
            texts, address = [], field.number
            for _ in range(min(field.count, _most_elements())):
                texts.append(self._memory.text(address))
                address += len(texts[-1]) + 1
            shown = ", ".join(shown_texts(field, texts, show_secrets()))
            if len(texts) < field.count:
                shown += "..."
            return "{%s}" % shown if field.kind == "text list" else shown
        if field.kind == "opaque" and field.is_pointer and field.number:
            return "0x%08x (what it leads to depends on the job: print that, or `bkoq tree`)" % (
                field.number)
        value = describe(field, None, show_secrets())
        return "%s (%s)" % (value.lead, value.comment) if value.comment else value.lead

    def _elements(self, field):
        size = self._layout.records[field.target]["size"]
        role = field.element_role()
        for i in range(min(field.count, _most_elements())):
            address = field.number + i * size
            name = "%s[%d]" % (field.name, i) if field.kind == "array" else "*" + field.name
            try:
                self._memory.read(address, size)
            except Unreadable as problem:
                yield name, "<%s>" % problem
                return
            if _printed > MOST_PRINTED:
                return
            _roles[address] = role
            yield name, _at(address, field.target)


def _printer(value):
    """What prints a value, or None."""
    kind = value.type.strip_typedefs().unqualified()
    if kind.code != gdb.TYPE_CODE_STRUCT or value.address is None:
        return None
    name = kind.name
    if name == "RWCString":
        return StringPrinter(value, 0)
    if name == "RWCollectableString":
        return StringPrinter(value, RW["stringInCollectable"])
    if name == "RWTime":
        return TimePrinter(value, 0)
    if name == "RWCollectableTime":
        return TimePrinter(value, RW["timeInCollectable"])
    if tables.layout_of_record(name):
        return RecordPrinter(value, name)
    if _derives_from(kind, "RWSlistCollectables"):
        return ListPrinter(value)
    if name is not None and name.startswith("BKQ"):
        # A base may be all that the type says; its object is of a class that is known.
        try:
            known, begin, _ = Objects(Memory(), limit()).known_class(int(value.address),
                                                                     tables.CLASSES)
        except (Damage, Unreadable):
            known, begin = None, None
        if begin == int(value.address) and _derives_from(_type(known), name):
            return ObjectPrinter(value, known)
        if name in tables.CLASSES:
            return ObjectPrinter(value, name)
    return None


def _derives_from(kind, name):
    """Whether a class is that of the name or has it as its first base, or the base's."""
    while kind is not None:
        if kind.name == name:
            return True
        fields = kind.strip_typedefs().fields()
        kind = fields[0].type if fields and fields[0].is_base_class else None
    return False


class Printers(gdb.printing.PrettyPrinter):
    def __init__(self):
        super().__init__("bkoq")

    def __call__(self, value):
        return _printer(value)


_is_registered = False


def register():
    global _is_registered
    if _is_registered:
        return
    _is_registered = True
    gdb.printing.register_pretty_printer(None, Printers(), replace=True)
    gdb.events.stop.connect(_forget)
    gdb.events.before_prompt.connect(_forget)
