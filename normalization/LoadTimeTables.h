// How the tables' constructor fills the maps that it derives from the raw
// mappings: decompositionMap, compatDecompositionMap and compositionMap.
#pragma once

#include "transform/UnicodeTransformationTables.h"

namespace zelvo {
namespace unicode {

// The public initDecomp, initCompatDecomp and initFinalCompositionMap work
// their maps out as written, from whatever the tables hold when they are
// called. At load the tables always hold the same, and what the three give
// then stands worked out in the generated normalization data: these copy it,
// in ascending order at the end of maps that are still empty, and give each
// raw map back as soon as nothing at load reads it, so that the maps filled
// after it reuse its memory. They run only from the constructor, in its
// order; LoadTimeExpansionTest holds what they leave to what the written
// methods leave.

// The canonical filler, then initDecomp's full rows; rawDecompositionMap is
// left empty.
void loadDecompositions(UnicodeTransformationTables& tables);

// The compatibility filler, then initCompatDecomp's full rows, each raw row
// given back as soon as its full row stands; rawCompatDecompositionMap is
// left empty.
void loadCompatibilityDecompositions(UnicodeTransformationTables& tables);

// initFinalCompositionMap's pairs, from the generated pair table.
void loadCompositionMap(UnicodeTransformationTables& tables);

}  // namespace unicode
}  // namespace zelvo
