#include "tools/attribute_cases.h"

namespace bkoq::tool {
namespace {

template <class Schedule>
void describeSchedule(AttributeRows<Schedule>& rows) {
  rows.time("submitTime", &BKQSchedule::getSubmitTime, "2004-03-01T20:00:01")
      .time("execTime", &BKQSchedule::getExecTime, "2004-03-01T21:00:02")
      .text("poolName", &BKQSchedule::getPoolName, "pool")
      .flag("runJobNow", [](BKQSchedule& schedule) { return schedule.runJobNow(); })
      .row(
          "scheduleWindow", R"(["2004-03-01T22:00:03", "2004-03-01T23:00:04"])",
          [](BKQSchedule& schedule) {
            RWCollectableTime start;
            RWCollectableTime end;
            schedule.getScheduleWindow(start, end);
            return list(start, end);
          },
          "2004-03-01T22:00:03, 2004-03-01T23:00:04");
}

void describeCustom(AttributeRows<BKQCustomSchedule>& rows) {
  describeSchedule(rows);
  rows.row(
          "repeat", "[301, 302, 303, 304]",
          [](BKQCustomSchedule& schedule) {
            unsigned short repeats[4] = {};
            schedule.getRepeat(repeats[0], repeats[1], repeats[2], repeats[3]);
            return list(repeats[0], repeats[1], repeats[2], repeats[3]);
          },
          "301, 302, 303, 304")
      .number("skipWeekDayFlag", &BKQCustomSchedule::getSkipWeekDayFlag, 305);
}

template <class Schedule>
void describeRotation(AttributeRows<Schedule>& rows) {
  describeSchedule(rows);
  rows.row(
          "jobMask", R"({"repeats": 401})",
          [](BKQRotationSchedule& schedule) {
            return of(schedule.getJobMask(), &BKQJobMask::getRepeats);
          },
          "401")
      .text("setName", &BKQRotationSchedule::getSetName, "SET")
      .text("setPW", &BKQRotationSchedule::getSetPW, "set's password")
      .text("schemeName", &BKQRotationSchedule::getSchemeName, "scheme")
      .time("preferedMakeupTime", &BKQRotationSchedule::getPreferedMakeupTime,
            "2004-03-02T01:00:05")
      .row(
          "preferedMakeupJobTime", "[20, 45]",
          [](BKQRotationSchedule& schedule) {
            unsigned char hour = 0;
            unsigned char minute = 0;
            schedule.getPreferedMakeupJobTime(hour, minute);
            return list(hour, minute);
          },
          "20, 45")
      .flag("doMakeup", [](BKQRotationSchedule& schedule) { return schedule.doMakeup(); })
      .row(
          "exceptionDays", R"([{"exceptionTime": "2004-12-24"}, {"exceptionTime": "2004-12-31"}])",
          [](BKQRotationSchedule& schedule) {
            return ofEach(
                elements<BKQExceptionDay>(&schedule, &BKQRotationSchedule::resetExceptionDays,
                                          &BKQRotationSchedule::enumExceptionDays),
                &BKQExceptionDay::getExceptionTime);
          },
          "2004-12-24T00:00:00, 2004-12-31T00:00:00");
}

void describeCruise(AttributeRows<BKQCruiseSchedule>& rows) {
  describeRotation(rows);
  rows.number("saveMonthly", &BKQCruiseSchedule::getSaveMonthly, 501)
      .number("saveWeekly", &BKQCruiseSchedule::getSaveWeekly, 502)
      .number("saveDaily", &BKQCruiseSchedule::getSaveDaily, 503)
      .number("months", &BKQCruiseSchedule::getMonths, 504)
      .number("copies", &BKQCruiseSchedule::getCopies, 505)
      .number("options", &BKQCruiseSchedule::getOptions, 70506)
      .number("cruiseMethod", &BKQCruiseSchedule::getCruiseMethod, 507)
      .row(
          "gfsPoolNames", R"(["pool 1", "pool 2", "pool 3"])",
          [](BKQCruiseSchedule& schedule) {
            RWCollectableString pools[3];
            schedule.getGFSPoolNames(pools[0], pools[1], pools[2]);
            return list(pools[0], pools[1], pools[2]);
          },
          "pool 1, pool 2, pool 3");
}

template <class Schedule, class Part, class Describe>
ClassCase scheduleCase(const FamilyOf<Part>& (*family)(), const char* kind,
                       const std::string& jobKind, Describe describe) {
  return makeCase<Schedule>(
      family, kind, R"({"kind": ")" + jobKind + R"(", "jobName": "", "schedule": @})",
      [](BKQJob& job) { return job.getSchedule(); }, describe);
}

std::string jobWithMask(const std::string& mask) {
  return R"({"kind": "rotationBackup", "jobName": "",
             "schedule": {"kind": "rotation", "jobMask": )" +
         mask + "}}";
}

}  // namespace

void addSchedules(std::vector<ClassCase>& cases) {
  cases.push_back(scheduleCase<BKQRegularSchedule>(schedules, "regular", "backup",
                                                   describeSchedule<BKQRegularSchedule>));
  cases.push_back(scheduleCase<BKQCustomSchedule>(schedules, "custom", "backup", describeCustom));
  cases.push_back(scheduleCase<BKQRotationSchedule>(schedules, "rotation", "backup",
                                                    describeRotation<BKQRotationSchedule>));
  cases.push_back(scheduleCase<BKQCruiseSchedule>(schedules, "cruise", "backup", describeCruise));
  cases.push_back(
      scheduleCase<BKQCustomSchedule>(customSchedules, "custom", "customBackup", describeCustom));
  cases.push_back(scheduleCase<BKQRotationSchedule>(rotationSchedules, "rotation", "rotationBackup",
                                                    describeRotation<BKQRotationSchedule>));
  cases.push_back(scheduleCase<BKQCruiseSchedule>(rotationSchedules, "cruise", "rotationBackup",
                                                  describeCruise));
  cases.push_back(
      scheduleCase<BKQCruiseSchedule>(cruiseSchedules, "cruise", "cruiseBackup", describeCruise));

  cases.push_back(makeCase<BKQJobMask>(
      jobMasks, "", jobWithMask("@"), jobMaskOf, [](AttributeRows<BKQJobMask>& rows) {
        rows.number("tapeNamePrefix", &BKQJobMask::getTapeNamePrefix, 70301)
            .number("repeats", &BKQJobMask::getRepeats, 302)
            .row(
                "repeatCycle", R"({"value": 303})",
                [](BKQJobMask& mask) { return mask.getRepeatCycle().getValue(); }, "303")
            .row(
                "repeatInterval", R"({"value": 304})",
                [](BKQJobMask& mask) { return mask.getRepeatInterval().getValue(); }, "304")
            .row(
                "jobUnits", R"([{"jobType": 105}, {"jobType": 106}])",
                [](BKQJobMask& mask) {
                  return ofEach(elements<BKQJobUnit>(&mask, &BKQJobMask::resetJobUnits,
                                                     &BKQJobMask::enumJobUnits),
                                &BKQJobUnit::getJobType);
                },
                "105, 106");
      }));
  cases.push_back(makeCase<BKQJobUnit>(
      jobUnits, "", jobWithMask(R"({"jobUnits": [@]})"), jobUnitOf,
      [](AttributeRows<BKQJobUnit>& rows) {
        rows.number("jobType", &BKQJobUnit::getJobType, 201)
            .number("options", &BKQJobUnit::getOptions, 70302)
            .number("serialNumber", &BKQJobUnit::getSerialNumber, 70303)
            .text("mediaName", &BKQJobUnit::getMediaName, "medium")
            .text("tapeSerialNumber", &BKQJobUnit::getTapeSerialNumber, "bar code")
            .time("execTime", &BKQJobUnit::getExecTime, "2004-03-03T21:00:00");
      }));
  cases.push_back(makeCase<BKQTime>(
      spans, "", jobWithMask(R"({"repeatCycle": @})"),
      [](BKQJob& job) -> BKQTime* {
        BKQJobMask* mask = jobMaskOf(job);
        return mask == nullptr ? nullptr : const_cast<BKQTime*>(&mask->getRepeatCycle());
      },
      [](AttributeRows<BKQTime>& rows) {
        rows.number("value", &BKQTime::getValue, 70301).number("type", &BKQTime::getType, 70302);
      }));
  cases.push_back(makeCase<BKQExceptionDay>(
      exceptionDays, "",
      R"({"kind": "rotationBackup", "jobName": "",
          "schedule": {"kind": "rotation", "exceptionDays": [@]}})",
      [](BKQJob& job) {
        return first(elements<BKQExceptionDay>(rotationOf(job),
                                               &BKQRotationSchedule::resetExceptionDays,
                                               &BKQRotationSchedule::enumExceptionDays));
      },
      [](AttributeRows<BKQExceptionDay>& rows) {
        rows.time("exceptionTime", &BKQExceptionDay::getExceptionTime, "2004-12-24T12:00:00")
            .number("jobType", &BKQExceptionDay::getJobType, 70301)
            .number("options", &BKQExceptionDay::getOptions, 70302);
      }));
}

}  // namespace bkoq::tool
