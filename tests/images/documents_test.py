#!/usr/bin/env python3
"""A reader can be written from the documents alone: this one is. It has no number of its own, but takes
the header from docs/image-format.md and the records from the tables of docs/records.md, and finds in
images what the kit wrote. `bkoq layout` prints the same rows and codes.

    documents_test.py IMAGE_CHECK BKOQ RECORDS_PAGE FORMAT_PAGE
"""

import glob
import json
import os
import re
import subprocess
import sys
import tempfile
import zlib


class Format:
    """The header, and how blocks follow one another."""

    def __init__(self, page):
        rows = re.findall(r"^\| (\d+) \| (\d+) \| (.+) \|$", page, re.M)
        place = lambda word: next((int(at), int(width)) for at, width, content in rows if word in content)
        self.magic_at, magic_width = place("in ASCII")
        self.magic = re.search(r"`(\w+)`, in ASCII", page).group(1).encode()
        assert len(self.magic) == magic_width
        self.version, self.layout, self.size, self.root, self.blocks, self.checksum = map(
            place, ("version of the format", "layout of the records", "size of the image",
                    "offset of the job record", "number of blocks", "checksum"))
        self.versions = [int(re.search(r"version of the format: (\d+)", page).group(1))]
        self.layouts = {int(code): name for code, name in
                        re.findall(r"(\d) (current|previous)", next(c for _, _, c in rows if "layout of" in c))}
        self.roots = int(re.search(r"offset of the job record: (\d+)", page).group(1))
        self.alignment = int(re.search(r"A block begins at a multiple of (\d+)", page).group(1))
        self.checksum_of = re.search(r"Python: `(zlib\.crc32\(.*\))`", page).group(1)


class Records:
    """The tables of the records, by layout."""

    def __init__(self, page):
        current, previous = re.split(r"^# (?:Current|Previous) layout$", page, flags=re.M)[1:]
        self.of = {"current": self.tables(current), "previous": self.tables(previous.split("\n# ")[0])}
        self.media = {int(code): (name, sources, destinations) for code, name, sources, destinations in
                      re.findall(r"^\| (\d+) \| (.+?) \| (disks|tapes) \| (disks|tapes|there are none) \|$", page, re.M)}
        assert len(self.media) > 10
        self.unix = int(re.search(r"node with\s+`usNodeType` (\d+) that holds disks", page).group(1))

    @staticmethod
    def tables(text):
        records = {}
        for name, rest in re.findall(r"^## `(\w+)`\n(.*?)(?=^## |\Z)", text, re.M | re.S):
            rows = re.findall(r"^\| (\d+) \| (\d+) \| `(\w+)` \| (.+?) \| (.*?) \| .*\|$", rest, re.M)
            codes = {field: dict((word, int(code)) for code, word in re.findall(r"(\d+) ([^;]+)", listed))
                     for field, listed in re.findall(r"^- `(\w+)`, codes: (.*)$", rest, re.M)}
            size = int(re.search(r"^(\d+) bytes", rest, re.M).group(1))
            records[name] = size, [(int(at), int(width), *others) for at, width, *others in rows], codes
        return records


