#include <sstream>
#include <utility>

#include "clients/Branch.h"

namespace btrieve::test {
namespace {

std::vector<std::string> Arguments(int32_t firstId, const std::vector<std::string>& paths) {
  std::vector<std::string> arguments = {"bank", std::to_string(firstId)};
  arguments.insert(arguments.end(), paths.begin(), paths.end());
  return arguments;
}

void Take(const std::string& line, Heard& heard) {
  const std::string rest = line.substr(1);
  std::istringstream words(rest);
  Heard::Place place{};
  switch (line[0]) {
    case 'b':
      heard.begun = true;
      break;
    case 'p':
      words >> place.file >> place.position >> place.id;
      heard.places.push_back(place);
      break;
    case 'e':
      heard.open = EffectsOf(rest);
      break;
    case 'a': {
      const std::vector<Effect> effects = EffectsOf(rest);
      heard.acknowledged.insert(heard.acknowledged.end(), effects.begin(), effects.end());
      heard.open.clear();
      ++heard.steps;
      break;
    }
    case 'r':
      heard.open.clear();
      ++heard.refused;
      break;
    case 'l':
      ++heard.losses;
      if (!heard.open.empty()) heard.lost.push_back(std::exchange(heard.open, {}));
      break;
    case 's':
      heard.view = rest.substr(1);
      break;
    default:
      heard.fault += line + "\n";
  }
}

}  // namespace

Branch::Branch(int32_t firstId, const std::vector<std::string>& paths,
               const std::vector<std::string>& program)
    : process_(Arguments(firstId, paths), program) {}

void Branch::Go(const Batch& batch) {
  std::ostringstream line;
  line << "go " << batch.seed << ' ' << batch.steps << ' ' << batch.kind << ' ' << batch.killAt
       << ' ' << batch.moments;
  process_.Say(line.str());
}

// A branch that tells of a fault is ended: it must not do more harm, or hang.
Heard Branch::Hear() {
  Heard heard;
  while (const auto line = process_.Hear()) {
    if (*line == "d") return heard;
    if (!line->empty()) Take(*line, heard);
    if (!heard.fault.empty()) Kill();
  }
  heard.died = true;
  heard.ending = process_.Ending();
  return heard;
}

}  // namespace btrieve::test
