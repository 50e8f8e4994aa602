"""Record trees by offset. The rules are those of the kit's walk; the memory may be damaged."""
import bisect

from . import tables
from .memory import Unreadable
from .text import clock_date, counted, hex_number, printable, quoted


class Damage(Exception):
    """What a tree cannot be: said with the path where it shows."""


class Role:
    """What the nodes of an array hold."""

    def __init__(self, media="", is_restore_destination=False, is_tapes=False):
        self.media = media
        self.is_restore_destination = is_restore_destination
        self.is_tapes = is_tapes


NO_ROLE = Role()


class Layout:
    def __init__(self, name):
        self.name = name
        self.table = tables.LAYOUTS[name]
        self.records = self.table["records"]
        self._fields = {}

    def fields(self, record):
        """The rows that read a record, in the order of their offsets."""
        variant = tables.RECORDS["always"]
        if record.name == self.table["filter"]:
            rows = tables.RECORDS["filterVariants"]
            kind = record.number(self.table["filterKindAt"], 2)
            row = rows[min(kind, len(rows) - 1)]
            variant = row[min(record.number(self.table["timeRangeAt"], 2), len(row) - 1)]
        key = record.name, variant
        if key not in self._fields:
            self._fields[key] = [field for field in self.records[record.name]["fields"]
                                 if field["variants"] & variant]
        return self._fields[key]

    def role(self, job_kind, array):
        kind = self.table["jobKinds"].get(str(job_kind))
        if kind is None:
            return NO_ROLE
        role = kind[array]
        return Role(role["media"], role["isRestoreDestination"], role["isTapes"])


class Record:
    """The bytes of one record, with what is needed to read them."""

    def __init__(self, layout, name, data, address, role=NO_ROLE):
        self.layout = layout
        self.name = name
        self.data = data
        self.address = address
        self.role = role

    def number(self, offset, width):
        return int.from_bytes(self.data[offset:offset + width], "little")

    def fields(self):
        return [Field(self, row) for row in self.layout.fields(self)]


class Field:
    def __init__(self, record, row):
        self.record = record
        self.row = row
        self.name = row["name"]
        self.offset = row["offset"]
        self.width = row["width"]
        self.kind = self._kind()

    def _kind(self):
        record, layout = self.record, self.record.layout
        kind = self.row["kind"]
        if kind == "text, or two texts":
            # Tape nodes and restore destinations may carry the number of UNIX machines.
            is_machine = (record.role.media and not record.role.is_tapes and
                          not record.role.is_restore_destination)
            node_kind = record.number(layout.table["nodeKindAt"], 2)
            is_unix = is_machine and node_kind == tables.RECORDS["unixNodeKind"]
            return "two texts" if is_unix else "text"
        if self.row.get("media") and not record.role.media:
            return "opaque"
        return kind

    @property
    def is_pointer(self):
        return self.row["pointer"]

    @property
    def is_followed(self):
        return self.is_pointer and self.kind != "opaque"

    @property
    def target(self):
        """The name of the records behind or inside the field, or None."""
        if self.row.get("media"):
            return self.record.role.media or None
        return self.row.get("target")

    @property
    def data(self):
        return self.record.data[self.offset:self.offset + self.width]

    @property
    def number(self):
        return int.from_bytes(self.data, "little") if self.width <= 4 else 0

    @property
    def signed(self):
        return int.from_bytes(self.data, "little", signed=True)

    @property
    def is_zero(self):
        return not any(self.data)

    @property
    def count(self):
        if self.row["kind"] in ("array", "text list"):
            return self.record.number(self.row["countOffset"], 4)
        return {"record": 1, "text": 1, "two texts": 2}.get(self.kind, 0)

    def words(self):
        if self.record.role.is_tapes and "tapeNodeWords" in self.row:
            return self.row["tapeNodeWords"]
        return self.row.get("words", ())

    def word(self):
        if self.kind == "flags":
            return None
        for value, name in self.words():
            if value == self.number:
                return name
        return None

    def bit_names(self):
        names, rest = [], self.number
        for value, name in self.words():
            if rest & value:
                rest &= ~value
                names.append(name)
        if names and rest:
            names.append(hex_number(rest, self.width))
        return ", ".join(names)

    def element_role(self):
        if "nodes" not in self.row:
            return NO_ROLE
        layout = self.record.layout
        return layout.role(self.record.number(layout.table["jobKindAt"], 2), self.row["nodes"])

    def content_name(self, count):
        if self.target is None:
            return counted(count, "text", "texts")
        return "%d %s" % (count, self.target)


class Block:
    """What a pointer leads to: records or texts."""

    def __init__(self, label, address, data, count, texts):
        self.label = label
        self.address = address
        self.data = data
        self.count = count
        self.texts = texts


class Handler:
    """What is told of a walk; see Walk."""

    def begin_record(self, record, at):
        pass

    def field(self, field, block, at):
        pass

    def broken(self, field, reason, at):
        """A field that leads nowhere, or to what it cannot lead to."""
        raise Damage("%s: %s" % (at.path, reason))


class At:
    """Where a walk is."""

    def __init__(self, path, block, offset, depth):
        self.path = path
        self.block = block
        self.offset = offset
        self.depth = depth


