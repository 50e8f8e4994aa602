#include "tools/description.h"

#include <cctype>
#include <sstream>
#include <string_view>
#include <vector>

namespace bkoq::tool {
namespace {

std::vector<const CLI::App*> commandsOf(const CLI::App& app) {
  return app.get_subcommands([](const CLI::App* command) { return !command->get_group().empty(); });
}

std::vector<const CLI::Option*> optionsOf(const CLI::App& app, bool isPositional) {
  return app.get_options(
      [=](const CLI::Option* option) { return option->nonpositional() != isPositional; });
}

bool isRepeated(const CLI::Option& option) { return option.get_items_expected_max() > 1; }

bool takesValue(const CLI::Option& option) { return option.get_items_expected_max() > 0; }

// "-o, --image"
std::string namesOf(const CLI::Option& option) {
  std::string names;
  for (const std::string& name : option.get_snames()) names += "-" + name + ", ";
  for (const std::string& name : option.get_lnames()) names += "--" + name + ", ";
  names.resize(names.size() - 2);
  return names;
}

std::string optionTerm(const CLI::Option& option) {
  return namesOf(option) + (takesValue(option) ? " " + option.get_type_name() : "");
}

std::string positionalTerm(const CLI::Option& option) { return option.get_name(true); }

std::string usageOf(const CLI::App& app) {
  std::string usage = app.get_parent() != nullptr
                          ? app.get_parent()->get_name() + " " + app.get_name()
                          : app.get_name();
  if (!commandsOf(app).empty()) return usage + " COMMAND";
  for (const CLI::Option* option : optionsOf(app, true)) {
    usage += " ";
    const std::string term = positionalTerm(*option) + (isRepeated(*option) ? " ..." : "");
    usage += option->get_required() ? term : "[" + term + "]";
  }
  return usage + " [OPTIONS]";
}

std::vector<std::string> split(const std::string& text, char separator) {
  std::vector<std::string> parts;
  std::istringstream stream(text);
  for (std::string part; std::getline(stream, part, separator);) parts.push_back(part);
  return parts;
}

constexpr unsigned int kHelpWidth = 80;

// A term and what it means.
std::string row(const std::string& term, const std::string& meaning, unsigned int columns) {
  constexpr std::size_t kTermWidth = 26;
  std::string text = "  " + term;
  text += text.size() + 2 > kTermWidth ? "\n" + std::string(kTermWidth, ' ')
                                       : std::string(kTermWidth - text.size(), ' ');
  std::size_t column = kTermWidth;
  for (const std::string& word : split(meaning, ' ')) {
    if (column > kTermWidth && column + 1 + word.size() > columns) {
      text += "\n" + std::string(kTermWidth, ' ');
      column = kTermWidth;
    }
    if (column > kTermWidth) text += ' ';
    text += word;
    column += word.size() + 1;
  }
  return text + "\n";
}

// "current|previous" lists words; anything else names what the value is.
std::vector<std::string> wordsOf(const CLI::Option& option) {
  const std::string type = option.get_type_name();
  return type.find('|') == std::string::npos ? std::vector<std::string>() : split(type, '|');
}

bool takesFile(const CLI::Option& option) {
  return option.get_type_name() == "IMAGE" || option.get_type_name() == "FILE";
}

bool takesRecord(const CLI::Option& option) {
  return option.get_type_name() == "RECORD" || option.get_name(true) == "RECORD";
}

bool takesObject(const CLI::Option& option) { return option.get_name(true) == "OBJECT"; }

std::string joined(const std::vector<std::string>& words, const char* separator) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : separator) + word;
  return text;
}

// "-o" and "--output"
std::vector<std::string> namesFor(const CLI::Option& option) {
  std::vector<std::string> names;
  for (const std::string& name : option.get_snames()) names.push_back("-" + name);
  for (const std::string& name : option.get_lnames()) names.push_back("--" + name);
  return names;
}

std::vector<std::string> flagsOf(const CLI::App& command) {
  std::vector<std::string> flags;
  for (const CLI::Option* option : optionsOf(command, false)) {
    for (const std::string& name : namesFor(*option)) flags.push_back(name);
  }
  return flags;
}

