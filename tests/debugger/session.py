"""Runs inside gdb: each line of the file in $SESSION is a command; what it printed or how it failed
goes to $RESULTS as JSON."""
import json
import os

import gdb

results = []
with open(os.environ["SESSION"], encoding="utf-8") as session:
    for command in session.read().splitlines():
        try:
            results.append({"output": gdb.execute(command, to_string=True)})
        except gdb.error as problem:
            results.append({"error": str(problem)})
with open(os.environ["RESULTS"], "w", encoding="utf-8", errors="surrogateescape") as file:
    json.dump(results, file)
