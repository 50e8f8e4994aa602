#include "tools/commands.h"

#include <cstdlib>
#include <cstring>
#include <memory>
#include <nlohmann/json.hpp>
#include <string_view>

#include "tools/attributes.h"
#include "tools/job_file.h"
#include "tools/leftover.h"
#include "tools/page.h"
#include "tools/problems.h"
#include "tools/schema.h"
#include "tools/starter.h"

namespace bkoq::tool {
namespace {

// Whether a file begins as an image does and no job file. A part of the start is enough, so that a
// damaged one is still taken for an image.
bool isImage(const std::string& content) {
  constexpr std::string_view kSignature = BKOQ_IMAGE_SIGNATURE;
  if (content.compare(0, 3, kSignature.substr(0, 3)) == 0) return true;
  if (content.size() < kSignature.size()) return false;
  std::size_t same = 0;
  for (std::size_t i = 0; i < kSignature.size(); ++i) same += content[i] == kSignature[i] ? 1 : 0;
  return same >= 5;
}

const char* nameOf(BkoqLayout layout) {
  return layout == BKOQ_LAYOUT_CURRENT ? "current" : "previous";
}

BkoqLayout layoutOf(const std::string& name) {
  return name == "previous" ? BKOQ_LAYOUT_PREVIOUS : BKOQ_LAYOUT_CURRENT;
}

std::string shownName(const std::string& file) { return file == "-" ? "standard input" : file; }

// Says what is wrong with a job file, all of it.
Status reportProblems(const Problems& problems, const std::string& file) {
  std::fflush(stdout);
  for (const Problem& problem : problems.sorted()) {
    std::fprintf(stderr, "%s\n", lineOf(problem, shownName(file)).c_str());
  }
  return kFailed;
}

// The job of a file, without a job after messages.
LoadedJob loadJob(const std::string& text, const std::string& file) {
  if (isImage(text)) {
    fail(shownName(file) + " is an image, not a job file");
    return {};
  }
  Problems problems;
  LoadedJob loaded = readJob(text, problems);
  if (!problems.empty()) {
    reportProblems(problems, file);
    loaded.job.reset();
  }
  return loaded;
}

BkoqPrintOptions printOptions(const Request& request) {
  BkoqPrintOptions options = {};
  options.format = request.jsonForm == "plain" ? BKOQ_FORMAT_PLAIN_JSON
                   : request.json              ? BKOQ_FORMAT_JSON
                   : request.annotate          ? BKOQ_FORMAT_ANNOTATED
                                               : BKOQ_FORMAT_TEXT;
  options.showSecrets = request.showSecrets ? 1 : 0;
  options.hideReserved = 1;
  options.colour = hasColour() ? 1 : 0;
  options.depth = request.depth;
  options.width = request.width != 0 ? request.width : width();
  options.onlyRecord = request.only.empty() ? nullptr : request.only.c_str();
  return options;
}

unsigned int parseNumber(const char* at, char** end) {
  const bool isHexadecimal = at[0] == '0' && at[1] == 'x';
  return static_cast<unsigned int>(std::strtoul(at, end, isHexadecimal ? 16 : 10));
}

// "3+12", "#3+12" or "12", which is a byte of the first block.
bool parsePlace(const std::string& text, unsigned int& block, unsigned int& offset) {
  const char* at = text.c_str();
  if (*at == '#') ++at;
  char* end = nullptr;
  if (std::strchr("0123456789", *at) == nullptr || *at == '\0') return false;
  offset = parseNumber(at, &end);
  block = 1;
  if (*end == '+' && end[1] >= '0' && end[1] <= '9') {
    block = offset;
    offset = parseNumber(end + 1, &end);
  } else if (text[0] == '#') {
    return false;
  }
  return *end == '\0';
}

// "file:332": a byte of an image.
bool parseFilePlace(const std::string& text, unsigned int& offset) {
  const std::size_t begin = std::strlen("file:");
  if (text.compare(0, begin, "file:") != 0 || text[begin] < '0' || text[begin] > '9') return false;
  char* end = nullptr;
  offset = parseNumber(text.c_str() + begin, &end);
  return *end == '\0';
}

// For the kit, which wants a null pointer at the end.
std::vector<const char*> listOf(const std::vector<std::string>& texts) {
  std::vector<const char*> list;
  list.reserve(texts.size() + 1);
  for (const std::string& text : texts) list.push_back(text.c_str());
  list.push_back(nullptr);
  return list;
}

Status printed(BkoqStatus status, const std::string& missing) {
  if (status == BKOQ_OK) return kDone;
  if (status == BKOQ_NOT_FOUND) return fail(missing);
  if (status == BKOQ_SINK_FAILED) return kFailed;  // finish() says why
  return fail(bkoqStatusText(status));
}

// The tree of an image or of a job file.
struct Source {
  Status status = kFailed;
  OwnedTree tree;
  std::string image;    // in which the tree lies, if it lies in one
  std::string problem;  // with an image; "" when nothing is wrong
  // Of a salvaged image.
  std::unique_ptr<std::uint32_t, void (*)(void*)> offsets{nullptr, std::free};
  unsigned int doubtfulFrom = 0;
};

std::string missingPath(const OwnedTree& tree, const std::string& path) {
  char reason[400];
  bkoqExplainPath(tree.root(), tree.layout(), path.c_str(), reason, sizeof reason);
  return "there is no \"" + path + "\" in the " + nameOf(tree.layout()) +
         " layout of this job: " + reason;
}

// What was probably meant by the name of a record; empty when nothing is near.
std::string recordHint(const std::string& name, BkoqLayout layout) {
  const char* nearest = bkoqNearestRecord(name.c_str(), layout);
  return nearest == nullptr || name == nearest ? std::string()
                                               : std::string("; did you mean ") + nearest + "?";
}

Status printPlace(const OwnedTree& tree, const std::string& place, const BkoqPrintOptions& options,
                  const BkoqImagePlaces& places, BkoqSink sink, void* user) {
  unsigned int block = 0;
  unsigned int offset = 0;
  if (parseFilePlace(place, offset)) {
    if (places.image == nullptr && places.offsets == nullptr) {
      return fail("--at " + place + " goes with an image, not with a job file");
    }
    return printed(
        bkoqPrintAtFile(tree.root(), tree.layout(), offset, &options, &places, sink, user),
        "there is no byte " + std::to_string(offset) + " in the image");
  }
  if (!parsePlace(place, block, offset)) {
    return fail(
        "--at takes the byte of a block or of an image, such as \"#3+12\" or "
        "\"file:332\", not \"" +
        place + "\"");
  }
  return printed(
      bkoqPrintAt(tree.root(), tree.layout(), block, offset, &options, sink, user),
      "there is no byte " + std::to_string(offset) + " in block #" + std::to_string(block));
}

// Prints a tree, or what of it was asked for.
Status printTree(const OwnedTree& tree, const Request& request, BkoqSink sink, void* user,
                 const Source* source = nullptr) {
  const BkoqPrintOptions options = printOptions(request);
  BkoqImagePlaces places = {};
  if (source != nullptr) {
    places.image = source->image.empty() ? nullptr : source->image.data();
    places.offsets = source->offsets.get();
    places.doubtfulFrom = source->doubtfulFrom;
  }
  if (!request.field.empty()) {
    const BkoqStatus status = bkoqPrintImage(tree.root(), tree.layout(), request.field.c_str(),
                                             &options, &places, sink, user);
    return printed(status,
                   status == BKOQ_NOT_FOUND ? missingPath(tree, request.field) : std::string());
  }
  if (!request.at.empty()) return printPlace(tree, request.at, options, places, sink, user);
  return printed(bkoqPrintImage(tree.root(), tree.layout(), nullptr, &options, &places, sink, user),
                 "there is no record \"" + request.only + "\" in the " + nameOf(tree.layout()) +
                     " layout of this job" + recordHint(request.only, tree.layout()));
}

// Prints several trees as one JSON document, or nothing where the first has nothing to print.
Status printJsonTrees(const std::vector<OwnedTree>& trees, const Request& request) {
  // What comes before the next piece.
  std::string start = "{\n\"format\": \"bkoq-trees\",\n\"version\": 1,\n\"trees\": [\n";
  const BkoqSink sink = [](void* user, const char* text, size_t size) {
    auto& pending = *static_cast<std::string*>(user);
    print(pending);
    pending.clear();
    return bkoqFileSink(stdout, text, size);
  };
  for (const OwnedTree& tree : trees) {
    if (&tree != &trees.front()) start = ",\n";
    const Status status = printTree(tree, request, sink, &start);
    if (status != kDone) return status;
  }
  print("]\n}\n");
  return kDone;
}

std::vector<BkoqLayout> layoutsOf(const std::string& name) {
  if (name == "both") return {BKOQ_LAYOUT_CURRENT, BKOQ_LAYOUT_PREVIOUS};
  return {layoutOf(name)};
}

Status printTrees(const std::vector<OwnedTree>& trees, const Request& request) {
  if (request.json && trees.size() > 1) return printJsonTrees(trees, request);
  for (const OwnedTree& tree : trees) {
    if (trees.size() > 1) {
      print(std::string(&tree == &trees.front() ? "" : "\n") + "== " + nameOf(tree.layout()) +
            " layout\n");
    }
    const Status status = printTree(tree, request, bkoqFileSink, stdout);
    if (status != kDone) return status;
  }
  return kDone;
}

Status writeImage(const OwnedTree& tree, const std::string& path) {
  std::string image;
  BkoqImageError error = {};
  const BkoqStatus status = bkoqWriteImage(tree.root(), tree.layout(), stringSink, &image, &error);
  if (status == BKOQ_BAD_TREE) return fail(error.text);
  if (status != BKOQ_OK) return fail(bkoqStatusText(status));
  return writePrivateFile(path, image);
}

// Of a bad image what could be read up to the error. `hint` follows the message then.
Source readImage(std::string content, const std::string& file, const std::string& hint = "") {
  Source source;
  source.image = std::move(content);
  BkoqLayout layout = BKOQ_LAYOUT_CURRENT;
  void* root = nullptr;
  BkoqImageError error = {};
  BkoqStatus status = bkoqUseImage(&source.image[0], source.image.size(), &layout, &root, &error);
  if (status == BKOQ_OK) {
    source.tree = OwnedTree(root, layout, true);
    source.status = kDone;
    return source;
  }
  status = bkoqReadImage(source.image.data(), source.image.size(), &layout, &root, &error);
  source.tree = OwnedTree(root, layout);
  source.image.clear();
  source.problem = status == BKOQ_BAD_IMAGE ? error.text : bkoqStatusText(status);
  fail(shownName(file) + ": " + source.problem + (status == BKOQ_BAD_IMAGE ? hint : ""));
  return source;
}

// Says what is doubtful of an image, the first of it at least.
class Doubts {
 public:
  explicit Doubts(std::string file) : file_(std::move(file)) {}

