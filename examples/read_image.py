#!/usr/bin/env python3
"""Prints the fields of a job's image, one a line: path, tab, value as JSON.

Usage: read_image.py IMAGE. Needs nothing but Python 3; docs/image-format.md tells the format.
Passwords are printed as they are. Reserved fields are left out.
"""
import json
import re
import struct
import sys
import zlib

# The fields of each record in order: u2 u4 numbers, i4 a signed time, b8 eight numbers, t a text,
# tt two texts, n a text that is two in a UNIX machine, l a list of texts, *X an array of X, ->X one
# X, =X an X inside; -4 skips reserved bytes; {A|B} is A in the current layout, B in the previous.
# Arrays and lists have as many elements as the field before them says.
RECORDS = {
    "job": (292, "-4 usJobType:u2 -2 usJobStatus:u2 usScriptType:u2 "
            "ulNumSourceNodes:u4 pSourceNodes:*node ulNumDestNodes:u4 pDestNodes:*node pszOwner:t "
            "pszReportFile:t pszComments:t pszBeforeJob:t pszAfterJob:t usBeforeJobWait:u2 -2 "
            "usOnConflict:u2 -2 stSchedule:=schedule -30 stOpenFile:=openfile -16 stFax:=fax "
            "stEMail:=email stPrintQueue:=printq stScheduleExt:=rotation -12 ulOptions:u4 "
            "pszHost:t"),
    "schedule": (18, "lSubmitTime:i4 lExecTime:i4 usRepeat1:u2 usRepeat2:u2 usRepeat3:u2 "
                 "usRepeat4:u2 usSkipWeekDay:u2"),
    "openfile": (12, "ulFActions:u4 ulFMethods:u4 usRetryCount:u2 usRetryInterval:u2"),
    "fax": (24, "pszHostName:t pszUserName:t pszUserPW:t pszFaxNumber:t pszCoverPageFile:t "
            "pszReceiverName:t"),
    "email": (24, "pszHostName:t pszUserName:t pszUserPW:t pszMHSDir:t pszMHSId:t "
              "pszMHSUserName:t"),
    "printq": (16, "pszHostName:t pszUserName:t pszUserPW:t pszQueueName:t"),
    "rotation": (48, "pszSetName:t -4 usCruiseMethod:u2 -2 {-8|abJobTypes:b8} usSaveMonthly:u2 "
                 "usSaveWeekly:u2 usSaveDaily:u2 -14 ulCruiseOptions:u4 usMonths:u2 usCopies:u2"),
    "node": (100, "usNodeType:u2 usNodeOS:u2 pszNodeOSVer:n pszNodeName:n pszNodeAddress:t "
             "pszUserName:t pszPassword:t ulFilterCount:u4 pFilters:*filter usDeviceType:u2 -2 "
             "ulMediaCount:u4 pMedia:*media pszBeforeNode:t pszAfterNode:t usBeforeNodeWait:u2 -2 "
             "ulNodeOptions:u4 -24 {pszNodeDomain:t|-4}"),
    "filter": (32, "usFilterType:u2 usInclExcl:u2"),
    "disk": (52, "pszDiskName:t pszPassword:t ulFilterCount:u4 pFilters:*filter "
             "ulDiskItemCount:u4 pDiskItems:*diskitem usDiskType:u2 -2 ulOptions:u4 -4 "
             "pszDiskPW2:tt -4 pszEncryptionKey:t"),
    "diskitem": (32, "pszPath:t ulFileCount:u4 pFileList:l ulOptions:u4"),
    "tape": (72, "pszDeviceGroup:t pszTapeName:t {usTapeID:u2 -2|ulTapeID:u4} usTapeSeq:u2 "
             "usSessionNumber:u2 ulQFABlockNumber:u4 pszSessionPW:t usNewTapeMethod:u2 "
             "usSpanTapeMethod:u2 usNewTapeTimeout:u2 usSpanTapeTimeout:u2 ulFilterCount:u4 "
             "pFilters:*filter ulTapeItemCount:u4 pTapeItems:*tapeitem usFileSystem:u2 -2 "
             "ulOptions:u4 pszPath:t pszLocation:t {-4 pTapeX:->tapex|lSessionEndTime:i4}"),
    "tapeitem": (32, "ulChunkNum:u4 usChunkOffset:u2 -2 pszFileOrDir:t ulOptions:u4"),
    "tapex": (64, "pszDBUser:t pszDBPW:t lSessionEndTime:i4 -44 ulOptions:u4"),
}
PATTERN = "ulFilterCount:u4 pszFilter:t usFilterLen:u2"
FILTERS = {1: PATTERN, 2: PATTERN, 3: PATTERN, 4: "usTimeAttr:u2 usTimeRange:u2", 5: "ulAttributes:u4"}
RANGES = {0: "lTime:i4", 1: "lTime:i4", 2: "lStartTime:i4 lEndTime:i4",
          3: "ulTimeUnits:u4 -4 usTimeUnitType:u2"}
