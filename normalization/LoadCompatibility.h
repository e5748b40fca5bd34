// How the tables' constructor fills the compatibility decompositions.
#pragma once

#include "transform/UnicodeTransformationTables.h"

namespace zelvo {
namespace unicode {

#pragma GCC visibility push(hidden)

// What initCompatDecomp does, followed by the emptying of
// rawCompatDecompositionMap that the constructor does next, with each raw
// row given back as soon as its full row stands: the final rows and the
// case maps after them then reuse the raw rows' memory, which lowers the
// peak resident memory of every program that loads the library by about a
// tenth. The tables end exactly as the two steps leave them.
void loadCompatibilityDecompositions(UnicodeTransformationTables& tables);

#pragma GCC visibility pop

}  // namespace unicode
}  // namespace zelvo
