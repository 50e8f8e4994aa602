"""What the build wrote down of records and objects; nothing of it is listed a second time here."""
import json
import os

with open(os.path.join(os.path.dirname(os.path.abspath(__file__)), "tables.json"),
          encoding="utf-8") as _file:
    _tables = json.load(_file)

RECORDS = _tables["records"]
OBJECTS = _tables["objects"]
LAYOUTS = RECORDS["layouts"]
CLASSES = OBJECTS["classes"]
FAMILIES = OBJECTS["families"]
MASK = RECORDS["mask"]
IMAGE = RECORDS["image"]


def layout_of_record(name):
    """The layout that has a record of that name, or None."""
    for layout, table in LAYOUTS.items():
        if name in table["records"]:
            return layout
    return None
