"""Runs inside gdb, on a live process: damages what is there, one word after the other."""
import os
import random
import struct

import gdb

VALUES = (0, 1, 2, 7, 0x13, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF, 100000)


def words(address, size):
    return [address + offset for offset in range(0, size, 4)]


def pointers(memory, addresses):
    """What the words lead to, as far as there is memory."""
    found = []
    for address in addresses:
        target = struct.unpack("<I", memory.read_memory(address, 4))[0]
        try:
            memory.read_memory(target, 96)
            found.append(target)
        except gdb.MemoryError:
            pass
    return found


def damage(start, size, rounds, commands):
    memory = gdb.selected_inferior()
    generator = random.Random(7)
    places = words(start, size)
    for _ in range(3):
        for target in pointers(memory, places):
            if len(places) < 3000:
                places += [place for place in words(target, 96) if place not in places]
    whole = refused = 0
    for _ in range(rounds):
        place = generator.choice(places)
        before = bytes(memory.read_memory(place, 4))
        value = generator.choice(VALUES + (generator.choice(places), generator.getrandbits(32)))
        try:
            memory.write_memory(place, struct.pack("<I", value))
        except gdb.MemoryError:
            continue
        for command in commands:
            try:
                gdb.execute(command, to_string=True)
                whole += 1
            except gdb.error as problem:
                # A mistake of the extension's own is called an error in Python.
                if "Error occurred in Python" in str(problem) or "Traceback" in str(problem):
                    raise AssertionError("0x%x in 0x%x: %s" % (value, place, problem))
                refused += 1
        memory.write_memory(place, before)
    print("%d whole, %d refused" % (whole, refused))


class Records(gdb.Command):
    def __init__(self):
        super().__init__("damage-records", gdb.COMMAND_DATA)

    def invoke(self, argument, from_tty):
        root = int(trees["good"], 16)  # noqa: F821, the session before this read them
        image = os.environ["RESULTS"] + ".image"
        damage(root, 292, 150, ["bkoq tree %d" % root, "bkoq image %d %s" % (root, image)])
        if os.path.exists(image):
            os.unlink(image)


class Objects(gdb.Command):
    def __init__(self):
        super().__init__("damage-objects", gdb.COMMAND_DATA)

    def invoke(self, argument, from_tty):
        case = "cases._M_impl._M_start[%s]" % argument
        job = int(gdb.parse_and_eval(case + ".job"))
        record = int(gdb.parse_and_eval(case + ".current"))
        damage(job, 280, 80, ["bkoq job %d" % job, "print *(BKQJob *)%d" % job])
        damage(record, 292, 20, ["print *(BKQJDATATRANSFER *)%d" % record])


Records()
Objects()
