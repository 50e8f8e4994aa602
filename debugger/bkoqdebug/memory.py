"""The memory of the process or core dump, by address alone."""
import functools

import gdb

PAGE = 4096
# A text longer than this is taken for damage.
LONGEST_TEXT = 64 << 20


class Unreadable(Exception):
    """There is no memory where some was expected."""


class Memory:
    """Reads for one command, during which nothing changes: small reads share pages."""

    def __init__(self):
        self._inferior = gdb.selected_inferior()
        self._pages = {}

    def _direct(self, address, size):
        try:
            return bytes(self._inferior.read_memory(address, size))
        except (gdb.error, OverflowError, ValueError, MemoryError):
            raise Unreadable("there is no memory at 0x%x" % address) from None

    def _page(self, address):
        page = address & -PAGE
        data = self._pages.get(page)
        if data is None:
            try:
                data = self._direct(page, PAGE)
            except Unreadable:
                data = b""  # parts of it may be there
            if len(self._pages) > 4096:
                self._pages.clear()
            self._pages[page] = data
        return data

    def read(self, address, size):
        if size == 0:
            return b""
        if address + size > 1 << 32:
            raise Unreadable("0x%x + %d bytes is outside 32 bits" % (address, size))
        begin = address % PAGE
        if begin + size <= PAGE:
            page = self._page(address)
            if page:
                return page[begin:begin + size]
        return self._direct(address, size)

    def number(self, address, width):
        return int.from_bytes(self.read(address, width), "little")

    def pointer(self, address):
        return self.number(address, 4)

    def text(self, address):
        """The bytes up to a NUL."""
        pieces = []
        total = 0
        while total <= LONGEST_TEXT:
            page = self._page(address)
            piece = page[address % PAGE:] if page else self._tail(address)
            nul = piece.find(0)
            if nul >= 0:
                pieces.append(piece[:nul])
                return b"".join(pieces)
            pieces.append(piece)
            total += len(piece)
            address += len(piece)
        raise Unreadable("no text of less than %d MiB begins here" % (LONGEST_TEXT >> 20))

    def _tail(self, address):
        """Of a page that is not whole: byte by byte up to its NUL or its end."""
        data = bytearray()
        while True:
            byte = self.read(address + len(data), 1)
            data += byte
            if byte == b"\0" or (address + len(data)) % PAGE == 0:
                return bytes(data)


@functools.lru_cache(maxsize=1000)
def readable_name(name):
    """Of a class, from the name that its run-time type information has."""
    prefix = "typeinfo name for "
    is_plain = name[0].isalpha() and not name.startswith("N")
    try:
        shown = gdb.execute("demangle _ZTS%s%s" % (len(name) if is_plain else "", name),
                            to_string=True).strip()
    except gdb.error:
        return name
    return shown[len(prefix):] if shown.startswith(prefix) else name
