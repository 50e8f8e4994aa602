// What a flattening keeps of the times that it has converted. What it gives a job's filters is
// tested there: tests/conversion/job_times_test.cpp.

#include "transfer/record_time.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <time.h>
#include <unistd.h>

#include <cstdio>
#include <string>

#include "tests/support/time_zone.h"

namespace bkoq::test {
namespace {

// A zone of one offset in a file of its own, which the C library reads when TZ comes to name it.
class ZoneFile {
 public:
  ZoneFile() {
    char name[] = "/tmp/bkoq_zone_XXXXXX";
    const int file = mkstemp(name);
    if (file >= 0) close(file);
    path_ = name;
  }
  ~ZoneFile() { std::remove(path_.c_str()); }
  ZoneFile(const ZoneFile&) = delete;
  ZoneFile& operator=(const ZoneFile&) = delete;

  // Makes it the zone in force.
  void setHoursEast(unsigned char hours) {
    write(hours);
    for (const std::string& zone : {std::string(kUtc), ":" + path_}) {
      setenv("TZ", zone.c_str(), 1);
      tzset();
    }
  }

 private:
  void write(unsigned char hours) {
    const unsigned int offset = hours * 3600u;
    std::string content = "TZif";
    content.append(16, '\0');
    // Six counts: of the types of time one, of the bytes of names four.
    for (const char count : {'\0', '\0', '\0', '\0', '\1', '\4'}) {
      content += std::string(3, '\0') + count;
    }
    content += {0, 0, static_cast<char>(offset >> 8), static_cast<char>(offset), 0, 0};
    content += std::string("ZON") + '\0';
    const std::string fresh = path_ + ".new";
    std::FILE* file = std::fopen(fresh.c_str(), "wb");
    ASSERT_NE(file, nullptr);
    std::fwrite(content.data(), 1, content.size(), file);
    std::fclose(file);
    ASSERT_EQ(std::rename(fresh.c_str(), path_.c_str()), 0);
  }

  std::string path_;
};

class RecordTime : public testing::Test {
 protected:
  RecordTime() { file.setHoursEast(1); }

  const TimeZone restored{kUtc};
  ZoneFile file;
  const RWTime january = storedTime(kJanuary);
  const RWTime july = storedTime(kJuly);
};

TEST_F(RecordTime, IsThatOfTheZoneInForceAtEachCall) {
  EXPECT_EQ(bkoq::recordTime(january), kJanuary + 3600);
  file.setHoursEast(2);
  EXPECT_EQ(bkoq::recordTime(january), kJanuary + 7200);
}

TEST_F(RecordTime, OfAFlatteningIsKept) {
  {
    const bkoq::KeptTimes kept;
    EXPECT_EQ(bkoq::recordTime(january), kJanuary + 3600);
    file.setHoursEast(2);
    EXPECT_EQ(bkoq::recordTime(july), kJuly + 7200) << "a time of which nothing is kept";
    EXPECT_EQ(bkoq::recordTime(january), kJanuary + 3600);
  }
  EXPECT_EQ(bkoq::recordTime(january), kJanuary + 7200);
  file.setHoursEast(3);
  const bkoq::KeptTimes next;
  EXPECT_EQ(bkoq::recordTime(january), kJanuary + 10800) << "nothing is kept for the next one";
}

TEST_F(RecordTime, IsForgottenWhenTheZoneIsAnother) {
  const bkoq::KeptTimes kept;
  EXPECT_EQ(bkoq::recordTime(january), kJanuary + 3600);
  setenv("TZ", kFiveHoursWest, 1);
  EXPECT_EQ(bkoq::recordTime(january), kJanuary - 18000);
  file.setHoursEast(2);
  EXPECT_EQ(bkoq::recordTime(january), kJanuary + 7200);
}

TEST_F(RecordTime, IsKeptForTheLastEightTimes) {
  const bkoq::KeptTimes kept;
  for (int i = 0; i < 9; ++i) {
    EXPECT_EQ(bkoq::recordTime(storedTime(kJanuary + i)), kJanuary + i + 3600);
  }
  file.setHoursEast(2);
  EXPECT_EQ(bkoq::recordTime(storedTime(kJanuary + 1)), kJanuary + 1 + 3600);
  EXPECT_EQ(bkoq::recordTime(january), kJanuary + 7200) << "the first made room for the ninth";
}

// A free place says nothing: what it holds is no time, though a time may be as small as that.
TEST_F(RecordTime, OfTheFirstSecondIsNotTakenFromAFreePlace) {
  const RWTime first(0ul);
  const int32_t alone = bkoq::recordTime(first);
  EXPECT_EQ(alone, -1 + 3600) << "no calendar time in 32 bits is as early: mktime() answers -1";
  const bkoq::KeptTimes kept;
  EXPECT_EQ(bkoq::recordTime(january), kJanuary + 3600);
  EXPECT_EQ(bkoq::recordTime(first), alone);
  EXPECT_EQ(bkoq::recordTime(first), alone);
}

TEST_F(RecordTime, OfAZoneWithALongNameIsNotKept) {
  const bkoq::KeptTimes kept;
  const std::string name(80, 'A');
  setenv("TZ", ("<" + name + ">5").c_str(), 1);
  EXPECT_EQ(bkoq::recordTime(january), kJanuary - 18000);
  setenv("TZ", ("<" + name + ">-9").c_str(), 1);
  EXPECT_EQ(bkoq::recordTime(january), kJanuary + 32400);
}

}  // namespace
}  // namespace bkoq::test
