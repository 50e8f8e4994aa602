#ifndef BKOQ_KIT_STYLE_H_
#define BKOQ_KIT_STYLE_H_

#include <string>

namespace bkoq::kit {

// Terminal colours, or none.
class Style {
 public:
  explicit Style(bool isOn) : isOn_(isOn) {}

  std::string heading(const std::string& text) const { return in("1", text); }
  std::string name(const std::string& text) const { return in("36", text); }
  std::string faint(const std::string& text) const { return in("2", text); }
  std::string alarm(const std::string& text) const { return in("31", text); }

  // What precedes and follows a text that is too long to be put together.
  const char* textStart() const { return isOn_ ? "\033[32m" : ""; }
  const char* removedStart() const { return isOn_ ? "\033[31m" : ""; }
  const char* end() const { return isOn_ ? "\033[0m" : ""; }

 private:
  std::string in(const char* code, const std::string& text) const {
    if (!isOn_ || text.empty()) return text;
    return std::string("\033[") + code + "m" + text + "\033[0m";
  }

  bool isOn_;
};

}  // namespace bkoq::kit

#endif  // BKOQ_KIT_STYLE_H_