class Walk:
    """Goes through a tree in the order of the offsets. It ends whatever the tree holds: the depth is
    that of the record table, no two blocks of records may overlap, and `limit` bounds the bytes."""

    def __init__(self, memory, layout, handler, limit):
        self._memory = memory
        self._layout = layout
        self._handler = handler
        self._left = limit
        self._limit = limit
        self._labels = 0
        self._begins = []
        self._blocks = []

    def job(self, address):
        name = self._layout.table["job"]
        size = self._layout.records[name]["size"]
        try:
            data = self._memory.read(address, size)
        except Unreadable as problem:
            raise Damage("no %s at 0x%x: %s" % (name, address, problem)) from None
        self._claim(address, size)
        self._labels = 1
        self._record(Record(self._layout, name, data, address), At("", 1, 0, 0))

    def _record(self, record, at):
        self._handler.begin_record(record, at)
        for field in record.fields():
            path = at.path + "." + field.name if at.path else field.name
            here = At(path, at.block, at.offset, at.depth)
            if not field.is_followed:
                self._handler.field(field, None, here)
                if field.kind == "embedded":
                    inner = Record(self._layout, field.target, field.data,
                                   record.address + field.offset)
                    self._record(inner, At(path, at.block, at.offset + field.offset, at.depth + 1))
            elif field.number == 0:
                self._handler.field(field, None, here)
            else:
                self._block(field, here)

    def _block(self, field, at):
        address, count = field.number, field.count
        size = self._layout.records[field.target]["size"] if field.target else 0
        try:
            if field.target:
                self._spend(size * count)
                data = self._memory.read(address, size * count)
                self._claim(address, size * count)
                block = Block(self._labels + 1, address, data, count, None)
            else:
                texts = self._texts(address, count)
                block = Block(self._labels + 1, address, b"".join(t + b"\0" for t in texts), count,
                              texts)
        except (Unreadable, Damage) as problem:
            what = field.content_name(count)
            self._handler.broken(field, "%s at 0x%08x: %s" % (what, address, problem), at)
            return
        self._labels += 1
        self._handler.field(field, block, at)
        role = field.element_role()
        for i in range(count if field.target else 0):
            index = "[%d]" % i if field.kind == "array" else ""
            record = Record(self._layout, field.target, data[i * size:(i + 1) * size],
                            address + i * size, role)
            self._record(record, At(at.path + index, block.label, i * size, at.depth + 1))

    def _texts(self, address, count):
        texts = []
        for _ in range(count):
            text = self._memory.text(address)
            address += len(text) + 1
            self._spend(len(text) + 1)
            texts.append(text)
        return texts

    def _spend(self, size):
        if size > self._left:
            raise Damage("the tree would hold more than %d MiB (`set bkoq limit`)" %
                         (self._limit >> 20))
        self._left -= size

    def _claim(self, address, size):
        """Two blocks of records that overlap would lead round and round."""
        if size == 0:
            return
        i = bisect.bisect_right(self._begins, address)
        before = self._blocks[i - 1] if i > 0 else None
        after = self._blocks[i] if i < len(self._blocks) else None
        if (before is not None and before[1] > address) or (
                after is not None and after[0] < address + size):
            raise Damage("records lie there that were read before")
        self._begins.insert(i, address)
        self._blocks.insert(i, (address, address + size))


def masked_texts(field, texts, show_secrets):
    """Each text as it may be shown: (bytes before the mask or whole text, whether masked)."""
    secret = "" if show_secrets else field.row.get("secret", "")
    shown = []
    for i, text in enumerate(texts):
        kept = 0
        if not secret or not text:
            shown.append((text, False))
            continue
        if secret == "credentials" and i == 0:
            # Behind the colon of a joined pair is the password.
            kept = text.find(b":") + 1
            if kept == 0:
                shown.append((text, False))
                continue
        shown.append((text[:kept], True))
    return shown


def shown_texts(field, texts, show_secrets):
    words = []
    for text, is_masked in masked_texts(field, texts, show_secrets):
        if not is_masked:
            words.append(quoted(text))
        elif text:
            words.append('"' + printable(text) + tables.MASK + '"')
        else:
            words.append(tables.MASK)
    return words


class Value:
    def __init__(self, lead, texts=(), comment="", is_alarming=False):
        self.lead = lead
        self.texts = texts
        self.comment = comment
        self.is_alarming = is_alarming


def describe(field, block, show_secrets):
    """The value of a field in words, as the kit has it."""
    kind, number = field.kind, field.number
    if field.is_followed:
        if block is None:
            if kind in ("array", "text list") and field.count > 0:
                return Value("null", comment="unfinished: the count is %d" % field.count,
                             is_alarming=True)
            return Value("null")
        lead = "#%d" % block.label
        if field.target:
            return Value(lead + "  " + field.content_name(block.count),
                         comment=counted(len(block.data), "byte", "bytes"))
        if kind == "text list":
            lead += "  " + field.content_name(block.count) + ":"
        return Value(lead, shown_texts(field, block.texts, show_secrets))
    if kind == "reserved":
        if field.is_zero:
            return Value("zero", comment=counted(field.width, "byte", "bytes"))
        return Value(field.data.hex(" "), comment="reserved, but not zero", is_alarming=True)
    if kind == "embedded":
        return Value(field.target, comment=counted(field.width, "byte", "bytes"))
    if kind == "byte list":
        return Value(" ".join(str(byte) for byte in field.data))
    if kind == "opaque" and field.is_pointer:
        if number == 0:
            return Value("null")
        return Value("not followed", comment="what the node holds depends on the kind of the job, "
                     "which is unknown", is_alarming=True)
    if kind in ("time", "client time"):
        date = clock_date(field.signed) if number else ""
        return Value(str(field.signed),
                     comment=date + (" UTC" if date and kind == "client time" else ""))
    if kind in ("flags", "opaque"):
        comment = ""
        if kind == "flags" and number:
            names = field.bit_names()
            comment = "%d: %s" % (number, names) if names else str(number)
        return Value(hex_number(number, field.width) if number else "0", comment=comment)
    return Value(str(number), comment=field.word() or "")
