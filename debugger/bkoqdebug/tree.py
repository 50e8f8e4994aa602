"""`bkoq tree`: the form of `bkoq show`."""
from .records import Handler, describe

INDENT = 4
VALUE_COLUMNS = 12  # numbers are padded to this, so that comments align


class TreePrinter(Handler):
    def __init__(self, out, show_secrets):
        self._out = out
        self._show_secrets = show_secrets
        self._is_embedded = False
        self._columns = {}
        self.broken_fields = []

    def begin_record(self, record, at):
        if not self._is_embedded:
            heading = record.name + (" " + at.path if at.path else "")
            self._line(at.depth * INDENT, "%s  #%d+%d" % (heading, at.block, at.offset))
        self._is_embedded = False

    def field(self, field, block, at):
        self._is_embedded = field.kind == "embedded"
        if field.kind == "reserved" and field.is_zero:
            return
        self._row(field, describe(field, block, self._show_secrets), at)

    def broken(self, field, reason, at):
        self.broken_fields.append("%s: %s" % (at.path, reason))
        self._line(at.depth * INDENT + INDENT // 2,
                   "%3d  %s  DAMAGED: %s" % (field.offset, self._name(field), reason))

    def _name(self, field):
        record = field.record
        if record.name not in self._columns:
            rows = record.layout.records[record.name]["fields"]
            self._columns[record.name] = max(len(row["name"]) for row in rows)
        return field.name.ljust(self._columns[record.name])

    def _row(self, field, value, at):
        text = value.lead
        for i, shown in enumerate(value.texts):
            gap = " " if i > 0 or text.endswith(":") else "  "
            text += gap + shown + ("," if i + 1 < len(value.texts) else "")
        if value.comment:
            text = text.ljust(VALUE_COLUMNS) + "  " + value.comment
        self._line(at.depth * INDENT + INDENT // 2,
                   "%3d  %s  %s" % (field.offset, self._name(field), text))

    def _line(self, indent, text):
        self._out(" " * indent + text + "\n")
