#include "tools/command_line.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <cstring>
#include <functional>
#include <iostream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>

#include "bkoq/version.h"
#include "tools/attributes.h"
#include "tools/commands.h"
#include "tools/description.h"
#include "tools/moment.h"
#include "tools/problems.h"
#include "tools/reference.h"
#include "tools/walk.h"

namespace bkoq::tool {
namespace {

class Help : public CLI::FormatterBase {
 public:
  std::string make_help(const CLI::App* app, std::string /*name*/,
                        CLI::AppFormatMode /*mode*/) const override {
    return helpText(*app, width());
  }
};

// A test without words of its own in the help.
CLI::Validator oneOf(const std::vector<std::string>& words) {
  return CLI::Validator(
      [words](std::string& word) {
        for (const std::string& each : words) {
          if (word == each) return std::string();
        }
        std::string all;
        for (const std::string& each : words) all += (all.empty() ? "" : ", ") + each;
        return "\"" + word + "\" is none of " + all;
      },
      "");
}

CLI::Validator notEmpty() {
  return CLI::Validator(
      [](std::string& text) { return std::string(text.empty() ? "an empty text is none" : ""); },
      "");
}

CLI::Validator between(long long least, long long most) {
  return CLI::Validator(
      [=](std::string& text) {
        // The parser would take a leading zero for an octal number.
        const std::size_t digits = text.find_first_not_of('-');
        const bool isOctal = digits != std::string::npos && text[digits] == '0' &&
                             text.find_first_of("0123456789", digits + 1) == digits + 1;
        char* end = nullptr;
        const long long number = std::strtoll(text.c_str(), &end, 0);
        if (!text.empty() && *end == '\0' && !isOctal && number >= least && number <= most) {
          return std::string();
        }
        return "\"" + text + "\" is no number from " + std::to_string(least) + " to " +
               std::to_string(most);
      },
      "");
}

// What was probably meant, or where to look.
std::string hint(const std::string& word, const std::vector<std::string>& words,
                 const std::string& command) {
  const std::string* nearest = nearestTo(word, words);
  return nearest == nullptr ? "; see \"" + command + " --help\""
                            : "; did you mean " + *nearest + "?";
}

bool isOption(const std::string& name) { return name.size() > 1 && name[0] == '-'; }

// Long ones have been looked for before, so one that is left comes after "--".
bool isShortOption(const std::string& name) { return isOption(name) && name[1] != '-'; }

std::vector<std::string> recordNames(BkoqLayout layout) {
  std::string tables;
  withMemory(bkoqPrintRecords(nullptr, layout, BKOQ_FORMAT_JSON, stringSink, &tables));
  std::vector<std::string> names;
  const auto document = nlohmann::json::parse(tables);
  for (const auto& record : document["records"]) names.push_back(record["record"]);
  return names;
}

// What is wrong, in the words of all other messages; the parser's own texts are only taken apart.
std::string wordsOf(const CLI::ParseError& error, const std::string& command) {
  std::string text = error.what();
  const auto after = [&text](const std::string& part) {
    return text.substr(text.find(part) + part.size());
  };
  const auto before = [&text](const std::string& part) { return text.substr(0, text.find(part)); };
  const auto has = [&text](const char* part) { return text.find(part) != std::string::npos; };
  if (dynamic_cast<const CLI::RequiredError*>(&error) != nullptr && has(" is required")) {
    return (has("subcommand") ? "a command" : before(" is required")) + " is missing";
  }
  if (dynamic_cast<const CLI::ExcludesError*>(&error) != nullptr) {
    return before(" excludes ") + " does not go with " + after(" excludes ");
  }
  if (dynamic_cast<const CLI::RequiresError*>(&error) != nullptr) {
    return before(" requires ") + " goes with " + after(" requires ") + " only";
  }
  if (dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr) {
    const std::string extra = after("expected: ");
    return isShortOption(extra) ? std::string(command).append(" has no option ").append(extra)
                                : "nothing is expected after what is given, but \"" + extra + "\"";
  }
  if (dynamic_cast<const CLI::ConversionError*>(&error) != nullptr && has(" = ")) {
    return before(" = ").substr(std::strlen("Could not convert: ")) + " takes no value";
  }
  if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr) {
    if (has(" was given a disallowed")) {
      return "--" + before(" was given a disallowed") + " takes no value";
    }
    const std::string name = before(": ");
    if (has(" required but received ")) {
      const std::string received = after(" required but received ");
      if (isOption(name)) return name + " is given more than once";
      const std::string most = before(" required but").substr(text.rfind("Most ") + 5);
      return command + " takes " + (most == "1" ? "one " : "at most " + most + " of ") + name +
             ", not " + received;
    }
    if (has(" required ") && has(" missing")) {
      return name + " takes a value, " + before(" missing").substr(text.find(" required ") + 10);
    }
  }
  return text;
}

class CommandLine {
 public:
  CommandLine() : app_("describes backup jobs, and what they turn into", "bkoq") {
    app_.formatter(std::make_shared<Help>());
    app_.set_help_flag("-h,--help", "print this help, or that of a command");
    app_.set_version_flag("-V,--version", "bkoq " BKOQ_VERSION_TEXT, "print the version");
    app_.require_subcommand(1);
    app_.footer(
        "A JOB is a file as \"bkoq new\" writes one; an IMAGE comes from \"bkoq flatten -o\".\n"
        "\"-\" stands for the standard input or output.\n"
        "Exit status: 0 done; 1 there are differences, check found mistakes, or a conversion\n"
        "failed; 2 bad usage, a bad file, or output that cannot be written.\n"
        "Colour is used on terminals unless NO_COLOR is set or TERM is dumb; --color decides.\n"
        "A time without \"Z\" or an offset is local, by TZ and its summer time: an hour that is\n"
        "skipped is refused, of one that comes twice the C library chooses. \"now\" is one moment\n"
        "for all of a run: that of --now, else SOURCE_DATE_EPOCH, else the present.\n"
        "A file of more than 256 MiB is refused.");
    describeFlatten();
    describeShow();
    describeDiff();
    describeCheck();
    describeExplain();
    describeAttributes();
    describeLayout();
    describeSchema();
    describeNew();
    describeCompletion();
  }

