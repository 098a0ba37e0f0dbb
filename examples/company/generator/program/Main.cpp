#include "examples/company/generator/Generate.h"

int QRN_MAIN(int argc, qrndata::ProgramChar** argv) {
  return qrndata::RunProgram(argc, argv, &company::Run);
}
