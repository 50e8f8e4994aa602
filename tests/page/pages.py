"""Jobs and pages that both tests of the page use."""

import base64
import json
import pathlib
import re
import subprocess

# Texts that a page must show and never obey.
SCRIPT_END = "</script><script>document.body.dataset.owned='yes'</script>"
IMAGE = "<img src=x onerror=\"document.body.dataset.owned='yes'\"><!--"
BACKWARDS = "safe\u202egnp.exe"
CONTROLS = "bell\u0007 tab\t escape\u001b[31m nel\u0085 zero\u200bwidth line\u2028end filler\u3164 blank\u2800 none\U0001fffe"
PILE = "z" + "\u0301" * 40
SECRETS = ["hunter2-node", "hunter2-disk-password-of-some-length", "hunter2-key", "hunter2-session"]


def node(name, items, secrets=SECRETS):
    return {"kind": "winNT", "nodeName": name, "password": secrets[0], "disks": [
        {"diskName": "C:", "password": secrets[1], "encryptionKey": secrets[2], "diskItems": items}]}


def write_job(path, nodes, owner="operator"):
    job = {"kind": "backup", "jobName": "page", "owner": owner, "sourceNodes": nodes}
    path.write_text(json.dumps(job), encoding="utf-8")
    return path


def hostile_job(path, secrets=SECRETS):
    texts = [SCRIPT_END, IMAGE, BACKWARDS, CONTROLS, PILE]
    items = [{"path": text} for text in texts] + [{"path": "docs", "files": texts}]
    return write_job(path, [node(SCRIPT_END, items, secrets)], owner=BACKWARDS)


def large_job(path, count=100000):
    items = [{"path": f"/data/volume-{i % 97:02}/item-{i:06}"} for i in range(count)]
    return write_job(path, [node("large", items)])


def write_page(bkoq, page, *arguments, status=0):
    run = subprocess.run([bkoq, *map(str, arguments), "--html", "-o", str(page)],
                         capture_output=True, text=True)
    assert run.returncode == status, (run.returncode, run.stderr)
    return pathlib.Path(page).read_bytes()


def decoded(page):
    """The page with the trees in it as bytes."""
    return re.sub(rb'(<script type="application/octet-stream" id="\w+">)([^<]*)',
                  lambda each: each.group(1) + base64.b64decode(each.group(2), validate=True), page)
