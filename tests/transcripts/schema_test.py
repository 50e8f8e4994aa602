#!/usr/bin/env python3
"""The JSON Schema that "bkoq schema" prints accepts the example jobs and the starter files, and
refuses what "bkoq check" refuses.

    schema_test.py BKOQ JOB...
"""

import json
import re
import subprocess
import sys

import jsonschema

REFUSED = [
    '[]',
    '{}',
    '{"kind": "tar", "jobName": "x"}',
    '{"kind": "job"}',
    '{"kind": "job", "jobName": 7}',
    '{"kind": "job", "jobName": "x", "onwer": "y"}',
    '{"kind": "job", "jobName": "x", "beforeJobWait": 65536}',
    '{"kind": "job", "jobName": "x", "beforeJobWait": -1}',
    '{"kind": "job", "jobName": "x", "beforeJobWait": 1.5}',
    '{"kind": "job", "jobName": "x", "options": "0xZZ"}',
    '{"kind": "job", "jobName": "x", "snmp": 1}',
    '{"kind": "job", "jobName": "x", "sourceNodes": []}',
    '{"kind": "job", "jobName": "x", "schedule": {"kind": "regular", "execTime": "tomorrow"}}',
    '{"kind": "job", "jobName": "x", "schedule": {"kind": "custom", "repeat": [1, 2, 3]}}',
    '{"kind": "backup", "jobName": "x", "filters": [{"kind": "dir", "inclExcl": "never"}]}',
    '{"kind": "backup", "jobName": "x", "filters": [{"kind": "dir", "time": "2004-03-01"}]}',
    '{"kind": "backup", "jobName": "x", "sourceNodes": [{"kind": "unix"}]}',
    '{"kind": "cruiseBackup", "jobName": "x", "schedule": {"kind": "regular"}}',
    '{"kind": "compare", "jobName": "x"}',
    '{"kind": "job", "jobName": "x", "options": "0x 1"}',
    '{"kind": "job", "jobName": "x", "options": "0x0x10"}',
    '{"kind": "job", "jobName": "x", "options": "0x+1"}',
    '{"kind": "job", "jobName": "x", "options": "0x"}',
    '{"kind": "job", "jobName": "x", "options": "0x100000000"}',
    '{"kind": "job", "jobName": "x", "jobStatus": "0x10000"}',
    '{"kind": "job", "jobName": "x", "onExitCode": "0x80000000"}',
    '{"kind": "job", "jobName": "x", "owner": "a\\u0000b"}',
    '{"kind": "job", "jobName": null}',
    '{"kind": "job", "jobName": "x", "schedule": {"kind": "regular", "execTime": "2004-04-31"}}',
    '{"kind": "job", "jobName": "x", "schedule": {"kind": "regular", "execTime": "2038-01-01"}}',
    '{"kind": "job", "$schema": 7, "jobName": "x"}',
]

ACCEPTED = [
    '{"$schema": "job.schema.json", "kind": "job", "jobName": "x"}',
    '{"kind": "job", "jobName": "x", "beforeJobWait": 1.0, "jobID": 2e3}',
    '{"kind": "job", "jobName": "x", "options": "0x0000FFFFFFFF", "jobStatus": "0x0ffff"}',
    '{"kind": "job", "jobName": "x", "onExitCode": "0x7FFFFFFF"}',
    '{"kind": "job", "jobName": "x", "faxInfo": null, "schedule": null}',
    '{"kind": "job", "jobName": "x", "schedule": {"kind": "regular", "execTime": "now"}}',
]


def without_comments(text):
    return re.sub(r'("(?:[^"\\]|\\.)*")|//[^\n]*', lambda match: match[1] or "", text)


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def main():
    tool, jobs = sys.argv[1], sys.argv[2:]
    schema = json.loads(output(tool, "schema"))
    validator_class = jsonschema.validators.validator_for(schema)
    validator_class.check_schema(schema)
    validator = validator_class(schema)
    failed = False
    accepted = {}
    for job in jobs:
        with open(job, encoding="utf-8") as file:
            accepted[job] = file.read()
    kinds = schema["$defs"]["job"]["properties"]["kind"]["enum"]
    assert len(kinds) == 14, kinds
    for kind in kinds:
        accepted["new " + kind] = output(tool, "new", kind)
        accepted["new --all " + kind] = output(tool, "new", "--all", kind)
    for name, text in accepted.items():
        for error in validator.iter_errors(json.loads(without_comments(text))):
            print(f"{name}: {error.message}")
            failed = True
    for text in REFUSED:
        if validator.is_valid(json.loads(text)):
            print(f"accepted: {text}")
            failed = True
        if subprocess.run([tool, "check", "-"], input=text, text=True, check=False,
                          capture_output=True).returncode != 1:
            print(f"accepted by check: {text}")
            failed = True
    for text in ACCEPTED:
        if not validator.is_valid(json.loads(text)):
            print(f"refused: {text}")
            failed = True
        if subprocess.run([tool, "check", "-"], input=text, text=True, check=False,
                          capture_output=True).returncode != 0:
            print(f"refused by check: {text}")
            failed = True
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
