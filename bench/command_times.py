#!/usr/bin/env python3
"""Times of the command against other tools on the same content: command_times.py BKOQ SCHEMA. Times are
user and system time; each row tells the median of the rounds and their range."""

import json
import os
import statistics
import subprocess
import sys
import tempfile
from pathlib import Path

ROUNDS = 9


def items(count):
    """A job of so many items on ten machines of ten disks, and the same for FlatBuffers."""
    nodes, peers = [], []
    for machine in range(10):
        disks, peer_disks = [], []
        for disk in range(10):
            paths = [f"/projects/{disk}/reports/{i}" for i in range(count // 100)]
            disks.append({"diskName": f"/export/home{disk}", "diskType": 5,
                          "diskItems": [{"path": path} for path in paths]})
            peer_disks.append({"type": 5, "name": f"/export/home{disk}",
                               "items": [{"path": path} for path in paths]})
        node = {"nodeName": f"machine{machine}", "nodeOSver": "4.0", "userName": "operator",
                "password": "secret"}
        nodes.append({"kind": "winNT", **node, "disks": disks})
        peers.append({"type": 1, "name": node["nodeName"], "os_version": "4.0", "user": "operator",
                      "password": "secret", "disks": peer_disks})
    return ({"kind": "backup", "jobName": "large", "owner": "operator", "host": "backup1",
             "sourceNodes": nodes},
            {"owner": "operator", "host": "backup1", "nodes": peers})


def run(command, output):
    """User and system time, and the most memory in bytes."""
    with open(output, "wb") as file:
        process = subprocess.Popen(command, stdout=file, stderr=subprocess.DEVNULL)
        _, status, used = os.wait4(process.pid, 0)
    if os.waitstatus_to_exitcode(status) not in (0, 1):
        sys.exit(f"{command} failed")
    return used.ru_utime + used.ru_stime, used.ru_maxrss * 1024


def contest(ours, others, output):
    """One round after the other, by turns: [(time, memory)] of each."""
    rounds = ([], [])
    for number in range(ROUNDS):
        for side in (0, 1) if number % 2 == 0 else (1, 0):
            rounds[side].append(run((ours, others)[side], output))
    return rounds


def row(name, values, must, remark=""):
    median = statistics.median(values)
    verdict = "" if must is None else ("  " + must[0] + f" {must[1]:g} " + (
        "ok" if (median <= must[1] if must[0] == "<=" else median >= must[1]) else "OVER"))
    print(f"{name:52} {median:7.2f}  {min(values):.2f} .. {max(values):.2f}{verdict}  {remark}",
          flush=True)


def ratios(rounds):
    return [ours[0] / others[0] for ours, others in zip(*rounds)]


def write_contents():
    """In a process of its own: what one process has needed counts as memory of those that it
    starts."""
    process = os.fork()
    if process != 0:
        if os.waitpid(process, 0)[1] != 0:
            sys.exit("cannot write the job files")
        return
    job, peer = items(100000)
    Path("job.json").write_text(json.dumps(job, indent=1))
    Path("peer.json").write_text(json.dumps(peer, indent=1))
    million, _ = items(1000000)
    Path("million.json").write_text(json.dumps(million, indent=1))
    os._exit(0)


def main():
    bkoq, schema = (str(Path(name).resolve()) for name in sys.argv[1:3])
    print(f"the command against other tools, user and system time, {ROUNDS} rounds")
    with tempfile.TemporaryDirectory() as folder:
        os.chdir(folder)
        write_contents()
        subprocess.run([bkoq, "flatten", "job.json", "-o", "job.image"], check=True)
        subprocess.run(["flatc", "-b", schema, "peer.json"], check=True)
        os.makedirs("peer", exist_ok=True)

        rounds = contest([bkoq, "flatten", "job.json", "-o", "other.image"],
                         ["flatc", "-b", "-o", "peer", schema, "peer.json"], "out")
        row("flatten 100,000 items -o IMAGE / flatc -b", ratios(rounds), ("<=", 1.2))
        rounds = contest([bkoq, "check", "million.json"], ["jq", "length", "million.json"], "out")
        row("check 1,000,000 items / jq length", ratios(rounds), ("<=", 1.0))
        size = os.path.getsize("million.json")
        row("the same, memory / size of the file", [used / size for _, used in rounds[0]], ("<=", 8))

        to_json = ["flatc", "--json", "--raw-binary", "-o", "peer", schema, "--", "peer.bin"]
        for option, must in (([], 250), (["--annotate"], 250), (["--json"], 350),
                             (["--json=plain"], None)):
            rounds = contest([bkoq, "show", "job.image", *option], to_json, "out")
            run([bkoq, "show", "job.image", *option], "out")
            made = os.path.getsize("out") / 1e6
            peers = os.path.getsize("peer/peer.json") / 1e6
            rate = peers / statistics.median(time for time, _ in rounds[1])
            row("show IMAGE " + " ".join(option) + ", MB/s", [made / time for time, _ in rounds[0]],
                must and (">=", must), f"{made:.0f} MB; flatc --json {rate:.0f} MB/s")


main()