// Text as the man page's language has it.
std::string escaped(const std::string& text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool atStart = i == 0 || text[i - 1] == '\n';
    if (atStart && (text[i] == '.' || text[i] == '\'')) result += "\\&";
    if (text[i] == '\\') {
      result += "\\e";
    } else if (text[i] == '-') {
      result += "\\-";
    } else {
      result += text[i];
    }
  }
  return result;
}

std::string manOptions(const CLI::App& app) {
  std::string text;
  for (const bool isPositional : {true, false}) {
    for (const CLI::Option* option : optionsOf(app, isPositional)) {
      const std::string term = isPositional ? positionalTerm(*option) : optionTerm(*option);
      text += ".TP\n.B " + escaped(term) + "\n" + escaped(option->get_description()) + "\n";
    }
  }
  return text;
}

// What no help text has room for. The paths are those of the packages.
constexpr const char* kManEnd = R"(.SH EXIT STATUS
.TP
.B 0
done
.TP
.B 1
there are differences, a job file has mistakes, or a conversion failed
.TP
.B 2
bad usage, a file that cannot be read, or output that cannot be written; of many files the highest
status counts
.SH OUTPUT FILES
Images and pages may hold passwords: only their owner can read them. A file is replaced as a whole when
all has been written; until then what is written has no name, so a command that is interrupted or fails
leaves the old file and nothing else. Where the file system has no files without a name it has one that
begins with
.IR .bkoq\- ,
which only a kill that no program can notice leaves. A symbolic link is written through, as by other
programs, and stays a link; one that leads to nothing is refused, since a file would appear where nobody
looks for it. A file that the same command reads is refused. No image is written to a terminal.
.SH ENVIRONMENT
.TP
.B NO_COLOR
set and not empty: no colour, also on a terminal
.TP
.B TERM
"dumb": no colour either
.TP
.B TZ
the zone of times in job files that name none, and the local clock of the records
.TP
.B SOURCE_DATE_EPOCH
seconds since 1970 that count as now, unless
.B \-\-now
is given
.SH FILES
Below
.I /usr
for the packages, else below the prefix of the installation:
.TP
.I share/bkoq/job\-schema.json
the JSON Schema of job files, as
.B bkoq schema
prints it
.TP
.I share/bkoq/bkoq.magic
images for
.BR file (1),
as
.B bkoq layout \-\-magic
prints them
.TP
.I share/bkoq/bkoq_image.ksy
images for Kaitai Struct, as
.B bkoq layout \-\-kaitai
prints them
.TP
.I share/bkoq/gdb/bkoq_gdb.py
the same for
.BR gdb (1),
which loads it with the library
.TP
.I share/doc/bkoq/examples
a job file for each kind of job, and a client
.TP
.I share/doc/bkoq
the records as tables, the form of images, a tutorial and the reference pages
.SH EXAMPLES
A job file, its mistakes, and what the job turns into:
.PP
.nf
.RS
bkoq new backup > my\-job.json
bkoq check my\-job.json
bkoq flatten my\-job.json
.RE
.fi
.PP
An image to keep, and what has changed since:
.PP
.nf
.RS
bkoq flatten my\-job.json \-o monday.image
bkoq diff monday.image my\-job.json
.RE
.fi
.PP
One value, for a script:
.PP
.nf
.RS
bkoq show monday.image \-\-json \-\-field \(aqpSourceNodes[0].pszNodeName\(aq
.RE
.fi
.SH SEE ALSO
.BR bkoqkit (3),
.BR file (1),
.BR gdb (1)
)";

std::string upper(std::string text) {
  for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return text;
}

// In zsh's quotes, and in the brackets of its argument descriptions.
std::string zshText(const std::string& text) {
  std::string result;
  for (const char c : text) {
    if (c == '\'') {
      result += "'\\''";
    } else {
      if (std::string_view("[]:").find(c) != std::string_view::npos) result += '\\';
      result += c;
    }
  }
  return result;
}

std::string zshAction(const CLI::Option& option, bool isPositional) {
  const std::vector<std::string> words = wordsOf(option);
  if (!words.empty()) return "(" + joined(words, " ") + ")";
  if (takesRecord(option)) return "_bkoq_records";
  if (takesObject(option)) return "_bkoq_objects";
  return isPositional || takesFile(option) ? "_files" : " ";
}

// The command of bash that completes a value; empty when nothing is known of it.
std::string bashAction(const CLI::Option& option, bool isPositional) {
  const std::vector<std::string> words = wordsOf(option);
  if (!words.empty()) return "_bkoq_words '" + joined(words, "\n") + "'";
  if (takesRecord(option)) return "_bkoq_records";
  if (takesObject(option)) return "_bkoq_objects";
  return isPositional || takesFile(option) ? "_bkoq_files" : "";
}

// Names may have blanks, and what a file is called is never read as shell code.
constexpr const char* kBashFunctions = R"(
# Of the lines those that begin like the word.
_bkoq_words() {
  local line
  while IFS= read -r line; do
    if [[ $line == "$word"* ]]; then COMPREPLY+=("$line"); fi
  done <<< "$1"
}

# The shell quotes the blanks of names where it takes them for files.
_bkoq_files() {
  compopt -o filenames 2> /dev/null
  mapfile -t COMPREPLY < <(compgen -f -- "$word")
}

_bkoq_objects() {
  compopt -o filenames 2> /dev/null
  _bkoq_words "$_bkoq_object_names"
}

# Those of the layout that is asked for.
_bkoq_records() {
  local each
  for each in "${COMP_WORDS[@]}"; do
    case $each in
      --previous|previous) _bkoq_words "$_bkoq_previous_records"; return ;;
    esac
  done
  _bkoq_words "$_bkoq_current_records"
}

