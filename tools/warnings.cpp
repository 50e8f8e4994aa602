#include "tools/warnings.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "tools/attributes.h"
#include "tools/reader.h"

namespace bkoq::tool {
namespace {

constexpr std::int64_t kMost16 = 0xFFFF;

// Empty for what is missing, and for what is no text, which is a mistake of its own.
std::string_view textOf(const Value* value) {
  return value != nullptr && value->type() == Value::Type::kText ? value->text()
                                                                 : std::string_view();
}

class Warner {
 public:
  Warner(const Document& document, Problems& problems) : document_(document), problems_(problems) {}

  void object(const Family& family, const Value& value) {
    const ObjectClass* own = family.classOf(value);
    if (own == nullptr || value.type() != Value::Type::kObject) return;
    std::uint64_t given = 0;  // one bit for each attribute; no class has more
    for (const Member& member : value.members()) {
      const Attribute* attribute = own->find(member.key);
      if (attribute == nullptr) continue;
      given |= std::uint64_t{1} << static_cast<unsigned int>(attribute - own->attributes.data());
      const Within within(*this, member.key);
      // What is around it has been warned of already.
      if (reach_ == Reach::kNone) continue;
      plain(*attribute, member);
      if (!attribute->family) continue;
      const Reach around = reach_;
      if (!attribute->isRecorded) reach_ = Reach::kNone;
      if (attribute->onlyIn != nullptr) reach_ = Reach::kOneLayout;
      nested(*attribute, member.value);
      reach_ = around;
    }
    if (reach_ != Reach::kNone) leftToNow(*own, value, given);
    if (&family == &disks()) joinedPaths(value);
    if (own->name == "BKQRotationSchedule") days(value);
  }

 private:
  class Within {
   public:
    Within(Warner& warner, std::string_view key) : path_(warner.path_), length_(path_.size()) {
      if (!path_.empty()) path_ += '.';
      path_.append(key);
    }
    Within(Warner& warner, std::size_t index) : path_(warner.path_), length_(path_.size()) {
      path_ += '[';
      path_ += std::to_string(index);
      path_ += ']';
    }
    ~Within() { path_.resize(length_); }
    Within(const Within&) = delete;
    Within& operator=(const Within&) = delete;

   private:
    std::string& path_;
    std::size_t length_;
  };

  void warn(Offset at, const std::string& message) {
    problems_.warn(document_.placeOf(at), path_, message);
  }

  void nested(const Attribute& attribute, const Value& value) {
    const Family& family = attribute.family();
    const bool wasUnix = isUnix_;
    if (&family != &machines()) {
      each(family, value);
    } else {
      const auto nodes = value.elements();
      sameTwice(nodes);
      if (value.type() == Value::Type::kObject) machine(value);
      for (std::size_t i = 0; i < nodes.size(); ++i) {
        const Within within(*this, i);
        machine(nodes[i]);
      }
    }
    isUnix_ = wasUnix;
  }

  void each(const Family& family, const Value& value) {
    if (value.type() == Value::Type::kObject) object(family, value);
    const auto elements = value.elements();
    for (std::size_t i = 0; i < elements.size(); ++i) {
      const Within within(*this, i);
      object(family, elements[i]);
    }
  }

  void machine(const Value& node) {
    isUnix_ = textOf(node.find("kind")) == "unix";
    object(machines(), node);
  }

  void plain(const Attribute& attribute, const Member& member) {
    const Value& value = member.value;
    if (!attribute.isRecorded && !attribute.isRequired) warn(member.at, "reaches no record");
    if (attribute.onlyIn != nullptr && reach_ == Reach::kBothLayouts) {
      warn(member.at, std::string("only the ") + attribute.onlyIn + " layout carries it");
    }
    if (attribute.recordedMost != 0) {
      std::int64_t number = 0;
      Problems none;
      Kept kept;
      Reader reader(document_, none, kept);
      if (reader.number(value, attribute.least, attribute.most, attribute.words, number) &&
          number > attribute.recordedMost) {
        warn(value.at(), "only its low 16 bits, " + std::to_string(number & kMost16) +
                             ", are in the record of the current layout");
      }
    }
    if (attribute.shape != Shape::kText && attribute.shape != Shape::kTexts) return;
    if (attribute.key == "filterString" && value.text().size() > kMost16) {
      warn(value.at(), "the record's length of it, usFilterLen, has 16 bits: " +
                           std::to_string(value.text().size() & kMost16) + " in place of " +
                           std::to_string(value.text().size()));
    }
    if (attribute.key == "comments") return;
    controls(value);
    for (const Value& element : value.elements()) controls(element);
  }

