// What is taken out of a job file: each value that is not what is wanted is refused with one
// problem, and what is made of the others goes with its job.
#include "tools/reader.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tools/moment.h"

namespace bkoq::tool {
namespace {

using Type = Value::Type;

// What `read` takes of a value, as text, or the problem that it notes.
template <class Read>
std::string outcome(Type type, const std::string& text, Read read) {
  const std::string file = "7" + text + "7";  // what stands around a value is no part of it
  const Document document(file);
  Problems problems;
  Kept kept;
  Reader reader(document, problems, kept);
  std::string taken;
  const bool isTaken = read(reader, Value(type, 1, file.data() + 1, text.size()), taken);
  const std::vector<Problem> noted = problems.sorted();
  EXPECT_EQ(noted.size(), isTaken ? 0U : 1U) << text;
  return noted.empty() ? taken : noted.front().message;
}

std::string numberOf(Type type, const std::string& text, std::int64_t least = INT64_MIN,
                     std::int64_t most = INT64_MAX, const std::vector<Word>* words = nullptr) {
  return outcome(type, text, [&](Reader& reader, const Value& value, std::string& taken) {
    std::int64_t number = 5;
    const bool isTaken = reader.number(value, least, most, words, number);
    taken = std::to_string(number);
    return isTaken;
  });
}

std::string timeOf(const std::string& text) {
  return outcome(Type::kText, text, [](Reader& reader, const Value& value, std::string& taken) {
    unsigned long seconds = 5;
    const bool isTaken = reader.time(value, seconds);
    taken = std::to_string(seconds);
    return isTaken;
  });
}

std::string secondsOf(Type type, const std::string& text) {
  return outcome(type, text, [](Reader& reader, const Value& value, std::string& taken) {
    long seconds = 5;
    const bool isTaken = reader.seconds(value, seconds);
    taken = std::to_string(seconds);
    return isTaken;
  });
}

// "now" means this moment while it lives.
class Moment {
 public:
  explicit Moment(std::int64_t seconds) : before_(commandMoment()) { setCommandMoment(seconds); }
  ~Moment() { setCommandMoment(before_); }
  Moment(const Moment&) = delete;
  Moment& operator=(const Moment&) = delete;

