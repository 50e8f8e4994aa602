#!/usr/bin/env python3
"""The pages of `bkoq show --html` and `bkoq diff --html` in a real browser: headless Chromium.

Usage: browser_test.py <bkoq> <folder of job files> [<png>]; with a third argument a screenshot of the
nightly job is written there and nothing is tested.
"""

import base64
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time

import pages
from selenium import webdriver
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys

bkoq, examples, *png = sys.argv[1:]
examples = pathlib.Path(examples)
nightly = examples / "nightly-backup.json"
work = pathlib.Path(tempfile.mkdtemp())


def open_browser(size):
    options = webdriver.ChromeOptions()
    options.binary_location = "/usr/bin/chromium"
    for argument in ("--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
                     "--disable-background-networking", "--disable-component-update",
                     "--disable-sync", "--disable-dev-shm-usage", f"--window-size={size}",
                     f"--user-data-dir={work}/profile"):
        options.add_argument(argument)
    options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
    return webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=options)


browser = open_browser("1360,960")
js = browser.execute_script


def show(*arguments, status=0):
    page = work / "page.html"
    pages.write_page(bkoq, page, *arguments, status=status)
    browser.get(page.as_uri())
    assert js("return document.body.dataset.ready") == "yes"


def until(holds):
    # Rows are drawn when the browser finds time to.
    for _ in range(100):
        if holds():
            return
        time.sleep(0.05)
    assert holds()


def rows(pane="tree-0"):
    # In one step: rows are made anew whenever a list changes.
    return js("return [...document.querySelectorAll(arguments[0])].map(e => e.textContent)",
              f"#{pane} .row")


def selected():
    return js("return document.body.dataset.selected")


def press(*keys):
    webdriver.ActionChains(browser).send_keys(*keys).perform()


def search(text):
    box = browser.find_element(By.ID, "search")
    box.clear()
    box.send_keys(text)
    for _ in range(200):
        hits = browser.find_element(By.ID, "hits").text
        if hits and not hits.endswith("…"):
            return hits
        time.sleep(0.05)
    raise AssertionError(f"searching {text} does not end: {hits}")


def nothing_was_refused_or_wrong():
    log = [entry["message"] for entry in browser.get_log("browser")]
    assert not log, log


def test_tree_and_bytes_lead_to_each_other():
    show("show", nightly)
    assert any("BKQJDATATRANSFER" in row for row in rows())
    search("pSourceNodes[0].pszNodeName")
    assert selected() == "pSourceNodes[0].pszNodeName"
    lit = [each.text.strip() for each in browser.find_elements(By.CSS_SELECTOR, "#bytes .cells .lit")]
    assert lit == ["pp pp pp pp"], lit
    # A pointer leads to its block, whose bytes are shown as text too; the way back is kept.
    link = browser.find_element(By.CSS_SELECTOR, "#tree-0 .selected a[data-block]")
    block = link.text
    link.click()
    head = browser.find_element(By.CSS_SELECTOR, "#bytes .row.head")
    assert head.text.startswith(block) and "pSourceNodes[0].pszNodeName" in head.text, head.text
    lit = js("return [...document.querySelectorAll('#bytes .lit')].map(e => e.textContent.trim())")
    assert lit == [b"ledger\0\0".hex(" "), "ledger··"], lit
    # A byte leads to its field.
    cell = browser.find_element(By.CSS_SELECTOR, "#bytes .row.head + .row + .row .cells span")
    cell.click()
    assert selected().startswith("pSourceNodes[0].") and selected() != "pSourceNodes[0].pszNodeName"
    # An array leads to its first element.
    search("pDestNodes")
    browser.find_element(By.CSS_SELECTOR, "#tree-0 .selected a[data-block]").click()
    assert selected() == "pDestNodes[0]", selected()
    # So does a block of the picture.
    browser.find_element(By.CSS_SELECTOR, "#map rect[data-block='2']").click()
    assert selected() == "pSourceNodes[0]", selected()


