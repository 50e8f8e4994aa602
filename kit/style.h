#ifndef BKOQ_KIT_STYLE_H_
#define BKOQ_KIT_STYLE_H_

#include <string_view>

namespace bkoq::kit {

// Terminal colours, or none.
class Style {
 public:
  explicit Style(bool isOn) : isOn_(isOn) {}

  // What precedes and follows a text.
  std::string_view headingStart() const { return start("\033[1m"); }
  std::string_view nameStart() const { return start("\033[36m"); }
  std::string_view faintStart() const { return start("\033[2m"); }
  std::string_view alarmStart() const { return start("\033[31m"); }
  std::string_view textStart() const { return start("\033[32m"); }
  std::string_view removedStart() const { return alarmStart(); }
  std::string_view end() const { return start("\033[0m"); }

 private:
  std::string_view start(std::string_view code) const { return isOn_ ? code : std::string_view(); }

  bool isOn_;
};

}  // namespace bkoq::kit

#endif  // BKOQ_KIT_STYLE_H_