  Status run(int count, const char* const* arguments) {
    if (count > 1 && std::string("help") == arguments[1]) return help(count, arguments);
    const std::string complaint = complaintAbout(count, arguments);
    if (!complaint.empty()) return fail(complaint);
    try {
      app_.parse(count, arguments);
    } catch (const CLI::Success& success) {  // help or version was asked for
      std::ostringstream out;
      app_.exit(success, out, std::cerr);
      foldLines(true);
      print(out.str());
      return finish(kDone);
    } catch (const CLI::ParseError& error) {
      const auto named = app_.get_subcommands();
      const std::string command = named.empty() ? "bkoq" : named.front()->get_name();
      return fail(wordsOf(error, command) + "; see \"bkoq " + (named.empty() ? "" : command + " ") +
                  "--help\"");
    }
    const std::string command = app_.get_subcommands().front()->get_name();
    const bool isForPrograms = request_.json || request_.html || request_.c || request_.magic ||
                               request_.kaitai || request_.width != 0 || command == "schema" ||
                               command == "new" || command == "completion" || command == "man";
    foldLines(!isForPrograms);
    return finish(command_());
  }

 private:
  // "bkoq help" and "bkoq help COMMAND".
  Status help(int count, const char* const* arguments) {
    if (count > 3) return fail("help takes one command; see \"bkoq --help\"");
    if (count == 2) {
      foldLines(true);
      print(helpText(app_, width()));
      return finish(kDone);
    }
    const char* const command[] = {arguments[0], arguments[2], "--help"};
    return run(3, command);
  }

  static std::vector<std::string> longNamesOf(const CLI::App& app) {
    std::vector<std::string> names;
    for (const CLI::Option* option : app.get_options()) {
      for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
    }
    return names;
  }

