// What a test program sees of the C++ exit handlers through
// ExitHandlerHook.cpp, which stands in front of the C library's
// __cxa_atexit. The program that links the hook defines both functions.
#pragma once

// Called as the destructor of the static object `object` is entered as an
// exit handler, which happens right after the object's constructor returns.
void exitHandlerEntered(void* object);

// Called as the exit handler of `object` is about to run its destructor, at
// exit or when the object's module is unloaded.
void exitHandlerRunning(void* object);
