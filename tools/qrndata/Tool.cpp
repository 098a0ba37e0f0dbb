// The command line: verbs, their options, exit codes.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "tools/qrndata/Messages.h"
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

std::string WithStandard(Message text, std::string_view standard) {
  return Say(Message::WithStandard, Say(text), standard);
}

std::string Listed(const Choices& choices) { return Joined(choices, ", ", Say(Message::OrLast)); }

CLI::Validator OneOf(const Choices& choices) {
  const auto check = [choices](const std::string& given) {
    const bool isOne = std::ranges::find(choices, given) != choices.end();
    return isOne ? std::string() : Say(Message::ChoiceExpected, Listed(choices), given);
  };
  return {check, "", ""};
}

CLI::Validator Between(int64_t least, int64_t most) {
  const auto check = [least, most](const std::string& given) {
    int64_t number = 0;
    const char* end = given.data() + given.size();
    const auto parsed = std::from_chars(given.data(), end, number);
    const bool isTaken =
        parsed.ec == std::errc() && parsed.ptr == end && number >= least && number <= most;
    return isTaken ? std::string() : Say(Message::CountExpected, least, most, given);
  };
  return {check, "", ""};
}

// "csv|json" in the help, what was expected in the message.
void AddChoice(CLI::App* verb, const char* name, std::string& value, const Choices& choices,
               Message text) {
  verb->add_option(name, value, WithStandard(text, value))
      ->check(OneOf(choices))
      ->type_name(Joined(choices, "|", "|"));
}

template <class Number>
void AddCount(CLI::App* verb, const char* name, Number& value, Message text, int64_t least = 0,
              int64_t most = UINT32_MAX) {
  verb->add_option(name, value, WithStandard(text, std::to_string(value)))
      ->type_name("NUMBER")
      ->check(Between(least, most));
}

bool IsDelimiter(const std::string& text) {
  if (text == "tab" || text == "\\t") return true;
  const bool isOne = text.size() == 1 && (text[0] & 0x80) == 0;
  return isOne && text[0] != '"' && (text[0] >= ' ' || text[0] == '\t');
}

char DelimiterOf(const std::string& text) { return text.size() == 1 ? text[0] : '\t'; }

// What the library of the command line words in English.
constexpr std::initializer_list<Message> kFaults = {
    Message::FaultUnexpected, Message::FaultUnexpectedOnes, Message::FaultMissing,
    Message::FaultConvert,    Message::FaultExcludes,       Message::FaultRequired};

// Takes --lang out of the arguments, wherever it stands: it words the others. What it cannot be
// stays.
Language TakeLanguage(std::vector<std::string>& arguments, Language standard) {
  const auto taken = [](const std::string& given) -> std::optional<Language> {
    if (given == "ja") return Language::Japanese;
    if (given == "en") return Language::English;
    return std::nullopt;
  };
  constexpr std::string_view kName = "--lang";
  for (auto at = arguments.begin(); at != arguments.end(); ++at) {
    if (!at->starts_with(kName)) continue;
    const bool isApart = *at == kName && at + 1 != arguments.end();
    const auto language =
        taken(isApart ? *(at + 1) : at->substr(std::min(kName.size() + 1, at->size())));
    if (!language) continue;
    arguments.erase(at, at + (isApart ? 2 : 1));
    return *language;
  }
  return standard;
}

