"""Texts for people. They come from anywhere, so what is not plainly visible is written as escapes,
exactly as the kit does it."""
import bisect

from . import tables

_UNPRINTABLE = tables.RECORDS["unprintable"]


def is_visible(code):
    i = bisect.bisect_right(_UNPRINTABLE, [code, 0x110000]) - 1
    return i < 0 or code > _UNPRINTABLE[i][1]


def characters(data):
    """Each character as (code, bytes); the code is None for a byte that begins no valid one."""
    at = 0
    while at < len(data):
        first = data[at]
        size = 1 if first < 0x80 else 2 if first < 0xE0 else 3 if first < 0xF0 else 4
        raw = data[at:at + size]
        try:
            yield ord(raw.decode("utf-8")), raw
            at += size
        except (UnicodeDecodeError, TypeError):
            yield None, data[at:at + 1]
            at += 1


def printable(data):
    if data.isascii() and data.decode("ascii").isprintable() and not set(data) & set(b'"\\'):
        return data.decode("ascii")
    text = []
    for code, raw in characters(data):
        if code in (0x22, 0x5C):
            text.append("\\" + chr(code))
        elif code == 0x0A:
            text.append("\\n")
        elif code == 0x09:
            text.append("\\t")
        elif code is not None and is_visible(code):
            text.append(chr(code))
        else:
            text.extend("\\x%02x" % byte for byte in raw)
    return "".join(text)


def quoted(data):
    return '"' + printable(data) + '"'


def json_quoted(data):
    """For valid UTF-8 only."""
    text = []
    for character in data.decode("utf-8"):
        code = ord(character)
        if character in '"\\':
            text.append("\\" + character)
        elif is_visible(code):
            text.append(character)
        elif code < 0x10000:
            text.append("\\u%04x" % code)
        else:
            above = code - 0x10000
            text.append("\\u%04x\\u%04x" % (0xD800 + (above >> 10), 0xDC00 + (above & 0x3FF)))
    return '"' + "".join(text) + '"'


def is_utf8(data):
    try:
        data.decode("utf-8")
        return True
    except UnicodeDecodeError:
        return False


def hex_number(value, width):
    return "0x%08x" % value if width == 4 else "0x%04x" % value


def counted(count, singular, plural):
    return "%d %s" % (count, singular if count == 1 else plural)


def clock_date(seconds, separator=" "):
    """Seconds since 1970-01-01 00:00 on the same clock."""
    days, second = divmod(seconds, 86400)
    # Years begin on March 1, so that the day of a leap year is the last; eras have 400 years.
    era, day = divmod(days + 719468, 146097)
    year = (day - day // 1460 + day // 36524 - day // 146096) // 365
    day -= 365 * year + year // 4 - year // 100
    month = (5 * day + 2) // 153
    day += 1 - (153 * month + 2) // 5
    month += 3 if month < 10 else -9
    year += era * 400 + (1 if month <= 2 else 0)
    return "%04d-%02d-%02d%s%02d:%02d:%02d" % (year, month, day, separator, second // 3600,
                                               second // 60 % 60, second % 60)
