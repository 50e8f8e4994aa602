#ifndef BKOQ_TESTS_RANDOM_TREE_H_
#define BKOQ_TESTS_RANDOM_TREE_H_

// An expected record tree: every block as bytes, and where in it pointers to further blocks stand.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace bkoq::test {

class ExpectedTree;

// A record in an expected block.
class Record {
 public:
  Record() = default;
  Record(ExpectedTree* tree, std::uint32_t block, std::uint32_t start)
      : tree_(tree), block_(block), start_(start) {}

  void set8(std::uint32_t offset, std::uint32_t value);
  void set16(std::uint32_t offset, std::uint32_t value);
  void set32(std::uint32_t offset, std::uint32_t value);
  std::uint32_t get32(std::uint32_t offset) const;

  // A pointer to a block of these bytes.
  void bytes(std::uint32_t offset, const char* field, const std::string& bytes);
  // A pointer to the text and its NUL; null for the empty text.
  void text(std::uint32_t offset, const char* field, const std::string& text);
  // The same with one NUL more.
  void lastText(std::uint32_t offset, const char* field, const std::string& text);
  bool isNull(std::uint32_t offset) const;
  // Puts further bytes at the end of what the pointer at `offset` points to.
  void append(std::uint32_t offset, const std::string& bytes, std::size_t cut);

  // One zeroed element more in the array at `offset`, counted at `countOffset`.
  Record grow(std::uint32_t countOffset, std::uint32_t offset, const char* field,
              std::uint32_t size);
  // A zeroed record of its own.
  Record single(std::uint32_t offset, const char* field, std::uint32_t size);
  // The first element of the array at `offset`.
  Record target(std::uint32_t offset) const;
  Record element(std::uint32_t offset, std::uint32_t index, std::uint32_t size) const;

 private:
  friend class ExpectedTree;
  ExpectedTree* tree_ = nullptr;
  std::uint32_t block_ = 0;
  std::uint32_t start_ = 0;
};

struct Mismatch {
  std::string path;
  std::uint32_t offset = 0;  // in the block
  std::string expected;
  std::string got;
};

class ExpectedTree {
 public:
  // Makes the tree one zeroed record.
  Record start(std::uint32_t size);

  // Compares with the blocks in memory, byte by byte. On success `found` holds their addresses.
  bool equals(const void* root, Mismatch& mismatch);

  std::size_t blocks() const { return used_; }
  // Frees what the last equals() found, all of it or all but the root.
  void freeFound(bool withRoot);

 private:
  friend class Record;
  struct Link {
    std::uint32_t offset;
    std::uint32_t block;
    const char* field;
    std::uint32_t elementSize;  // 0: no array
  };
  struct Block {
    std::string bytes;
    std::vector<Link> links;
  };

  std::uint32_t add();
  Link* linkAt(std::uint32_t block, std::uint32_t offset);
  bool equals(std::uint32_t index, const unsigned char* real, Mismatch& mismatch);
  std::string path() const;

  std::vector<Block> blocks_;
  std::uint32_t used_ = 0;
  std::vector<std::string> way_;  // only of a mismatch
  std::vector<const void*> found_;
  std::vector<const void*> sorted_;
};

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_RANDOM_TREE_H_