class Reader:
    def __init__(self, form, records, data):
        number = lambda place: int.from_bytes(data[place[0]:place[0] + place[1]], "little")
        assert data[form.magic_at:form.magic_at + len(form.magic)] == form.magic
        assert number(form.version) in form.versions and number(form.size) == len(data)
        assert number(form.root) == form.roots
        assert number(form.checksum) == eval(form.checksum_of, {"zlib": zlib, "image": data})
        self.data, self.form, self.pages = data, form, records
        self.records = records.of[form.layouts[number(form.layout)]]
        self.next, self.blocks, self.job = form.roots, number(form.blocks), None

    def number(self, at, width, signed=False):
        return int.from_bytes(self.data[at:at + width], "little", signed=signed)

    def take(self, size):
        at, end = self.next, self.next + size
        self.next = end + -end % self.form.alignment
        assert self.next <= len(self.data) and not any(self.data[end:self.next])
        self.blocks -= 1
        return at

    def read(self):
        root = next(iter(self.records))
        yield from self.record(root, self.take(self.records[root][0]), "", None)
        assert self.next == len(self.data) and self.blocks == 0

    def has(self, meaning, at, codes):
        """A filter's field goes with some kinds, or with some ranges of one kind; its meaning says which."""
        kinds, ranges = codes["usFilterType"], codes["usTimeRange"]
        words = meaning.split(": ")[0]
        kind = self.number(at + self.place["usFilterType"], 2)
        span = self.number(at + self.place["usTimeRange"], 2)
        if words == "unknown kind or range":
            return kind not in kinds.values() or kind == kinds["time"] and span not in ranges.values()
        if words == "unknown kind":
            return kind not in kinds.values()
        if words.startswith("time "):
            named = words[len("time "):].split(", ")
            assert set(named) <= set(ranges), words
            return kind == kinds["time"] and span in [ranges[name] for name in named]
        named = words.split(", ")
        return not set(named) <= set(kinds) or kind in [kinds[name] for name in named]

    def record(self, name, start, path, role):
        _, rows, codes = self.records[name]
        self.place = {field: at for at, _, field, _, _ in rows}
        rows = [row for row in rows if "usFilterType" not in codes or ": " not in row[4]
                or self.has(row[4], start, codes)]
        numbers, last = {}, 0
        for offset, width, field, kind, _ in rows:
            here, at = f"{path}.{field}" if path else field, start + offset
            kind = kind.replace(", secret", "")
            target = re.findall(r"`(\w+)`", kind)
            if kind in ("number", "count", "flags", "time", "client time"):
                last = numbers[field] = self.number(at, width, kind.endswith("time"))
                if field == "usJobType":
                    self.job = self.pages.media.get(last)
                yield here, last
            elif kind == "byte list":
                yield here, list(self.data[at:at + width])
            elif kind.startswith("embedded"):
                yield from self.record(target[0], at, here, None)
            elif kind in ("reserved", "opaque"):
                continue
            elif self.number(at, width) == 0:
                yield here, None
            else:
                assert self.number(at, width) == self.next, here
                if target:
                    yield from self.elements(kind, target, field, here, role, last)
                else:
                    isUnix = numbers.get("usNodeType") == self.pages.unix and role == ("disks", True)
                    count = {"text": 1, "two texts": 2, "text, or two texts": 2 if isUnix else 1, "text list": last}[kind]
                    texts = self.texts(count)
                    yield here, texts if kind in ("two texts", "text list") or count == 2 else texts[0]

    def elements(self, kind, target, field, here, role, count):
        if len(target) == 2:
            target = [next(name for name in target if name.startswith({"disks": "BKDDISK", "tapes": "BKDTAPE"}[role[0]]))]
        inner = None
        if field in ("pSourceNodes", "pDestNodes"):
            name, sources, destinations = self.job
            # With whether its machines are ones; the destinations of a restore are not.
            inner = (sources, True) if field == "pSourceNodes" else (destinations, "restore" not in name)
        isArray = kind.startswith("array of")
        size = self.records[target[0]][0]
        first = self.take(size * (count if isArray else 1))
        for i in range(count if isArray else 1):
            yield from self.record(target[0], first + i * size, here + (f"[{i}]" if isArray else ""), inner)

    def texts(self, count):
        end, texts = self.next, []
        for _ in range(count):
            begin, end = end, self.data.index(0, end) + 1
            texts.append(self.data[begin:end - 1].decode("utf-8", "backslashreplace"))
        self.take(end - self.next)
        return texts


def compare_layout(bkoq, page):
    """Every row and every list of codes of the page is in the text of `bkoq layout`."""
    records = page.of["current"], page.of["previous"]
    for tables, option in zip(records, ([], ["--previous"])):
        text = subprocess.run([bkoq, "layout", *option], capture_output=True, text=True, check=True).stdout
        for name, (size, rows, codes) in tables.items():
            start = text.index(f"{name}, {size} bytes")
            own = text[start:].split("\n\nBK")[0]
            for offset, width, field, kind, meaning in rows:
                kind = kind.replace("`", "")
                pattern = rf"^ +{offset} +{width}  {field} +{re.escape(kind)} +{re.escape(meaning)}"
                assert re.search(pattern, own, re.M), (name, field, own)
            for field, words in codes.items():
                listed = re.search(rf"^  {field}, codes: (.*)$", own, re.M).group(1)
                assert dict((word, int(code)) for code, word in re.findall(r"(\d+) ([^;]+)", listed)) == words, field


def main():
    check, bkoq = sys.argv[1:3]
    pages = []
    for path in sys.argv[3:5]:
        with open(path, encoding="utf-8") as file:
            pages.append(file.read())
    records, form = Records(pages[0]), Format(pages[1])
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run([check, folder], check=True)
        images = sorted(glob.glob(os.path.join(folder, "*.image")))
        assert len(images) == 10, images
        fields = 0
        for path in images:
            with open(path, "rb") as file:
                reader = Reader(form, records, file.read())
            found = [f"{path}\t{json.dumps(value, ensure_ascii=False)}" for path, value in reader.read()]
            with open(path.replace(".image", ".expected"), encoding="utf-8") as file:
                expected = file.read().splitlines()
            for ours, kits in zip(found, expected):
                assert ours == kits, (os.path.basename(path), ours, kits)
            assert len(found) == len(expected), path
            fields += len(found)
    compare_layout(bkoq, records)
    print(f"{fields} fields of {len(images)} images read from the documents alone")


if __name__ == "__main__":
    main()