  static void add(const BkoqImageError* error, void* user) {
    auto& self = *static_cast<Doubts*>(user);
    if (self.first_.empty()) self.first_ = error->text;
    if (++self.count_ <= kMost) fail(self.file_ + ": " + error->text);
  }
  void end() const {
    if (count_ > kMost) fail(file_ + ": " + std::to_string(count_ - kMost) + " more doubts");
  }
  // In one line; "" when there are none.
  std::string words() const {
    if (count_ < 2) return first_;
    return first_ + "; and " + std::to_string(count_ - 1) +
           (count_ == 2 ? " doubt more" : " doubts more");
  }

 private:
  static constexpr unsigned int kMost = 20;
  std::string file_;
  std::string first_;
  unsigned int count_ = 0;
};

Source salvageImage(const std::string& content, const std::string& file) {
  Source source;
  BkoqLayout layout = BKOQ_LAYOUT_CURRENT;
  void* root = nullptr;
  BkoqSalvage salvage = {};
  Doubts doubts(shownName(file));
  const BkoqStatus status = bkoqSalvageImage(content.data(), content.size(), &layout, &root,
                                             Doubts::add, &doubts, &salvage);
  doubts.end();
  source.tree = OwnedTree(root, layout);
  source.offsets.reset(salvage.offsets);
  source.doubtfulFrom = salvage.doubtfulFrom;
  source.problem = doubts.words();
  if (status == BKOQ_OK && salvage.doubts == 0) source.status = kDone;
  if (status == BKOQ_BAD_IMAGE) fail(shownName(file) + ": nothing of it can be read");
  if (status == BKOQ_NO_MEMORY) fail(shownName(file) + ": " + bkoqStatusText(status));
  return source;
}

Source readJobSource(const std::string& content, const std::string& file, BkoqLayout layout) {
  Source source;
  const LoadedJob loaded = loadJob(content, file);
  if (loaded.job == nullptr) return source;
  Flattened flattened = flatten(*loaded.job, Selection(), layout);
  source.tree = std::move(flattened.tree);
  source.status = flattened.succeeded ? kDone : kDiffers;
  if (!flattened.succeeded) fail(shownName(file) + ": the conversion failed");
  return source;
}

std::string baseName(const std::string& file) {
  return shownName(file.substr(file.find_last_of('/') + 1));
}

// Writes a page about the trees; kDiffers when two of them were compared and are not the same.
Status printPage(Page page, const Request& request) {
  page.showSecrets = request.showSecrets;
  PrivateFile file(request.output.empty() ? "-" : request.output);
  uint32_t differences = 0;
  const BkoqStatus status = writePage(page, PrivateFile::sink, &file, differences);
  if (status != BKOQ_OK && status != BKOQ_SINK_FAILED) return fail(bkoqStatusText(status));
  const Status written = file.finish();
  if (written != kDone) return written;
  return page.isComparison && differences > 0 ? kDiffers : kDone;
}

}  // namespace

Status flattenCommand(const Request& request) {
  const std::string& file = request.files.front();
  if (!request.image.empty() && request.layout == "both") {
    return fail("an image holds one layout: give --layout current or --layout previous");
  }
  if (request.selection.unixKind.has_value() != request.selection.unixText.has_value()) {
    return fail("--unix-kind and --unix-text go together");
  }
  std::string content;
  if (!readFile(file, content)) return kFailed;
  const LoadedJob loaded = loadJob(content, file);
  if (loaded.job == nullptr) return kFailed;
  const std::string misfit = misfitOf(*loaded.job, request.selection);
  if (!misfit.empty()) return fail(misfit + " does not go with this kind of job");

  std::string layout = request.layout;
  if (layout.empty()) layout = request.image.empty() ? "both" : "current";
  std::vector<OwnedTree> trees;
  bool succeeded = true;
  for (const BkoqLayout each : layoutsOf(layout)) {
    Flattened flattened = flatten(*loaded.job, request.selection, each);
    if (!flattened.succeeded) {
      succeeded = false;
      fail(shownName(file) + ": the conversion to the " + nameOf(each) + " layout failed");
      continue;
    }
    trees.push_back(std::move(flattened.tree));
  }
  if (!succeeded) return kDiffers;
  return request.image.empty() ? printTrees(trees, request)
                               : writeImage(trees.front(), request.image);
}

Status showCommand(const Request& request) {
  const std::string& file = request.files.front();
  std::string content;
  if (!readFile(file, content)) return kFailed;
  if (isImage(content) || request.salvage) {
    if (!request.layout.empty()) return fail("--layout goes with a job file; an image has its own");
    Source source;
    if (request.salvage) {
      source = salvageImage(content, file);
    } else {
      source = readImage(std::move(content), file, "; --salvage shows all that can still be read");
      content.clear();
    }
    if (source.tree.root() == nullptr) return source.status;
    // Of a bad image what could be read.
    const PageTree whole = {source.tree.root(), source.tree.layout(), baseName(file),
                            source.doubtfulFrom};
    Status status =
        request.html ? printPage({baseName(file), {whole}, false, false, source.problem}, request)
                     : printTree(source.tree, request, bkoqFileSink, stdout, &source);
    if (status == kDone && request.annotate && request.salvage) {
      const auto ranges =
          leftovers(source.tree.root(), source.tree.layout(), source.offsets.get(), content);
      status =
          printed(printLeftovers(ranges, content, request.showSecrets, bkoqFileSink, stdout), "");
    }
    return source.status == kDone ? status : source.status;
  }
  std::vector<OwnedTree> trees;
  // A page has room for both layouts.
  const bool isBoth = request.html && request.layout.empty();
  for (const BkoqLayout layout : layoutsOf(isBoth ? "both" : request.layout)) {
    Source source = readJobSource(content, file, layout);
    if (source.status != kDone) return source.status;
    trees.push_back(std::move(source.tree));
  }
  if (!request.html) return printTrees(trees, request);
  Page page = {baseName(file), {}, false, false, ""};
  for (const OwnedTree& tree : trees) {
    page.trees.push_back({tree.root(), tree.layout(), nameOf(tree.layout())});
  }
  return printPage(std::move(page), request);
}

Status diffCommand(const Request& request) {
  if (request.files.size() != (request.layouts ? 1U : 2U)) {
    return fail(request.layouts ? "diff --layouts takes one job file" : "diff takes two files");
  }
  Source sources[2];
  std::string contents[2];
  if (request.files.front() == "-" && request.files.back() == "-" && !request.layouts) {
    return fail("standard input can be one of the two files, not both");
  }
  for (std::size_t i = 0; i < request.files.size(); ++i) {
    if (!readFile(request.files[i], contents[i])) return kFailed;
  }
  if (request.layouts) {
    const std::string& file = request.files.front();
    if (isImage(contents[0])) return fail("diff --layouts takes a job file, not an image");
    sources[0] = readJobSource(contents[0], file, BKOQ_LAYOUT_CURRENT);
    if (sources[0].status != kDone) return sources[0].status;
    sources[1] = readJobSource(contents[0], file, BKOQ_LAYOUT_PREVIOUS);
    if (sources[1].status != kDone) return sources[1].status;
  } else {
    const bool areImages[] = {isImage(contents[0]), isImage(contents[1])};
    // A job file is flattened in the layout of an image that it is compared with.
    BkoqLayout layout = layoutOf(request.layout);
    for (const bool images : {true, false}) {
      for (std::size_t i = 0; i < 2; ++i) {
        if (areImages[i] != images) continue;
        sources[i] = images ? readImage(std::move(contents[i]), request.files[i])
                            : readJobSource(contents[i], request.files[i], layout);
        if (sources[i].status != kDone) return sources[i].status;
        if (images && request.layout.empty()) layout = sources[i].tree.layout();
      }
    }
  }
  if (request.html) {
    Page page = {"", {}, true, false, ""};
    for (std::size_t i = 0; i < 2; ++i) {
      const OwnedTree& tree = sources[i].tree;
      const std::string name = request.layouts ? nameOf(tree.layout()) : baseName(request.files[i]);
      page.trees.push_back({tree.root(), tree.layout(), name});
    }
    page.title = request.layouts ? baseName(request.files[0])
                                 : page.trees[0].name + " and " + page.trees[1].name;
    return printPage(std::move(page), request);
  }
  const BkoqPrintOptions options = printOptions(request);
  const std::vector<const char*> onlyPaths = listOf(request.onlyPaths);
  const std::vector<const char*> ignoredPaths = listOf(request.ignoredPaths);
  BkoqPaths paths = {};
  if (!request.onlyPaths.empty()) paths.only = onlyPaths.data();
  paths.ignored = ignoredPaths.data();
  uint32_t count = 0;
  const Status status = printed(
      bkoqPrintChanges(sources[0].tree.root(), sources[0].tree.layout(), sources[1].tree.root(),
                       sources[1].tree.layout(), &options, &paths, bkoqFileSink, stdout, &count),
      "");
  if (status != kDone) return status;
  return count == 0 ? kDone : kDiffers;
}

Status checkCommand(const Request& request) {
  const std::string& file = request.files.front();
  std::string content;
  if (!readFile(file, content)) return kFailed;
  if (isImage(content)) return fail(shownName(file) + " is an image, not a job file");
  Problems problems;
  readJob(content, problems);
  const std::vector<Problem> list = problems.sorted();
  if (request.json) {
    nlohmann::ordered_json document = {{"format", "bkoq-check"}, {"version", 1}, {"file", file}};
    document["problems"] = nlohmann::ordered_json::array();
    for (const Problem& problem : list) {
      document["problems"].push_back({{"line", problem.place.line},
                                      {"column", problem.place.column},
                                      {"path", problem.path},
                                      {"message", problem.message}});
    }
    // What a text of the file holds is known to be UTF-8, its name is not.
    print(document.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n");
  } else {
    for (const Problem& problem : list) print(lineOf(problem, shownName(file)) + "\n");
    print(shownName(file) + ": " +
          (list.empty()
               ? "no mistakes"
               : std::to_string(list.size()) + (list.size() == 1 ? " mistake" : " mistakes")) +
          "\n");
  }
  return list.empty() ? kDone : kFailed;
}

Status layoutCommand(const Request& request) {
  const char* record = request.record.empty() ? nullptr : request.record.c_str();
  const BkoqFormat format = request.json     ? BKOQ_FORMAT_JSON
                            : request.c      ? BKOQ_FORMAT_C
                            : request.magic  ? BKOQ_FORMAT_MAGIC
                            : request.kaitai ? BKOQ_FORMAT_KAITAI
                                             : BKOQ_FORMAT_TEXT;
  const BkoqLayout layout = request.previous ? BKOQ_LAYOUT_PREVIOUS : BKOQ_LAYOUT_CURRENT;
  const BkoqStatus status = request.compare
                                ? bkoqPrintLayoutDifferences(record, format, bkoqFileSink, stdout)
                                : bkoqPrintRecords(record, layout, format, bkoqFileSink, stdout);
  const std::string& name = request.record;
  const std::string hint = recordHint(name, layout);
  const bool isPreviousName = name.size() > 4 && name.compare(name.size() - 4, 4, "_OLD") == 0;
  return printed(
      status,
      "there is no record \"" + name + "\"" +
          (request.compare ? std::string() : std::string(" in the ") + nameOf(layout) + " layout") +
          (isPreviousName && !request.previous ? "; its table comes with --previous"
           : !hint.empty()                     ? hint
                                               : "; see \"bkoq layout\""));
}

Status schemaCommand(const Request& /*request*/) {
  print(jobSchema());
  return kDone;
}

Status newCommand(const Request& request) {
  std::vector<std::string> kinds;
  std::string all;
  for (const ObjectClass& kind : jobs().classes) {
    if (kind.kind == request.kind) {
      print(starterFile(kind));
      return kDone;
    }
    kinds.push_back(kind.kind);
    all += (all.empty() ? "" : ", ") + kind.kind;
  }
  const std::string* nearest = nearestTo(request.kind, kinds);
  return fail("there is no kind of job \"" + request.kind + "\"; " +
              (nearest != nullptr ? "did you mean \"" + *nearest + "\"?" : "it is one of " + all));
}

}  // namespace bkoq::tool
