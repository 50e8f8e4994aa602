#ifndef BKOQ_TESTS_SUPPORT_ROWS_H_
#define BKOQ_TESTS_SUPPORT_ROWS_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace bkoq::test {

// A record is expected as rows: what stands at which byte, in which width. Every byte that no row
// names must be zero, so a test that lists its rows states the whole record.
struct Row {
  enum Kind { kNumber, kText, kBytes, kBlock };
  Kind kind;
  std::size_t offset;
  std::size_t width;
  std::uint32_t number;
  std::string text;
};

// `width` bytes, little-endian.
Row number(std::size_t offset, std::size_t width, std::uint32_t value);
// A pointer to a text.
Row text(std::size_t offset, const std::string& value);
// A pointer to a block that begins with these bytes, NULs included: std::string("a\0b\0", 4).
Row bytes(std::size_t offset, const std::string& value);
// A pointer that is not null; what it points to is expected apart.
Row block(std::size_t offset);

template <std::size_t size>
Row bytes(std::size_t offset, const char (&literal)[size]) {
  return bytes(offset, std::string(literal, size - 1));
}

// Checks `size` bytes at `record` against the rows; differences are test failures that name `what`.
void expectRows(const std::string& what, const void* record, std::size_t size,
                const std::vector<Row>& rows);

// The pointer in the record at `offset`, and what stands there as a number.
const char* pointerAt(const void* record, std::size_t offset);
std::uint32_t numberAt(const void* record, std::size_t offset, std::size_t width);

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_SUPPORT_ROWS_H_
