#include "host/form/VbOutput.h"

namespace qrn::form {

VbOutput::VbOutput(const std::vector<LogicalLine>& lines) {
  lines_.reserve(lines.size());
  for (const LogicalLine& line : lines) lines_.push_back({line.lineCount, {}});
}

VbOutput::Place VbOutput::Add(const Statement& statement, std::string text) {
  std::vector<Piece>& pieces = lines_[statement.order].pieces;
  pieces.push_back({std::move(text), statement.joint});
  return {statement.order, pieces.size() - 1};
}

void VbOutput::PutBehind(Place place, const std::string& statement) {
  lines_[place.line].pieces[place.piece].text += ": " + statement;
}

std::string VbOutput::Text() const {
  std::string text = prologue_;
  for (const Line& line : lines_) {
    for (size_t i = 0; i < line.pieces.size(); ++i) {
      const Piece& piece = line.pieces[i];
      if (piece.text.empty()) continue;
      text += piece.text;
      if (i + 1 < line.pieces.size()) text += piece.joint == ":" ? ": " : piece.joint;
    }
    text.append(static_cast<size_t>(line.lineCount), '\n');
  }
  return text;
}

}  // namespace qrn::form