_bkoq() {
  local word=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]}
  COMPREPLY=()
  # "--layout=current" comes as three words.
  if [[ $word == = ]]; then
    word=
  elif [[ $previous == = ]]; then
    previous=${COMP_WORDS[COMP_CWORD-2]}
  fi
  # What is typed may be quoted.
  case $word in
    \"*|\'*) word=${word:1} ;;
    *) word=${word//\\/} ;;
  esac
  if [[ $COMP_CWORD -eq 1 ]]; then
    _bkoq_words ')";

}  // namespace

std::string helpText(const CLI::App& app, unsigned int columns) {
  if (columns == 0 || columns > kHelpWidth) columns = kHelpWidth;
  std::string text = app.get_description() + "\n\nUsage: " + usageOf(app) + "\n";
  const auto commands = commandsOf(app);
  if (!commands.empty()) {
    text += "\nCommands:\n";
    for (const CLI::App* command : commands) {
      text += row(command->get_name(), command->get_description(), columns);
    }
  }
  const auto positionals = optionsOf(app, true);
  if (!positionals.empty()) text += "\n";
  for (const CLI::Option* option : positionals) {
    text += row(positionalTerm(*option), option->get_description(), columns);
  }
  text += "\nOptions:\n";
  for (const CLI::Option* option : optionsOf(app, false)) {
    text += row(optionTerm(*option), option->get_description(), columns);
  }
  if (!app.get_footer().empty()) text += "\n" + app.get_footer() + "\n";
  return text;
}

std::string manPage(const CLI::App& app) {
  const std::string& name = app.get_name();
  std::string text = ".TH " + upper(name) + " 1\n.SH NAME\n" + name + " \\- " +
                     escaped(app.get_description()) + "\n.SH SYNOPSIS\n.B " +
                     escaped(usageOf(app)) + "\n.SH OPTIONS\n" + manOptions(app) + ".SH COMMANDS\n";
  for (const CLI::App* command : commandsOf(app)) {
    text += ".SS " + escaped(usageOf(*command)) + "\n" + escaped(command->get_description()) +
            "\n" + manOptions(*command);
    if (!command->get_footer().empty()) {
      text += ".PP\n.nf\n" + escaped(command->get_footer()) + "\n.fi\n";
    }
  }
  return text + ".SH NOTES\n.nf\n" + escaped(app.get_footer()) + "\n.fi\n" + kManEnd;
}

