#include "tools/page.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <map>
#include <nlohmann/json.hpp>
#include <string_view>

#include "kit/characters.h"
#include "kit/output.h"
#include "tools/output.h"
#include "tools/page_parts.h"
#include "tools/problems.h"
#include "tools/walk.h"

namespace bkoq::tool {
namespace {

using Json = nlohmann::ordered_json;

// ---- Writing

// Writes bytes as base64, as they come.
class Base64 {
 public:
  explicit Base64(kit::Output& out) : out_(out) {}

  void put(std::uint8_t byte) {
    bits_ = bits_ << 8 | byte;
    if (++count_ % 3 == 0) write(4);
  }
  void put(const void* bytes, std::size_t size) {
    const auto* next = static_cast<const std::uint8_t*>(bytes);
    for (std::size_t i = 0; i < size; ++i) put(next[i]);
  }
  // Seven bits a byte, the lowest first; the last byte is less than 128.
  void putNumber(std::uint64_t number) {
    for (; number >= 128; number >>= 7) put(static_cast<std::uint8_t>(number | 128));
    put(static_cast<std::uint8_t>(number));
  }
  void finish() {
    const std::size_t rest = count_ % 3;
    if (rest == 0) return;
    bits_ <<= 8 * (3 - rest);
    write(rest + 1);
    out_.put(rest == 1 ? "==" : "=");
  }
  std::size_t size() const { return count_; }

 private:
  void write(std::size_t characters) {
    constexpr const char* kAlphabet =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    char text[4];
    for (std::size_t i = 0; i < characters; ++i) text[i] = kAlphabet[bits_ >> (18 - 6 * i) & 63];
    out_.put(std::string_view(text, characters));
  }

  kit::Output& out_;
  std::uint32_t bits_ = 0;
  std::size_t count_ = 0;
};

// For a script element: nothing in it may end the element, and whoever prints the page sees no more
// than ASCII.
std::string scriptJson(const Json& json) {
  std::string text = json.dump(-1, ' ', true, Json::error_handler_t::replace);
  std::string safe;
  for (const char c : text) {
    if (c == '<') {
      safe += "\\u003c";
    } else {
      safe += c;
    }
  }
  return safe;
}

std::string htmlText(const std::string& text) {
  std::string safe;
  for (const char c : text) {
    if (c == '<') {
      safe += "&lt;";
    } else if (c == '&') {
      safe += "&amp;";
    } else {
      safe += c;
    }
  }
  return safe;
}

// ---- The tree

// A field of a shape.
struct ShapeField {
  std::string name;
  BkoqFieldKind kind;
  std::uint32_t offset;
  std::uint32_t width;
  bool isSecret;
  std::string meaning;
  std::string filledBy;
  int embedded = -1;  // the shape of the record inside
  std::map<std::uint32_t, std::string> words;
};

// How a record is read: its fields as the walk found them, which depends on the kind of the job, on
// the array in which the record is and on what it holds.
struct Shape {
  std::string record;
  std::uint32_t size = 0;
  std::vector<ShapeField> fields;
};

// The shapes of a tree, and which record has which, in the order of the walk.
class Shapes {
 public:
  BkoqStatus collect(const PageTree& tree) {
    const BkoqStatus status = walk(tree.root, tree.layout, [this](const BkoqVisit& at) {
      visit(at);
      return 0;
    });
    if (status == BKOQ_OK) addBits(tree.layout);
    return status;
  }

  std::size_t indexOf(std::size_t record) const { return ofRecord_[record]; }
  const Shape& operator[](std::size_t index) const { return shapes_[index]; }

  Json json() const {
    Json list = Json::array();
    for (const Shape& shape : shapes_) {
      Json fields = Json::array();
      for (const ShapeField& field : shape.fields) {
        Json words = Json::object();
        for (const auto& word : field.words) words[std::to_string(word.first)] = word.second;
        fields.push_back({field.name, static_cast<int>(field.kind), field.offset, field.width,
                          field.isSecret ? 1 : 0, field.meaning, field.filledBy, field.embedded,
                          words});
      }
      list.push_back({{"record", shape.record}, {"size", shape.size}, {"fields", fields}});
    }
    return list;
  }

