// The rewritten code while it grows: pieces by logical line.
#pragma once

#include <string>
#include <vector>

#include "host/form/VbStatements.h"

namespace qrn::form {

class VbOutput {
 public:
  explicit VbOutput(const std::vector<LogicalLine>& lines);

  // Where a piece stands, so that something can be put behind it later.
  struct Place {
    size_t line = 0;
    size_t piece = 0;
  };

  // Appends a piece to the statement's line. An empty text leaves no trace.
  Place Add(const Statement& statement, std::string text);

  // Puts a statement behind a piece, before whatever follows it on its line.
  void PutBehind(Place place, const std::string& statement);

  // Puts a statement before everything.
  void PutFirst(const std::string& statement) { prologue_ += statement + ": "; }

  std::string Text() const;

 private:
  struct Piece {
    std::string text;
    std::string joint;
  };
  struct Line {
    int lineCount;
    std::vector<Piece> pieces;
  };

  std::vector<Line> lines_;
  std::string prologue_;
};

}  // namespace qrn::form