BACKUPS, RESTORES = {1, 3, 5, 9, 20, 21}, {7, 10}
TAPE_READERS = RESTORES | {8, 11, 14, 29}


def role(job, array):
    """What the nodes of an array hold, and whether they are the destinations of a restore."""
    source = array == "pSourceNodes"
    if job in BACKUPS:
        return {"media": "disk" if source else "tape"}
    if job not in TAPE_READERS or (not source and job in (14, 29)):
        return {}
    return {"media": "tape" if source else "disk", "plain": job in RESTORES and not source}


class Image:
    def __init__(self, data):
        if len(data) < 32 or data[:8] != b"BKQIMAGE":
            raise ValueError("not an image of a job")
        version, layout, size, self.next, self.blocks, crc = struct.unpack_from("<6I", data, 8)
        if version != 1 or layout not in (1, 2) or self.next != 32:
            raise ValueError("a bad header")
        if size != len(data) or size % 4 != 0:
            raise ValueError(f"a bad header: {size} bytes, where there are {len(data)}")
        if crc != zlib.crc32(data[:28] + bytes(4) + data[32:]):
            raise ValueError("a bad checksum")
        self.data, self.previous = data, layout == 2

    def take(self, path, offset, size):
        """A block begins where the one before it ended, rounded up to 4."""
        if offset != self.next or offset + size > len(self.data):
            raise ValueError(f"{path}: no block of {size} bytes at {offset}")
        self.next += size + -size % 4
        if any(self.data[offset + size:self.next]):
            raise ValueError(f"{path}: padding that is not zero after the block at {offset}")
        self.blocks -= 1

    def texts(self, path, offset, count):
        end, texts = offset, []
        for _ in range(count):
            begin, end = end, self.data.find(0, end) + 1
            if end == 0:
                raise ValueError(f"{path}: a text without an end at {begin}")
            texts.append(self.data[begin:end - 1].decode("utf-8", "backslashreplace"))
        self.take(path, offset, end - offset)
        return texts

    def fields(self, name, at):
        text = RECORDS[name][1]
        if name == "filter":  # read by its kind, a time by its range as well
            kind, span = struct.unpack_from("<H4xH", self.data, at)
            text += " " + FILTERS.get(kind, "") + " " + (RANGES.get(span, "") if kind == 4 else "")
        choose = lambda choices: choices[1].split("|")[self.previous]
        return re.sub(r"{(.*?)}", choose, text).split()

    def record(self, name, at, path="", media=None, plain=False):
        count, unix, job = 0, False, None
        for field in self.fields(name, at):
            if field[0] == "-":
                at += int(field[1:])
                continue
            label, kind = field.split(":")
            here = f"{path}.{label}" if path else label
            target = kind.lstrip("*->=")
            if kind[0] == "=":
                yield from self.record(target, at, here)
                at += RECORDS[target][0]
                continue
            width = int(kind[1]) if kind[0] in "uib" else 4
            value = int.from_bytes(self.data[at:at + width], "little", signed=kind[0] == "i")
            if kind[0] in "uib":
                yield here, list(self.data[at:at + width]) if kind[0] == "b" else value
                count = value
                job = value if label == "usJobType" else job
                # Tape nodes carry 3 like UNIX machines, restore destinations the machine's number.
                unix |= label == "usNodeType" and value == 3 and media == "disk" and not plain
            elif value == 0:
                yield here, None
            elif kind in ("t", "tt", "n", "l"):
                number = {"t": 1, "tt": 2, "n": 2 if unix else 1, "l": count}[kind]
                texts = self.texts(here, value, number)
                yield here, texts if kind in ("tt", "l") or number == 2 else texts[0]
            else:
                if target == "media":
                    target = media
                if target is None:
                    raise ValueError(f"{here}: unknown, since the kind of the job is")
                inner = role(job, label) if target == "node" else {}
                number, size = count if kind[0] == "*" else 1, RECORDS[target][0]
                self.take(here, value, number * size)
                for i in range(number):
                    index = f"[{i}]" if kind[0] == "*" else ""
                    yield from self.record(target, value + i * size, here + index, **inner)
            at += width

    def job(self):
        self.take("job", 32, RECORDS["job"][0])
        yield from self.record("job", 32)
        if self.next != len(self.data) or self.blocks != 0:
            raise ValueError("something after the last block, or a wrong number of blocks")


def main():
    if len(sys.argv) != 2:
        sys.exit("usage: read_image.py IMAGE")
    try:
        with open(sys.argv[1], "rb") as file:
            image = Image(file.read())
        for path, value in image.job():
            print(path, json.dumps(value, ensure_ascii=False), sep="\t")
    except (OSError, ValueError) as error:
        sys.exit(f"read_image.py: {sys.argv[1]}: {error}")


if __name__ == "__main__":
    main()
