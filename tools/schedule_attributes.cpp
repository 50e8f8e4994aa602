#include "tools/attributes.h"

namespace bkoq::tool {
namespace {

template <class Schedule>
void describeSchedule(Table<Schedule>& t) {
  t.timeOrNow("submitTime", &BKQSchedule::setSubmitTime, "now unless given; lSubmitTime")
      .shown("\"2004-03-01T20:00:00\"");
  t.timeOrNow("execTime", &BKQSchedule::setExecTime, "now unless given; lExecTime")
      .shown("\"2004-03-01T21:00:00\"");
  t.text("poolName", &BKQSchedule::setPoolName, "media pool; in no record");
  t.flag(
      "runJobNow", [](Schedule& schedule, int flag) { schedule.runJobNow(flag); }, "in no record");
  t.times(
      "scheduleWindow", 2,
      [](Schedule& schedule, const std::vector<unsigned long>& bounds) {
        schedule.setScheduleWindow(RWCollectableTime(bounds[0]), RWCollectableTime(bounds[1]));
      },
      "start and end of the time in which the job may run; in no record");
}

template <class Schedule>
void describeRotation(Table<Schedule>& t) {
  describeSchedule(t);
  t.adopted("jobMask", jobMasks,
            adopting<BKQRotationSchedule, BKQJobMask>(&BKQRotationSchedule::setJobMask),
            "what is run on each day");
  t.text("setName", &BKQRotationSchedule::setSetName, "media set; pszSetName").shown("\"SET\"");
  t.text("setPW", &BKQRotationSchedule::setSetPW, "in no record");
  t.text("schemeName", &BKQRotationSchedule::setSchemeName, "in no record");
  t.time("preferedMakeupTime", &BKQRotationSchedule::setPreferedMakeupTime, "in no record");
  t.template numbers<unsigned char>(
      "preferedMakeupJobTime", 2,
      [](Schedule& schedule, const std::vector<unsigned char>& time) {
        schedule.setPreferedMakeupJobTime(time[0], time[1]);
      },
      "hour and minute; in no record");
  t.flag(
      "doMakeup", [](Schedule& schedule, int flag) { schedule.doMakeup(flag); }, "in no record");
  t.parts("exceptionDays", exceptionDays, &BKQRotationSchedule::addExceptionDay,
          "days that differ; in no record");
}

template <class Part>
void addRegular(FamilyOf<Part>& family) {
  family.template add<BKQRegularSchedule>(
      "regular", "BKQRegularSchedule", "once, or as the server repeats it",
      [](const Value&) { return new BKQRegularSchedule; }, describeSchedule<BKQRegularSchedule>);
}

template <class Part>
void addCustom(FamilyOf<Part>& family) {
  family.template add<BKQCustomSchedule>(
      "custom", "BKQCustomSchedule", "repeated by four values of the server's",
      [](const Value&) { return new BKQCustomSchedule; },
      [](Table<BKQCustomSchedule>& t) {
        describeSchedule(t);
        t.numbers<unsigned short>(
            "repeat", 4,
            [](BKQCustomSchedule& schedule, const std::vector<unsigned short>& values) {
              schedule.setRepeat(values[0], values[1], values[2], values[3]);
            },
            "the repeat values; usRepeat1 to usRepeat4");
        t.number("skipWeekDayFlag", &BKQCustomSchedule::setSkipWeekDayFlag, "usSkipWeekDay");
      });
}

template <class Part>
void addRotation(FamilyOf<Part>& family) {
  family.template add<BKQRotationSchedule>(
      "rotation", "BKQRotationSchedule", "a media rotation, day by day",
      [](const Value&) { return new BKQRotationSchedule; }, describeRotation<BKQRotationSchedule>);
}

template <class Part>
void addCruise(FamilyOf<Part>& family) {
  family.template add<BKQCruiseSchedule>(
      "cruise", "BKQCruiseSchedule", "a grandfather-father-son rotation",
      [](const Value&) { return new BKQCruiseSchedule; },
      [](Table<BKQCruiseSchedule>& t) {
        describeRotation(t);
        t.number("saveMonthly", &BKQCruiseSchedule::setSaveMonthly, "copies kept; usSaveMonthly");
        t.number("saveWeekly", &BKQCruiseSchedule::setSaveWeekly, "copies kept; usSaveWeekly");
        t.number("saveDaily", &BKQCruiseSchedule::setSaveDaily, "copies kept; usSaveDaily");
        t.number("months", &BKQCruiseSchedule::setMonths, "usMonths");
        t.number("copies", &BKQCruiseSchedule::setCopies, "usCopies");
        t.number("options", &BKQCruiseSchedule::setOptions, "option bits; ulCruiseOptions");
        t.number("cruiseMethod", &BKQCruiseSchedule::setCruiseMethod,
                 "the server's code; usCruiseMethod")
            .upTo(0xFFFF);
        t.texts(
            "gfsPoolNames", 3,
            [](BKQCruiseSchedule& schedule, const std::vector<std::string>& names) {
              schedule.setGFSPoolNames(names[0].c_str(), names[1].c_str(), names[2].c_str());
            },
            "the three media pools; in no record");
      });
}

}  // namespace

const FamilyOf<BKQRegularSchedule>& schedules() {
  static const FamilyOf<BKQRegularSchedule> family = [] {
    FamilyOf<BKQRegularSchedule> schedules("schedule");
    addRegular(schedules);
    addCustom(schedules);
    addRotation(schedules);
    addCruise(schedules);
    return schedules;
  }();
  return family;
}

const FamilyOf<BKQCustomSchedule>& customSchedules() {
  static const FamilyOf<BKQCustomSchedule> family = [] {
    FamilyOf<BKQCustomSchedule> schedules("custom schedule");
    addCustom(schedules);
    return schedules;
  }();
  return family;
}

const FamilyOf<BKQRotationSchedule>& rotationSchedules() {
  static const FamilyOf<BKQRotationSchedule> family = [] {
    FamilyOf<BKQRotationSchedule> schedules("rotation schedule");
    addRotation(schedules);
    addCruise(schedules);
    return schedules;
  }();
  return family;
}

const FamilyOf<BKQCruiseSchedule>& cruiseSchedules() {
  static const FamilyOf<BKQCruiseSchedule> family = [] {
    FamilyOf<BKQCruiseSchedule> schedules("cruise schedule");
    addCruise(schedules);
    return schedules;
  }();
  return family;
}

const FamilyOf<BKQTime>& spans() {
  static const FamilyOf<BKQTime> family = [] {
    FamilyOf<BKQTime> spans("time span");
    spans.add<BKQTime>(
        "", "BKQTime", "a number with a kind; in no record",
        [](const Value&) { return new BKQTime; },
        [](Table<BKQTime>& t) {
          t.number("value", &BKQTime::setValue, "how many").shown("1");
          t.number("type", &BKQTime::setType, "the server's code of the kind, 1 unless given");
        });
    return spans;
  }();
  return family;
}

const FamilyOf<BKQJobUnit>& jobUnits() {
  static const FamilyOf<BKQJobUnit> family = [] {
    FamilyOf<BKQJobUnit> units("job unit");
    units.add<BKQJobUnit>(
        "", "BKQJobUnit", "one day of a rotation", [](const Value&) { return new BKQJobUnit; },
        [](Table<BKQJobUnit>& t) {
          t.number("jobType", &BKQJobUnit::setJobType,
                   "the server's code; abJobTypes of the previous layout, first eight units")
              .upTo(0xFF)
              .shown("1");
          t.number("options", &BKQJobUnit::setOptions, "option bits; in no record");
          t.number("serialNumber", &BKQJobUnit::setSerialNumber, "in no record");
          t.text("mediaName", &BKQJobUnit::setMediaName, "in no record");
          t.text("tapeSerialNumber", &BKQJobUnit::setTapeSerialNumber, "in no record");
          t.time("execTime", &BKQJobUnit::setExecTime, "in no record");
        });
    return units;
  }();
  return family;
}

const FamilyOf<BKQJobMask>& jobMasks() {
  static const FamilyOf<BKQJobMask> family = [] {
    FamilyOf<BKQJobMask> masks("job mask");
    masks.add<BKQJobMask>(
        "", "BKQJobMask", "the days of a rotation", [](const Value&) { return new BKQJobMask; },
        [](Table<BKQJobMask>& t) {
          t.number("tapeNamePrefix", &BKQJobMask::setTapeNamePrefix,
                   "the server's code, 1 unless given; in no record");
          t.number("repeats", &BKQJobMask::setRepeats, "in no record");
          t.kept("repeatCycle", spans, &BKQJobMask::setRepeatCycle, "in no record");
          t.kept("repeatInterval", spans, &BKQJobMask::setRepeatInterval, "in no record");
          t.parts("jobUnits", jobUnits, &BKQJobMask::addJobUnit, "one for each day").shown("[]");
        });
    return masks;
  }();
  return family;
}

const FamilyOf<BKQExceptionDay>& exceptionDays() {
  static const FamilyOf<BKQExceptionDay> family = [] {
    FamilyOf<BKQExceptionDay> days("exception day");
    days.add<BKQExceptionDay>(
        "", "BKQExceptionDay", "a day on which a rotation differs; in no record",
        [](const Value&) { return new BKQExceptionDay; },
        [](Table<BKQExceptionDay>& t) {
          t.timeOrNow("exceptionTime", &BKQExceptionDay::setExceptionTime,
                      "the day, now unless given")
              .shown("\"2004-12-24\"");
          t.number("jobType", &BKQExceptionDay::setJobType, "the server's code");
          t.number("options", &BKQExceptionDay::setOptions, "option bits");
        });
    return days;
  }();
  return family;
}

}  // namespace bkoq::tool
