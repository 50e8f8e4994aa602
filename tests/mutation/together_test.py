#!/usr/bin/env python3
"""Each mutant that is compiled together with others does what it would do alone: of a small source
both are built, run and compared."""

import pathlib
import subprocess
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "scripts"))

from mutation.blame import blamed  # noqa: E402
from mutation.mutants import all_mutants_of  # noqa: E402
from mutation.together import HEADER, Source  # noqa: E402

SOURCE = r"""#include <array>
#include <cstdio>
#include <cstring>

namespace {

constexpr unsigned int kCount = 3;
constexpr const char* kName = "name";
constexpr const char* kLines = R"(a "b", 1
2)";
static_assert(kCount == 3, "for the compiler");

struct Row {
  const char* name;
  int value;
  constexpr Row times(int factor) const { return {name, value * factor}; }
};

template <class... Each>
constexpr auto rowsOf(Each... row) {
  return std::array<Row, sizeof...(Each)>{{row...}};
}

constexpr auto rows() {
  return rowsOf(Row{"one", 1},
                Row{"two", 2}.times(3));
}
constexpr auto kRows = rows();
constexpr Row kMore[] = {{"three", 3}, {"four", 4}};

class Sum {
 public:
  Sum() : values_{1, 2, 4}, isDone_(false) {}
  explicit Sum(int start) : start_(start + 1) { isDone_ = start > 0; }

  int get(int factor = 2) const {
    int sum = start_;
    for (unsigned int i = 0; i < kCount; ++i) {
      sum += values_[i] * factor;
    }
    return isDone_ && sum > 0 ? -sum : sum;
  }

 private:
  int values_[kCount] = {};
  int start_ = 7;
  bool isDone_ = true;
};

auto adder(int by) {
  return [by](int value) { return value + by; };
}

void print(const Row& row) {
  if (row.name == nullptr) return;
  std::printf("%s %d%c", row.name, row.value, '\n');
}

}  // namespace

int main() {
  for (const Row& row : kRows) print(row);
  for (const Row& row : kMore) print(row);
  std::printf("%s %s %d %d %d\n", kName, kLines, Sum().get(), Sum(5).get(3), adder(1)(2));
  int limit = 0;
  while (limit < 5) {
    ++limit;
    if (limit == 4) break;
  }
  return limit;
}
"""


def outcome(program):
    """What a program gives, or why it is ended; the sanitizers see what is read beyond an array."""
    try:
        done = subprocess.run([program], capture_output=True, timeout=3)
    except subprocess.TimeoutExpired:
        return "endless"
    if done.returncode not in range(0, 32):
        return "ended"
    return done.stdout, done.returncode


def compile_(path, program, more=()):
    return subprocess.run(["clang++", "-std=c++17", "-w", "-ferror-limit=0", "-fsanitize=address,undefined",
                           "-fno-sanitize-recover=all", *more, path, "-o", program],
                          capture_output=True, text=True)


def main():
    with tempfile.TemporaryDirectory() as folder:
        folder = pathlib.Path(folder)
        name = pathlib.Path("sample.cpp")
        found = list(all_mutants_of(name, SOURCE))
        for number, mutant in enumerate(found):
            mutant.number = number + 1
        (folder / "mutation.h").write_text(HEADER)
        source, not_built = Source(name, SOURCE, found), []
        for _ in range(20):
            owners = {name: source.write(folder, {})}
            done = compile_(folder / name, folder / "together", ["-include", folder / "mutation.h"])
            if done.returncode == 0:
                break
            about = blamed(done.stderr, folder, owners)
            assert about, done.stderr
            for kind, subject, _ in about:
                not_built += [mutant for mutant in [source.drop(kind, subject)] if mutant]
        assert done.returncode == 0, done.stderr
        together = [mutant for several in (*source.bodies.values(), *source.values.values())
                    for mutant in several]
        print(f"{len(found)} mutants: {len(together)} together, {len(source.apart)} apart, "
              f"{len(not_built)} do not compile")
        assert len(together) + len(source.apart) + len(not_built) == len(found)
        wrong = 0
        for mutant in [None, *together, *not_built]:
            (folder / "alone.cpp").write_text(mutant.applied() if mutant else SOURCE)
            is_built = compile_(folder / "alone.cpp", folder / "alone").returncode == 0
            if mutant in not_built:
                expected, got = "not built", outcome(folder / "alone") if is_built else "not built"
            else:
                (folder / "mutant").write_text(str(mutant.number if mutant else 0))
                got = outcome(folder / "together")
                expected = outcome(folder / "alone") if is_built else got
            if got != expected:
                print(f"{mutant}: {got} and not {expected}")
                wrong += 1
        return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
