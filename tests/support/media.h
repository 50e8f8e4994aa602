#ifndef BKOQ_TESTS_SUPPORT_MEDIA_H_
#define BKOQ_TESTS_SUPPORT_MEDIA_H_

#include <bkoq/bkoq.h>

namespace bkoq::test {

class NamedDisk : public BKQDisk {
 public:
  explicit NamedDisk(const char* name, unsigned int options = 0) {
    setDiskName(name);
    setOptions(options);
  }
};

class SessionTape : public BKQTape {
 public:
  SessionTape(const char* name, unsigned short session) : BKQTape("GROUP", name) {
    setSessionNumber(session);
  }
};

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_SUPPORT_MEDIA_H_
