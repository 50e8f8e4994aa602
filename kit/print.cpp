#include "kit/print.h"

#include <cstdio>

#include "bkoq/kit.h"
#include "kit/guard.h"

namespace bkoq {
namespace {

BkoqStatus print(const void* root, Layout layout, const BkoqPrintOptions& options, BkoqSink sink,
                 void* user) {
  const RecordDef* only = nullptr;
  if (options.onlyRecord != nullptr) {
    only = findRecordDef(layout, options.onlyRecord);
    if (only == nullptr) return BKOQ_NOT_FOUND;
  }
  Output out(sink, user);
  const RecordView job = RecordView::job(root, layout);
  bool isAnythingShown = false;
  switch (options.format) {
    case BKOQ_FORMAT_TEXT:
      isAnythingShown = printText(job, options, only, out);
      break;
    case BKOQ_FORMAT_JSON:
      isAnythingShown = printJson(job, options, only, out);
      break;
    case BKOQ_FORMAT_ANNOTATED:
      isAnythingShown = printAnnotated(job, options, only, out);
      break;
    default:
      return BKOQ_BAD_ARGUMENT;
  }
  if (!out.flush()) return BKOQ_SINK_FAILED;
  return isAnythingShown || only == nullptr ? BKOQ_OK : BKOQ_NOT_FOUND;
}

}  // namespace
}  // namespace bkoq

BkoqStatus bkoqPrint(const void* root, BkoqLayout layout, const BkoqPrintOptions* options,
                     BkoqSink sink, void* user) {
  using namespace bkoq;
  if (root == nullptr || sink == nullptr || !isLayout(layout)) return BKOQ_BAD_ARGUMENT;
  return guarded([&] {
    return print(root, toLayout(layout), options != nullptr ? *options : BkoqPrintOptions{}, sink,
                 user);
  });
}

int bkoqFileSink(void* file, const char* text, size_t size) {
  return std::fwrite(text, 1, size, static_cast<FILE*>(file)) == size ? 0 : 1;
}
