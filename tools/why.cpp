#include "tools/why.h"

#include <algorithm>

#include "tools/explain.h"
#include "tools/problems.h"
#include "tools/source.h"

namespace bkoq::tool {

Why::Why(const std::string& content, const std::string& file, const Selection& selection)
    : selection_(selection), file_(shownName(file)) {
  Problems problems;
  loaded_ = readJob(content, problems);
  experiment_ = std::make_unique<Experiment>(loaded_, selection_);
}

std::string Why::ofPath(const std::string& path, BkoqLayout layout) {
  std::string wanted = path;
  const std::vector<RecordField>& fields = experiment_->fields(layout);
  const bool isElement = !path.empty() && path.back() == ']';
  const bool isField = std::any_of(fields.begin(), fields.end(),
                                   [&](const RecordField& field) { return field.path == path; });
  if (!isField && isElement) {
    const auto text = std::find_if(fields.begin(), fields.end(), [&](const RecordField& field) {
      const bool isText = field.kind == BKOQ_FIELD_TEXT || field.kind == BKOQ_FIELD_TWO_TEXTS;
      return isText && field.path.compare(0, path.size() + 1, path + ".") == 0;
    });
    if (text != fields.end()) wanted = text->path;
  }
  const FieldReason why = whyFieldHolds(*experiment_, wanted, layout);
  return why.field == nullptr ? "" : printable(reasonText(*experiment_, why, file_));
}

std::string Why::pathAt(unsigned int block, unsigned int offset, BkoqLayout layout) {
  struct Search {
    unsigned int block;
    unsigned int offset;
    std::string path;
  } search = {block, offset, ""};
  const OwnedTree& tree = experiment_->asWritten(layout);
  bkoqWalk(
      tree.root(), layout,
      [](const BkoqVisit* visit, void* user) {
        Search& search = *static_cast<Search*>(user);
        if (visit->event != BKOQ_FIELD || visit->kind == BKOQ_FIELD_EMBEDDED) return 0;
        const bool isHere = visit->block == search.block && search.offset >= visit->offset &&
                            search.offset - visit->offset < visit->width;
        const bool isText = visit->kind == BKOQ_FIELD_TEXT || visit->kind == BKOQ_FIELD_TWO_TEXTS ||
                            visit->kind == BKOQ_FIELD_TEXT_LIST;
        if (!isHere && !(isText && visit->target == search.block)) return 0;
        search.path = visit->path;
        return 1;
      },
      &search);
  return search.path;
}

std::string withReasons(const Differing& differing, Why* const (&whys)[2],
                        const BkoqLayout (&layouts)[2]) {
  // Each takes some experiments; who has more differences than this asks "bkoq explain".
  constexpr std::size_t kMost = 100;
  std::string text;
  std::size_t begin = 0;
  const std::size_t count = differing.paths[0].size();
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t end = differing.printed.find('\n', begin);
    if (end != std::string::npos) {
      text.append(differing.printed, begin, end + 1 - begin);
      begin = end + 1;
    }
    std::string before;
    for (std::size_t side = 0; side < 2 && i < kMost; ++side) {
      if (whys[side] == nullptr) continue;
      const std::string line = whys[side]->ofPath(differing.paths[side][i], layouts[side]);
      if (!line.empty() && line != before) text += "    " + line + "\n";
      before = line;
    }
  }
  text.append(differing.printed, std::min(begin, differing.printed.size()), std::string::npos);
  if (count > kMost) {
    text += "only the first " + std::to_string(kMost) + " of " + std::to_string(count) +
            " differences are explained; \"bkoq explain\" explains all of a job file\n";
  }
  return text;
}

}  // namespace bkoq::tool
