#include "tools/qrndata/Verbs.h"

int QRN_MAIN(int argc, qrndata::ProgramChar** argv) {
  return qrndata::RunProgram(argc, argv, &qrndata::RunTool);
}
