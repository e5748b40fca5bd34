// A program that links the library and asks it one question: everything it
// spends above the empty program is the cost of loading the library.
#include "transform/UnicodeOperations.h"

int main() { return zelvo::unicode::isAssigned(U'a') ? 0 : 1; }
