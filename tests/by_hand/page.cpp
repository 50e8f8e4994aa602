#include "tests/by_hand/page.h"

#include <gtest/gtest.h>

#include <cctype>
#include <sstream>
#include <string>

#include "tests/support/block_size.h"
#include "tests/support/rows.h"

namespace bkoq::test {
namespace {

constexpr std::size_t kPointer = 4;

// The bytes that a part of a line spells: hexadecimal pairs, each with *COUNT or without, and texts
// in quotes. False for anything else.
bool spell(std::istringstream& words, std::string& bytes) {
  while (words >> std::ws && !words.eof()) {
    if (words.peek() == '"') {
      std::string text;
      words.get();
      std::getline(words, text, '"');
      bytes += text;
      continue;
    }
    std::string word;
    words >> word;
    std::size_t count = 1;
    if (word.size() > 3 && word[2] == '*') {
      count = std::stoul(word.substr(3));
    } else if (word.size() != 2) {
      return false;
    }
    if (!std::isxdigit(static_cast<unsigned char>(word[0])) ||
        !std::isxdigit(static_cast<unsigned char>(word[1]))) {
      return false;
    }
    bytes.append(count, static_cast<char>(std::stoi(word.substr(0, 2), nullptr, 16)));
  }
  return true;
}

std::string hexadecimal(const void* at, std::size_t count) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) {
    const auto byte = static_cast<const unsigned char*>(at)[i];
    text += "0123456789abcdef"[byte >> 4];
    text += "0123456789abcdef"[byte & 15];
    text += ' ';
  }
  return text;
}

void expectBlock(const char* block, std::istringstream& words, const std::string& line) {
  ASSERT_NE(block, nullptr) << line;
  std::string bytes;
  const std::streampos start = words.tellg();
  std::string word;
  if (words >> word && word == "block") return;
  words.clear();
  words.seekg(start);
  ASSERT_TRUE(spell(words, bytes)) << "not a line of a page: " << line;
  expectBlockSize(block, bytes.size());
  EXPECT_EQ(hexadecimal(block, bytes.size()), hexadecimal(bytes.data(), bytes.size())) << line;
}

}  // namespace

void expectPage(const void* record, std::size_t size, const char* page) {
  ASSERT_NE(record, nullptr);
  const auto* bytesOfRecord = static_cast<const char*>(record);
  std::size_t at = 0;
  std::istringstream lines(page);
  for (std::string line; std::getline(lines, line);) {
    std::istringstream words(line.substr(0, line.find('|')));
    std::size_t offset = 0;
    if (!(words >> std::dec >> offset)) continue;  // an empty line, or the reason goes on
    ASSERT_EQ(offset, at) << "the offset of this line of the page: " << line;
    words >> std::ws;
    const std::streampos start = words.tellg();
    std::string word;
    words >> word;
    if (word == "null" || word == "->") {
      ASSERT_LE(at + kPointer, size) << line;
      const char* pointer = pointerAt(record, at);
      at += kPointer;
      if (word == "null") {
        EXPECT_EQ(pointer, nullptr) << line;
      } else {
        expectBlock(pointer, words, line);
      }
      continue;
    }
    words.clear();
    words.seekg(start);
    std::string bytes;
    ASSERT_TRUE(spell(words, bytes) && !bytes.empty()) << "not a line of a page: " << line;
    ASSERT_LE(at + bytes.size(), size) << line;
    EXPECT_EQ(hexadecimal(bytesOfRecord + at, bytes.size()),
              hexadecimal(bytes.data(), bytes.size()))
        << line;
    at += bytes.size();
  }
  ASSERT_EQ(at, size) << "the page ends before the record does";
}

}  // namespace bkoq::test
