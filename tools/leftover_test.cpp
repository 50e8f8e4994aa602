// What of an image is in no block.

#include "tools/leftover.h"

#include <bkoq/records.h>
#include <gtest/gtest.h>

#include <cstring>

namespace bkoq::tool {
namespace {

// The header, a job and the text of its owner, which ends at byte 333 of an image; a field holds
// where its text lies.
constexpr std::size_t kJob = 32;
constexpr std::size_t kText = kJob + sizeof(BKQJDATATRANSFER);
constexpr std::size_t kEnd = kText + sizeof "operator";

class Image {
 public:
  explicit Image(const std::string& behind) : bytes_(kEnd, '\0') {
    std::memcpy(bytes_.data() + kText, "operator", sizeof "operator");
    bytes_ += behind;
    auto& job = *reinterpret_cast<BKQJDATATRANSFER*>(bytes_.data() + kJob);
    job.usJobType = 14;
    job.pszOwner = bytes_.data() + kText;
  }
  Image(const Image&) = delete;
  Image& operator=(const Image&) = delete;

  std::vector<ByteRange> rest() const {
    return leftovers(bytes_.data() + kJob, BKOQ_LAYOUT_CURRENT, bytes_);
  }
  const std::string& bytes() const { return bytes_; }

 private:
  std::string bytes_;
};

std::string rangesOf(const std::string& behind) {
  const Image image(behind);
  std::string text;
  for (const ByteRange& range : image.rest()) {
    text += std::to_string(range.begin) + "-" + std::to_string(range.end) + " ";
  }
  return text;
}

TEST(Leftover, IsWhatIsInNoBlock) {
  static_assert(kEnd == 333);
  using Bytes = std::string;
  EXPECT_EQ(rangesOf(""), "");
  EXPECT_EQ(rangesOf("x"), "333-334 ");
  // A block ends on a multiple of four, with zeros.
  EXPECT_EQ(rangesOf(Bytes(3, '\0')), "");
  EXPECT_EQ(rangesOf(Bytes(4, '\0')), "336-337 ");
  EXPECT_EQ(rangesOf(Bytes(11, '\0')), "336-344 ");
  EXPECT_EQ(rangesOf(Bytes("\0x\0", 3)), "334-336 ");
  EXPECT_EQ(rangesOf(Bytes("\0\0x", 3)), "335-336 ");
  EXPECT_EQ(rangesOf(Bytes("\0\0\0x\0\0\0\0", 8)), "336-341 ");
}

TEST(Leftover, IsBetweenBlocksToo) {
  const Image apart(std::string("\0\0\0abcdefgh", 11) + std::string("end\0", 4));
  auto& job = *const_cast<BKQJDATATRANSFER*>(
      reinterpret_cast<const BKQJDATATRANSFER*>(apart.bytes().data() + kJob));
  job.pszComments = const_cast<char*>(apart.bytes().data()) + 344;
  const std::vector<ByteRange> rest = apart.rest();
  ASSERT_EQ(rest.size(), 1u);
  EXPECT_EQ(rest[0].begin, 336u);
  EXPECT_EQ(rest[0].end, 344u);
}

int append(void* text, const char* piece, std::size_t size) {
  static_cast<std::string*>(text)->append(piece, size);
  return 0;
}

std::string printed(const std::vector<ByteRange>& ranges, const std::string& image,
                    bool showSecrets = true) {
  std::string text;
  EXPECT_EQ(printLeftovers(ranges, image, showSecrets, append, &text), BKOQ_OK);
  return text;
}

TEST(Leftover, IsPrintedInLinesOfSixteenBytes) {
  const std::string image =
      "\x1F !~\x7F\xFF"
      "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
  EXPECT_EQ(printed({}, image), "");
  EXPECT_EQ(printed({{1, 2}}, image),
            "\nin no block: 1 byte\n"
            "      1  20                                                \n");
  EXPECT_EQ(printed({{0, 16}}, image),
            "\nin no block: 16 bytes\n"
            "      0  1f 20 21 7e 7f ff 30 31 32 33 34 35 36 37 38 39  . !~..0123456789\n");
  EXPECT_EQ(printed({{0, 6}, {8, 25}}, image),
            "\nin no block: 23 bytes\n"
            "      0  1f 20 21 7e 7f ff                                . !~..\n"
            "      8  32 33 34 35 36 37 38 39 41 42 43 44 45 46 47 48  23456789ABCDEFGH\n"
            "     24  49                                               I\n");
  EXPECT_EQ(
      printed({{1, 2}}, image, false),
      "\nin no block: more bytes; --show-secrets prints them, since nothing says what they are\n");
  EXPECT_EQ(printed({}, image, false), "");
}

// A sink that refuses one of the pieces it is given, and takes no more after it.
struct Refusing {
  int left;
  int calls = 0;
};
int refuse(void* user, const char*, std::size_t) {
  auto& sink = *static_cast<Refusing*>(user);
  ++sink.calls;
  return sink.left-- > 0 ? 0 : 1;
}

TEST(Leftover, EndsWhereTheSinkDoes) {
  const std::string image(40, 'x');
  for (const int taken : {0, 1, 2}) {
    Refusing sink{taken};
    EXPECT_EQ(printLeftovers({{0, 32}}, image, true, refuse, &sink), BKOQ_SINK_FAILED);
    EXPECT_EQ(sink.calls, taken + 1);
  }
  Refusing sink{0};
  EXPECT_EQ(printLeftovers({{0, 32}}, image, false, refuse, &sink), BKOQ_SINK_FAILED);
}

}  // namespace
}  // namespace bkoq::tool