 private:
  struct Open {
    Shape shape;
    std::string key;
    std::size_t record = 0;
  };

  void visit(const BkoqVisit& visit) {
    switch (visit.event) {
      case BKOQ_RECORD_BEGIN:
        begin(visit);
        break;
      case BKOQ_FIELD:
        addField(visit);
        break;
      case BKOQ_RECORD_END:
        end();
        break;
    }
  }

  void begin(const BkoqVisit& visit) {
    // Called after a field: what it is called tells records of one type in different arrays apart.
    const std::string holder = open_.empty() ? "" : open_.back().shape.fields.back().name;
    Open open;
    open.shape.record = visit.record;
    open.shape.size = visit.width;
    open.key = holder + "/" + visit.record;
    open.record = ofRecord_.size();
    ofRecord_.push_back(0);
    open_.push_back(std::move(open));
  }

  void addField(const BkoqVisit& visit) {
    Open& open = open_.back();
    ShapeField field = {visit.field,
                        visit.kind,
                        visit.fieldOffset,
                        visit.width,
                        visit.isSecret != 0,
                        visit.meaning,
                        visit.filledBy,
                        -1,
                        {}};
    if (visit.word != nullptr) field.words[visit.number] = visit.word;
    open.key += "/" + field.name + ":" + std::to_string(field.kind);
    open.shape.fields.push_back(std::move(field));
  }

  void end() {
    Open closed = std::move(open_.back());
    open_.pop_back();
    const auto found = byKey_.emplace(closed.key, shapes_.size());
    const std::size_t index = found.first->second;
    if (found.second) {
      shapes_.push_back(std::move(closed.shape));
    } else {
      for (std::size_t i = 0; i < closed.shape.fields.size(); ++i) {
        shapes_[index].fields[i].words.merge(closed.shape.fields[i].words);
      }
    }
    ofRecord_[closed.record] = static_cast<std::uint16_t>(index);
    if (open_.empty()) return;
    ShapeField& holder = open_.back().shape.fields.back();
    if (holder.kind == BKOQ_FIELD_EMBEDDED) holder.embedded = static_cast<int>(index);
  }

  // The names of the bits of flags, which a walk does not tell.
  void addBits(BkoqLayout layout) {
    std::string text;
    withMemory(bkoqPrintRecords(nullptr, layout, BKOQ_FORMAT_JSON, stringSink, &text));
    const Json table = Json::parse(text);
    for (const Json& record : table.at("records")) {
      for (const Json& field : record.at("fields")) {
        if (!field.contains("bits")) continue;
        for (Shape& shape : shapes_) {
          if (shape.record != record.at("record").get<std::string>()) continue;
          for (ShapeField& each : shape.fields) {
            if (each.name != field.at("name").get<std::string>()) continue;
            for (const auto& bit : field.at("bits").items()) {
              each.words[static_cast<std::uint32_t>(std::stoul(bit.key(), nullptr, 0))] =
                  bit.value().get<std::string>();
            }
          }
        }
      }
    }
  }

  std::vector<Shape> shapes_;
  std::vector<std::uint16_t> ofRecord_;
  std::map<std::string, std::size_t> byKey_;
  std::vector<Open> open_;
};

// Writes the records and texts of a tree one after the other in the order of the walk: of a record
// the number of its shape and its bytes, with 1 in place of an address; of a text its length and
// its bytes, of a secret only that there is one. tools/page/page.js reads it.
class TreeWriter {
 public:
  TreeWriter(const Shapes& shapes, bool showSecrets, Base64& out)
      : shapes_(shapes), showSecrets_(showSecrets), out_(out) {}

