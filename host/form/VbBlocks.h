// Whether every If has its End If, every For its Next, and so on: the script engine only says
// "syntax error".
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/form/VbStatements.h"

namespace qrn::form {

class BlockCheck {
 public:
  explicit BlockCheck(Mistakes& mistakes) : mistakes_(mistakes) {}

  // Opens or closes what the statement opens or closes.
  void Pass(const Statement& statement);

  // Complains of what is still open at the end of the code.
  void Finish();

 private:
  struct Open {
    std::string_view opener;
    int line;
  };

  void Close(std::string_view opener, std::string_view closer, int line);
  void Middle(std::string_view opener, std::string_view word, int line);
  void CloseNext(const Statement& statement);

  Mistakes& mistakes_;
  std::vector<Open> open_;
};

// `Sub` or `Function` if the statement begins one, with or without Private, Public, Friend or
// Static before it; empty otherwise.
std::string_view ProcedureWord(const Statement& statement) noexcept;

}  // namespace qrn::form
