#include "ole/tables/Guid.h"

#include <cstdio>

namespace qrn::ole {

std::string GuidText(const Guid& id) {
  char text[40];
  std::snprintf(text, sizeof text, "{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}", id.data1,
                id.data2, id.data3, id.data4[0], id.data4[1], id.data4[2], id.data4[3], id.data4[4],
                id.data4[5], id.data4[6], id.data4[7]);
  return text;
}

}  // namespace qrn::ole
