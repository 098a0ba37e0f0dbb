// The record manager's one entry. Everything a program does with data files goes through it, and
// the answer is always one of the status codes of btrieve/Status.h.
#pragma once

#include <cstdint>

#include "btrieve/Status.h"

#ifdef _WIN32
#define BTRIEVE_CALL __stdcall
#define BTRIEVE_EXPORT  // the module definition file exports the entry as number 1
#else
#define BTRIEVE_CALL
#define BTRIEVE_EXPORT __attribute__((visibility("default")))
#endif

extern "C" {

// operation   base number plus its biases (+50 Get Key, +100..+400 locks, 1000 and 1500 Begin).
// posBlock    128 bytes, filled by Open and handed back untouched with every later call.
// data        record, specification, descriptor or reply.
// dataLength  in: bytes in `data`, out: bytes returned there.
// key         key value, path, owner name or URI; at most 255 bytes. Paths are bytes of the system
//             code page on Windows, plain bytes elsewhere, up to 254 and a NUL.
// keyLength   bytes in `key`; not looked at where `key` is a path.
// keyNumber   key, open mode or option; -1 and 255 are the same byte.
//
// Pointers that an operation does not use may be null. A call that fails before it has read or
// written anything leaves buffers, length and currency as they were. Threads may call at any time;
// one call runs at a time, and all threads of the process are one client.
BTRIEVE_EXPORT int16_t BTRIEVE_CALL BTRCALL(uint16_t operation, void* posBlock, void* data,
                                            uint32_t* dataLength, void* key, uint8_t keyLength,
                                            int8_t keyNumber);
}