  // The parser has no good words for a misspelt command or option; empty when there is none.
  std::string complaintAbout(int count, const char* const* arguments) const {
    const std::string first = count > 1 ? arguments[1] : "";
    if (first.empty()) return "a command is missing; see \"bkoq --help\"";
    if (first[0] == '-') {
      if (app_.get_option_no_throw(first) != nullptr) return "";
      return "there is no option " + first + hint(first, longNamesOf(app_), "bkoq");
    }
    std::vector<std::string> commands;
    const CLI::App* command = nullptr;
    for (const CLI::App* each : app_.get_subcommands([](const CLI::App*) { return true; })) {
      commands.push_back(each->get_name());
      if (each->get_name() == first) command = each;
    }
    if (command == nullptr) {
      return "there is no command \"" + first + "\"" + hint(first, commands, "bkoq");
    }
    const std::vector<std::string> options = longNamesOf(*command);
    for (int i = 2; i < count && std::string("--") != arguments[i]; ++i) {
      const std::string given = arguments[i];
      const std::string name = given.substr(0, given.find('='));
      if (name.compare(0, 2, "--") != 0 || command->get_option_no_throw(name) != nullptr) continue;
      return std::string(first).append(" has no option ").append(name) +
             hint(name, options, std::string("bkoq ").append(first));
    }
    return "";
  }

  CLI::App& add(const char* name, const char* description, const char* footer,
                std::function<Status()> command) {
    CLI::App* sub = app_.add_subcommand(name, description);
    sub->formatter(std::make_shared<Help>());
    sub->set_help_flag("-h,--help", "print this help");
    sub->footer(std::string("Examples:\n") + footer);
    sub->callback([this, command] { command_ = command; });
    return *sub;
  }

  CLI::Option* file(CLI::App& sub, const char* what, const char* meaning) {
    return sub.add_option(what, request_.files, meaning)->required()->expected(1);
  }
  void now(CLI::App& sub) {
    sub.add_option_function<std::string>(
           "--now",
           [](const std::string& time) {
             std::int64_t seconds = 0;
             if (const char* complaint = parseMoment(time, seconds)) {
               throw CLI::ValidationError("--now", "\"" + time + "\" " + complaint);
             }
             setCommandMoment(seconds);
           },
           "what counts as now, as a job file writes a time")
        ->type_name("TIME");
  }
  void look(CLI::App& sub) {
    sub.add_option_function<std::string>(
           "--color", [](const std::string& when) { setColour(when); },
           "colour: auto for terminals, unless given")
        ->type_name("auto|always|never")
        ->check(oneOf({"auto", "always", "never"}));
  }
  // A flag is given or not; it has no value.
  static CLI::Option* flag(CLI::App& sub, const char* name, bool& value, const char* meaning) {
    return sub.add_flag(name, value, meaning)->disable_flag_override();
  }
  void json(CLI::App& sub) { flag(sub, "--json", request_.json, "print JSON, for programs"); }
  // Of trees; "--json=plain" gives the values alone.
  void jsonOfTrees(CLI::App& sub) {
    sub.add_flag("--json{full}", request_.jsonForm,
                 "print JSON, for programs; --json=plain: the values alone")
        ->check(oneOf({"full", "plain"}))
        ->each([this](const std::string&) { request_.json = true; });
  }
  void secrets(CLI::App& sub) {
    flag(sub, "--show-secrets", request_.showSecrets, "print passwords and keys as they are");
  }
  CLI::Option* page(CLI::App& sub, const char* meaning) {
    auto* html = flag(sub, "--html", request_.html, meaning);
    sub.add_option("-o,--output", request_.output,
                   "with --html: write a file that only its owner can read")
        ->type_name("FILE")
        ->check(notEmpty())
        ->needs(html);
    return html;
  }
  void layout(CLI::App& sub, bool withBoth, const char* meaning) {
    std::vector<std::string> words = {"current", "previous"};
    if (withBoth) words.emplace_back("both");
    sub.add_option("--layout", request_.layout, meaning)
        ->type_name(withBoth ? "current|previous|both" : "current|previous")
        ->check(oneOf(words));
  }
  // Options whose absence means something.
  template <class Number>
  void number(CLI::App& sub, const char* name, std::optional<Number>& value, const char* what,
              long long least, long long most, const char* meaning) {
    sub.add_option_function<long long>(
           name, [&value](const long long& given) { value = static_cast<Number>(given); }, meaning)
        ->type_name(what)
        ->check(between(least, most));
  }
  void text(CLI::App& sub, const char* name, std::optional<std::string>& value, const char* what,
            const char* meaning) {
    sub.add_option_function<std::string>(
           name, [&value](const std::string& given) { value = given; }, meaning)
        ->type_name(what);
  }

