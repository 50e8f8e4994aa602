#!/usr/bin/env python3
"""What a page holds for its script, read back: the same as `bkoq show --json` and `bkoq layout --json`
tell of the same job, which are written by other code.

Usage: data_test.py <bkoq> <folder of job files>
"""

import base64
import datetime
import json
import pathlib
import re
import subprocess
import sys
import tempfile
import zlib

import pages

bkoq = sys.argv[1]
examples = pathlib.Path(sys.argv[2])
work = pathlib.Path(tempfile.mkdtemp())

KINDS = ["number", "count", "flags", "time", "client time", "byte list", "text", "two texts", "text list", "array",
         "record", "embedded", "reserved", "opaque"]
MASK = "********"
FIELD = ("name", "kind", "offset", "width", "isSecret", "meaning", "filledBy", "embedded", "words")


def output_of(*arguments, statuses=(0,)):
    run = subprocess.run([bkoq, *map(str, arguments)], capture_output=True, text=True)
    assert run.returncode in statuses, (arguments, run.returncode, run.stderr)
    return run.stdout


def description_of(page):
    return json.loads(re.search(r'<script type="application/json" id="page">(.*?)</script>', page, re.S).group(1))


class Tree:
    """One tree of a page: the records and texts in the order of the walk."""

    def __init__(self, page, description):
        data = re.search(f'<script type="application/octet-stream" id="{description["id"]}">([^<]*)</script>', page)
        self.data = base64.b64decode(data.group(1), validate=True)
        assert base64.b64encode(self.data).decode() == data.group(1)
        self.shapes = [(shape["record"], shape["size"], [dict(zip(FIELD, field, strict=True))
                                                         for field in shape["fields"]])
                       for shape in description["shapes"]]
        self.at = self.blocks = self.records = 0
        self.doubtful_from = description["doubtfulFrom"]
        self.cut = []  # texts of which only the beginning is here: how long they are, and how much is here
        self.job = self.record(self.block(), 0)

    def block(self):
        self.blocks += 1
        return self.blocks

    def number(self):
        value = shift = 0
        while True:
            byte = self.data[self.at]
            self.at += 1
            value |= (byte & 127) << shift
            if byte < 128:
                assert byte > 0 or shift == 0, "in as few bytes as can be"
                return value
            shift += 7

    def record(self, block, offset):
        shape = self.number()
        size = self.shapes[shape][1]
        self.at += size
        assert self.at <= len(self.data)
        return self.fields(shape, self.data[self.at - size:self.at], block, offset)

    def fields(self, shape, record, block, offset):
        """A record as JSON for programs shows it."""
        self.records += 1
        name, size, fields = self.shapes[shape]
        shown = {}
        end = 0
        count = None
        for field in fields:
            assert field["offset"] == end, "fields follow each other"
            end += field["width"]
            raw = record[field["offset"]:end]
            kind = KINDS[field["kind"]]
            if kind == "count":
                count = int.from_bytes(raw, "little")
            if kind == "reserved":
                assert not any(raw), field
            else:
                shown[field["name"]] = {"offset": field["offset"], "width": field["width"], "kind": kind}
                shown[field["name"]].update(self.value(field, kind, raw, count, block, offset))
        assert end == size == len(record), name
        return {"record": name, "block": block, "offset": offset, "size": size, "fields": shown}

    def value(self, field, kind, raw, count, block, offset):
        number = int.from_bytes(raw, "little")
        words = {int(value): word for value, word in field["words"].items()}
        is_address = KINDS.index("text") <= field["kind"] <= KINDS.index("record") or (
            kind == "opaque" and field["name"].startswith("p"))
        if is_address:
            # Nothing of it is on the page but that there is one.
            assert raw in (bytes(4), b"\1\0\0\0"), (field, raw)
            return self.behind(field, kind, count) if number != 0 else {"value": None}
        if kind in ("number", "count", "opaque", "flags"):
            shown = {"value": number, "hex": f"0x{number:0{2 * len(raw)}x}"}
            word = words.get(number, "")
            if kind == "flags":
                named = [bit for bit in words if number & bit == bit]
                rest = number
                for bit in named:
                    rest &= ~bit
                word = ", ".join([words[bit] for bit in sorted(named)] + [f"0x{rest:08x}"] * (bool(named) and rest > 0))
            return {**shown, "word": word} if word else shown
        if kind in ("time", "client time"):
            seconds = int.from_bytes(raw, "little", signed=True)
            date = datetime.datetime(1970, 1, 1) + datetime.timedelta(seconds=seconds)
            return {"value": seconds, "date": str(date)} if seconds != 0 else {"value": 0}
        if kind == "byte list":
            return {"value": list(raw)}
        return {"value": self.fields(field["embedded"], raw, block, offset + field["offset"])}

    def behind(self, field, kind, count):
        block = self.block()
        shown = self.elements(field, kind, block, count)
        return {**shown, "doubtful": True} if 0 < self.doubtful_from <= block else shown

    def elements(self, field, kind, block, count):
        if kind in ("array", "record"):
            records = []
            size = 0
            for _ in range(count if kind == "array" else 1):
                records.append(self.record(block, size))
                size += records[-1]["size"]
            return {"block": block, "size": size, "count": len(records),
                    "value": records if kind == "array" else records[0]}
        return self.texts(field, kind, block, {"text": 1, "two texts": 2, "text list": count}[kind])

    def texts(self, field, kind, block, count):
        texts = []
        size = 0
        is_masked = False
        for _ in range(count):
            head = self.number()
            if head & 2:
                self.cut.append((self.number(), head // 4))
            text = self.data[self.at:self.at + head // 4]
            self.at += head // 4
            size += len(text) + 1
            # JSON of characters that are none is another matter, and tested elsewhere.
            texts.append(text.decode() + MASK * (head & 1))
            is_masked |= head & 1 == 1
        assert not is_masked or field["isSecret"] == 1, field
        shown = {"block": block} if is_masked else {"block": block, "size": size}
        shown["value"] = texts[0] if kind == "text" else texts
        return {**shown, "masked": True} if is_masked else shown


def a_page_holds_what_json_tells(file, *options, layouts=("current", "previous"), status=0):
    page = pages.write_page(bkoq, work / "page.html", "show", file, *options, status=status).decode()
    description = description_of(page)
    assert [tree["id"] for tree in description["trees"]] == [f"tree{i}" for i in range(len(layouts))]
    for told, layout in zip(description["trees"], layouts, strict=True):
        tree = Tree(page, told)
        assert tree.at == len(tree.data), "nothing is behind the tree"
        choice = ["--layout", layout] if len(layouts) > 1 else []
        expected = json.loads(output_of("show", file, "--json", *choice, *options, statuses=(status,)))
        assert told["layout"] == layout == expected["layout"]
        assert told["name"] == (layout if len(layouts) > 1 else file.name)
        assert tree.job == expected["job"], (file, layout)
        assert (told["records"], told["blocks"]) == (tree.records, tree.blocks), (file, layout)
        assert told["isWhole"] is True and (told["doubtfulFrom"] > 0) == (status > 0)
        tables_agree(tree, layout)


def tables_agree(tree, layout):
    """What the page says of fields, beside their values, is what the table of records says."""
    table = {}
    arguments = ["layout", "--json"] + (["--previous"] if layout == "previous" else [])
    for record in json.loads(output_of(*arguments))["records"]:
        table[record["record"]] = record
    for name, size, fields in tree.shapes:
        assert size == table[name]["size"]
        for field in fields:
            # Kinds of filters have fields of one name.
            row = next(row for row in table[name]["fields"]
                       if (row["name"], row["width"]) == (field["name"], field["width"]))
            told = (field["offset"], field["meaning"], field["filledBy"], field["isSecret"])
            assert told == (row["offset"], row["meaning"], row.get("filledBy", ""),
                            int(row.get("secret", False))), (name, row["name"])
            words = field["words"]
            if KINDS[field["kind"]] == "flags":
                assert words == row.get("bits", {}), (name, row["name"])
            else:
                # A tape node's kind is that of a UNIX node: only what is in it tells them apart.
                known = [*row.get("values", {}).items(), ("3", "tape node")]
                assert set(words.items()) <= set(known), (name, row["name"], words)
            assert (field["embedded"] == -1) == (KINDS[field["kind"]] != "embedded"), row["name"]


def texts_of_any_length_are_whole():
    # Each length of the rest of three bytes, and lengths of one, two and three bytes.
    for lengths in ([1], [2], [3], [31, 32, 33], [127, 128], [4095, 4096, 4097], [600000]):
        items = [{"path": "x" * length} for length in lengths]
        if lengths == [600000]:
            items = [{"path": "d", "files": ["y" * 3000] * 200}]
        a_page_holds_what_json_tells(pages.write_job(work / "lengths.json", [pages.node("n", items)]))


def long_texts_are_cut():
    job = pages.write_job(work / "cut.json", [pages.node("n", [{"path": "x" * length} for length in (65536, 65537)])])
    page = output_of("show", job, "--html")
    tree = Tree(page, description_of(page)["trees"][0])
    assert tree.at == len(tree.data) and tree.cut == [(65537, 65536)], tree.cut
    password = pages.write_job(work / "password.json", [pages.node("n", [], ["x" * 70000] * 4)])
    page = output_of("show", password, "--html")
    assert Tree(page, description_of(page)["trees"][0]).cut == [], "what is masked is not cut"


def a_tree_ends_after_16_mib():
    # 280 items with the 60,036 bytes of record, length and text are the first that fill it, also when one
    # is as much shorter as fills it to the last byte. Without an owner no text is behind them.
    for spare in (0, 280 * 60036 + 454 - (16 << 20)):
        items = [{"path": "x" * (60000 - spare)}] + [{"path": "x" * 60000}] * 299
        job = pages.write_job(work / "large.json", [pages.node("n", items)], owner="")
        page = output_of("show", job, "--html")
        for told in description_of(page)["trees"]:
            assert told["isWhole"] is False
            size = len(base64.b64decode(re.search(f'id="{told["id"]}">([^<]*)<', page).group(1)))
            assert (told["records"], told["blocks"], size) == (283, 288, 280 * 60036 + 454 - spare), size


def changed_image(job, old, new):
    """An image of a job with these bytes, once, instead of the first of those."""
    image = work / "changed.image"
    output_of("flatten", examples / job, "-o", image)
    data = image.read_bytes().replace(old, new, 1)
    image.write_bytes(data[:28] + zlib.crc32(data[:28] + bytes(4) + data[32:]).to_bytes(4, "little") + data[32:])
    return image


def images_have_one_tree():
    image = work / "verify.image"
    output_of("flatten", examples / "verify.json", "-o", image, "--layout", "previous")
    a_page_holds_what_json_tells(image, layouts=["previous"])
    # Of an unknown kind of job nobody knows where the nodes' addresses lead.
    unknown_job = changed_image("verify.json", b"\x1d\0", b"\x63\0")
    a_page_holds_what_json_tells(unknown_job, "--salvage", layouts=["current"], status=2)
    # What an unknown kind of filter holds are numbers.
    unknown_filter = changed_image("nightly-backup.json", b"\5\0\1\0", b"\6\0\1\0")
    a_page_holds_what_json_tells(unknown_filter, layouts=["current"])
    assert "ulOpaque4" in output_of("show", unknown_filter)


def what_is_told_of_the_page():
    job = examples / "verify.json"
    told = description_of(output_of("show", job, "--html"))
    assert list(told) == ["title", "isComparison", "showSecrets", "warning", "unprintable", "trees", "differences",
                          "differenceCount"]
    assert list(told.values())[:4] == ["verify.json", False, False, ""]
    assert (told["differences"], told["differenceCount"]) == ([], 0)
    assert told["unprintable"][0] == [0, 31] and told["unprintable"][-1] == [917504, 1114111]
    assert description_of(output_of("show", job, "--html", "--show-secrets"))["showSecrets"] is True

    # Values of differences are cut after 1,000 bytes, and what is in a script is ASCII without "<".
    long = work / "long.json"
    long.write_text(job.read_text().replace("operator", "</script>\u00e9" + "o" * 2000), encoding="utf-8")
    page = output_of("diff", job, long, "--html", statuses=(1,))
    told = description_of(page)
    assert (told["isComparison"], told["title"]) == (True, "verify.json and long.json")
    new = '"</script>\u00e9' + "o" * (1000 - 12)
    assert told["differences"] == [["pszOwner", "pszOwner", '"operator"', new, 0]], told["differences"]
    assert told["differenceCount"] == 1
    text = re.search(r'id="page">(.*?)</script>', page, re.S).group(1)
    assert text.isascii() and "\n" not in text and "<" not in text
    assert text.startswith('{"title":"verify.json and long.json","isComparison":true,'), text[:80]


    # What has moved has two paths, and so have fields of two layouts.
    ends = [pages.write_job(work / f"{name}.json", [pages.node(each, []) for each in name]) for name in ("ab", "ba")]
    told = description_of(output_of("diff", *ends, "--html", statuses=(1,)))
    assert told["differences"] == [["pSourceNodes[1]", "pSourceNodes[0]", 'BKNODE "b"', 'BKNODE "b"', 3]]
    told = description_of(output_of("show", examples / "merge.json", "--html"))
    tape = "pSourceNodes[0].pMedia[0]."
    assert told["differences"] == [[tape + "usTapeID", tape + "ulTapeID", "9029", "74565", 0]], told["differences"]


def the_page_around_the_data():
    source = examples.parent / "tools/page"
    page = output_of("show", examples / "verify.json", "--html")
    page = re.sub(r"sha256-[A-Za-z0-9+/=]+", "HASH", page)
    page = re.sub(r'(<script type="application/[^>]*>)[^<]*', r"\1DATA", page)
    for name, file in (("STYLE", "page.css"), ("BODY", "page.html"), ("SCRIPT", "page.js")):
        content = (source / file).read_text(encoding="utf-8")
        assert page.count(content) == 1, file
        page = page.replace(content, name)
    assert page == """<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta http-equiv="Content-Security-Policy" content="default-src 'none'; script-src 'HASH'; style-src 'HASH'; \
base-uri 'none'; form-action 'none'">
<meta name="viewport" content="width=device-width">
<meta name="referrer" content="no-referrer">
<title>verify.json</title>
<style>STYLE</style>
</head>
<body>
BODY<script type="application/octet-stream" id="tree0">DATA</script>
<script type="application/octet-stream" id="tree1">DATA</script>
<script type="application/json" id="page">DATA</script>
<script>SCRIPT</script>
</body>
</html>
""", page


def differences_are_counted_beyond_those_on_the_page():
    jobs = [pages.write_job(work / f"{letter}.json", [pages.node("n", [{"path": f"{letter}{i}"} for i in range(5001)])])
            for letter in "ab"]
    told = description_of(output_of("diff", *jobs, "--html", statuses=(1,)))
    assert (len(told["differences"]), told["differenceCount"]) == (5000, 5001)


if __name__ == "__main__":
    for example in sorted(examples.glob("*.json")):
        a_page_holds_what_json_tells(example)
        a_page_holds_what_json_tells(example, "--show-secrets")
    a_page_holds_what_json_tells(pages.hostile_job(work / "hostile.json"))
    colons = pages.node("n", [], ["a:b:c", ":", "::", "d"])
    a_page_holds_what_json_tells(pages.write_job(work / "colons.json", [colons]))
    texts_of_any_length_are_whole()
    long_texts_are_cut()
    a_tree_ends_after_16_mib()
    images_have_one_tree()
    what_is_told_of_the_page()
    the_page_around_the_data()
    differences_are_counted_beyond_those_on_the_page()
