#!/usr/bin/env python3
"""Hostile images by the structure of good ones: those of every example job and of every kind of job, in both
layouts, changed and repaired by image_mutants. The kit reads each in all its ways and writes again what it
takes; the example reader, and the one of the Kaitai Struct description if asked for, agree with it.

    image_mutants_test.py FOLDER_OF_PROGRAMS BKOQ PROJECT_FOLDER [--seed N] [--rounds N] [--count N]
        [--every N] [--kaitai WORK]

Each round makes COUNT images, of which the readers see one of EVERY. WORK is a folder with the packages of
tests/languages/kaitai/.
"""

import argparse
import glob
import importlib.util
import os
import struct
import subprocess
import sys
import tempfile


def good_images(options, folder):
    subprocess.run([os.path.join(options.programs, "image_check"), folder], check=True)
    for job in glob.glob(os.path.join(options.project, "examples", "*.json")):
        for layout in ("current", "previous"):
            image = os.path.join(folder, f"{os.path.basename(job)}-{layout}.image")
            subprocess.run([options.bkoq, "flatten", job, "--layout", layout, "-o", image], stderr=subprocess.DEVNULL,
                           check=False)  # the library has no conversion of some kinds of job
    images = sorted(glob.glob(os.path.join(folder, "*.image")))
    assert len(images) > 30, images
    return images


def kept_images(path):
    """(image, number of lines or None, what was wrong) of each."""
    with open(path, "rb") as file:
        while header := file.read(12):
            size, lines, problem = struct.unpack("<IiI", header)
            yield file.read(size), None if lines < 0 else lines, problem


def agree(reader, kept):
    """The example reader takes the same images, and finds as much in them."""
    count = taken = 0
    for image, lines, problem in kept_images(kept):
        try:
            found = len(list(reader.Image(image).job()))
        except ValueError:
            found = None
        if found != lines:
            with open("hostile.image", "wb") as file:
                file.write(image)
            sys.exit(f"the kit finds {lines} lines (problem {problem}), the reader {found}: see hostile.image")
        count += 1
        taken += 1 if lines is not None else 0
    assert count > 0 and taken > count // 10, (count, taken)
    print(f"the example reader agrees about {count}, of which {taken} are taken")


def main():
    parser = argparse.ArgumentParser()
    for name in ("programs", "bkoq", "project"):
        parser.add_argument(name)
    for name, value in (("--seed", 1), ("--rounds", 1), ("--count", 4000), ("--every", 1)):
        parser.add_argument(name, type=int, default=value)
    parser.add_argument("--kaitai")
    options = parser.parse_args()
    spec = importlib.util.spec_from_file_location("read_image", os.path.join(options.project, "examples/read_image.py"))
    reader = importlib.util.module_from_spec(spec)
    sys.dont_write_bytecode = True
    spec.loader.exec_module(reader)
    with tempfile.TemporaryDirectory() as folder:
        kept = os.path.join(folder, "kept")
        program = os.path.join(options.programs, "image_mutants")
        good = good_images(options, folder)
        for each in range(options.rounds):
            subprocess.run([program, "--seed", str(options.seed + each * 10**7), "--count", str(options.count),
                            "--keep", kept, str(options.every), *good], check=True)
            agree(reader, kept)
            if options.kaitai:
                script = os.path.join(options.project, "tests/languages/kaitai/mutants_test.js")
                subprocess.run(["node", script, options.bkoq, kept], check=True,
                               env=dict(os.environ, NODE_PATH=os.path.join(options.kaitai, "node_modules")))


if __name__ == "__main__":
    main()
