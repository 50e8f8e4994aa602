#include "tools/commands.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <nlohmann/json.hpp>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "kit/pattern.h"
#include "tools/attributes.h"
#include "tools/image_doubts.h"
#include "tools/job_file.h"
#include "tools/leftover.h"
#include "tools/many_files.h"
#include "tools/page.h"
#include "tools/problems.h"
#include "tools/schema.h"
#include "tools/source.h"
#include "tools/starter.h"
#include "tools/walk.h"
#include "tools/warnings.h"
#include "tools/why.h"

namespace bkoq::tool {
namespace {

BkoqPrintOptions printOptions(const Request& request) {
  BkoqPrintOptions options = {};
  options.format = request.jsonForm == "plain" ? BKOQ_FORMAT_PLAIN_JSON
                   : request.json              ? BKOQ_FORMAT_JSON
                   : request.annotate          ? BKOQ_FORMAT_ANNOTATED
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
  // In which the tree lies, if it lies in one; after a salvaged image there is room for it.
  std::string image;
  std::string problem;            // with an image; "" when nothing is wrong
  unsigned int doubtfulFrom = 0;  // of a salvaged image
};

std::string missingPath(const OwnedTree& tree, const std::string& path) {
  char reason[400];
  withMemory(bkoqExplainPath(tree.root(), tree.layout(), path.c_str(), reason, sizeof reason));
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
    if (places.image == nullptr) {
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

// Prints several trees as one JSON document, which ends before one that has nothing to print;
// nothing where that is the first.
Status printJsonTrees(const std::vector<OwnedTree>& trees, const Request& request) {
  // What comes before the next piece.
  std::string start = "{\n\"format\": \"bkoq-trees\",\n\"version\": 1,\n\"trees\": [\n";
  const BkoqSink sink = [](void* user, const char* text, size_t size) {
    auto& pending = *static_cast<std::string*>(user);
    print(pending);
    pending.clear();
    return outputSink(nullptr, text, size);
  };
  for (const OwnedTree& tree : trees) {
    if (&tree != &trees.front()) start = ",\n";
    const Status status = printTree(tree, request, sink, &start);
    if (status != kDone) {
      if (&tree != &trees.front()) print("]\n}\n");
      return status;
    }
  }
  print("]\n}\n");
  return kDone;
}

Status printTrees(const std::vector<OwnedTree>& trees, const Request& request) {
  if (request.json && trees.size() > 1) return printJsonTrees(trees, request);
  for (const OwnedTree& tree : trees) {
    if (trees.size() > 1) {
      print(std::string(&tree == &trees.front() ? "" : "\n") + "== " + nameOf(tree.layout()) +
            " layout\n");
    }
    const Status status = printTree(tree, request, outputSink, nullptr);
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
Source readImage(std::string content, const std::string& file, const Request& request,
                 const std::string& hint = "") {
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
  if (status == BKOQ_BAD_IMAGE) {
    ImageDoubts doubts(shownName(file), request.showSecrets);
    ImageDoubts::add(&error, &doubts);
    doubts.tell(root, layout, nullptr, hint);
    source.problem = doubts.words();
  } else {
    source.problem = bkoqStatusText(status);
    fail(shownName(file) + ": " + source.problem);
  }
  return source;
}

Source salvageImage(std::string content, const std::string& file, const Request& request) {
  Source source;
  source.image = std::move(content);
  const std::size_t size = source.image.size();
  source.image.append(BKOQ_SALVAGE_ROOM, '\0');
  BkoqLayout layout = BKOQ_LAYOUT_CURRENT;
  void* root = nullptr;
  BkoqSalvage salvage = {};
  ImageDoubts doubts(shownName(file), request.showSecrets);
  const BkoqStatus status =
      bkoqSalvageImage(&source.image[0], size, &layout, &root, ImageDoubts::add, &doubts, &salvage);
  doubts.tell(root, layout, source.image.data());
  source.tree = OwnedTree(root, layout, true);
  source.doubtfulFrom = salvage.doubtfulFrom;
  source.problem = doubts.words();
  if (status == BKOQ_OK && salvage.doubts == 0) source.status = kDone;
  if (status == BKOQ_BAD_IMAGE) fail(shownName(file) + ": nothing of it can be read");
  if (status == BKOQ_NO_MEMORY) fail(shownName(file) + ": " + bkoqStatusText(status));
  return source;
}

// The job of a file, which has what is selected; without a job after messages.
LoadedJob loadSelected(const std::string& content, const std::string& file,
                       const Request& request) {
  const Selection& selection = request.selection;
  if (selection.unixKind.has_value() != selection.unixText.has_value()) {
    fail("--unix-kind and --unix-text go together");
    return {};
  }
  LoadedJob loaded = loadJob(content, file);
  if (loaded.job == nullptr) return loaded;
  std::string complaint = misfitOf(*loaded.job, selection);
  if (!complaint.empty()) {
    complaint += " does not go with this kind of job";
  } else {
    complaint = selectsNothing(loaded.document->root(), selection);
  }
  if (complaint.empty()) return loaded;
  fail((request.files.size() > 1 ? shownName(file) + ": " : "") + complaint);
  return {};
}

Source readJobSource(const std::string& content, const std::string& file, const Request& request,
                     BkoqLayout layout) {
  Source source;
  const LoadedJob loaded = loadSelected(content, file, request);
  if (loaded.job == nullptr) return source;
  Flattened flattened = flatten(*loaded.job, request.selection, layout);
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

bool isFolder(const std::string& path) {
  struct stat known = {};
  return stat(path.c_str(), &known) == 0 && S_ISDIR(known.st_mode);
}

// Prints the trees of one job, or writes them as an image.
Status flattenFile(const Request& request, const std::string& file, const std::string& image) {
  std::string content;
  if (!readFile(file, content)) return kFailed;
  const LoadedJob loaded = loadSelected(content, file, request);
  if (loaded.job == nullptr) return kFailed;

  std::string layout = request.layout;
  if (layout.empty()) layout = image.empty() ? "both" : "current";
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
  return image.empty() ? printTrees(trees, request) : writeImage(trees.front(), image);
}

std::string counted(std::size_t count, const char* one) {
  return std::to_string(count) + " " + one + (count == 1 ? "" : "s");
}

// "FOLDER/nightly.image" for "jobs/nightly.json".
std::string imageIn(std::string folder, const std::string& file) {
  if (folder.back() != '/') folder += '/';
  std::string name = file.substr(file.find_last_of('/') + 1);
  constexpr const char* kEnd = ".json";
  const std::size_t end = name.size() - std::min(name.size(), std::strlen(kEnd));
  if (end > 0 && name.compare(end, std::string::npos, kEnd) == 0) name.resize(end);
  return folder + name + ".image";
}

Status flattenIntoFolder(const Request& request) {
  std::unordered_map<std::string, std::string> images;
  for (const std::string& file : request.files) {
    if (file == "-") return fail("an image of the standard input has no name in a folder");
    const auto [known, isNew] = images.emplace(imageIn(request.image, file), file);
    if (!isNew) {
      return fail(known->second + " and " + file + " would both become " + known->first);
    }
  }
  const Tally tally =
      forEachFile(request.files.size(), request.processes, [&request](std::size_t i) {
        const std::string& file = request.files[i];
        return flattenFile(request, file, imageIn(request.image, file));
      });
  print(std::to_string(tally.ended[kDone]) + " of " + counted(request.files.size(), "job") +
        " flattened\n");
  return tally.worst();
}

}  // namespace

Status flattenCommand(const Request& request) {
  if (!request.image.empty() && request.layout == "both") {
    return fail("an image holds one layout: give --layout current or --layout previous");
  }
  if (!request.image.empty() && isFolder(request.image)) return flattenIntoFolder(request);
  if (request.files.size() == 1) return flattenFile(request, request.files[0], request.image);
  return fail(request.image.empty() ? "several jobs become images: give a folder with -o FOLDER/"
                                    : request.image + " is no folder, where several jobs go");
}

namespace {

// Prints what was asked for of each tree, with what decides it.
Status printWithReasons(const std::vector<OwnedTree>& trees, const std::string& content,
                        const Request& request) {
  unsigned int block = 0;
  unsigned int offset = 0;
  if (!request.at.empty() && !parsePlace(request.at, block, offset)) {
    return printTrees(trees, request);  // says what is wrong
  }
  Why why(content, request.files.front(), request.selection);
  if (!request.json) {
    const Status status = printTrees(trees, request);
    if (status != kDone) return status;
  }
  std::string documents;
  for (const OwnedTree& tree : trees) {
    const BkoqLayout layout = tree.layout();
    const std::string path = request.at.empty() ? request.field : why.pathAt(block, offset, layout);
    std::vector<FieldReason> reasons;
    if (!path.empty()) reasons = why.ofPath(path, layout);
    // What is printed leaves them out too, unless it is one field that is asked for.
    if (request.isShort && (reasons.size() > 1 || kit::isPattern(path.c_str()))) {
      const auto isZero = [](const FieldReason& reason) { return reason.field->isZero; };
      reasons.erase(std::remove_if(reasons.begin(), reasons.end(), isZero), reasons.end());
    }
    if (!request.json) {
      for (const FieldReason& reason : reasons) {
        print((trees.size() > 1 ? std::string(nameOf(layout)) + " layout: " : "") +
              why.text(reason) + "\n");
      }
      continue;
    }
    std::string printed;
    const Status status = printTree(tree, request, stringSink, &printed);
    if (status != kDone) return status;
    documents += (documents.empty() ? "" : ",\n") + withReasons(printed, why, reasons, layout);
  }
  if (request.json && trees.size() > 1) {
    documents =
        "{\n\"format\": \"bkoq-trees\",\n\"version\": 1,\n\"trees\": [\n" + documents + "]\n}\n";
  }
  print(documents);
  return kDone;
}

}  // namespace

Status showCommand(const Request& request) {
  if (request.why && request.field.empty() && request.at.empty()) {
    return fail("--why goes with --field or --at; \"bkoq explain\" explains all of a job file");
  }
  const std::string& file = request.files.front();
  std::string content;
  if (!readFile(file, content)) return kFailed;
  if (isImage(content) || request.salvage) {
    if (!request.layout.empty()) return fail("--layout goes with a job file; an image has its own");
    if (request.why) return fail("--why goes with a job file; an image has no lines");
    if (!request.selection.isAll()) {
      return fail("a part is selected of a job file; an image holds what was selected for it");
    }
    Source source;
    if (request.salvage) {
      source = salvageImage(std::move(content), file, request);
    } else {
      source = readImage(std::move(content), file, request,
                         "; --salvage shows all that can still be read");
    }
    if (source.tree.root() == nullptr) return source.status;
    // Of a bad image what could be read.
    const PageTree whole = {source.tree.root(), source.tree.layout(), baseName(file),
                            source.doubtfulFrom};
    Status status =
        request.html ? printPage({baseName(file), {whole}, false, false, source.problem}, request)
                     : printTree(source.tree, request, outputSink, nullptr, &source);
    if (status == kDone && request.annotate && request.salvage) {
      const std::string_view image(source.image.data(), source.image.size() - BKOQ_SALVAGE_ROOM);
      const auto ranges = leftovers(source.tree.root(), source.tree.layout(), image);
      status = printed(printLeftovers(ranges, image, request.showSecrets, outputSink, nullptr), "");
    }
    return source.status == kDone ? status : source.status;
  }
  std::vector<OwnedTree> trees;
  // A page has room for both layouts.
  const bool isBoth = request.html && request.layout.empty();
  for (const BkoqLayout layout : layoutsOf(isBoth ? "both" : request.layout)) {
    Source source = readJobSource(content, file, request, layout);
    if (source.status != kDone) return source.status;
    trees.push_back(std::move(source.tree));
  }
  if (!request.html) {
    return request.why ? printWithReasons(trees, content, request) : printTrees(trees, request);
  }
  Page page = {baseName(file), {}, false, false, ""};
  for (const OwnedTree& tree : trees) {
    page.trees.push_back({tree.root(), tree.layout(), nameOf(tree.layout())});
  }
  return printPage(std::move(page), request);
}

namespace {

// The differences, with the lines of job files that decide either side.
Status printExplainedChanges(const Source (&sources)[2], const std::string (&contents)[2],
                             const bool (&areJobs)[2], const BkoqPrintOptions& options,
                             const BkoqPaths& paths, const Request& request) {
  Differing differing;
  const BkoqLayout layouts[2] = {sources[0].tree.layout(), sources[1].tree.layout()};
  compareTrees(sources[0].tree.root(), layouts[0], sources[1].tree.root(), layouts[1], false,
               &paths, [&differing](const BkoqDifference& difference, BkoqChange) {
                 differing.paths[0].emplace_back(difference.path);
                 differing.paths[1].emplace_back(difference.otherPath);
                 return 0;
               });
  const BkoqStatus status =
      bkoqPrintChanges(sources[0].tree.root(), layouts[0], sources[1].tree.root(), layouts[1],
                       &options, &paths, stringSink, &differing.printed, nullptr);
  if (status != BKOQ_OK) return fail(bkoqStatusText(status));
  std::unique_ptr<Why> whys[2];
  for (std::size_t i = 0; i < 2; ++i) {
    const std::string& file = request.files[request.layouts ? 0 : i];
    const std::string& content = contents[request.layouts ? 0 : i];
    if (areJobs[i]) whys[i] = std::make_unique<Why>(content, file, request.selection);
  }
  print(withReasons(differing, {whys[0].get(), whys[1].get()}, layouts, request.json));
  return differing.paths[0].empty() ? kDone : kDiffers;
}

}  // namespace

Status diffCommand(const Request& request) {
  if (request.files.size() != (request.layouts ? 1U : 2U)) {
    return fail(request.layouts ? "diff --layouts takes one job file" : "diff takes two files");
  }
  Source sources[2];
  std::string contents[2];
  bool jobs[2] = {true, true};
  if (request.files.front() == "-" && request.files.back() == "-" && !request.layouts) {
    return fail("standard input can be one of the two files, not both");
  }
  for (std::size_t i = 0; i < request.files.size(); ++i) {
    if (!readFile(request.files[i], contents[i])) return kFailed;
  }
  if (request.layouts) {
    const std::string& file = request.files.front();
    if (isImage(contents[0])) return fail("diff --layouts takes a job file, not an image");
    sources[0] = readJobSource(contents[0], file, request, BKOQ_LAYOUT_CURRENT);
    if (sources[0].status != kDone) return sources[0].status;
    sources[1] = readJobSource(contents[0], file, request, BKOQ_LAYOUT_PREVIOUS);
    if (sources[1].status != kDone) return sources[1].status;
  } else {
    const bool areImages[] = {isImage(contents[0]), isImage(contents[1])};
    // A job file is flattened in the layout of an image that it is compared with.
    BkoqLayout layout = layoutsOf(request.layout).front();
    for (const bool images : {true, false}) {
      for (std::size_t i = 0; i < 2; ++i) {
        if (areImages[i] != images) continue;
        jobs[i] = !images;
        sources[i] = images ? readImage(std::move(contents[i]), request.files[i], request)
                            : readJobSource(contents[i], request.files[i], request, layout);
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
  if (request.why) {
    if (!jobs[0] && !jobs[1]) return fail("--why goes with a job file; an image has no lines");
    return printExplainedChanges(sources, contents, jobs, options, paths, request);
  }
  uint32_t count = 0;
  const Status status = printed(
      bkoqPrintChanges(sources[0].tree.root(), sources[0].tree.layout(), sources[1].tree.root(),
                       sources[1].tree.layout(), &options, &paths, outputSink, nullptr, &count),
      "");
  if (status != kDone) return status;
  return count == 0 ? kDone : kDiffers;
}

namespace {

using Json = nlohmann::ordered_json;

std::string inLines(const Json& json) {
  // What a text of the file holds is known to be UTF-8, its name is not.
  return printableJson(json.dump(2, ' ', false, Json::error_handler_t::replace));
}

// Of many files, what is printed of one lies two levels deep.
std::string deeper(const std::string& text) {
  std::string result = "    ";
  for (const char c : text) {
    result += c;
    if (c == '\n') result += "    ";
  }
  return result;
}

// Prints what is found in one file; of many files as one element of a list.
Status checkFile(const Request& request, const std::string& file) {
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
    const bool areMany = request.files.size() > 1;
    Json document = areMany ? Json::object() : Json{{"format", "bkoq-check"}, {"version", 1}};
    document["file"] = file;
    document["problems"] = Json::array();
    for (const Problem& problem : list) {
      document["problems"].push_back({{"line", problem.place.line},
                                      {"column", problem.place.column},
                                      {"path", problem.path},
                                      {"class", problem.isWarning ? "warning" : "mistake"},
                                      {"message", problem.message}});
    }
    print(areMany ? deeper(inLines(document)) : inLines(document) + "\n");
  } else {
    for (const Problem& problem : list) print(lineOf(problem, shownName(file)) + "\n");
    print(printable(shownName(file)) + ": " +
          (mistakes == 0 ? "no mistakes" : counted(mistakes, "mistake")) +
          (warnings == 0 ? "" : ", " + counted(warnings, "warning")) + "\n");
  }
  return mistakes != 0 || (request.strict && warnings != 0) ? kDiffers : kDone;
}

}  // namespace

Status checkCommand(const Request& request) {
  if (request.files.size() == 1) return checkFile(request, request.files.front());
  if (request.json) {
    print("{\n  \"format\": \"bkoq-check\",\n  \"version\": 1,\n  \"files\": [\n");
  }
  const Tally tally = forEachFile(request.files.size(), request.processes, [&](std::size_t i) {
    if (!request.json) return checkFile(request, request.files[i]);
    if (i != 0) print(",\n");
    const Status status = checkFile(request, request.files[i]);
    if (status == kFailed)
      print(deeper(inLines({{"file", request.files[i]}, {"problems", nullptr}})));
    return status;
  });
  print(request.json ? "\n  ]\n}\n"
                     : std::to_string(tally.ended[kDone]) + " of " +
                           counted(request.files.size(), "file") + " right\n");
  return tally.worst();
}

Status layoutCommand(const Request& request) {
  const char* record = request.record.empty() ? nullptr : request.record.c_str();
  const BkoqFormat format = request.json     ? BKOQ_FORMAT_JSON
                            : request.c      ? BKOQ_FORMAT_C
                            : request.magic  ? BKOQ_FORMAT_MAGIC
                            : request.kaitai ? BKOQ_FORMAT_KAITAI
                                             : BKOQ_FORMAT_TEXT;
  const BkoqLayout layout = request.recordLayout;
  const BkoqStatus status = request.compare
                                ? bkoqPrintLayoutDifferences(record, format, outputSink, nullptr)
                                : bkoqPrintRecords(record, layout, format, outputSink, nullptr);
  const std::string& name = request.record;
  const std::string hint = recordHint(name, layout);
  const bool isPreviousName = name.size() > 4 && name.compare(name.size() - 4, 4, "_OLD") == 0;
  return printed(
      status,
      "there is no record \"" + name + "\"" +
          (request.compare ? std::string() : std::string(" in the ") + nameOf(layout) + " layout") +
          (isPreviousName && layout == BKOQ_LAYOUT_CURRENT ? "; its table comes with --previous"
           : !hint.empty()                                 ? hint
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