 private:
  std::int64_t before_;
};

constexpr const char* kNoTime =
    "\"soon\" is no time; write it as \"2004-03-01T21:00:00\", with \"Z\" or an offset such as "
    "\"+01:00\" after it unless it is local";

TEST(Reader, TakesWholeNumbers) {
  const struct {
    Type type;
    const char* text;
    const char* result;
  } cases[] = {
      {Type::kNumber, "12", "12"},
      {Type::kNumber, "-12", "-12"},
      {Type::kNumber, "5.0", "5"},
      {Type::kNumber, "-5e2", "-500"},
      {Type::kNumber, "0.5", "0.5 is no whole number"},
      // What no integer can hold is the largest or the smallest.
      {Type::kNumber, "9223372036854775807", "9223372036854775807"},
      {Type::kNumber, "9223372036854775808", "9223372036854775807"},
      {Type::kNumber, "-9223372036854775809", "-9223372036854775808"},
      {Type::kNumber, "1e18", "1000000000000000000"},
      {Type::kNumber, "-1e18", "-1000000000000000000"},
      {Type::kNumber, "1e19", "9223372036854775807"},
      {Type::kNumber, "-1e19", "-9223372036854775808"},
      {Type::kText, "0x1f", "31"},
      {Type::kText, "0xABCDEF", "11259375"},
      {Type::kText, "0x8000000000000000", "9223372036854775807"},
      {Type::kText, "0x", "\"0x\" is no hexadecimal number"},
      {Type::kText, "0xg", "\"0xg\" is no hexadecimal number"},
      {Type::kText, "0xg1", "\"0xg1\" is no hexadecimal number"},
      {Type::kText, "0x1x", "\"0x1x\" is no hexadecimal number"},
      {Type::kText, "12", "a number is expected, or a text such as \"0x1F\", not \"12\""},
  };
  for (const auto& each : cases) EXPECT_EQ(numberOf(each.type, each.text), each.result);
}

TEST(Reader, KeepsNumbersInTheirRangeAndKnowsTheirNames) {
  const std::vector<Word> words = {{"low", 1}, {"high", 9}};
  EXPECT_EQ(numberOf(Type::kNumber, "3", 3, 4), "3");
  EXPECT_EQ(numberOf(Type::kNumber, "4", 3, 4), "4");
  EXPECT_EQ(numberOf(Type::kNumber, "2", 3, 4), "2 is out of range: 3 to 4");
  EXPECT_EQ(numberOf(Type::kText, "0x5", 3, 4), "0x5 is out of range: 3 to 4");
  EXPECT_EQ(numberOf(Type::kText, "high", 0, 9, &words), "9");
  EXPECT_EQ(numberOf(Type::kText, "hihg", 0, 9, &words),
            "\"hihg\" is none of \"low\", \"high\"; did you mean \"high\"?");
}

TEST(Reader, TakesTimesFrom1901AndSecondsFrom1970) {
  const Moment now(1000);
  EXPECT_EQ(timeOf("now"), "2177453800");
  EXPECT_EQ(timeOf("1970-01-01T00:00:01Z"), "2177452801");
  EXPECT_EQ(timeOf("soon"), kNoTime);
  EXPECT_EQ(secondsOf(Type::kText, "now"), "1000");
  EXPECT_EQ(secondsOf(Type::kText, "1970-01-01T00:00:01Z"), "1");
  EXPECT_EQ(secondsOf(Type::kText, "0x10"), "16");
  EXPECT_EQ(secondsOf(Type::kText, "soon"), kNoTime);
  EXPECT_EQ(secondsOf(Type::kNumber, "-3"), "-3");
  EXPECT_EQ(secondsOf(Type::kNumber, "2147483648"),
            "2147483648 is out of range: -2147483648 to 2147483647");
}

TEST(Reader, TakesTextsWithoutNulAndListsOfTheirLength) {
  const auto text = [](Reader& reader, const Value& value, std::string& taken) {
    return reader.text(value, taken);
  };
  EXPECT_EQ(outcome(Type::kText, "ab", text), "ab");
  EXPECT_EQ(outcome(Type::kText, std::string("a\0b", 3), text),
            "a text cannot hold the character \\u0000");
  const Value elements[3];
  const auto list = [&elements](std::size_t length) {
    return outcome(Type::kText, "", [&](Reader& reader, const Value&, std::string&) {
      return reader.list(Value(Type::kList, 1, elements, 3), length);
    });
  };
  EXPECT_EQ(list(0), "");
  EXPECT_EQ(list(3), "");
  EXPECT_EQ(list(2), "a list of 2 is expected, not of 3");
}

// A failure before would be taken for a text that found no memory.
TEST(Reader, BeginsWithoutAnEarlierFailure) {
  const Document document("");
  Problems problems;
  Kept kept;
  errno = ENOMEM;
  const Reader reader(document, problems, kept);
  EXPECT_NO_THROW(requireMemory());
}

struct Part {
  Part(int partNumber, std::vector<int>& list) : number(partNumber), freed(list) {}
  ~Part() { freed.push_back(number); }
  Part(const Part&) = delete;
  Part& operator=(const Part&) = delete;

  int number;
  std::vector<int>& freed;
};

Part* newPart(int number, std::vector<int>& freed) {
  return std::make_unique<Part>(number, freed).release();
}

TEST(KeptParts, AreFreedTheNewestFirst) {
  std::vector<int> freed;
  {
    Kept kept;
    kept.add(newPart(1, freed));
    kept.add(newPart(2, freed));
    Kept other;
    other.add(newPart(3, freed));
    kept = std::move(other);
    EXPECT_EQ(freed, (std::vector<int>{2, 1}));
  }
  EXPECT_EQ(freed, (std::vector<int>{2, 1, 3}));
}

TEST(KeptParts, AreTakenByExperimentsUnlessSomethingInThemChanges) {
  const Document document("");
  const Value value;
  const Value other;
  std::vector<int> freed;
  MadeParts made;
  Changes changes;
  {
    Problems problems;
    Kept kept;
    Reader reader(document, problems, kept);
    reader.setMadeParts(&made);
    Part* part = newPart(1, freed);
    reader.keep(value, part);
    EXPECT_EQ(reader.madeBefore<Part>(value), nullptr);  // it is no experiment

    Reader experiment(document, problems, kept);
    experiment.setMadeParts(&made);
    experiment.setChanges(&changes);
    EXPECT_EQ(experiment.madeBefore<Part>(value), part);
    EXPECT_EQ(experiment.madeBefore<Part>(other), nullptr);
    changes.touched.insert(&value);
    EXPECT_EQ(experiment.madeBefore<Part>(value), nullptr);
    EXPECT_TRUE(freed.empty());
  }
  EXPECT_EQ(freed, std::vector<int>{1});
}

}  // namespace
}  // namespace bkoq::tool
