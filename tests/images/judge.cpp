#include "tests/images/judge.h"

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>

#include "kit/test_trees.h"

namespace bkoq::test {
namespace {

std::string textsOf(const BkoqVisit& visit) {
  const char* text = static_cast<const char*>(visit.targetBytes);
  std::string list;
  for (std::uint32_t i = 0; i < visit.count; ++i) {
    list += (i > 0 ? ", \"" : "\"") + std::string(text) + "\"";
    text += std::strlen(text) + 1;
  }
  return visit.kind == BKOQ_FIELD_TEXT ? list : "[" + list + "]";
}

std::string bytesOf(const BkoqVisit& visit) {
  std::string list;
  for (std::uint32_t i = 0; i < visit.width; ++i) {
    list += (i > 0 ? ", " : "") + std::to_string(static_cast<const unsigned char*>(visit.bytes)[i]);
  }
  return "[" + list + "]";
}

// A text may hold line feeds, so they are counted apart.
struct Lines {
  std::string text;
  std::uint32_t count = 0;
};

int addLine(const BkoqVisit* visit, void* user) {
  if (visit->event != BKOQ_FIELD) return 0;
  std::string value;
  switch (visit->kind) {
    case BKOQ_FIELD_NUMBER:
    case BKOQ_FIELD_COUNT:
    case BKOQ_FIELD_FLAGS:
      value = std::to_string(visit->number);
      break;
    case BKOQ_FIELD_TIME:
    case BKOQ_FIELD_CLIENT_TIME:
      value = std::to_string(static_cast<std::int32_t>(visit->number));
      break;
    case BKOQ_FIELD_BYTE_LIST:
      value = bytesOf(*visit);
      break;
    case BKOQ_FIELD_TEXT:
    case BKOQ_FIELD_TWO_TEXTS:
    case BKOQ_FIELD_TEXT_LIST:
      value = visit->target != 0 ? textsOf(*visit) : "null";
      break;
    case BKOQ_FIELD_ARRAY:
    case BKOQ_FIELD_RECORD:
      if (visit->target == 0) value = "null";
      break;
    case BKOQ_FIELD_OPAQUE:
      // Not followed, since nothing says what a node of an unknown kind of job holds.
      if (std::strcmp(visit->field, "pMedia") == 0) value = "null";
      break;
    default:
      break;
  }
  if (!value.empty()) {
    auto& lines = *static_cast<Lines*>(user);
    ++lines.count;
    lines.text.append(visit->path).append("\t" + value + "\n");
  }
  return 0;
}

Lines allLines(const void* root, BkoqLayout layout) {
  Lines lines;
  if (root != nullptr) bkoqWalk(root, layout, addLine, &lines);
  return lines;
}

}  // namespace

std::string linesOf(const void* root, BkoqLayout layout) { return allLines(root, layout).text; }

Verdict judge(const std::string& image) {
  const auto demand = [&](bool isTrue, const char* what) {
    if (isTrue) return;
    std::ofstream("hostile.image", std::ios::binary) << image;
    std::cerr << what << ": see hostile.image\n";
    std::exit(1);
  };
  const std::size_t size = image.size();
  Verdict verdict;
  BkoqLayout& layout = verdict.layout;
  void* root = nullptr;
  const BkoqStatus status = bkoqReadImage(image.data(), size, &layout, &root, &verdict.error);
  verdict.isTaken = status == BKOQ_OK;
  demand(verdict.isTaken || status == BKOQ_BAD_IMAGE, "neither taken nor refused");
  demand(verdict.isTaken == (verdict.error.problem == BKOQ_IMAGE_GOOD), "refused without a reason");
  const Lines found = allLines(root, layout);
  const std::string& lines = found.text;
  verdict.lines = found.count;
  if (verdict.isTaken) {
    std::string again;
    demand(bkoqWriteImage(root, layout, appendToString, &again, nullptr) == BKOQ_OK,
           "taken, but not written");
    demand(again == image, "written with other bytes");
  }
  bkoqFree(root, layout, nullptr);

  void* inPlace = nullptr;
  std::string used = image;
  const BkoqStatus use = bkoqUseImage(&used[0], size, &layout, &inPlace, nullptr);
  demand(use == status, "used in place with another result");
  demand(verdict.isTaken || used == image, "changed without being used");
  demand(!verdict.isTaken || lines == linesOf(inPlace, layout), "another tree in place");

  void* salvaged = nullptr;
  BkoqSalvage salvage;
  std::string repaired = image + std::string(BKOQ_SALVAGE_ROOM, 'x');
  BkoqLayout salvagedLayout = layout;
  const BkoqStatus saved =
      bkoqSalvageImage(&repaired[0], size, &salvagedLayout, &salvaged, nullptr, nullptr, &salvage);
  const std::string linesSalvaged = linesOf(salvaged, salvagedLayout);
  demand(saved == BKOQ_OK || (!verdict.isTaken && size <= 32), "not salvaged");
  demand(!verdict.isTaken || (salvage.doubts == 0 && lines == linesSalvaged),
         "doubts about a good image");
  demand(verdict.isTaken || saved != BKOQ_OK || salvage.doubts > 0, "no doubts about a bad image");
  return verdict;
}

}  // namespace bkoq::test
