// The command line: verbs, their options, exit codes.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <map>
#include <new>

#include "tools/qrndata/Paths.h"
#include "tools/qrndata/Verbs.h"

namespace qrndata {

namespace {

const std::map<std::string, OnUnmappable> kUnmappableChoices = {{"error", OnUnmappable::Error},
                                                                {"replace", OnUnmappable::Replace},
                                                                {"skip", OnUnmappable::Skip}};
const std::map<std::string, Encoding> kEncodings = {{"utf-8", Encoding::Utf8},
                                                    {"cp932", Encoding::CodePage932}};

// The texts that the options are parsed into, and the verbs that run on them.
class CommandLine {
 public:
  explicit CommandLine(const Streams& streams) : streams_(streams) {
    // A path may begin with a slash, also on Windows.
    app_.allow_windows_style_options(false);
    app_.require_subcommand(1);
    app_.footer(
        "Exit codes: 0 done, 1 done but rows were refused or faults found, 2 wrong command "
        "line,\n3 wrong schema, CSV file or name, 4 a file that cannot be read or written.");
    AddBuild();
    AddImport();
    AddExport();
    AddShow();
    AddCheck();
    AddGenerate();
  }

  int Run(std::vector<std::string> arguments) {
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
    CLI::App* verb = app_.add_subcommand(name, text);
    verb->callback([this, run = std::move(run)] { run_ = run; });
    return verb;
  }

  void AddDirectory(CLI::App* verb) {
    verb->add_option("DIR", directory_, "directory of the dictionary files")->required();
  }

  void AddTextOptions(CLI::App* verb) {
    verb->add_option("--on-unmappable", onUnmappable_,
                     "a character that the other encoding does not have: error (the row is left "
                     "out), replace, skip (the character)")
        ->transform(CLI::CheckedTransformer(kUnmappableChoices));
    verb->add_option("--encoding", encoding_, "of the text file: utf-8 or cp932")
        ->transform(CLI::CheckedTransformer(kEncodings));
  }

  void AddBuild();
  void AddImport();
  void AddExport();
  void AddShow();
  void AddCheck();
  void AddGenerate();

  const Streams& streams_;
  CLI::App app_{"Builds, fills, shows and checks dictionaries and their data files.", "qrndata"};
  std::function<int()> run_;
  std::string schema_, directory_, table_, file_, key_, output_, refusals_, format_ = "csv";
  OnUnmappable onUnmappable_ = OnUnmappable::Error;
  Encoding encoding_ = Encoding::Utf8;
  BuildOptions build_;
  ImportOptions import_;
  CheckOptions check_;
  GenerateOptions generate_;
};

void CommandLine::AddBuild() {
  CLI::App* verb =
      AddVerb("build", "makes a dictionary and its empty data files from a schema", [this] {
        build_.schema = PathFromUtf8(schema_);
        build_.directory = PathFromUtf8(directory_);
        return RunBuild(build_, streams_);
      });
  verb->add_option("SCHEMA", schema_, "schema file (TOML)")->required();
  AddDirectory(verb);
  CLI::Option* replace =
      verb->add_flag("--replace", build_.replace, "replace what is there, data included");
  verb->add_flag("--keep-data", build_.keepData, "replace the dictionary, keep data files")
      ->excludes(replace);
}

void CommandLine::AddImport() {
  CLI::App* verb = AddVerb("import", "adds the rows of a CSV file to a table", [this] {
    import_.directory = PathFromUtf8(directory_);
    import_.file = PathFromUtf8(file_);
    import_.refusals = PathFromUtf8(refusals_);
    import_.table = table_;
    import_.onUnmappable = onUnmappable_;
    import_.encoding = encoding_;
    return RunImport(import_, streams_);
  });
  AddDirectory(verb);
  verb->add_option("TABLE", table_, "table")->required();
  verb->add_option("FILE", file_, "CSV file; its first line names the fields")->required();
  AddTextOptions(verb);
  verb->add_option("--batch", import_.batch, "rows stored in one transaction")
      ->check(CLI::Range(1, 1000000));
  verb->add_option("--refused", refusals_, "file for the rows that were not taken, as they stood");
  verb->add_option("--show-refused", import_.shown, "how many refusals are listed");
  verb->add_flag("--dry-run", import_.isDryRun, "check the rows, store none");
}

void CommandLine::AddExport() {
  CLI::App* verb = AddVerb("export", "writes a table's records as CSV or JSON", [this] {
    ExportOptions options;
    options.directory = PathFromUtf8(directory_);
    options.output = PathFromUtf8(output_);
    options.table = table_;
    options.key = key_;
    options.isJson = format_ == "json";
    options.onUnmappable = onUnmappable_;
    options.encoding = encoding_;
    return RunExport(options, streams_);
  });
  AddDirectory(verb);
  verb->add_option("TABLE", table_, "table")->required();
  verb->add_option("--format", format_, "csv or json")->check(CLI::IsMember({"csv", "json"}));
  verb->add_option("--key", key_, "key that gives the order: its name, number or first field");
  verb->add_option("--output,-o", output_, "file instead of the standard output");
  AddTextOptions(verb);
}

void CommandLine::AddShow() {
  CLI::App* verb = AddVerb("show", "shows what a dictionary, table or data file is made of",
                           [this] { return RunShow(PathFromUtf8(directory_), table_, streams_); });
  verb->add_option("DIR", directory_, "directory of the dictionary files, or one data file")
      ->required();
  verb->add_option("TABLE", table_, "one table, with fields, keys and data file");
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
  verb->add_option("TABLE", table_, "one table only");
  verb->add_option("--show-faults", check_.shown, "how many faults are listed for each table");
}

void CommandLine::AddGenerate() {
  CLI::App* verb = AddVerb(
      "generate", "makes a trading company's data of any size, the same for a seed", [this] {
        generate_.schema = PathFromUtf8(schema_);
        generate_.directory = PathFromUtf8(directory_);
        return RunGenerate(generate_, streams_);
      });
  verb->add_option("SCHEMA", schema_, "the company's schema file")->required();
  verb->add_option("DIR", directory_, "directory for dictionary and data files, or CSV files")
      ->required();
  verb->add_option("--orders", generate_.orders, "orders; three lines each on average")
      ->check(CLI::Range(1, 100000000));
  verb->add_option("--seed", generate_.seed, "another company for another number");
  verb->add_flag("--csv", generate_.asCsv, "write CSV files and pictures, no data files");
}

}  // namespace

int RunTool(std::vector<std::string> arguments, const Streams& streams) {
  try {
    return CommandLine(streams).Run(std::move(arguments));
  } catch (const Failure& failure) {
    streams.err << "qrndata: " << failure.what() << '\n';
    return failure.Code();
  } catch (const std::bad_alloc&) {
    streams.err << "qrndata: not enough memory\n";
  } catch (const std::exception& error) {
    streams.err << "qrndata: " << error.what() << '\n';
  }
  return kSystem;
}

}  // namespace qrndata
