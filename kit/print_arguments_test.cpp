#include <gtest/gtest.h>

#include <cstdio>

#include "kit/test_print.h"

namespace bkoq::test {
namespace {

TEST(Print, SaysWhenThereIsNoSuchRecord) {
  const CurrentTree current = currentJob(1);
  const PreviousTree previous = previousJob(1);
  std::string text;
  BkoqPrintOptions options{};
  for (const char* name : {"BKNODE", "BKNODE_OLD", "BKNOD", ""}) {
    options.onlyRecord = name;
    EXPECT_EQ(bkoqPrint(current.get(), BKOQ_LAYOUT_CURRENT, &options, appendToString, &text),
              BKOQ_NOT_FOUND)
        << name;
  }
  options.onlyRecord = "BKDTAPEX";
  EXPECT_EQ(bkoqPrint(previous.get(), BKOQ_LAYOUT_PREVIOUS, &options, appendToString, &text),
            BKOQ_NOT_FOUND);
  EXPECT_EQ(text, "");
}

// A sink that takes so many calls and refuses the next.
struct Refusing {
  int left;
  int calls;
};
int refuse(void* user, const char*, std::size_t) {
  auto* sink = static_cast<Refusing*>(user);
  ++sink->calls;
  return sink->left-- > 0 ? 0 : 1;
}
TEST(Sink, EndsAnOperationByFailing) {
  const CurrentTree job = currentJob(20);
  give<BKNODE>(job->ulNumSourceNodes, job->pSourceNodes, 200);
  const std::pair<BkoqFormat, int> rows[] = {{BKOQ_FORMAT_TEXT, 0},
                                             {BKOQ_FORMAT_TEXT, 2},
                                             {BKOQ_FORMAT_JSON, 0},
                                             {BKOQ_FORMAT_JSON, 2},
                                             {BKOQ_FORMAT_ANNOTATED, 0}};
  for (const auto& row : rows) {
    BkoqPrintOptions options{};
    options.format = row.first;
    Refusing sink{row.second, 0};
    EXPECT_EQ(bkoqPrint(job.get(), BKOQ_LAYOUT_CURRENT, &options, refuse, &sink), BKOQ_SINK_FAILED);
    EXPECT_EQ(sink.calls, row.second + 1);
  }
}

TEST(Sink, CanBeAFile) {
  const CurrentTree job = currentJob(1);
  std::FILE* file = std::tmpfile();
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(
      bkoqPrintField(job.get(), BKOQ_LAYOUT_CURRENT, "usJobType", nullptr, bkoqFileSink, file),
      BKOQ_OK);
  std::rewind(file);
  char line[8] = "";
  EXPECT_STREQ(std::fgets(line, sizeof line, file), "1\n");
  std::fclose(file);

  std::FILE* full = std::fopen("/dev/full", "w");
  if (full == nullptr) GTEST_SKIP() << "the system has no /dev/full";
  std::setvbuf(full, nullptr, _IONBF, 0);
  EXPECT_EQ(bkoqPrint(job.get(), BKOQ_LAYOUT_CURRENT, nullptr, bkoqFileSink, full),
            BKOQ_SINK_FAILED);
  std::fclose(full);
}

TEST(Print, RefusesBadArguments) {
  const CurrentTree job = currentJob(1);
  const auto layout = static_cast<BkoqLayout>(2);
  const auto current = BKOQ_LAYOUT_CURRENT;
  std::string text;
  BkoqPrintOptions markdown{};
  markdown.format = BKOQ_FORMAT_MARKDOWN;
  BkoqPrintOptions annotated{};
  annotated.format = BKOQ_FORMAT_ANNOTATED;
  const auto sink = appendToString;
  EXPECT_EQ(bkoqPrint(nullptr, current, nullptr, sink, &text), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqPrint(job.get(), layout, nullptr, sink, &text), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqPrint(job.get(), current, nullptr, nullptr, &text), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqPrint(job.get(), current, &markdown, sink, &text), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqPrintField(nullptr, current, "", nullptr, sink, &text), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqPrintField(job.get(), layout, "", nullptr, sink, &text), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqPrintField(job.get(), current, nullptr, nullptr, sink, &text), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqPrintField(job.get(), current, "", nullptr, nullptr, &text), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqPrintField(job.get(), current, "", &annotated, sink, &text), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqPrintAt(nullptr, current, 1, 0, nullptr, sink, &text), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqPrintAt(job.get(), layout, 1, 0, nullptr, sink, &text), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqPrintAt(job.get(), current, 1, 0, nullptr, nullptr, &text), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqPrintAt(job.get(), current, 1, 0, &annotated, sink, &text), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(text, "");
}

}  // namespace
}  // namespace bkoq::test
