/*
 * Basalt linkage: finding code loaded in the process at run time, the compatibility fixes a
 * process runs with, and the small thread services of the platform. A C header.
 */
#ifndef BASALT_LINKAGE_H
#define BASALT_LINKAGE_H

#include <basalt/BasaltCore.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Symbols of every module loaded in the process, looked up in load order. */
BASALT_EXPORT Boolean TKIsSymbolNameDefined(const char* symbolName);
/* The symbol's address, binding it now; null if no loaded module defines it. */
BASALT_EXPORT void* TKLookupAndBindSymbol(const char* symbolName);
/* The address of a defined symbol without forcing anything to load; null if absent. */
BASALT_EXPORT void* TKAddressOfSymbol(const char* symbolName);

/*
 * Whether the process runs with the numbered compatibility fix (e.g. "5026050"). Every fix is on
 * unless $KEL_DISABLED_FIXES lists its number (comma-separated). Not a number: false.
 */
BASALT_EXPORT Boolean _BSCheckFix(BCStringRef fixNumber);

/* ---- Tasks ------------------------------------------------------------------------------- */

typedef StatusCode (*TaskProc)(void* parameter);
typedef struct OpaqueMPTaskID* MPTaskID;
typedef struct OpaqueMPQueueID* MPQueueID;
typedef uint32_t MPTaskOptions;

/* Starts entryPoint(parameter) on a new detached thread. Termination queues are not offered:
   notifyQueue must be null. stackSize 0 means the default. */
BASALT_EXPORT StatusCode MPCreateTask(TaskProc entryPoint, void* parameter, size_t stackSize,
                                      MPQueueID notifyQueue, void* terminationParameter1,
                                      void* terminationParameter2, MPTaskOptions options,
                                      MPTaskID* task);

/* Atomic adds on a plain 32-bit value; they return the value from before. */
BASALT_EXPORT int32_t IncrementAtomic(int32_t* value);
BASALT_EXPORT int32_t DecrementAtomic(int32_t* value);
BASALT_EXPORT int32_t AddAtomic(int32_t amount, int32_t* value);

#ifdef __cplusplus
}
#endif

#endif /* BASALT_LINKAGE_H */