def test_search():
    show("show", nightly)
    assert search("payroll").startswith("1/")
    first = selected()
    assert browser.find_elements(By.CSS_SELECTOR, "#tree-0 .selected mark")
    browser.find_element(By.ID, "search").send_keys(Keys.ENTER)
    assert selected() != first
    browser.find_element(By.ID, "search").send_keys(Keys.SHIFT, Keys.ENTER)
    assert selected() == first
    assert search("BKDTAPEX").startswith("1/")
    assert search("no such thing") == "none"
    assert search("#1+4") == "found" and selected() == "usJobType"
    assert search("#9999") == "none"


def test_collapse_and_keys():
    show("show", nightly)
    opened = js("return document.querySelector('#tree-0 .layer').childElementCount")
    press("-")
    assert len(rows()) < opened and "[0]" not in " ".join(rows())
    press("*")
    assert js("return document.querySelector('#tree-0 .layer').childElementCount") == opened
    press(Keys.HOME)
    assert selected() == ""
    press(Keys.ARROW_DOWN)
    assert selected() == "usJobType"
    press("e")
    assert any("ulReserved0" in row for row in rows())
    press("e", Keys.ARROW_LEFT)
    assert selected() == ""
    search("pSourceNodes")
    press(Keys.ESCAPE)
    press(Keys.ARROW_LEFT)
    assert js("return document.querySelector('#tree-0 .selected').getAttribute('aria-expanded')") == "false"
    press(Keys.ARROW_RIGHT, Keys.ARROW_RIGHT)
    assert selected() == "pSourceNodes[0]"
    press(Keys.ARROW_LEFT, Keys.ARROW_LEFT)
    press(Keys.ENTER)
    assert selected() == "pSourceNodes[0]"
    press(Keys.BACKSPACE)
    assert selected() == "pSourceNodes"
    theme = js("return document.documentElement.dataset.theme")
    press("t")
    assert js("return document.documentElement.dataset.theme") != theme
    press("?")
    assert js("return document.getElementById('keys').open")


def test_tabs_mark_what_differs():
    show("show", nightly)
    tabs = browser.find_elements(By.CSS_SELECTOR, "#tabs [role=tab]")
    assert [tab.text for tab in tabs] == ["current", "previous"]
    search("pSourceNodes[0].pszNodeDomain")
    row = browser.find_element(By.CSS_SELECTOR, "#tree-0 .selected")
    assert "differs" in row.get_attribute("class") and "previous: zero" in row.text, row.text
    browser.find_element(By.ID, "search").clear()
    tabs[1].click()
    assert tabs[1].get_attribute("aria-selected") == "true"
    # What is called otherwise there is found by its place.
    assert selected() == "pSourceNodes[0].abReserved84", selected()
    js("document.querySelector('#tree-0').scrollTop = 0")
    until(lambda: any("BKQJDATATRANSFER_OLD" in row for row in rows()))
    press("1")
    assert tabs[0].get_attribute("aria-selected") == "true"
    differing = selected()
    press("d")
    assert selected() == differing == "pSourceNodes[0].pszNodeDomain"
    press("d")
    assert selected() == "pSourceNodes[2].usNodeType"
    press("D")
    assert selected() == differing
    expected = subprocess.run([bkoq, "diff", "--layouts", str(nightly)], capture_output=True, text=True)
    count = expected.stdout.count("\n")
    note = browser.find_element(By.ID, "difference-note")
    assert note.text.startswith(f"{count} differences"), (note.text, count)
    note.click()
    assert len(rows("differences")) >= 3


