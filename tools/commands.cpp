#include "tools/commands.h"

#include <cstdlib>
#include <cstring>
#include <nlohmann/json.hpp>
#include <utility>

#include "tools/attributes.h"
#include "tools/job_file.h"
#include "tools/page.h"
#include "tools/problems.h"
#include "tools/schema.h"
#include "tools/source.h"
#include "tools/starter.h"
#include "tools/warnings.h"

namespace bkoq::tool {
namespace {

BkoqPrintOptions printOptions(const Request& request) {
  BkoqPrintOptions options = {};
  options.format = request.json       ? BKOQ_FORMAT_JSON
                   : request.annotate ? BKOQ_FORMAT_ANNOTATED
                                      : BKOQ_FORMAT_TEXT;
  options.showSecrets = request.showSecrets ? 1 : 0;
  options.hideReserved = 1;
  options.hideZero = request.isShort ? 1 : 0;
  options.colour = hasColour() ? 1 : 0;
  options.depth = request.depth;
  options.width = request.width != 0 ? request.width : width();
  options.onlyRecord = request.only.empty() ? nullptr : request.only.c_str();
  return options;
}

// "3+12", "#3+12" or "12", which is a byte of the first block.
bool parsePlace(const std::string& text, unsigned int& block, unsigned int& offset) {
  const auto number = [](const char* at, char** end) {
    const bool isHexadecimal = at[0] == '0' && at[1] == 'x';
    return static_cast<unsigned int>(std::strtoul(at, end, isHexadecimal ? 16 : 10));
  };
  const char* at = text.c_str();
  if (*at == '#') ++at;
  char* end = nullptr;
  if (std::strchr("0123456789", *at) == nullptr || *at == '\0') return false;
  offset = number(at, &end);
  block = 1;
  if (*end == '+' && end[1] >= '0' && end[1] <= '9') {
    block = offset;
    offset = number(end + 1, &end);
  } else if (text[0] == '#') {
    return false;
  }
  return *end == '\0';
}

Status printed(BkoqStatus status, const std::string& missing) {
  if (status == BKOQ_OK) return kDone;
  if (status == BKOQ_NOT_FOUND) return fail(missing);
  if (status == BKOQ_SINK_FAILED) return kFailed;  // finish() says why
  return fail(bkoqStatusText(status));
}

// Prints a tree, or what of it was asked for.
Status printTree(const OwnedTree& tree, const Request& request, BkoqSink sink, void* user) {
  const BkoqPrintOptions options = printOptions(request);
  const std::string inLayout = std::string(" in the ") + nameOf(tree.layout()) + " layout";
  if (!request.field.empty()) {
    return printed(
        bkoqPrintField(tree.root(), tree.layout(), request.field.c_str(), &options, sink, user),
        "there is no \"" + request.field + "\"" + inLayout + " of this job");
  }
  if (!request.at.empty()) {
    unsigned int block = 0;
    unsigned int offset = 0;
    if (!parsePlace(request.at, block, offset)) {
      return fail("--at takes the byte of a block, such as \"#3+12\", not \"" + request.at + "\"");
    }
    return printed(
        bkoqPrintAt(tree.root(), tree.layout(), block, offset, &options, sink, user),
        "there is no byte " + std::to_string(offset) + " in block #" + std::to_string(block));
  }
  return printed(bkoqPrint(tree.root(), tree.layout(), &options, sink, user),
                 "there is no record \"" + request.only + "\"" + inLayout + " of this job");
}

// Prints several trees as one JSON document.
Status printJsonTrees(const std::vector<OwnedTree>& trees, const Request& request) {
  std::string text = "{\n\"format\": \"bkoq-trees\",\n\"version\": 1,\n\"trees\": [\n";
  for (const OwnedTree& tree : trees) {
    if (&tree != &trees.front()) text += ",\n";
    const Status status = printTree(tree, request, stringSink, &text);
    if (status != kDone) return status;
  }
  print(text + "]\n}\n");
  return kDone;
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

// The tree of an image or of a job file.
struct Source {
  Status status = kFailed;
  OwnedTree tree;
  std::string problem;  // with an image
};

Source readImage(const std::string& content, const std::string& file) {
  Source source;
  BkoqLayout layout = BKOQ_LAYOUT_CURRENT;
  void* root = nullptr;
  BkoqImageError error = {};
  const BkoqStatus status = bkoqReadImage(content.data(), content.size(), &layout, &root, &error);
  source.tree = OwnedTree(root, layout);
  if (status == BKOQ_OK) {
    source.status = kDone;
  } else {
    source.problem = status == BKOQ_BAD_IMAGE ? error.text : bkoqStatusText(status);
    fail(shownName(file) + ": " + source.problem);
  }
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
  if (!request.image.empty() && file != "-" && isSameFile(file, request.image)) {
    return fail("the job file and the image are one file: " + file);
  }
  std::string content;
  if (!readFile(file, content)) return kFailed;
  const LoadedJob loaded = loadJob(content, file);
  if (loaded.job == nullptr) return kFailed;
  const std::string misfit = misfitOf(*loaded.job, request.selection);
  if (!misfit.empty()) return fail(misfit + " does not go with this kind of job");
  const std::string nothing = selectsNothing(loaded.document->root(), request.selection);
  if (!nothing.empty()) return fail(nothing);

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
  if (isImage(content)) {
    if (!request.layout.empty()) return fail("--layout goes with a job file; an image has its own");
    const Source source = readImage(content, file);
    if (source.tree.root() == nullptr) return source.status;
    // Of a bad image what could be read.
    const PageTree whole = {source.tree.root(), source.tree.layout(), baseName(file)};
    const Status status =
        request.html ? printPage({baseName(file), {whole}, false, false, source.problem}, request)
                     : printTree(source.tree, request, bkoqFileSink, stdout);
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
    // A job file is flattened in the layout of an image that it is compared with.
    BkoqLayout layout = layoutsOf(request.layout).front();
    for (const bool images : {true, false}) {
      for (std::size_t i = 0; i < 2; ++i) {
        if (isImage(contents[i]) != images) continue;
        sources[i] = images ? readImage(contents[i], request.files[i])
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
  uint32_t count = 0;
  const Status status = printed(
      bkoqPrintDifferences(sources[0].tree.root(), sources[0].tree.layout(), sources[1].tree.root(),
                           sources[1].tree.layout(), &options, bkoqFileSink, stdout, &count),
      "");
  if (status != kDone) return status;
  return count == 0 ? kDone : kDiffers;
}

namespace {

std::string counted(std::size_t count, const char* one) {
  return std::to_string(count) + " " + one + (count == 1 ? "" : "s");
}

// Of one file; counts what it finds.
Status checkFile(const Request& request, const std::string& file,
                 nlohmann::ordered_json& document) {
  std::string content;
  if (!readFile(file, content)) return kFailed;
  if (isImage(content)) return fail(shownName(file) + " is an image, not a job file");
  Problems problems;
  const LoadedJob loaded = readJob(std::move(content), problems);
  addWarnings(*loaded.document, problems);
  const std::vector<Problem> list = problems.sorted();
  std::size_t warnings = 0;
  for (const Problem& problem : list) warnings += problem.isWarning ? 1 : 0;
  const std::size_t mistakes = list.size() - warnings;
  if (request.json) {
    document["file"] = file;
    document["problems"] = nlohmann::ordered_json::array();
    for (const Problem& problem : list) {
      document["problems"].push_back({{"line", problem.place.line},
                                      {"column", problem.place.column},
                                      {"path", problem.path},
                                      {"class", problem.isWarning ? "warning" : "mistake"},
                                      {"message", problem.message}});
    }
  } else {
    for (const Problem& problem : list) print(lineOf(problem, shownName(file)) + "\n");
    print(shownName(file) + ": " + (mistakes == 0 ? "no mistakes" : counted(mistakes, "mistake")) +
          (warnings == 0 ? "" : ", " + counted(warnings, "warning")) + "\n");
  }
  return mistakes != 0 || (request.strict && warnings != 0) ? kDiffers : kDone;
}

}  // namespace

Status checkCommand(const Request& request) {
  using Json = nlohmann::ordered_json;
  const bool areMany = request.files.size() > 1;
  Json document = {{"format", "bkoq-check"}, {"version", 1}};
  Status status = kDone;
  std::size_t right = 0;
  for (const std::string& file : request.files) {
    Json own = Json::object();
    const Status each = checkFile(request, file, areMany ? own : document);
    if (areMany && !own.empty()) document["files"].push_back(own);
    if (each == kDone) ++right;
    if (each > status) status = each;
  }
  if (request.json) {
    // What a text of the file holds is known to be UTF-8, its name is not.
    if (areMany || document.contains("file")) {
      print(document.dump(2, ' ', false, Json::error_handler_t::replace) + "\n");
    }
  } else if (areMany) {
    print(std::to_string(right) + " of " + counted(request.files.size(), "file") + " right\n");
  }
  return status;
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
  const bool isPreviousName = name.size() > 4 && name.compare(name.size() - 4, 4, "_OLD") == 0;
  return printed(
      status,
      "there is no record \"" + name + "\"" +
          (request.compare ? std::string() : std::string(" in the ") + nameOf(layout) + " layout") +
          (isPreviousName && !request.previous ? "; its table comes with --previous"
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
      print(starterFile(kind, request.all));
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
