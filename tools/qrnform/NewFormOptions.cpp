#include "tools/qrnform/NewFormOptions.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <map>

namespace qrn::qrnform {

bool AskForNewForm(const std::vector<std::string>& arguments) {
  return std::find(arguments.begin(), arguments.end(), "--new") != arguments.end();
}

std::optional<newform::FormOrder> ReadNewFormOptions(std::vector<std::string> arguments,
                                                     int* exitCode) {
  using newform::Language;
  newform::FormOrder order;
  std::vector<std::string> place;
  std::vector<std::string> found;
  const std::map<std::string, Language> languages{{"ja", Language::Japanese},
                                                  {"en", Language::English}};
  CLI::App app("Makes a form that runs at once from a dictionary alone.", "qrnform");
  app.add_option("--new", place, "the dictionary's folder, and the table")->expected(2)->required();
  app.add_option("--detail", order.detail,
                 "another table, whose records follow in a grid by a key of the table's field");
  app.add_option("--fields", order.fields, "the fields in their order, commas between; else all")
      ->delimiter(',');
  auto* keys = app.add_option("--keys", found,
                              "the keys with a button that finds by them, commas between; else all")
                   ->delimiter(',');
  app.add_flag("--grid", order.grid, "a grid of the table's own records as well");
  app.add_option("--pictures", order.pictures, "folder of the pictures that a field names");
  app.add_option("--lang", order.language, "what the form and messages speak: ja (usual) or en")
      ->transform(CLI::Transformer(languages));
  app.add_flag("--force", order.force, "replaces a file that is there");
  app.add_option("-o,--output", order.output, "the form's file (.frm)")->required();
  std::reverse(arguments.begin(), arguments.end());
  try {
    app.parse(arguments);
  } catch (const CLI::ParseError& error) {
    *exitCode = app.exit(error) == 0 ? 0 : 2;
    return std::nullopt;
  }
  if (keys->count() > 0) order.keys = found;
  order.directory = place[0];
  order.table = place[1];
  return order;
}

}  // namespace qrn::qrnform