  // What of a job is flattened.
  void selection(CLI::App& sub) {
    Selection& wanted = request_.selection;
    text(sub, "--node", wanted.node, "NAME", "backups: only the source nodes of that name");
    sub.add_option("--disk", wanted.disks,
                   "backups: only the disks of that name; can be given again")
        ->type_name("NAME")
        ->allow_extra_args(false);
    text(sub, "--tape", wanted.tape, "NAME", "other jobs: only the tapes of that name");
    number(sub, "--session", wanted.session, "N", 0, 65535,
           "other jobs: only the tapes of that session");
    text(sub, "--override-path", wanted.overridePath, "PATH",
         "compares: instead of the items of every disk");
    number(sub, "--unix-kind", wanted.unixKind, "K", 1, 2,
           "backups: 1 puts the text after pszNodeOSVer, 2 after pszNodeName of UNIX nodes");
    text(sub, "--unix-text", wanted.unixText, "TEXT", "backups: the text");
  }
  void why(CLI::App& sub, const char* meaning) {
    flag(sub, "--why", request_.why, meaning)->excludes(sub.get_option("--html"));
  }
  void processes(CLI::App& sub) {
    sub.add_option("-j,--jobs", request_.processes, "share many files among so many processes")
        ->type_name("N")
        ->check(between(1, 256));
  }

  void describeFlatten() {
    CLI::App& sub = add("flatten", "flatten a job and print its record trees, or write an image",
                        "  bkoq flatten examples/nightly-backup.json\n"
                        "  bkoq flatten examples/nightly-backup.json --layout previous --json\n"
                        "  bkoq flatten examples/restore.json --tape NIGHT-01 --session 17\n"
                        "  bkoq flatten examples/nightly-backup.json -o nightly.image\n"
                        "  bkoq flatten jobs/*.json -o images/ --jobs 2\n"
                        "Exit status: 0 done, 1 a conversion failed, 2 bad usage, a bad file, or\n"
                        "output that cannot be written; of many files the highest.",
                        [this] { return flattenCommand(request_); });
    file(sub, "JOB", "the job file, or several with -o FOLDER/")->expected(1, 1000000);
    layout(sub, true, "which layout: both when printing, current for an image unless given");
    selection(sub);
    auto* image =
        sub.add_option("-o,--output", request_.image,
                       "write an image that only its owner can read; into a folder one of each job")
            ->type_name("IMAGE")
            ->check(notEmpty());
    flag(sub, "--short", request_.isShort, "leave out what is zero or null");
    look(sub);
    now(sub);
    jsonOfTrees(sub);
    secrets(sub);
    processes(sub);
    image->excludes(sub.get_option("--json"))->excludes(sub.get_option("--show-secrets"));
  }

  void describeShow() {
    CLI::App& sub = add("show", "print the record tree of a job or an image",
                        "  bkoq show examples/nightly-backup.json\n"
                        "  bkoq show examples/nightly-backup.json --annotate\n"
                        "  bkoq show examples/nightly-backup.json --html -o nightly.html\n"
                        "  bkoq show examples/nightly-backup.json --only BKDDISK\n"
                        "  bkoq show examples/nightly-backup.json --field "
                        "'pSourceNodes[0].pszNodeName' --why\n"
                        "  bkoq show examples/nightly-backup.json --field "
                        "'pSourceNodes[*].pMedia[*].pszDiskName'\n"
                        "  bkoq show examples/nightly-backup.json --at '#2+16'\n"
                        "  bkoq show nightly.image --at file:332\n"
                        "  bkoq show damaged.image --salvage",
                        [this] { return showCommand(request_); });
    file(sub, "FILE", "a job file or an image");
    layout(sub, true, "the layout that a job is flattened in; current unless given");
    selection(sub);
    auto* annotate = flag(sub, "--annotate", request_.annotate,
                          "print every byte of every block, with what it means");
    auto* field = sub.add_option("--field", request_.field,
                                 "print what is at that path only; * stands for any part of a "
                                 "name or index, ** for anything")
                      ->type_name("PATH");
    auto* at = sub.add_option("--at", request_.at,
                              "say what lies at a byte of a block, '#3+12', or of an image, "
                              "'file:332'")
                   ->type_name("PLACE");
    auto* only = sub.add_option("--only", request_.only, "print only the records of that name")
                     ->type_name("RECORD");
    sub.add_option("--depth", request_.depth, "print so many levels of records")
        ->type_name("N")
        ->check(between(1, 100));
    sub.add_option("--width", request_.width,
                   "fold texts at so many columns; at those of the terminal unless given")
        ->type_name("N")
        ->check(between(40, 10000));
    flag(sub, "--salvage", request_.salvage,
         "of a damaged image print all that can still be read, and say what is doubtful");
    field->excludes(at)->excludes(only)->excludes(annotate)->check(notEmpty());
    at->excludes(only)->excludes(annotate)->check(notEmpty());
    only->check(notEmpty());
    flag(sub, "--short", request_.isShort, "leave out what is zero or null");
    look(sub);
    now(sub);
    jsonOfTrees(sub);
    auto* html = page(sub, "print a page to look at in a browser, of a job with both layouts");
    why(sub, "with --field or --at, of a job file: say which of its lines decide it");
    secrets(sub);
    for (const char* other : {"--json", "--depth", "--width"}) {
      annotate->excludes(sub.get_option(other));
    }
    for (const char* other :
         {"--annotate", "--field", "--at", "--only", "--depth", "--width", "--json"}) {
      html->excludes(sub.get_option(other));
    }
  }

