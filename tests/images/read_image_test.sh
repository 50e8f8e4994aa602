#!/usr/bin/env bash
# The example reader finds in images what the kit wrote, and refuses damaged ones.
# Usage: read_image_test.sh <image_check> <read_image.py> <image-format.md>
set -euo pipefail

check=$1 reader=$2 page=$3
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
"$check" "$folder"

images=0
for image in "$folder"/*.image; do
  python3 "$reader" "$image" >"$folder/found"
  diff -u "${image%.image}.expected" "$folder/found"
  images=$((images + 1))
done
[ "$images" = 10 ] || { echo "$images images, not 10" >&2; exit 1; }

# The header, the reader and the page begin an image alike.
signature=$(head -c 8 "$folder/verify.image")
grep -qF "b\"$signature\"" "$reader"
grep -qF "| 0 | 8 | \`$signature\`, in ASCII |" "$page"

# Every byte counts: the checksum sees each, the rest of the reader what no checksum can.
python3 - "$reader" "$folder/verify.image" "$folder/damaged" <<'END'
import random, subprocess, sys, zlib

reader, good, damaged = sys.argv[1:]
data = open(good, "rb").read()


def refuses(image, message):
    open(damaged, "wb").write(image)
    run = subprocess.run([sys.executable, reader, damaged], capture_output=True, text=True)
    assert run.returncode == 1, run
    assert run.stderr.startswith("read_image.py: ") and message in run.stderr, run.stderr
    assert run.stderr.count("\n") == 1, run.stderr


def sealed(image):
    crc = zlib.crc32(image[:28] + bytes(4) + image[32:])
    return image[:28] + crc.to_bytes(4, "little") + image[32:]


def changed(at, value):
    return data[:at] + value.to_bytes(4, "little") + data[at + 4:]


refuses(b"", "not an image")
refuses(b"X" + data[1:], "not an image")
refuses(data[:-4], "a bad header")
odd = data + bytes(2)
refuses(sealed(odd[:16] + len(odd).to_bytes(4, "little") + odd[20:]), "a bad header")
for at in random.Random(1).sample(range(32, len(data)), 10):
    refuses(data[:at] + bytes([data[at] ^ 1]) + data[at + 1:], "a bad checksum")
refuses(sealed(changed(32 + 16, 36)), "pSourceNodes: no block")
refuses(sealed(changed(32 + 12, 0xFFFFFFFF)), "pSourceNodes: no block")
refuses(sealed(changed(32 + 4, 99)), "kind of the job is")
refuses(sealed(changed(24, 3)), "a wrong number of blocks")
text = data.rindex(b"tape\0")
refuses(sealed(data[:text + 5] + b"x" + data[text + 6:]), "padding that is not zero")
refuses(sealed(data[:text + 4] + b"text"), "a text without an end")
END
