#include "tools/attributes.h"

namespace bkoq::tool {
namespace {

void describeSchedule(Table<BKQSchedule> t) {
  t.timeOrNow("submitTime", &BKQSchedule::setSubmitTime, &BKQSchedule::getSubmitTime,
              "when the job was submitted")
      .shown("\"2004-03-01T20:00:00\"");
  t.timeOrNow("execTime", &BKQSchedule::setExecTime, &BKQSchedule::getExecTime, "when the job runs")
      .shown("\"2004-03-01T21:00:00\"");
  t.text("poolName", &BKQSchedule::setPoolName, &BKQSchedule::getPoolName, "media pool")
      .unrecorded();
  t.flag(
       "runJobNow", [](BKQSchedule& schedule, int flag) { schedule.runJobNow(flag); },
       [](BKQSchedule& schedule) { return schedule.runJobNow(); }, "whether it runs at once")
      .unrecorded();
  t.times(
       "scheduleWindow", 2,
       [](BKQSchedule& schedule, const std::vector<unsigned long>& bounds) {
         schedule.setScheduleWindow(RWCollectableTime(bounds[0]), RWCollectableTime(bounds[1]));
       },
       [](BKQSchedule& object) {
         RWCollectableTime first{};
         RWCollectableTime second{};
         object.getScheduleWindow(first, second);
         return std::vector<RWCollectableTime>{first, second};
       },
       "start and end of the time in which the job may run")
      .unrecorded();
}

void describeRotation(Table<BKQRotationSchedule> t) {
  describeSchedule(t);
  t.adopted("jobMask", jobMasks,
            adopting<BKQRotationSchedule, BKQJobMask>(&BKQRotationSchedule::setJobMask),
            "what is run on each day")
      .carriedOnlyIn("previous");
  t.text("setName", &BKQRotationSchedule::setSetName, &BKQRotationSchedule::getSetName, "media set")
      .shown("\"SET\"");
  t.text("setPW", &BKQRotationSchedule::setSetPW, &BKQRotationSchedule::getSetPW,
         "password of the media set")
      .unrecorded();
  t.text("schemeName", &BKQRotationSchedule::setSchemeName, &BKQRotationSchedule::getSchemeName,
         "name of the scheme")
      .unrecorded();
  t.time("preferedMakeupTime", &BKQRotationSchedule::setPreferedMakeupTime,
         &BKQRotationSchedule::getPreferedMakeupTime, "when a makeup is best run")
      .unrecorded();
  t.numbers<unsigned char>(
       "preferedMakeupJobTime", 2,
       [](BKQRotationSchedule& schedule, const std::vector<unsigned char>& time) {
         schedule.setPreferedMakeupJobTime(time[0], time[1]);
       },
       [](BKQRotationSchedule& object) {
         unsigned char first{};
         unsigned char second{};
         object.getPreferedMakeupJobTime(first, second);
         return std::vector<int>{first, second};
       },
       "hour and minute")
      .unrecorded();
  t.flag(
       "doMakeup", [](BKQRotationSchedule& schedule, int flag) { schedule.doMakeup(flag); },
       [](BKQRotationSchedule& schedule) { return schedule.doMakeup(); }, "whether makeups are run")
      .unrecorded();
  t.parts("exceptionDays", exceptionDays, &BKQRotationSchedule::addExceptionDay, "days that differ")
      .unrecorded();
}

template <class Part>
void addRegular(FamilyOf<Part>& family) {
  family.template add<BKQRegularSchedule>(
      "regular", "BKQRegularSchedule", "once, or as the server repeats it",
      [](const Value&) { return new BKQRegularSchedule; }, describeSchedule);
}

template <class Part>
void addCustom(FamilyOf<Part>& family) {
  family.template add<BKQCustomSchedule>(
      "custom", "BKQCustomSchedule", "repeated by four values of the server's",
      [](const Value&) { return new BKQCustomSchedule; },
      [](Table<BKQCustomSchedule> t) {
        describeSchedule(t);
        t.numbers<unsigned short>(
            "repeat", 4,
            [](BKQCustomSchedule& schedule, const std::vector<unsigned short>& values) {
              schedule.setRepeat(values[0], values[1], values[2], values[3]);
            },
            [](BKQCustomSchedule& schedule) {
              std::vector<unsigned short> values(4);
              schedule.getRepeat(values[0], values[1], values[2], values[3]);
              return values;
            },
            "the four repeat values");
        t.number("skipWeekDayFlag", &BKQCustomSchedule::setSkipWeekDayFlag,
                 &BKQCustomSchedule::getSkipWeekDayFlag, "flag of the weekdays that are skipped");
      });
}

template <class Part>
void addRotation(FamilyOf<Part>& family) {
  family.template add<BKQRotationSchedule>(
      "rotation", "BKQRotationSchedule", "a media rotation, day by day",
      [](const Value&) { return new BKQRotationSchedule; }, describeRotation);
}

template <class Part>
void addCruise(FamilyOf<Part>& family) {
  family.template add<BKQCruiseSchedule>(
      "cruise", "BKQCruiseSchedule", "a grandfather-father-son rotation",
      [](const Value&) { return new BKQCruiseSchedule; },
      [](Table<BKQCruiseSchedule> t) {
        describeRotation(t);
        t.number("saveMonthly", &BKQCruiseSchedule::setSaveMonthly,
                 &BKQCruiseSchedule::getSaveMonthly, "monthly copies kept");
        t.number("saveWeekly", &BKQCruiseSchedule::setSaveWeekly, &BKQCruiseSchedule::getSaveWeekly,
                 "weekly copies kept");
        t.number("saveDaily", &BKQCruiseSchedule::setSaveDaily, &BKQCruiseSchedule::getSaveDaily,
                 "daily copies kept");
        t.number("months", &BKQCruiseSchedule::setMonths, &BKQCruiseSchedule::getMonths, "months");
        t.number("copies", &BKQCruiseSchedule::setCopies, &BKQCruiseSchedule::getCopies, "copies");
        t.number("options", &BKQCruiseSchedule::setOptions, &BKQCruiseSchedule::getOptions,
                 "option bits");
        t.number("cruiseMethod", &BKQCruiseSchedule::setCruiseMethod,
                 &BKQCruiseSchedule::getCruiseMethod, "the server's code")
            .upTo(0xFFFF);
        t.texts(
             "gfsPoolNames", 3,
             [](BKQCruiseSchedule& schedule, const std::vector<std::string>& names) {
               schedule.setGFSPoolNames(names[0].c_str(), names[1].c_str(), names[2].c_str());
             },
             [](BKQCruiseSchedule& schedule) {
               std::vector<RWCollectableString> names(3);
               schedule.getGFSPoolNames(names[0], names[1], names[2]);
               return names;
             },
             "the three media pools")
            .unrecorded();
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
        "", "BKQTime", "a number with a kind", [](const Value&) { return new BKQTime; },
        [](Table<BKQTime> t) {
          t.number("value", &BKQTime::setValue, &BKQTime::getValue, "how many")
              .unrecorded()
              .shown("1");
          t.number("type", &BKQTime::setType, &BKQTime::getType, "the server's code of the kind")
              .unrecorded();
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
        [](Table<BKQJobUnit> t) {
          t.number("jobType", &BKQJobUnit::setJobType, &BKQJobUnit::getJobType,
                   "the server's code of what is run")
              .carriedOnlyIn("previous")
              .upTo(0xFF)
              .shown("1");
          t.number("options", &BKQJobUnit::setOptions, &BKQJobUnit::getOptions, "option bits")
              .unrecorded();
          t.number("serialNumber", &BKQJobUnit::setSerialNumber, &BKQJobUnit::getSerialNumber,
                   "serial number of the medium")
              .unrecorded();
          t.text("mediaName", &BKQJobUnit::setMediaName, &BKQJobUnit::getMediaName,
                 "name of the medium")
              .unrecorded();
          t.text("tapeSerialNumber", &BKQJobUnit::setTapeSerialNumber,
                 &BKQJobUnit::getTapeSerialNumber, "bar code of the medium")
              .unrecorded();
          t.time("execTime", &BKQJobUnit::setExecTime, &BKQJobUnit::getExecTime, "when it is run")
              .unrecorded();
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
        [](Table<BKQJobMask> t) {
          t.number("tapeNamePrefix", &BKQJobMask::setTapeNamePrefix, &BKQJobMask::getTapeNamePrefix,
                   "the server's code")
              .unrecorded();
          t.number("repeats", &BKQJobMask::setRepeats, &BKQJobMask::getRepeats,
                   "how often the days are repeated")
              .unrecorded();
          t.kept("repeatCycle", spans, &BKQJobMask::setRepeatCycle,
                 "after how long they are repeated")
              .unrecorded();
          t.kept("repeatInterval", spans, &BKQJobMask::setRepeatInterval, "between two repeats")
              .unrecorded();
          t.parts("jobUnits", jobUnits, &BKQJobMask::addJobUnit, "one for each day")
              .carriedOnlyIn("previous")
              .shown("[]");
        });
    return masks;
  }();
  return family;
}

const FamilyOf<BKQExceptionDay>& exceptionDays() {
  static const FamilyOf<BKQExceptionDay> family = [] {
    FamilyOf<BKQExceptionDay> days("exception day");
    days.add<BKQExceptionDay>(
        "", "BKQExceptionDay", "a day on which a rotation differs",
        [](const Value&) { return new BKQExceptionDay; },
        [](Table<BKQExceptionDay> t) {
          t.timeOrNow("exceptionTime", &BKQExceptionDay::setExceptionTime,
                      &BKQExceptionDay::getExceptionTime, "the day")
              .unrecorded()
              .shown("\"2004-12-24\"");
          t.number("jobType", &BKQExceptionDay::setJobType, &BKQExceptionDay::getJobType,
                   "the server's code")
              .unrecorded();
          t.number("options", &BKQExceptionDay::setOptions, &BKQExceptionDay::getOptions,
                   "option bits")
              .unrecorded();
        });
    return days;
  }();
  return family;
}

}  // namespace bkoq::tool
