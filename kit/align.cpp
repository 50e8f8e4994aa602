#include "kit/align.h"

#include <algorithm>
#include <cstring>

namespace bkoq::kit {
namespace {

// Beyond so many, elements between equal starts and ends are compared by their places: there is no
// memory to be spent on each.
constexpr std::uint32_t kMostAligned = 400000;

class Hash {
 public:
  void add(const void* bytes, std::size_t size) {
    const auto* byte = static_cast<const std::uint8_t*>(bytes);
    for (std::size_t i = 0; i < size; ++i) value_ = (value_ ^ byte[i]) * 0x100000001B3u;
  }
  void add(const char* text) { add(text, std::strlen(text) + 1); }
  std::uint64_t value() const { return value_; }

 private:
  std::uint64_t value_ = 0xCBF29CE484222325u;
};

const FieldDef* namingField(const RecordDef& record) {
  const char* name = nullptr;
  switch (record.type) {
    case RecordType::kNode:
      name = "pszNodeName";
      break;
    case RecordType::kDisk:
      name = "pszDiskName";
      break;
    case RecordType::kDiskItem:
      name = "pszPath";
      break;
    case RecordType::kTape:
      name = "pszTapeName";
      break;
    case RecordType::kTapeItem:
      name = "pszFileOrDir";
      break;
    default:
      return nullptr;
  }
  for (const FieldDef& field : record) {
    if (std::strcmp(field.name, name) == 0) return &field;
  }
  return nullptr;
}

const char* nameIn(const RecordView& element, const FieldDef* naming) {
  if (naming == nullptr) return nullptr;
  return reinterpret_cast<const char*>(FieldView(element, *naming).pointer());
}

// The elements of one of the arrays, and what tells them from one another: their names, or all of a
// filter.
class Elements {
 public:
  Elements(const FieldView& field, const Block& block)
      : field_(field), block_(block), naming_(namingField(*field.target())) {}

  std::uint64_t keyOf(std::uint32_t index) const {
    const RecordView element = at(index);
    Hash hash;
    if (element.def->type == RecordType::kFilter) {
      addAll(hash, element);
    } else if (const char* name = nameIn(element, naming_)) {
      hash.add(name);
    }
    return hash.value();
  }

  // Whether the keys of two elements are the same: most are, and need not be worked out.
  bool isLike(std::uint32_t index, const Elements& others, std::uint32_t other) const {
    const RecordView element = at(index);
    if (element.def->type == RecordType::kFilter) return keyOf(index) == others.keyOf(other);
    const char* name = nameIn(element, naming_);
    const char* otherName = nameIn(others.at(other), others.naming_);
    if (name == nullptr || otherName == nullptr) return name == otherName;
    return std::strcmp(name, otherName) == 0;
  }

 private:
  RecordView at(std::uint32_t index) const {
    return field_.elementAt(block_.bytes + index * field_.target()->size);
  }
  static void addAll(Hash& hash, const RecordView& element);