  // Whether all of the tree was written.
  bool write(const PageTree& tree) {
    const auto one = [this](const BkoqVisit& at) { return visit(at) ? 0 : 1; };
    return walk(tree.root, tree.layout, one) == BKOQ_OK;
  }

  std::uint32_t records() const { return records_; }
  std::uint32_t blocks() const { return blocks_; }

 private:
  bool isFull() const { return out_.size() >= kMostTreeBytes; }

  bool visit(const BkoqVisit& visit) {
    if (visit.event == BKOQ_RECORD_BEGIN) {
      if (isFull()) return false;
      const std::size_t shape = shapes_.indexOf(records_++);
      // An embedded record is part of the one around it.
      if (!isEmbedded_) addRecord(shape, visit);
      if (visit.depth == 0) blocks_ = 1;
    } else if (visit.event == BKOQ_FIELD) {
      isEmbedded_ = visit.kind == BKOQ_FIELD_EMBEDDED;
      if (visit.target == 0) return true;
      if (isFull()) return false;
      ++blocks_;
      return !isText(visit.kind) || addTexts(visit);
    }
    return true;
  }

  void addRecord(std::size_t shape, const BkoqVisit& visit) {
    const auto* bytes = static_cast<const std::uint8_t*>(visit.bytes);
    record_.assign(bytes, bytes + visit.width);
    hideAddresses(shapes_[shape], 0);
    out_.putNumber(shape);
    out_.put(record_.data(), record_.size());
  }

  // They mean nothing to anyone else. What a node of an unknown kind of job holds would be one too,
  // but a tree with such a node is refused, and salvaging leaves null there.
  void hideAddresses(const Shape& shape, std::uint32_t base) {
    for (const ShapeField& field : shape.fields) {
      std::uint8_t* begin = record_.data() + base + field.offset;
      if (isPointer(field.kind)) {
        const bool isNull = std::all_of(begin, begin + field.width, [](int b) { return b == 0; });
        std::fill(begin, begin + field.width, std::uint8_t{0});
        *begin = isNull ? 0 : 1;
      } else if (field.embedded >= 0) {
        hideAddresses(shapes_[static_cast<std::size_t>(field.embedded)], base + field.offset);
      }
    }
  }

  bool addTexts(const BkoqVisit& visit) {
    const char* text = static_cast<const char*>(visit.targetBytes);
    for (std::uint32_t i = 0; i < visit.count; ++i) {
      if (isFull()) return false;
      const std::size_t length = std::strlen(text);
      addText(visit, i, std::string_view(text, length));
      text += length + 1;
    }
    return true;
  }

  void addText(const BkoqVisit& visit, std::uint32_t index, std::string_view text) {
    std::size_t shown = text.size();
    if (visit.isSecret != 0 && !showSecrets_) shown = openPart(visit, index, text);
    const bool isMasked = shown < text.size();
    const bool isCut = !isMasked && shown > kMostTextBytes;
    const std::size_t written = std::min(shown, kMostTextBytes);
    out_.putNumber(std::uint64_t{written} * 4 + (isMasked ? 1 : 0) + (isCut ? 2 : 0));
    if (isCut) out_.putNumber(text.size());
    out_.put(text.data(), written);
  }

  // As the kit masks: of two texts the second is the secret, and in the first what follows ":".
  static std::size_t openPart(const BkoqVisit& visit, std::uint32_t index, std::string_view text) {
    if (visit.kind != BKOQ_FIELD_TWO_TEXTS || index > 0) return 0;
    const std::size_t colon = text.find(':');
    return colon == std::string_view::npos ? text.size() : colon + 1;
  }

