#!/usr/bin/env python3
"""Writes the reference of job files, in Markdown, from the schema that `bkoq schema` prints."""

import json
import sys


def kind(value):
    if "$ref" in value:
        return "`" + value["$ref"].split("/")[-1] + "`"
    if "enum" in value:
        return "one of " + ", ".join("`%s`" % json.dumps(item) for item in value["enum"])
    if "const" in value:
        return "`%s`" % json.dumps(value["const"])
    for several in ("anyOf", "oneOf"):
        if several in value:
            return ", or ".join(kind(item) for item in value[several])
    if value.get("type") == "array":
        return "array of " + kind(value.get("items", {}))
    text = value.get("type", "any value")
    if isinstance(text, list):
        text = " or ".join(text)
    if "minimum" in value and "maximum" in value:
        text += " from %s to %s" % (value["minimum"], value["maximum"])
    return text


def table(properties, required):
    print("| attribute | value | meaning |\n|---|---|---|")
    for name, value in properties.items():
        said = value.get("description", "").replace("|", "\\|").replace("\n", " ")
        if name in required:
            said = (said + " Must be there.").strip()
        print("| `%s` | %s | %s |" % (name, kind(value).replace("|", "\\|"), said))
    print()


def main():
    schema = json.load(sys.stdin)
    print("# Job files {#job_files}\n\nWritten from the schema that `bkoq schema` prints.\n")
    print(schema.get("description", "") + "\n")
    objects = []
    for name, value in schema["$defs"].items():
        objects.append((name, value))
        # A family of classes: what a file may hold depends on the kind.
        for case in value.get("allOf", []):
            if "then" in case:
                kinds = case["if"]["properties"].values()
                title = ", ".join(kind(item).strip("`") for item in kinds)
                objects.append(("%s of kind %s" % (name, title), case["then"]))
    found = 0
    for name, value in objects:
        if "properties" in value:
            print("## %s\n\n%s\n" % (name, value.get("description", "")))
            table(value["properties"], value.get("required", []))
            found += len(value["properties"])
    return 0 if found else "the schema has no attributes"


if __name__ == "__main__":
    sys.exit(main())