std::string bashCompletion(const CLI::App& app, const CompletionWords& words) {
  const std::string& name = app.get_name();
  std::vector<std::string> names;
  std::string cases;
  for (const CLI::App* command : commandsOf(app)) {
    names.push_back(command->get_name());
    std::string values;
    for (const CLI::Option* option : optionsOf(*command, false)) {
      if (!takesValue(*option)) continue;
      const std::string action = bashAction(*option, false);
      values += "        " + joined(namesFor(*option), "|") + ") " +
                (action.empty() ? "" : action + "; ") + "return ;;\n";
    }
    std::string arguments;
    for (const CLI::Option* option : optionsOf(*command, true)) {
      arguments = bashAction(*option, true);
    }
    cases += "    " + command->get_name() + ")\n";
    if (!values.empty()) cases += "      case $previous in\n" + values + "      esac\n";
    cases += "      if [[ $word == -* ]]; then\n        _bkoq_words '" +
             joined(flagsOf(*command), "\n") + "'\n";
    if (!arguments.empty()) cases += "      else\n        " + arguments + "\n";
    cases += "      fi ;;\n";
  }
  return "# bash completion of " + name + "\n_bkoq_object_names='" + joined(words.objects, "\n") +
         "'\n_bkoq_current_records='" + joined(words.currentRecords, "\n") +
         "'\n_bkoq_previous_records='" + joined(words.previousRecords, "\n") + "'\n" +
         kBashFunctions + joined(names, "\n") + "\nhelp\n" + joined(flagsOf(app), "\n") +
         "'\n    return\n  fi\n  case ${COMP_WORDS[1]} in\n    help) _bkoq_words '" +
         joined(names, "\n") + "' ;;\n" + cases + "  esac\n}\ncomplete -F _bkoq " + name + "\n";
}

std::string zshCompletion(const CLI::App& app, const CompletionWords& words) {
  const std::string& name = app.get_name();
  std::string list;
  std::string cases;
  for (const CLI::App* command : commandsOf(app)) {
    list +=
        "    '" + zshText(command->get_name()) + ":" + zshText(command->get_description()) + "'\n";
    cases += "    " + command->get_name() + ")\n      _arguments";
    for (const CLI::Option* option : optionsOf(*command, false)) {
      for (const std::string& each : namesFor(*option)) {
        const bool isLong = each.compare(0, 2, "--") == 0;
        cases += " \\\n        '" + std::string(isRepeated(*option) ? "*" : "") + each +
                 (isLong && takesValue(*option) ? "=" : "") + "[" +
                 zshText(option->get_description()) + "]";
        if (takesValue(*option)) {
          cases += ":" + (wordsOf(*option).empty() ? option->get_type_name() : "value") + ":" +
                   zshAction(*option, false);
        }
        cases += "'";
      }
    }
    for (const CLI::Option* option : optionsOf(*command, true)) {
      cases += " \\\n        '" + std::string(isRepeated(*option) ? "*" : "") + ":" +
               (wordsOf(*option).empty() ? zshText(positionalTerm(*option)) : "value") + ":" +
               zshAction(*option, true) + "'";
    }
    cases += " ;;\n";
  }
  const auto quoted = [](const std::vector<std::string>& all) {
    return "'" + joined(all, "' '") + "'";
  };
  return "#compdef " + name + "\n_bkoq_objects() {\n  local -a objects=(" + quoted(words.objects) +
         ")\n  compadd -a objects\n}\n_bkoq_records() {\n  local -a records=(" +
         joined(words.currentRecords, " ") +
         ")\n  (( ${words[(I)(--previous|previous|--layout=previous)]} )) &&\n    records=(" +
         joined(words.previousRecords, " ") + ")\n  compadd -a records\n}\nlocal -a commands=(\n" +
         list +
         "    'help:print the help of a command'\n)\n"
         "if (( CURRENT == 2 )); then\n  _describe command commands\nelse\n"
         "  local command=$words[2]\n  shift words\n  (( CURRENT-- ))\n  case $command in\n"
         "    help)\n      _describe command commands ;;\n" +
         cases + "  esac\nfi\n";
}

}  // namespace bkoq::tool
