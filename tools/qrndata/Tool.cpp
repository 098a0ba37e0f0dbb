// The command line: verbs, their options, exit codes.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "tools/qrndata/Paths.h"
#include "tools/qrndata/Verbs.h"

namespace qrndata {

namespace {

const std::map<std::string, OnUnmappable> kUnmappableChoices = {{"error", OnUnmappable::Error},
                                                                {"replace", OnUnmappable::Replace},
                                                                {"skip", OnUnmappable::Skip}};
const std::map<std::string, Encoding> kEncodings = {{"utf-8", Encoding::Utf8},
                                                    {"cp932", Encoding::CodePage932}};

const std::map<std::string, ExportFormat> kFormats = {{"csv", ExportFormat::Csv},
                                                      {"json", ExportFormat::Json},
                                                      {"jsonl", ExportFormat::JsonLines},
                                                      {"sqlite", ExportFormat::Sqlite},
                                                      {"xlsx", ExportFormat::Xlsx}};

using Choices = std::vector<std::string>;

std::string Joined(const Choices& choices, std::string_view between, std::string_view beforeLast) {
  std::string all;
  for (const std::string& choice : choices) {
    if (!all.empty()) all += &choice == &choices.back() ? beforeLast : between;
    all += choice;
  }
  return all;
}

std::string WithStandard(std::string_view text, std::string_view standard) {
  return std::string(text).append(" (standard: ").append(standard).append(")");
}

// "csv|json" in the help, what was expected in the message.
void AddChoice(CLI::App* verb, const char* name, std::string& value, const Choices& choices,
               const char* text) {
  const auto check = [choices](const std::string& given) {
    const bool isOne = std::find(choices.begin(), choices.end(), given) != choices.end();
    return isOne ? std::string()
                 : "expected " + Joined(choices, ", ", " or ") + ", not \"" + given + "\"";
  };
  verb->add_option(name, value, WithStandard(text, value))
      ->check(CLI::Validator(check, "", ""))
      ->type_name(Joined(choices, "|", "|"));
}

template <class Number>
CLI::Option* AddCount(CLI::App* verb, const char* name, Number& value, const char* text) {
  return verb->add_option(name, value, WithStandard(text, std::to_string(value)))
      ->type_name("NUMBER");
}

bool IsDelimiter(const std::string& text) {
  if (text == "tab" || text == "\\t") return true;
  const bool isOne = text.size() == 1 && (text[0] & 0x80) == 0;
  return isOne && text[0] != '"' && (text[0] >= ' ' || text[0] == '\t');
}

char DelimiterOf(const std::string& text) { return text.size() == 1 ? text[0] : '\t'; }

CLI::Validator Between(int least, int most) { return CLI::Range(least, most).description(""); }

// The texts that the options are parsed into, and the verbs that run on them.
class CommandLine {
 public:
  explicit CommandLine(const Streams& streams) : streams_(streams) {
    // A path may begin with a slash, also on Windows.
    app_.allow_windows_style_options(false);
    app_.require_subcommand(1);
    app_.get_formatter()->label("SUBCOMMAND", "VERB");
    app_.footer(
        "Exit codes: 0 done, 1 done but rows were refused or faults found, 2 wrong command "
        "line,\n3 wrong schema, CSV file or name, 4 a file that cannot be read or written, 130 "
        "interrupted.");
    AddBuild();
    AddImport();
    AddExport();
    AddShow();
    AddCheck();
    AddConvert();
    AddSchema();
    AddCopy();
  }

  int Run(std::vector<std::string> arguments) {
    RequireVerb(arguments);
    std::reverse(arguments.begin(), arguments.end());
    try {
      app_.parse(std::move(arguments));
    } catch (const CLI::ParseError& error) {
      return app_.exit(error, streams_.out, streams_.err) == 0 ? kDone : kUsage;
    }
    return run_();
  }

