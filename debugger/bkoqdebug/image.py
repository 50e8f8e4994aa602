"""`bkoq image`: a tree in the form that docs/image-format.md describes."""
import os
import stat
import tempfile
import zlib

from . import tables
from .records import Damage, Handler


class ImageWriter(Handler):
    """Puts the blocks one after the other in the order of the walk and makes their pointers
    offsets."""

    def __init__(self, layout):
        self._layout = layout
        self._image = bytearray(tables.IMAGE["headerSize"])
        self._places = [0]  # of the blocks, by label

    def begin_record(self, record, at):
        if at.depth == 0:
            self._add(record.data)

    def field(self, field, block, at):
        if field.kind == "opaque" and field.is_pointer and field.number:
            raise Damage("%s: a pointer in a job of unknown kind, which does not say what it "
                         "leads to" % at.path)
        if block is None:
            return
        position = self._places[at.block] + at.offset + field.offset
        self._add(block.data)
        self._put(position, self._places[-1])

    def finish(self):
        form = tables.IMAGE
        self._image[:len(form["magic"])] = form["magic"].encode("ascii")
        self._put(form["versionAt"], form["version"])
        self._put(form["layoutAt"], self._layout.table["number"])
        self._put(form["sizeAt"], len(self._image))
        self._put(form["rootAt"], form["headerSize"])
        self._put(form["blocksAt"], len(self._places) - 1)
        self._put(form["checksumAt"], 0)
        self._put(form["checksumAt"], zlib.crc32(self._image))
        return bytes(self._image)

    def _put(self, position, value):
        self._image[position:position + 4] = value.to_bytes(4, "little")

    def _add(self, data):
        self._places.append(len(self._image))
        self._image += data
        self._image += bytes(-len(self._image) % tables.IMAGE["alignment"])


def write_private(path, data):
    """It holds passwords, so it is readable by its owner alone. Whole or not at all."""
    if os.path.exists(path) and not stat.S_ISREG(os.stat(path).st_mode):
        with open(path, "wb") as file:
            file.write(data)
        return
    handle, temporary = tempfile.mkstemp(prefix=os.path.basename(path) + ".",
                                         dir=os.path.dirname(path) or ".")
    try:
        with os.fdopen(handle, "wb") as file:
            file.write(data)
            file.flush()
            os.fsync(file.fileno())
        os.rename(temporary, path)
    except BaseException:
        os.unlink(temporary)
        raise
