#include <gtest/gtest.h>

#include <algorithm>

#include "kit/test_print.h"

namespace bkoq::test {
namespace {

TEST(Print, MasksPasswordsAndKeysUnlessAskedFor) {
  const CurrentTree job = currentJob(20);
  auto& node = *give<BKNODE>(job->ulNumSourceNodes, job->pSourceNodes, 1);
  node.pszPassword = text("SECRET");
  auto* disks = give<BKDDISK>(node.ulMediaCount, node.pMedia, 5);
  disks[0].pszPassword = text("SECRET");
  disks[0].pszEncryptionKey = text("SECRET");
  disks[0].pszDiskPW2 = texts({"ops", "SECRET"});
  disks[1].pszDiskPW2 = texts({"backup:SECRET", ""});
  disks[2].pszDiskPW2 = texts({"", "SECRET"});
  disks[3].pszDiskPW2 = texts({"sa", ""});
  disks[4].pszDiskPW2 = texts({"", ""});
  auto& tapes = *give<BKNODE>(job->ulNumDestNodes, job->pDestNodes, 1);
  auto& tape = *give<BKDTAPE>(tapes.ulMediaCount, tapes.pMedia, 1);
  tape.pszSessionPW = text("SECRET");
  tape.pTapeX = zeroed<BKDTAPEX>();
  tape.pTapeX->pszDBPW = text("SECRET");
  job->stFax.pszUserPW = text("SECRET");
  job->stEMail.pszUserPW = text("SECRET");
  job->stPrintQueue.pszUserPW = text("SECRET");

  BkoqPrintOptions options{};
  options.onlyRecord = "BKDDISK";
  options.hideZero = 1;
  EXPECT_EQ(printed(job, options), expected(R"(
BKDDISK pSourceNodes[0].pMedia[0]  #4+0
    4  pszPassword       #5  ********
   36  pszDiskPW2        #6  "ops", ********
   44  pszEncryptionKey  #7  ********
BKDDISK pSourceNodes[0].pMedia[1]  #4+52
   36  pszDiskPW2        #8  "backup:********", ""
BKDDISK pSourceNodes[0].pMedia[2]  #4+104
   36  pszDiskPW2        #9  "", ********
BKDDISK pSourceNodes[0].pMedia[3]  #4+156
   36  pszDiskPW2        #10  "sa", ""
BKDDISK pSourceNodes[0].pMedia[4]  #4+208
   36  pszDiskPW2        #11  "", ""
)"));
  options.onlyRecord = nullptr;
  const auto secretsIn = [&] {
    const std::string text = printed(job, options);
    std::size_t count = 0;
    for (std::size_t at = 0; (at = text.find("SECRET", at)) != std::string::npos; ++at) ++count;
    return count;
  };
  for (const BkoqFormat format : {BKOQ_FORMAT_TEXT, BKOQ_FORMAT_JSON, BKOQ_FORMAT_ANNOTATED}) {
    options.format = format;
    options.showSecrets = 0;
    EXPECT_EQ(secretsIn(), 0u);
    EXPECT_EQ(printed(job, options).find("53 45 43"), std::string::npos);
    options.showSecrets = 1;
    // Bytes are annotated eight a line, which splits "backup:SECRET" in two.
    EXPECT_EQ(secretsIn(), format == BKOQ_FORMAT_ANNOTATED ? 10u : 11u);
  }
}

// A password may hold the colon that joins it to the user; all of it is hidden. In every form it
// shows that something is, also where only the first of the two texts has a secret.
TEST(Print, MasksEverythingAfterTheFirstColonOfCredentials) {
  const CurrentTree job = currentJob(20);
  auto& node = *give<BKNODE>(job->ulNumSourceNodes, job->pSourceNodes, 1);
  auto* disks = give<BKDDISK>(node.ulMediaCount, node.pMedia, 6);
  disks[0].pszDiskPW2 = texts({"u:SEC:RET", ""});
  disks[1].pszDiskPW2 = texts({":SECRET", ""});
  disks[2].pszDiskPW2 = texts({"u:", "S:E"});
  disks[3].pszDiskPW2 = texts({"u", ""});
  disks[4].pszDiskPW2 = texts({"u\xff:SECRET", ""});  // no UTF-8
  disks[5].pszDiskPW2 = texts({"\u00FC\":SECRET", ""});
  const auto field = [&](unsigned int disk, BkoqFormat format) {
    BkoqPrintOptions options{};
    options.format = format;
    options.onlyRecord = "BKDDISK";
    const std::string all = printed(job, options);
    std::size_t at = 0;
    for (unsigned int i = 0; i <= disk; ++i) at = all.find("pszDiskPW2", at + 1);
    return all.substr(at, all.find('\n', at) - at);
  };
  EXPECT_EQ(field(0, BKOQ_FORMAT_TEXT), "pszDiskPW2        #4  \"u:********\", \"\"");
  EXPECT_EQ(field(1, BKOQ_FORMAT_TEXT), "pszDiskPW2        #5  \":********\", \"\"");
  EXPECT_EQ(field(2, BKOQ_FORMAT_TEXT), "pszDiskPW2        #6  \"u:********\", ********");
  EXPECT_EQ(field(3, BKOQ_FORMAT_TEXT), "pszDiskPW2        #7  \"u\", \"\"");
  EXPECT_EQ(field(4, BKOQ_FORMAT_TEXT), "pszDiskPW2        #8  \"u\\xff:********\", \"\"");
  EXPECT_EQ(field(5, BKOQ_FORMAT_TEXT), "pszDiskPW2        #9  \"\u00FC\\\":********\", \"\"");
  const std::string start =
      "pszDiskPW2\": {\"offset\": 36, \"width\": 4, \"kind\": \"two texts\", \"block\": ";
  const auto json = [&](unsigned int disk) {
    const std::string text = field(disk, BKOQ_FORMAT_JSON);
    EXPECT_EQ(text.substr(0, start.size()), start);
    return text.substr(start.size());
  };
  EXPECT_EQ(json(0), "4, \"value\": [\"u:********\", \"\"], \"masked\": true},");
  EXPECT_EQ(json(1), "5, \"value\": [\":********\", \"\"], \"masked\": true},");
  EXPECT_EQ(json(2), "6, \"value\": [\"u:********\", \"********\"], \"masked\": true},");
  EXPECT_EQ(json(3), "7, \"size\": 3, \"value\": [\"u\", \"\"]},");
  EXPECT_EQ(
      json(4),
      "8, \"value\": [{\"hex\": \"75 ff 3a\", \"rest\": \"********\"}, \"\"], \"masked\": true},");
  EXPECT_EQ(json(5), "9, \"value\": [\"\u00FC\\\":********\", \"\"], \"masked\": true},");
}

TEST(Print, LetsNothingOfATextReachTheTerminalUnseen) {
  struct Case {
    const char* text;
    const char* text_;
    const char* json;
  };
  const Case cases[] = {
      {"", "\"\"", "\"\""},
      {"a\"b\\c", "\"a\\\"b\\\\c\"", "\"a\\\"b\\\\c\""},
      {"a\nb\tc\x1b[2J\x7f", "\"a\\nb\\tc\\x1b[2J\\x7f\"",
       "\"a\\u000ab\\u0009c\\u001b[2J\\u007f\""},
      {"Z\xc3\xbcrich \xe2\x82\xac", "\"Z\xc3\xbcrich \xe2\x82\xac\"",
       "\"Z\xc3\xbcrich \xe2\x82\xac\""},
      {"\xf0\x9f\x98\x80", "\"\xf0\x9f\x98\x80\"", "\"\xf0\x9f\x98\x80\""},
      // A control of the upper half, an override of the direction, a tag.
      {"\xc2\x9b", "\"\\xc2\\x9b\"", "\"\\u009b\""},
      // NOLINTNEXTLINE(misc-misleading-bidirectional): that is what it is about
      {"\xe2\x80\xae", "\"\\xe2\\x80\\xae\"", "\"\\u202e\""},
      {"\xf3\xa0\x81\x81", "\"\\xf3\\xa0\\x81\\x81\"", "\"\\udb40\\udc41\""},
      // No UTF-8: a lone byte, an overlong form, a surrogate, too large, cut off.
      {"caf\xe9", "\"caf\\xe9\"", "{\"hex\": \"63 61 66 e9\"}"},
      {"\xc0\xaf", "\"\\xc0\\xaf\"", "{\"hex\": \"c0 af\"}"},
      {"\xe0\x80\xaf", "\"\\xe0\\x80\\xaf\"", "{\"hex\": \"e0 80 af\"}"},
      {"\xed\xa0\x80", "\"\\xed\\xa0\\x80\"", "{\"hex\": \"ed a0 80\"}"},
      {"\xf4\x90\x80\x80", "\"\\xf4\\x90\\x80\\x80\"", "{\"hex\": \"f4 90 80 80\"}"},
      {"\xe2\x82", "\"\\xe2\\x82\"", "{\"hex\": \"e2 82\"}"},
  };
  for (const Case& each : cases) {
    const CurrentTree job = currentJob(1);
    job->pszOwner = text(each.text);
    std::string value;
    EXPECT_EQ(
        bkoqPrintField(job.get(), BKOQ_LAYOUT_CURRENT, "pszOwner", nullptr, appendToString, &value),
        BKOQ_OK);
    EXPECT_EQ(value, std::string(each.text_) + "\n");
    BkoqPrintOptions options{};
    options.format = BKOQ_FORMAT_JSON;
    EXPECT_NE(printed(job, options).find(std::string("\"value\": ") + each.json + "}"),
              std::string::npos)
        << each.text_;
  }
}

// Trees that differ in nothing but how long their secrets are look the same in every form.
TEST(Print, DoesNotTellHowLongASecretIs) {
  const auto withSecrets = [](const std::string& secret) {
    CurrentTree job = currentBackup();
    const auto set = [&](char*& field, const std::string& content) {
      std::free(field);
      field = text(content.c_str());
    };
    set(job->stFax.pszUserPW, secret);
    set(job->stEMail.pszUserPW, secret);
    set(job->stPrintQueue.pszUserPW, secret);
    set(job->pSourceNodes[0].pszPassword, secret);
    auto& disk = *static_cast<BKDDISK*>(job->pSourceNodes[0].pMedia);
    set(disk.pszPassword, secret);
    set(disk.pszEncryptionKey, secret);
    std::free(disk.pszDiskPW2);
    disk.pszDiskPW2 = texts({("ops:" + secret).c_str(), secret.c_str()});
    auto& tape = *static_cast<BKDTAPE*>(job->pDestNodes[0].pMedia);
    set(tape.pszSessionPW, secret);
    set(tape.pTapeX->pszDBPW, secret);
    return job;
  };
  const auto everything = [](const CurrentTree& job) {
    std::string all;
    for (const BkoqFormat format :
         {BKOQ_FORMAT_TEXT, BKOQ_FORMAT_JSON, BKOQ_FORMAT_PLAIN_JSON, BKOQ_FORMAT_ANNOTATED}) {
      BkoqPrintOptions options{};
      options.format = format;
      all += printed(job, options);
      options.width = 40;
      all += printed(job, options);
    }
    std::string image;
    bkoqWriteImage(job.get(), BKOQ_LAYOUT_CURRENT, appendToString, &image, nullptr);
    BkoqLayout layout;
    void* root = nullptr;
    EXPECT_EQ(bkoqUseImage(&image[0], image.size(), &layout, &root, nullptr), BKOQ_OK);
    BkoqImagePlaces places{};
    places.image = image.data();
    for (const char* only : {static_cast<const char*>(nullptr), "BKDTAPE", "BKNODE"}) {
      BkoqPrintOptions options{};
      options.format = BKOQ_FORMAT_ANNOTATED;
      options.onlyRecord = only;
      EXPECT_EQ(bkoqPrintImage(root, layout, nullptr, &options, &places, appendToString, &all),
                BKOQ_OK);
    }
    for (std::uint32_t block = 1; block < 34; ++block) {
      for (const std::uint32_t offset : {0U, 3U, 5U}) {
        bkoqPrintAt(job.get(), BKOQ_LAYOUT_CURRENT, block, offset, nullptr, appendToString, &all);
      }
    }
    return all;
  };
  const std::string shorter = everything(withSecrets("pw-1"));
  const std::string longer = everything(withSecrets("pw-2, which is quite a bit longer"));
  EXPECT_EQ(shorter, longer);
  EXPECT_EQ(shorter.find("pw-"), std::string::npos);
  EXPECT_EQ(shorter.find("70 77 2d"), std::string::npos);  // in hex
}

// Output goes out in pieces, so that a long text needs no memory of its own.
TEST(Print, HandsOnALongTextInPieces) {
  CurrentTree job = currentJob(1);
  std::string content(1000000, 'x');
  for (std::size_t i = 0; i < content.size(); i += 7) content[i] = '\x01';
  job->pszComments = text(content.c_str());
  job->pszOwner = text(std::string(300000, 'y').c_str());
  for (const BkoqFormat format :
       {BKOQ_FORMAT_TEXT, BKOQ_FORMAT_JSON, BKOQ_FORMAT_PLAIN_JSON, BKOQ_FORMAT_ANNOTATED}) {
    for (const unsigned int width : {0U, 80U}) {
      struct Seen {
        std::size_t largest = 0;
        std::size_t all = 0;
      } seen;
      const BkoqSink sink = [](void* user, const char*, std::size_t size) {
        auto& seen = *static_cast<Seen*>(user);
        seen.largest = std::max(seen.largest, size);
        seen.all += size;
        return 0;
      };
      BkoqPrintOptions options{};
      options.format = format;
      options.width = width;
      EXPECT_EQ(bkoqPrint(job.get(), BKOQ_LAYOUT_CURRENT, &options, sink, &seen), BKOQ_OK);
      EXPECT_LE(seen.largest, 40000u) << format;
      EXPECT_GT(seen.all, content.size());
    }
  }
}

}  // namespace
}  // namespace bkoq::test
