// Writes the page that describes the records, docs/records.md, to the standard output.
#include <bkoq/kit.h>

#include <cstdio>

#include "kit/record_table.h"

namespace {

bool print(const char* text) { return std::fputs(text, stdout) >= 0; }

bool records(BkoqLayout layout) {
  return bkoqPrintRecords(nullptr, layout, BKOQ_FORMAT_MARKDOWN, bkoqFileSink, stdout) == BKOQ_OK;
}

constexpr const char* kStart =
    R"(<!-- Written by tests/pages/records_page.cpp from the table of the kit. Do not edit. -->

# The transfer records

What the library hands to its client: 32-bit, little-endian, pointers of 4 bytes, no padding beyond
what is listed. Every block is from `malloc()` and belongs to the client. A null pointer stands for
an empty text, an empty array, nothing attached.

How the kinds are read:

- **number**, **count**, **flags**: unsigned. A count tells the elements of the array, or the texts of
  the list, that follows it; an array is null after a failed conversion even where the count is not 0.
- **time**: signed, seconds since 1970-01-01 00:00 as the local clock counts them. **client time**:
  signed, seconds as the client gave them.
- **byte list**: one number a byte.
- **text**: a pointer to a block with one text and its NUL. **two texts**: a block with two, each with
  its NUL; either may be empty. **text, or two texts**: two in a UNIX machine, which is a node with
  `usNodeType` 3 that holds disks and is no destination of a restore; one in every other node.
- **text list**: a block with as many texts as its count says, back to back, each with its NUL, and
  nothing after the last.
- **array of**, **pointer to**: a block with records; **embedded**: a record inside this one.
- **reserved**: always zero. **opaque**: a filter whose kind is not known, of which nothing can be said.
- **secret**: a password or key, wholly or in part.

What a node's `pMedia` holds depends on the kind of the job (`usJobType`) and on the array in which
the node stands:

| kind of job | | source nodes hold | destination nodes hold |
|---|---|---|---|
)";

constexpr const char* kFilters = R"(
A filter is read by its `usFilterType`, and one of time by its `usTimeRange` as well; the meaning of a
field says which filters have it. A filter of another kind, and one of time with another range, has
nothing but the bytes that every filter has.

# Current layout

)";

const char* contentOf(const bkoq::kit::NodeRole& nodes) {
  switch (nodes.media) {
    case bkoq::kit::Media::kDisks:
      return "disks";
    case bkoq::kit::Media::kTapes:
      return "tapes";
    case bkoq::kit::Media::kUnknown:
      break;
  }
  return "there are none";
}

bool kindsOfJobs() {
  for (const auto* kind = bkoq::kit::jobKinds(); kind->name != nullptr; ++kind) {
    if (std::printf("| %u | %s | %s | %s |\n", static_cast<unsigned int>(kind->code), kind->name,
                    contentOf(kind->sources), contentOf(kind->destinations)) < 0) {
      return false;
    }
  }
  return true;
}

}  // namespace

int main() {
  const bool isPrinted =
      print(kStart) && kindsOfJobs() && print(kFilters) && records(BKOQ_LAYOUT_CURRENT) &&
      print("\n# Previous layout\n\n") && records(BKOQ_LAYOUT_PREVIOUS) &&
      print("\n# What differs between the layouts\n\n") &&
      bkoqPrintLayoutDifferences(nullptr, BKOQ_FORMAT_MARKDOWN, bkoqFileSink, stdout) == BKOQ_OK;
  return isPrinted && std::fflush(stdout) == 0 ? 0 : 1;
}