  const FieldView& field_;
  const Block& block_;
  const FieldDef* naming_;
};

void Elements::addAll(Hash& hash, const RecordView& element) {
  forEachField(element, [&](const FieldView& field) {
    if (!field.pointsSomewhere()) {
      hash.add(field.bytes(), field.def().width);
    } else if (field.pointer() != nullptr) {
      hash.add(reinterpret_cast<const char*>(field.pointer()));
    }
    return true;
  });
}

using Keys = std::vector<std::uint64_t>;
using Places = std::vector<std::uint32_t>;

Places sortedPlaces(const Keys& keys) {
  Places places(keys.size());
  for (std::uint32_t i = 0; i < places.size(); ++i) places[i] = i;
  std::sort(places.begin(), places.end(), [&](std::uint32_t a, std::uint32_t b) {
    return keys[a] != keys[b] ? keys[a] < keys[b] : a < b;
  });
  return places;
}

// For each element of the second array the one of the first with the same key, each taken once, in
// their order.
Places partners(const Keys& first, const Keys& second) {
  const Places a = sortedPlaces(first);
  const Places b = sortedPlaces(second);
  Places partner(second.size(), kNoElement);
  std::size_t i = 0;
  std::size_t j = 0;
  while (i < a.size() && j < b.size()) {
    if (first[a[i]] == second[b[j]]) {
      partner[b[j++]] = a[i++];
    } else if (first[a[i]] < second[b[j]]) {
      ++i;
    } else {
      ++j;
    }
  }
  return partner;
}

// Which partners keep their order: as many as can. All others have moved.
std::vector<bool> keepingOrder(const Places& partner) {
  Places last;  // by length of a rising row: the place at which the lowest such row ends
  Places previous(partner.size(), kNoElement);
  for (std::uint32_t i = 0; i < partner.size(); ++i) {
    if (partner[i] == kNoElement) continue;
    const auto at = std::lower_bound(
        last.begin(), last.end(), partner[i],
        [&](std::uint32_t place, std::uint32_t value) { return partner[place] < value; });
    if (at != last.begin()) previous[i] = *(at - 1);
    if (at == last.end()) {
      last.push_back(i);
    } else {
      *at = i;
    }
  }
  std::vector<bool> keeps(partner.size());
  std::uint32_t place = last.empty() ? kNoElement : last.back();
  for (; place != kNoElement; place = previous[place]) keeps[place] = true;
  return keeps;
}

}  // namespace

const char* elementName(const RecordView& element) {
  return nameIn(element, namingField(*element.def));
}

Alignment::Alignment(const FieldView& first, const Block& firstBlock, const FieldView& second,
                     const Block& secondBlock)
    : firstCount_(firstBlock.count), secondCount_(secondBlock.count) {
  const Elements a(first, firstBlock);
  const Elements b(second, secondBlock);
  const std::uint32_t least = std::min(firstCount_, secondCount_);
  while (start_ < least && a.isLike(start_, b, start_)) ++start_;
  while (end_ < least - start_ && a.isLike(firstCount_ - 1 - end_, b, secondCount_ - 1 - end_)) {
    ++end_;
  }
  const std::uint32_t firstLeft = firstCount_ - start_ - end_;
  const std::uint32_t secondLeft = secondCount_ - start_ - end_;
  if (firstLeft > kMostAligned || secondLeft > kMostAligned) {
    end_ = 0;
    start_ = least;
    for (std::uint32_t i = least; i < firstCount_; ++i) middle_.push_back({i, kNoElement, false});
    for (std::uint32_t i = least; i < secondCount_; ++i) middle_.push_back({kNoElement, i, false});
    return;
  }
  Keys firstKeys(firstLeft);
  Keys secondKeys(secondLeft);
  for (std::uint32_t i = 0; i < firstLeft; ++i) firstKeys[i] = a.keyOf(start_ + i);
  for (std::uint32_t i = 0; i < secondLeft; ++i) secondKeys[i] = b.keyOf(start_ + i);
  const Places partner = partners(firstKeys, secondKeys);
  const std::vector<bool> keeps = keepingOrder(partner);
  std::vector<bool> isTaken(firstLeft);
  for (const std::uint32_t place : partner) {
    if (place != kNoElement) isTaken[place] = true;
  }
  // The next element of the first that keeps its order, for each of the second.
  Places nextKept(secondLeft + 1, firstLeft);
  for (std::uint32_t j = secondLeft; j-- > 0;)
    nextKept[j] = keeps[j] ? partner[j] : nextKept[j + 1];
  // Between two that keep their order, what has no partner is paired by its place.
  std::uint32_t i = 0;
  const auto takeAlone = [&](std::uint32_t end) {
    for (; i < end; ++i) {
      if (!isTaken[i]) middle_.push_back({start_ + i, kNoElement, false});
    }
  };
  for (std::uint32_t j = 0; j < secondLeft; ++j) {
    const std::uint32_t other = partner[j];
    if (other != kNoElement && keeps[j]) {
      takeAlone(other);
      middle_.push_back({start_ + other, start_ + j, false});
      i = other + 1;
    } else if (other != kNoElement) {
      middle_.push_back({start_ + other, start_ + j, true});
    } else {
      const std::uint32_t next = nextKept[j];
      while (i < next && isTaken[i]) ++i;
      const bool isPaired = i < next;
      middle_.push_back({isPaired ? start_ + i : kNoElement, start_ + j, false});
      if (isPaired) ++i;
    }
  }
  takeAlone(firstLeft);
}

}  // namespace bkoq::kit
