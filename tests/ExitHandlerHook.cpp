// Stands in front of the C library's __cxa_atexit, through which the
// destructor of each static object is entered as an exit handler, and tells
// the test program of each entry and each run. It forwards everything: the
// handlers run in the same order, with the same objects, for the same module.
// This file includes no test framework, whose headers may declare the
// function with another exception specification.
#include "ExitHandlerHook.h"

#include <dlfcn.h>

#include <cstddef>
#include <cstring>

namespace {

struct Handler {
  void (*destructor)(void*);
  void* object;
};

// Static storage that is zero before anything runs: the library's static
// initialisers call in before this program's own have run.
constexpr std::size_t kHandlers = 256;
Handler gHandlers[kHandlers];
std::size_t gHandlerCount = 0;

using AtExit = int (*)(void (*)(void*), void*, void*);
AtExit gNext = nullptr;

// The __cxa_atexit that this one hides: the C library's, or a sanitizer's.
AtExit next() {
  if (gNext == nullptr) {
    void* found = dlsym(RTLD_NEXT, "__cxa_atexit");
    std::memcpy(&gNext, &found, sizeof gNext);
  }
  return gNext;
}

void runHandler(void* slot) {
  const Handler& handler = *static_cast<const Handler*>(slot);
  exitHandlerRunning(handler.object);
  handler.destructor(handler.object);
}

}  // namespace

extern "C" int __cxa_atexit(void (*destructor)(void*), void* object,
                            void* module) {
  exitHandlerEntered(object);
  if (gHandlerCount == kHandlers) return next()(destructor, object, module);
  // Each handler gets a slot of its own, so that the run can be told even of
  // handlers that share an object (or have none).
  Handler* slot = &gHandlers[gHandlerCount++];
  *slot = {destructor, object};
  return next()(runHandler, slot, module);
}
