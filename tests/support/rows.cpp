#include "tests/support/rows.h"

#include <gtest/gtest.h>

#include <cstring>

namespace bkoq::test {

Row number(std::size_t offset, std::size_t width, std::uint32_t value) {
  return {Row::kNumber, offset, width, value, {}};
}

Row text(std::size_t offset, const std::string& value) { return {Row::kText, offset, 4, 0, value}; }

Row bytes(std::size_t offset, const std::string& value) {
  return {Row::kBytes, offset, 4, 0, value};
}

Row block(std::size_t offset) { return {Row::kBlock, offset, 4, 0, {}}; }

std::uint32_t numberAt(const void* record, std::size_t offset, std::size_t width) {
  const auto* at = static_cast<const unsigned char*>(record) + offset;
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < width; ++i) value |= std::uint32_t{at[i]} << (8 * i);
  return value;
}

const char* pointerAt(const void* record, std::size_t offset) {
  const char* pointer = nullptr;
  std::memcpy(&pointer, static_cast<const char*>(record) + offset, sizeof pointer);
  return pointer;
}

void expectRows(const std::string& what, const void* record, std::size_t size,
                const std::vector<Row>& rows) {
  ASSERT_NE(record, nullptr) << what;
  std::vector<bool> named(size, false);
  for (const Row& row : rows) {
    const std::string where = what + " at " + std::to_string(row.offset);
    ASSERT_LE(row.offset + row.width, size) << where;
    for (std::size_t i = 0; i < row.width; ++i) named[row.offset + i] = true;
    if (row.kind == Row::kNumber) {
      EXPECT_EQ(numberAt(record, row.offset, row.width), row.number) << where;
      continue;
    }
    const char* pointer = pointerAt(record, row.offset);
    if (pointer == nullptr) {
      ADD_FAILURE() << where << ": null";
    } else if (row.kind == Row::kText) {
      EXPECT_STREQ(pointer, row.text.c_str()) << where;
    } else if (row.kind == Row::kBytes) {
      EXPECT_EQ(std::string(pointer, row.text.size()), row.text) << where;
    }
  }
  for (std::size_t i = 0; i < size; ++i) {
    if (named[i]) continue;
    EXPECT_EQ(static_cast<const unsigned char*>(record)[i], 0) << what << " at " << i;
  }
}

}  // namespace bkoq::test
