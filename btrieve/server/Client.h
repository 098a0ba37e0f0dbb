// The functions of PostgreSQL's client library that are used, loaded with the first link file that
// is opened: who has only local files needs no such library.
#pragma once

#include <cstddef>
#include <cstdint>

namespace btrieve::server {

// The library's own, seen from outside.
struct PgConnection;
struct PgResult;
// As the library lays it out.
struct PgNotification {
  char* channel;
  int backend;
  char* payload;
  PgNotification* next;
};

using PgOid = unsigned int;
using PgNoticeProcessor = void (*)(void*, const char*);

// Answers of the library.
inline constexpr int kConnectionOk = 0;
inline constexpr int kOutsideTransactions = 0;
inline constexpr int kInFailedTransaction = 3;
inline constexpr int kPollFailed = 0;
inline constexpr int kPollReading = 1;
inline constexpr int kPollWriting = 2;
inline constexpr int kPollOk = 3;
inline constexpr int kCommandOk = 1;
inline constexpr int kTuplesOk = 2;
inline constexpr int kCopyingIn = 4;
inline constexpr int kFatalError = 7;
inline constexpr int kPipelineSync = 10;
inline constexpr int kPipelineAborted = 11;
inline constexpr int kFieldSqlState = 'C';
inline constexpr int kFieldMessage = 'M';
inline constexpr int kBinaryFormat = 1;
// How much a message tells.
inline constexpr int kUsualWords = 1;
inline constexpr int kAllWords = 2;  // with the state

// clang-format off
#define QRN_CLIENT_FUNCTIONS(X)                                                                    \
  X(PQconnectStartParams, PgConnection*, (const char* const*, const char* const*, int))            \
  X(PQconnectPoll,        int,   (PgConnection*))                                                  \
  X(PQfinish,             void,  (PgConnection*))                                                  \
  X(PQstatus,             int,   (const PgConnection*))                                            \
  X(PQtransactionStatus,  int,   (const PgConnection*))                                            \
  X(PQsocket,             int,   (const PgConnection*))                                            \
  X(PQbackendPID,         int,   (const PgConnection*))                                            \
  X(PQerrorMessage,       char*, (const PgConnection*))                                            \
  X(PQconnectionNeedsPassword, int, (const PgConnection*))                                         \
  X(PQsetErrorVerbosity,  int,   (PgConnection*, int))                                             \
  X(PQsetnonblocking,     int,   (PgConnection*, int))                                             \
  X(PQsetNoticeProcessor, PgNoticeProcessor, (PgConnection*, PgNoticeProcessor, void*))            \
  X(PQsendQuery,          int,   (PgConnection*, const char*))                                     \
  X(PQsendPrepare,        int,   (PgConnection*, const char*, const char*, int, const PgOid*))     \
  X(PQsendQueryPrepared,  int,   (PgConnection*, const char*, int, const char* const*, const int*, \
                                  const int*, int))                                                \
  X(PQputCopyData,        int,   (PgConnection*, const char*, int))                                \
  X(PQputCopyEnd,         int,   (PgConnection*, const char*))                                     \
  X(PQenterPipelineMode,  int,   (PgConnection*))                                                  \
  X(PQpipelineSync,       int,   (PgConnection*))                                                  \
  X(PQexitPipelineMode,   int,   (PgConnection*))                                                  \
  X(PQflush,              int,   (PgConnection*))                                                  \
  X(PQconsumeInput,       int,   (PgConnection*))                                                  \
  X(PQisBusy,             int,   (PgConnection*))                                                  \
  X(PQgetResult,          PgResult*, (PgConnection*))                                              \
  X(PQclear,              void,  (PgResult*))                                                      \
  X(PQresultStatus,       int,   (const PgResult*))                                                \
  X(PQresultErrorField,   char*, (const PgResult*, int))                                           \
  X(PQntuples,            int,   (const PgResult*))                                                \
  X(PQnfields,            int,   (const PgResult*))                                                \
  X(PQgetvalue,           char*, (const PgResult*, int, int))                                      \
  X(PQgetlength,          int,   (const PgResult*, int, int))                                      \
  X(PQgetisnull,          int,   (const PgResult*, int, int))                                      \
  X(PQnotifies,           PgNotification*, (PgConnection*))                                        \
  X(PQfreemem,            void,  (void*))
// clang-format on

struct Client {
// NOLINTNEXTLINE(bugprone-macro-parentheses)
#define QRN_CLIENT_MEMBER(name, result, parameters) result(*name) parameters = nullptr;
  QRN_CLIENT_FUNCTIONS(QRN_CLIENT_MEMBER)
#undef QRN_CLIENT_MEMBER
};

// Null where the library is missing, or lacks a function. Looks once; the caller holds the session.
const Client* FindClient() noexcept;

}  // namespace btrieve::server
