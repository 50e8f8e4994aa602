#!/usr/bin/env python3
"""What can be told of a page of `bkoq show --html` and `bkoq diff --html` without a browser.

Usage: page_test.py <bkoq> <folder of job files> [--quick]
"""

import base64
import hashlib
import json
import os
import pathlib
import re
import stat
import subprocess
import sys
import tempfile
import zlib

import pages

bkoq, examples, *options = sys.argv[1:]
examples = pathlib.Path(examples)
work = pathlib.Path(tempfile.mkdtemp())
nightly = examples / "nightly-backup.json"


def only_its_owner_can_read_it():
    page = work / "private.html"
    old = os.umask(0)
    try:
        pages.write_page(bkoq, page, "show", nightly)
    finally:
        os.umask(old)
    assert stat.S_IMODE(page.stat().st_mode) == 0o600
    # What was there stays when a page cannot be written.
    run = subprocess.run([bkoq, "show", str(nightly), "--html", "-o", "/nonexistent/x.html"],
                         capture_output=True, text=True)
    assert run.returncode == 2 and "cannot write /nonexistent/x.html" in run.stderr, run
    on_output = subprocess.run([bkoq, "show", str(nightly), "--html"], capture_output=True, check=True)
    assert on_output.stdout == page.read_bytes()


def it_needs_nothing_else_and_lets_nothing_else_run():
    for arguments, status in ((["show", nightly], 0), (["diff", "--layouts", nightly], 1)):
        page = pages.write_page(bkoq, work / "policy.html", *arguments, status=status).decode()
        policy = re.search(r'http-equiv="Content-Security-Policy" content="([^"]*)"', page).group(1)
        rules = dict(rule.strip().split(" ", 1) for rule in policy.split(";"))
        assert rules["default-src"] == rules["base-uri"] == rules["form-action"] == "'none'", policy
        for rule, element in (("script-src", r"<script>(.*?)</script>"),
                              ("style-src", r"<style>(.*?)</style>")):
            contents = re.findall(element, page, re.S)
            assert len(contents) == 1
            digest = base64.b64encode(hashlib.sha256(contents[0].encode()).digest()).decode()
            assert rules[rule] == f"'sha256-{digest}'", policy
        addresses = set(re.findall(r"https?://[^\"' ]+", page))
        assert addresses == {"http://www.w3.org/2000/svg"}, addresses  # a name, never fetched
        assert not re.search(r"\b(src|href|action|srcset)=", page)
        for word in ("innerHTML", "outerHTML", "insertAdjacent", "document.write", "eval(", "Function("):
            assert word not in page, word


def secrets_are_nowhere_unless_asked_for():
    job = pages.hostile_job(work / "secrets.json")
    masked = pages.decoded(pages.write_page(bkoq, work / "masked.html", "show", job))
    for secret in pages.SECRETS[:3]:
        assert secret.encode() not in masked and b"hunter2" not in masked
    shown = pages.decoded(pages.write_page(bkoq, work / "shown.html", "show", job, "--show-secrets"))
    for secret in pages.SECRETS[:3]:
        assert shown.count(secret.encode()) >= 2, secret  # in either layout
    # Longer ones make the same page, byte by byte.
    longer = pages.hostile_job(work / "longer.json", [each * 5 for each in pages.SECRETS])
    longer.replace(job)
    assert pages.decoded(pages.write_page(bkoq, work / "longer.html", "show", job)) == masked
    one = pages.write_job(work / "one.json", [pages.node("a", [])])
    two = pages.write_job(work / "two.json", [pages.node("a", [], [e + "2" for e in pages.SECRETS])])
    both = pages.decoded(pages.write_page(bkoq, work / "both.html", "diff", one, two, status=1))
    assert b"hunter2" not in both


def hostile_texts_end_no_element():
    job = pages.hostile_job(work / "<b>&lt;.json")
    page = pages.write_page(bkoq, work / "hostile.html", "show", job, "--layout", "current").decode()
    assert page.count("</script>") == 3 and "<title>&lt;b>&amp;lt;.json</title>" in page
    assert "dataset.owned" not in page and "\u202e" not in page


def damaged_images_say_what_is_wrong():
    image = work / "damaged.image"
    subprocess.run([bkoq, "flatten", str(nightly), "-o", str(image)], check=True)
    data = bytearray(image.read_bytes())
    data[24] += 1  # the number of blocks, with the checksum that fits
    data[28:32] = zlib.crc32(data[:28] + bytes(4) + data[32:]).to_bytes(4, "little")
    image.write_bytes(data)
    run = subprocess.run([bkoq, "show", str(image)], capture_output=True, text=True)
    wrong, hint = run.stderr.strip().split(": ", 2)[2].split("; ")
    assert "--salvage" in hint, hint
    page = pages.write_page(bkoq, work / "damaged.html", "show", image, status=2).decode()
    assert json.loads(re.search(r'id="page">(.*?)</script>', page).group(1))["warning"] == wrong
    assert "blocks" in wrong, wrong


def salvaged_images_say_from_where_they_are_doubtful():
    image = work / "cut.image"
    subprocess.run([bkoq, "flatten", str(nightly), "-o", str(image)], check=True)
    data = image.read_bytes()
    image.write_bytes(data[:len(data) * 2 // 3])
    page = pages.write_page(bkoq, work / "salvaged.html", "show", image, "--salvage", status=2).decode()
    description = json.loads(re.search(r'id="page">(.*?)</script>', page).group(1))
    assert description["warning"].startswith("cut short by "), description["warning"]
    tree = description["trees"][0]
    assert 1 < tree["doubtfulFrom"] <= tree["blocks"], (tree["doubtfulFrom"], tree["blocks"])


def a_page_is_bounded():
    job = work / "long.json"
    items = [{"path": "x" * 200000}]
    pages.write_job(job, [pages.node("long", items)])
    page = pages.write_page(bkoq, work / "long.html", "show", job)
    assert len(page) < 500000, len(page)
    # 60,000 texts of 300 bytes are more than what is put on a page of a tree.
    items = [{"path": "d", "files": [f"{i:0300}" for i in range(60000)]}]
    pages.write_job(job, [pages.node("many", items)])
    page = pages.write_page(bkoq, work / "many.html", "show", job)
    assert 40 << 20 < len(page) < 48 << 20, len(page)
    assert page.count(b'"isWhole":false') == 2


def every_example_makes_a_page():
    count = 0
    for job in sorted(examples.glob("*.json")):
        page = pages.write_page(bkoq, work / "example.html", "show", job)
        assert page.startswith(b"<!DOCTYPE html>") and page.endswith(b"</html>\n")
        count += 1
    assert count >= 14, count


tests = [only_its_owner_can_read_it, it_needs_nothing_else_and_lets_nothing_else_run,
         secrets_are_nowhere_unless_asked_for, hostile_texts_end_no_element,
         damaged_images_say_what_is_wrong, salvaged_images_say_from_where_they_are_doubtful,
         every_example_makes_a_page]
if "--quick" not in options:
    tests.append(a_page_is_bounded)
for test in tests:
    test()
    print(test.__name__.replace("_", " "))