def test_comparison():
    job = work / "one.json"
    items = [{"path": "a"}]
    pages.write_job(job, [pages.node("first", items)])
    other = work / "two.json"
    pages.write_job(other, [pages.node("first", [{"path": "b"}]), pages.node("second", items)])
    show("diff", job, other, status=1)
    lines = subprocess.run([bkoq, "diff", str(job), str(other)], capture_output=True, text=True).stdout
    assert len(rows("differences")) == lines.count("\n"), (rows("differences"), lines)
    assert any('"a"' in row and '"b"' in row for row in rows("differences"))
    js("""[...document.querySelectorAll('#differences .row')]
          .find(e => e.textContent.includes('"a"')).querySelector('.path').click()""")
    for pane, mine in (("tree-0", '"a"'), ("tree-1", '"b"')):
        line = browser.find_element(By.CSS_SELECTOR, f"#{pane} .selected")
        assert "differs" in line.get_attribute("class") and mine in line.text, line.text
    same = work / "same.json"
    shutil.copy(job, same)
    show("diff", job, same)
    assert browser.find_element(By.ID, "difference-title").text == "No difference"


def test_elements_are_aligned():
    names = ["kept", "moving", "leaving", "last"]
    nodes = {name: pages.node(name, [{"path": name}]) for name in names + ["new"]}
    first = work / "before.json"
    pages.write_job(first, [nodes[name] for name in names])
    second = work / "after.json"
    pages.write_job(second, [nodes[name] for name in ("moving", "new", "kept", "last")])
    show("diff", first, second, status=1)
    found = rows("differences")
    lines = subprocess.run([bkoq, "diff", str(first), str(second)], capture_output=True, text=True).stdout
    assert len(found) == lines.count("\n"), (found, lines)
    assert any('"moving"' in row and "moved to pSourceNodes[0]" in row for row in found), found
    # What is selected in one tree is so in the other, wherever it is there.
    for mine, there in (("[0]", "[2]"), ("[1]", "[0]"), ("[3]", "[3]")):
        search(f"pSourceNodes{mine}.pszNodeName")
        texts = [browser.find_element(By.CSS_SELECTOR, f"#tree-{n} .selected").text for n in (0, 1)]
        name = names[int(mine[1])]
        assert all(f'"{name}"' in text for text in texts), (mine, there, texts)