 private:
  CLI::App* AddVerb(const char* name, const char* text, std::function<int()> run) {
    CLI::App* verb = app_.add_subcommand(name, text)->group("Verbs");
    verb->callback([this, run = std::move(run)] { run_ = run; });
    return verb;
  }

  void AddDirectory(CLI::App* verb) {
    AddPlace(verb, "DIR", directory_, "directory of the dictionary files")->required();
  }

  // Texts without a mention of their type in the help.
  static CLI::Option* AddPlace(CLI::App* verb, const char* name, std::string& value,
                               const char* text) {
    return verb->add_option(name, value, text)->type_name("");
  }

  void AddTextOptions(CLI::App* verb, const char* encoding, std::string& choice,
                      const char* onUnmappable) {
    AddChoice(verb, "--encoding", encoding_, {"utf-8", "cp932"}, encoding);
    AddChoice(verb, "--on-unmappable", choice, {"error", "replace", "skip"}, onUnmappable);
  }

  // Throws Failure that names the verbs.
  void RequireVerb(const std::vector<std::string>& arguments) const;

  void AddColumnOptions(CLI::App* verb);
  void AddLines(CLI::App* verb);
  void AddKeys(CLI::App* verb);
  void AddDelimiter(CLI::App* verb);
  void AddBuild();
  void AddImport();
  void AddExport();
  void AddShow();
  void AddCheck();
  void AddConvert();
  void AddSchema();
  void AddCopy();

