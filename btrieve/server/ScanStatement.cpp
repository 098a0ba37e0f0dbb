#include "btrieve/server/ScanStatement.h"

namespace btrieve::server {

// From the inside: what is examined, with the condition judged once; its numbers; what is sent of
// it, with the bytes before. All are in one order, in which the innermost reads the index, so that
// nothing is sorted and nothing behind the last row sent is read.
std::string ScanStatement(const std::string& columns, const std::string& table,
                          const std::string& by, bool forward, const std::string& condition) {
  const std::string order = " ORDER BY " + by + (forward ? "" : " DESC");
  const std::string window = " WINDOW w AS (" + order + " ROWS UNBOUNDED PRECEDING)";
  const std::string bounds =
      forward ? by + " >= $1 AND " + by + " < $2" : by + " < $1 AND " + by + " >= $2";
  const std::string examined = "SELECT " + columns + ", " + condition + " AS passes FROM " + table +
                               " WHERE " + bounds + order + " LIMIT $3";
  const std::string numbered =
      "SELECT *, row_number() OVER w AS number, lead(pos) OVER w IS NULL AS is_last,"
      " lag(pos) OVER w AS pos_before, lag(" +
      by + ") OVER w AS by_before, count(*) FILTER (WHERE NOT passes) OVER w AS rejected FROM (" +
      examined + ") AS examined" + window;
  const std::string sent =
      "SELECT *, sum(octet_length(data)) OVER w - octet_length(data) AS bytes_before FROM (" +
      numbered +
      ") AS numbered WHERE passes OR is_last OR (rejected - $6::bigint) % $7::bigint = 0" + window;
  return "SELECT " + columns + ", number, is_last, pos_before, by_before FROM (" + sent +
         ") AS sent WHERE bytes_before <= $5::bigint" + order + " LIMIT $4";
}

}  // namespace btrieve::server
