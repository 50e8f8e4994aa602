#include <algorithm>
#include <string>

#include "kit/image.h"
#include "kit/print_records.h"

namespace bkoq::kit {
namespace {

// An entry is a level, where to look, how, for what, and what to say.
void putLine(Output& out, const char* level, std::uint32_t offset, const char* type,
             const std::string& test, const std::string& words) {
  out.put(std::string(level) + std::to_string(offset) + "\t" + type + "\t" + test + "\t" + words +
          "\n");
}

std::uint32_t placeOfJobType() {
  const RecordDef& job = *recordDef(BKOQ_LAYOUT_CURRENT, RecordType::kJob);
  return kHeaderSize + std::find_if(job.begin(), job.end(), [](const FieldDef& field) {
                         return field.words != nullptr && field.kind == FieldKind::kNumber;
                       })->offset;
}

}  // namespace

void printMagic(Output& out) {
  const std::string version = std::to_string(BKOQ_IMAGE_FORMAT_VERSION);
  out.put("# Images of backup jobs. Written by \"bkoq layout --magic\".\n");
  putLine(out, "", 0, "string", BKOQ_IMAGE_SIGNATURE, "backup job image");
  out.put("!:mime\tapplication/x-bkoq-image\n");
  putLine(out, ">", kVersionAt, "ulelong", "!" + version, "\\b, unknown format version %u");
  putLine(out, ">", kVersionAt, "ulelong", version, "\\b, version %u");
  putLine(out, ">>", kLayoutAt, "ulelong", "1", "\\b, current layout");
  putLine(out, ">>", kLayoutAt, "ulelong", "2", "\\b, previous layout");
  for (const JobKind* kind = jobKinds(); kind->name != nullptr; ++kind) {
    putLine(out, ">>", placeOfJobType(), "uleshort", std::to_string(kind->code),
            std::string("\\b, ") + kind->name + " job");
  }
  putLine(out, ">>", kBlocksAt, "ulelong", "x", "\\b, %u blocks");
  putLine(out, ">>", kSizeAt, "ulelong", "x", "\\b, %u bytes");
}

}  // namespace bkoq::kit
