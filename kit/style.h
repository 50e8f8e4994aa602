#ifndef BKOQ_KIT_STYLE_H_
#define BKOQ_KIT_STYLE_H_

#include <string>
#include <string_view>

namespace bkoq::kit {

// Terminal colours, or none.
class Style {
 public:
  explicit Style(bool isOn) : isOn_(isOn) {}

  std::string heading(const std::string& text) const { return in("1", text); }
  std::string name(const std::string& text) const { return in("36", text); }
  std::string faint(const std::string& text) const { return in("2", text); }
  std::string alarm(const std::string& text) const { return in("31", text); }

  // What precedes and follows a text that is not put together.
  std::string_view headingStart() const { return start("\033[1m"); }
  std::string_view nameStart() const { return start("\033[36m"); }
  std::string_view faintStart() const { return start("\033[2m"); }
  std::string_view alarmStart() const { return start("\033[31m"); }
  std::string_view textStart() const { return start("\033[32m"); }
  std::string_view removedStart() const { return alarmStart(); }
  std::string_view end() const { return start("\033[0m"); }

 private:
  std::string_view start(std::string_view code) const { return isOn_ ? code : std::string_view(); }

  std::string in(const char* code, const std::string& text) const {
    if (!isOn_ || text.empty()) return text;
    return std::string("\033[") + code + "m" + text + "\033[0m";
  }

  bool isOn_;
};

}  // namespace bkoq::kit

#endif  // BKOQ_KIT_STYLE_H_