  void describeDiff() {
    CLI::App& sub = add("diff", "print the differences between two record trees",
                        "  bkoq diff --layouts examples/nightly-backup.json\n"
                        "  bkoq diff examples/verify.json examples/compare.json\n"
                        "  bkoq diff nightly.image examples/nightly-backup.json --json\n"
                        "  bkoq diff before.json after.json --why\n"
                        "  bkoq diff old.image new.image --ignore 'stSchedule' --ignore "
                        "'**.pszComments'\n"
                        "  bkoq diff monday.image tuesday.image --html -o what-changed.html",
                        [this] { return diffCommand(request_); });
    file(sub, "FILE", "two job files or images; one job file with --layouts")->expected(1, 2);
    auto* layouts = flag(sub, "--layouts", request_.layouts, "compare the two layouts of one job");
    layout(sub, false,
           "the layout that jobs are flattened in; that of an image beside, or the current one, "
           "unless given");
    sub.get_option("--layout")->excludes(layouts);
    sub.add_option("--only", request_.onlyPaths,
                   "only differences at that path or pattern; can be given again")
        ->type_name("PATTERN")
        ->allow_extra_args(false)
        ->check(notEmpty());
    sub.add_option("--ignore", request_.ignoredPaths,
                   "no differences at that path or pattern; can be given again")
        ->type_name("PATTERN")
        ->allow_extra_args(false)
        ->check(notEmpty());
    look(sub);
    now(sub);
    json(sub);
    page(sub, "print a page to look at in a browser, with the two trees side by side")
        ->excludes(sub.get_option("--json"));
    why(sub, "say which lines of the job files decide what differs");
    secrets(sub);
  }

  void describeCheck() {
    CLI::App& sub =
        add("check", "list all mistakes of job files, and what is probably not meant",
            "  bkoq check examples/nightly-backup.json\n"
            "  bkoq check --strict jobs/*.json\n"
            "  bkoq check my-job.json --json\n"
            "Exit status: 0 nothing found, 1 mistakes, with --strict also warnings, 2 a file\n"
            "that cannot be read or bad usage; of many files the highest.",
            [this] { return checkCommand(request_); });
    file(sub, "JOB", "the job files")->expected(1, 1000000);
    flag(sub, "--strict", request_.strict, "count warnings as mistakes");
    json(sub);
    processes(sub);
  }

  void describeExplain() {
    CLI::App& sub = add("explain", "say which line of a job file decides which record field",
                        "  bkoq explain examples/nightly-backup.json\n"
                        "  bkoq explain examples/nightly-backup.json --field "
                        "'pSourceNodes[0].ulNodeOptions'\n"
                        "  bkoq explain examples/nightly-backup.json --attribute options",
                        [this] { return explainCommand(request_); });
    file(sub, "JOB", "the job file");
    auto* field = sub.add_option("--field", request_.field,
                                 "only what decides that field of a record, and how; * and ** "
                                 "as for show")
                      ->type_name("PATH")
                      ->check(notEmpty());
    sub.add_option("--attribute", request_.attribute,
                   "only what that attribute decides; * and ** as for show")
        ->type_name("PATH")
        ->check(notEmpty())
        ->excludes(field);
    layout(sub, true, "in which layout: both, but the current one for a field, unless given");
    now(sub);
    json(sub);
  }

