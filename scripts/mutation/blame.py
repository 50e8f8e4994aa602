"""What in a tree of mutants a compiler complains of."""

import bisect
import collections
import pathlib
import re

ERROR = re.compile(r"^(\S[^:\n]*):(\d+):\d+: (fatal error|error|warning|note): (.*)$", re.MULTILINE)
DECLARED = re.compile(r"(\w+)(?:\[[^\]]*\])* =(?: |$)")
NO_CONSTANT = re.compile(r"constant expression|constexpr|constant size|variable length array")


def blamed(output, tree, owners):
    """What the compiler's errors are about, as far as it is ours."""
    found, group = [], []
    needs_constant = False
    texts = {path: (tree / path).read_text().splitlines() for path in owners}
    declared = collections.defaultdict(list)
    for path, lines_of_path in texts.items():
        for number, text in enumerate(lines_of_path, 1):
            for match in DECLARED.finditer(text):
                declared[match.group(1)].append((path, number))

    def owners_at(path, line):
        pieces, found = owners[path], []
        at = bisect.bisect_right(pieces, line, key=lambda piece: piece[0])
        while at > 0 and pieces[at - 1][1] >= line:
            at -= 1
            found.append(pieces[at][2])
        return [(*owner, path) for owner in reversed(found) if owner is not None]

    def values_behind(path, line):
        """What is declared on a line may have its values on the next ones."""
        end = next((number for number in range(line, len(texts[path]))
                    if texts[path][number - 1].rstrip().endswith(";")), line)
        return [(*owner, path) for first, last, owner in owners[path]
                if owner is not None and owner[0] == "value" and line <= last and first <= end]

    def constants_named_at(path, line):
        """What is ours of the constants that a line names."""
        for word in re.findall(r"\b[A-Za-z_]\w+", texts[path][line - 1]):
            for place in declared.get(word, []):
                if place != (path, line):
                    constants = [owner for owner in owners_at(*place) if owner[0] == "constant"]
                    yield from constants or values_behind(*place)

    def close():
        lines = []
        for path, line in group:
            relative = pathlib.Path(path)
            if relative.is_absolute() and relative.is_relative_to(tree):
                relative = relative.relative_to(tree)
            if relative in owners:
                lines.append((relative, line))
        about = [owners_at(*line) for line in lines]
        first = next(filter(None, about), [])
        # An end is blamed only where nothing else is.
        best = [owner for owner in first if owner[0] != "end"] or first
        if needs_constant and lines:
            needed = [owner for each in about[1:] for owner in each
                      if owner[0] in ("constant", "value")][:1]
            if needed and needed[0][0] == "value":
                needed += values_behind(*lines[0])
            best = needed or list(constants_named_at(*lines[0])) or best
        for line in lines:
            best = best or values_behind(*line)
        found.extend(owner for owner in best if owner not in found)

    for path, line, kind, message in ERROR.findall(output):
        if kind != "note":
            close()
            group = []
            needs_constant = NO_CONSTANT.search(message)
        if kind != "warning" and (group or kind != "note"):
            group.append((path, int(line)))
    close()
    return found
