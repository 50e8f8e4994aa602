// How the reference of attributes is laid out, and what stands for an object that is not written.

#include "tools/reference.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>

namespace bkoq::tool {
namespace {

std::string textOf(const char* object, unsigned int width) {
  std::string unknown;
  std::string text = attributesText({object}, width, unknown);
  EXPECT_EQ(unknown, "");
  return text;
}

void expectHolds(const std::string& text, const std::string& part) {
  EXPECT_NE(text.find(part), std::string::npos) << part << "\nis not in\n" << text;
}

TEST(Reference, ALineIsFilledUpToTheWidth) {
  const std::string line = "\n      names of the only files wanted; giving any sets the options to";
  const auto width = static_cast<unsigned int>(line.size() - 1 + 2);
  expectHolds(textOf("disk item", width), line + " 0\n");
  expectHolds(textOf("disk item", width - 1), line + "\n      0\n");
}

// No empty line comes before it.
TEST(Reference, AWordThatIsTooLongHasALineOfItsOwn) {
  expectHolds(textOf("time span", 1),
              "time span: a number with a kind (BKQTime)\n"
              "  value\n"
              "      number,\n      0\n      to\n      4294967295;\n      default\n      0\n"
              "      how\n      many\n"
              "      in\n      no\n      record\n"
              "  type\n");
}

TEST(Reference, TheWordsOfANumberAreListedForPrograms) {
  std::string unknown;
  const auto document = nlohmann::ordered_json::parse(attributesJson({"file"}, unknown));
  EXPECT_EQ(document["objects"][0]["attributes"][0].dump(),
            R"({"key":"inclExcl","type":"number","least":0,"most":65535,)"
            R"("words":["include","exclude"],"required":false,"default":0,)"
            R"("meaning":"whether what it selects is taken",)"
            R"("fields":{"current":["BKFILTER_FILE.usInclExcl"],)"
            R"("previous":["BKFILTER_FILE_OLD.usInclExcl"]}})");
}

TEST(Reference, AnObjectHasWhatIsRequiredOnce) {
  const struct {
    const ObjectClass& own;
    const char* members;
    const char* text;
  } rows[] = {
      {disks().classes.front(), "", "{}"},
      {*jobs().find("scan"), R"("jobID": 1)", R"({"kind": "scan", "jobID": 1})"},
      {*jobs().find("job"), "", R"({"kind": "job", "jobName": "nightly"})"},
      {*jobs().find("job"), R"("jobID": 1, "jobName": "weekly")",
       R"({"kind": "job", "jobID": 1, "jobName": "weekly"})"},
      {*jobs().find("job"), R"("host": "jobName")",
       R"({"kind": "job", "jobName": "nightly", "host": "jobName"})"},
      {*jobs().find("compare"), R"("jobName": "")",
       R"({"kind": "compare", "destination": {"kind": "unix", "nodeName": "unix1"}, "jobName": ""})"},
  };
  for (const auto& row : rows) EXPECT_EQ(objectText(row.own, row.members), row.text);
}

TEST(Reference, ASampleIsValidForItsAttribute) {
  const struct {
    const ObjectClass& own;
    const char* key;
    const char* sample;
  } rows[] = {
      {*jobs().find("job"), "jobName", R"("nightly")"},
      {*jobs().find("compare"), "destination", R"({"kind": "unix", "nodeName": "unix1"})"},
      {*jobs().find("compare"), "sourceNodes", R"([{"nodeName": "machine"}])"},
      {*machines().find("mac"), "disks", "[{}]"},
  };
  for (const auto& row : rows) {
    const Attribute* attribute = row.own.find(row.key);
    ASSERT_NE(attribute, nullptr) << row.key;
    EXPECT_EQ(sampleOf(*attribute), row.sample) << row.key;
  }
}

}  // namespace
}  // namespace bkoq::tool