  void describeAttributes() {
    CLI::App& sub = add("attributes", "list what a job file can hold, with defaults and fields",
                        "  bkoq attributes backup\n"
                        "  bkoq attributes unix disk 'disk item'\n"
                        "  bkoq attributes --json",
                        [this] { return attributesCommand(request_); });
    sub.add_option("OBJECT", request_.files,
                   "a kind such as backup, unix or rotation, or what has none, such as disk or "
                   "'disk item'; all unless given")
        ->expected(1, 1000);
    sub.add_option("--width", request_.width,
                   "fold texts at so many columns; at those of the terminal unless given")
        ->type_name("N")
        ->check(between(40, 10000));
    json(sub);
  }

  void describeLayout() {
    CLI::App& sub = add("layout", "print the tables of the records",
                        "  bkoq layout BKNODE\n"
                        "  bkoq layout BKDTAPE_OLD --previous\n"
                        "  bkoq layout --compare\n"
                        "  bkoq layout --c > records.h\n"
                        "  bkoq layout --magic > bkoq.magic && file -m bkoq.magic my-job.image\n"
                        "  bkoq layout --kaitai > bkoq_image.ksy",
                        [this] { return layoutCommand(request_); });
    auto* record = sub.add_option("RECORD", request_.record, "its name; all records unless given");
    auto* previous = sub.add_flag_callback(
                            "--previous", [this] { request_.recordLayout = BKOQ_LAYOUT_PREVIOUS; },
                            "those of the previous layout")
                         ->disable_flag_override();
    auto* compare =
        flag(sub, "--compare", request_.compare, "only what differs between the layouts")
            ->excludes(previous);
    json(sub);
    flag(sub, "--c", request_.c, "print plain C structs")
        ->excludes(compare)
        ->excludes(sub.get_option("--json"));
    // Of images, so of all records of both layouts.
    auto* magic = flag(sub, "--magic", request_.magic, "print the entry of images for file(1)");
    auto* kaitai = flag(sub, "--kaitai", request_.kaitai,
                        "print a Kaitai Struct description of images of both layouts");
    for (auto* each : {magic, kaitai}) {
      each->excludes(record)->excludes(previous)->excludes(compare);
      for (const char* other : {"--json", "--c"}) each->excludes(sub.get_option(other));
    }
    kaitai->excludes(magic);
  }

  void describeSchema() {
    add("schema", "print the JSON Schema of job files, for editors", "  bkoq schema",
        [this] { return schemaCommand(request_); });
  }

  void describeNew() {
    CLI::App& sub = add("new", "print a job file to start from",
                        "  bkoq new backup\n"
                        "  bkoq new rotationBackup > my-job.json\n"
                        "  bkoq new restore --all",
                        [this] { return newCommand(request_); });
    std::string kinds;
    std::string list;
    for (const ObjectClass& each : jobs().classes) {
      kinds += (kinds.empty() ? "" : "|") + each.kind;
      list += (list.empty() ? "" : ", ") + each.kind;
    }
    sub.add_option("KIND", request_.kind, list)->type_name(kinds)->required();
    flag(sub, "--all", request_.all, "with every kind of every object that can be in it");
  }

  // For packagers: made from this same description.
  void describeCompletion() {
    CLI::App& completion =
        add("completion", "print the completion for a shell",
            "  source <(bkoq completion bash)\n"
            "  bkoq completion zsh > _bkoq",
            [this] {
              const CompletionWords words = {objectNames(), recordNames(BKOQ_LAYOUT_CURRENT),
                                             recordNames(BKOQ_LAYOUT_PREVIOUS)};
              print(shell_ == "zsh" ? zshCompletion(app_, words) : bashCompletion(app_, words));
              return kDone;
            });
    completion.add_option("SHELL", shell_, "bash or zsh")
        ->type_name("bash|zsh")
        ->required()
        ->check(oneOf({"bash", "zsh"}));
    add("man", "print the manual page", "  bkoq man | man -l -", [this] {
      print(manPage(app_));
      return kDone;
    });
  }

  CLI::App app_;
  Request request_;
  std::string shell_;
  std::function<Status()> command_;
};

}  // namespace

Status runCommandLine(int count, const char* const* arguments) {
  return CommandLine().run(count, arguments);
}

}  // namespace bkoq::tool