def test_doubts_are_marked():
    image = work / "cut.image"
    subprocess.run([bkoq, "flatten", str(nightly), "-o", str(image)], check=True)
    data = image.read_bytes()
    image.write_bytes(data[:len(data) * 2 // 3])
    show("show", image, "--salvage", status=2)
    assert "cut short by" in browser.find_element(By.ID, "warning").text
    press("*")
    texts = js("""return [...document.querySelectorAll('#tree-0 .row.doubtful')].map(e => e.textContent)""")
    for _ in range(50):
        if texts:
            break
        js("const list = document.querySelector('#tree-0'); list.scrollTop += list.clientHeight")
        time.sleep(0.05)
        texts = js("""return [...document.querySelectorAll('#tree-0 .row.doubtful')].map(e => e.textContent)""")
    assert texts and all("doubtful" in text for text in texts), texts


def test_secrets_are_masked():
    job = pages.hostile_job(work / "secrets.json")
    show("show", job)
    search("pSourceNodes[0].pszPassword")
    assert "********" in browser.find_element(By.CSS_SELECTOR, "#tree-0 .selected").text
    browser.find_element(By.CSS_SELECTOR, "#tree-0 .selected a").click()
    lit = js("return [...document.querySelectorAll('#bytes .lit')].map(e => e.textContent.trim())")
    assert lit == ["** ** ** ** ** ** ** **  00", "********·"], lit
    assert search("hunter2") == "none"
    show("show", job, "--show-secrets")
    assert search("hunter2").startswith("1/")


def test_hostile_texts_do_nothing():
    job = pages.hostile_job(work / "<img src=x onerror=alert(1)>.json")
    show("show", job)
    press("*")
    text = js("return document.body.textContent")
    assert js("return document.body.dataset.owned") is None
    assert not browser.find_elements(By.TAG_NAME, "img")
    assert js("return document.title") == "<img src=x onerror=alert(1)>.json"
    for character in "\u202e\u0007\u001b\u0085\u200b\u2028\u3164\u2800\U0001fffe":
        assert character not in js("return document.body.innerText"), hex(ord(character))
    shown = "\n".join(rows())
    assert "safe\\u{202e}gnp.exe" in text and "</script><script>" in shown
    for hit in ("bell\\u{7}", "\\t", "\\u{1b}[31m", "\\u{85}", "\\u{200b}", "\\u{2028}end", "\\u{3164}", "\\u{2800}", "\\u{1fffe}", "\\u{301}"):
        assert search(hit).startswith("1/"), hit
    nothing_was_refused_or_wrong()
    # The policy refuses what the page did not come with.
    js("const s = document.createElement('script'); s.textContent = 'document.body.dataset.owned = 1';"
       "document.body.append(s); const i = document.createElement('img'); i.src = 'x.png';"
       "i.setAttribute('onerror', 'document.body.dataset.owned = 1'); document.body.append(i);")
    time.sleep(0.2)
    assert js("return document.body.dataset.owned") is None
    log = " ".join(entry["message"] for entry in browser.get_log("browser"))
    assert "script-src" in log and "default-src" in log, log


def test_print():
    show("show", nightly)
    data = base64.b64decode(browser.print_page())
    assert data.startswith(b"%PDF") and data.count(b"/Type /Page\n") + data.count(b"/Type /Page ") >= 2
    # What goes to paper is all that is open, without the panes that scroll.
    js("dispatchEvent(new Event('beforeprint'))")
    printed = js("return document.getElementById('print').textContent")
    for name in ("pSourceNodes", "pDestNodes", "pszHost", "payroll"):
        assert name in printed, name
    js("dispatchEvent(new Event('afterprint'))")
    assert js("return document.getElementById('print').childElementCount") == 0


def test_large_job():
    job = pages.large_job(work / "large.json")
    page = work / "large.html"
    pages.write_page(bkoq, page, "show", job)
    began = time.monotonic()
    browser.get(page.as_uri())
    assert js("return document.body.dataset.ready") == "yes"
    seconds = time.monotonic() - began
    print(f"  100,000 items: {page.stat().st_size / 2**20:.1f} MiB, open after {seconds:.2f} s")
    assert seconds < 3, seconds
    hits = search("item-099999")
    assert hits == "1/1" and selected() == "pSourceNodes[0].pMedia[0].pDiskItems[99999].pszPath", selected()
    press(Keys.ESCAPE)
    # Scrolling: rows come at once, wherever it goes, and few of them are in the document.
    js("const list = document.querySelector('#tree-0'); list.scrollTop = list.scrollHeight / 2")
    time.sleep(0.1)
    assert rows() and len(rows()) < 100
    median = js("""
      const list = document.querySelector('#tree-0'), times = [];
      for (let i = 0; i < 100; ++i) {
        const began = performance.now();
        list.scrollTop = list.scrollHeight * i / 100;
        list.dispatchEvent(new Event('scroll'));
        list.getBoundingClientRect();
        times.push(performance.now() - began);
      }
      return times.sort((a, b) => a - b)[50];""")
    print(f"  a step of scrolling takes {median:.0f} ms")
    assert median < 100, median
    press("*")
    assert js("return document.querySelector('#tree-0').scrollHeight") > 4e6
    press(Keys.END)
    assert selected() == "pszOwner", selected()
    press(Keys.ENTER)
    until(lambda: "operator" in " ".join(rows("bytes")))


def screenshot(file):
    show("show", nightly)
    search("pSourceNodes[0].pszNodeDomain")
    press(Keys.ESCAPE)
    js("document.activeElement.blur()")
    browser.save_screenshot(file)


try:
    if png:
        screenshot(png[0])
    else:
        for name, test in list(globals().items()):
            if name.startswith("test_"):
                browser.get_log("browser")
                test()
                nothing_was_refused_or_wrong()
                print(name[5:].replace("_", " "))
finally:
    browser.quit()
    shutil.rmtree(work, ignore_errors=True)