  void controls(const Value& value) {
    for (const char c : value.text()) {
      const auto byte = static_cast<unsigned char>(c);
      if (byte >= 0x20 && byte != 0x7F) continue;
      const char* name = c == '\n' ? "a line feed, \\n" : c == '\t' ? "a tab, \\t" : nullptr;
      warn(value.at(), std::string("holds ") + (name != nullptr ? name : "a control character") +
                           "; a backslash of a path is written as \\\\");
      return;
    }
  }

  void leftToNow(const ObjectClass& own, const Value& value, std::uint64_t given) {
    for (std::size_t i = 0; i < own.attributes.size(); ++i) {
      if (!own.attributes[i].isNowUnlessGiven || (given >> i & 1U) != 0) continue;
      if (!own.attributes[i].isRecorded) continue;
      warn(value.at(), inQuotes(own.attributes[i].key) +
                           " is left out: it is the time at which the job is flattened");
    }
  }

  void sameTwice(const Sequence<Value>& nodes) {
    struct Twin {
      std::size_t index;
      const Value* name;
      const Value* first;
    };
    std::unordered_map<std::string_view, const Value*> seen;
    std::vector<Twin> twins;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
      const Value* name = nodes[i].find("nodeName");
      if (textOf(name).empty()) continue;
      const auto [first, isNew] = seen.emplace(name->text(), name);
      if (!isNew) twins.push_back({i, name, first->second});
    }
    // Places are quickly found in the order of the file only.
    std::map<Offset, unsigned int> lines;
    for (const Twin& twin : twins) lines.emplace(twin.first->at(), 0);
    for (auto& [at, line] : lines) line = document_.placeOf(at).line;
    for (const Twin& twin : twins) {
      const Within within(*this, twin.index);
      warn(twin.name->at(), inQuotes(std::string(twin.name->text())) +
                                " is a node already, in line " +
                                std::to_string(lines[twin.first->at()]));
    }
  }

  // The path of an item is put right after the name of its disk.
  void joinedPaths(const Value& disk) {
    const Value* items = disk.find("diskItems");
    const std::string_view name = textOf(disk.find("diskName"));
    if (!isUnix_ || items == nullptr || name.empty()) return;
    const auto elements = items->elements();
    for (std::size_t i = 0; i < elements.size(); ++i) {
      const Value* given = elements[i].find("path");
      const std::string_view path = textOf(given);
      if (path.empty() || name.back() == '/' || path.front() == '/') continue;
      const Within inList(*this, "diskItems");
      const Within inItem(*this, i);
      warn(given->at(), "with the disk's name it becomes " +
                            inQuotes(std::string(name).append(path)) + "; is " +
                            inQuotes(std::string(name).append("/").append(path)) + " meant?");
    }
  }

  void days(const Value& schedule) {
    const Value* mask = schedule.find("jobMask");
    const Value* units = mask == nullptr ? nullptr : mask->find("jobUnits");
    constexpr std::size_t kRecorded = 8;
    const std::size_t count = units == nullptr ? 0 : units->elements().size();
    if (count > kRecorded) {
      const Value& first = units->elements()[kRecorded];
      warn(first.at(), "only the first 8 of " + std::to_string(count) +
                           " job units are in the record of the previous layout");
    }
    if (count != 0) return;
    warn(mask == nullptr ? schedule.at() : mask->at(),
         "no job units: the rotation says for no day what is run");
  }

  const Document& document_;
  Problems& problems_;
  std::string path_;
  bool isUnix_ = false;
  enum class Reach : std::uint8_t { kBothLayouts, kOneLayout, kNone } reach_ = Reach::kBothLayouts;
};

}  // namespace

void addWarnings(const Document& document, Problems& problems) {
  Warner(document, problems).object(jobs(), document.root());
}

}  // namespace bkoq::tool