  const Shapes& shapes_;
  bool showSecrets_;
  Base64& out_;
  std::vector<std::uint8_t> record_;
  std::uint32_t records_ = 0;
  std::uint32_t blocks_ = 0;
  bool isEmbedded_ = false;
};

// ---- The differences

struct Differences {
  Json list = Json::array();
  std::uint32_t count = 0;
};

BkoqStatus compare(const Page& page, Differences& differences) {
  const auto add = [&list = differences.list](const BkoqDifference& difference, BkoqChange change) {
    if (list.size() < kMostDifferences) {
      const auto bounded = [](const char* text) { return std::string(text, strnlen(text, 1000)); };
      list.push_back({difference.path, difference.otherPath, bounded(difference.oldValue),
                      bounded(difference.newValue), static_cast<int>(change)});
    }
    return 0;
  };
  return compareTrees(page.trees[0].root, page.trees[0].layout, page.trees[1].root,
                      page.trees[1].layout, page.showSecrets, nullptr, add, &differences.count);
}

// ---- The page

// So that the page decides as the command does.
Json unprintable() {
  Json ranges = Json::array();
  for (const kit::CharacterRange& range : kit::unprintableRanges()) {
    ranges.push_back({range.first, range.last});
  }
  return ranges;
}

std::string policy() {
  return "default-src 'none'; script-src '" + std::string(kPageScriptHash) + "'; style-src '" +
         std::string(kPageStyleHash) + "'; base-uri 'none'; form-action 'none'";
}

BkoqStatus putTree(const PageTree& tree, bool showSecrets, const std::string& id, kit::Output& out,
                   Json& description) {
  Shapes shapes;
  const BkoqStatus status = shapes.collect(tree);
  if (status != BKOQ_OK) return status;
  out.put("<script type=\"application/octet-stream\" id=\"" + id + "\">");
  Base64 bytes(out);
  TreeWriter writer(shapes, showSecrets, bytes);
  const bool isWhole = writer.write(tree);
  bytes.finish();
  out.put("</script>\n");
  description = {{"id", id},
                 {"name", tree.name},
                 {"layout", tree.layout == BKOQ_LAYOUT_CURRENT ? "current" : "previous"},
                 {"records", writer.records()},
                 {"blocks", writer.blocks()},
                 {"isWhole", isWhole},
                 {"doubtfulFrom", tree.doubtfulFrom},
                 {"shapes", shapes.json()}};
  return BKOQ_OK;
}

}  // namespace

BkoqStatus writePage(const Page& page, BkoqSink sink, void* user, std::uint32_t& differences) {
  differences = 0;
  kit::Output out(sink, user);
  out.put(
      "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
      "<meta http-equiv=\"Content-Security-Policy\" content=\"" +
      policy() +
      "\">\n<meta name=\"viewport\" content=\"width=device-width\">\n"
      "<meta name=\"referrer\" content=\"no-referrer\">\n<title>" +
      htmlText(printable(page.title)) + "</title>\n<style>");
  out.put(kPageStyle);
  out.put("</style>\n</head>\n<body>\n");
  out.put(kPageBody);
  Json description = {{"title", page.title},
                      {"isComparison", page.isComparison},
                      {"showSecrets", page.showSecrets},
                      {"warning", page.warning},
                      {"unprintable", unprintable()},
                      {"trees", Json::array()}};
  for (const PageTree& tree : page.trees) {
    Json each;
    const std::string id = "tree" + std::to_string(description["trees"].size());
    const BkoqStatus status = putTree(tree, page.showSecrets, id, out, each);
    if (status != BKOQ_OK) return status;
    description["trees"].push_back(std::move(each));
  }
  if (page.trees.size() > 1) {
    Differences found;
    const BkoqStatus status = compare(page, found);
    if (status != BKOQ_OK) return status;
    description["differences"] = std::move(found.list);
    description["differenceCount"] = found.count;
    differences = found.count;
  }
  out.put("<script type=\"application/json\" id=\"page\">" + scriptJson(description) +
          "</script>\n<script>");
  out.put(kPageScript);
  out.put("</script>\n</body>\n</html>\n");
  return out.flush() ? BKOQ_OK : BKOQ_SINK_FAILED;
}

}  // namespace bkoq::tool
