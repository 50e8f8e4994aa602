#include "tests/random/tree.h"

#include <malloc.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "tests/support/sanitizers.h"

namespace bkoq::test {

namespace {

std::string hex(const unsigned char* bytes, std::size_t size) {
  std::string result;
  char two[4];
  for (std::size_t i = 0; i < size && i < 48; ++i) {
    std::snprintf(two, sizeof two, "%02x ", bytes[i]);
    result += two;
  }
  if (size > 48) result += "...";
  return result;
}

// Whether fewer bytes may be read at `block`: exact with AddressSanitizer, else what malloc() gave.
bool isTooSmall(const void* block, std::size_t size) {
  return malloc_usable_size(const_cast<void*>(block)) < size;
}

bool isTooLarge(const void* block, std::size_t size) {
#ifdef BKOQ_WITH_ASAN
  return malloc_usable_size(const_cast<void*>(block)) != size;
#else
  // A chunk may be one smallest chunk larger than it must be.
  return malloc_usable_size(const_cast<void*>(block)) > std::max<std::size_t>(size, 12) + 32;
#endif
}

}  // namespace

void Record::set8(std::uint32_t offset, std::uint32_t value) {
  tree_->blocks_[block_].bytes[start_ + offset] = static_cast<char>(value & 0xff);
}

void Record::set16(std::uint32_t offset, std::uint32_t value) {
  set8(offset, value);
  set8(offset + 1, value >> 8);
}

void Record::set32(std::uint32_t offset, std::uint32_t value) {
  set16(offset, value);
  set16(offset + 2, value >> 16);
}

std::uint32_t Record::get32(std::uint32_t offset) const {
  std::uint32_t value = 0;
  for (unsigned int i = 4; i-- > 0;) {
    value =
        value << 8 | static_cast<unsigned char>(tree_->blocks_[block_].bytes[start_ + offset + i]);
  }
  return value;
}

void Record::bytes(std::uint32_t offset, const char* field, const std::string& bytes) {
  const std::uint32_t block = tree_->add();
  tree_->blocks_[block].bytes = bytes;
  tree_->blocks_[block_].links.push_back({start_ + offset, block, field, 0});
}

void Record::text(std::uint32_t offset, const char* field, const std::string& text) {
  if (text.empty()) return;
  bytes(offset, field, text);
  append(offset, std::string(1, '\0'), 0);
}

void Record::lastText(std::uint32_t offset, const char* field, const std::string& text) {
  if (text.empty()) return;
  bytes(offset, field, text);
  append(offset, std::string(2, '\0'), 0);
}

bool Record::isNull(std::uint32_t offset) const {
  return tree_->linkAt(block_, start_ + offset) == nullptr;
}

void Record::append(std::uint32_t offset, const std::string& bytes, std::size_t cut) {
  std::string& text = tree_->blocks_[tree_->linkAt(block_, start_ + offset)->block].bytes;
  text.resize(text.size() - cut);
  text += bytes;
}

Record Record::grow(std::uint32_t countOffset, std::uint32_t offset, const char* field,
                    std::uint32_t size) {
  set32(countOffset, get32(countOffset) + 1);
  const ExpectedTree::Link* link = tree_->linkAt(block_, start_ + offset);
  std::uint32_t block;
  if (link != nullptr) {
    block = link->block;
  } else {
    block = tree_->add();
    tree_->blocks_[block_].links.push_back({start_ + offset, block, field, size});
  }
  std::string& bytes = tree_->blocks_[block].bytes;
  bytes.append(size, '\0');
  return Record(tree_, block, static_cast<std::uint32_t>(bytes.size()) - size);
}

Record Record::single(std::uint32_t offset, const char* field, std::uint32_t size) {
  const std::uint32_t block = tree_->add();
  tree_->blocks_[block].bytes.assign(size, '\0');
  tree_->blocks_[block_].links.push_back({start_ + offset, block, field, size});
  return Record(tree_, block, 0);
}

Record Record::target(std::uint32_t offset) const { return element(offset, 0, 0); }

Record Record::element(std::uint32_t offset, std::uint32_t index, std::uint32_t size) const {
  return Record(tree_, tree_->linkAt(block_, start_ + offset)->block, index * size);
}

Record ExpectedTree::start(std::uint32_t size) {
  used_ = 0;
  const std::uint32_t block = add();
  blocks_[block].bytes.assign(size, '\0');
  return Record(this, block, 0);
}

std::uint32_t ExpectedTree::add() {
  if (used_ == blocks_.size()) blocks_.emplace_back();
  blocks_[used_].bytes.clear();
  blocks_[used_].links.clear();
  return used_++;
}

ExpectedTree::Link* ExpectedTree::linkAt(std::uint32_t block, std::uint32_t offset) {
  std::vector<Link>& links = blocks_[block].links;
  for (std::size_t i = links.size(); i-- > 0;) {
    if (links[i].offset == offset) return &links[i];
  }
  return nullptr;
}

bool ExpectedTree::equals(const void* root, Mismatch& mismatch) {
  way_.clear();
  found_.clear();
  if (root == nullptr) {
    mismatch = {"", 0, "a record", "null"};
    return false;
  }
  if (!equals(0, static_cast<const unsigned char*>(root), mismatch)) {
    mismatch.path = path();
    return false;
  }
  sorted_ = found_;
  std::sort(sorted_.begin(), sorted_.end());
  if (std::adjacent_find(sorted_.begin(), sorted_.end()) != sorted_.end()) {
    mismatch = {"", 0, "blocks of their own", "two pointers to one block"};
    return false;
  }
  return true;
}

bool ExpectedTree::equals(std::uint32_t index, const unsigned char* real, Mismatch& mismatch) {
  Block& block = blocks_[index];
  found_.push_back(real);
  const std::size_t size = block.bytes.size();
  const bool tooSmall = isTooSmall(real, size);
  if (tooSmall || isTooLarge(real, size)) {
    mismatch.offset = 0;
    mismatch.expected = std::to_string(size) + " bytes";
    mismatch.got = (tooSmall ? "fewer: " : "more: ") +
                   std::to_string(malloc_usable_size(const_cast<unsigned char*>(real)));
    return false;
  }
  // Pointers cannot be foretold: what stands there is taken over unless it is null.
  for (const Link& link : block.links) {
    std::memcpy(&block.bytes[link.offset], real + link.offset, 4);
  }
  if (std::memcmp(block.bytes.data(), real, size) != 0) {
    const auto* expected = reinterpret_cast<const unsigned char*>(block.bytes.data());
    std::size_t at = 0;
    while (expected[at] == real[at]) ++at;
    mismatch.offset = static_cast<std::uint32_t>(at);
    mismatch.expected = hex(expected + at, size - at);
    mismatch.got = hex(real + at, size - at);
    // Whole words tell more than the byte that differs.
    if (size >= 32 && !block.links.empty()) {
      at -= at % 4;
      mismatch.offset = static_cast<std::uint32_t>(at);
      mismatch.expected = hex(expected + at, std::min<std::size_t>(4, size - at));
      mismatch.got = hex(real + at, std::min<std::size_t>(4, size - at));
    }
    way_.push_back("");
    return false;
  }
  for (std::size_t i = 0; i < block.links.size(); ++i) {
    const Link link = block.links[i];
    const unsigned char* target;
    std::memcpy(&target, real + link.offset, sizeof target);
    const bool matches = target != nullptr && equals(link.block, target, mismatch);
    if (matches) continue;
    if (target == nullptr) {
      mismatch.offset = link.offset;
      const std::string& bytes = blocks_[link.block].bytes;
      mismatch.expected =
          "a block: " + hex(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
      mismatch.got = "null";
    }
    way_.push_back("+" + std::to_string(link.offset) + " " + link.field);
    return false;
  }
  return true;
}

std::string ExpectedTree::path() const {
  std::string result;
  for (std::size_t i = way_.size(); i-- > 0;) {
    if (!way_[i].empty()) result += (result.empty() ? "" : " > ") + way_[i];
  }
  return result;
}

void ExpectedTree::freeFound(bool withRoot) {
  for (std::size_t i = withRoot ? 0 : 1; i < found_.size(); ++i) {
    std::free(const_cast<void*>(found_[i]));
  }
}

}  // namespace bkoq::test