// The texts that the options are parsed into, and the verbs that run on them.
class CommandLine {
 public:
  explicit CommandLine(const Streams& streams) : streams_(streams) {
    // A path may begin with a slash, also on Windows.
    app_.allow_windows_style_options(false);
    app_.require_subcommand(1);
    app_.fallthrough();
    WordHelp();
    app_.footer(Say(Message::HelpExitCodes));
    AddBuild();
    AddImport();
    AddExport();
    AddShow();
    AddCheck();
    AddConvert();
    AddSchema();
    AddCopy();
    AddMove();
    AddPublish();
    AddStatus();
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
  CLI::App* AddVerb(const char* name, Message text, std::function<int()> run) {
    CLI::App* verb = app_.add_subcommand(name, Say(text))->group(Say(Message::HelpVerbGroup));
    verb->callback([this, run = std::move(run)] { run_ = run; });
    return verb;
  }

  void AddDirectory(CLI::App* verb) {
    AddPlace(verb, "DIR", directory_, Message::HelpDir)->required();
  }

  // Texts without a mention of their type in the help.
  static CLI::Option* AddPlace(CLI::App* verb, const char* name, std::string& value, Message text) {
    return verb->add_option(name, value, Say(text))->type_name("");
  }

  void AddTextOptions(CLI::App* verb, Message encoding, std::string& choice, Message onUnmappable) {
    AddChoice(verb, "--encoding", encoding_, {"utf-8", "cp932"}, encoding);
    AddChoice(verb, "--on-unmappable", choice, {"error", "replace", "skip"}, onUnmappable);
  }

  // Before the verbs, which take it over.
  void WordHelp();
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
  void AddMove();
  void AddPublish();
  void AddStatus();

  const Streams& streams_;
  CLI::App app_{Say(Message::HelpProgram), "qrndata"};
  std::function<int()> run_;
  std::string schema_, directory_, target_, table_, file_, output_, refusals_, format_ = "csv";
  std::string delimiter_ = ",", update_, replace_;
  std::string language_;  // of which only what it cannot be comes here
  bool isBare_ = false;   // no first line with names
  std::string onBadInput_ = "error", onBadStored_ = "replace", encoding_ = "utf-8";
  BuildOptions build_;
  ImportOptions import_;
  ExportOptions export_;
  CheckOptions check_;
  ConvertOptions convert_;
  CopyOptions copy_;
  MoveOptions move_;
  std::string listing_ = "text";
};

void CommandLine::WordHelp() {
  const std::pair<const char*, Message> kLabels[] = {{"Usage", Message::HelpUsage},
                                                     {"Positionals", Message::HelpPositionals},
                                                     {"REQUIRED", Message::HelpRequired},
                                                     {"Excludes", Message::HelpExcludes}};
  for (const auto& [label, text] : kLabels) app_.get_formatter()->label(label, Say(text));
  app_.get_formatter()->label("SUBCOMMAND", "VERB");
  app_.option_defaults()->group(Say(Message::HelpOptionGroup));
  app_.set_help_flag("-h,--help", Say(Message::HelpHelp));
  app_.failure_message([](const CLI::App*, const CLI::Error& error) {
    return Reworded(error.what(), kFaults) + "\n" + Say(Message::RunWithHelp) + "\n";
  });
  const Choices languages = {"ja", "en"};
  app_.add_option("--lang", language_, Say(Message::HelpLanguage))
      ->check(OneOf(languages))
      ->type_name("ja|en");
}

void CommandLine::RequireVerb(const std::vector<std::string>& arguments) const {
  Choices verbs;
  for (const CLI::App* verb : app_.get_subcommands({})) verbs.push_back(verb->get_name());
  if (arguments.empty()) throw Failure(kUsage, Say(Message::NoVerb, Listed(verbs)));
  const std::string& first = arguments.front();
  const bool isVerb = std::find(verbs.begin(), verbs.end(), first) != verbs.end();
  if (!isVerb && !first.starts_with('-')) {
    throw Failure(kUsage, Say(Message::NoSuchVerb, first, Listed(verbs)));
  }
}

void CommandLine::AddBuild() {
  CLI::App* verb = AddVerb("build", Message::HelpBuild, [this] {
    build_.schema = PathFromUtf8(schema_);
    build_.directory = PathFromUtf8(directory_);
    return RunBuild(build_, streams_);
  });
  AddPlace(verb, "SCHEMA", schema_, Message::HelpSchemaFile)->required();
  AddDirectory(verb);
  CLI::Option* replace =
      verb->add_flag("--replace", build_.replace, Say(Message::HelpBuildReplace));
  verb->add_flag("--keep-data", build_.keepData, Say(Message::HelpKeepData))->excludes(replace);
}

void CommandLine::AddImport() {
  CLI::App* verb = AddVerb("import", Message::HelpImport, [this] {
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
  AddPlace(verb, "TABLE", table_, Message::HelpTable)->required();
  AddPlace(verb, "FILE", file_, Message::HelpCsvFile)->required();
  AddColumnOptions(verb);
  AddTextOptions(verb, Message::HelpInputEncoding, onBadInput_, Message::HelpInputOdd);
  AddCount(verb, "--batch", import_.batch, Message::HelpBatch, 1, 10000);
  AddCount(verb, "--patience", import_.patience, Message::HelpPatience, 0, 3600);
  verb->add_option("--refused", refusals_, Say(Message::HelpRefused))->type_name("FILE");
  AddCount(verb, "--show-refused", import_.shown, Message::HelpShowRefused);
  verb->add_option("--max-errors", import_.maxErrors, Say(Message::HelpMaxErrors))
      ->type_name("NUMBER")
      ->check(Between(1, INT64_MAX));
  AddLines(verb);
  AddKeys(verb);
  verb->add_flag("--dry-run", import_.isDryRun, Say(Message::HelpDryRun));
}

void CommandLine::AddColumnOptions(CLI::App* verb) {
  AddDelimiter(verb);
  verb->add_option("--columns", import_.columns, Say(Message::HelpColumns))->type_name("LIST");
  verb->add_flag("--no-header", isBare_, Say(Message::HelpNoHeader));
}

void CommandLine::AddLines(CLI::App* verb) {
  verb->add_option("--first", import_.first, Say(Message::HelpFirst))->type_name("LINE");
  verb->add_option("--last", import_.last, Say(Message::HelpLast))->type_name("LINE");
}

void CommandLine::AddKeys(CLI::App* verb) {
  CLI::Option* update =
      verb->add_option("--update", update_, Say(Message::HelpUpdate))->type_name("KEY");
  verb->add_option("--replace", replace_, Say(Message::HelpReplace))
      ->type_name("KEY")
      ->excludes(update);
}

void CommandLine::AddDelimiter(CLI::App* verb) {
  const auto check = [](const std::string& given) {
    return IsDelimiter(given) ? std::string() : Say(Message::DelimiterOptionExpected, given);
  };
  verb->add_option("--delimiter", delimiter_, WithStandard(Message::HelpDelimiter, delimiter_))
      ->check(CLI::Validator(check, "", ""))
      ->type_name("CHARACTER|tab");
}

void CommandLine::AddExport() {
  CLI::App* verb = AddVerb("export", Message::HelpExport, [this] {
    export_.directory = PathFromUtf8(directory_);
    if (output_ != "-") export_.output = PathFromUtf8(output_);
    export_.format = kFormats.at(format_);
    export_.onUnmappable = kUnmappableChoices.at(onBadStored_);
    export_.encoding = kEncodings.at(encoding_);
    return RunExport(export_, streams_);
  });
  AddDirectory(verb);
  verb->add_option("TABLE", export_.tables, Say(Message::HelpTables))->type_name("");
  AddChoice(verb, "--format", format_, {"csv", "json", "jsonl", "sqlite", "xlsx"},
            Message::HelpFormat);
  verb->add_option("--output,-o", output_, Say(Message::HelpOutput))->type_name("FILE|FOLDER|-");
  verb->add_option("--fields", export_.fields, Say(Message::HelpFields))->type_name("LIST");
  verb->add_option("--where", export_.where, Say(Message::HelpWhere))->type_name("CONDITION");
  verb->add_option("--key", export_.key, Say(Message::HelpKey))->type_name("KEY");
  AddTextOptions(verb, Message::HelpOutputEncoding, onBadStored_, Message::HelpOutputOdd);
}

void CommandLine::AddShow() {
  CLI::App* verb = AddVerb("show", Message::HelpShow,
                           [this] { return RunShow(PathFromUtf8(directory_), table_, streams_); });
  AddPlace(verb, "DIR", directory_, Message::HelpDirOrFile)->required();
  AddPlace(verb, "TABLE", table_, Message::HelpShownTable);
}

void CommandLine::AddCheck() {
  CLI::App* verb = AddVerb("check", Message::HelpCheck, [this] {
    check_.directory = PathFromUtf8(directory_);
    check_.table = table_;
    return RunCheck(check_, streams_);
  });
  AddDirectory(verb);
  AddPlace(verb, "TABLE", table_, Message::HelpCheckedTable);
  AddCount(verb, "--show-faults", check_.shown, Message::HelpCheckFaults);
}

void CommandLine::AddConvert() {
  CLI::App* verb = AddVerb("convert", Message::HelpConvert, [this] {
    convert_.directory = PathFromUtf8(directory_);
    convert_.target = PathFromUtf8(target_);
    return RunConvert(convert_, streams_);
  });
  AddPlace(verb, "OLD_DIR", directory_, Message::HelpOldDir)->required();
  AddPlace(verb, "NEW_DIR", target_, Message::HelpNewDir)->required();
  verb->add_flag("--unlock", convert_.unlock, Say(Message::HelpUnlock));
  verb->add_flag("--salvage", convert_.salvage, Say(Message::HelpSalvage));
  AddCount(verb, "--show-faults", convert_.shown, Message::HelpFileFaults);
}

void CommandLine::AddSchema() {
  CLI::App* verb = AddVerb("schema", Message::HelpSchema, [this] {
    return RunSchema({PathFromUtf8(directory_), PathFromUtf8(output_)}, streams_);
  });
  AddDirectory(verb);
  verb->add_option("--output,-o", output_, Say(Message::HelpOutputFile))->type_name("FILE");
}

void CommandLine::AddCopy() {
  CLI::App* verb = AddVerb("copy", Message::HelpCopy, [this] {
    copy_.directory = PathFromUtf8(directory_);
    copy_.target = PathFromUtf8(output_);
    return RunCopy(copy_, streams_);
  });
  AddDirectory(verb);
  AddPlace(verb, "DIR2", output_, Message::HelpCopyDir)->required();
  AddCount(verb, "--patience", copy_.patience, Message::HelpMoment, 0, 3600);
}

void CommandLine::AddMove() {
  CLI::App* verb = AddVerb("move", Message::HelpMove, [this] {
    move_.directory = PathFromUtf8(directory_);
    return RunMove(move_, streams_);
  });
  AddDirectory(verb);
  CLI::Option* server =
      verb->add_option("--server", move_.server, Say(Message::HelpServer))->type_name("ADDRESS");
  CLI::Option* back = verb->add_flag("--back", move_.isBack, Say(Message::HelpMoveBack));
  server->excludes(back);
  verb->add_option("--schema", move_.schema, Say(Message::HelpServerSchema))
      ->type_name("NAME")
      ->needs(server);
  verb->add_flag("--tls", move_.tlsRequired, Say(Message::HelpTls))->needs(server);
  verb->add_flag("--keep", move_.keep, Say(Message::HelpKeepTables))->needs(back);
  verb->add_flag("--dry-run", move_.isDryRun, Say(Message::HelpMoveDryRun));
}

void CommandLine::AddPublish() {
  CLI::App* verb = AddVerb("publish", Message::HelpPublish,
                           [this] { return RunPublish({PathFromUtf8(directory_)}, streams_); });
  AddDirectory(verb);
}

void CommandLine::AddStatus() {
  CLI::App* verb = AddVerb("status", Message::HelpStatus, [this] {
    return RunStatus({PathFromUtf8(directory_), listing_ == "json"}, streams_);
  });
  AddDirectory(verb);
  AddChoice(verb, "--format", listing_, {"text", "json"}, Message::HelpStatusFormat);
}

}  // namespace

int RunTool(std::vector<std::string> arguments, const Streams& streams) {
  SpeakLanguage(TakeLanguage(arguments, streams.language));
  return RunGuarded("qrndata", streams,
                    [&] { return CommandLine(streams).Run(std::move(arguments)); });
}

}  // namespace qrndata
