#!/usr/bin/env python3
"""The example reader and the kit take the same images, and find as much in them: good ones, and
thousands that were changed here and given the right checksum again, so that every rule counts.

    hostile_images_test.py IMAGE_CHECK READ_IMAGE_PY
"""

import collections
import glob
import importlib.util
import os
import random
import struct
import subprocess
import sys
import tempfile
import zlib

ROUNDS = 400


def sealed(image):
    """With the size and the checksum that belong to it."""
    if len(image) < 32:
        return bytes(image)
    image = bytearray(image)
    image[28:32] = zlib.crc32(image[:28] + bytes(4) + image[32:]).to_bytes(4, "little")
    return bytes(image)


def with_size(image):
    image = bytearray(image)
    image[16:20] = len(image).to_bytes(4, "little")
    return sealed(image)


def hostile(data, chance):
    """Images made of a good one, each in a way of its own."""
    words = range(32, len(data) - 3, 4)
    offsets = [at for at in words if 32 <= int.from_bytes(data[at:at + 4], "little") < len(data)
               and data[at] % 4 == 0]

    def put(at, value):
        return sealed(data[:at] + (value & 0xFFFFFFFF).to_bytes(4, "little") + data[at + 4:])

    value_at = lambda at: int.from_bytes(data[at:at + 4], "little")
    at = chance.choice(offsets or list(words))
    yield put(at, 0)
    yield put(at, value_at(at) + chance.choice([-8, -4, -1, 1, 2, 4, 8]))
    yield put(at, chance.choice([1, 4, 31, 32, len(data) - 4, len(data), len(data) + 4, 0xFFFFFFFC]))
    at = chance.choice(words)
    yield put(at, chance.choice([0, 1, 2, 3, 7, 255, 0x7FFFFFFF, 0xFFFFFFFF, value_at(at) + 1]))
    at = chance.randrange(32, len(data))
    yield sealed(data[:at] + bytes([chance.choice([0, 1, 65, 255])]) + data[at + 1:])
    yield put(36, chance.choice([0, 1, 2, 3, 5, 7, 8, 9, 10, 11, 14, 20, 21, 29, 99]))
    yield put(12, chance.choice([0, 1, 2, 3]))
    yield put(24, value_at(24) + chance.choice([-1, 0, 1]))
    cut = chance.randrange(0, len(data))
    yield with_size(data[:cut]) if cut >= 32 else data[:cut]
    cut -= cut % 4
    yield with_size(data[:cut]) if cut >= 32 else data[:cut]
    yield with_size(data + bytes(chance.choice([1, 4, 8])))
    at = chance.choice(words)
    yield with_size(data[:at] + bytes(4) + data[at:])
    yield data[:at] + bytes([data[at] ^ 1 << chance.randrange(8)]) + data[at + 1:]


def main():
    check, reader_file = sys.argv[1:]
    spec = importlib.util.spec_from_file_location("read_image", reader_file)
    reader = importlib.util.module_from_spec(spec)
    spec.loader.exec_module(reader)

    def judged(image):
        try:
            return str(len(list(reader.Image(image).job())))
        except ValueError:
            return "-"

    chance = random.Random(4)
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run([check, folder], check=True)
        good = []
        for name in sorted(glob.glob(os.path.join(folder, "*.image"))):
            with open(name, "rb") as file:
                good.append(file.read())
        images = list(good)
        for _ in range(ROUNDS):
            images += hostile(chance.choice(good), chance)
        everything = os.path.join(folder, "all")
        with open(everything, "wb") as file:
            for image in images:
                file.write(struct.pack("<I", len(image)) + image)
        kit = subprocess.run([check, "--judge", everything], check=True, stdout=subprocess.PIPE,
                             text=True).stdout.split()
    assert len(kit) == len(images), (len(kit), len(images))
    for image, verdict in zip(images, kit):
        found = judged(image)
        if found != verdict:
            with open("hostile.image", "wb") as file:
                file.write(image)
            sys.exit(f"the kit says {verdict}, the reader {found}: see hostile.image")
    refused = collections.Counter(verdict == "-" for verdict in kit)
    print(f"{len(images)} images, {refused[True]} refused, {refused[False]} taken by both")
    assert refused[True] > len(images) // 2 and refused[False] > len(images) // 20, refused


if __name__ == "__main__":
    main()