  const Streams& streams_;
  CLI::App app_{"Builds, fills, shows and checks dictionaries and their data files.", "qrndata"};
  std::function<int()> run_;
  std::string schema_, directory_, target_, table_, file_, output_, refusals_, format_ = "csv";
  std::string delimiter_ = ",", update_, replace_;
  bool isBare_ = false;  // no first line with names
  std::string onBadInput_ = "error", onBadStored_ = "replace", encoding_ = "utf-8";
  BuildOptions build_;
  ImportOptions import_;
  ExportOptions export_;
  CheckOptions check_;
  ConvertOptions convert_;
  CopyOptions copy_;
};

void CommandLine::RequireVerb(const std::vector<std::string>& arguments) const {
  Choices verbs;
  for (const CLI::App* verb : app_.get_subcommands({})) verbs.push_back(verb->get_name());
  const std::string expected = "expected " + Joined(verbs, ", ", " or ");
  if (arguments.empty()) {
    throw Failure(kUsage, "no verb: " + expected + "; --help tells what they do");
  }
  const std::string& first = arguments.front();
  const bool isVerb = std::find(verbs.begin(), verbs.end(), first) != verbs.end();
  if (!isVerb && !first.starts_with('-')) {
    throw Failure(kUsage, "there is no verb \"" + first + "\": " + expected);
  }
}

void CommandLine::AddBuild() {
  CLI::App* verb =
      AddVerb("build", "makes a dictionary and its empty data files from a schema", [this] {
        build_.schema = PathFromUtf8(schema_);
        build_.directory = PathFromUtf8(directory_);
        return RunBuild(build_, streams_);
      });
  AddPlace(verb, "SCHEMA", schema_, "schema file (TOML)")->required();
  AddDirectory(verb);
  CLI::Option* replace =
      verb->add_flag("--replace", build_.replace, "replace what is there, data included");
  verb->add_flag("--keep-data", build_.keepData,
                 "replace the dictionary, keep data files that fit the schema")
      ->excludes(replace);
}

void CommandLine::AddImport() {
  CLI::App* verb = AddVerb("import", "adds the rows of a CSV file to a table", [this] {
    import_.directory = PathFromUtf8(directory_);
    import_.file = PathFromUtf8(file_);
    import_.refusals = PathFromUtf8(refusals_);
    import_.table = table_;
    import_.onUnmappable = kUnmappableChoices.at(onBadInput_);
    import_.encoding = kEncodings.at(encoding_);
    import_.delimiter = DelimiterOf(delimiter_);
    import_.hasHeader = !isBare_;
    import_.changeMode = update_.empty() ? ChangeMode::Replace : ChangeMode::Update;
    import_.changeKey = update_.empty() ? replace_ : update_;
    return RunImport(import_, streams_);
  });
  AddDirectory(verb);
  AddPlace(verb, "TABLE", table_, "table")->required();
  AddPlace(verb, "FILE", file_,
           "CSV file; its first line names the fields; - for the standard input")
      ->required();
  AddColumnOptions(verb);
  AddTextOptions(verb, "what the file is in", onBadInput_,
                 "a character that code page 932 does not have, or bytes that are none: error "
                 "refuses the row, replace "
                 "stores ? in its place, skip leaves the character out");
  AddCount(verb, "--batch", import_.batch, "rows stored at once, 1 to 10000")
      ->check(Between(1, 10000));
  AddCount(verb, "--patience", import_.patience,
           "seconds that a row waits for what another program holds, 0 to 3600")
      ->check(Between(0, 3600));
  verb->add_option("--refused", refusals_, "file for the rows that were not taken, as they stood")
      ->type_name("FILE");
  AddCount(verb, "--show-refused", import_.shown, "how many refusals are listed");
  verb->add_option("--max-errors", import_.maxErrors, "stop when so many rows are refused")
      ->type_name("NUMBER")
      ->check(CLI::PositiveNumber);
  AddLines(verb);
  AddKeys(verb);
  verb->add_flag("--dry-run", import_.isDryRun,
                 "store nothing, check the rows: their form, their values, and unique keys against "
                 "the table and each other")
      ->excludes(verb->get_option("--update"))
      ->excludes(verb->get_option("--replace"));
}

void CommandLine::AddColumnOptions(CLI::App* verb) {
  AddDelimiter(verb);
  verb->add_option("--columns", import_.columns,
                   "\"CSV name=Field,...\" for columns that are not named like their fields, "
                   "\"CSV name=\" for one that is left out; with --no-header \"Field,,Field\" in "
                   "the columns' order")
      ->type_name("LIST");
  verb->add_flag("--no-header", isBare_, "the first line is a row, too");
}

void CommandLine::AddLines(CLI::App* verb) {
  verb->add_option("--first", import_.first, "leave out the rows before this line of the file")
      ->type_name("LINE");
  verb->add_option("--last", import_.last, "leave out the rows behind this line of the file")
      ->type_name("LINE");
}

void CommandLine::AddKeys(CLI::App* verb) {
  CLI::Option* update =
      verb->add_option(
              "--update", update_,
              "change the records that have the rows' values in this key, which takes no "
              "duplicates: the fields that have a column; a row without a record is refused")
          ->type_name("KEY");
  verb->add_option("--replace", replace_,
                   "put each row in the place of the record with its value in this key; a row "
                   "without a record is a new one")
      ->type_name("KEY")
      ->excludes(update);
}

void CommandLine::AddDelimiter(CLI::App* verb) {
  const auto check = [](const std::string& given) {
    return IsDelimiter(given)
               ? std::string()
               : "expected one character of ASCII, no quote, or tab, not \"" + given + "\"";
  };
  verb->add_option("--delimiter", delimiter_, WithStandard("what parts the cells", delimiter_))
      ->check(CLI::Validator(check, "", ""))
      ->type_name("CHARACTER|tab");
}

void CommandLine::AddExport() {
  CLI::App* verb =
      AddVerb("export", "writes records as CSV or JSON, into a database or a workbook", [this] {
        export_.directory = PathFromUtf8(directory_);
        if (output_ != "-") export_.output = PathFromUtf8(output_);
        export_.format = kFormats.at(format_);
        export_.onUnmappable = kUnmappableChoices.at(onBadStored_);
        export_.encoding = kEncodings.at(encoding_);
        return RunExport(export_, streams_);
      });
  AddDirectory(verb);
  verb->add_option("TABLE", export_.tables, "tables; all where none is named")->type_name("");
  AddChoice(verb, "--format", format_, {"csv", "json", "jsonl", "sqlite", "xlsx"},
            "what is written");
  verb->add_option("--output,-o", output_,
                   "file, or folder for the files of several tables; - for the standard output. A "
                   "file that is there is replaced at the end")
      ->type_name("FILE|FOLDER|-");
  verb->add_option("--fields", export_.fields,
                   "\"Field,Field,...\" that are written, in this order")
      ->type_name("LIST");
  verb->add_option(
          "--where", export_.where,
          "search condition for the records, such as \"@Total >= 500000 & @Code <> 'A B'\"")
      ->type_name("CONDITION");
  verb->add_option("--key", export_.key,
                   "key that gives the order: its name, number or first field")
      ->type_name("KEY");
  AddTextOptions(verb, "what the texts are written in", onBadStored_,
                 "stored bytes that are no character, which are told in any case: error leaves the "
                 "record out, replace writes U+FFFD (cp932: ?) in their place, skip leaves the "
                 "bytes out");
}

void CommandLine::AddShow() {
  CLI::App* verb = AddVerb("show", "shows what a dictionary, table or data file is made of",
                           [this] { return RunShow(PathFromUtf8(directory_), table_, streams_); });
  AddPlace(verb, "DIR", directory_, "directory of the dictionary files, or one data file")
      ->required();
  AddPlace(verb, "TABLE", table_, "one table, with fields, keys and data file");
}

void CommandLine::AddCheck() {
  CLI::App* verb =
      AddVerb("check", "compares the dictionary with its data files and every key with its records",
              [this] {
                check_.directory = PathFromUtf8(directory_);
                check_.table = table_;
                return RunCheck(check_, streams_);
              });
  AddDirectory(verb);
  AddPlace(verb, "TABLE", table_, "one table only");
  AddCount(verb, "--show-faults", check_.shown, "how many faults are listed for each table");
}

void CommandLine::AddConvert() {
  CLI::App* verb =
      AddVerb("convert", "brings files of an older record manager into today's format", [this] {
        convert_.directory = PathFromUtf8(directory_);
        convert_.target = PathFromUtf8(target_);
        return RunConvert(convert_, streams_);
      });
  AddPlace(verb, "OLD_DIR", directory_, "directory of the old files; nothing is written there")
      ->required();
  AddPlace(verb, "NEW_DIR", target_, "directory for the new ones")->required();
  verb->add_flag("--unlock", convert_.unlock,
                 "take files with an owner name too; the new ones have none");
  verb->add_flag("--salvage", convert_.salvage,
                 "take of damaged files what can be read, and list what cannot");
  AddCount(verb, "--show-faults", convert_.shown, "how many faults are listed for each file");
}

void CommandLine::AddSchema() {
  CLI::App* verb = AddVerb("schema", "writes a dictionary back as a schema", [this] {
    return RunSchema({PathFromUtf8(directory_), PathFromUtf8(output_)}, streams_);
  });
  AddDirectory(verb);
  verb->add_option("--output,-o", output_, "file instead of the standard output")
      ->type_name("FILE");
}

void CommandLine::AddCopy() {
  CLI::App* verb = AddVerb(
      "copy", "copies a dictionary and its data files in one state while others work", [this] {
        copy_.directory = PathFromUtf8(directory_);
        copy_.target = PathFromUtf8(output_);
        return RunCopy(copy_, streams_);
      });
  AddDirectory(verb);
  AddPlace(verb, "DIR2", output_, "new directory for the copy")->required();
  AddCount(verb, "--patience", copy_.patience,
           "seconds that it looks for a moment at which no file is being written, 0 to 3600")
      ->check(Between(0, 3600));
}

}  // namespace

int RunTool(std::vector<std::string> arguments, const Streams& streams) {
  return RunGuarded("qrndata", streams,
                    [&] { return CommandLine(streams).Run(std::move(arguments)); });
}

}  // namespace qrndata
